#pragma once

#include "model/AppLanguage.h"
#include "model/ReminderItem.h"
#include "model/ScheduleItem.h"
#include "model/UserCalendar.h"

#include <QList>
#include <QString>

#include <optional>

namespace tessaly {

/// A part of a text in UTF-16 units.
struct TextSpan
{
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const TextSpan &) const = default;
};

/// What a phrase such as "lunch tomorrow 12:30–13:30" says.
struct QuickEntry
{
    enum class Kind {
        /// Nothing tells.
        Open,
        /// It says how long it lasts.
        Schedule,
        /// It says by when.
        ToDo,
    };

    /// The phrase without what was understood.
    QString title = {};
    /// Start of a schedule, due date of a to-do. Before the moment of the phrase only if that names a day, a week or a
    /// year that is over.
    std::optional<Instant> start = {};
    /// Later than the start.
    std::optional<Instant> end = {};
    Kind kind = Kind::Open;
    /// What was understood, in order.
    QList<TextSpan> understood = {};

    bool operator==(const QuickEntry &) const = default;
};

/// Reads the phrase in Chinese and in English, as it is meant at the moment. A phrase that is nothing but a time is a
/// title, as are all words within quotation marks.
[[nodiscard]] QuickEntry quickEntry(const QString &phrase, Instant now, const UserCalendar &calendar);

/// The next full hour: when a schedule begins of which no time is said.
[[nodiscard]] Instant nextFullHour(Instant now, const UserCalendar &calendar);

/// The schedule that the entry describes: from the next full hour and for an hour, where it does not say.
[[nodiscard]] ScheduleItem scheduleOf(const QuickEntry &entry, Instant now, const UserCalendar &calendar);
[[nodiscard]] ReminderItem toDoOf(const QuickEntry &entry);

/// "tomorrow 15:00", "tomorrow 15:00–16:00", "Fri, Nov 27 15:00"; the year only where it is another one.
[[nodiscard]] QString timeLabel(Instant start, std::optional<Instant> end, Instant now, const UserCalendar &calendar,
                                AppLanguage language);

} // namespace tessaly
