#include "platform/Clock.h"
#include "platform/NotificationCenter.h"
#include "store/PlannerStore.h"
#include "store/RecordRows.h"

#include "model/Uuid.h"

namespace tessaly {

void PlannerStore::addReminder(const ReminderItem &item)
{
    remindersAssigned(appendRecord(m_data.reminders, item));
    scheduleNotification(item);
    if (!item.dueDate)
        return;
    // A notification comes at the start of its minute.
    const QTime minute = QTime(0, 0).addSecs(calendar().minuteOfDay(*item.dueDate) * 60);
    if (calendar().instant(calendar().day(*item.dueDate), minute) < clock().now())
        setCalendarSyncMessage({QStringLiteral("截止时间已过，不会再提醒。"),
                                QStringLiteral("The due time has passed. There will be no reminder.")});
}

void PlannerStore::updateReminder(const ReminderItem &item)
{
    if (const auto rows = replaceRecord(m_data.reminders, item))
        remindersAssigned(*rows);
}

void PlannerStore::removeReminder(const QUuid &id)
{
    if (const auto rows = removeRecords(m_data.reminders, id))
        remindersAssigned(*rows);
}

void PlannerStore::scheduleNotification(const ReminderItem &item)
{
    if (!item.dueDate)
        return;
    const QDateTime due = calendar().dateTime(*item.dueDate);
    // lint-allow(instant): the clock's hands, which the notification waits for
    const QTime minute(due.time().hour(), due.time().minute());
    ports().notificationCenter.add({.identifier = uuidText(item.id),
                                    .title = text(QStringLiteral("提醒事项"), QStringLiteral("Reminder")),
                                    .body = item.title,
                                    .minute = QDateTime(due.date(), minute, calendar().zone())});
}

} // namespace tessaly
