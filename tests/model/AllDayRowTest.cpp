#include "model/AllDayRow.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>

using namespace tessaly;

namespace {

const UserCalendar calendar{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
/// Monday, October 19, to Sunday, October 25, 2026, the day on which clocks go back.
const QDate monday(2026, 10, 19);

/// "1 09:00" is Tuesday at nine; -1 is the Sunday before.
Instant at(const QString &text)
{
    const QStringList parts = text.split(u' ');
    return calendar.instant(monday.addDays(parts.at(0).toInt()),
                            QTime::fromString(parts.at(1), QStringLiteral("HH:mm")));
}

DayEvent between(const QString &start, const QString &end)
{
    return {0, at(start), at(end)};
}

QList<QDate> days(int count)
{
    QList<QDate> result;
    for (int index = 0; index < count; ++index)
        result.append(monday.addDays(index));
    return result;
}

} // namespace

class AllDayRowTest : public QObject
{
    Q_OBJECT

private slots:
    void wholeDaysAndLongSchedulesBelongAboveTheHours_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<bool>("expected");
        QTest::addColumn<int>("dayCount");
        const auto row = [](const char *name, const char *start, const char *end, bool expected, int dayCount) {
            QTest::newRow(name) << QString::fromLatin1(start) << QString::fromLatin1(end) << expected << dayCount;
        };
        row("a lecture", "0 09:00", "0 10:00", false, 1);
        row("a day", "0 00:00", "1 00:00", true, 1);
        row("a day that ends a minute early", "0 00:00", "0 23:59", true, 1);
        row("until eleven", "0 00:00", "0 23:00", false, 1);
        row("over midnight", "0 22:00", "1 02:00", false, 2);
        row("until midnight", "0 22:00", "1 00:00", false, 1);
        row("a day and a night", "0 12:00", "1 12:00", true, 2);
        row("nearly a day and a night", "0 12:00", "1 11:00", false, 2);
        row("a day between two others", "0 18:00", "2 06:00", true, 3);
        row("three days", "0 00:00", "3 00:00", true, 3);
        row("the long day of the clock change", "6 00:00", "7 00:00", true, 1);
        row("no time at all", "0 09:00", "0 09:00", false, 1);
        row("an end before the start", "0 09:00", "0 08:00", false, 1);
    }

    void wholeDaysAndLongSchedulesBelongAboveTheHours()
    {
        QFETCH(const QString, start);
        QFETCH(const QString, end);
        const DayEvent tried = between(start, end);
        QTEST(isAllDay(tried, calendar), "expected");
        const auto [first, last] = daysOf(tried, calendar);
        QTEST(static_cast<int>(first.daysTo(last)) + 1, "dayCount");
    }

    void theShortDayOfTheClockChangeIsAWholeDay()
    {
        const QDate day(2026, 3, 29);
        QVERIFY(isAllDay({0, calendar.startOfDay(day), calendar.startOfDay(day.addDays(1))}, calendar));
    }

    void schedulesShareLines_data()
    {
        QTest::addColumn<QString>("events");
        QTest::addColumn<int>("dayCount");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("rests");
        QTest::addColumn<int>("height");
        const auto row = [](const char *name, const char *events, int dayCount, const char *expected, const char *rests,
                            int height) {
            QTest::newRow(name) << QString::fromLatin1(events) << dayCount << QString::fromLatin1(expected)
                                << QString::fromLatin1(rests) << height;
        };
        // First and last day; then first and last place, line, < and > where they go on.
        row("none", "", 7, "", "0000000", 0);
        row("one", "1-2", 7, "1-2/0", "0000000", 27);
        row("side by side", "0-1 2-3", 7, "0-1/0 2-3/0", "0000000", 27);
        row("the longer first", "1-1 1-3", 7, "1-3/0 1-1/1", "0000000", 49);
        row("a free line is used again", "0-2 1-1 2-4 3-3", 7, "0-2/0 1-1/1 2-4/1 3-3/0", "0000000", 49);
        row("what has no line is counted on each of its days", "0-3 0-3 1-2 1-2 2-2", 7, "0-3/0 0-3/1 1-2/2", "0120000",
            89);
        row("beyond both ends", "-3-9", 7, "0-6/0<>", "0000000", 27);
        row("over a hidden weekend", "4-6 5-5", 5, "4-4/0>", "00000", 27);
        row("another week", "-3--1 7-9", 7, "", "0000000", 0);
    }

    void schedulesShareLines()
    {
        QFETCH(const QString, events);
        QFETCH(const int, dayCount);
        static const QRegularExpression span(QStringLiteral("^(-?\\d+)-(-?\\d+)$"));
        QList<DayEvent> list;
        for (const QString &each : events.split(u' ', Qt::SkipEmptyParts)) {
            const QRegularExpressionMatch match = span.match(each);
            list.append({list.size(), calendar.startOfDay(monday.addDays(match.captured(1).toInt())),
                         calendar.startOfDay(monday.addDays(match.captured(2).toInt() + 1))});
        }
        const AllDayRow laid = allDayRow(list, days(dayCount), calendar);
        QStringList spans;
        for (const AllDaySpan &each : laid.spans)
            spans.append(QStringLiteral("%1-%2/%3").arg(each.first).arg(each.last).arg(each.line) +
                         (each.beginsEarlier ? QStringLiteral("<") : QString()) +
                         (each.endsLater ? QStringLiteral(">") : QString()));
        QTEST(spans.join(u' '), "expected");
        QString rests;
        for (const int count : laid.restCounts)
            rests += QString::number(count);
        QTEST(rests, "rests");
        QTEST(allDayHeight(laid), "height");
    }
};

TESSALY_TEST_MAIN(AllDayRowTest)
#include "AllDayRowTest.moc"
