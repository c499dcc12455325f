#pragma once

#include "platform/NotificationPresenter.h"

#include <QList>

#include <utility>

namespace tessaly {

/// A desktop in memory: shows what it is given while it is available. Completions come from complete().
class FakeNotificationPresenter final : public NotificationPresenter
{
public:
    void requestAuthorization() override { ++m_authorizationCount; }
    void present(const Notification &notification, Completion completion) override
    {
        if (m_isAvailable) {
            m_shown.append(notification);
            m_onDesktop.removeIf(
                [&](const Notification &other) { return other.identifier == notification.identifier; });
            m_onDesktop.append(notification);
        }
        m_completions.append([completion = std::move(completion), isAvailable = m_isAvailable] {
            completion(isAvailable ? Presentation::Shown : Presentation::Unavailable);
        });
    }
    void withdraw(const QString &identifier) override
    {
        m_onDesktop.removeIf([&](const Notification &other) { return other.identifier == identifier; });
    }
    void setActivationHandler(std::function<void(const QString &)> handler) override
    {
        m_activated = std::move(handler);
    }
    void setActionHandler(std::function<void(const QString &, const QString &)> handler) override
    {
        m_answered = std::move(handler);
    }
    void setAvailabilityHandler(std::function<void()> handler) override { m_appeared = std::move(handler); }

    [[nodiscard]] int authorizationCount() const { return m_authorizationCount; }
    /// All that were ever shown.
    [[nodiscard]] const QList<Notification> &shown() const { return m_shown; }
    /// Those that were neither withdrawn nor replaced.
    [[nodiscard]] const QList<Notification> &onDesktop() const { return m_onDesktop; }
    /// As if none had been shown yet.
    void forget()
    {
        m_shown.clear();
        m_onDesktop.clear();
    }
    /// Calls the completions that wait.
    void complete()
    {
        const QList<std::function<void()>> completions = std::exchange(m_completions, {});
        for (const std::function<void()> &completion : completions)
            completion();
    }
    void setUnavailable() { m_isAvailable = false; }
    /// Becomes available without calling the handler.
    void recover() { m_isAvailable = true; }
    /// Becomes available and calls the handler.
    void appear()
    {
        m_isAvailable = true;
        if (m_appeared)
            m_appeared();
    }
    void click(const QString &identifier) { m_activated(identifier); }
    void press(const QString &identifier, const QString &key) { m_answered(identifier, key); }

private:
    QList<Notification> m_shown;
    QList<Notification> m_onDesktop;
    QList<std::function<void()>> m_completions;
    std::function<void(const QString &)> m_activated;
    std::function<void(const QString &, const QString &)> m_answered;
    std::function<void()> m_appeared;
    int m_authorizationCount = 0;
    bool m_isAvailable = true;
};

} // namespace tessaly
