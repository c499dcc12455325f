// Another program that uses the desktop's calendar service: reads one command per line from its standard input and
// answers each with one line. Fields are percent-encoded and separated by spaces.
#include <libecal/libecal.h>

#include <QByteArrayList>
#include <QFile>
#include <QHash>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace {

template <class T>
std::shared_ptr<T> shared(T *object)
{
    return std::shared_ptr<T>(object, [](T *owned) {
        if (owned)
            g_object_unref(owned);
    });
}

/// Ends the program, and with it the test, with what the service said.
void check(bool isDone, GError *error, const char *what)
{
    if (!isDone)
        qFatal("%s: %s", what, error ? error->message : "no reason given");
    g_clear_error(&error);
}

constexpr int mostAttempts = 5;
constexpr std::chrono::milliseconds betweenLooks{50};
/// The service is started again within a second or two, on a busy machine a few more.
constexpr std::chrono::seconds patience{30};

class Peer
{
public:
    QString addLocalCalendar(const QString &title);
    QString addServerCalendar(const QString &title, int port, const QString &path, const QString &method);
    void hideCalendar(const QString &uid);
    void removeCalendar(const QString &uid);
    void setDefaultCalendar(const QString &uid);
    void putEvent(const QString &calendarUid, const QByteArray &vevent);
    void dropEvent(const QString &calendarUid, const QString &uid);
    [[nodiscard]] QByteArrayList eventTexts(const QString &calendarUid, const QString &uid);
    void refresh(const QString &calendarUid);
    void answerPassword(const QString &calendarUid, const QString &password);

private:
    [[nodiscard]] ESourceRegistry *registry();
    /// The calendar of that name. While the service starts again after its death the registry is empty: it is waited
    /// for.
    [[nodiscard]] std::shared_ptr<ESource> source(const QString &uid);
    [[nodiscard]] std::shared_ptr<ECalClient> client(const QString &calendarUid);
    /// Whether a call failed for another reason than that the event is not there. The next connects anew.
    bool hasFailed(const QString &calendarUid, GError *error, const char *what);

    std::shared_ptr<ESourceRegistry> m_registry;
    QHash<QString, std::shared_ptr<ECalClient>> m_clients;
    int m_nextCalendar = 1;
};

ESourceRegistry *Peer::registry()
{
    if (!m_registry) {
        GError *error = nullptr;
        m_registry = shared(e_source_registry_new_sync(nullptr, &error));
        check(m_registry != nullptr, error, "registry");
    }
    return m_registry.get();
}

std::shared_ptr<ESource> Peer::source(const QString &uid)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (std::chrono::steady_clock::now() < end) {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        if (auto found = shared(e_source_registry_ref_source(registry(), uid.toUtf8().constData())))
            return found;
        // lint-allow(sleep): the program has no event loop, and looks again and again for what it waits for
        std::this_thread::sleep_for(betweenLooks);
    }
    qFatal("%s is not among the calendars", qPrintable(uid));
}

QString Peer::addLocalCalendar(const QString &title)
{
    const QString uid = QStringLiteral("calendar-%1").arg(m_nextCalendar++);
    GError *error = nullptr;
    const auto source = shared(e_source_new_with_uid(uid.toUtf8().constData(), nullptr, &error));
    check(source != nullptr, error, "source");
    e_source_set_display_name(source.get(), title.toUtf8().constData());
    e_source_set_parent(source.get(), "local-stub");
    gpointer extension = e_source_get_extension(source.get(), E_SOURCE_EXTENSION_CALENDAR);
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(extension), "local");
    e_source_selectable_set_color(E_SOURCE_SELECTABLE(extension), "#3584e4");
    const bool isDone = e_source_registry_commit_source_sync(registry(), source.get(), nullptr, &error);
    check(isDone, error, "commit");
    return uid;
}

