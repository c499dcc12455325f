#include "platform/Clock.h"
#include "platform/NotificationPresenter.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>

namespace tessaly {

void PlannerStore::addReminder(const ReminderItem &item)
{
    perform({.reminders = {additionOf(item, m_data.reminders.size())}});
    const auto reminder = waitingReminder(item, {}, calendar());
    if (reminder && dueInstant(*reminder, calendar()) < clock().now())
        setCalendarSyncMessage({{QStringLiteral("截止时间已过，不会再提醒。"),
                                 QStringLiteral("The due time has passed. There will be no reminder.")}});
}

void PlannerStore::updateReminder(const ReminderItem &item)
{
    if (const qsizetype row = rowOf(m_data.reminders, item.id); row >= 0)
        perform({.reminders = {editOf(m_data.reminders.at(row), item, row)}});
}

void PlannerStore::removeReminder(const QUuid &id)
{
    if (const qsizetype row = rowOf(m_data.reminders, id); row >= 0)
        perform({.reminders = {removalOf(m_data.reminders.at(row), row)}});
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
