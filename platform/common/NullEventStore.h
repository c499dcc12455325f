#pragma once

#include "platform/EventStore.h"

#include <QObject>
#include <QTimer>

namespace tessaly {

/// Stands in where the system has no calendar service: access fails, and there is nothing to read.
class NullEventStore final : public EventStore
{
public:
    [[nodiscard]] TextPair serviceName() const override
    {
        return {QStringLiteral("系统日历"), QStringLiteral("system calendar")};
    }
    [[nodiscard]] bool isAvailable() const override { return false; }
    void requestAccess(AccessCompletion completion) override { refuse(std::move(completion)); }
    [[nodiscard]] QList<EventCalendar> calendars() const override { return {}; }
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override { return {}; }
    void fetchEvents(const QStringList &, Instant, Instant, FetchCompletion completion) override
    {
        refuse(std::move(completion));
    }
    void createEvent(const NewEvent &, SaveCompletion completion) override { refuse(std::move(completion)); }
    void changeEvent(const QString &, const EventChange &, SaveCompletion completion) override
    {
        refuse(std::move(completion));
    }
    void removeEvent(const QString &, RemoveCompletion completion) override { refuse(std::move(completion)); }
    void setChangeHandler(std::function<void()>) override {}

private:
    /// Answers later that the service cannot be reached.
    template <typename Completion>
    void refuse(Completion completion)
    {
        QTimer::singleShot(
            0, &m_alive, [completion = std::move(completion)] { completion(Error{ErrorCode::CalendarAccessFailed}); });
    }

    QObject m_alive;
};

} // namespace tessaly
