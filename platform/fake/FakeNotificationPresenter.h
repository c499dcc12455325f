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
        if (m_isAvailable)
            m_shown.append(notification);
        m_completions.append([completion = std::move(completion), isAvailable = m_isAvailable] {
            completion(isAvailable ? Presentation::Shown : Presentation::Unavailable);
        });
    }
    void setActivationHandler(std::function<void(const QString &)> handler) override
    {
        m_activated = std::move(handler);
    }
    void setAvailabilityHandler(std::function<void()> handler) override { m_appeared = std::move(handler); }

    [[nodiscard]] int authorizationCount() const { return m_authorizationCount; }
    [[nodiscard]] const QList<Notification> &shown() const { return m_shown; }
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

private:
    QList<Notification> m_shown;
    QList<std::function<void()>> m_completions;
    std::function<void(const QString &)> m_activated;
    std::function<void()> m_appeared;
    int m_authorizationCount = 0;
    bool m_isAvailable = true;
};

} // namespace tessaly
