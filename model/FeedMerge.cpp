#include "model/FeedMerge.h"

#include "model/CalendarFeed.h"

#include <QHash>
#include <QSet>
#include <QStringBuilder>

#include <array>
#include <charconv>

namespace tessaly {

namespace {

/// Makes the keys of one feed; their common beginning is worded once.
class EventKeys
{
public:
    explicit EventKeys(const QUuid &feedID) : m_prefix(uuidText(feedID) + u'|') {}

    [[nodiscard]] QString key(const QString &uid, Instant start) const
    {
        std::array<char, 400> buffer; // the longest double in fixed notation has 327 characters
        const auto written =
            std::to_chars(buffer.data(), buffer.data() + buffer.size(), start.unixSeconds(), std::chars_format::fixed);
        const QLatin1StringView seconds(buffer.data(), written.ptr);
        const QLatin1StringView fraction(seconds.contains(u'.') ? "" : ".0");
        return m_prefix % uid % u'|' % seconds % fraction;
    }

private:
    QString m_prefix;
};

} // namespace

QString feedEventKey(const QUuid &feedID, const QString &uid, Instant start)
{
    return EventKeys(feedID).key(uid, start);
}

QList<ScheduleItem> feedSchedules(const QList<ParsedEvent> &events, const QUuid &feedID)
{
    const QString calendar = feedCalendarIdentifier(feedID);
    const EventKeys keys(feedID);
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

} // namespace tessaly
