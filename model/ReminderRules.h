#pragma once

#include "model/DateLabels.h"
#include "model/ReminderItem.h"
#include "model/Repetition.h"

#include <QList>
#include <QString>

#include <optional>

namespace tessaly {

/// The to-do completed at `now`, or open again.
[[nodiscard]] ReminderItem toggled(ReminderItem item, Instant now);

/// Whether it is open and its due date has come.
[[nodiscard]] bool isOverdue(const ReminderItem &item, Instant now);
/// When the next open to-do becomes overdue.
[[nodiscard]] std::optional<Instant> nextDueDate(const QList<ReminderItem> &reminders, Instant now);

/// The to-do with another due date. If it repeats, it does so from that date on; without a date it no longer does.
[[nodiscard]] ReminderItem withDueDate(ReminderItem item, std::optional<Instant> dueDate, const UserCalendar &calendar);
/// The to-do repeating so from its due date on; Never and a to-do without one do not repeat, Other stays as it is.
[[nodiscard]] ReminderItem withRepetition(ReminderItem item, Repetition repetition, bool isAfterCompletion,
                                          const UserCalendar &calendar);
/// The same weekday and time of day in the week that begins on that day. Nothing when the calendar has no such day.
[[nodiscard]] std::optional<Instant> movedToWeek(Instant dueDate, QDate firstDay, const UserCalendar &calendar);

/// When a to-do is due by the end of the week that begins on that day: on its last day, in the evening while that is
/// to come. Nothing for a week that is over.
[[nodiscard]] std::optional<Instant> dueInWeek(QDate firstDay, Instant now, const UserCalendar &calendar);

/// To-dos that stand under one label: their rows in the store's list, in the order in which they are shown.
struct ReminderGroup
{
    QString label = {};
    QList<qsizetype> rows = {};

    bool operator==(const ReminderGroup &) const = default;
};

/// Rows of the to-dos that are not complete.
[[nodiscard]] QList<qsizetype> openItems(const QList<ReminderItem> &reminders);

/// Rows of the open to-dos without a due date.
[[nodiscard]] QList<qsizetype> noDueDateItems(const QList<ReminderItem> &reminders);

/// The open to-dos with a due date under the week of that date, earliest first. Weeks ascend by the code points of
/// their labels: what the user reads is what is sorted.
[[nodiscard]] QList<ReminderGroup> dueDateItemsByWeek(const QList<ReminderItem> &reminders,
                                                      const UserCalendar &calendar, const DateLabels &labels);

/// The completed to-dos under the month of completion (`now` when it is not known). Months descend by the code points
/// of their labels.
[[nodiscard]] QList<ReminderGroup> completedByMonth(const QList<ReminderItem> &reminders, const DateLabels &labels,
                                                    Instant now);

} // namespace tessaly
