#include "model/WeekDrag.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>

using namespace tessaly;

namespace {

const UserCalendar calendar{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};

/// "25 13:30" of September 2026; "M25" and "O25" of March and October, when the clocks change on the 29th and the 25th.
WeekPoint point(const QString &text)
{
    const QChar month = text.at(0);
    const QStringList parts = text.sliced(month.isLetter() ? 1 : 0).split(u' ');
    const QTime time = QTime::fromString(parts.at(1), QStringLiteral("H:mm"));
    const int number = month == u'M' ? 3 : month == u'O' ? 10 : 9;
    return {{2026, number, parts.at(0).toInt()}, static_cast<double>(QTime(0, 0).secsTo(time)) / 60};
}

Instant instant(const QString &text)
{
    const WeekPoint place = point(text);
    return calendar.instant(place.day, QTime(0, 0).addSecs(static_cast<int>(place.minute) * 60));
}

QString worded(const FormTimes &times)
{
    const auto text = [](Instant each) { return calendar.dateTime(each).toString(QStringLiteral("d H:mm")); };
    return text(times.start) + QStringLiteral(" - ") + text(times.end);
}

} // namespace

class WeekDragTest : public QObject
{
    Q_OBJECT

private slots:
    void dragsLeadToTimes_data()
    {
        QTest::addColumn<WeekDragKind>("kind");
        QTest::addColumn<QString>("times");
        QTest::addColumn<QString>("pointer");
        QTest::addColumn<int>("step");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, WeekDragKind kind, const char *times, const char *pointer,
                            const char *expected, int step = dragStepMinutes) {
            QTest::newRow(name) << kind << QString::fromLatin1(times) << QString::fromLatin1(pointer) << step
                                << QString::fromLatin1(expected);
        };
        using enum WeekDragKind;
        row("down, in steps", Move, "9 13:00|9 15:00", "9 13:30>9 13:47", "9 13:15 - 9 15:15");
        row("up", Move, "9 13:00|9 15:00", "9 14:00>9 13:01", "9 12:00 - 9 14:00");
        row("finer", Move, "9 13:00|9 15:00", "9 13:30>9 13:36", "9 13:05 - 9 15:05", fineDragStepMinutes);
        row("less than half a step", Move, "9 13:07|9 14:00", "9 13:30>9 13:37", "9 13:07 - 9 14:00");
        row("to another day the minute stays", Move, "9 13:07|9 14:00", "9 13:30>11 13:32", "11 13:07 - 11 14:00");
        row("an odd minute falls into step", Move, "9 13:07|9 14:00", "9 13:30>8 13:45", "8 13:15 - 8 14:08");
        row("not above the first hour", Move, "9 9:00|9 10:00", "9 9:50>9 8:10", "9 8:00 - 9 9:00");
        row("not below the last", Move, "9 18:00|9 19:00", "9 18:00>9 23:00", "9 19:45 - 9 20:45");
        row("from outside the shown hours", Move, "9 5:00|9 6:00", "9 8:10>9 9:10", "9 9:00 - 9 10:00");
        row("over midnight the length stays", Move, "9 19:00|10 2:00", "9 19:30>7 18:30", "7 18:00 - 8 1:00");

        row("the end", ResizeEnd, "9 17:00|9 18:00", "9 18:00>9 18:46", "9 17:00 - 9 18:45");
        row("the end not before the start", ResizeEnd, "9 17:00|9 18:00", "9 18:00>9 12:00", "9 17:00 - 9 17:15");
        row("the end of one over midnight", ResizeEnd, "9 17:00|10 2:00", "9 20:00>9 19:00", "9 17:00 - 9 19:00");
        row("the end left alone", ResizeEnd, "9 17:00|9 18:10", "9 18:10>11 18:12", "9 17:00 - 9 18:10");
        row("the start", ResizeStart, "9 17:00|9 18:00", "9 17:00>9 15:58", "9 16:00 - 9 18:00");
        row("the start not after the end", ResizeStart, "9 17:00|9 18:00", "9 17:00>9 20:00", "9 17:45 - 9 18:00");

        row("a span", Select, "", "9 13:37>9 14:52", "9 13:30 - 9 15:00");
        row("a span upwards", Select, "", "9 14:52>11 13:37", "9 13:30 - 9 15:00");
        row("a fine span", Select, "", "9 13:37>9 14:52", "9 13:35 - 9 14:50", fineDragStepMinutes);
        row("aimed at the lines", Select, "", "9 12:55>9 14:05", "9 13:00 - 9 14:00");
        row("at least a quarter of an hour", Select, "", "9 13:01>9 13:02", "9 13:00 - 9 13:15", fineDragStepMinutes);
        row("a span at the lower end", Select, "", "9 19:58>9 23:00", "9 19:45 - 9 20:00");

