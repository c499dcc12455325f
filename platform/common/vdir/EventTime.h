#pragma once

#include "model/ICalendarText.h"
#include "model/UserCalendar.h"
#include "model/ZoneTransitions.h"
#include "platform/common/vdir/RecurrenceRule.h"

#include <QHash>

#include <memory>
#include <optional>
#include <vector>

namespace tessaly {

/// The clock changes of a zone: those of the system, or those that a file describes.
class EventZone
{
public:
    struct Change
    {
        qint64 begin = 0;
        qint64 offset = 0;
    };

    explicit EventZone(const QTimeZone &zone) : m_known(std::in_place, zone) {}
    /// The changes stand in order; before the first of them `firstOffset` holds. In seconds and seconds east of UTC.
    EventZone(qint64 firstOffset, std::vector<Change> changes)
        : m_firstOffset(firstOffset), m_changes(std::move(changes))
    {
    }

    /// As in ZoneTransitions.
    [[nodiscard]] qint64 unixSeconds(qint64 wall) const;
    [[nodiscard]] qint64 offsetAt(qint64 unixSeconds) const;

private:
    std::optional<ZoneTransitions> m_known;
    qint64 m_firstOffset = 0;
    std::vector<Change> m_changes;
};

using EventZonePointer = std::shared_ptr<const EventZone>;

/// The zones of all files, each made once.
class EventZones
{
public:
    /// What may be spent on the rules of all zones that files describe.
    explicit EventZones(RuleBudget budget = {.steps = 100'000'000, .barrenRules = 100}) : m_budget(budget) {}

    /// The zone that a TZID names in a file: one of the system, also behind the prefix of a vendor, else the one that
    /// the file itself describes, else the one that Windows knows by this name. Null where it is none of these.
    [[nodiscard]] EventZonePointer zone(const QByteArray &tzid, const QByteArray &text,
                                        const QList<TextComponent> &calendars);

private:
    RuleBudget m_budget;
    QHash<QByteArray, EventZonePointer> m_systemZones;
    /// By the text of their descriptions.
    QHash<QByteArray, EventZonePointer> m_describedZones;
};

/// A date or time of an event (RFC 5545, 3.3.4 and 3.3.5).
struct EventTime
{
    enum class Form { Date, Floating, Utc, Zoned };

    Form form = Form::Utc;
    /// Seconds since 1970-01-01 00:00 on its own clock.
    qint64 wall = 0;
    /// Of the zoned form.
    EventZonePointer zone = {};
    /// A floating time whose zone is named, but not known.
    bool isZoneUnknown = false;

    /// In seconds; dates begin, and floating times are, where the user is.
    [[nodiscard]] qint64 unixSeconds(const UserCalendar &user) const;
    /// The same form at a point in time. Nothing where that form would not be read as this point.
    [[nodiscard]] std::optional<EventTime> at(qint64 unixSeconds, const UserCalendar &user) const;
    /// What this time, an exception or end of a recurrence, is on the clock of that recurrence.
    [[nodiscard]] qint64 wallOn(const EventTime &clock) const;
    /// "20260609", "20260609T090000", "20260609T090000Z"
    [[nodiscard]] QByteArray text() const;
};

/// The wall time that a value names; nothing if it is not a date or time. Sets `isDate` and `isUtc` unless null.
[[nodiscard]] std::optional<qint64> wallFrom(QByteArrayView value, bool *isDate = nullptr, bool *isUtc = nullptr);

} // namespace tessaly
