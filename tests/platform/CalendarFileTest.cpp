#include "platform/common/vdir/EventPatch.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>

#include <algorithm>

using namespace tessaly;

namespace {

constexpr qint64 now = 1'780'300'000; // 2026-06-01
constexpr qint64 horizon = now + 3652 * qint64{86400};

/// Lines of a VEVENT, each ended by "|", of several by "#",, as a file.
QByteArray file(const QByteArray &events, const QByteArray &before = {})
{
    QByteArray text = "BEGIN:VCALENDAR|VERSION:2.0|" + before;
    for (const QByteArray &event : events.split('#'))
        text += "BEGIN:VEVENT|UID:u|" + event + "|END:VEVENT|";
    text += "END:VCALENDAR|";
    return text.replace('|', "\r\n");
}

/// A VTIMEZONE an hour east, in summer two, by the rules that are given.
QByteArray zoneNamed(const QByteArray &name, const QByteArray &rule = "FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU")
{
    return "BEGIN:VTIMEZONE|TZID:" + name +
           "|BEGIN:STANDARD|DTSTART:19701025T030000|TZOFFSETFROM:+0200|TZOFFSETTO:+0100|"
           "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU|END:STANDARD|"
           "BEGIN:DAYLIGHT|DTSTART:19700329T020000|TZOFFSETFROM:+0100|TZOFFSETTO:+0200|RRULE:" +
           rule + "|END:DAYLIGHT|END:VTIMEZONE|";
}

qint64 seconds(const QByteArray &utc)
{
    return wallFrom(utc).value_or(-1);
}

Instant instant(const QByteArray &utc)
{
    return Instant::fromUnixSeconds(static_cast<double>(seconds(utc)));
}

} // namespace

class CalendarFileTest : public QObject
{
    Q_OBJECT

private:
    UserCalendar m_user{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
    EventZones m_zones;
    PatchContext m_context{.user = m_user, .zones = m_zones, .now = now, .horizon = horizon};

    /// "title start-end original" of each occurrence, times in UTC, by start; "?" where something cannot be read.
    [[nodiscard]] QByteArray summary(const QByteArray &text)
    {
        auto events = readCalendarFile(text, QStringLiteral("u.ics"), m_zones);
        if (!events)
            return "?";
        QList<std::pair<qint64, QByteArray>> lines;
        for (FileEvent &event : *events) {
            if (!event.expand(horizon))
                return "?";
            for (const EventOccurrence &each : event.occurrences(m_user)) {
                QByteArray line = each.part->title.value_or(QString()).toUtf8() + ' ' +
                                  EventTime{.wall = each.start}.text() + '-' + EventTime{.wall = each.end}.text();
                line = line.trimmed();
                lines.append({each.start, each.original.isEmpty() ? line : line + ' ' + each.original});
            }
        }
        std::ranges::sort(lines);
        QByteArrayList result;
        for (const auto &[start, line] : lines)
            result.append(line);
        return result.join(", ");
    }

private slots:
    void eventsAreRead_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const QByteArray &text, const QByteArray &expected) {
            QTest::newRow(name) << text << expected;
        };

