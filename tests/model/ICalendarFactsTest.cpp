#include "model/ICalendarFacts.h"
#include "model/ICalendarReader.h"
#include "tests/support/TestMain.h"

#include <QDateTime>

#include <random>

using namespace tessaly;

namespace {

const QTimeZone vienna("Europe/Vienna");

/// The lines, each ended by "|", as a calendar.
QByteArray calendar(const QByteArray &lines)
{
    QByteArray text = "BEGIN:VCALENDAR|" + lines + "END:VCALENDAR|";
    return text.replace('|', "\r\n");
}

/// "title, day, reason, value, line"
QString described(const SkippedEvent &event)
{
    static const char *const reasons[] = {"no start", "no end", "start", "end", "repetition", "too large"};
    return QStringList{event.title, event.day ? event.day->toString(Qt::ISODate) : QString(),
                       QString::fromLatin1(reasons[static_cast<int>(event.reason)]), event.value,
                       QString::number(event.line)}
        .join(QStringLiteral(", "));
}

} // namespace

class ICalendarFactsTest : public QObject
{
    Q_OBJECT

private slots:
    void aTextSaysOfItself_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isCalendar");
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("refreshSeconds");

        const auto row = [](const char *name, const QByteArray &text, bool isCalendar, const char *calendarName = "",
                            double seconds = 0) {
            QTest::newRow(name) << text << isCalendar << QString::fromUtf8(calendarName) << seconds;
        };
        row("nothing", "", false);
        row("an error page", "<html><body>BEGIN:VCALENDAR</body></html>", false);
        row("an event without a calendar", "BEGIN:VEVENT\nEND:VEVENT\n", false);
        row("a byte-order mark", "\xEF\xBB\xBF" + calendar(""), true);
        row("small letters and a blank", "begin:vcalendar \n", true);
        row("carriage returns alone", "BEGIN:VCALENDAR\rEND:VCALENDAR\r", true);
        row("after other lines", "\r\n\r\nBEGIN:VCALENDAR\r\n", true);
        row("a name", calendar("X-WR-CALNAME:Maths\\, then \\n tea|"), true, "Maths, then   tea");
        row("a name with parameters", calendar("X-WR-CALNAME;X=\"a:b\":Maths|"), true, "Maths");
        row("a folded name", calendar("X-WR-CALNAME:Ma| ths|"), true, "Maths");
        row("the first name that is not empty", calendar("X-WR-CALNAME: |X-WR-CALNAME:a|X-WR-CALNAME:b|"), true, "a");
        row("the name of an event is none", calendar("BEGIN:VEVENT|X-WR-CALNAME:a|END:VEVENT|"), true);
        row("an interval", calendar("REFRESH-INTERVAL;VALUE=DURATION:PT12H|"), true, "", 43200);
        row("a lifetime", calendar("X-PUBLISHED-TTL:P1DT30M|"), true, "", 88200);
        row("the interval before the lifetime", calendar("X-PUBLISHED-TTL:PT1H|REFRESH-INTERVAL:P1W|"), true, "",
            604800);
        for (const char *bad : {"", "P", "PT", "PT0S", "-PT1H", "1H", "PT1", "P1H", "PT1D", "P1DT", "PT99999999999H"})
            row(bad, calendar(QByteArray("X-PUBLISHED-TTL:") + bad + "|"), true);
    }

    void aTextSaysOfItself()
    {
        QFETCH(const QByteArray, text);

        const CalendarFacts facts = calendarFacts(text, vienna);
        QTEST(facts.isCalendar, "isCalendar");
        QTEST(facts.name, "name");
        QTEST(facts.refreshSeconds.value_or(0), "refreshSeconds");
    }

    void whatIsLeftOutIsListed()
    {
        const QByteArray end = "DTEND:20240902T100000Z|";
        const CalendarFacts facts = calendarFacts(
            calendar("BEGIN:VEVENT|SUMMARY:Read|DTSTART:20240902T080000Z|" + end + "END:VEVENT|" +
                     "BEGIN:VEVENT|SUMMARY:Without\\, start|" + end + "END:VEVENT|" +
                     "BEGIN:VEVENT|DTSTART;TZID=Asia/Tokyo:20240902T003000|SUMMARY;X=\"a:b\":Without| end|END:VEVENT|" +
                     "BEGIN:VEVENT|DTSTART:2024-09-02|" + end + "END:VEVENT|" +
                     "BEGIN:VEVENT|DTSTART;TZID=\"(UTC+08:00) Peking\":20240902T080000|" + end + "END:VEVENT|" +
                     "BEGIN:VEVENT|DTSTART:20240902|DTEND:" + QByteArray(80, '9') + "|END:VEVENT|"),
            vienna);

        QStringList skipped;
        for (const SkippedEvent &event : facts.skipped)
            skipped.append(described(event));
        const QStringList expected{QStringLiteral("Without, start, , no start, , 7"),
                                   QStringLiteral("Withoutend, 2024-09-02, no end, , 11"),
                                   QStringLiteral(", , start, 2024-09-02, 17"),
                                   QStringLiteral(", , start, DTSTART;TZID=\"(UTC+08:00) Peking\":20240902T080000, 21"),
                                   QStringLiteral(", 2024-09-02, end, %1…, 26").arg(QString(59, u'9'))};
        QCOMPARE(skipped, expected);
        QCOMPARE(facts.skippedCount, 5);
        QCOMPARE(facts.eventCount, 1);
    }

    void onlyTheFirstThousandAreListed()
    {
        const CalendarFacts facts = calendarFacts(QByteArray("BEGIN:VEVENT\nEND:VEVENT\n").repeated(1500), vienna);

        QCOMPARE(facts.skippedCount, 1500);
        QCOMPARE(facts.skipped.size(), 1000);
        QCOMPARE(facts.skipped.constLast().line, 1999);
    }

    void theSpanAndTheRepeatingEventsAreThoseOfWhatIsRead()
    {
        const CalendarFacts facts = calendarFacts(
            calendar("BEGIN:VEVENT|DTSTART:20240902|DTEND:20240903|RRULE:FREQ=DAILY|RDATE:20240905|END:VEVENT|"
                     "BEGIN:VEVENT|DTSTART:20240901T080000Z|DTEND:20240902T080000Z|END:VEVENT|"
                     "BEGIN:VEVENT|DTSTART:20240902|DTEND:20240904T000000Z|RDATE;VALUE=DATE:20240904|END:VEVENT|"
                     "BEGIN:VEVENT|DTSTART:20200101|RRULE:FREQ=DAILY|END:VEVENT|"),
            vienna);

        QCOMPARE(facts.eventCount, 3);
        QCOMPARE(facts.repeatingCount, 2);
        const auto utc = [](std::optional<Instant> instant) {
            return QDateTime::fromSecsSinceEpoch(qRound64(instant->unixSeconds()), Qt::UTC).toString(Qt::ISODate);
        };
        QCOMPARE(utc(facts.firstStart), QStringLiteral("2024-09-01T08:00:00Z"));
        QCOMPARE(utc(facts.lastEnd), QStringLiteral("2024-09-04T00:00:00Z"));
    }

    void theFactsAgreeWithTheReader()
    {
        const QByteArrayList pieces{"BEGIN:VEVENT",
                                    "BEGIN:VEVENT",
                                    "END:VEVENT",
                                    "END:VEVENT",
                                    "END:VEVENT ",
                                    "DTSTART:20240902",
                                    "DTSTART:20240901T120000",
                                    "DTEND:20240902",
                                    "DTSTART;TZID=Asia/Tokyo:20240902T080000",
                                    "DTSTART:2024",
                                    "dtstart:20240902",
                                    "DTEND:20240903T000000Z",
                                    "DTEND;TZID=\"a:b\":20240903T000000",
                                    "DTEND",
                                    "SUMMARY:x",
                                    "RRULE:FREQ=DAILY",
                                    " folded",
                                    "",
                                    "BEGIN:VALARM",
                                    "::;",
                                    "X-WR-CALNAME:y"};
        std::mt19937 random(7);
        qsizetype eventCount = 0;
        for (int round = 0; round < 200; ++round) {
            QByteArray text;
            for (int i = 0; i < 400; ++i)
                text += pieces.at(static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))) +
                        (random() % 4 ? "\r\n" : "\n");
            const QList<ParsedEvent> events = parseICalendar(text, QStringLiteral("x"), vienna);
            const CalendarFacts facts = calendarFacts(text, vienna);
            QVERIFY2(facts.eventCount == events.size(), text);
            QVERIFY2(facts.skipped.size() == facts.skippedCount, text);
            for (const ParsedEvent &event : events)
                QVERIFY2(*facts.firstStart <= event.start && *facts.lastEnd >= event.end, text);
            eventCount += events.size();
        }
        QVERIFY2(eventCount > 300, "too few of the texts have events for this to mean anything");
    }
};

TESSALY_TEST_MAIN(ICalendarFactsTest)
#include "ICalendarFactsTest.moc"
