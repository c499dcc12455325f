#pragma once

#include "model/CalendarEvent.h"
#include "model/UserCalendar.h"
#include "platform/EventStore.h"

#include <libical/ical.h>

#include <functional>

namespace tessaly {

struct IcalComponentFree
{
    void operator()(icalcomponent *component) const { icalcomponent_free(component); }
};
using IcalComponentPtr = std::unique_ptr<icalcomponent, IcalComponentFree>;

/// The zone that a TZID names; null if it is unknown, and the time then counts as local.
using ZoneLookup = std::function<icaltimezone *(const char *)>;

/// Reads and changes VEVENT components (RFC 5545). All-day and floating times are the user's local time.
class EventText
{
public:
    EventText(const UserCalendar &calendar, ZoneLookup lookup);

    [[nodiscard]] Instant instant(const icaltimetype &time) const;
    /// With its zone; the null time where there is no such property.
    [[nodiscard]] icaltimetype time(icalcomponent *event, icalproperty_kind kind) const;
    /// By DTEND or DURATION; without either, all-day events last a day and others no time at all.
    [[nodiscard]] icaltimetype end(icalcomponent *event) const;
    /// The start that an occurrence has by the rule, as text that names it among its event's occurrences.
    [[nodiscard]] QString occurrenceKey(icaltimetype originalStart) const;

    /// Without identifiers.
    [[nodiscard]] CalendarEvent read(icalcomponent *event) const;
    [[nodiscard]] IcalComponentPtr create(const NewEvent &event) const;
    /// False where nothing had to be changed. Times keep their form: zone, floating, all-day as long as they are whole
    /// days.
    bool change(icalcomponent *event, const EventChange &change) const;
    /// The occurrence of a recurring event that begins at `start`, to be saved beside the event. `start` as DTSTART has
    /// it.
    [[nodiscard]] IcalComponentPtr detach(icalcomponent *master, const icaltimetype &start) const;
    /// Takes the occurrence out of the event's repetitions. False where it is out already.
    bool exclude(icalcomponent *master, const icaltimetype &start) const;
    /// Whether the event's repetitions leave out the occurrence of that key.
    [[nodiscard]] bool isExcluded(icalcomponent *master, const QString &occurrenceKey) const;

    /// The user's zone, null where libical does not know it.
    [[nodiscard]] icaltimezone *localZone() const { return m_localZone; }

private:
    enum class Form { Date, Floating, Zoned };
    [[nodiscard]] icaltimetype written(Instant instant, Form form, icaltimezone *zone) const;
    /// The time of an EXDATE, with its zone.
    [[nodiscard]] icaltimetype exceptionTime(icalproperty *property) const;
    bool changeTimes(icalcomponent *event, Instant start, Instant end) const;
    [[nodiscard]] bool isMidnight(Instant instant) const;

    UserCalendar m_calendar;
    ZoneLookup m_lookup;
    icaltimezone *m_localZone;
};

[[nodiscard]] bool isRecurring(icalcomponent *event);
[[nodiscard]] QString uidOf(icalcomponent *event);

} // namespace tessaly
