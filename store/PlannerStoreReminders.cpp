#include "platform/Clock.h"
#include "platform/NotificationPresenter.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>

namespace tessaly {

void PlannerStore::addReminder(const ReminderItem &item)
{
    scheduleNotification(nullptr, item);
    remindersAssigned(appendRecord(m_data.reminders, item));
    const auto reminder = waitingReminder(item, {}, calendar());
    if (reminder && dueInstant(*reminder, calendar()) < clock().now())
        setCalendarSyncMessage({{QStringLiteral("截止时间已过，不会再提醒。"),
                                 QStringLiteral("The due time has passed. There will be no reminder.")}});
}

void PlannerStore::updateReminder(const ReminderItem &item)
{
    const qsizetype row = rowOf(m_data.reminders, item.id);
    if (row < 0)
        return;
    scheduleNotification(&m_data.reminders.at(row), item);
    remindersAssigned(*replaceRecord(m_data.reminders, item));
}

void PlannerStore::removeReminder(const QUuid &id)
{
    if (const auto rows = removeRecords(m_data.reminders, id))
        remindersAssigned(*rows);
}

void PlannerStore::scheduleNotification(const ReminderItem *before, const ReminderItem &item)
{
    m_waitingReminders.follow(before, item, text(QStringLiteral("提醒事项"), QStringLiteral("Reminder")));
}

void PlannerStore::reportResidence()
{
    if (ports().preferences.get<bool>(keys::hasReportedResidence).value_or(false))
        return;
    ports().notificationPresenter.present(
        {.identifier = keys::hasReportedResidence,
         .title = QStringLiteral("Tessaly"),
         .body = text(QStringLiteral("窗口关闭后，Tessaly 会继续在后台运行，以便按时提醒。"),
                      QStringLiteral("Tessaly keeps running without its window so that it can show your reminders."))},
        [store = QPointer(this)](Presentation presentation) {
            if (store && presentation == Presentation::Shown)
                store->savePreference(keys::hasReportedResidence, true);
        });
}

} // namespace tessaly
