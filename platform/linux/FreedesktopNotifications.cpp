#include "platform/linux/FreedesktopNotifications.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <algorithm>
#include <utility>

namespace tessaly {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
/// The action of a click on the notification itself.
const QString defaultAction = QStringLiteral("default");

QDBusMessage call(const QString &method)
{
    return QDBusMessage::createMethodCall(service, path, interface, method);
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(QString desktopEntry, const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_bus(bus), m_desktopEntry(std::move(desktopEntry))
{
    m_bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), this, SLOT(takeAction(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("ActivationToken"), this,
                  SLOT(takeActivationToken(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), this, SLOT(forget(uint)));
    const auto *watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        m_capabilities.reset();
        m_shown.clear();
        if (m_appeared)
            m_appeared();
    });
}

FreedesktopNotifications::~FreedesktopNotifications()
{
    for (auto shown = m_shown.cbegin(); shown != m_shown.cend(); ++shown) {
        if (shown->hasActions)
            close(shown.key());
    }
}

void FreedesktopNotifications::requestAuthorization()
{
    m_bus.asyncCall(call(QStringLiteral("GetServerInformation")));
}

void FreedesktopNotifications::setActivationHandler(std::function<void(const QString &)> handler)
{
    m_activated = std::move(handler);
}

void FreedesktopNotifications::setActionHandler(std::function<void(const QString &, const QString &)> handler)
{
    m_answered = std::move(handler);
}

void FreedesktopNotifications::setAvailabilityHandler(std::function<void()> handler)
{
    m_appeared = std::move(handler);
}

void FreedesktopNotifications::present(const Notification &notification, Completion completion)
{
    const quint64 serial = ++m_lastSerial;
    m_calls.insert(notification.identifier, serial);
    if (m_capabilities) {
        notify(notification, serial, completion);
        return;
    }
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call(QStringLiteral("GetCapabilities"))), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, notification, serial, completion = std::move(completion)](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusMessage answer = finished->reply();
                if (answer.type() == QDBusMessage::ReplyMessage) {
                    const QStringList names = answer.arguments().value(0).toStringList();
                    m_capabilities = {.readsMarkup = names.contains(QStringLiteral("body-markup")),
                                      .hasActions = names.contains(QStringLiteral("actions"))};
                }
                notify(notification, serial, completion);
            });
}

void FreedesktopNotifications::notify(const Notification &notification, quint64 serial, const Completion &completion)
{
    constexpr int untilTheServiceSaysSo = -1;
    constexpr int untilItIsClosed = 0;
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)},
                            {QStringLiteral("desktop-entry"), m_desktopEntry},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}};
    const Capabilities capabilities = m_capabilities.value_or(Capabilities());
    const QString body = capabilities.readsMarkup ? notification.body.toHtmlEscaped() : notification.body;
    // Services that list actions show the label of the default one too; the program's name needs no translation.
    QStringList actions{defaultAction, QCoreApplication::applicationName()};
    if (capabilities.hasActions) {
        for (const NotificationAction &action : notification.actions)
            actions << action.key << action.label;
    }
    QDBusMessage message = call(QStringLiteral("Notify"));
    message.setArguments({QCoreApplication::applicationName(), numberOf(notification.identifier), m_desktopEntry,
                          notification.title, body, actions, hints,
                          notification.isLasting ? untilItIsClosed : untilTheServiceSaysSo});
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, notification, serial, completion](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                takeAnswer(finished->reply(), notification, serial, completion);
            });
}

void FreedesktopNotifications::takeAnswer(const QDBusMessage &answer, const Notification &notification, quint64 serial,
                                          const Completion &completion)
{
    const QString &identifier = notification.identifier;
    const bool isWanted = m_calls.value(identifier) == serial;
    if (isWanted)
        m_calls.remove(identifier);
    if (answer.type() == QDBusMessage::ReplyMessage) {
        const uint number = answer.arguments().value(0).toUInt();
        if (isWanted)
            m_shown.insert(number, {identifier, !notification.actions.isEmpty()});
        else
            close(number);
        completion(Presentation::Shown);
        return;
    }
    // Without an answer in time it may well be on the screen: that is no reason to show it a second time.
    const QString error = answer.errorName();
    const bool mayBeShown = error == QLatin1String("org.freedesktop.DBus.Error.NoReply") ||
                            error == QLatin1String("org.freedesktop.DBus.Error.Timeout");
    completion(mayBeShown ? Presentation::Shown : Presentation::Unavailable);
}

void FreedesktopNotifications::withdraw(const QString &identifier)
{
    m_calls.remove(identifier);
    if (const uint number = numberOf(identifier); number != 0) {
        m_shown.remove(number);
        close(number);
    }
}

uint FreedesktopNotifications::numberOf(const QString &identifier) const
{
    const auto found = std::ranges::find(m_shown.cbegin(), m_shown.cend(), identifier,
                                         [](const Shown &shown) { return shown.identifier; });
    return found == m_shown.cend() ? 0 : found.key();
}

void FreedesktopNotifications::close(uint number)
{
    QDBusMessage message = call(QStringLiteral("CloseNotification"));
    message.setArguments({number});
    m_bus.asyncCall(message);
}

void FreedesktopNotifications::takeAction(uint id, const QString &action)
{
    const QString identifier = m_shown.value(id).identifier;
    if (identifier.isEmpty())
        return;
    if (action != defaultAction && m_answered)
        m_answered(identifier, action);
    else if (action == defaultAction && m_activated)
        m_activated(identifier);
}

void FreedesktopNotifications::takeActivationToken(uint id, const QString &token)
{
    // Wayland gives the focus only to a window that shows the token of the click.
    if (m_shown.contains(id))
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

void FreedesktopNotifications::forget(uint id)
{
    m_shown.remove(id);
}

} // namespace tessaly
