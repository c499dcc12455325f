#pragma once

#include "model/ReminderItem.h"
#include "model/UserCalendar.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace tessaly {

/// Where a reminder is between its to-do and the user's answer, which removes it. All but the first are unanswered.
enum class ReminderState {
    Waiting, ///< for its minute: the first one, or one that it was put off to
    Due,     ///< its minute has begun, and no notification service has shown it yet
    Shown,   ///< a notification service took it while the planner was running
    Missed,  ///< fell due while the planner was not running, which was reported at its start
};

/// What happens to a reminder.
enum class ReminderEvent { MinuteBegan, WasShown, WasReported, WasPutOff };

[[nodiscard]] ReminderState stateAfter(ReminderState state, ReminderEvent event);

/// What the user does about a reminder.
enum class ReminderAnswer { Complete, InTenMinutes, InOneHour, Tomorrow, Dismiss };

/// A reminder that waits for its minute or for the user's answer.
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
    ReminderState state = ReminderState::Waiting;

    [[nodiscard]] bool isUnanswered() const { return state != ReminderState::Waiting; }
    bool operator==(const WaitingReminder &) const = default;
};

/// The reminder of a to-do for the minute in which it is due; nothing without a due date.
[[nodiscard]] std::optional<WaitingReminder> waitingReminder(const ReminderItem &item, const QString &title,
                                                             const UserCalendar &calendar);

/// When the minute of the reminder begins where the user is.
[[nodiscard]] Instant dueInstant(const WaitingReminder &reminder, const UserCalendar &calendar);

/// What waits after a to-do was added, with `before` null, or changed; nothing when that does not concern its reminder.
/// An open to-do's reminder waits for the due minute unless that has begun, and moves with the due date; completing the
/// to-do removes it, and reopening restores it.
[[nodiscard]] std::optional<QList<WaitingReminder>> waitingAfter(const ReminderItem *before, const ReminderItem &after,
                                                                 const QString &title, QList<WaitingReminder> waiting,
                                                                 const UserCalendar &calendar, Instant now);

/// The time of day to which "tomorrow" puts a reminder off.
inline constexpr QTime putOffTomorrow = QTime::fromMSecsSinceStartOfDay(9 * 3'600'000);

/// The reminder at its new minute: 10 minutes or one hour from now, to the nearest minute that is still to come, or
/// tomorrow at that time. Nothing for an answer that does not put it off.
[[nodiscard]] std::optional<WaitingReminder> putOff(WaitingReminder reminder, ReminderAnswer answer,
                                                    const UserCalendar &calendar, Instant now);

/// The unanswered ones, earliest first.
[[nodiscard]] QList<WaitingReminder> unanswered(const QList<WaitingReminder> &reminders, const UserCalendar &calendar);

/// A JSON array. Nothing for anything else; unreadable elements are left out. An unknown state counts as waiting.
[[nodiscard]] std::optional<QList<WaitingReminder>> decodeWaitingReminders(QByteArrayView json);
[[nodiscard]] QByteArray encodeWaitingReminders(const QList<WaitingReminder> &reminders);

} // namespace tessaly
