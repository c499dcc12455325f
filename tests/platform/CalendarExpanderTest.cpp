#include "platform/common/LibicalExpander.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QThread>

#include <cmath>

using namespace tessaly;

namespace {

QDateTime utc(const char *text)
{
    QDateTime time = QDateTime::fromString(QString::fromLatin1(text), QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    time.setTimeSpec(Qt::UTC);
    return time;
}

Instant instant(const char *text)
{
    return Instant::fromUnixSeconds(static_cast<double>(utc(text).toSecsSinceEpoch()));
}

QByteArray text(Instant instant)
{
    return QDateTime::fromSecsSinceEpoch(qRound64(instant.unixSeconds()), Qt::UTC)
        .toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"))
        .toLatin1();
}

const ExpansionOptions year2026{.from = instant("20251231T230000Z"),
                                .until = instant("20261231T230000Z"),
                                .currentZone = QTimeZone("Europe/Vienna"),
                                .untitled = QStringLiteral("Untitled")};

ExpandedCalendar expanded(const QByteArray &calendar)
{
    return LibicalExpander().expand(calendar, year2026);
}

/// Lines of a VEVENT, each ended by "|", of several by "#", as a calendar.
QByteArray calendar(const QByteArray &events, const QByteArray &before = {})
{
    QByteArray text = "BEGIN:VCALENDAR|VERSION:2.0|" + before;
    for (const QByteArray &event : events.split('#'))
        text += "BEGIN:VEVENT|" + event + "|END:VEVENT|";
    text += "END:VCALENDAR|";
    return text.replace('|', "\r\n");
}

/// A VTIMEZONE eight hours east.
QByteArray zoneNamed(const QByteArray &name)
{
    return "BEGIN:VTIMEZONE|TZID:" + name +
           "|BEGIN:STANDARD|DTSTART:16010101T000000|TZOFFSETFROM:+0800|TZOFFSETTO:+0800|END:STANDARD|END:VTIMEZONE|";
}

/// "title start-end" of each occurrence, with "<original" where that is another start.
QByteArray occurrences(const ExpandedCalendar &calendar)
{
    QByteArrayList lines;
    for (const CalendarOccurrence &each : calendar.occurrences) {
        QByteArray line = each.title.toUtf8() + ' ' + text(each.start) + '-' + text(each.end);
        if (each.originalStart != each.start)
            line += '<' + text(each.originalStart);
        lines.append(line);
    }
    return lines.join(", ");
}

/// "reason value line" of each.
QByteArray skipped(const ExpandedCalendar &calendar)
{
    static const char *const reasons[] = {"no start", "no end", "start", "end", "repetition", "too large"};
    QByteArrayList lines;
    for (const SkippedEvent &each : calendar.skipped)
        lines.append(QByteArray(reasons[static_cast<int>(each.reason)]) + ' ' + each.value.toUtf8() + ' ' +
                     QByteArray::number(each.line));
    return lines.join(", ");
}

} // namespace

class CalendarExpanderTest : public QObject
{
    Q_OBJECT

private slots:
    void aCalendarIsReadWhole_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const QByteArray &text, const QByteArray &expected) {
            QTest::newRow(name) << text << expected;
        };
        const QByteArray june8 = "a 20260608T060000Z-20260608T070000Z";
        const QByteArray point = "a 20260608T060000Z-20260608T060000Z";
        const QByteArray day = "a 20260607T220000Z-20260608T220000Z";

