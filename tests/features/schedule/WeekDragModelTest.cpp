#include "store/PreferenceKeys.h"
#include "tests/features/schedule/ScheduleDriver.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace tessaly;

namespace {

const QDate wednesday(2026, 9, 9);
const QString lecture = QStringLiteral("Lecture");

/// A week from 8 to 20 with columns of 100 points.
class DragDriver : public ScheduleDriver
{
public:
    DragDriver()
    {
        inEnglish();
        store->setDisplayEndHour(20);
        store->setDisplayStartHour(8);
        opensScreen();
    }

    /// The point of the time on the day, in the middle of its column.
    [[nodiscard]] QPointF pointOf(int place, double hour) const
    {
        return {place * 101 + 50.0, (hour - 8) * screen->hourHeight()};
    }

    bool drags(QPointF from, QPointF to, bool isFine = false)
    {
        WeekDragModel &drag = *screen->drag();
        if (!drag.begin(from.x(), from.y()))
            return false;
        drag.moveTo(to.x(), to.y(), isFine);
        drag.drop();
        return true;
    }

    void dragsBar(QPointF from, double to)
    {
        BarDragModel &drag = *screen->margins()->drag();
        if (!drag.begin(from.x(), from.y()))
            return;
        drag.moveTo(to);
        drag.drop();
    }

    void dragsLine(int row, int place)
    {
        screen->setScope(ScheduleViewModel::Scope::Month);
        MonthDragModel &drag = *screen->monthDrag();
        if (drag.begin(row)) {
            drag.moveTo(place);
            drag.drop();
        }
        screen->setScope(ScheduleViewModel::Scope::Week);
    }

    [[nodiscard]] QString timesOf(const QString &title) const
    {
        const ScheduleItem &item = stored(title);
        return calendar.dateTime(item.date).toString(QStringLiteral("d ")) +
               timeRangeText(item.date, item.end(), calendar);
    }

    /// Records and events, byte for byte.
    [[nodiscard]] QByteArray everything() const
    {
        QByteArray bytes = preferences.get<QByteArray>(keys::storageKey).value_or(QByteArray());
        for (const CalendarEvent &event : eventStore.allEvents())
            bytes += event.eventIdentifier.toUtf8() + QByteArray::number(event.startDate.seconds, 'f') +
                     QByteArray::number(event.endDate.seconds, 'f');
        return bytes;
    }
};

} // namespace