QString Peer::addServerCalendar(const QString &title, int port, const QString &path, const QString &method)
{
    const QString uid = QStringLiteral("calendar-%1").arg(m_nextCalendar++);
    GError *error = nullptr;
    const auto source = shared(e_source_new_with_uid(uid.toUtf8().constData(), nullptr, &error));
    check(source != nullptr, error, "source");
    e_source_set_display_name(source.get(), title.toUtf8().constData());
    e_source_set_parent(source.get(), "caldav-stub");
    gpointer calendar = e_source_get_extension(source.get(), E_SOURCE_EXTENSION_CALENDAR);
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(calendar), "caldav");
    auto *authentication =
        static_cast<ESourceAuthentication *>(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_AUTHENTICATION));
    e_source_authentication_set_host(authentication, "127.0.0.1");
    e_source_authentication_set_port(authentication, static_cast<guint16>(port));
    e_source_authentication_set_user(authentication, "me");
    e_source_authentication_set_method(authentication, method.toUtf8().constData());
    e_source_security_set_method(E_SOURCE_SECURITY(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_SECURITY)),
                                 "none");
    auto *webdav =
        static_cast<ESourceWebdav *>(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_WEBDAV_BACKEND));
    e_source_webdav_set_resource_path(webdav, path.toUtf8().constData());
    e_source_webdav_set_calendar_auto_schedule(webdav, FALSE);
    e_source_offline_set_stay_synchronized(
        E_SOURCE_OFFLINE(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_OFFLINE)), TRUE);
    const bool isDone = e_source_registry_commit_source_sync(registry(), source.get(), nullptr, &error);
    check(isDone, error, "commit");
    return uid;
}

void Peer::hideCalendar(const QString &uid)
{
    m_clients.remove(uid);
    GError *error = nullptr;
    bool isDone = false;
    // A calendar may still belong to a service that is gone.
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!isDone && std::chrono::steady_clock::now() < end) {
        if (error) {
            g_clear_error(&error);
            // lint-allow(sleep): the program has no event loop, and looks again and again for what it waits for
            std::this_thread::sleep_for(betweenLooks);
        }
        const auto hidden = source(uid);
        e_source_set_display_name(hidden.get(), "hidden");
        e_source_set_enabled(hidden.get(), FALSE);
        isDone = e_source_write_sync(hidden.get(), nullptr, &error);
    }
    check(isDone, error, "hide");
}

void Peer::removeCalendar(const QString &uid)
{
    m_clients.remove(uid);
    GError *error = nullptr;
    const bool isDone = e_source_remove_sync(source(uid).get(), nullptr, &error);
    check(isDone, error, "remove");
}

void Peer::setDefaultCalendar(const QString &uid)
{
    e_source_registry_set_default_calendar(registry(), source(uid).get());
}

std::shared_ptr<ECalClient> Peer::client(const QString &calendarUid)
{
    std::shared_ptr<ECalClient> &client = m_clients[calendarUid];
    if (!client) {
        EClient *connected = nullptr;
        GError *error = nullptr;
        // The service may die meanwhile.
        for (int attempt = 0; !connected && attempt < mostAttempts; ++attempt) {
            g_clear_error(&error);
            connected = e_cal_client_connect_sync(source(calendarUid).get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS,
                                                  static_cast<guint32>(-1), nullptr, &error);
        }
        check(connected != nullptr, error, "connect");
        client = shared(E_CAL_CLIENT(connected));
    }
    return client;
}

bool Peer::hasFailed(const QString &calendarUid, GError *error, const char *what)
{
    if (!error)
        return false;
    if (g_error_matches(error, E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_NOT_FOUND)) {
        g_clear_error(&error);
        return false;
    }
    qWarning("%s: %s", what, error->message);
    g_clear_error(&error);
    m_clients.remove(calendarUid);
    return true;
}

void Peer::putEvent(const QString &calendarUid, const QByteArray &vevent)
{
    const auto component = shared(i_cal_component_new_from_string(vevent.constData()));
    const QString uid = QString::fromUtf8(i_cal_component_get_uid(component.get()));
    const bool isOverride = vevent.contains("RECURRENCE-ID");
    const ECalObjModType mode = isOverride ? E_CAL_OBJ_MOD_THIS : E_CAL_OBJ_MOD_ALL;
    // The service may die, and somebody else may create or remove the event meanwhile.
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        GError *error = nullptr;
        gchar *created = nullptr;
        const bool isThere = isOverride || !eventTexts(calendarUid, uid).isEmpty();
        ECalClient *connection = client(calendarUid).get();
        const bool isDone = isThere
                                ? e_cal_client_modify_object_sync(connection, component.get(), mode,
                                                                  E_CAL_OPERATION_FLAG_NONE, nullptr, &error)
                                : e_cal_client_create_object_sync(connection, component.get(),
                                                                  E_CAL_OPERATION_FLAG_NONE, &created, nullptr, &error);
        g_free(created);
        (void)hasFailed(calendarUid, error, "put");
        if (isDone)
            return;
    }
    qFatal("put: given up");
}

