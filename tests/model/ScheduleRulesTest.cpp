#include "model/ScheduleRules.h"
#include "tests/support/TestMain.h"

#include <algorithm>

using namespace tessaly;

namespace {

const UserCalendar monday{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
const UserCalendar sunday{QTimeZone("Europe/Vienna"), Qt::Sunday, QLocale::c()};

Instant at(QDate day, int hour, int minute = 0)
{
    return monday.instant(day, QTime(hour, minute));
}

} // namespace

class ScheduleRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void visibleDaysAreWholeWeeks_data()
    {
        QTest::addColumn<CalendarScope>("scope");
        QTest::addColumn<bool>("isSundayFirst");
        QTest::addColumn<QDate>("focus");
        QTest::addColumn<QDate>("first");
        QTest::addColumn<QDate>("last");

        const auto week = CalendarScope::Week;
        const auto month = CalendarScope::Month;
        QTest::newRow("week, Monday") << week << false << QDate(2026, 9, 9) << QDate(2026, 9, 7) << QDate(2026, 9, 13);
        QTest::newRow("week, Sunday") << week << true << QDate(2026, 9, 9) << QDate(2026, 9, 6) << QDate(2026, 9, 12);
        QTest::newRow("a month, Monday") << month << false << QDate(2026, 9, 30) << QDate(2026, 8, 31)
                                         << QDate(2026, 10, 11);
        QTest::newRow("a month, Sunday") << month << true << QDate(2026, 9, 1) << QDate(2026, 8, 30)
                                         << QDate(2026, 10, 10);
        QTest::newRow("four whole weeks still show six")
            << month << false << QDate(2027, 2, 14) << QDate(2027, 2, 1) << QDate(2027, 3, 14);
    }

    void visibleDaysAreWholeWeeks()
    {
        QFETCH(const CalendarScope, scope);
        QFETCH(const bool, isSundayFirst);
        QFETCH(const QDate, focus);
        QFETCH(const QDate, first);
        QFETCH(const QDate, last);

        const QList<QDate> days = visibleDays(scope, focus, isSundayFirst ? sunday : monday);

        QCOMPARE(days.size(), scope == CalendarScope::Week ? 7 : 42);
        QCOMPARE(days.first(), first);
        QCOMPARE(days.last(), last);
    }

    void weeksWithoutWeekendAreMondayToFriday_data()
    {
        QTest::addColumn<Qt::DayOfWeek>("firstWeekday");
        QTest::addColumn<QDate>("focus");
        QTest::addColumn<QDate>("first");

        const QDate before(2026, 9, 7);
        const QDate after(2026, 9, 14);
        QTest::newRow("Monday, a Wednesday") << Qt::Monday << QDate(2026, 9, 9) << before;
        QTest::newRow("Monday, a Sunday") << Qt::Monday << QDate(2026, 9, 13) << before;
        QTest::newRow("Sunday, a Sunday") << Qt::Sunday << QDate(2026, 9, 13) << after;
        QTest::newRow("Sunday, a Saturday") << Qt::Sunday << QDate(2026, 9, 12) << before;
        QTest::newRow("Saturday, a Saturday") << Qt::Saturday << QDate(2026, 9, 12) << after;
        QTest::newRow("Friday, a Friday") << Qt::Friday << QDate(2026, 9, 11) << before;
    }

    void weeksWithoutWeekendAreMondayToFriday()
    {
        QFETCH(const Qt::DayOfWeek, firstWeekday);
        QFETCH(const QDate, focus);
        const QList<QDate> days =
            visibleDays(CalendarScope::Week, focus, monday.withFirstWeekday(firstWeekday), {.hidesWeekend = true});
        QCOMPARE(days.size(), 5);
        QTEST(days.first(), "first");
    }

    void hiddenDaysAreSteppedOver()
    {
        const QDate friday(2026, 9, 11);
        QCOMPARE(shownDayOn(friday, 1, {}), QDate(2026, 9, 12));
        QCOMPARE(shownDayOn(friday, 1, {.hidesWeekend = true}), QDate(2026, 9, 14));
        QCOMPARE(shownDayOn(QDate(2026, 9, 14), -2, {.hidesWeekend = true}), QDate(2026, 9, 10));
    }

