#pragma once

#include "model/Instant.h"
#include "model/SkippedEvent.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace tessaly {

/// What an iCalendar text says of itself, and what parseICalendar() makes of it.
struct CalendarFacts
{
    /// It has a line BEGIN:VCALENDAR, in capitals or not.
    bool isCalendar = false;
    /// The first X-WR-CALNAME that is not empty, as plain text on one line.
    QString name = {};
    /// How rarely the text asks to be fetched (REFRESH-INTERVAL, else X-PUBLISHED-TTL); above zero.
    std::optional<double> refreshSeconds = {};
    /// Events that parseICalendar() reads; those among them that repeat (RRULE or RDATE), which it reads once.
    qsizetype eventCount = 0;
    qsizetype repeatingCount = 0;
    /// Events that it leaves out: the first of them in the order of the text, and how many there are in all.
    QList<SkippedEvent> skipped = {};
    qsizetype skippedCount = 0;
    /// Of the events read, as they are read; nothing without events.
    std::optional<Instant> firstStart = {};
    std::optional<Instant> lastEnd = {};
};

/// What the two ways to read a calendar bring.
struct CalendarTrial
{
    /// A repeating event counts once.
    CalendarFacts once = {};
    /// All occurrences are read.
    CalendarFacts whole = {};
};

/// Any bytes are accepted. Slower than parseICalendar(), with whose `currentZone` it agrees in every count.
[[nodiscard]] CalendarFacts calendarFacts(QByteArrayView text, const QTimeZone &currentZone);

} // namespace tessaly
