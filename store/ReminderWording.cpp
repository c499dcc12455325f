#include "store/ReminderWording.h"

#include "model/DisplayTitle.h"
#include "store/PlannerSettings.h"
#include "store/RecordRows.h"
#include "store/ScheduleReminders.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

struct Button
{
    ReminderAnswer answer = ReminderAnswer::Complete;
    QString key = {};
    TextPair label = {};
};

const std::array<Button, 4> &buttons()
{
    static const std::array<Button, 4> all{{
        {ReminderAnswer::Complete, QStringLiteral("done"), {QStringLiteral("完成"), QStringLiteral("Done")}},
        {ReminderAnswer::InTenMinutes,
         QStringLiteral("in-10-minutes"),
         {QStringLiteral("10 分钟后"), QStringLiteral("In 10 minutes")}},
        {ReminderAnswer::InOneHour,
         QStringLiteral("in-1-hour"),
         {QStringLiteral("1 小时后"), QStringLiteral("In 1 hour")}},
        {ReminderAnswer::Tomorrow, QStringLiteral("tomorrow"), {QStringLiteral("明天"), QStringLiteral("Tomorrow")}},
    }};
    return all;
}

QString firstLine(const QString &text)
{
    const QString trimmed = text.trimmed();
    return trimmed.left(trimmed.indexOf(u'\n')).trimmed();
}

} // namespace

const QString ReminderWording::missedIdentifier = QStringLiteral("missedReminders");

Notification ReminderWording::notification(const WaitingReminder &reminder) const
{
    Notification notification{
        .identifier = reminder.identifier, .title = reminder.title, .body = title(reminder), .isLasting = true};
    if (const QString line = detail(reminder); !line.isEmpty())
        notification.body += u'\n' + line;
    for (const Button &button : buttons())
        notification.actions.append({button.key, m_settings.text(button.label.chinese, button.label.english)});
    return notification;
}

Notification ReminderWording::notification(const QList<WaitingReminder> &missed) const
{
    constexpr qsizetype mostTitles = 5;
    const QString count = QString::number(missed.size());
    QStringList titles;
    for (const WaitingReminder &reminder : missed.first(std::min(missed.size(), mostTitles)))
        titles.append(title(reminder));
    if (missed.size() > mostTitles)
        titles.append(QStringLiteral("…"));
    return {.identifier = missedIdentifier,
            .title = m_settings.text(QStringLiteral("提醒事项"), QStringLiteral("Reminder")),
            .body = m_settings.text(QStringLiteral("错过了 %1 个提醒").arg(count),
                                    missed.size() == 1 ? QStringLiteral("1 reminder was missed")
                                                       : QStringLiteral("%1 reminders were missed").arg(count)) +
                    u'\n' + titles.join(m_settings.text(QStringLiteral("、"), QStringLiteral(", "))),
            .actions = {{QStringLiteral("show"), m_settings.text(QStringLiteral("查看"), QStringLiteral("Show"))}},
            .isLasting = true};
}

QString ReminderWording::detail(const WaitingReminder &reminder) const
{
    if (const ScheduleItem *item = schedule(reminder))
        return m_settings.dateText(item->date, false);
    const ReminderItem *item = toDo(reminder);
    return item ? firstLine(item->requirement.value_or(QString())) : QString();
}

bool ReminderWording::hasRecord(const WaitingReminder &reminder) const
{
    return schedule(reminder) || toDo(reminder);
}

QString ReminderWording::title(const WaitingReminder &reminder) const
{
    if (const ScheduleItem *item = schedule(reminder))
        return displayTitle(*item);
    const ReminderItem *item = toDo(reminder);
    return item ? item->title : reminder.body;
}

Instant ReminderWording::due(const WaitingReminder &reminder) const
{
    if (const ScheduleItem *item = schedule(reminder))
        return item->date;
    const ReminderItem *item = toDo(reminder);
    return item && item->dueDate ? *item->dueDate : dueInstant(reminder, m_settings.calendar());
}

std::optional<ReminderAnswer> ReminderWording::answerOf(const QString &actionKey)
{
    const auto found = std::ranges::find(buttons(), actionKey, &Button::key);
    return found == buttons().end() ? std::nullopt : std::optional(found->answer);
}

const ScheduleItem *ReminderWording::schedule(const WaitingReminder &reminder) const
{
    return ScheduleReminders::schedule(reminder, m_data.schedules);
}

const ReminderItem *ReminderWording::toDo(const WaitingReminder &reminder) const
{
    if (ScheduleReminders::isOfSchedule(reminder))
        return nullptr;
    const qsizetype row = rowOf(m_data.reminders, QUuid::fromString(reminder.identifier));
    return row < 0 ? nullptr : &m_data.reminders.at(row);
}

} // namespace tessaly
