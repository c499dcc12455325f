#include "model/WaitingReminder.h"

#include "model/Uuid.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

std::optional<WaitingReminder> waitingReminder(const ReminderItem &item, const QString &title,
                                               const UserCalendar &calendar)
{
    if (!item.dueDate)
        return std::nullopt;
    const QDateTime due = calendar.dateTime(*item.dueDate);
    return WaitingReminder{.identifier = uuidText(item.id),
                           .title = title,
                           .body = item.title,
                           .day = due.date(),
                           .minute = QTime(due.time().hour(), due.time().minute())};
}

Instant dueInstant(const WaitingReminder &reminder, const UserCalendar &calendar)
{
    return calendar.instant(reminder.day, reminder.minute);
}

std::optional<QList<WaitingReminder>> waitingAfter(const ReminderItem *before, const ReminderItem &after,
                                                   const QString &title, QList<WaitingReminder> waiting,
                                                   const UserCalendar &calendar, Instant now)
{
    const bool wasOpen = before && !before->isComplete;
    if (wasOpen == !after.isComplete)
        return std::nullopt;
    waiting.removeIf([identifier = uuidText(after.id)](const auto &other) { return other.identifier == identifier; });
    const auto reminder = waitingReminder(after, title, calendar);
    if (!after.isComplete && reminder && dueInstant(*reminder, calendar) >= now)
        waiting.append(*reminder);
    return waiting;
}

DueReminders splitDue(const QList<WaitingReminder> &reminders, const QSet<QString> &held, const UserCalendar &calendar,
                      Instant now)
{
    DueReminders split;
    for (const WaitingReminder &reminder : reminders) {
        const bool isDue = dueInstant(reminder, calendar) <= now && !held.contains(reminder.identifier);
        (isDue ? split.due : split.waiting).append(reminder);
    }
    std::ranges::stable_sort(split.due, {}, [&](const auto &reminder) { return dueInstant(reminder, calendar); });
    return split;
}

std::optional<QList<WaitingReminder>> decodeWaitingReminders(QByteArrayView json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json.toByteArray());
    if (!document.isArray())
        return std::nullopt;
    QList<WaitingReminder> reminders;
    const QJsonArray entries = document.array();
    for (const QJsonValue &entry : entries) {
        const QStringList minute = entry["minute"_L1].toString().split(u'T');
        WaitingReminder reminder{.identifier = entry["identifier"_L1].toString(),
                                 .title = entry["title"_L1].toString(),
                                 .body = entry["body"_L1].toString(),
                                 .day = QDate::fromString(minute.value(0), u"yyyy-MM-dd"_s),
                                 .minute = QTime::fromString(minute.value(1), u"HH:mm"_s)};
        if (reminder.day.isValid() && reminder.minute.isValid())
            reminders.append(std::move(reminder));
    }
    return reminders;
}

QByteArray encodeWaitingReminders(const QList<WaitingReminder> &reminders)
{
    QJsonArray entries;
    for (const WaitingReminder &reminder : reminders) {
        entries.append(QJsonObject{
            {u"identifier"_s, reminder.identifier},
            {u"title"_s, reminder.title},
            {u"body"_s, reminder.body},
            {u"minute"_s, reminder.day.toString(u"yyyy-MM-dd") + u'T' + reminder.minute.toString(u"HH:mm")}});
    }
    return QJsonDocument(entries).toJson(QJsonDocument::Compact);
}

} // namespace tessaly
