#include "model/WeekLayout.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>

#include <algorithm>
#include <limits>

using namespace tessaly;

namespace {

const UserCalendar calendar{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
const QDate day(2026, 9, 9);

Instant at(int minute)
{
    return calendar.startOfDay(day).plus(minute * 60);
}

/// Pairs of start and end as "9:30-10".
QList<DayEvent> events(const QString &text)
{
    const auto minute = [](QStringView clock) {
        const QList<QStringView> parts = clock.split(u':');
        return parts.at(0).toInt() * 60 + (parts.size() > 1 ? parts.at(1).toInt() : 0);
    };
    QList<DayEvent> result;
    const QStringList spans = text.split(u' ', Qt::SkipEmptyParts);
    for (const QString &span : spans) {
        const QList<QStringView> ends = QStringView(span).split(u'-');
        result.append({result.size(), at(minute(ends.at(0))), at(minute(ends.at(1)))});
    }
    return result;
}

} // namespace

class WeekLayoutTest : public QObject
{
    Q_OBJECT

private slots:
    void overlappingEventsShareTheDay_data()
    {
        QTest::addColumn<QString>("spans");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, const char *spans, const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(spans) << QString::fromLatin1(expected);
        };
        row("none", "", "");
        row("touching events are alone", "9-10 10-11", "0/1 0/1");
        row("a freed column is used again", "9-10 9:30-10:30 10-11", "0/2 1/2 0/2");
        row("the group ends at its latest end", "9-12 9:30-10 10-11 12-13", "0/2 1/2 1/2 0/1");
        row("the smallest free column", "8-12 8-9 8-10 9-10 10-11", "0/3 1/3 2/3 1/3 1/3");
        row("the same start", "9-10 9-10 9-10", "0/3 1/3 2/3");
        row("an end before the start", "9-8 9-10", "0/1 0/1");
        row("an end before the start inside a group", "9-11 9:30-9 9:30-10", "0/2 1/2 1/2");
    }

    void overlappingEventsShareTheDay()
    {
        QFETCH(const QString, spans);

        QStringList found;
        const QList<PositionedEvent> positioned = positionedEvents(events(spans));
        for (const PositionedEvent &event : positioned)
            found.append(QStringLiteral("%1/%2").arg(event.column).arg(event.columnCount));

        QTEST(found.join(u' '), "expected");
    }

