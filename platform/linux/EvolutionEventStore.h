#pragma once

#include "model/UserCalendar.h"
#include "platform/EventStore.h"

#include <memory>

namespace tessaly {

/// The calendars of Evolution Data Server. The module that speaks to it, and its libraries, are loaded with the first
/// request for access.
class EvolutionEventStore final : public EventStore
{
public:
    explicit EvolutionEventStore(const UserCalendar &calendar);
    ~EvolutionEventStore() override;
    Q_DISABLE_COPY_MOVE(EvolutionEventStore)

    /// Whether the session's bus has the service, or starts it on demand, and the module is installed.
    [[nodiscard]] static bool isOffered();

    [[nodiscard]] TextPair serviceName() const override { return current().serviceName(); }
    [[nodiscard]] bool needsConsent() const override { return true; }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override { return current().calendars(); }
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override
    {
        return current().defaultCalendarForNewEvents();
    }
    void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                     FetchCompletion completion) override
    {
        current().fetchEvents(calendarIdentifiers, from, to, std::move(completion));
    }
    [[nodiscard]] qsizetype eventsRead() const override { return current().eventsRead(); }
    void createEvent(const NewEvent &event, SaveCompletion completion) override
    {
        current().createEvent(event, std::move(completion));
    }
    void changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion) override
    {
        current().changeEvent(eventIdentifier, change, std::move(completion));
    }
    void removeEvent(const QString &eventIdentifier, RemoveCompletion completion) override
    {
        current().removeEvent(eventIdentifier, std::move(completion));
    }
    void setChangeHandler(std::function<void()> handler) override;

private:
    /// What answers as long as nothing is loaded.
    [[nodiscard]] EventStore &current() const { return *m_current; }

    UserCalendar m_calendar;
    std::function<void()> m_changeHandler;
    bool m_isLoaded = false;
    std::unique_ptr<EventStore> m_current;
};

} // namespace tessaly
