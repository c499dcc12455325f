#include "model/Agenda.h"

#include "model/DisplayTitle.h"
#include "model/ScheduleRules.h"
#include "model/Uuid.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QString dayText(QDate day, AppLanguage language)
{
    const bool isEnglish = language == AppLanguage::English;
    return interfaceLocale(isEnglish).toString(day, isEnglish ? u"ddd, MMM d, yyyy" : u"yyyy年M月d日 ddd");
}

QString timeText(Instant instant, const UserCalendar &calendar)
{
    return calendar.dateTime(instant).toString(u"HH:mm");
}

/// Times stand in a column as wide as "09:00 – 10:00".
QString row(const QString &when, const QString &what)
{
    constexpr qsizetype timeWidth = 13;
    return u"  "_s + when.leftJustified(timeWidth) + u"  "_s + what.simplified() + u'\n';
}

QString scheduleRow(const ScheduleItem &schedule, const UserCalendar &calendar)
{
    const QString tag = schedule.tag && !schedule.tag->isEmpty() ? u" #"_s + *schedule.tag : QString();
    return row(timeRangeText(schedule.date, schedule.endDate, calendar), displayTitle(schedule) + tag);
}

QString timeValue(Instant instant, const UserCalendar &calendar)
{
    const QDateTime time = calendar.dateTime(instant);
    return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODate);
}

QJsonObject scheduleValue(const ScheduleItem &schedule, const UserCalendar &calendar)
{
    QJsonObject value{{u"id"_s, uuidText(schedule.id)},
                      {u"title"_s, displayTitle(schedule)},
                      {u"start"_s, timeValue(schedule.date, calendar)}};
    if (schedule.endDate)
        value.insert(u"end"_s, timeValue(*schedule.endDate, calendar));
    if (schedule.tag && !schedule.tag->isEmpty())
        value.insert(u"tag"_s, *schedule.tag);
    if (!schedule.notes.isEmpty())
        value.insert(u"notes"_s, schedule.notes);
    return value;
}

QJsonArray reminderValues(const QList<ReminderItem> &reminders, const UserCalendar &calendar)
{
    QJsonArray values;
    for (const ReminderItem &reminder : reminders) {
        QJsonObject value{{u"id"_s, uuidText(reminder.id)}, {u"title"_s, reminder.title}};
        if (reminder.dueDate)
            value.insert(u"due"_s, timeValue(*reminder.dueDate, calendar));
        values.append(value);
    }
    return values;
}

} // namespace

Agenda agenda(const SavedData &data, const QSet<QString> &visibleCalendarIDs, const UserCalendar &calendar, Instant now,
              int dayCount)
{
    Agenda result;
    const QDate today = calendar.day(now);
    for (int index = 0; index < dayCount; ++index)
        result.days.append({.day = today.addDays(index)});
    const Instant from = calendar.startOfDay(today);
    const Instant to = calendar.startOfDay(today.addDays(dayCount));
    for (const ScheduleItem &schedule : data.schedules) {
        if (schedule.date >= from && schedule.date < to && isDisplayed(schedule, visibleCalendarIDs))
            result.days[today.daysTo(calendar.day(schedule.date))].schedules.append(schedule);
    }
    for (const ReminderItem &reminder : data.reminders) {
        if (reminder.isComplete)
            continue;
        if (!reminder.dueDate)
            result.undated.append(reminder);
        else if (*reminder.dueDate < from)
            result.overdue.append(reminder);
        else if (*reminder.dueDate < to)
            result.days[today.daysTo(calendar.day(*reminder.dueDate))].reminders.append(reminder);
    }
    std::ranges::stable_sort(result.overdue, {}, &ReminderItem::dueDate);
    for (AgendaDay &day : result.days) {
        std::ranges::stable_sort(day.schedules, {}, &ScheduleItem::date);
        std::ranges::stable_sort(day.reminders, {}, &ReminderItem::dueDate);
    }
    return result;
}

QString agendaText(const Agenda &agenda, const UserCalendar &calendar, AppLanguage language)
{
    const TextPair overdue{u"已过期"_s, u"Overdue"_s};
    const TextPair due{u"%1 截止"_s, u"due %1"_s};
    const TextPair undated{u"没有截止时间"_s, u"No due date"_s};
    const TextPair nothing{u"没有日程，也没有到期的待办。"_s, u"No schedules, and no to-dos due."_s};
    QString text;
    if (!agenda.overdue.isEmpty())
        text += overdue.in(language) + u'\n';
    for (const ReminderItem &reminder : agenda.overdue)
        text += row(calendar.dateTime(*reminder.dueDate).toString(u"MM-dd HH:mm"), reminder.title);
    for (const AgendaDay &day : agenda.days) {
        if (day.schedules.isEmpty() && day.reminders.isEmpty())
            continue;
        text += (text.isEmpty() ? QString() : u"\n"_s) + dayText(day.day, language) + u'\n';
        for (const ScheduleItem &schedule : day.schedules)
            text += scheduleRow(schedule, calendar);
        for (const ReminderItem &reminder : day.reminders)
            text += row(due.in(language).arg(timeText(*reminder.dueDate, calendar)), reminder.title);
    }
    if (!agenda.undated.isEmpty())
        text += (text.isEmpty() ? QString() : u"\n"_s) + undated.in(language) + u'\n';
    for (const ReminderItem &reminder : agenda.undated)
        text += u"  "_s + reminder.title.simplified() + u'\n';
    return text.isEmpty() ? nothing.in(language) + u'\n' : text;
}

QByteArray agendaJson(const Agenda &agenda, const UserCalendar &calendar)
{
    QJsonArray days;
    for (const AgendaDay &day : agenda.days) {
        QJsonArray schedules;
        for (const ScheduleItem &schedule : day.schedules)
            schedules.append(scheduleValue(schedule, calendar));
        days.append(QJsonObject{{u"date"_s, day.day.toString(Qt::ISODate)},
                                {u"schedules"_s, schedules},
                                {u"todos"_s, reminderValues(day.reminders, calendar)}});
    }
    return QJsonDocument({{u"overdue"_s, reminderValues(agenda.overdue, calendar)},
                          {u"days"_s, days},
                          {u"undated"_s, reminderValues(agenda.undated, calendar)}})
        .toJson();
}

} // namespace tessaly
