#include "platform/linux/eds/EdsCalendar.h"

#include "platform/linux/eds/EdsWrites.h"

#include <QStringList>

#include <algorithm>

namespace tessaly {

namespace {

using namespace std::chrono_literals;

/// How long to wait for a calendar on a server to connect, and then to be downloaded.
constexpr auto connectionPatience = 3s;
constexpr auto downloadPatience = 30s;
/// One that dies sooner is likely to die again.
constexpr auto stableTime = 10s;
constexpr auto silentDownloadPatience = 5s;

QByteArray backendOf(ESource *source)
{
    return e_source_backend_get_backend_name(
        E_SOURCE_BACKEND(e_source_get_extension(source, E_SOURCE_EXTENSION_CALENDAR)));
}

bool isAnyOf(const QByteArray &name, std::initializer_list<const char *> names)
{
    return std::ranges::any_of(names, [&](const char *other) { return name == other; });
}

bool isOffline(const GError *error)
{
    return error && error->domain == E_CLIENT_ERROR &&
           (error->code == E_CLIENT_ERROR_REPOSITORY_OFFLINE || error->code == E_CLIENT_ERROR_OFFLINE_UNAVAILABLE ||
            error->code == E_CLIENT_ERROR_AUTHENTICATION_FAILED ||
            error->code == E_CLIENT_ERROR_AUTHENTICATION_REQUIRED || error->code == E_CLIENT_ERROR_TLS_NOT_AVAILABLE);
}

/// What an asynchronous call carries: the calendar may be gone, or have reconnected, when the answer arrives.
struct Pending
{
    std::weak_ptr<EdsCalendar> calendar;
    int generation;
};

} // namespace

QString EdsCalendar::identifierOf(ESource *source)
{
    return QStringLiteral("eds:") + QString::fromUtf8(e_source_get_uid(source));
}

EdsCalendar::EdsCalendar(EdsContext &context, ESource *source)
    : m_context(context), m_source(referenceTo(source)), m_identifier(identifierOf(source)),
      m_isRemote(!isAnyOf(backendOf(source), {"local", "contacts", "weather"})),
      // Until the service says how it is.
      m_isWritable(!isAnyOf(backendOf(source), {"contacts", "weather", "webcal", "http"})),
      m_zones(std::make_shared<ZoneTable>(context.userCalendar().zone().id())),
      m_text(std::make_shared<EventText>(
          context.userCalendar(), [zones = m_zones](const char *tzid) { return nativeZone(zones->find(tzid)); })),
      m_mirror(m_identifier, m_zones, m_text)
{
}

EdsCalendar::~EdsCalendar()
{
    disconnect();
}

void EdsCalendar::connect()
{
    m_phase = Phase::Connecting;
    g_signal_connect_swapped(m_source.get(), "notify::connection-status",
                             G_CALLBACK(+[](EdsCalendar *self) { self->statusChanged(); }), this);
    startWaiting();
    reconnect(0ms);
}

void EdsCalendar::startWaiting()
{
    m_since = Clock::now();
    for (const std::chrono::milliseconds patience : {connectionPatience + 100ms, downloadPatience + 100ms})
        postWhileAlive([this] { m_context.stateChanged(); }, patience);
}

void EdsCalendar::postWhileAlive(std::function<void()> work, std::chrono::milliseconds delay)
{
    m_context.thread().post(
        [weak = weak_from_this(), life = m_context.life(), work = std::move(work)] {
            if (const auto self = weak.lock(); self && life.lock())
                work();
        },
        delay);
}

void EdsCalendar::disconnect()
{
    g_signal_handlers_disconnect_by_data(m_source.get(), this);
    dropClient();
    m_phase = Phase::Gone;
}

void EdsCalendar::dropClient()
{
    closeView();
    if (m_client)
        g_signal_handlers_disconnect_by_data(m_client.get(), this);
    m_client.reset();
    m_zones->setClient(nullptr);
}

void EdsCalendar::closeView()
{
    ++m_generation;
    if (m_view)
        g_signal_handlers_disconnect_by_data(m_view.get(), this);
    m_view.reset();
}

void EdsCalendar::reconnect(std::chrono::milliseconds delay)
{
    postWhileAlive(
        [this, pending = Pending{weak_from_this(), m_generation}] {
            if (m_generation != pending.generation)
                return;
            m_phase = Phase::Connecting;
            // Any other time than -1 is waited for even where there is no connection to wait for.
            e_cal_client_connect(
                m_source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, static_cast<guint32>(-1), m_context.cancellable(),
                [](GObject *, GAsyncResult *result, gpointer data) {
                    const std::unique_ptr<Pending> pending(static_cast<Pending *>(data));
                    GError *error = nullptr;
                    EClient *client = e_cal_client_connect_finish(result, &error);
                    GObjectPtr<ECalClient> owned(client ? E_CAL_CLIENT(client) : nullptr);
                    const GErrorPtr ownedError(error);
                    const auto self = pending->calendar.lock();
                    if (!self || self->m_generation != pending->generation)
                        return;
                    if (owned)
                        self->connected(std::move(owned));
                    else
                        self->fail(error);
                },
                new Pending(pending));
        },
        delay);
}

void EdsCalendar::connected(GObjectPtr<ECalClient> client)
{
    m_client = std::move(client);
    m_isWritable = !e_client_is_readonly(E_CLIENT(m_client.get()));
    m_zones->setClient(m_client.get());
    if (ICalTimezone *zone = m_zones->local())
        e_cal_client_set_default_timezone(m_client.get(), zone);
    g_signal_connect_swapped(m_client.get(), "backend-died", G_CALLBACK(+[](EdsCalendar *self) { self->died(); }),
                             this);
    g_signal_connect_swapped(m_client.get(), "notify::readonly", G_CALLBACK(+[](EdsCalendar *self) {
                                 self->m_isWritable = !e_client_is_readonly(E_CLIENT(self->m_client.get()));
                                 self->m_context.stateChanged();
                             }),
                             this);
    g_signal_connect_swapped(m_client.get(), "backend-error",
                             G_CALLBACK(+[](EdsCalendar *self) { self->m_hasDownloadFailed = true; }), this);
    openView();
}

void EdsCalendar::openView()
{
    closeView();
    m_phase = Phase::Loading;
    m_mirror.clear();
    m_context.stateChanged();
    e_cal_client_get_view(
        m_client.get(), "#t", m_context.cancellable(),
        [](GObject *source, GAsyncResult *result, gpointer data) {
            const std::unique_ptr<Pending> pending(static_cast<Pending *>(data));
            GError *error = nullptr;
            ECalClientView *view = nullptr;
            e_cal_client_get_view_finish(E_CAL_CLIENT(source), result, &view, &error);
            GObjectPtr<ECalClientView> owned(view);
            const GErrorPtr ownedError(error);
            const auto self = pending->calendar.lock();
            if (!self || self->m_generation != pending->generation)
                return;
            if (owned)
                self->watch(std::move(owned));
            else
                self->fail(error);
        },
        new Pending{weak_from_this(), m_generation});
}

void EdsCalendar::watch(GObjectPtr<ECalClientView> view)
{
    m_view = std::move(view);
    const auto added = +[](ECalClientView *, const GSList *components, EdsCalendar *self) { self->added(components); };
    g_signal_connect(m_view.get(), "objects-added", G_CALLBACK(added), this);
    g_signal_connect(m_view.get(), "objects-modified", G_CALLBACK(added), this);
    g_signal_connect(m_view.get(), "objects-removed",
                     G_CALLBACK(+[](ECalClientView *, const GSList *ids, EdsCalendar *self) { self->removed(ids); }),
                     this);
    g_signal_connect(m_view.get(), "progress",
                     G_CALLBACK(+[](ECalClientView *, guint, const gchar *message, EdsCalendar *self) {
                         self->progressed(message);
                     }),
                     this);
    g_signal_connect(m_view.get(), "complete",
                     G_CALLBACK(+[](ECalClientView *, const GError *error, EdsCalendar *self) {
                         if (error)
                             self->fail(error);
                         else
                             self->completed();
                     }),
                     this);
    GError *error = nullptr;
    e_cal_client_view_start(m_view.get(), &error);
    const GErrorPtr owned(error);
    if (error)
        fail(error);
}

void EdsCalendar::fail(const GError *error)
{
    dropClient();
    m_phase = Phase::Failed;
    m_failure = isOffline(error) ? UnreadCalendar::Reason::Offline : UnreadCalendar::Reason::Unreadable;
    m_context.stateChanged();
    reconnect(std::min<std::chrono::milliseconds>(60s, 1s * (1 << std::min(++m_failures, 6))));
}

void EdsCalendar::died()
{
    if (m_phase == Phase::Loaded && Clock::now() - m_since > stableTime)
        m_failures = 0;
    dropClient();
    m_phase = Phase::Connecting;
    m_download = Download::Unknown;
    m_context.readingBegins();
    startWaiting();
    m_context.stateChanged();
    // The next call starts the service again.
    reconnect(m_failures++ == 0 ? 0ms : 1s * std::min(m_failures, 60));
}

void EdsCalendar::completed()
{
    if (m_phase != Phase::Loading)
        return;
    // What was changed just before reaches the new view as well, and may be older than what it began with.
    m_phase = Phase::Checking;
    const QStringList doubtful = m_mirror.doubtfulSeries();
    if (doubtful.isEmpty())
        loaded();
    else
        readAgain(doubtful, [this] { loaded(); });
}

void EdsCalendar::loaded()
{
    m_phase = Phase::Loaded;
    if (m_download == Download::Finished)
        m_context.contentChanged();
    else
        startWaiting();
    statusChanged();
}

void EdsCalendar::statusChanged()
{
    if (m_isRemote && m_phase == Phase::Loaded &&
        e_source_get_connection_status(m_source.get()) == E_SOURCE_CONNECTION_STATUS_CONNECTED)
        download();
    m_context.stateChanged();
}

void EdsCalendar::download()
{
    if (m_download != Download::Unknown)
        return;
    if (!e_client_check_refresh_supported(E_CLIENT(m_client.get()))) {
        m_download = Download::Finished;
        return;
    }
    m_download = Download::Requested;
    m_hasDownloadFailed = false;
    e_client_refresh(
        E_CLIENT(m_client.get()), m_context.cancellable(),
        [](GObject *source, GAsyncResult *result, gpointer) {
            e_client_refresh_finish(E_CLIENT(source), result, nullptr);
        },
        nullptr);
    postWhileAlive(
        [this] {
            // Not every kind of account says when it begins and ends.
            if (m_download == Download::Requested)
                downloaded();
        },
        silentDownloadPatience);
}

void EdsCalendar::progressed(const char *message)
{
    const bool isRunning = message && *message;
    if (m_download == Download::Requested && isRunning)
        m_download = Download::Running;
    else if (m_download == Download::Running && !isRunning)
        downloaded();
}

void EdsCalendar::downloaded()
{
    if (m_hasDownloadFailed) {
        m_download = Download::Unknown;
        postWhileAlive([this] { statusChanged(); }, downloadPatience);
        m_context.stateChanged();
        return;
    }
    m_download = Download::Finished;
    // The service may report the end of the download before the events that arrived; a new view starts with all of
    // them.
    openView();
}

std::optional<UnreadCalendar::Reason> EdsCalendar::unreadReason() const
{
    using Reason = UnreadCalendar::Reason;
    switch (m_phase) {
    case Phase::Connecting:
    case Phase::Loading:
    case Phase::Checking:
        return Reason::Loading;
    case Phase::Failed:
        return m_failure;
    case Phase::Gone:
        return Reason::Unreadable;
    case Phase::Loaded:
        break;
    }
    if (!m_isRemote)
        return std::nullopt;
    switch (e_source_get_connection_status(m_source.get())) {
    case E_SOURCE_CONNECTION_STATUS_CONNECTED:
        return m_download == Download::Finished ? std::nullopt : std::optional(Reason::Loading);
    case E_SOURCE_CONNECTION_STATUS_CONNECTING:
        return Reason::Loading;
    default:
        return Reason::Offline;
    }
}

bool EdsCalendar::isSettled() const
{
    const std::optional<UnreadCalendar::Reason> reason = unreadReason();
    const auto waited = Clock::now() - m_since;
    if (reason == UnreadCalendar::Reason::Loading)
        return m_isRemote && waited >= downloadPatience;
    // It has not tried to connect yet.
    const bool isIdle = m_phase == Phase::Loaded && reason == UnreadCalendar::Reason::Offline &&
                        e_source_get_connection_status(m_source.get()) == E_SOURCE_CONNECTION_STATUS_DISCONNECTED;
    return !isIdle || waited >= connectionPatience;
}

void EdsCalendar::added(const GSList *components)
{
    if (m_phase == Phase::Loading)
        m_context.eventsRead(g_slist_length(const_cast<GSList *>(components)));
    QStringList uncertain;
    for (const GSList *entry = components; entry; entry = entry->next) {
        auto *component = static_cast<ICalComponent *>(entry->data);
        icalcomponent *native = nativeComponent(component);
        const QString uid = uidOf(native);
        const bool isPart = m_mirror.isSeries(uid) || isRecurring(native) ||
                            icalcomponent_get_first_property(native, ICAL_RECURRENCEID_PROPERTY) != nullptr;
        if (m_phase != Phase::Loading && (isPart || isWrittenLately(uid)))
            uncertain.append(uid);
        else
            m_mirror.put(component);
    }
    if (m_phase != Phase::Loading) {
        readAgain(uncertain);
        m_context.contentChanged();
    }
}

void EdsCalendar::removed(const GSList *ids)
{
    QStringList uncertain;
    for (const GSList *entry = ids; entry; entry = entry->next) {
        const QString uid = QString::fromUtf8(e_cal_component_id_get_uid(static_cast<ECalComponentId *>(entry->data)));
        if (m_mirror.isSeries(uid) || isWrittenLately(uid))
            uncertain.append(uid);
        else
            m_mirror.replace(uid, {});
    }
    readAgain(uncertain);
    m_context.contentChanged();
}

} // namespace tessaly
