#pragma once

#include "model/ReminderItem.h"
#include "model/UserCalendar.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QSet>

namespace tessaly {

/// A reminder that waits for its minute.
struct WaitingReminder
{
    /// The id of the to-do as text. A later reminder with the same identifier replaces this one.
    QString identifier = {};
    QString title = {};
    QString body = {};
    // No zone: a reminder for half past five stays at half past five wherever the user goes.
    QDate day = {};
    /// Whole minutes.
    QTime minute = {};

    bool operator==(const WaitingReminder &) const = default;
};

/// The reminder of a to-do for the minute in which it is due; nothing without a due date.
[[nodiscard]] std::optional<WaitingReminder> waitingReminder(const ReminderItem &item, const QString &title,
                                                             const UserCalendar &calendar);

/// When the minute of the reminder begins where the user is.
[[nodiscard]] Instant dueInstant(const WaitingReminder &reminder, const UserCalendar &calendar);

/// What waits after a to-do was added, with `before` null, or changed; nothing when that does not concern its reminder.
/// An open to-do's reminder waits for the due minute unless that has begun; completing the to-do removes it, and
/// reopening restores it.
[[nodiscard]] std::optional<QList<WaitingReminder>> waitingAfter(const ReminderItem *before, const ReminderItem &after,
                                                                 const QString &title, QList<WaitingReminder> waiting,
                                                                 const UserCalendar &calendar, Instant now);

/// What is due and what still waits.
struct DueReminders
{
    /// Earliest first.
    QList<WaitingReminder> due = {};
    QList<WaitingReminder> waiting = {};
};

/// Reminders whose identifier is in `held` wait although they are due.
[[nodiscard]] DueReminders splitDue(const QList<WaitingReminder> &reminders, const QSet<QString> &held,
                                    const UserCalendar &calendar, Instant now);

/// A JSON array. Nothing for anything else; unreadable elements are left out.
[[nodiscard]] std::optional<QList<WaitingReminder>> decodeWaitingReminders(QByteArrayView json);
[[nodiscard]] QByteArray encodeWaitingReminders(const QList<WaitingReminder> &reminders);

} // namespace tessaly
