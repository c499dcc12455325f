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
    /// Withdraws what has buttons: nobody would hear them.
    ~FreedesktopNotifications() override;
    Q_DISABLE_COPY_MOVE(FreedesktopNotifications)

    /// Wakes the service, so that it is there when the first reminder is due.
    void requestAuthorization() override;
    void present(const Notification &notification, Completion completion) override;
    void withdraw(const QString &identifier) override;
    void setActivationHandler(std::function<void(const QString &identifier)> handler) override;
    void setActionHandler(std::function<void(const QString &identifier, const QString &key)> handler) override;
    void setAvailabilityHandler(std::function<void()> handler) override;

private slots:
    void takeAction(uint id, const QString &action);
    void takeActivationToken(uint id, const QString &token);
    void forget(uint id);

private:
    /// What the service can do.
    struct Capabilities
    {
        bool readsMarkup = false;
        bool hasActions = false;
    };
    struct Shown
    {
        QString identifier = {};
        bool hasActions = false;
    };
    void notify(const Notification &notification, quint64 serial, const Completion &completion);
    void takeAnswer(const QDBusMessage &answer, const Notification &notification, quint64 serial,
                    const Completion &completion);
    [[nodiscard]] uint numberOf(const QString &identifier) const;
    void close(uint number);

    QDBusConnection m_bus;
    QString m_desktopEntry;
    std::function<void(const QString &)> m_activated;
    std::function<void(const QString &, const QString &)> m_answered;
    std::function<void()> m_appeared;
    /// Shown notifications by the service's numbers.
    QHash<uint, Shown> m_shown;
    /// Of each identifier the last call under way; what any other call shows has been withdrawn meanwhile.
    QHash<QString, quint64> m_calls;
    quint64 m_lastSerial = 0;
    /// Unknown until the service was asked.
    std::optional<Capabilities> m_capabilities;
};

} // namespace tessaly
