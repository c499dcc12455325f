#include "model/FeedMerge.h"

#include "model/CalendarFeed.h"

#include <QHash>
#include <QSet>

#include <array>
#include <charconv>

namespace tessaly {

namespace {

/// The keys by which the events of one feed find their schedules: "<feed UUID>|<uid>|<start in seconds since 1970>",
/// where the seconds have at least one digit after the point ("1725235200.0").
class EventKeys
{
public:
    explicit EventKeys(const QUuid &feedID) : m_key(uuidText(feedID).toLatin1() + '|'), m_prefixSize(m_key.size()) {}

    [[nodiscard]] QString key(const QByteArray &uid, Instant start)
    {
        std::array<char, 400> buffer; // the longest double in fixed notation has 327 characters
        const auto written =
            std::to_chars(buffer.data(), buffer.data() + buffer.size(), start.unixSeconds(), std::chars_format::fixed);
        const QByteArrayView seconds(buffer.data(), written.ptr);
        m_key.truncate(m_prefixSize);
        m_key.append(uid).append('|').append(seconds);
        if (!seconds.contains('.'))
            m_key.append(".0");
        return QString::fromUtf8(m_key);
    }

private:
    QByteArray m_key;
    qsizetype m_prefixSize;
};

} // namespace

QList<ScheduleItem> feedSchedules(const QList<ParsedEvent> &events, const QUuid &feedID)
{
    const QString calendar = feedCalendarIdentifier(feedID);
    EventKeys keys(feedID);
    QList<ScheduleItem> schedules;
    schedules.reserve(events.size());
    QSet<QString> seen;
    seen.reserve(events.size());
    for (const ParsedEvent &event : events) {
        const QString key = keys.key(event.uid, event.start);
        const qsizetype before = seen.size();
        seen.insert(key);
        if (seen.size() == before)
            continue;
        schedules.append({.title = event.title,
                          .date = event.start,
                          .endDate = event.end,
                          .calendarEventIdentifier = key,
                          .calendarIdentifier = calendar});
    }
    return schedules;
}

QList<ScheduleItem> mergeFeed(QList<ScheduleItem> fresh, const QUuid &feedID, const QList<ScheduleItem> &schedules)
{
    const QString calendar = feedCalendarIdentifier(feedID);
    QHash<QString, qsizetype> rows;
    for (qsizetype row = 0; row < schedules.size(); ++row) {
        const ScheduleItem &item = schedules.at(row);
        if (item.calendarIdentifier != calendar)
            continue;
        const QString key = item.calendarEventIdentifier.value_or(QString());
        if (!rows.contains(key))
            rows.insert(key, row);
    }
    if (rows.isEmpty())
        return fresh;
    for (ScheduleItem &item : fresh) {
        const auto row = rows.constFind(item.calendarEventIdentifier.value_or(QString()));
        if (row == rows.cend())
            continue;
        ScheduleItem kept = schedules.at(*row);
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
