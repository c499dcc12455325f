#include "views/schedule/LinkTexts.h"

#include "model/LinkTiming.h"
#include "store/PlannerStore.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// The pair for one and for several.
struct Counted
{
    QString chinese;
    QString one;
    QString several;
};

QString counted(const PlannerStore &store, const Counted &words, qsizetype count)
{
    return store.text(words.chinese, count == 1 ? words.one : words.several).arg(count);
}

QString eventsText(const PlannerStore &store, qsizetype count)
{
    return counted(store, {u"%1 个日程"_s, u"%1 event"_s, u"%1 events"_s}, count);
}

qsizetype scheduleCount(const PlannerStore &store, const CalendarFeed &feed)
{
    return std::ranges::count(store.schedules(), feedCalendarIdentifier(feed.id), &ScheduleItem::calendarIdentifier);
}

/// How many schedules the events of a calendar that is read whole have become; empty for others.
QString repeatedText(const PlannerStore &store, const CalendarFeed &feed, const LinkHealth &health)
{
    if (!feed.readsRepetitions.value_or(false) || health.repeatingCount == 0)
        return {};
    return store.text(u"，含重复共 %1 个"_s, u", %1 with repeats"_s).arg(scheduleCount(store, feed));
}

QString failureText(const PlannerStore &store, const CalendarFeed &feed, const LinkHealth &health)
{
    const QString since = store.momentText(*health.failingSince);
    const QString reason = health.failure.in(store.interfaceLanguage());
    const QString cause = store.text(u"自 %1 起无法读取：%2。"_s, u"Not read since %1: %2."_s).arg(since, reason);
    const qsizetype kept = scheduleCount(store, feed);
    if (kept == 0)
        return cause;
    return cause + counted(store,
                           {u"之前读取的 %1 个日程仍保留。"_s, u" The %1 schedule read before is kept."_s,
                            u" The %1 schedules read before are kept."_s},
                           kept);
}

} // namespace

QString linkMomentText(const PlannerStore &store, Instant moment)
{
    const QDateTime local = store.calendar().dateTime(moment);
    if (local.date() != store.today())
        return store.momentText(moment);
    return store.text(u"今天 %1"_s, u"Today, %1"_s).arg(local.toString(u"HH:mm"));
}

bool isFailing(const PlannerStore &store, const CalendarFeed &feed)
{
    const LinkHealth *health = store.calendarLinks().health(feed.id);
    return health && health->failingSince;
}

QString healthText(const PlannerStore &store, const CalendarFeed &feed)
{
    const LinkHealth *health = store.calendarLinks().health(feed.id);
    if (health && health->failingSince)
        return failureText(store, feed, *health);
    const std::optional<Instant> lastRead = store.calendarLinks().lastRead(feed);
    if (!lastRead)
        return {};
    QStringList parts{linkMomentText(store, *lastRead)};
    QString read;
    if (health && health->eventCount > 0)
        read = eventsText(store, health->eventCount);
    if (health && health->repeatingCount > 0)
        read += counted(store, {u"，%1 个重复"_s, u", %1 repeats"_s, u", %1 repeat"_s}, health->repeatingCount);
    if (!read.isEmpty())
        parts.append(read + repeatedText(store, feed, *health));
    if (health && health->skippedCount > 0)
        parts.append(store.text(u"跳过 %1 个"_s, u"%1 skipped"_s).arg(health->skippedCount));
    return parts.join(u" · ");
}

QString readText(const PlannerStore &store, const CalendarFeed &feed, const LinkHealth &health)
{
    QString text = eventsText(store, health.eventCount);
    if (health.repeatingCount > 0)
        text += counted(store, {u"，其中 %1 个重复"_s, u", %1 of them repeats"_s, u", %1 of them repeat"_s},
                        health.repeatingCount);
    return text + repeatedText(store, feed, health);
}