    /// The rule itself, as simply as it can be said: the smallest column that no unended event of the group holds.
    void randomDaysAgreeWithTheSimpleRule()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 200; ++round) {
            QList<DayEvent> list;
            for (qsizetype row = 0; row < 40; ++row) {
                const int start = random.bounded(0, 600);
                list.append({row, at(start), at(start + random.bounded(-20, 90))});
            }
            std::ranges::stable_sort(list, {}, &DayEvent::start);
            const QList<PositionedEvent> positioned = positionedEvents(list);

            QCOMPARE(positioned.size(), list.size());
            qsizetype group = 0;
            Instant groupEnd = list.first().end;
            for (qsizetype index = 0; index < list.size(); ++index) {
                if (index > 0 && list.at(index).start >= groupEnd)
                    group = index;
                groupEnd = index == group ? list.at(index).end : std::max(groupEnd, list.at(index).end);
                QSet<int> used;
                for (qsizetype other = group; other < index; ++other) {
                    if (list.at(other).end > list.at(index).start)
                        used.insert(positioned.at(other).column);
                }
                int expected = 0;
                while (used.contains(expected))
                    ++expected;
                QCOMPARE(positioned.at(index).column, expected);
                QVERIFY(positioned.at(index).column < positioned.at(index).columnCount);
                QCOMPARE(positioned.at(index).columnCount, positioned.at(group).columnCount);
            }
        }
    }

    void hoursFitTheTimeline_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::addColumn<double>("hourHeight");
        QTest::addColumn<double>("totalHeight");

        QTest::newRow("the whole day") << 0 << 24 << 520.0 / 24 << 520.0;
        QTest::newRow("twelve hours") << 8 << 20 << 42.0 << 504.0;
        QTest::newRow("sixteen hours") << 6 << 22 << 32.5 << 520.0;
        QTest::newRow("more than a day") << 0 << 30 << 20.0 << 600.0;
        QTest::newRow("no hour") << 8 << 8 << 42.0 << 0.0;
        QTest::newRow("an end before the start") << 20 << 8 << 42.0 << 0.0;
    }

    void hoursFitTheTimeline()
    {
        QFETCH(const int, start);
        QFETCH(const int, end);
        QFETCH(const double, hourHeight);
        QFETCH(const double, totalHeight);

        QCOMPARE(weekMeasures(start, end), (WeekMeasures{start, hourHeight, totalHeight}));
    }

    void blocksCoverTheirTime_data()
    {
        QTest::addColumn<DayEvent>("event");
        QTest::addColumn<int>("firstHour");
        QTest::addColumn<int>("lastHour");
        QTest::addColumn<double>("y");
        QTest::addColumn<double>("height");

        QTest::newRow("an hour") << DayEvent{0, at(540), at(600)} << 8 << 20 << 42.0 << 42.0;
        QTest::newRow("five minutes count fifteen, and 22 points at least")
            << DayEvent{0, at(540), at(545)} << 8 << 20 << 42.0 << 22.0;
        QTest::newRow("to the next day: down to midnight")
            << DayEvent{0, at(1380), at(1500)} << 12 << 24 << 462.0 << 42.0;
        QTest::newRow("to an earlier day: down to midnight too")
            << DayEvent{0, at(1380), at(-60)} << 12 << 24 << 462.0 << 42.0;
        QTest::newRow("before the first hour it sticks to the top")
            << DayEvent{0, at(360), at(420)} << 8 << 20 << 0.0 << 42.0;
        QTest::newRow("past the last hour it stays whole")
            << DayEvent{0, at(1190), at(1250)} << 8 << 20 << 462.0 << 42.0;
        QTest::newRow("without hours it lies at the top") << DayEvent{0, at(600), at(660)} << 8 << 8 << 0.0 << 42.0;
        QTest::newRow("an end before the start on the same day")
            << DayEvent{0, at(600), at(540)} << 8 << 20 << 84.0 << 22.0;
    }

    void blocksCoverTheirTime()
    {
        QFETCH(const DayEvent, event);
        QFETCH(const int, firstHour);
        QFETCH(const int, lastHour);
        QFETCH(const double, y);
        QFETCH(const double, height);

        const QRectF frame =
            blockFrame(minuteSpan(day, event, calendar), {0, 0, 1}, weekMeasures(firstHour, lastHour), 106);

        QCOMPARE(frame.y(), y);
        QCOMPARE(frame.height(), height);
        QCOMPARE(frame.x(), 3.0);
        QCOMPARE(frame.width(), 97.0);
    }

    void subColumnsDivideTheDay()
    {
        const WeekMeasures measures = weekMeasures(8, 20);
        const QRectF second = blockFrame({540, 600}, {0, 1, 2}, measures, 106);
        QCOMPARE(second.x(), 53.0);
        QCOMPARE(second.width(), 47.0);
        QCOMPARE(blockFrame({540, 600}, {0, 9, 10}, measures, 106).width(), 20.0);
    }

    void schedulesOutsideTheShownHoursAreKnown_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::addColumn<HourSide>("side");
        QTest::addColumn<int>("shownMinutes");
        QTest::newRow("inside") << 540 << 600 << HourSide::Within << 60;
        QTest::newRow("until the first hour") << 420 << 480 << HourSide::Before << 0;
        QTest::newRow("into the first hour") << 420 << 490 << HourSide::Within << 10;
        QTest::newRow("no time at the first hour") << 480 << 480 << HourSide::Within << 0;
        QTest::newRow("until the last hour") << 1190 << 1200 << HourSide::Within << 10;
        QTest::newRow("from the last hour on") << 1200 << 1260 << HourSide::After << 0;
        QTest::newRow("all day") << 0 << 1440 << HourSide::Within << 720;
    }

    void schedulesOutsideTheShownHoursAreKnown()
    {
        QFETCH(const int, start);
        QFETCH(const int, end);
        const WeekMeasures measures = weekMeasures(8, 20);
        QTEST(sideOf({start, end}, measures), "side");
        const MinuteSpan part = shownPart({start, end}, measures);
        QTEST(part.end - part.start, "shownMinutes");
    }

    void emptyTimeIsTappedToTheMinute_data()
    {
        QTest::addColumn<double>("y");
        QTest::addColumn<int>("expected");

        QTest::newRow("the top") << 0.0 << 480;
        QTest::newRow("the minute under the pointer, cut off") << 42.0 + 42.0 / 60 * 17.9 << 557;
        QTest::newRow("far below") << 5000.0 << 1425;
        QTest::newRow("far above") << -5000.0 << 0;
        QTest::newRow("without limit") << std::numeric_limits<double>::max() << 1425;
    }

    void emptyTimeIsTappedToTheMinute()
    {
        QFETCH(const double, y);

        QTEST(tappedMinute(y, weekMeasures(8, 20)), "expected");
    }
};

TESSALY_TEST_MAIN(WeekLayoutTest)
#include "WeekLayoutTest.moc"