        row("into the skipped hour", Move, "M28 9:00|M28 11:00", "M28 9:00>M29 2:31", "29 3:30 - 29 5:30");
        row("onto the day of the skipped hour", Move, "M28 2:20|M28 3:20", "M28 2:30>M29 2:31", "29 3:20 - 29 4:20");
        row("over the repeated hour", Move, "O24 1:00|O24 5:00", "O24 2:00>O25 2:00", "25 1:00 - 25 4:00");
        row("an end in the skipped hour", ResizeEnd, "M29 1:00|M29 5:00", "M29 5:00>M29 2:30", "29 1:00 - 29 3:30");
    }

    void dragsLeadToTimes()
    {
        QFETCH(const WeekDragKind, kind);
        QFETCH(const QString, times);
        QFETCH(const QString, pointer);
        QFETCH(const int, step);

        WeekDrag drag{.kind = kind, .pressed = point(pointer.section(u'>', 0, 0))};
        if (!times.isEmpty())
            drag.times = {instant(times.section(u'|', 0, 0)), instant(times.section(u'|', 1))};
        if (drag.pressed.day.month() == 9) {
            drag.firstMinute = 8 * 60;
            drag.lastMinute = 20 * 60;
        }
        QTEST(worded(draggedTimes(drag, point(pointer.section(u'>', 1)), step, calendar)), "expected");
    }

    void wholeDaysStayWhole_data()
    {
        QTest::addColumn<WeekDragKind>("kind");
        QTest::addColumn<QString>("times");
        QTest::addColumn<int>("days");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, WeekDragKind kind, const char *times, int days, const char *expected) {
            QTest::newRow(name) << kind << QString::fromLatin1(times) << days << QString::fromLatin1(expected);
        };
        using enum WeekDragKind;
        row("over two days", Move, "9 0:00|11 0:00", 2, "11 0:00 - 13 0:00");
        row("onto the short day", Move, "M28 0:00|M29 0:00", 1, "29 0:00 - 30 0:00");
        row("off the long day", Move, "O25 0:00|O26 0:00", -1, "24 0:00 - 25 0:00");
        row("with times, the length stays", Move, "M26 9:00|M28 9:00", 2, "28 9:00 - 30 10:00");
        row("the end", ResizeEnd, "9 0:00|11 0:00", 3, "9 0:00 - 14 0:00");
        row("the end as far as a day is left", ResizeEnd, "9 0:00|12 0:00", -5, "9 0:00 - 10 0:00");
        row("the end with times", ResizeEnd, "9 9:00|11 17:00", -2, "9 9:00 - 10 17:00");
        row("the start", ResizeStart, "9 0:00|11 0:00", -1, "8 0:00 - 11 0:00");
        row("the start as far as a day is left", ResizeStart, "9 9:00|11 17:00", 6, "10 9:00 - 11 17:00");
    }

    void wholeDaysStayWhole()
    {
        QFETCH(const WeekDragKind, kind);
        QFETCH(const QString, times);
        QFETCH(const int, days);
        const FormTimes former{instant(times.section(u'|', 0, 0)), instant(times.section(u'|', 1))};
        QTEST(worded(draggedDays(kind, former, days, calendar)), "expected");
    }

    void anyDragKeepsTheRules()
    {
        QRandomGenerator random(11);
        for (int round = 0; round < 20000; ++round) {
            const QDate day = QDate(2026, random.bounded(2) ? 3 : 10, 23).addDays(random.bounded(7));
            const Instant start = calendar.startOfDay(day).plus(random.bounded(86399));
            const WeekDrag drag{.kind = static_cast<WeekDragKind>(random.bounded(4)),
                                .pressed = {calendar.day(start), random.bounded(1440.0)},
                                .times = {start, start.plus(900 + random.bounded(90000))},
                                .firstMinute = random.bounded(12) * 60,
                                .lastMinute = (13 + random.bounded(12)) * 60};
            const WeekPoint pointer{day.addDays(random.bounded(-3, 4)), random.bounded(2100.0) - 300};
            const int step = random.bounded(2) ? dragStepMinutes : fineDragStepMinutes;
            const FormTimes times = draggedTimes(drag, pointer, step, calendar);

            QVERIFY(times.end.seconds - times.start.seconds >= leastScheduleSeconds);
            const double length = drag.times.end.seconds - drag.times.start.seconds;
            if (drag.kind == WeekDragKind::Move)
                QCOMPARE(times.end.seconds - times.start.seconds, length);
            if (drag.kind == WeekDragKind::ResizeStart)
                QCOMPARE(times.end, drag.times.end);
            if (drag.kind == WeekDragKind::ResizeEnd)
                QCOMPARE(times.start, drag.times.start);
        }
    }

    void lengthsAreWorded()
    {
        const auto inBoth = [](int minutes) {
            const FormTimes times{{}, Instant().plus(minutes * 60)};
            return lengthText(times, true) + u'|' + lengthText(times, false);
        };
        QCOMPARE(inBoth(90), QStringLiteral("1 h 30 min|1 小时 30 分"));
        QCOMPARE(inBoth(120), QStringLiteral("2 h|2 小时"));
        QCOMPARE(inBoth(15), QStringLiteral("15 min|15 分"));
    }

    void keysMoveInRealTime()
    {
        const FormTimes times{instant(QStringLiteral("M28 2:20")), instant(QStringLiteral("M28 3:20"))};
        QCOMPARE(worded(movedTimes(times, 1, 0, calendar)), QStringLiteral("29 3:20 - 29 4:20"));
        const FormTimes before{instant(QStringLiteral("M29 1:45")), instant(QStringLiteral("M29 3:45"))};
        const FormTimes after = movedTimes(before, 0, dragStepMinutes, calendar);
        QCOMPARE(worded(after), QStringLiteral("29 3:00 - 29 4:00"));
        QCOMPARE(movedTimes(after, 0, -dragStepMinutes, calendar), before);
    }
};

TESSALY_TEST_MAIN(WeekDragTest)
#include "WeekDragTest.moc"
