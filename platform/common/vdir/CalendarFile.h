#pragma once

#include "platform/common/vdir/EventTime.h"
#include "platform/common/vdir/RecurrenceRule.h"

#include <optional>
#include <vector>

namespace tessaly {

/// One VEVENT: an event, the pattern of a recurring one, or one of its occurrences that differs.
struct EventPart
{
    EventTime start = {};
    std::optional<EventTime> end = {};
    std::optional<EventDuration> duration = {};
    std::optional<QString> title = {};
    QString notes = {};
    /// The occurrence that this one stands for, on the clock of the recurring event.
    std::optional<EventTime> recurrenceId = {};
    /// Those that follow it are changed likewise (RANGE=THISANDFUTURE).
    bool changesFollowing = false;
    /// Which VEVENT of the file it is.
    qsizetype position = 0;

    /// Where it ends when it starts at `startTime` instead; not before that.
    [[nodiscard]] qint64 endSeconds(const EventTime &startTime, const UserCalendar &user) const;
    /// The same in two steps, for many starts: how long it is, and where what is so long ends.
    [[nodiscard]] EventDuration length(const UserCalendar &user) const;
    [[nodiscard]] static qint64 endAfter(const EventTime &startTime, qint64 startSeconds, EventDuration length,
                                         const UserCalendar &user);
};

/// An event of a calendar, or one occurrence, in seconds since 1970-01-01 UTC.
struct EventOccurrence
{
    const EventPart *part = nullptr;
    /// The start that the occurrence had at first, as it stands in a RECURRENCE-ID; empty for what does not recur.
    QByteArray original = {};
    qint64 start = 0;
    qint64 end = 0;
};

/// All VEVENTs of a file with one UID.
class FileEvent
{
public:
    QString uid;
    std::optional<EventPart> pattern;
    QList<EventPart> overrides;
    QByteArrayList rules;
    QByteArrayList excludingRules;
    QList<EventTime> addedTimes;
    QList<EventTime> excludedTimes;

    [[nodiscard]] bool isRecurring() const { return !rules.isEmpty() || !addedTimes.isEmpty(); }
    /// Finds all occurrences up to the horizon (seconds since 1970-01-01 UTC) and keeps them for the next call. False
    /// if they cannot be determined.
    [[nodiscard]] bool expand(qint64 horizon);
    /// Likewise the occurrences that the rules put within a window, and the first one.
    [[nodiscard]] bool expandWithin(RuleWindow &window);
    /// After expand(): the event or its occurrences. What begins after the horizon is left out of an endless one.
    [[nodiscard]] std::vector<EventOccurrence> occurrences(const UserCalendar &user) const;
    /// The same, one by one, with the start that each had at first, on the clock of the pattern.
    using Visitor = std::function<void(const EventPart &part, const EventTime &original, const EventTime &start)>;
    void forEachOccurrence(const Visitor &visit) const;
    /// Brings the ids of the overrides to the clock of the pattern; of two for one occurrence the later counts.
    void settleOverrides();

private:
    using RuleTimes = std::function<std::optional<std::vector<qint64>>(const QByteArray &rule, const RuleStart &start)>;
    [[nodiscard]] std::optional<std::vector<qint64>> expandedWalls(const RuleTimes &timesOf) const;

    std::vector<qint64> m_walls;
    std::optional<qint64> m_horizon;
};

/// The events of the text of a file. Nothing where it cannot be read, so that nothing may be concluded from it.
[[nodiscard]] std::optional<QList<FileEvent>> readCalendarFile(const QByteArray &text, const QString &fileName,
                                                               EventZones &zones);
/// The VEVENTs of a text in the order that EventPart::position counts.
[[nodiscard]] QList<TextComponent> eventComponents(const QByteArray &text);

} // namespace tessaly