        row("start and end", calendar("SUMMARY:a|DTSTART:20260608T060000Z|DTEND:20260608T070000Z"), june8);
        row("small letters", calendar("summary:a|dtstart:20260608t060000z|dtend:20260608t070000z").toLower(), june8);
        row("separators", calendar("SUMMARY:a|DTSTART:2026-06-08T06:00:00Z|DTEND:2026-06-08T09:00:00"), june8);
        row("blanks around it", calendar("SUMMARY:a|DTSTART: 20260608T060000Z |DTEND:20260608T070000Z"), june8);
        row("a length", calendar("SUMMARY:a|DTSTART:20260608T060000Z|DURATION:PT1H"), june8);
        row("no end", calendar("SUMMARY:a|DTSTART:20260608T060000Z"), point);
        row("ends before it starts", calendar("SUMMARY:a|DTSTART:20260608T060000Z|DTEND:20260608T050000Z"), point);
        row("midnight as 24:00", calendar("SUMMARY:a|DTSTART:20260607T240000|DTEND:20260608T240000"), day);
        row("a day", calendar("SUMMARY:a|DTSTART;VALUE=DATE:20260608"), day);
        row("a day that is not called one", calendar("SUMMARY:a|DTSTART:20260608"), day);
        row("a day with separators", calendar("SUMMARY:a|DTSTART:2026-06-08"), day);
        row("a day with a time", calendar("SUMMARY:a|DTSTART;VALUE=DATE:20260608T000000"), day);
        row("the day of a clock change", calendar("SUMMARY:a|DTSTART:20260329|DURATION:P1D"),
            "a 20260328T230000Z-20260329T220000Z");
        row("escapes", calendar("SUMMARY:a\\, b\\; c\\nd|DTSTART:20260608T060000Z"),
            "a, b; c d 20260608T060000Z-20260608T060000Z");
        row("no title", calendar("DTSTART:20260608T060000Z"), "Untitled 20260608T060000Z-20260608T060000Z");
        row("an empty title", calendar("SUMMARY: |DTSTART:20260608T060000Z"),
            "Untitled 20260608T060000Z-20260608T060000Z");
        row("folded in the middle", calendar("SUM| MARY:a|DTSTART:2026|\t0608T060000Z"), point);
        row("a byte-order mark", "\xEF\xBB\xBF" + calendar("SUMMARY:a|DTSTART:20260608T060000Z"), point);
        row("line feeds alone", calendar("SUMMARY:a|DTSTART:20260608T060000Z").replace('\r', ""), point);
        row("carriage returns alone", calendar("SUMMARY:a|DTSTART:20260608T060000Z").replace('\n', ""), point);
        row("two carriage returns", calendar("SUMMARY:a|DTSTART:20260608T060000Z").replace('\r', "\r\r"), point);
        row("several calendars",
            calendar("SUMMARY:a|DTSTART:20260608T060000Z") + calendar("SUMMARY:a|DTSTART:20260608T060000Z"),
            point + ", " + point);
        row("no calendar around it", "BEGIN:VEVENT\nSUMMARY:a\nDTSTART:20260608T060000Z\nEND:VEVENT\n", point);
        row("cut off", "BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:a\nDTSTART:20260608T060000Z\n", point);
        row("an alarm with times and a title of its own",
            calendar("SUMMARY:a|DTSTART:20260608T060000Z|BEGIN:VALARM|SUMMARY:no|DTSTART:1|DURATION:x|END:VALARM"),
            point);
        row("cancelled", calendar("SUMMARY:a|DTSTART:20260608T060000Z|STATUS:CANCELLED"), "");
        row("before and after what is asked for",
            calendar("SUMMARY:a|DTSTART:20251231T220000Z|DTEND:20251231T230000Z#"
                     "SUMMARY:b|DTSTART:20251231T220000Z|DTEND:20251231T230001Z#"
                     "SUMMARY:c|DTSTART:20261231T225959Z#SUMMARY:d|DTSTART:20261231T230000Z"),
            "b 20251231T220000Z-20251231T230001Z, c 20261231T225959Z-20261231T225959Z");
    }

    void aCalendarIsReadWhole()
    {
        QFETCH(const QByteArray, text);

        const ExpandedCalendar result = expanded(text);
        QTEST(occurrences(result), "expected");
        QCOMPARE(skipped(result), QByteArray());
    }

    void aZoneIsFound_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QByteArray>("before");

        QTest::newRow("of the system") << QByteArray("Asia/Shanghai") << QByteArray();
        QTest::newRow("in quotes") << QByteArray("\"Asia/Shanghai\"") << QByteArray();
        QTest::newRow("behind a prefix") << QByteArray("/example.org/2020/Asia/Shanghai") << QByteArray();
        QTest::newRow("of Windows") << QByteArray("China Standard Time") << QByteArray();
        QTest::newRow("described, with a colon in quotes")
            << QByteArray("\"(UTC+08:00) Beijing\"") << zoneNamed("(UTC+08:00) Beijing");
        QTest::newRow("described in small letters") << QByteArray("here") << zoneNamed("here").toLower();
        QTest::newRow("described among zones that cannot be read")
            << QByteArray("here")
            << "BEGIN:VTIMEZONE|TZID:here|BEGIN:STANDARD|END:VTIMEZONE|" + zoneNamed("there") + zoneNamed("here");
    }

    void aZoneIsFound()
    {
        QFETCH(const QByteArray, zone);
        QFETCH(const QByteArray, before);

        QCOMPARE(occurrences(expanded(calendar("SUMMARY:a|DTSTART;TZID=" + zone + ":20260608T140000", before))),
                 QByteArray("a 20260608T060000Z-20260608T060000Z"));
    }

    void aZoneThatNobodyKnowsIsTheCurrentOne()
    {
        QCOMPARE(occurrences(expanded(calendar("SUMMARY:a|DTSTART;TZID=Nowhere:20260608T080000"))),
                 QByteArray("a 20260608T060000Z-20260608T060000Z"));
    }

    void anEventRepeats_data()
    {
        QTest::addColumn<QByteArray>("events");
        QTest::addColumn<QByteArrayList>("expected");
        const auto row = [](const char *name, const QByteArray &events, const QByteArrayList &expected) {
            QTest::newRow(name) << events << expected;
        };
        const QByteArray vienna = "DTSTART;TZID=Europe/Vienna:";

        row("over a clock change", vienna + "20260328T080000|RRULE:FREQ=DAILY;COUNT=2",
            {"20260328T070000Z", "20260329T060000Z"});
        row("from before what is asked for", "DTSTART:20000101T060000Z|RRULE:FREQ=YEARLY", {"20260101T060000Z"});
        row("every two weeks from years before",
            "DTSTART:20200101T060000Z|RRULE:FREQ=WEEKLY;INTERVAL=2;UNTIL=20260120T000000Z", {"20260107T060000Z"});
        row("a number of times from years before", "DTSTART:20250101T060000Z|RRULE:FREQ=DAILY;COUNT=367",
            {"20260101T060000Z", "20260102T060000Z"});
        row("to a time in UTC", vienna + "20260608T080000|RRULE:FREQ=DAILY;UNTIL=20260609T060000Z",
            {"20260608T060000Z", "20260609T060000Z"});
        row("to a day that there is not", vienna + "20260608T080000|RRULE:FREQ=DAILY;UNTIL=20260540",
            {"20260608T060000Z", "20260609T060000Z"});
        row("to a day", vienna + "20260608T080000|RRULE:FREQ=DAILY;UNTIL=20260609",
            {"20260608T060000Z", "20260609T060000Z"});
        row("as exporters write it", "DTSTART:20260608T060000Z|rrule:freq=daily; count=2;",
            {"20260608T060000Z", "20260609T060000Z"});
        row("the last days of months", "DTSTART:20260131T060000Z|RRULE:FREQ=MONTHLY;BYMONTHDAY=-1;COUNT=3",
            {"20260131T060000Z", "20260228T060000Z", "20260331T060000Z"});
        row("further dates", "DTSTART:20260608T060000Z|RDATE:20260610T060000Z,20260609T060000Z",
            {"20260608T060000Z", "20260609T060000Z", "20260610T060000Z"});
        row("exceptions in several forms",
            vienna + "20260608T080000|RRULE:FREQ=DAILY;COUNT=5|EXDATE:20260608T060000Z|EXDATE;VALUE=DATE:20260609|" +
                "EXDATE;TZID=Asia/Tokyo:20260610T150000|EXDATE:",
            {"20260611T060000Z", "20260612T060000Z"});
        row("a period in place of a date",
            "DTSTART:20260608T060000Z|DURATION:PT0S|RDATE;VALUE=PERIOD:20260609T060000Z/PT2H,20260610T060000Z/"
            "20260610T070000Z,20260611T060000Z/PT1H|EXDATE:20260611T060000Z",
            {"20260608T060000Z", "20260609T060000Z-20260609T080000Z", "20260610T060000Z-20260610T070000Z"});
        row("a moved occurrence, before the event itself",
            "UID:1|RECURRENCE-ID;TZID=Asia/Tokyo:20260609T150000|DTSTART:20260701T060000Z#"
            "UID:1|DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=2",
            {"20260608T060000Z", "20260701T060000Z<20260609T060000Z"});
        row("an occurrence moved into what is asked for",
            "UID:1|DTSTART:20251201T060000Z|RRULE:FREQ=DAILY;COUNT=2#"
            "UID:1|RECURRENCE-ID:20251202T060000Z|DTSTART:20260608T060000Z",
            {"20260608T060000Z<20251202T060000Z"});
        row("all from one on, moved by half a year",
            "UID:1|DTSTART:20250608T060000Z|RRULE:FREQ=WEEKLY;COUNT=3#"
            "UID:1|RECURRENCE-ID;RANGE=THISANDFUTURE:20250615T060000Z|DTSTART:20260608T060000Z|DURATION:PT1H",
            {"20260608T060000Z-20260608T070000Z<20250615T060000Z",
             "20260615T060000Z-20260615T070000Z<20250622T060000Z"});
        row("a cancelled occurrence",
            "UID:1|DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=2#"
            "UID:1|RECURRENCE-ID:20260608T060000Z|DTSTART:20260608T060000Z|STATUS:CANCELLED",
            {"20260609T060000Z"});
        row("a cancelled event with a changed occurrence",
            "UID:1|DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=2|STATUS:CANCELLED#"
            "UID:1|RECURRENCE-ID:20260608T060000Z|DTSTART:20260608T070000Z",
            {});
        row("two events that share a UID", "UID:1|DTSTART:20260608T060000Z#UID:1|DTSTART:20260609T060000Z",
            {"20260608T060000Z", "20260609T060000Z"});
        row("long ones that last into what is asked for",
            "DTSTART;VALUE=DATE:20251227|DURATION:P10D|RRULE:FREQ=YEARLY;COUNT=2",
            {"20251226T230000Z-20260105T230000Z", "20261226T230000Z-20270105T230000Z"});
    }

    void anEventRepeats()
    {
        QFETCH(const QByteArray, events);
        QFETCH(const QByteArrayList, expected);

        QByteArrayList starts;
        for (const CalendarOccurrence &each : expanded(calendar(events)).occurrences) {
            QByteArray line = text(each.start);
            if (each.end != each.start)
                line += '-' + text(each.end);
            if (each.originalStart != each.start)
                line += '<' + text(each.originalStart);
            starts.append(line);
        }
        std::ranges::sort(starts);
        QCOMPARE(starts, expected);
    }

    void whatCannotBeReadIsListed()
    {
        const ExpandedCalendar result =
            expanded(calendar("SUMMARY:1|DTEND:20260608T060000Z#"                            // lines 3 to 6
                              "SUMMARY:2|DTSTART:tomorrow#"                                  // 7 to 10
                              "SUMMARY:3|DTSTART:20260608T060000Z|DTEND:later#"              // 11 to 15
                              "SUMMARY:4|DTSTART:20260608T060000Z|RRULE:D1 #SUMMARY:5|"      // 16 to 20
                              "DTSTART:20260608T060000Z|EXDATE:20260608,x|RRULE:FREQ=DAILY#" // 21 to 26
                              "SUMMARY:6|DTSTART:20260608T060000Z|RRULE:FREQ=SECONDLY"));

        QCOMPARE(skipped(result),
                 QByteArray("no start  3, start tomorrow 9, end later 14, repetition D1 19, repetition x 24, "
                            "too large  30"));
        QCOMPARE(result.skippedCount, 6);
        QCOMPARE(result.eventCount, 3);
        QCOMPARE(result.repeatingCount, 1);
        QCOMPARE(result.skipped.at(3).title, QStringLiteral("4"));
        QCOMPARE(result.skipped.at(3).day, QDate(2026, 6, 8));
        QVERIFY(!result.skipped.at(1).day);
        QVERIFY(occurrences(result).startsWith("3 20260608T060000Z-20260608T060000Z, "
                                               "4 20260608T060000Z-20260608T060000Z, 5 20260609T060000Z"));
    }

    void eventsWithoutUidAreKnownByTheirTitle()
    {
        const ExpandedCalendar result =
            expanded(calendar("SUMMARY:a|DTSTART:20260608T060000Z#SUMMARY:b|DTSTART:20260608T060000Z"));
        QCOMPARE(result.occurrences.size(), 2);
        QCOMPARE(result.occurrences.at(0).uid, QByteArray("a"));
        QCOMPARE(result.occurrences.at(1).uid, QByteArray("b"));
    }

    void aHostileCalendarTakesBoundedTime_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isTooLarge");

