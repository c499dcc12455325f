#include "tests/features/schedule/ScheduleDriver.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

namespace {

const QDate wednesday(2026, 9, 9);
const QDate thursday(2026, 9, 10);
const QString lecture = QStringLiteral("Lecture");
const QString seminar = QStringLiteral("Seminar");
const QString lunch = QStringLiteral("Lunch");

} // namespace

class ScheduleScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void theWeekOfTodayOpens()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 40});
        driver.has(seminar, {2026, 9, 14}, {9, 0}, {10, 0});
        driver.opensScreen();

        QCOMPARE(driver.screen->headerTitle(), QStringLiteral("本周"));
        QCOMPARE(driver.screen->dayListTitle(), QStringLiteral("2026年9月9日 的安排"));
        QCOMPARE(driver.blocks(), QStringList{QStringLiteral("2 Lecture")});
        QCOMPARE(driver.listed(), QStringList{lecture});
        QCOMPARE(driver.todayPlace(), 2);
        QCOMPARE(driver.screen->focusedPlace(), 2);
    }

    void theLanguageReachesEveryText()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 40}, QStringLiteral("Course"));
        driver.opensScreen();
        QCOMPARE(driver.screen->blocks()->rows().first().spokenName,
                 QStringLiteral("2026年9月9日 星期三, Lecture, 09:00 – 10:40, Course"));

        driver.inEnglish();

        QCOMPARE(driver.screen->headerTitle(), QStringLiteral("This week"));
        QCOMPARE(driver.screen->dayListTitle(), QStringLiteral("Sep 9, 2026 schedule"));
        const DayRow &day = driver.screen->days()->rows().at(2);
        QCOMPARE(day.weekday, QStringLiteral("Wed"));
        QCOMPARE(day.spokenName, QStringLiteral("Wednesday, September 9, 2026, 1 schedule"));
        QCOMPARE(driver.screen->blocks()->rows().first().spokenName,
                 QStringLiteral("Wednesday, September 9, 2026, Lecture, 09:00 – 10:40, Course"));
        driver.screen->setScope(ScheduleViewModel::Scope::Month);
        QCOMPARE(driver.screen->headerTitle(), QStringLiteral("September 2026"));
    }

    void theMonthShowsTwoSchedulesOfADay()
    {
        ScheduleDriver driver(Qt::Sunday);
        for (const int hour : {12, 9, 15, 9, 8})
            driver.has(QStringLiteral("at %1").arg(hour), wednesday, {hour, 0}, {hour, 30});
        driver.opensScreen();
        driver.screen->setScope(ScheduleViewModel::Scope::Month);

        QCOMPARE(driver.screen->days()->rowCount(), 42);
        QCOMPARE(driver.screen->days()->rows().first().day, QDate(2026, 8, 30));
        QVERIFY(driver.screen->days()->rows().first().isOutside);
        QCOMPARE(driver.monthLines(), (QStringList{QStringLiteral("10.0 at 8"), QStringLiteral("10.1 at 9")}));
        QCOMPARE(driver.screen->dayList()->rowCount(), 5);
    }

    void todayMovesByItself()
    {
        ScheduleDriver driver;
        driver.opensScreen();

        driver.clock.advance(49170);

        QCOMPARE(driver.todayPlace(), 3);
        QCOMPARE(driver.focusDay(), wednesday);
    }

    void theScreenFollowsTheUserToAnotherTimeZone()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {23, 30}, {23, 45});
        driver.opensScreen();
        driver.clock.setNow(driver.at(wednesday, {20, 0}));
        QCOMPARE(driver.blocks(), QStringList{QStringLiteral("2 Lecture")});
        QCOMPARE(driver.todayPlace(), 2);

        driver.clock.setZone(QTimeZone("Asia/Tokyo"));

        QCOMPARE(driver.blocks(), QStringList{QStringLiteral("3 Lecture")});
        QCOMPARE(driver.screen->blocks()->rows().first().startText, QStringLiteral("06:30"));
        QCOMPARE(driver.todayPlace(), 3);
        QCOMPARE(driver.screen->form()->start().time(), QTime(17, 20, 30));
    }

    void hiddenCalendarsAreShownNowhere()
    {
        ScheduleDriver driver;
        driver.hasOfCalendar(QStringLiteral("work"), lecture, wednesday, {9, 0});
        driver.hasOfCalendar(QStringLiteral("home"), seminar, wednesday, {9, 0});
        driver.has(lunch, wednesday, {12, 0}, {13, 0});
        driver.store->setVisibleCalendarIDs({QStringLiteral("home")});
        driver.opensScreen();
        QCOMPARE(driver.listed(), (QStringList{seminar, lunch}));
        QCOMPARE(driver.blocks(), (QStringList{QStringLiteral("2 Seminar"), QStringLiteral("2 Lunch")}));

        driver.store->setVisibleCalendarIDs({QStringLiteral("work")});

        QCOMPARE(driver.listed(), (QStringList{lecture, lunch}));
        driver.screen->setScope(ScheduleViewModel::Scope::Month);
        QCOMPARE(driver.monthLines(), (QStringList{QStringLiteral("9.0 Lecture"), QStringLiteral("9.1 Lunch")}));
    }

    void displayHoursMoveTheBlocks()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();

        driver.store->setDisplayStartHour(8);
        driver.store->setDisplayEndHour(20);

        QCOMPARE(driver.screen->hourCount(), 12);
        QCOMPARE(driver.screen->totalHeight(), 504.0);
        QCOMPARE(driver.screen->blocks()->rows().first().y, 42.0);
    }

    void choosingABlockOpensItsNote()
    {
        ScheduleDriver driver;
        driver.has(lecture, thursday, {9, 0}, {10, 0});
        driver.opensScreen();

        driver.screen->selectBlock(0);

        QCOMPARE(driver.screen->focusDate(), driver.at(thursday, {9, 0}));
        QVERIFY(driver.screen->blocks()->rows().first().isSelected);
        QVERIFY(driver.screen->sheets()->isNoteOpen());
        QVERIFY(!driver.screen->sheets()->note()->isEditing());
        QCOMPARE(driver.screen->sheets()->note()->heading(), lecture);
        driver.screen->sheets()->note()->close();
        QVERIFY(!driver.screen->sheets()->isNoteOpen());
        QVERIFY(driver.screen->blocks()->rows().first().isSelected);
    }

    void choosingEmptyTimeSetsTheForm()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();
        driver.store->setDisplayStartHour(8);
        driver.store->setDisplayEndHour(20);
        driver.screen->selectBlock(0);

        driver.screen->tapTime(4, 42.0 * 2 + 42.0 / 60 * 17 + 0.1);

        QVERIFY(!driver.screen->sheets()->isNoteOpen());
        QVERIFY(!driver.screen->blocks()->rows().first().isSelected);
        QCOMPARE(driver.focusDay(), QDate(2026, 9, 11));
        QCOMPARE(driver.screen->form()->times().start, driver.at({2026, 9, 11}, {10, 17}));
        QCOMPARE(driver.screen->form()->times().end, driver.at({2026, 9, 11}, {11, 17}));
    }

    void theListEditsAndDeletes()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.has(seminar, wednesday, {8, 0}, {9, 0});
        driver.opensScreen();
        QCOMPARE(driver.listed(), (QStringList{seminar, lecture}));

        driver.screen->editListed(1);
        QVERIFY(driver.screen->sheets()->note()->isEditing());
        QCOMPARE(driver.screen->sheets()->note()->title(), lecture);

        driver.screen->deleteListed(1);
        QCOMPARE(driver.listed(), QStringList{seminar});
        driver.screen->sheets()->note()->save();
        QCOMPARE(driver.listed(), QStringList{seminar});
    }

    void oneChangedScheduleChangesOneRow()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0});
        ScheduleItem changed = driver.has(seminar, wednesday, {11, 0}, {12, 0});
        driver.has(lunch, wednesday, {13, 0}, {14, 0});
        driver.opensScreen();
        QSignalSpy data(driver.screen->blocks(), &QAbstractItemModel::dataChanged);
        QSignalSpy moved(driver.screen->blocks(), &QAbstractItemModel::rowsMoved);
        QSignalSpy removed(driver.screen->blocks(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserted(driver.screen->blocks(), &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(driver.screen->blocks(), &QAbstractItemModel::modelReset);

        changed.title = QStringLiteral("Renamed");
        driver.store->updateSchedule(changed);
        QCOMPARE(data.count(), 1);
        QCOMPARE(data.first().first().toModelIndex().row(), 1);

        changed.date = driver.at(wednesday, {8, 0});
        changed.endDate = driver.at(wednesday, {8, 30});
        driver.store->updateSchedule(changed);
        QCOMPARE(moved.count(), 1);
        QCOMPARE(driver.blocks().first(), QStringLiteral("2 Renamed"));
        QCOMPARE(removed.count() + inserted.count() + reset.count(), 0);

        driver.store->deleteSchedule(changed);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(driver.blocks(), (QStringList{QStringLiteral("2 Lecture"), QStringLiteral("2 Lunch")}));
    }

    void arrowsWalkThroughTheBlocks()
    {
        ScheduleDriver driver;
        driver.has(QStringLiteral("a"), {2026, 9, 7}, {9, 0}, {10, 0});
        driver.has(QStringLiteral("b"), {2026, 9, 7}, {15, 0}, {16, 0});
        driver.has(QStringLiteral("c"), wednesday, {8, 0}, {9, 0});
        driver.has(QStringLiteral("d"), wednesday, {14, 0}, {15, 0});
        driver.opensScreen();
        const auto walk = [&](int row, int dayStep, int timeStep) {
            return driver.screen->neighbourBlock(row, dayStep, timeStep);
        };

        QCOMPARE(walk(0, 0, 1), 1);
        QCOMPARE(walk(1, 0, 1), 1);
        QCOMPARE(walk(0, 0, -1), 0);
        QCOMPARE(walk(0, 1, 0), 2);
        QCOMPARE(walk(1, 1, 0), 3);
        QCOMPARE(walk(3, -1, 0), 1);
        QCOMPARE(walk(2, 1, 0), 2);
    }
};

TESSALY_TEST_MAIN(ScheduleScreenTest)
#include "ScheduleScreenTest.moc"