    void aWeekHasTheNumberOfItsThursday_data()
    {
        QTest::addColumn<QDate>("first");
        QTest::addColumn<int>("number");
        QTest::newRow("Monday") << QDate(2026, 11, 23) << 48;
        QTest::newRow("Sunday") << QDate(2026, 11, 22) << 48;
        QTest::newRow("the 53rd") << QDate(2026, 12, 28) << 53;
        QTest::newRow("of the year before") << QDate(2026, 12, 27) << 53;
        QTest::newRow("the first, in December") << QDate(2025, 12, 29) << 1;
    }

    void aWeekHasTheNumberOfItsThursday()
    {
        QFETCH(const QDate, first);
        QTEST(weekNumber(first), "number");
    }

    void aScheduleIsInViewUntilItsEnd_data()
    {
        QTest::addColumn<Instant>("start");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<bool>("expected");

        const double none = -1;
        const QDate first(2026, 9, 7);
        const QDate after(2026, 9, 14);
        QTest::newRow("inside") << at(first, 9) << 3600.0 << true;
        QTest::newRow("ends as the view begins") << at(first, 0).plus(-3600) << 3600.0 << true;
        QTest::newRow("ends before") << at(first, 0).plus(-3600) << 3599.0 << false;
        QTest::newRow("without an end it ends at its start") << at(first, 0).plus(-60) << none << false;
        QTest::newRow("starts as the view begins") << at(first, 0) << none << true;
        QTest::newRow("starts as the view ends") << at(after, 0) << 60.0 << false;
        QTest::newRow("spans the view") << at(first, 0).plus(-1e6) << 3e6 << true;
    }

    void aScheduleIsInViewUntilItsEnd()
    {
        QFETCH(const Instant, start);
        QFETCH(const double, seconds);
        ScheduleItem schedule;
        schedule.date = start;
        if (seconds >= 0)
            schedule.endDate = start.plus(seconds);

        const auto range = viewport(visibleDays(CalendarScope::Week, QDate(2026, 9, 9), monday), monday);

        QTEST(isInViewport(schedule, range.value()), "expected");
    }

    void onlySchedulesOfHiddenCalendarsAreHidden()
    {
        ScheduleItem schedule;
        QVERIFY(isDisplayed(schedule, {}));
        schedule.calendarIdentifier = QStringLiteral("work");
        QVERIFY(!isDisplayed(schedule, {QStringLiteral("home")}));
        QVERIFY(isDisplayed(schedule, {QStringLiteral("work")}));
    }

    void theFocusMovesByWeeksAndMonths()
    {
        QCOMPARE(movedFocus(at({2026, 1, 31}, 9), CalendarScope::Month, 1, monday), at({2026, 2, 28}, 9));
        QCOMPARE(movedFocus(at({2026, 3, 25}, 9), CalendarScope::Week, 1, monday), at({2026, 4, 1}, 9));
        QCOMPARE(movedFocus(at({2026, 1, 1}, 9), CalendarScope::Week, -1, monday), at({2025, 12, 25}, 9));
        const Instant last = at({9999, 12, 31}, 9);
        QCOMPARE(movedFocus(last, CalendarScope::Month, 1, monday), last);
    }

    void aWeekIsNamedByItsDays_data()
    {
        QTest::addColumn<QDate>("first");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("chinese");

        QTest::newRow("in a month") << QDate(2026, 11, 22) << QStringLiteral("Nov 22 – 28, 2026")
                                    << QStringLiteral("2026年11月22日 – 28日");
        QTest::newRow("across months") << QDate(2026, 11, 29) << QStringLiteral("Nov 29 – Dec 5, 2026")
                                       << QStringLiteral("2026年11月29日 – 12月5日");
        QTest::newRow("across years") << QDate(2026, 12, 28) << QStringLiteral("Dec 28, 2026 – Jan 3, 2027")
                                      << QStringLiteral("2026年12月28日 – 2027年1月3日");
    }

    void aWeekIsNamedByItsDays()
    {
        QFETCH(const QDate, first);
        QTEST(dayRangeText(first, first.addDays(6), true), "english");
        QTEST(dayRangeText(first, first.addDays(6), false), "chinese");
    }

