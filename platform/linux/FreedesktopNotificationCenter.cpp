#include "platform/linux/FreedesktopNotificationCenter.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

#include <utility>

namespace tessaly {

FreedesktopNotificationCenter::FreedesktopNotificationCenter(QDBusConnection bus) : m_bus(std::move(bus))
{
}

void FreedesktopNotificationCenter::requestAuthorization()
{
    m_bus.asyncCall(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("GetServerInformation")));
}

} // namespace tessaly
