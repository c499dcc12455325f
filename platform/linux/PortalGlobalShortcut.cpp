#include "platform/linux/PortalGlobalShortcut.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QUuid>

#include <utility>

namespace tessaly {

namespace {

using Shortcut = std::pair<QString, QVariantMap>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");
const QString shortcutId = QStringLiteral("find");

QString freshToken()
{
    return QStringLiteral("tessaly%1").arg(QUuid::createUuid().toString(QUuid::Id128));
}

QDBusMessage portalCall(const QString &method)
{
    return QDBusMessage::createMethodCall(service, path, interface, method);
}

} // namespace

PortalGlobalShortcut::PortalGlobalShortcut(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
}

void PortalGlobalShortcut::take(State state, const QString &keys)
{
    if (m_state == state && m_keys == keys)
        return;
    m_state = state;
    m_keys = keys;
    announceChange();
}

void PortalGlobalShortcut::look()
{
    if (m_state != State::Unknown)
        return;
    if (!m_bus.isConnected()) {
        take(State::Missing);
        return;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << interface << QStringLiteral("version");
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        const bool isThere = reply.isValid() && reply.value().variant().toUInt() >= 1;
        if (m_state == State::Unknown)
            take(isThere ? State::Off : State::Missing);
    });
}

void PortalGlobalShortcut::turnOn(const QString &description)
{
    if (m_state == State::On || m_state == State::Waiting)
        return;
    if (!m_bus.isConnected()) {
        take(State::Missing);
        return;
    }
    m_description = description;
    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<QList<Shortcut>>();
    m_bus.connect(service, path, interface, QStringLiteral("Activated"), this, SLOT(takePress(QDBusMessage)));
    take(State::Waiting);
    request(portalCall(QStringLiteral("CreateSession")), {{QStringLiteral("session_handle_token"), freshToken()}},
            [this](const QVariantMap &results) { bind(results.value(QStringLiteral("session_handle")).toString()); });
}

void PortalGlobalShortcut::bind(const QString &session)
{
    m_session = session;
    m_bus.connect(service, session, sessionInterface, QStringLiteral("Closed"), this, SLOT(takeEnd()));
    QDBusMessage call = portalCall(QStringLiteral("BindShortcuts"));
    const Shortcut shortcut{shortcutId,
                            {{QStringLiteral("description"), m_description},
                             {QStringLiteral("preferred_trigger"), QStringLiteral("CTRL+ALT+k")}}};
    call << QVariant::fromValue(QDBusObjectPath(session)) << QVariant::fromValue(QList<Shortcut>{shortcut})
         << QString();
    request(call, {}, [this](const QVariantMap &results) {
        const auto bound =
            qdbus_cast<QList<Shortcut>>(results.value(QStringLiteral("shortcuts")).value<QDBusArgument>());
        for (const auto &[id, properties] : bound) {
            if (id == shortcutId) {
                take(State::On, properties.value(QStringLiteral("trigger_description")).toString());
                return;
            }
        }
        endSession();
        take(State::Off);
    });
}

void PortalGlobalShortcut::request(QDBusMessage call, QVariantMap options,
                                   const std::function<void(const QVariantMap &)> &answered)
{
    const QString token = freshToken();
    options.insert(QStringLiteral("handle_token"), token);
    m_answered = answered;
    // The answer may come before the reply to the call, so its place is listened at from the start.
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    const QString handle = QStringLiteral("%1/request/%2/%3").arg(path, sender, token);
    listenForResponse(handle);
    call << options;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, handle] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        // The answer came first, and led to the next call.
        if (m_handle != handle)
            return;
        if (!reply.isValid()) {
            m_answered = {};
            endSession();
            take(State::Missing);
        } else if (m_answered && reply.value().path() != handle) {
            listenForResponse(reply.value().path());
        }
    });
}

void PortalGlobalShortcut::listenForResponse(const QString &handle)
{
    if (!m_handle.isEmpty())
        m_bus.disconnect(service, m_handle, requestInterface, QStringLiteral("Response"), this,
                         SLOT(takeResponse(uint, QVariantMap)));
    m_handle = handle;
    m_bus.connect(service, handle, requestInterface, QStringLiteral("Response"), this,
                  SLOT(takeResponse(uint, QVariantMap)));
}

void PortalGlobalShortcut::takeResponse(uint response, const QVariantMap &results)
{
    const auto answered = std::exchange(m_answered, {});
    if (!answered)
        return;
    if (response == 0) {
        answered(results);
        return;
    }
    endSession();
    take(State::Off);
}

void PortalGlobalShortcut::takePress(const QDBusMessage &signal)
{
    // The session, the shortcut, the time, and more.
    const QList<QVariant> arguments = signal.arguments();
    const bool isOurs = arguments.value(0).value<QDBusObjectPath>().path() == m_session;
    if (m_session.isEmpty() || !isOurs || arguments.value(1).toString() != shortcutId)
        return;
    const auto options = qdbus_cast<QVariantMap>(arguments.value(3));
    announcePress(options.value(QStringLiteral("activation_token")).toString().toUtf8());
}

void PortalGlobalShortcut::takeEnd()
{
    m_session.clear();
    take(State::Off);
}

void PortalGlobalShortcut::turnOff()
{
    m_answered = {};
    endSession();
    if (m_state == State::On || m_state == State::Waiting)
        take(State::Off);
}

void PortalGlobalShortcut::endSession()
{
    if (m_session.isEmpty())
        return;
    m_bus.disconnect(service, m_session, sessionInterface, QStringLiteral("Closed"), this, SLOT(takeEnd()));
    m_bus.asyncCall(QDBusMessage::createMethodCall(service, std::exchange(m_session, {}), sessionInterface,
                                                   QStringLiteral("Close")));
}

} // namespace tessaly