    void titlesAndTimesAreWorded()
    {
        QCOMPARE(monthTitle({2026, 9, 9}, true), QStringLiteral("September 2026"));
        QCOMPARE(monthTitle({2026, 9, 9}, false), QStringLiteral("2026年9月"));
        const Instant start = at({2026, 9, 9}, 9, 5);
        QCOMPARE(timeRangeText(start, start.plus(5700), monday), QStringLiteral("09:05 – 10:40"));
        QCOMPARE(timeRangeText(start, std::nullopt, monday), QStringLiteral("09:05"));
    }

    void theFormMovesWithTheFocusDay_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<Instant>("start");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<Instant>("expectedStart");
        QTest::addColumn<double>("expectedSeconds");

        const QDate day(2026, 9, 11);
        QTest::newRow("seconds are dropped, the duration stays")
            << day << at({2026, 9, 9}, 9, 17).plus(42) << 7200.0 << at(day, 9, 17) << 7200.0;
        QTest::newRow("at least a quarter of an hour") << day << at({2026, 9, 9}, 9) << 60.0 << at(day, 9) << 900.0;
        QTest::newRow("an end before the start too") << day << at({2026, 9, 9}, 9) << -3600.0 << at(day, 9) << 900.0;
        QTest::newRow("a time that the day skips")
            << QDate(2026, 3, 29) << at({2026, 3, 28}, 2, 30) << 3600.0 << at({2026, 3, 29}, 3, 30) << 3600.0;
    }

    void theFormMovesWithTheFocusDay()
    {
        QFETCH(const QDate, day);
        QFETCH(const Instant, start);
        QFETCH(const double, seconds);
        QFETCH(const Instant, expectedStart);
        QFETCH(const double, expectedSeconds);

        const FormTimes moved = formMovedTo(day, {start, start.plus(seconds)}, monday);

        QCOMPARE(moved.start, expectedStart);
        QCOMPARE(moved.end, expectedStart.plus(expectedSeconds));
    }

    void tappedTimeKeepsTheDuration()
    {
        const Instant start = at({2026, 9, 9}, 9);

        const FormTimes tapped = formTappedAt({2026, 9, 12}, 1425, {start, start.plus(5400)}, monday);

        QCOMPARE(tapped.start, at({2026, 9, 12}, 23, 45));
        QCOMPARE(tapped.end, at({2026, 9, 13}, 1, 15));
    }

    void theChosenCalendarIsTheTargetElseTheFirst()
    {
        const QList<CalendarOption> choices = {{QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("A"), {}},
                                               {QStringLiteral("c"), QStringLiteral("C"), QStringLiteral("A"), {}}};

        QCOMPARE(targetCalendar(choices, {}), QStringLiteral("b"));
        QCOMPARE(targetCalendar(choices, QStringLiteral("c")), QStringLiteral("c"));
        QCOMPARE(targetCalendar(choices, QStringLiteral("gone")), QStringLiteral("b"));
        QVERIFY(!targetCalendar({}, QStringLiteral("c")));
    }

    void aNewScheduleComesFromTheForm()
    {
        const Instant start = at({2026, 9, 9}, 9);
        ScheduleForm form{
            QStringLiteral("  Lecture \n"), QString(), {start, start.plus(60)}, QStringLiteral("#2C66D8")};

        const std::optional<ScheduleItem> schedule = newSchedule(form);

        QVERIFY(schedule);
        QCOMPARE(schedule->title, QStringLiteral("Lecture"));
        QCOMPARE(schedule->endDate, start.plus(900));
        QVERIFY(!schedule->tag);
        QCOMPARE(schedule->tasks, QList<ScheduleTask>());
        QCOMPARE(schedule->customColorHex, QStringLiteral("#2C66D8"));
        QCOMPARE(schedule->calendarExportRequested, false);
        form.title = QStringLiteral(" \n\t");
        QVERIFY(!newSchedule(form));
    }
};

TESSALY_TEST_MAIN(ScheduleRulesTest)
#include "ScheduleRulesTest.moc"