        row("UTC", file("SUMMARY:a|DTSTART:20260608T060000Z|DTEND:20260608T070000Z"),
            "a 20260608T060000Z-20260608T070000Z");
        row("line feeds alone, a byte-order mark",
            "\xEF\xBB\xBF" + file("SUMMARY:a|DTSTART:20260608T060000Z").replace('\r', ""),
            "a 20260608T060000Z-20260608T060000Z");
        row("folded", file("SUMM| ARY:a|\tb|DTSTART:2026|  0608T060000Z").replace("  06", " 06"),
            "ab 20260608T060000Z-20260608T060000Z");
        row("floating", file("DTSTART:20260608T080000|DTEND:20260608T090000"), "20260608T060000Z-20260608T070000Z");
        row("zone of the system", file("DTSTART;TZID=Asia/Tokyo:20260608T150000|DURATION:PT1H30M"),
            "20260608T060000Z-20260608T073000Z");
        row("zone behind a prefix", file("DTSTART;TZID=/example.org/2020/Asia/Tokyo:20260608T150000"),
            "20260608T060000Z-20260608T060000Z");
        row("zone of the file",
            file("DTSTART;TZID=\"My: zone\":20260608T080000|DTEND;TZID=\"My: zone\":20261208T080000",
                 zoneNamed("My: zone")),
            "20260608T060000Z-20261208T070000Z");
        row("zone of Windows", file("DTSTART;TZID=Tokyo Standard Time:20260608T150000"),
            "20260608T060000Z-20260608T060000Z");
        row("unknown zone", file("DTSTART;TZID=Nowhere:20260608T080000"), "20260608T060000Z-20260608T060000Z");
        row("whole day", file("DTSTART;VALUE=DATE:20260329"), "20260328T230000Z-20260329T220000Z");
        row("whole days", file("DTSTART;VALUE=DATE:20260608|DTEND;VALUE=DATE:20260610"),
            "20260607T220000Z-20260609T220000Z");
        row("a day later by the clock", file("DTSTART;TZID=Europe/Vienna:20260328T120000|DURATION:P1D"),
            "20260328T110000Z-20260329T100000Z");
        row("ends before it starts", file("DTSTART:20260608T060000Z|DTEND:20260608T050000Z"),
            "20260608T060000Z-20260608T060000Z");
        row("alarms have times of their own",
            file("DTSTART:20260608T060000Z|BEGIN:VALARM|SUMMARY:no|DTSTART:1|DURATION:x|END:VALARM"),
            "20260608T060000Z-20260608T060000Z");
        row("recurrence with exceptions",
            file("DTSTART;TZID=Europe/Vienna:20260608T080000|RRULE:FREQ=DAILY;COUNT=4|"
                 "EXDATE;TZID=Europe/Vienna:20260609T080000,20260610T080000"),
            "20260608T060000Z-20260608T060000Z 20260608T080000, 20260611T060000Z-20260611T060000Z 20260611T080000");
        row("exception in UTC",
            file("DTSTART;TZID=Europe/Vienna:20260608T080000|RRULE:FREQ=DAILY;COUNT=2|EXDATE:20260608T060000Z"),
            "20260609T060000Z-20260609T060000Z 20260609T080000");
        row("exception of a whole day",
            file("DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=2|EXDATE;VALUE=DATE:20260608"),
            "20260609T060000Z-20260609T060000Z 20260609T060000Z");
        row("ends by UTC", file("DTSTART;TZID=Europe/Vienna:20260608T080000|RRULE:FREQ=DAILY;UNTIL=20260608T060000Z"),
            "20260608T060000Z-20260608T060000Z 20260608T080000");
        row("ends with a day", file("DTSTART;TZID=Europe/Vienna:20260608T080000|RRULE:FREQ=DAILY;UNTIL=20260609"),
            "20260608T060000Z-20260608T060000Z 20260608T080000, 20260609T060000Z-20260609T060000Z 20260609T080000");
        row("further dates", file("DTSTART;VALUE=DATE:20260608|RDATE;VALUE=DATE:20260610"),
            "20260607T220000Z-20260608T220000Z 20260608, 20260609T220000Z-20260610T220000Z 20260610");
        row("a moved occurrence",
            file("DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=2#"
                 "SUMMARY:b|RECURRENCE-ID;TZID=Europe/Vienna:20260609T080000|DTSTART:20260701T060000Z"),
            "20260608T060000Z-20260608T060000Z 20260608T060000Z, b 20260701T060000Z-20260701T060000Z 20260609T060000Z");
        row("all from one on are moved",
            file("DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;COUNT=3#"
                 "SUMMARY:b|RECURRENCE-ID;RANGE=THISANDFUTURE:20260609T060000Z|DTSTART:20260609T070000Z"),
            "20260608T060000Z-20260608T060000Z 20260608T060000Z, b 20260609T070000Z-20260609T070000Z 20260609T060000Z, "
            "b 20260610T070000Z-20260610T070000Z 20260610T060000Z");
        row("one occurrence without the others", file("RECURRENCE-ID:20260609T060000Z|DTSTART:20260609T070000Z"),
            "20260609T070000Z-20260609T070000Z 20260609T060000Z");
        row("two for one occurrence",
            file("SUMMARY:a|RECURRENCE-ID:20260609T060000Z|DTSTART:20260609T070000Z#"
                 "SUMMARY:b|RECURRENCE-ID:20260609T060000Z|DTSTART:20260609T080000Z"),
            "b 20260609T080000Z-20260609T080000Z 20260609T060000Z");
        row("no events", "BEGIN:VCALENDAR\r\nBEGIN:VTODO\r\nUID:1\r\nEND:VTODO\r\nEND:VCALENDAR\r\n", "");
    }

    void eventsAreRead()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const QByteArray, expected);
        QCOMPARE(summary(text), expected);
    }

    void whatCannotBeReadIsLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };
        const QByteArray whole = file("DTSTART:20260608T060000Z");

        row("empty", {});
        row("no calendar", "hello");
        row("cut off", whole.left(whole.size() - 20));
        row("no start", file("SUMMARY:a"));
        row("no such day", file("DTSTART:20260231T060000Z"));
        row("bad end", file("DTSTART:20260608T060000Z|DTEND:tomorrow"));
        row("bad rule", file("DTSTART:20260608T060000Z|RRULE:FREQ=SOMETIMES"));
        row("two of one", file("DTSTART:20260608T060000Z#DTSTART:20260608T060000Z"));
        row("every second", file("DTSTART:20260608T060000Z|RRULE:FREQ=SECONDLY"));
        row("every second, counted", file("DTSTART:20260608T060000Z|RRULE:FREQ=SECONDLY;COUNT=2000000000"));
        row("never", file("DTSTART:20260608T060000Z|RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"));
        row("every minute for long", file("DTSTART:20260608T060000Z|RRULE:FREQ=MINUTELY;UNTIL=99991231T000000Z"));
        row("deep", QByteArray("BEGIN:VCALENDAR\n").repeated(100000) + QByteArray("END:VCALENDAR\n").repeated(100000));
        row("many rules", file("DTSTART:20260608T060000Z" + QByteArray("|RRULE:FREQ=DAILY;COUNT=9999").repeated(9)));
    }

    void whatCannotBeReadIsLeftAlone()
    {
        QFETCH(const QByteArray, text);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(summary(text), QByteArray("?"));
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    }

    void hostileTextsCostLittle_data()
    {
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char *name, const QByteArray &text) { QTest::newRow(name) << text; };

        row("a long line", file("DTSTART:20260608T060000Z|X-LONG:" + QByteArray(10 << 20, 'x')));
        row("a line of many folds", file("DTSTART:20260608T060000Z|X-LONG:a" + QByteArray("\r\n b").repeated(1 << 20)));
        row("many parameters", file("DTSTART" + QByteArray(";A=\"b\"").repeated(1 << 17) + ":20260608T060000Z"));
        row("a zone that changes all the time",
            file("DTSTART;TZID=Odd:20260608T080000", zoneNamed("Odd", "FREQ=SECONDLY")));
        row("a zone of itself",
            file("DTSTART;TZID=Odd:20260608T080000",
                 "BEGIN:VTIMEZONE|TZID:Odd|BEGIN:STANDARD|DTSTART;TZID=Odd:19700101T000000|TZOFFSETFROM:+0200|"
                 "TZOFFSETTO:+0200|END:STANDARD|END:VTIMEZONE|"));
        row("never", file("DTSTART:20260608T060000Z|RRULE:FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30"));
        row("never, by hours", file("DTSTART:20260608T060000Z|RRULE:FREQ=HOURLY;INTERVAL=2;BYHOUR=7"));
    }

    void hostileTextsCostLittle()
    {
        QFETCH(const QByteArray, text);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(summary(text).startsWith("20260608T060000Z-20260608T060000Z"));
        QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    }

    void onlyWhatChangesIsRewritten_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("original");
        QTest::addColumn<QByteArray>("title");
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("end");
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char *name, const QByteArray &before, const QByteArray &original,
                            const QByteArray &title, const QByteArray &start, const QByteArray &end,
                            const QByteArray &after) {
            QTest::newRow(name) << file(before) << original << title << start << end << file(after);
        };
        const QByteArray foreign = "X-A;P=\"q;r\":b\\,c|ATTENDEE:mailto:a@b.c|";
        const QByteArray alarm = "|BEGIN:VALARM|TRIGGER:-PT5M|END:VALARM";
        const QByteArray stamp = "LAST-MODIFIED:20260601T074640Z";

        row("nothing", "SUMMARY:a|DTSTART:20260608T060000Z|DURATION:PT1H", {}, "a", "20260608T060000Z",
            "20260608T070000Z", "SUMMARY:a|DTSTART:20260608T060000Z|DURATION:PT1H");
        row("title", foreign + "SUMMARY;LANGUAGE=en:a|DTSTART:20260608T060000Z" + alarm, {}, "b", "20260608T060000Z",
            "20260608T060000Z", foreign + "SUMMARY;LANGUAGE=en:b|DTSTART:20260608T060000Z|" + stamp + alarm);
        row("title that was not there", "DTSTART:20260608T060000Z", {}, "b", "20260608T060000Z", "20260608T060000Z",
            "DTSTART:20260608T060000Z|SUMMARY:b|" + stamp);
        row("times in a zone",
            foreign + "SUMMARY:a|DTSTART;X-B=1;TZID=Asia/Tokyo:20260608T150000|"
                      "DTEND;TZID=Asia/Tokyo:20260608T160000|SEQUENCE:4|DTSTAMP:20200101T000000Z",
            {}, "a", "20260608T080000Z", "20260608T090000Z",
            foreign +
                "SUMMARY:a|DTSTART;X-B=1;TZID=Asia/Tokyo:20260608T170000|"
                "DTEND;TZID=Asia/Tokyo:20260608T180000|SEQUENCE:5|DTSTAMP:20260601T074640Z|" +
                stamp);
        row("the sequence of an organizer", "ORGANIZER:mailto:a@b.c|SUMMARY:a|DTSTART:20260608T060000Z", {}, "a",
            "20260608T070000Z", "20260608T070000Z",
            "ORGANIZER:mailto:a@b.c|SUMMARY:a|DTSTART:20260608T070000Z|" + stamp);
        row("a duration that still holds", "SUMMARY:a|DTSTART:20260608T060000|DURATION:PT1H|SEQUENCE:0", {}, "a",
            "20260608T060000Z", "20260608T070000Z",
            "SUMMARY:a|DTSTART:20260608T080000|DURATION:PT1H|SEQUENCE:1|" + stamp);
        row("another duration", "SUMMARY:a|DTSTART:20260608T060000Z|DURATION:PT1H|SEQUENCE:0", {}, "a",
            "20260608T060000Z", "20260608T073000Z",
            "SUMMARY:a|DTSTART:20260608T060000Z|DURATION:PT5400S|SEQUENCE:1|" + stamp);
        row("an end that was not there", "SUMMARY:a|DTSTART;TZID=Asia/Tokyo:20260608T150000|SEQUENCE:0", {}, "a",
            "20260608T060000Z", "20260608T070000Z",
            "SUMMARY:a|DTSTART;TZID=Asia/Tokyo:20260608T150000|DTEND;TZID=Asia/Tokyo:20260608T160000|SEQUENCE:1|" +
                stamp);
        row("whole days stay whole", "SUMMARY:a|DTSTART;VALUE=DATE:20260608|DTEND;VALUE=DATE:20260609|SEQUENCE:0", {},
            "a", "20260608T220000Z", "20260610T220000Z",
            "SUMMARY:a|DTSTART;VALUE=DATE:20260609|DTEND;VALUE=DATE:20260611|SEQUENCE:1|" + stamp);
        row("a day becomes an hour", "SUMMARY:a|DTSTART;VALUE=DATE:20260608|DTEND;VALUE=DATE:20260609|SEQUENCE:0", {},
            "a", "20260608T060000Z", "20260608T070000Z",
            "SUMMARY:a|DTSTART:20260608T060000Z|DTEND:20260608T070000Z|SEQUENCE:1|" + stamp);
        row("an unknown zone", "SUMMARY:a|DTSTART;TZID=Nowhere:20260608T080000|SEQUENCE:0", {}, "a", "20260608T070000Z",
            "20260608T070000Z", "SUMMARY:a|DTSTART:20260608T070000Z|SEQUENCE:1|" + stamp);
        row("the second of two equal hours",
            "SUMMARY:a|DTSTART;TZID=Europe/Vienna:20261025T010000|DURATION:PT0S|SEQUENCE:0", {}, "a",
            "20261025T013000Z", "20261025T013000Z",
            "SUMMARY:a|DTSTART:20261025T013000Z|DURATION:PT0S|SEQUENCE:1|" + stamp);
        row("one occurrence",
            foreign + "SUMMARY:a|DTSTART;TZID=Asia/Tokyo:20260608T150000|DURATION:PT1H|RRULE:FREQ=DAILY|SEQUENCE:3" +
                alarm,
            "20260610T150000", "b", "20260610T070000Z", "20260610T080000Z",
            foreign + "SUMMARY:a|DTSTART;TZID=Asia/Tokyo:20260608T150000|DURATION:PT1H|RRULE:FREQ=DAILY|SEQUENCE:3" +
                alarm + "#" + foreign +
                "SUMMARY:b|RECURRENCE-ID;TZID=Asia/Tokyo:20260610T150000|DTSTART;TZID=Asia/Tokyo:20260610T160000|"
                "DURATION:PT1H|SEQUENCE:4|" +
                stamp + alarm);
        row("an occurrence that differs already",
            "SUMMARY:a|DTSTART:20260608T060000Z|RRULE:FREQ=DAILY#"
            "SUMMARY:b|RECURRENCE-ID:20260609T060000Z|DTSTART:20260609T070000Z",
            "20260609T060000Z", "c", "20260609T070000Z", "20260609T070000Z",
            "SUMMARY:a|DTSTART:20260608T060000Z|RRULE:FREQ=DAILY#"
            "SUMMARY:c|RECURRENCE-ID:20260609T060000Z|DTSTART:20260609T070000Z|" +
                stamp);
    }

    void onlyWhatChangesIsRewritten()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, original);
        QFETCH(const QByteArray, title);
        QFETCH(const QByteArray, start);
        QFETCH(const QByteArray, end);
        QFETCH(const QByteArray, after);

        const auto changed = textWithChange(
            before, {.uid = QStringLiteral("u"), .original = original},
            {.title = QString::fromUtf8(title), .startDate = instant(start), .endDate = instant(end)}, m_context);

        QVERIFY(changed);
        QCOMPARE(changed.value(), after);
        const QByteArray expected = title + ' ' + start + '-' + end + (original.isEmpty() ? "" : " " + original);
        QVERIFY2(summary(after).contains(expected), summary(after));
    }

    void lineEndsAndFoldsStay()
    {
        const QByteArray before = file("X-FOLDED:abc|  def|DTSTART:20260608T060000Z|SUMMARY:a").replace('\r', "");

        const auto changed = textWithChange(
            before, {.uid = QStringLiteral("u")},
            {.title = QStringLiteral("字").repeated(60), .startDate = instant("20260608T060000Z")}, m_context);

        QVERIFY(changed);
        QVERIFY(!changed.value().contains('\r'));
        QVERIFY(changed.value().contains("X-FOLDED:abc\n  def\n"));
        for (const QByteArray &line : changed.value().split('\n')) {
            QVERIFY(line.size() <= 75);
            QVERIFY(!QString::fromUtf8(line).contains(QChar::ReplacementCharacter));
        }
        QVERIFY(summary(changed.value()).startsWith(QStringLiteral("字").repeated(60).toUtf8() + ' '));
    }

    void anOccurrenceIsExcluded()
    {
        const QByteArray pattern = "DTSTART;TZID=Asia/Tokyo:20260608T150000|RRULE:FREQ=DAILY;COUNT=2";
        const QByteArray moved = "RECURRENCE-ID;TZID=Asia/Tokyo:20260609T150000|DTSTART:20260609T070000Z";

        const auto rest = textWithoutEvent(file(pattern + '#' + moved),
                                           {.uid = QStringLiteral("u"), .original = "20260609T150000"}, m_context);

        QVERIFY(rest);
        QCOMPARE(rest.value(), file("DTSTART;TZID=Asia/Tokyo:20260608T150000|EXDATE;TZID=Asia/Tokyo:20260609T150000|"
                                    "RRULE:FREQ=DAILY;COUNT=2|LAST-MODIFIED:20260601T074640Z"));
    }

    void aFileWithoutEventsIsEmpty()
    {
        const EventKey key{.uid = QStringLiteral("u")};
        QCOMPARE(textWithoutEvent(file("DTSTART:20260608T060000Z", zoneNamed("Z")), key, m_context).value(),
                 QByteArray());
        const QByteArray task = "BEGIN:VTODO|UID:t|END:VTODO|";
        QCOMPARE(textWithoutEvent(file("DTSTART:20260608T060000Z", task), key, m_context).value(),
                 QByteArray("BEGIN:VCALENDAR|VERSION:2.0|" + task + "END:VCALENDAR|").replace('|', "\r\n"));
    }
};

TESSALY_TEST_MAIN(CalendarFileTest)
#include "CalendarFileTest.moc"