QString factsText(const PlannerStore &store, const CalendarFacts &facts)
{
    if (facts.eventCount == 0 && facts.skippedCount == 0)
        return store.text(u"其中没有日程。"_s, u"There are no events in it."_s);
    QString text = store.text(u"共 "_s, QString()) + eventsText(store, facts.eventCount);
    if (facts.firstStart && facts.lastEnd) {
        // A last day that ends at midnight is the one before.
        const Instant last = std::max(*facts.firstStart, facts.lastEnd->plus(-1));
        text += store.text(u"，%1至%2"_s, u" from %1 to %2"_s)
                    .arg(store.dateText(*facts.firstStart, true), store.dateText(last, true));
    }
    text += store.text(u"。"_s, u"."_s);
    QStringList parts;
    if (facts.repeatingCount > 0)
        parts.append(
            counted(store, {u"%1 个重复"_s, u"%1 of them repeats"_s, u"%1 of them repeat"_s}, facts.repeatingCount));
    if (facts.skippedCount > 0)
        parts.append(store.text(u"会跳过 %1 个"_s, u"%1 would be skipped"_s).arg(facts.skippedCount));
    if (parts.isEmpty())
        return text;
    return text + (facts.repeatingCount > 0 ? store.text(u"其中 "_s, u" "_s) : store.text({}, u" "_s)) +
           parts.join(store.text(u"，"_s, u", "_s)) + store.text(u"。"_s, u"."_s);
}

QString keepingText(const PlannerStore &store, const LinkHealth &health)
{
    constexpr double hour = 3600;
    const auto hours = static_cast<qsizetype>(std::lround(updateDelay(health.refreshSeconds, QUuid()) / hour));
    if (hours <= 1)
        return store.text(u"每小时和每次启动时更新，失败时不改动已有日程。"_s,
                          u"Updates every hour and at each start; a failure changes nothing."_s);
    return store
        .text(u"每 %1 小时和每次启动时更新，失败时不改动已有日程。"_s,
              u"Updates every %1 hours and at each start; a failure changes nothing."_s)
        .arg(hours);
}

QString repetitionsText(const PlannerStore &store, const CalendarFeed &feed, const LinkHealth &health)
{
    if (feed.readsRepetitions.value_or(false) || health.addedByRepetitions <= 0)
        return store.text(u"关闭时，重复日程只取第一次。"_s, u"When off, only the first of each is read."_s);
    return counted(store,
                   {u"关闭时，重复日程只取第一次；打开后会多出 %1 个日程。"_s,
                    u"When off, only the first of each is read; turning it on adds %1 schedule."_s,
                    u"When off, only the first of each is read; turning it on adds %1 schedules."_s},
                   health.addedByRepetitions);
}

QString skipText(const PlannerStore &store, const SkippedEvent &event)
{
    const auto reason = [&]() -> QString {
        switch (event.reason) {
        case SkipReason::NoStart:
            return store.text(u"缺少开始时间"_s, u"No start time"_s);
        case SkipReason::NoEnd:
            return store.text(u"缺少结束时间"_s, u"No end time"_s);
        case SkipReason::StartUnreadable:
            return store.text(u"开始时间无法读取：“%1”"_s, u"The start time cannot be read: “%1”"_s).arg(event.value);
        case SkipReason::EndUnreadable:
            return store.text(u"结束时间无法读取：“%1”"_s, u"The end time cannot be read: “%1”"_s).arg(event.value);
        case SkipReason::RepetitionUnreadable:
            return store.text(u"重复规则无法读取：“%1”"_s, u"The repetition cannot be read: “%1”"_s).arg(event.value);
        case SkipReason::TooLarge:
            return store.text(u"日历过大"_s, u"The calendar is too large"_s);
        }
        Q_UNREACHABLE();
    };
    return reason() + store.text(u" · 第 %1 行"_s, u" · line %1"_s).arg(event.line);
}

} // namespace tessaly