class WeekDragModelTest : public QObject
{
    Q_OBJECT

private slots:
    void aBlockIsTakenWhereThePointerIs()
    {
        DragDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {11, 0});
        driver.has(QStringLiteral("Short"), wednesday.addDays(1), {9, 0}, {9, 15});
        const WeekDragModel &drag = *driver.screen->drag();
        using enum WeekDragModel::Hold;
        const auto hold = [&](int place, double y) { return drag.holdAt(place * 101 + 50, y); };
        QCOMPARE(hold(2, 41), Empty);
        QCOMPARE(hold(2, 43), Top);
        QCOMPARE(hold(2, 48), Block);
        QCOMPARE(hold(2, 119), Block);
        QCOMPARE(hold(2, 121), Bottom);
        QCOMPARE(hold(2, 127), Empty);
        // Too low for two edges.
        QCOMPARE(hold(3, 43), Block);
        QCOMPARE(hold(3, 60), Bottom);
        QCOMPARE(hold(1, 48), Empty);
    }

    void aDragIsOneStepAndTouchesNothingBefore()
    {
        DragDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {11, 0});
        const QSignalSpy recorded(&driver.store->history(), &UndoHistory::recorded);
        const QByteArray before = driver.everything();
        WeekDragModel &drag = *driver.screen->drag();
        const QPointF from = driver.pointOf(2, 10);
        QVERIFY(drag.begin(from.x(), from.y()));
        const QSignalSpy changed(&drag, &WeekDragModel::changed);
        for (int step = 0; step < 40; ++step)
            drag.moveTo(from.x() + 101, from.y() + step, false);
        QVERIFY2(changed.size() <= 5, "only steps move the ghost");
        QCOMPARE(driver.everything(), before);
        QCOMPARE(drag.startText() + u'-' + drag.endText(), QStringLiteral("10:00-12:00"));
        QCOMPARE(drag.frame(), QRectF(104, 84, 91, 84).translated(202, 0));

        drag.cancel();
        drag.drop();
        QCOMPARE(driver.everything(), before);
        QVERIFY(recorded.isEmpty());

        QVERIFY(driver.drags(from, driver.pointOf(3, 11)));
        QCOMPARE(driver.timesOf(lecture), QStringLiteral("10 10:00 – 12:00"));
        QCOMPARE(recorded.size(), 1);
        const auto step = recorded.constFirst().constFirst().value<UndoStep>();
        QCOMPARE(step.description.report.english, QStringLiteral("Moved “Lecture”"));
        driver.store->undo();
        QCOMPARE(driver.everything(), before);
    }

    void whatCannotMoveSaysWhy_data()
    {
        QTest::addColumn<QString>("calendar");
        QTest::addColumn<QString>("reason");
        QTest::newRow("of a link") << feedCalendarIdentifier(QUuid::createUuid())
                                   << QStringLiteral(
                                          "Schedules of a linked calendar cannot be moved. They follow the link.");
        QTest::newRow("of a read-only calendar")
            << QStringLiteral("holidays")
            << QStringLiteral("The calendar “Holidays” is read-only. Its schedules cannot be moved.");
    }

    void whatCannotMoveSaysWhy()
    {
        QFETCH(const QString, calendar);
        DragDriver driver;
        driver.hasCalendars(
            {{.identifier = QStringLiteral("holidays"), .title = QStringLiteral("Holidays"), .isWritable = false}});
        driver.store->setVisibleCalendarIDs({calendar});
        driver.hasOfCalendar(calendar, lecture, wednesday, {9, 0});
        const QSignalSpy refused(driver.screen->drag(), &WeekDragModel::refused);
        QVERIFY(!driver.drags(driver.pointOf(2, 9.5), driver.pointOf(2, 12)));
        QTEST(refused.constFirst().constFirst().toString(), "reason");
        QCOMPARE(driver.timesOf(lecture), QStringLiteral("9 09:00 – 10:00"));
    }

    void aSelectedSpanGoesToTheForm()
    {
        DragDriver driver;
        QVERIFY(driver.drags(driver.pointOf(4, 13.6), driver.pointOf(4, 14.9)));
        QCOMPARE(driver.focusDay(), QDate(2026, 9, 11));
        QCOMPARE(driver.screen->form()->start(), QDateTime(QDate(2026, 9, 11), QTime(13, 30), driver.calendar.zone()));
        QCOMPARE(driver.screen->form()->end().time(), QTime(15, 0));
    }

    void anOpenLengthStaysOpenUntilItIsSet()
    {
        DragDriver driver;
        ScheduleItem item{.title = lecture, .date = driver.at(wednesday, {9, 0})};
        driver.store->addSchedule(item);
        QVERIFY(driver.drags(driver.pointOf(2, 9.5), driver.pointOf(2, 10.5)));
        QVERIFY(!driver.stored(lecture).endDate);
        QVERIFY(driver.drags(driver.pointOf(2, 10.98), driver.pointOf(2, 11.5)));
        QCOMPARE(driver.timesOf(lecture), QStringLiteral("9 10:00 – 11:30"));
    }

    void whileAKeyRepeatsItsStepsAreOne()
    {
        DragDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {11, 0});
        const QByteArray before = driver.everything();
        for (int press = 0; press < 5; ++press)
            QCOMPARE(driver.screen->moveBlock(0, 0, 15, press > 0), 0);
        QCOMPARE(driver.timesOf(lecture), QStringLiteral("9 10:15 – 12:15"));
        QCOMPARE(driver.screen->resizeBlock(0, -180, false), 0);
        QCOMPARE(driver.timesOf(lecture), QStringLiteral("9 10:15 – 10:30"));
        driver.store->undo();
        driver.store->undo();
        QCOMPARE(driver.everything(), before);
        driver.store->redo();
        QCOMPARE(driver.timesOf(lecture), QStringLiteral("9 10:15 – 12:15"));
        QCOMPARE(driver.screen->moveBlock(0, 7, 0, false), 0);
        QCOMPARE(driver.focusDay(), QDate(2026, 9, 16));
    }

    void anySequenceOfDragsIsUndoneToTheStart_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<WeekOptions>("options");
        QTest::addColumn<int>("firstWeekday");
        for (const quint32 seed : {1, 2, 3, 4})
            QTest::addRow("seed %u", seed) << seed << WeekOptions() << 0;
        QTest::newRow("all-day row") << 5U << WeekOptions{.hasAllDayRow = true} << 0;
        QTest::newRow("no weekend") << 6U << WeekOptions{.hidesWeekend = true} << 7;
        for (const quint32 seed : {7, 8, 9})
            QTest::addRow("all choices, seed %u", seed) << seed << WeekOptions{true, true, true, true, true} << 7;
    }

    void anySequenceOfDragsIsUndoneToTheStart()
    {
        QFETCH(const quint32, seed);
        QFETCH(const WeekOptions, options);
        QFETCH(const int, firstWeekday);
        const bool hasChoices = options != WeekOptions();
        QRandomGenerator random(seed);
        DragDriver driver;
        DisplayChoices &choices = *driver.store->displayChoices();
        choices.setHidesWeekend(options.hidesWeekend);
        choices.setHasAllDayRow(options.hasAllDayRow);
        choices.setMarksHiddenTimes(options.marksHiddenTimes);
        choices.setShowsChineseCalendar(options.showsChineseCalendar);
        choices.setFirstWeekday(firstWeekday);
        driver.hasCalendars({{.identifier = QStringLiteral("work"), .title = QStringLiteral("Work")}});
        for (int index = 0; index < 12; ++index) {
            ScheduleItem item{.title = QString::number(index),
                              .date = driver.at({2026, 9, 7}, {8, 0}).plus(random.bounded(6 * 86400))};
            if (random.bounded(3) > 0)
                item.endDate = item.date.plus(random.bounded(300, 30000));
            if (hasChoices && random.bounded(2) == 0) {
                item.date = driver.at(driver.calendar.day(item.date), {0, 0});
                item.endDate = item.date.plus(86400 * random.bounded(1, 4) + 3600 * random.bounded(0, 2));
            }
            driver.store->addSchedule(item, index % 2 ? std::optional(QStringLiteral("work")) : std::nullopt);
        }
        QTRY_COMPARE(driver.eventStore.allEvents().size(), 6);
        const QByteArray before = driver.everything();
        QSignalSpy recorded(&driver.store->history(), &UndoHistory::recorded);

        for (int round = 0; round < 150; ++round) {
            const QPointF from(random.bounded(707), random.bounded(504));
            const QPointF to(random.bounded(707), random.bounded(504));
            switch (hasChoices ? random.bounded(4) : 0) {
            case 0:
                driver.drags(from, to, random.bounded(2) == 0);
                break;
            case 1:
                driver.dragsBar({from.x(), from.y() / 7}, to.x());
                break;
            case 2:
                driver.dragsLine(random.bounded(42), random.bounded(42));
                break;
            case 3:
                driver.screen->margins()->resizeBar(random.bounded(5), random.bounded(-2, 3), false);
                driver.screen->margins()->moveBar(random.bounded(5), random.bounded(-2, 3), false);
                break;
            }
        }
        QVERIFY(recorded.size() > 10);
        QVERIFY(driver.everything() != before);
        const qsizetype steps = recorded.size();
        for (qsizetype step = 0; step < steps; ++step)
            driver.store->undo();
        QTRY_COMPARE(driver.everything(), before);
    }
};

TESSALY_TEST_MAIN(WeekDragModelTest)
#include "WeekDragModelTest.moc"
