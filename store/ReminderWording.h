#pragma once

#include "model/SavedData.h"
#include "model/WaitingReminder.h"
#include "platform/NotificationPresenter.h"

namespace tessaly {

class PlannerSettings;

/// Reminders as notifications in the interface language, with the words that their records have now.
class ReminderWording
{
public:
    /// Identifies the one notification for several reminders.
    static const QString missedIdentifier;

    /// Both must outlive the object.
    ReminderWording(const PlannerSettings &settings, const SavedData &data) : m_settings(settings), m_data(data) {}

    /// The record's title, below it the first line of its requirement or the time at which it starts, and a button for
    /// each answer.
    [[nodiscard]] Notification notification(const WaitingReminder &reminder) const;
    /// How many they are, below it some of their titles, and a button that shows them.
    [[nodiscard]] Notification notification(const QList<WaitingReminder> &missed) const;
    /// Whether the record is there, and for a schedule, whether it starts when the reminder says.
    [[nodiscard]] bool hasRecord(const WaitingReminder &reminder) const;
    /// The record's title, or what it was when the record is gone.
    [[nodiscard]] QString title(const WaitingReminder &reminder) const;
    /// When the record is due or starts, which putting off does not change; or else the reminder itself.
    [[nodiscard]] Instant due(const WaitingReminder &reminder) const;

    /// The answer that the button stands for.
    [[nodiscard]] static std::optional<ReminderAnswer> answerOf(const QString &actionKey);

private:
    [[nodiscard]] const ReminderItem *toDo(const WaitingReminder &reminder) const;
    [[nodiscard]] const ScheduleItem *schedule(const WaitingReminder &reminder) const;
    [[nodiscard]] QString detail(const WaitingReminder &reminder) const;

    const PlannerSettings &m_settings;
    const SavedData &m_data;
};

} // namespace tessaly
