#pragma once

#include "platform/NotificationPresenter.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>

#include <optional>

class QDBusMessage;

namespace tessaly {

/// The notification service of the session bus (Desktop Notifications Specification 1.2). It knows no permission:
/// whoever is on the bus may notify.
class FreedesktopNotifications final : public QObject, public NotificationPresenter
{
    Q_OBJECT

public:
    /// `desktopEntry` is the name of the program's desktop file without its suffix; it is also the icon's name.
    explicit FreedesktopNotifications(QString desktopEntry, const QDBusConnection &bus = QDBusConnection::sessionBus(),
                                      QObject *parent = nullptr);

    /// Wakes the service, so that it is there when the first reminder is due.
    void requestAuthorization() override;
    void present(const Notification &notification, Completion completion) override;
    void setActivationHandler(std::function<void(const QString &identifier)> handler) override;
    void setAvailabilityHandler(std::function<void()> handler) override;

private slots:
    void takeAction(uint id, const QString &action);
    void takeActivationToken(uint id, const QString &token);
    void forget(uint id);

private:
    void notify(const Notification &notification, const Completion &completion);
    void takeAnswer(const QDBusMessage &answer, const QString &identifier, const Completion &completion);

    QDBusConnection m_bus;
    QString m_desktopEntry;
    std::function<void(const QString &)> m_activated;
    std::function<void()> m_appeared;
    /// Identifiers of shown notifications by the service's numbers.
    QHash<uint, QString> m_identifiers;
    /// Whether the service reads markup; unknown until it was asked.
    std::optional<bool> m_readsMarkup;
};

} // namespace tessaly
