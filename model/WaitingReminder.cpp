#include "model/WaitingReminder.h"

#include "model/Uuid.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <iterator>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

// How the states are stored; a waiting one, as in lists of earlier versions, without a word.
constexpr std::array<QLatin1StringView, 4> stateWords{""_L1, "due"_L1, "shown"_L1, "missed"_L1};

ReminderState stateOf(const QString &word)
{
    const auto found = std::ranges::find(stateWords, word);
    return found == stateWords.end() ? ReminderState::Waiting : static_cast<ReminderState>(found - stateWords.begin());
}

} // namespace

ReminderState stateAfter(ReminderState state, ReminderEvent event)
{
    using enum ReminderState;
    constexpr std::array<std::array<ReminderState, 4>, 4> table{{
        // MinuteBegan, WasShown, WasReported, WasPutOff
        {Due, Waiting, Waiting, Waiting}, // Waiting: what is shown is the one before it was put off
        {Due, Shown, Missed, Waiting},    // Due
        {Shown, Shown, Shown, Waiting},   // Shown
        {Missed, Missed, Missed, Waiting} // Missed
    }};
    return table.at(static_cast<size_t>(state)).at(static_cast<size_t>(event));
}

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
    const bool hasMoved = before && before->dueDate != after.dueDate;
    if (wasOpen == !after.isComplete && !(wasOpen && hasMoved))
        return std::nullopt;
    waiting.removeIf([identifier = uuidText(after.id)](const auto &other) { return other.identifier == identifier; });
    const auto reminder = waitingReminder(after, title, calendar);
    if (!after.isComplete && reminder && dueInstant(*reminder, calendar) >= now)
        waiting.append(*reminder);
    return waiting;
}

std::optional<WaitingReminder> putOff(WaitingReminder reminder, ReminderAnswer answer, const UserCalendar &calendar,
                                      Instant now)
{
    constexpr int tenMinutes = 600;
    constexpr int toNearestMinute = 30;
    QDateTime wall = calendar.dateTime(now.plus(toNearestMinute));
    switch (answer) {
    case ReminderAnswer::Complete:
    case ReminderAnswer::Dismiss:
        return std::nullopt;
    case ReminderAnswer::InTenMinutes:
        wall = wall.addSecs(tenMinutes);
        break;
    case ReminderAnswer::InOneHour:
        wall = wall.addSecs(6 * tenMinutes);
        break;
    case ReminderAnswer::Tomorrow:
        wall = calendar.dateTime(calendar.instant(calendar.day(now).addDays(1), putOffTomorrow));
        break;
    }
    const auto setMinute = [&reminder, &wall] {
        reminder.day = wall.date();
        reminder.minute = QTime(wall.time().hour(), wall.time().minute());
    };
    setMinute();
    // In the hour that a clock change repeats, the minute is that of the first time.
    for (; dueInstant(reminder, calendar) <= now; setMinute())
        wall = wall.addSecs(tenMinutes);
    reminder.state = stateAfter(reminder.state, ReminderEvent::WasPutOff);
    return reminder;
}

QList<WaitingReminder> unanswered(const QList<WaitingReminder> &reminders, const UserCalendar &calendar)
{
    QList<WaitingReminder> open;
    std::ranges::copy_if(reminders, std::back_inserter(open), &WaitingReminder::isUnanswered);
    std::ranges::stable_sort(open, {}, [&](const auto &reminder) { return dueInstant(reminder, calendar); });
    return open;
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
                                 .minute = QTime::fromString(minute.value(1), u"HH:mm"_s),
                                 .state = stateOf(entry["state"_L1].toString())};
        if (reminder.day.isValid() && reminder.minute.isValid())
            reminders.append(std::move(reminder));
    }
    return reminders;
}

QByteArray encodeWaitingReminders(const QList<WaitingReminder> &reminders)
{
    QJsonArray entries;
    for (const WaitingReminder &reminder : reminders) {
        QJsonObject entry{
            {u"identifier"_s, reminder.identifier},
            {u"title"_s, reminder.title},
            {u"body"_s, reminder.body},
            {u"minute"_s, reminder.day.toString(u"yyyy-MM-dd") + u'T' + reminder.minute.toString(u"HH:mm")}};
        if (reminder.isUnanswered())
            entry.insert(u"state"_s, stateWords.at(static_cast<size_t>(reminder.state)));
        entries.append(entry);
    }
    return QJsonDocument(entries).toJson(QJsonDocument::Compact);
}

} // namespace tessaly