#ifdef TESSALY_SANITIZED
        constexpr int share = 10; // each byte costs ten times as much
#else
        constexpr int share = 1;
#endif
        const QByteArray start = "SUMMARY:a|DTSTART:20260608T060000Z|";
        const auto many = [](const QByteArray &event, int count) { return calendar((event + '#').repeated(count)); };
        const auto row = [](const char *name, const QByteArray &text, bool isTooLarge = true) {
            QTest::newRow(name) << text << isTooLarge;
        };
        row("every second", many(start + "RRULE:FREQ=SECONDLY", 2000));
        row("every second of no day", many(start + "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", 2000));
        row("every minute of no day", many(start + "RRULE:FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=30", 2000));
        row("every hour of no day since year 1",
            many("DTSTART:00010101T060000Z|RRULE:FREQ=HOURLY;BYMONTH=2;BYMONTHDAY=30", 5000));
        row("no day of any year since year 1",
            many("DTSTART:00010101T060000Z|RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30", 5000));
        row("every day since year 1, counted",
            many("DTSTART:00010101T060000Z|RRULE:FREQ=DAILY;COUNT=2147483647", 5000));
        row("every minute of every month",
            many(start + "RRULE:FREQ=MONTHLY;BYHOUR=1,2,3,4,5,6,7,8,9,10;BYMINUTE=1,2,3,4,"
                         "5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20;BYSECOND=1,2,3,4,5,6,7,8,9",
                 2000));
        row("every day, very often", many(start + "RRULE:FREQ=DAILY", 50'000));
        row("a million exceptions", calendar(start + "EXDATE:" + QByteArray("20260608T060000Z,").repeated(1'000'000)));
        row("a hundred thousand dates", calendar(start + "RDATE:" + QByteArray("20260608T060000Z,").repeated(100'000)));
        row("a hundred thousand rules", calendar(start + QByteArray("RRULE:FREQ=DAILY|").repeated(100'000) + "X:"));
        row("a rule of ten megabytes",
            calendar(start + "RRULE:FREQ=DAILY;BYDAY=" + QByteArray("MO,").repeated(3'000'000 / share)), false);
        row("a title of ten megabytes", calendar("SUMMARY:" + QByteArray(10'000'000 / share, 'x') + "|" + start),
            false);
        row("ten megabytes without a colon", calendar(start + QByteArray(10'000'000 / share, ';')), false);
        row("ten megabytes of parameters",
            calendar(start + "DTEND" + QByteArray(";TZID=x").repeated(1'500'000 / share) + ":20260608T070000"), false);
        row("ten megabytes of line feeds", QByteArray(10'000'000 / share, '\n') + calendar(start), false);
        row("components within each other", calendar(start + QByteArray("BEGIN:VALARM|").repeated(700'000 / share)),
            false);
        row("events without end", QByteArray("BEGIN:VEVENT\n").repeated(700'000 / share), false);
        row("zones within each other", calendar(start, QByteArray("BEGIN:VTIMEZONE|TZID:x|").repeated(300'000 / share)),
            false);
        row(
            "a hundred thousand zones that nobody knows",
            [] {
                QByteArray events;
                for (int i = 0; i < 100'000 / share; ++i)
                    events += "DTSTART;TZID=a/" + QByteArray::number(i) + ":20260608T060000#";
                return calendar(events);
            }(),
            false);
        row(
            "zones that change every hour",
            [] {
                QByteArray zones;
                QByteArray events;
                for (int i = 0; i < 2000 / share; ++i) {
                    const QByteArray name = QByteArray::number(i);
                    zones += zoneNamed(name).replace("END:STANDARD",
                                                     "RRULE:FREQ=HOURLY;BYMONTH=2;BYMONTHDAY=30|END:STANDARD");
                    zones += zoneNamed(name).replace("END:STANDARD",
                                                     "RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30|END:STANDARD");
                    events += "DTSTART;TZID=" + name + ":20260608T060000#";
                }
                return calendar(events, zones);
            }(),
            false);
        row("a zone with a name of ten megabytes",
            calendar("DTSTART;TZID=" + QByteArray("/a").repeated(5'000'000 / share) + ":20260608T060000"), false);
    }

    void aHostileCalendarTakesBoundedTime()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const bool, isTooLarge);

        QElapsedTimer timer;
        timer.start();
        const ExpandedCalendar result = expanded(text);
        QVERIFY(result.occurrences.size() <= 500'000);
        QVERIFY(result.skipped.size() <= mostSkippedListed);
        const bool hasTooLarge = std::ranges::any_of(
            result.skipped, [](const SkippedEvent &each) { return each.reason == SkipReason::TooLarge; });
        QCOMPARE(hasTooLarge, isTooLarge);
        // Many times what it takes; without the bounds each of these takes minutes to years.
        QVERIFY(timer.elapsed() < 200'000);
    }

    void oneHostileEventLeavesTheOthersAlone()
    {
        const ExpandedCalendar result =
            expanded(calendar("SUMMARY:a|DTSTART:20260608T060000Z|RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30#"
                              "SUMMARY:b|DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=1"));
        QCOMPARE(occurrences(result), QByteArray("b 20260608T060000Z-20260608T060000Z"));
        QCOMPARE(result.skippedCount, 1);
    }

    void severalThreadsReadAtOnce()
    {
        const QByteArray text = calendar("SUMMARY:a|DTSTART;TZID=Europe/Vienna:20000101T060000|RRULE:FREQ=WEEKLY|"
                                         "EXDATE;TZID=Europe/Vienna:20260606T060000");
        const QByteArray expected = occurrences(expanded(text));
        QList<QByteArray> results(4);
        std::vector<std::unique_ptr<QThread>> threads;
        for (QByteArray &result : results) {
            threads.emplace_back(QThread::create([&] {
                for (int i = 0; i < 20; ++i)
                    result = occurrences(expanded(text));
            }));
            threads.back()->start();
        }
        for (const auto &thread : threads)
            QVERIFY(thread->wait());
        QVERIFY(!expected.isEmpty());
        QCOMPARE(results, QList<QByteArray>(4, expected));
    }

    void theNextRepetition_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *rule, const char *start, const char *after, const char *expected) {
            QTest::addRow("%s from %s after %s", rule, start, after)
                << QString::fromLatin1(rule) << QString::fromLatin1(start) << QString::fromLatin1(after)
                << QString::fromLatin1(expected);
        };
        row("FREQ=DAILY", "2026-06-08T09:30", "2026-06-08T09:29", "2026-06-08T09:30");
        row("FREQ=DAILY", "2026-06-08T09:30", "2026-06-08T09:30", "2026-06-09T09:30");
        row("FREQ=DAILY", "2026-06-08T09:30", "2026-07-01T12:00", "2026-07-02T09:30");
        row("FREQ=WEEKLY", "2026-06-08T09:30", "2026-06-08T09:30", "2026-06-15T09:30");
        row("FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", "2026-06-12T09:30", "2026-06-12T09:30", "2026-06-15T09:30");
        row("FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR", "2026-06-13T09:30", "2026-06-13T09:30", "2026-06-15T09:30");
        row("FREQ=WEEKLY;BYDAY=MO,TH", "2026-06-08T09:30", "2026-06-08T09:30", "2026-06-11T09:30");
        row("FREQ=WEEKLY;INTERVAL=2", "2026-06-08T09:30", "2036-06-08T09:30", "2036-06-09T09:30");
        row("FREQ=MONTHLY", "2026-01-31T09:30", "2026-01-31T09:30", "2026-03-31T09:30");
        row("FREQ=MONTHLY;BYMONTHDAY=-1", "2026-01-31T09:30", "2026-01-31T09:30", "2026-02-28T09:30");
        row("FREQ=MONTHLY;BYMONTHDAY=28,29,30,31;BYSETPOS=-1", "2026-01-31T09:30", "2026-02-28T09:30",
            "2026-03-31T09:30");
        row("FREQ=MONTHLY;BYMONTHDAY=28,29,30;BYSETPOS=-1", "2026-01-30T09:30", "2026-01-30T09:30", "2026-02-28T09:30");
        row("FREQ=YEARLY", "2024-02-29T09:30", "2024-02-29T09:30", "2028-02-29T09:30");
        row("FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=-1", "2024-02-29T09:30", "2024-02-29T09:30", "2025-02-28T09:30");
        row("freq=daily;", "2026-06-08T09:30", "2026-06-08T09:30", "2026-06-09T09:30");
        row("FREQ=DAILY;COUNT=2", "2026-06-08T09:30", "2026-06-09T09:30", "");
        row("FREQ=DAILY;UNTIL=20260609T093000", "2026-06-08T09:30", "2026-06-09T09:30", "");
        row("FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30", "2026-06-08T09:30", "2026-06-08T09:30", "");
        row("FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", "2026-06-08T09:30", "2026-06-08T09:30", "");
        row("every day", "2026-06-08T09:30", "2026-06-08T09:30", "");
        row("", "2026-06-08T09:30", "2026-06-08T09:30", "");
    }

    void theNextRepetition()
    {
        QFETCH(const QString, rule);
        QFETCH(const QString, start);
        QFETCH(const QString, after);

        const auto next = LibicalExpander().nextRepetition(rule, QDateTime::fromString(start, Qt::ISODate),
                                                           QDateTime::fromString(after, Qt::ISODate));
        QTEST(next ? next->toString(QStringLiteral("yyyy-MM-dd'T'HH:mm")) : QString(), "expected");
    }
};

TESSALY_TEST_MAIN(CalendarExpanderTest)
#include "CalendarExpanderTest.moc"
