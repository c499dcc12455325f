#include "model/ReminderRules.h"
#include "platform/CalendarExpander.h"
#include "platform/Clock.h"
#include "platform/NotificationPresenter.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>

#include <algorithm>

namespace tessaly {

namespace {

TextPair dismissalReport(qsizetype count)
{
    const QString number = QString::number(count);
    if (count == 1)
        return {QStringLiteral("已忽略 1 个提醒"), QStringLiteral("Dismissed 1 reminder")};
    return {QStringLiteral("已忽略 %1 个提醒").arg(number), QStringLiteral("Dismissed %1 reminders").arg(number)};
}

} // namespace

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
        perform({.reminders = changesFor(m_data.reminders.at(row), item, row)});
}

QList<RecordChange<ReminderItem>> PlannerStore::changesFor(const ReminderItem &before, ReminderItem after,
                                                           qsizetype row) const
{
    QList<RecordChange<ReminderItem>> changes;
    if (!before.isComplete && after.isComplete) {
        if (const auto next = nextRepetition(before, clock().now())) {
            after.recurrenceRule.reset();
            after.recurrenceStart.reset();
            after.recursAfterCompletion.reset();
            changes.append(additionOf(*next, row + 1));
        }
    }
    changes.prepend(editOf(before, after, row));
    return changes;
}

std::optional<ReminderItem> PlannerStore::nextRepetition(const ReminderItem &item, Instant completed) const
{
    if (!item.dueDate || !item.recurrenceRule)
        return std::nullopt;
    const QDateTime due = calendar().dateTime(*item.dueDate);
    const QDateTime now = calendar().dateTime(completed);
    const bool countsFromNow = item.recursAfterCompletion.value_or(false);
    QDateTime start = item.recurrenceStart ? calendar().dateTime(*item.recurrenceStart) : due;
    if (countsFromNow)
        start = calendar().dateTime(calendar().instant(now.date(), due.time()));
    const QDateTime after = countsFromNow ? start : std::max(due, now);
    const auto next = ports().calendarExpander.nextRepetition(*item.recurrenceRule, start, after);
    if (!next)
        return std::nullopt;
    ReminderItem repeated = item;
    repeated.id = QUuid::createUuid();
    repeated.dueDate = calendar().instant(next->date(), next->time());
    repeated.recurrenceStart = countsFromNow ? *repeated.dueDate : calendar().instant(start.date(), start.time());
    return repeated;
}

void PlannerStore::removeReminder(const QUuid &id)
{
    if (const qsizetype row = rowOf(m_data.reminders, id); row >= 0)
        perform({.reminders = {removalOf(m_data.reminders.at(row), row)}});
}

void PlannerStore::answerReminders(const QStringList &identifiers, ReminderAnswer answer)
{
    StateChange change;
    for (const QString &identifier : identifiers) {
        const QList<WaitingReminder> &list = m_waitingReminders.list();
        const auto reminder = std::ranges::find(list, identifier, &WaitingReminder::identifier);
        if (reminder == list.cend())
            continue;
        const qsizetype row = rowOf(m_data.reminders, QUuid::fromString(identifier));
        if (answer == ReminderAnswer::Complete && row >= 0 && !m_data.reminders.at(row).isComplete) {
            const ReminderItem &item = m_data.reminders.at(row);
            change.reminders.append(changesFor(item, toggled(item, clock().now()), row));
            continue;
        }
        change.waitingBefore.append(*reminder);
        if (const auto later = putOff(*reminder, answer, calendar(), clock().now()))
            change.waitingAfter.append(*later);
    }
    std::optional<TextPair> name;
    if (!change.waitingAfter.isEmpty())
        name = TextPair{QStringLiteral("推迟提醒"), QStringLiteral("Snooze reminder")};
    else if (change.reminders.isEmpty())
        name = TextPair{QStringLiteral("忽略提醒"), QStringLiteral("Dismiss reminder")};
    perform(change, name,
            answer == ReminderAnswer::Dismiss ? dismissalReport(change.waitingBefore.size()) : TextPair());
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
