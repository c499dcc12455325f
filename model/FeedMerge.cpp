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

QList<ScheduleItem> mergeFeed(const QList<ParsedEvent> &events, const QUuid &feedID,
                              const QList<ScheduleItem> &schedules)
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

    const EventKeys keys(feedID);
    QList<ScheduleItem> merged;
    merged.reserve(events.size());
    QSet<QString> seen;
    seen.reserve(events.size());
    for (const ParsedEvent &event : events) {
        const QString key = keys.key(event.uid, event.start);
        const qsizetype before = seen.size();
        seen.insert(key);
        if (seen.size() == before)
            continue;
        const auto row = rows.constFind(key);
        ScheduleItem item = row != rows.cend() ? schedules.at(*row) : ScheduleItem();
        item.title = event.title;
        item.date = event.start;
        item.endDate = event.end;
        item.calendarEventIdentifier = key;
        item.calendarIdentifier = calendar;
        merged.append(std::move(item));
    }
    return merged;
}

} // namespace tessaly
