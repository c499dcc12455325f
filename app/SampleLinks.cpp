#include "app/SampleLinks.h"

#include <QDate>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QString in(AppLanguage language, const QString &chinese, const QString &english)
{
    return language == AppLanguage::English ? english : chinese;
}

QByteArray event(int number, QDate day, const QByteArray &further)
{
    const QByteArray date = day.toString(u"yyyyMMdd").toLatin1();
    return "BEGIN:VEVENT\r\nUID:" + QByteArray::number(number) + "\r\nDTSTART:" + date + "T080000\r\nDTEND:" + date +
           "T094000\r\n" + further + "END:VEVENT\r\n";
}

} // namespace

SampleLinks sampleLinks(AppLanguage language, Instant now)
{
    constexpr double hour = 3600;
    const CalendarFeed timetable{.name = in(language, u"课表"_s, u"timetable"_s),
                                 .urlString = u"https://example.org/courses/timetable.ics"_s,
                                 .lastUpdated = now.plus(-2 * hour)};
    const CalendarFeed holidays{.name = in(language, u"假期"_s, u"holidays"_s),
                                .urlString = u"https://example.org/holidays.ics"_s,
                                .lastUpdated = now.plus(-50 * hour)};
    const QList<SkippedEvent> skipped{
        {.title = in(language, u"期末考试（待定）"_s, u"Final exam (to be announced)"_s), .line = 218},
        {.title = in(language, u"实验室开放日"_s, u"Open lab day"_s),
         .day = QDate(2026, 12, 5),
         .reason = SkipReason::NoEnd,
         .line = 240},
        {.day = QDate(2026, 10, 12), .reason = SkipReason::EndUnreadable, .value = u"20261012T25"_s, .line = 263}};
    return {.feeds = {timetable, holidays},
            .health = {{.feedID = timetable.id,
                        .eventCount = 42,
                        .repeatingCount = 6,
                        .addedByRepetitions = 88,
                        .skippedCount = skipped.size(),
                        .skipped = skipped,
                        .refreshSeconds = 6 * hour},
                       {.feedID = holidays.id,
                        .failingSince = now.plus(-17 * hour),
                        .failure = {u"服务器上已没有此文件 (404)"_s, u"the server says the file is gone (404)"_s},
                        .eventCount = 11}}};
}

QByteArray sampleTimetable(AppLanguage language)
{
    constexpr int events = 42;
    constexpr int repeating = 6;
    QByteArray text =
        "BEGIN:VCALENDAR\r\nX-WR-CALNAME:" + in(language, u"课程表"_s, u"Course timetable"_s).toUtf8() + "\r\n";
    for (int i = 0; i < events; ++i)
        text += event(i, QDate(2026, 9, 1).addDays(i == events - 1 ? 108 : i * 2),
                      i < repeating ? "RRULE:FREQ=WEEKLY;COUNT=12\r\n" : "");
    for (int i = 0; i < 3; ++i)
        text += "BEGIN:VEVENT\r\nEND:VEVENT\r\n";
    return text + "END:VCALENDAR\r\n";
}

} // namespace tessaly
