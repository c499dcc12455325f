#pragma once

#include "model/Instant.h"
#include "model/SkippedEvent.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace tessaly {

/// What an event of a calendar takes place as, once.
struct CalendarOccurrence
{
    /// The value of UID, without the property's name.
    QByteArray uid = {};
    /// Plain text, unescaped.
    QString title = {};
    /// Where the rule puts the occurrence: the same after it was moved (RECURRENCE-ID).
    Instant originalStart = {};
    Instant start = {};
    Instant end = {};

    bool operator==(const CalendarOccurrence &) const = default;
};

/// A calendar read whole.
struct ExpandedCalendar
{
    /// By event in the order of the file, then by time.
    QList<CalendarOccurrence> occurrences = {};
    /// Events with at least one occurrence at any time; those that repeat among them.
    qsizetype eventCount = 0;
    qsizetype repeatingCount = 0;
    /// The first thousand in the order of the file, and how many there are in all.
    QList<SkippedEvent> skipped = {};
    qsizetype skippedCount = 0;
};

/// How a calendar is read whole.
struct ExpansionOptions
{
    /// Occurrences that begin before `until` and end after `from`.
    Instant from = {};
    Instant until = {};
    /// For times without a zone, and for zones that nobody knows.
    QTimeZone currentZone = {};
    /// The title of events that have none.
    QString untitled = {};
};

/// Reads iCalendar texts whole (RFC 5545): repetitions, exceptions, durations, zones that the text defines.
class CalendarExpander
{
public:
    virtual ~CalendarExpander() = default;

    /// Any bytes are accepted; what cannot be read is listed as skipped. Time and memory are bounded whatever the text
    /// says. May be called on any thread, on several at once.
    [[nodiscard]] virtual ExpandedCalendar expand(QByteArrayView text, const ExpansionOptions &options) const = 0;

    /// The first time after `after` at which the rule, the value of an RRULE (RFC 5545, 3.3.10), repeats what begins at
    /// `start`. Wall times, whose zones are not looked at. Nothing when there is none within a hundred years, or when
    /// the rule cannot be read.
    [[nodiscard]] virtual std::optional<QDateTime> nextRepetition(const QString &rule, const QDateTime &start,
                                                                  const QDateTime &after) const = 0;
};

} // namespace tessaly
