#include "platform/linux/PortalFileDialogs.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QGuiApplication>
#include <QUuid>
#include <QWindow>

#include <utility>

namespace tessaly {

namespace {

/// Kind (0 glob) and text.
using PortalPattern = std::pair<uint, QString>;
/// A name and its patterns.
using PortalFilter = std::pair<QString, QList<PortalPattern>>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString openFile = QStringLiteral("OpenFile");
const QString saveFile = QStringLiteral("SaveFile");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

/// The portal names windows of X11 by their number; for Wayland there is no way to name one with this Qt.
QString parentWindow()
{
    const QWindow *window = QGuiApplication::focusWindow();
    return window && QGuiApplication::platformName() == u"xcb" ? QStringLiteral("x11:%1").arg(window->winId(), 0, 16)
                                                               : QString();
}

/// A question that the portal works on. It deletes itself.
class Request : public QObject
{
    Q_OBJECT

public:
    Request(QDBusConnection bus, std::function<void(QList<QUrl>)> completion, std::function<void()> fallback)
        : m_bus(std::move(bus)), m_completion(std::move(completion)), m_fallback(std::move(fallback))
    {
    }

    void ask(const QString &method, const QString &title, QVariantMap options)
    {
        const QString token = QStringLiteral("tessaly%1").arg(QUuid::createUuid().toString(QUuid::Id128));
        options.insert(QStringLiteral("handle_token"), token);
        // The answer may come before the reply to the call, so its place is listened at from the start.
        const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
        listen(QStringLiteral("%1/request/%2/%3").arg(path, sender, token));
        QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
        call << parentWindow() << title << options;
        auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
            watcher->deleteLater();
            const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
            if (!reply.isValid()) {
                const std::function<void()> fallback = std::exchange(m_fallback, {});
                deleteLater();
                fallback();
            } else if (reply.value().path() != m_handle) {
                listen(reply.value().path());
            }
        });
    }

private slots:
    void respond(uint response, const QVariantMap &results)
    {
        if (!m_completion)
            return;
        QList<QUrl> files;
        const QStringList uris = qdbus_cast<QStringList>(results.value(QStringLiteral("uris")));
        for (const QString &uri : response == 0 ? uris : QStringList())
            files.append(QUrl(uri));
        deleteLater();
        std::exchange(m_completion, {})(files);
    }

private:
    void listen(const QString &handle)
    {
        m_handle = handle;
        m_bus.connect(service, handle, requestInterface, QStringLiteral("Response"), this,
                      SLOT(respond(uint, QVariantMap)));
    }

    QDBusConnection m_bus;
    QString m_handle;
    std::function<void(QList<QUrl>)> m_completion;
    std::function<void()> m_fallback;
};

} // namespace

PortalFileDialogs::PortalFileDialogs(std::unique_ptr<FileDialogs> otherwise, QDBusConnection bus)
    : m_otherwise(std::move(otherwise)), m_bus(std::move(bus))
{
}

PortalFileDialogs::~PortalFileDialogs() = default;

void PortalFileDialogs::chooseFiles(const FileQuestion &question, std::function<void(QList<QUrl>)> completion)
{
    qDBusRegisterMetaType<PortalPattern>();
    qDBusRegisterMetaType<QList<PortalPattern>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
    PortalFilter filter;
    for (const QString &extension : question.extensions) {
        for (const QString &spelling : {extension, extension.toUpper()})
            filter.second.append({0, QStringLiteral("*.") + spelling});
        filter.first += (filter.first.isEmpty() ? QStringLiteral("*.") : QStringLiteral(", *.")) + extension;
    }
    ask(openFile, question.title,
        {{QStringLiteral("multiple"), question.allowsSeveral},
         {QStringLiteral("filters"), QVariant::fromValue(QList<PortalFilter>{filter})}},
        completion, [otherwise = m_otherwise, question, completion] { otherwise->chooseFiles(question, completion); });
}

void PortalFileDialogs::chooseSaveFile(const QString &title, const QString &suggestedName,
                                       std::function<void(QUrl)> completion)
{
    ask(
        saveFile, title, {{QStringLiteral("current_name"), suggestedName}},
        [completion](const QList<QUrl> &files) { completion(files.value(0)); },
        [otherwise = m_otherwise, title, suggestedName, completion] {
            otherwise->chooseSaveFile(title, suggestedName, completion);
        });
}

void PortalFileDialogs::chooseFolder(const QString &title, const QUrl &start, std::function<void(QUrl)> completion)
{
    ask(
        openFile, title,
        {{QStringLiteral("directory"), true},
         // A path as bytes with a final null, as the portal wants it.
         {QStringLiteral("current_folder"), QFile::encodeName(start.toLocalFile()) + '\0'}},
        [completion](const QList<QUrl> &folders) { completion(folders.value(0)); },
        [otherwise = m_otherwise, title, start, completion] { otherwise->chooseFolder(title, start, completion); });
}

void PortalFileDialogs::ask(const QString &method, const QString &title, const QVariantMap &options,
                            std::function<void(QList<QUrl>)> completion, std::function<void()> fallback)
{
    if (!m_bus.isConnected()) {
        fallback();
        return;
    }
    (new Request(m_bus, std::move(completion), std::move(fallback)))->ask(method, title, options);
}

} // namespace tessaly

#include "PortalFileDialogs.moc"
