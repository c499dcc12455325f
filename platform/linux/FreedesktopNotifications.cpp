#include "platform/linux/FreedesktopNotifications.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

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
        m_readsMarkup.reset();
        m_identifiers.clear();
        if (m_appeared)
            m_appeared();
    });
}

void FreedesktopNotifications::requestAuthorization()
{
    m_bus.asyncCall(call(QStringLiteral("GetServerInformation")));
}

void FreedesktopNotifications::setActivationHandler(std::function<void(const QString &)> handler)
{
    m_activated = std::move(handler);
}

void FreedesktopNotifications::setAvailabilityHandler(std::function<void()> handler)
{
    m_appeared = std::move(handler);
}

void FreedesktopNotifications::present(const Notification &notification, Completion completion)
{
    if (m_readsMarkup) {
        notify(notification, completion);
        return;
    }
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call(QStringLiteral("GetCapabilities"))), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, notification, completion = std::move(completion)](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusMessage answer = finished->reply();
                if (answer.type() == QDBusMessage::ReplyMessage)
                    m_readsMarkup = answer.arguments().value(0).toStringList().contains(QStringLiteral("body-markup"));
                notify(notification, completion);
            });
}

void FreedesktopNotifications::notify(const Notification &notification, const Completion &completion)
{
    constexpr uint replacesNothing = 0;
    constexpr int untilTheServiceSaysSo = -1;
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue<uchar>(1)},
                            {QStringLiteral("desktop-entry"), m_desktopEntry},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}};
    const QString body = m_readsMarkup.value_or(false) ? notification.body.toHtmlEscaped() : notification.body;
    QDBusMessage message = call(QStringLiteral("Notify"));
    // Services that list actions show the label of the default one too; the program's name needs no translation.
    message.setArguments({QCoreApplication::applicationName(), replacesNothing, m_desktopEntry, notification.title,
                          body, QStringList{defaultAction, QCoreApplication::applicationName()}, hints,
                          untilTheServiceSaysSo});
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, identifier = notification.identifier, completion](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                takeAnswer(finished->reply(), identifier, completion);
            });
}

void FreedesktopNotifications::takeAnswer(const QDBusMessage &answer, const QString &identifier,
                                          const Completion &completion)
{
    if (answer.type() == QDBusMessage::ReplyMessage) {
        m_identifiers.insert(answer.arguments().value(0).toUInt(), identifier);
        completion(Presentation::Shown);
        return;
    }
    // Without an answer in time it may well be on the screen: that is no reason to show it a second time.
    const QString error = answer.errorName();
    const bool mayBeShown = error == QLatin1String("org.freedesktop.DBus.Error.NoReply") ||
                            error == QLatin1String("org.freedesktop.DBus.Error.Timeout");
    completion(mayBeShown ? Presentation::Shown : Presentation::Unavailable);
}

void FreedesktopNotifications::takeAction(uint id, const QString &action)
{
    const auto found = m_identifiers.constFind(id);
    if (found != m_identifiers.cend() && action == defaultAction && m_activated)
        m_activated(*found);
}

void FreedesktopNotifications::takeActivationToken(uint id, const QString &token)
{
    // Wayland gives the focus only to a window that shows the token of the click.
    if (m_identifiers.contains(id))
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

void FreedesktopNotifications::forget(uint id)
{
    m_identifiers.remove(id);
}

} // namespace tessaly
