#include "model/FeedMerge.h"

#include "model/CalendarFeed.h"
#include "model/Uuid.h"

#include <QHash>

#include <array>
#include <charconv>

namespace tessaly {

FeedSchedules::FeedSchedules(const QUuid &feedID, qsizetype expected)
    : m_calendar(feedCalendarIdentifier(feedID)), m_key(uuidText(feedID).toLatin1() + '|'), m_prefixSize(m_key.size())
{
    m_seen.reserve(expected);
    m_schedules.reserve(expected);
}

void FeedSchedules::add(const QByteArray &uid, Instant keyStart, ScheduleItem schedule)
{
    std::array<char, 400> buffer; // the longest double in fixed notation has 327 characters
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), keyStart.unixSeconds(), std::chars_format::fixed);
    const QByteArrayView seconds(buffer.data(), written.ptr);
    m_key.truncate(m_prefixSize);
    m_key.append(uid).append('|').append(seconds);
    if (!seconds.contains('.'))
        m_key.append(".0"); // at least one digit after the point
    const QString key = QString::fromUtf8(m_key);
    const qsizetype before = m_seen.size();
    m_seen.insert(key);
    if (m_seen.size() == before)
        return;
    schedule.calendarEventIdentifier = key;
    schedule.calendarIdentifier = m_calendar;
    m_schedules.append(std::move(schedule));
}

QList<ScheduleItem> feedSchedules(const QList<ParsedEvent> &events, const QUuid &feedID)
{
    FeedSchedules schedules(feedID, events.size());
    for (const ParsedEvent &event : events)
        schedules.add(event.uid, event.start, {.title = event.title, .date = event.start, .endDate = event.end});
    return schedules.take();
}

bool isDetachedFrom(const ScheduleItem &item, const QUuid &feedID)
{
    return !item.calendarIdentifier && item.calendarEventIdentifier &&
           item.calendarEventIdentifier->startsWith(uuidText(feedID) + u'|');
}

QList<ScheduleItem> mergeFeed(QList<ScheduleItem> fresh, const QUuid &feedID, const QList<ScheduleItem> &schedules)
{
    const QString calendar = feedCalendarIdentifier(feedID);
    QHash<QString, qsizetype> rows;
    QHash<QString, qsizetype> detachedRows;
    for (qsizetype row = 0; row < schedules.size(); ++row) {
        const ScheduleItem &item = schedules.at(row);
        const bool isOfFeed = item.calendarIdentifier == calendar;
        if (!isOfFeed && !isDetachedFrom(item, feedID))
            continue;
        const QString key = item.calendarEventIdentifier.value_or(QString());
        auto &found = isOfFeed ? rows : detachedRows;
        if (!found.contains(key))
            found.insert(key, row);
    }
    for (auto detached = detachedRows.cbegin(); detached != detachedRows.cend(); ++detached) {
        if (!rows.contains(detached.key()))
            rows.insert(detached.key(), *detached);
    }
    if (rows.isEmpty())
        return fresh;
    for (ScheduleItem &item : fresh) {
        const auto row = rows.constFind(item.calendarEventIdentifier.value_or(QString()));
        if (row == rows.cend())
            continue;
        ScheduleItem kept = schedules.at(*row);
        kept.calendarIdentifier = calendar;
        kept.title = item.title;
        kept.date = item.date;
        kept.endDate = item.endDate;
        item = std::move(kept);
    }
    return fresh;
}

bool areFeedSchedules(const QList<ScheduleItem> &merged, const QUuid &feedID, const QList<ScheduleItem> &schedules)
{
    const QString calendar = feedCalendarIdentifier(feedID);
    auto expected = merged.cbegin();
    for (const ScheduleItem &item : schedules) {
        if (item.calendarIdentifier != calendar)
            continue;
        if (expected == merged.cend() || *expected != item)
            return false;
        ++expected;
    }
    return expected == merged.cend();
}

} // namespace tessaly
