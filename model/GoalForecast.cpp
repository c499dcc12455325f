#include "model/GoalForecast.h"

#include <QLocale>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr double daySeconds = 86'400;
constexpr qint64 fullPeriodDays = 28;
constexpr double leastPeriodDays = 7;
constexpr double mostDaysAhead = 3653;

struct Completion
{
    Instant moment = {};
    double weight = 0;
};

struct History
{
    QList<Completion> known = {};
    double openWeight = 0;
};

/// When the task was done: by itself or with its subgoal, whichever came first.
std::optional<Instant> doneAt(const GoalTask &task, const Subgoal &subgoal)
{
    const std::optional<Instant> own = task.isComplete ? task.completedAt : std::nullopt;
    const std::optional<Instant> whole = subgoal.isComplete ? subgoal.completedAt : std::nullopt;
    // Completed at a time that is not known, it may have been before its subgoal.
    if (task.isComplete && !own)
        return std::nullopt;
    return own && whole ? std::min(own, whole) : own ? own : whole;
}

History historyOf(const Goal &goal, Instant now)
{
    History history;
    for (const Subgoal &subgoal : goal.subgoals.value_or(QList<Subgoal>())) {
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>())) {
            const std::optional<Instant> moment = doneAt(task, subgoal);
            if (!task.isComplete && !subgoal.isComplete)
                history.openWeight += countedWeight(task);
            else if (moment && *moment <= now)
                history.known.append({*moment, countedWeight(task)});
        }
    }
    return history;
}

TextPair lateText(qint64 days)
{
    if (days == 0)
        return {u"按时"_s, u"on time"_s};
    const QString count = QString::number(std::abs(days));
    const QString length = count == u"1" ? u"1 day"_s : u"%1 days"_s.arg(count);
    return days > 0 ? TextPair{u"晚 %1 天"_s.arg(count), u"%1 late"_s.arg(length)}
                    : TextPair{u"早 %1 天"_s.arg(count), u"%1 early"_s.arg(length)};
}

/// The year only where it is another one.
TextPair dayText(QDate day, int year)
{
    const QLocale english(QLocale::English);
    if (day.year() == year)
        return {day.toString(u"M月d日"_s), english.toString(day, u"MMMM d"_s)};
    return {day.toString(u"yyyy年M月d日"_s), english.toString(day, u"MMMM d, yyyy"_s)};
}

} // namespace

std::optional<GoalForecast> goalForecast(const Goal &goal, Instant now, const UserCalendar &calendar)
{
    const History history = historyOf(goal, now);
    if (goal.isComplete || history.openWeight == 0 || history.known.isEmpty())
        return std::nullopt;
    GoalForecast forecast;
    Instant begin = now.plus(-double(fullPeriodDays) * daySeconds);
    const Instant first = std::ranges::min_element(history.known, {}, &Completion::moment)->moment;
    if (first > begin) {
        // On its first day, many may have been ticked that were done long before.
        forecast.since = calendar.day(first);
        begin = calendar.startOfDay(forecast.since->addDays(1));
    }
    const double days = (now.seconds - begin.seconds) / daySeconds;
    double weight = 0;
    for (const Completion &each : history.known)
        weight += each.moment >= begin ? each.weight : 0;
    if (days < leastPeriodDays || weight == 0)
        return std::nullopt;
    const double daysAhead = history.openWeight * days / weight;
    if (daysAhead > mostDaysAhead)
        return std::nullopt;
    forecast.finish = calendar.day(now.plus(daysAhead * daySeconds));
    if (goal.targetDate)
        forecast.daysLate = calendar.day(*goal.targetDate).daysTo(forecast.finish);
    return forecast;
}

QString forecastText(const GoalForecast &forecast, QDate today, AppLanguage language)
{
    TextPair pace{u"按最近四周的速度"_s, u"At the pace of the last four weeks"_s};
    if (forecast.since) {
        const TextPair day = dayText(*forecast.since, today.year());
        pace = {u"按 %1以来的速度"_s.arg(day.chinese), u"At the pace since %1"_s.arg(day.english)};
    }
    const TextPair finish = dayText(forecast.finish, today.year());
    TextPair text{u"%1：%2完成"_s.arg(pace.chinese, finish.chinese), u"%1: %2"_s.arg(pace.english, finish.english)};
    if (forecast.daysLate) {
        const TextPair late = lateText(*forecast.daysLate);
        text = {u"%1，%2"_s.arg(text.chinese, late.chinese), u"%1, %2"_s.arg(text.english, late.english)};
    }
    return text.in(language);
}

} // namespace tessaly
