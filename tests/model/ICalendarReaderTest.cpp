#include "model/ICalendarReader.h"
#include "tests/support/TestMain.h"

#include <QDateTime>

using namespace tessaly;

namespace {

const QTimeZone vienna("Europe/Vienna");

QList<ParsedEvent> parsed(const QByteArray &text)
{
    return parseICalendar(text, QStringLiteral("Untitled"), vienna);
}

/// One event with these lines beside a readable end, a UID and a title.
QByteArray eventWith(const QByteArray &lines)
{
    return "BEGIN:VEVENT\nDTEND:20301231\nUID:1\nSUMMARY:S\n" + lines + "\nEND:VEVENT\n";
}

QString utc(Instant instant)
{
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(instant.unixSeconds()), Qt::UTC).toString(Qt::ISODate);
}

QStringList titles(const QList<ParsedEvent> &events)
{
    QStringList found;
    for (const ParsedEvent &event : events)
        found.append(event.title);
    return found;
}

} // namespace

class ICalendarReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void aFileIsReadIntoEventsInItsOrder()
    {
        const QList<ParsedEvent> events =
            parsed("\xEF\xBB\xBF"
                   "BEGIN:VCALENDAR\r\n"
                   "BEGIN:VEVENT\r\nDTSTART:20240902T080000Z\r\nDTEND:20240902T090000Z\r\n"
                   "UID:a@x\r\nSUMMARY:Nameless\r\nEND:VEVENT\r\n"
                   "X-WR-CALNAME:课程: A;B\r\n"
                   "BEGIN:VEVENT\r\nDTSTART:20240903T080000Z\r\nDTEND:20240903T090000Z\r\n"
                   "UID;X=1:b@x\r\nSUMMARY:\xE5\xBE\xAE\\, \\n\r\nEND:VEVENT\r\n"
                   "END:VCALENDAR\r\n");

        const auto at = [](int day, int hour) {
            return Instant::fromUnixSeconds(1725235200.0 + (day - 2) * 86400.0 + hour * 3600.0);
        };
        const QList<ParsedEvent> expected{
            {"UID:a@x", QStringLiteral("SUMMARY:Nameless"), at(2, 8), at(2, 9), std::nullopt},
            {"UID;X=1:b@x", QStringLiteral("SUMMARY:微\\, \\n"), at(3, 8), at(3, 9), QStringLiteral("课程: A;B")}};
        QCOMPARE(events, expected);
    }

    void aDateLineIsReadOrRefused_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *line, const char *expected) {
            QTest::newRow(line) << QByteArray(line) << QString::fromLatin1(expected);
        };
        row("DTSTART:20240902T080000Z", "2024-09-02T08:00:00Z");
        row("DTSTART:20240902T080000", "2024-09-02T06:00:00Z");
        row("DTSTART;TZID=Asia/Shanghai:20240902T080000", "2024-09-02T00:00:00Z");
        row("DTSTART;X=1;TZID=Asia/Shanghai;Y=2:20240902T080000", "2024-09-02T00:00:00Z");
        row("DTSTART;TZID=Asia/Shanghai:20240902T080000Z", "2024-09-02T08:00:00Z");
        row("DTSTART;TZID=Not/AZone:20240902T080000", "2024-09-02T06:00:00Z");
        row("DTSTART;TZID=:20240902T080000", "2024-09-02T06:00:00Z");
        row("DTSTART;TZID=\"Asia/Shanghai\":20240902T080000", "2024-09-02T06:00:00Z");
        row("DTSTART;VALUE=DATE:20240902", "2024-09-01T22:00:00Z");
        row("DTSTART;TZID=Asia/Shanghai;VALUE=DATE:20240902", "2024-09-01T16:00:00Z");
        row("DTSTART:20240331T023000", "2024-03-31T01:30:00Z");
        row("DTSTART:20241027T023000", "2024-10-27T00:30:00Z");
        row("DTSTART:Z20240902T080000ZZ", "2024-09-02T08:00:00Z");
        row("DTSTART:20240229", "2024-02-28T23:00:00Z");
        row("DTSTART:20000229T000000Z", "2000-02-29T00:00:00Z");
        row("DTSTART:00010101T000000Z", "0001-01-01T00:00:00Z");
        row("DTSTART:99991231T235959Z", "9999-12-31T23:59:59Z");
        row("::DTSTART;;:20240902", "2024-09-01T22:00:00Z");
        row(";DTSTART:20240902", "2024-09-01T22:00:00Z");

        for (const char *refused : {"DTSTART",
                                    "DTSTART:",
                                    "DTSTART::20240902",
                                    "dtstart:20240902",
                                    "DTSTART:20230229",
                                    "DTSTART:19000229",
                                    "DTSTART:20241301",
                                    "DTSTART:20240001",
                                    "DTSTART:20240900",
                                    "DTSTART:20240431",
                                    "DTSTART:00000101",
                                    "DTSTART:2024090",
                                    "DTSTART:202409021",
                                    "DTSTART:20240902Z",
                                    "DTSTART:2024090Z",
                                    "DTSTART:ZZZZZZZZ",
                                    "DTSTART:20240902T240000",
                                    "DTSTART:20240902T236000",
                                    "DTSTART:20240902T235960",
                                    "DTSTART:20240902t080000",
                                    "DTSTART:20240902 080000",
                                    "DTSTART:20240902T0800",
                                    "DTSTART:20240902T080000 ",
                                    "DTSTART: 20240902T080000",
                                    "DTSTART:2024-09-02",
                                    "DTSTART:+0240902",
                                    "DTSTART:20240902T080000+0100",
                                    "DTSTART:20240902T08000\xC2\xB2",
                                    ";:DTSTART:20240902",
                                    "DTSTART;VALUE=DATE 20240902"})
            row(refused, "refused");
    }

    void aDateLineIsReadOrRefused()
    {
        QFETCH(const QByteArray, line);

        const QList<ParsedEvent> events = parsed(eventWith(line));
        QTEST(events.isEmpty() ? QStringLiteral("refused") : utc(events.first().start), "expected");
    }

    void aFileYieldsTheseTitles_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("expected");

        const QByteArray start = "DTSTART:20240902";
        const auto row = [](const char *name, const QByteArray &text, const QStringList &expected) {
            QTest::newRow(name) << text << expected;
        };
        const QString plain = QStringLiteral("SUMMARY:S");
        row("nothing", "", {});
        row("an error page", "<html>\n<body>404 Not Found: x</body>", {});
        row("without a start", eventWith("X:1"), {});
        row("without an end", "BEGIN:VEVENT\nDTSTART:20240902\nSUMMARY:S\nEND:VEVENT\n", {});
        row("without a title", "BEGIN:VEVENT\nDTSTART:20240902\nDTEND:20240903\nEND:VEVENT",
            {QStringLiteral("Untitled")});
        row("a title without a colon", eventWith(start + "\nSUMMARY"), {QStringLiteral("SUMMARY")});
        row("the later property counts", eventWith(start + "\nSUMMARY;LANGUAGE=en:T"),
            {QStringLiteral("SUMMARY;LANGUAGE=en:T")});
        row("so does that of an alarm", eventWith(start + "\nBEGIN:VALARM\nSUMMARY:Bell\nEND:VALARM"),
            {QStringLiteral("SUMMARY:Bell")});
        row("names are compared by case", eventWith(start + "\nsummary:T"), {plain});
        row("unfolding trims the continuation", eventWith(start + "\nSUMMARY:Micro \n  eco\t\n\t nomics"),
            {QStringLiteral("SUMMARY:Micro economics")});
        row("line ends do not matter", eventWith(start + "\nSUMMARY:A\n B").replace("\n", "\r\n"),
            {QStringLiteral("SUMMARY:AB")});
        row("one of two carriage returns stays", eventWith(start + "\nSUMMARY:A\r\r\nX:1"),
            {QStringLiteral("SUMMARY:A\r")});
        row("a name may be folded", eventWith(start + "\nSUMM\n ARY:A"), {QStringLiteral("SUMMARY:A")});
        row("also right at its colon", eventWith(start + "\nSUMMARY\n :A"), {QStringLiteral("SUMMARY:A")});
        row("and after leading colons", eventWith(start + "\n:\n SUMMARY:A"), {QStringLiteral(":SUMMARY:A")});
        row("a folded line may turn into another", eventWith(start + "\nSUMMARY\n X:A"), {plain});
        row("folded lines of no interest are passed over", eventWith("DESCRIPTION:a\n SUMMARY:B\n \n" + start),
            {plain});
        row("an empty line takes a continuation", eventWith(start + "\n\n SUMMARY:A"), {QStringLiteral("SUMMARY:A")});
        row("a folded end", eventWith(start).replace("END:VEVENT", "END:VE\n VENT"), {plain});
        row("an end that goes on is none", eventWith(start).replace("END:VEVENT\n", "END:VEVENT\n X\n"), {});
        row("an end with a blank is none", eventWith(start).replace("END:VEVENT", "END:VEVENT "), {});
        row("a begin in small letters is none", eventWith(start).replace("BEGIN", "begin"), {});
        row("an end outside an event", "END:VEVENT\n" + eventWith(start) + "END:VEVENT\n", {plain});
        row("a begin inside an event starts over", "BEGIN:VEVENT\nSUMMARY:A\nDTEND:20240903\n" + eventWith("X:1"), {});
        row("no line end at the end", eventWith(start).chopped(1), {plain});
        row("lines without a name", eventWith(start + "\n\n:::\n;;:\n;"), {plain});
        row("a zone's own start does not count",
            "BEGIN:VTIMEZONE\nDTSTART:20240902\nEND:VTIMEZONE\n" + eventWith("X:1"), {});
    }

    void aFileYieldsTheseTitles()
    {
        QFETCH(const QByteArray, text);

        QTEST(titles(parsed(text)), "expected");
    }

    void anEventWithoutUidGetsAFreshOneEachTime()
    {
        const QByteArray text = "BEGIN:VEVENT\nDTSTART:20240902\nDTEND:20240903\nEND:VEVENT\n";
        const QByteArray first = parsed(text).constFirst().uid;

        QVERIFY(!QUuid(QString::fromLatin1(first)).isNull());
        QVERIFY(parsed(text).constFirst().uid != first);
    }

    void aCalendarNameInsideAnEventIsAProperty()
    {
        const QList<ParsedEvent> events =
            parsed(eventWith("DTSTART:20240902\nX-WR-CALNAME:No") + eventWith("DTSTART:20240903"));

        QCOMPARE(events.size(), 2);
        QCOMPARE(events.constLast().calendarName, std::nullopt);
    }
};

TESSALY_TEST_MAIN(ICalendarReaderTest)
#include "ICalendarReaderTest.moc"
