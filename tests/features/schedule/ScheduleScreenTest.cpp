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
        QCOMPARE(driver.screen->weekRange(), QStringLiteral("2026年9月7日 – 13日"));
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

    void whatUndoBringsBackIsPointedOut()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 40});
        driver.has(lunch, wednesday, {12, 0}, {13, 0});
        driver.has(seminar, thursday, {9, 0}, {10, 0});
        driver.opensScreen();
        const QSignalSpy blocks(driver.screen.get(), &ScheduleViewModel::blockRestored);
        const QSignalSpy listed(driver.screen.get(), &ScheduleViewModel::listedRestored);

        driver.screen->deleteListed(1);
        QVERIFY(blocks.isEmpty());
        driver.screen->store()->undo();

        QCOMPARE(driver.listed(), (QStringList{lecture, lunch}));
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.constFirst().constFirst().toInt(), 1);
        QCOMPARE(blocks.size(), 1);
        QCOMPARE(driver.screen->blocks()->rows().at(blocks.constFirst().constFirst().toInt()).title, lunch);
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
        QCOMPARE(driver.monthLines(), (QStringList{QStringLiteral("10.0 at 8"), QStringLiteral("10.1 at 9"),
                                                   QStringLiteral("10.2 还有 3 项")}));
        QCOMPARE(driver.screen->dayList()->rowCount(), 5);
    }

    void theCurrentTimeMovesWithTheMinute()
    {
        ScheduleDriver driver;
        driver.store->setDisplayEndHour(12);
        driver.store->setDisplayStartHour(9);
        driver.opensScreen();
        const CurrentTime &line = *driver.screen->currentTime();
        const double perMinute = driver.screen->hourHeight() / 60;
        const auto shown = [&] {
            return QStringLiteral("%1 %2 %3").arg(line.place()).arg(line.y() / perMinute).arg(line.text());
        };
        QCOMPARE(shown(), QStringLiteral("2 80 10:20"));
        driver.clock.advance(29);
        QCOMPARE(shown(), QStringLiteral("2 80 10:20"));
        driver.clock.advance(1);
        QCOMPARE(shown(), QStringLiteral("2 81 10:21"));

        driver.screen->showNext();
        QCOMPARE(line.place(), -1);
        driver.clock.advance(300);
        driver.screen->showPrevious();
        QCOMPARE(shown(), QStringLiteral("2 86 10:26"));

        // Outside the shown hours nothing wakes up until the first of them.
        driver.clock.advance(5640);
        QCOMPARE(line.place(), -1);
        const qsizetype alarms = driver.clock.pendingAlarms();
        driver.clock.advance(12 * 3600);
        QCOMPARE(line.place(), -1);
        QCOMPARE(driver.clock.pendingAlarms(), alarms + 1);
        driver.clock.advance(9 * 3600);
        QCOMPARE(shown(), QStringLiteral("3 0 09:00"));
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
        QCOMPARE(driver.screen->blocks()->rows().first().explanation, QStringLiteral("Lecture\n06:30 – 06:45"));
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
        QCOMPARE(driver.screen->blocks()->rows().first().frame.y(), 42);
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

    void ofALongDayOnlyRowsAroundTheViewAreMade_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<ListWindow>("window");
        QTest::addColumn<QString>("places");
        QTest::newRow("an empty day") << 0 << ListWindow{0, 9, 3} << QString();
        QTest::newRow("an ordinary day") << 12 << ListWindow{0, 3} << QStringLiteral("0-11");
        QTest::newRow("an ordinary day below the view") << 12 << ListWindow{-40, -20} << QStringLiteral("0-11");
        QTest::newRow("the beginning") << 1000 << ListWindow{-3, 9} << QStringLiteral("0-23 999-999");
        QTest::newRow("the middle") << 1000 << ListWindow{500, 517} << QStringLiteral("0-0 488-527 999-999");
        QTest::newRow("the end") << 1000 << ListWindow{982, 999} << QStringLiteral("0-0 968-999");
        QTest::newRow("the focus elsewhere") << 1000 << ListWindow{0, 9, 700} << QStringLiteral("0-23 699-701 999-999");
        QTest::newRow("the focus at an edge") << 1000 << ListWindow{0, 9, 23} << QStringLiteral("0-24 999-999");
        QTest::newRow("a view that was further down") << 20 << ListWindow{500, 517, 700} << QStringLiteral("0-0 4-19");
    }

    void ofALongDayOnlyRowsAroundTheViewAreMade()
    {
        QFETCH(const int, count);
        QFETCH(const ListWindow, window);
        const QList<int> places = window.places(count);
        QStringList runs;
        for (qsizetype begin = 0, end = 0; begin < places.size(); begin = end) {
            for (end = begin + 1; end < places.size() && places.at(end) == places.at(end - 1) + 1;)
                ++end;
            runs.append(QStringLiteral("%1-%2").arg(places.at(begin)).arg(places.at(end - 1)));
        }
        QTEST(runs.join(u' '), "places");
    }

    void theKeptRowOfALongDayStaysWhereverTheViewIs()
    {
        ScheduleDriver driver;
        for (int count = 0; count < 120; ++count)
            driver.has(QStringLiteral("s%1").arg(count), wednesday, QTime(8, 0).addSecs(60 * count), {22, 0});
        driver.opensScreen();
        QCOMPARE(driver.screen->listedCount(), 120);
        QVERIFY(driver.screen->dayList()->rowCount() < 30);

        const int row = driver.screen->keepListed(60);
        QCOMPARE(driver.listed().at(row), QStringLiteral("s60"));
        driver.screen->showListed(90, 100);
        QCOMPARE(driver.listed().first(), QStringLiteral("s0"));
        QVERIFY(driver.listed().contains(QStringLiteral("s61")));
        QVERIFY(!driver.listed().contains(QStringLiteral("s30")));

        driver.screen->deleteListed(static_cast<int>(driver.listed().indexOf(QStringLiteral("s60"))));
        QCOMPARE(driver.screen->departedPlace(), 60);
        QCOMPARE(driver.listed().at(driver.screen->keepListed(60)), QStringLiteral("s61"));
    }

    void aTurnKeepsTheDelegates()
    {
        ScheduleDriver driver;
        const auto fillWeek = [&](QDate monday, int count) {
            for (int index = 0; index < count; ++index)
                driver.has(QStringLiteral("s%1").arg(index), monday, {8, 0}, {9, 0});
        };
        fillWeek({2026, 9, 7}, 6);
        fillWeek({2026, 9, 14}, 4);
        fillWeek({2026, 9, 21}, 9);
        driver.opensScreen();
        QSignalSpy removed(driver.screen->blocks(), &QAbstractItemModel::rowsRemoved);
        QSignalSpy inserted(driver.screen->blocks(), &QAbstractItemModel::rowsInserted);

        driver.screen->showNext();
        QCOMPARE(driver.blocks().size(), 4);
        QCOMPARE(driver.screen->blocks()->rowCount(), 6);
        QCOMPARE(removed.count() + inserted.count(), 0);
        const QAbstractItemModel &blocks = *driver.screen->blocks();
        const int frame = blocks.roleNames().key("frame");
        QVERIFY(!blocks.index(3, 0).data(frame).toRectF().isEmpty());
        QVERIFY(blocks.index(4, 0).data(frame).toRectF().isEmpty());

        driver.screen->showNext();
        QCOMPARE(driver.blocks().size(), 9);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(inserted.first().at(1).toInt(), 6);
        QCOMPARE(driver.screen->blocks()->rowCount(), 9);
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
