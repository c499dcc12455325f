#include "model/FeedMerge.h"

#include "model/CalendarFeed.h"

#include <QHash>
#include <QSet>

#include <array>
#include <charconv>

namespace tessaly {

namespace {

QString decimal(double value)
{
    std::array<char, 400> buffer; // the longest double in fixed notation has 327 characters
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
    const QLatin1StringView digits(buffer.data(), end);
    return digits.contains(u'.') ? QString(digits) : digits + QStringLiteral(".0");
}

} // namespace

QString feedEventKey(const QUuid &feedID, const QString &uid, Instant start)
{
    return uuidText(feedID) + u'|' + uid + u'|' + decimal(start.unixSeconds());
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

    QList<ScheduleItem> merged;
    merged.reserve(events.size());
    QSet<QString> seen;
    seen.reserve(events.size());
    for (const ParsedEvent &event : events) {
        const QString key = feedEventKey(feedID, event.uid, event.start);
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