void Peer::dropEvent(const QString &calendarUid, const QString &uid)
{
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        GError *error = nullptr;
        e_cal_client_remove_object_sync(client(calendarUid).get(), uid.toUtf8().constData(), nullptr, E_CAL_OBJ_MOD_ALL,
                                        E_CAL_OPERATION_FLAG_NONE, nullptr, &error);
        if (!hasFailed(calendarUid, error, "drop"))
            return;
    }
    qFatal("drop: given up");
}

QByteArrayList Peer::eventTexts(const QString &calendarUid, const QString &uid)
{
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        GError *error = nullptr;
        GSList *list = nullptr;
        e_cal_client_get_objects_for_uid_sync(client(calendarUid).get(), uid.toUtf8().constData(), &list, nullptr,
                                              &error);
        if (hasFailed(calendarUid, error, "read"))
            continue;
        QByteArrayList result;
        for (GSList *entry = list; entry; entry = entry->next) {
            gchar *text = e_cal_component_get_as_string(E_CAL_COMPONENT(entry->data));
            result.append(text);
            g_free(text);
        }
        e_client_util_free_object_slist(list);
        return result;
    }
    qFatal("read: given up");
}

void Peer::refresh(const QString &calendarUid)
{
    // The service may have died, and its server may be down.
    m_clients.remove(calendarUid);
    GError *error = nullptr;
    e_client_refresh_sync(E_CLIENT(client(calendarUid).get()), nullptr, &error);
    if (error)
        qInfo("refresh: %s", error->message);
    g_clear_error(&error);
}

void Peer::answerPassword(const QString &calendarUid, const QString &password)
{
    ENamedParameters *credentials = e_named_parameters_new();
    e_named_parameters_set(credentials, E_SOURCE_CREDENTIAL_USERNAME, "me");
    e_named_parameters_set(credentials, E_SOURCE_CREDENTIAL_PASSWORD, password.toUtf8().constData());
    GError *error = nullptr;
    const bool isDone = e_source_invoke_authenticate_sync(source(calendarUid).get(), credentials, nullptr, &error);
    e_named_parameters_free(credentials);
    check(isDone, error, "authenticate");
}

QByteArrayList obey(Peer &peer, const QByteArray &command, const QByteArrayList &fields)
{
    const auto text = [&](qsizetype i) { return QString::fromUtf8(fields.value(i)); };
    const QHash<QByteArray, std::function<QByteArrayList()>> commands{
        {"add-local", [&] { return QByteArrayList{peer.addLocalCalendar(text(0)).toUtf8()}; }},
        {"add-server",
         [&] { return QByteArrayList{peer.addServerCalendar(text(0), text(1).toInt(), text(2), text(3)).toUtf8()}; }},
        {"hide", [&] { return peer.hideCalendar(text(0)), QByteArrayList(); }},
        {"remove", [&] { return peer.removeCalendar(text(0)), QByteArrayList(); }},
        {"default", [&] { return peer.setDefaultCalendar(text(0)), QByteArrayList(); }},
        {"put", [&] { return peer.putEvent(text(0), fields.value(1)), QByteArrayList(); }},
        {"drop", [&] { return peer.dropEvent(text(0), text(1)), QByteArrayList(); }},
        {"texts", [&] { return peer.eventTexts(text(0), text(1)); }},
        {"refresh", [&] { return peer.refresh(text(0)), QByteArrayList(); }},
        {"password", [&] { return peer.answerPassword(text(0), text(1)), QByteArrayList(); }},
    };
    if (!commands.contains(command))
        qFatal("unknown command %s", command.constData());
    return commands.value(command)();
}

} // namespace

int main()
{
    Peer peer;
    QFile input;
    QFile output;
    (void)input.open(stdin, QIODevice::ReadOnly);
    (void)output.open(stdout, QIODevice::WriteOnly);
    while (true) {
        const QByteArray line = input.readLine().trimmed();
        if (line.isEmpty())
            return 0;
        // What the service has reported in the meantime.
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        QByteArrayList fields;
        for (const QByteArray &field : line.split(' '))
            fields.append(QByteArray::fromPercentEncoding(field));
        const QByteArray command = fields.takeFirst();
        QByteArrayList answer{"ok"};
        for (const QByteArray &field : obey(peer, command, fields))
            answer.append(field.toPercentEncoding());
        output.write(answer.join(' ') + '\n');
        output.flush();
    }
}
