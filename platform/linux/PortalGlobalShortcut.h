#pragma once

#include "platform/GlobalShortcut.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariant>

#include <functional>

namespace tessaly {

/// The key as the desktop portal grants it (org.freedesktop.portal.GlobalShortcuts, version 1). Asks nothing before it
/// is wanted, and never waits.
class PortalGlobalShortcut final : public QObject, public GlobalShortcut
{
    Q_OBJECT

public:
    explicit PortalGlobalShortcut(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    [[nodiscard]] State state() const override { return m_state; }
    [[nodiscard]] QString keys() const override { return m_keys; }
    void look() override;
    void turnOn(const QString &description) override;
    void turnOff() override;

private slots:
    void takeResponse(uint response, const QVariantMap &results);
    void takePress(const QDBusMessage &signal);
    void takeEnd();

private:
    /// Sends a call that the portal answers by a Response, to `answered`.
    void request(QDBusMessage call, QVariantMap options, const std::function<void(const QVariantMap &)> &answered);
    void bind(const QString &session);
    void take(State state, const QString &keys = {});
    void endSession();
    void listenForResponse(const QString &handle);

    QDBusConnection m_bus;
    State m_state = State::Unknown;
    QString m_keys;
    QString m_description;
    QString m_session;
    QString m_handle;
    std::function<void(const QVariantMap &)> m_answered;
};

} // namespace tessaly
