#include "model/ICalendarWriter.h"

#include "model/ICalendarText.h"
#include "model/Uuid.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

class ICalendarWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsWrittenReadsBackTheSame()
    {
        RecordGenerator generator(7);
        QList<ScheduleItem> schedules = generator.savedData(200, 0, 0).schedules;
        schedules[0].title = QStringLiteral("commas, semicolons; back\\slashes and 很长的标题").repeated(9);
        schedules[1].notes = QStringLiteral("two\nlines");
        const QByteArray text = calendarText(schedules, Instant{0});

        for (const QByteArray &line : text.split('\n'))
            QVERIFY2(line.size() <= 76, line.constData());
        const std::optional<QList<TextComponent>> read = readComponents(text);
        QVERIFY(read && read->size() == 1);
        const QList<TextComponent> &events = read->constFirst().components;
        QCOMPARE(events.size(), schedules.size());
        for (qsizetype row = 0; row < events.size(); ++row) {
            const ScheduleItem &schedule = schedules.at(row);
            QCOMPARE(events.at(row).property("UID")->value, uuidText(schedule.id).toLatin1());
            QCOMPARE(unescapedText(events.at(row).property("SUMMARY")->value), schedule.title);
            const TextProperty *notes = events.at(row).property("DESCRIPTION");
            QCOMPARE(notes ? unescapedText(notes->value) : QString(), schedule.notes);
        }
    }

    void timesAreInUtc_data()
    {
        QTest::addColumn<ScheduleItem>("schedule");
        QTest::addColumn<QByteArray>("lines");

        const Instant start = Instant::fromUnixSeconds(1'781'000'000);
        QTest::newRow("an end") << ScheduleItem{.date = start, .endDate = start.plus(60)}
                                << QByteArray("DTSTART:20260609T101320Z\r\nDTEND:20260609T101420Z\r\n");
        QTest::newRow("no end") << ScheduleItem{.date = start}
                                << QByteArray("DTSTART:20260609T101320Z\r\nDTEND:20260609T111320Z\r\n");
        QTest::newRow("an end before the start")
            << ScheduleItem{.date = start, .endDate = start.plus(-60)}
            << QByteArray("DTSTART:20260609T101320Z\r\nDTEND:20260609T101320Z\r\n");
        QTest::newRow("outside of the calendar") << ScheduleItem{.date = Instant{1e15}} << QByteArray();
    }

    void timesAreInUtc()
    {
        QFETCH(const ScheduleItem, schedule);
        QFETCH(const QByteArray, lines);
        const QByteArray text = calendarText({schedule}, Instant{0});
        QVERIFY2(text.contains(lines), text.constData());
        QCOMPARE(text.contains("BEGIN:VEVENT"), !lines.isEmpty());
    }
};

TESSALY_TEST_MAIN(ICalendarWriterTest)
#include "ICalendarWriterTest.moc"
