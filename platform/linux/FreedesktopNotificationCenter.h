#pragma once

#include "platform/NotificationCenter.h"

#include <QDBusConnection>

namespace tessaly {

/// The notification service of the session bus (Desktop Notifications Specification 1.2). It knows no permission:
/// whoever is on the bus may notify.
class FreedesktopNotificationCenter final : public NotificationCenter
{
public:
    explicit FreedesktopNotificationCenter(QDBusConnection bus = QDBusConnection::sessionBus());

    /// Wakes the notification server, so that it is there when the first reminder is due.
    void requestAuthorization() override;
    /// Not delivered yet.
    void add(const NotificationRequest &) override {}

private:
    QDBusConnection m_bus;
};

} // namespace tessaly
