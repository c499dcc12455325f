#include "bench/Bench.h"
#include "model/ICalendarReader.h"
#include "platform/common/LibicalExpander.h"

#include <libical/ical.h>
#include <malloc.h>

#include <cstring>
#include <utility>

using namespace tessaly;

namespace {

constexpr int eventCount = 100'000;

/// Folds as RFC 5545, 3.1 says: at most 75 bytes a line.
void appendFolded(QByteArray &text, const QByteArray &line)
{
    constexpr qsizetype lineLength = 75;
    text += line.first(std::min(line.size(), lineLength));
    for (qsizetype at = lineLength; at < line.size(); at += lineLength - 1)
        text += "\r\n " + line.mid(at, lineLength - 1);
    text += "\r\n";
}

QByteArray twoDigits(int value)
{
    return QByteArray::number(value).rightJustified(2, '0');
}

/// A timetable of some 26 MB: CRLF, folded titles and descriptions, half of the times with TZID, half in UTC.
QByteArray generatedCalendar()
{
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Bench//EN\r\nX-WR-CALNAME:Timetable\r\n";
    for (int i = 0; i < eventCount; ++i) {
        const QByteArray day = "20" + twoDigits(10 + i % 25) + twoDigits(1 + i % 12) + twoDigits(1 + i % 28);
        const bool isUtc = i % 2 == 0;
        const QByteArray zone = isUtc ? ":" : i % 4 == 1 ? ";TZID=Asia/Shanghai:" : ";TZID=Europe/Vienna:";
        const QByteArray end = isUtc ? "Z" : "";
        const QByteArray hour = twoDigits(8 + i % 10);
        text += "BEGIN:VEVENT\r\nUID:event-" + QByteArray::number(i) + "@timetable.example.org\r\n";
        text += "DTSTAMP:20240801T000000Z\r\nDTSTART" + zone + day + "T" + hour + "0000" + end + "\r\n";
        text += "DTEND" + zone + day + "T" + hour + "4500" + end + "\r\n";
        appendFolded(text, "SUMMARY:Microeconomics " + QByteArray::number(i) +
                               "\xEF\xBC\x9A\xE5\xBE\xAE\xE8\xA7\x82 lecture with a title long enough to be folded");
        appendFolded(text, "DESCRIPTION:Room " + QByteArray::number(i % 300) + "\\, building B\\nBring the reader.");
        text += "END:VEVENT\r\n";
    }
    return text + "END:VCALENDAR\r\n";
}

/// Lectures of a term, once or twice a week.
QByteArray weeklyLectures(qsizetype count)
{
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Bench//EN\r\n";
    for (int i = 0; i < count; ++i) {
        text += "BEGIN:VEVENT\r\nUID:lecture-" + QByteArray::number(i) + "@timetable.example.org\r\n";
        text += "DTSTAMP:20250801T000000Z\r\nSUMMARY:Lecture " + QByteArray::number(i) + "\r\n";
        text += "DTSTART;TZID=Europe/Vienna:202509" + twoDigits(1 + i % 28) + "T" + twoDigits(8 + i % 10) + "0000\r\n";
        text += "DURATION:PT1H30M\r\nRRULE:FREQ=WEEKLY;UNTIL=20260120T225959Z";
        text += i % 2 == 0 ? ";BYDAY=TU,TH\r\n" : "\r\n";
        text += "END:VEVENT\r\n";
    }
    return text + "END:VCALENDAR\r\n";
}

qsizetype countedLines(const QByteArray &text)
{
    qsizetype lines = 0;
    const char *end = text.constData() + text.size();
    for (const char *at = text.constData(); at < end; ++lines) {
        const auto *feed = static_cast<const char *>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        at = feed ? feed + 1 : end;
    }
    return lines;
}

/// Reads the same four properties of every event.
qsizetype walkedByLibical(icalcomponent *calendar)
{
    qsizetype events = 0;
    for (icalcomponent *event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT); event;
         event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT)) {
        bench::keep(icalcomponent_get_uid(event));
        bench::keep(icalcomponent_get_summary(event));
        bench::keep(icaltime_as_timet(icalcomponent_get_dtstart(event)));
        bench::keep(icaltime_as_timet(icalcomponent_get_dtend(event)));
        ++events;
    }
    return events;
}

} // namespace

TESSALY_BENCH(iCalendarReader)
{
    const QByteArray text = generatedCalendar();
    const QTimeZone vienna("Europe/Vienna");
    const QString untitled = QStringLiteral("Untitled event");
    QList<ParsedEvent> events;
    icalcomponent *calendar = nullptr;
    qsizetype walked = 0;
    // Giving back what was read is not timed, for neither; and what libical leaves in the allocator is tidied up.
    const auto giveBack = [&] {
        events = {};
        if (calendar)
            icalcomponent_free(std::exchange(calendar, nullptr));
        malloc_trim(0);
    };
    const auto readByLibical = [&] {
        calendar = icalparser_parse_string(text.constData());
        walked = walkedByLibical(calendar);
    };
    qsizetype read = 0;
    const auto readHere = [&] {
        events = parseICalendar(text, untitled, vienna);
        read = events.size();
    };
    const std::vector<double> seconds = bench::medianSeconds(
        7, {{readHere, giveBack}, {[&] { bench::keep(countedLines(text)); }, giveBack}, {readByLibical, giveBack}});
    giveBack();
    if (read != eventCount || walked != eventCount) {
        report.failed(QStringLiteral("iCalendar, 100,000 events"), QStringLiteral("events are missing"));
        return;
    }
    const QString name = QStringLiteral("iCalendar, 100,000 events, %1 MB").arg(text.size() / 1'000'000);
    report.timesFasterThan(name, seconds[0], QStringLiteral("libical"), seconds[2], 15);
    report.atMostTimes(name, seconds[0], QStringLiteral("memchr line scan"), seconds[1], 10);
}

TESSALY_BENCH(wholeCalendar)
{
    constexpr qsizetype ruleCount = 10'000;
    const QByteArray text = weeklyLectures(ruleCount);
    const ExpansionOptions threeYears{.from = Instant::fromUnixSeconds(1'735'689'600),  // 2025-01-01
                                      .until = Instant::fromUnixSeconds(1'830'297'600), // 2028-01-01
                                      .currentZone = QTimeZone("Europe/Vienna")};
    ExpandedCalendar expanded;
    icalcomponent *calendar = nullptr;
    const auto giveBack = [&] {
        expanded = {};
        if (calendar)
            icalcomponent_free(std::exchange(calendar, nullptr));
        malloc_trim(0);
    };
    qsizetype eventCount = 0;
    const auto expand = [&] {
        expanded = LibicalExpander().expand(text, threeYears);
        eventCount = expanded.eventCount;
    };
    const std::vector<double> seconds = bench::medianSeconds(
        5, {{expand, giveBack}, {[&] { calendar = icalparser_parse_string(text.constData()); }, giveBack}});
    giveBack();
    const QString name = QStringLiteral("Whole calendar, 10,000 rules of a term");
    if (eventCount != ruleCount)
        report.failed(name, QStringLiteral("events are missing"));
    else
        report.atMostTimes(name, seconds[0], QStringLiteral("libical, text alone"), seconds[1], 3);
}
