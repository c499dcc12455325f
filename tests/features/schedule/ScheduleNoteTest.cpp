#include "store/PreferenceKeys.h"
#include "tests/features/schedule/ScheduleDriver.h"
#include "tests/support/TestMain.h"

#include <functional>

using namespace tessaly;

namespace {

const QString lecture = QStringLiteral("Lecture");
const QDate wednesday(2026, 9, 9);

} // namespace

class ScheduleNoteTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsTypedIsSavedTogether()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0}, QStringLiteral("Course"));
        driver.opensScreen();
        driver.screen->editListed(0);
        ScheduleNoteModel &note = *driver.screen->sheets()->note();

        note.setNotes(QStringLiteral("Bring the book"));
        note.setTag(QString());
        note.setStart(note.start().addSecs(3600));
        note.setEnd(note.start().addSecs(-3600));
        for (const QString &task : {QStringLiteral("Read"), QStringLiteral("  "), QStringLiteral("Print")}) {
            note.setNewTask(task);
            note.addTask();
        }
        note.setTaskTitle(1, QStringLiteral("Print it"));
        note.setTaskComplete(1, true);
        note.deleteTask(0);
        note.save();

        QVERIFY(!driver.screen->sheets()->isNoteOpen());
        const ScheduleItem &saved = driver.stored(lecture);
        QCOMPARE(saved.notes, QStringLiteral("Bring the book"));
        QVERIFY(!saved.tag);
        QCOMPARE(saved.date, driver.at(wednesday, {10, 0}));
        QCOMPARE(saved.endDate, driver.at(wednesday, {10, 15}));
        QCOMPARE(saved.tasks->size(), 1);
        QCOMPARE(saved.tasks->first().title, QStringLiteral("Print it"));
        QVERIFY(saved.tasks->first().isComplete);
        QCOMPARE(driver.screen->dayList()->rows().first().timeRange, QStringLiteral("10:00 – 10:15"));
    }

    void whatIsWrittenSurvivesTheEndOfItsSchedule()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();
        driver.screen->openListed(0);
        driver.store->undo();
        QVERIFY(!driver.screen->sheets()->isNoteOpen());

        driver.store->redo();
        driver.screen->editListed(0);
        driver.note().setNotes(QStringLiteral("Bring the book"));
        driver.store->undo();
        QVERIFY(driver.screen->sheets()->isNoteOpen());
        QVERIFY(driver.store->schedules().isEmpty());
        driver.note().save();
        QVERIFY(!driver.screen->sheets()->isNoteOpen());
        QCOMPARE(driver.stored(lecture).notes, QStringLiteral("Bring the book"));
    }

    void aTickedTaskIsSavedAtOnce()
    {
        ScheduleDriver driver;
        ScheduleItem item = driver.has(lecture, wednesday, {9, 0}, {10, 0});
        item.tasks = QList<ScheduleTask>{{.title = QStringLiteral("Read")}, {.title = QStringLiteral("Print")}};
        driver.store->updateSchedule(item);
        driver.opensScreen();
        driver.screen->selectBlock(0);

        driver.screen->sheets()->note()->toggleTask(1);

        QVERIFY(!driver.screen->sheets()->isNoteOpen());
        QVERIFY(!driver.stored(lecture).tasks->at(0).isComplete);
        QVERIFY(driver.stored(lecture).tasks->at(1).isComplete);
    }

    void whatIsTypedOutlivesTheScreenAndTheProgram_data()
    {
        QTest::addColumn<bool>("isKilled");
        QTest::newRow("the screen goes") << false;
        QTest::newRow("the program is killed") << true;
    }

    void whatIsTypedOutlivesTheScreenAndTheProgram()
    {
        QFETCH(bool, isKilled);
        ScheduleDriver driver;
        const ScheduleItem item = driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();
        driver.screen->editListed(0);
        driver.note().setNotes(QStringLiteral("Bring the book"));
        if (isKilled)
            QTRY_VERIFY(driver.preferences.keys().contains(keys::noteDrafts));
        FakePreferences onDisk = driver.preferences;
        driver.screen.reset();
        driver.store.reset();
        if (isKilled)
            driver.preferences = onDisk;

        driver.store = std::make_unique<PlannerStore>(driver.ports());
        driver.opensScreen();
        driver.screen->selectBlock(0);

        QVERIFY(driver.note().isEditing());
        QVERIFY(driver.note().isBroughtBack());
        QCOMPARE(driver.note().notes(), QStringLiteral("Bring the book"));
        QCOMPARE(driver.stored(lecture), item);
    }

    void whatIsSetAsideIsThereAgain()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();
        driver.screen->editListed(0);
        driver.note().setNotes(QStringLiteral("Bring the book"));
        driver.note().setAside();
        QVERIFY(!driver.note().isEditing());
        QCOMPARE(driver.note().notes(), QString());

        driver.note().startEditing();
        QVERIFY(driver.note().isBroughtBack());
        QCOMPARE(driver.note().notes(), QStringLiteral("Bring the book"));

        driver.note().cancel();
        driver.note().startEditing();
        QVERIFY(!driver.note().isBroughtBack());
        QCOMPARE(driver.note().notes(), QString());
    }

    void leavingTheFormForgetsTheDraft_data()
    {
        QTest::addColumn<std::function<void(ScheduleDriver &)>>("leave");
        QTest::newRow("cancel") << std::function([](ScheduleDriver &driver) { driver.note().cancel(); });
        QTest::newRow("save") << std::function([](ScheduleDriver &driver) { driver.note().save(); });
        QTest::newRow("the schedule is deleted") << std::function(
            [](ScheduleDriver &driver) { driver.store->deleteSchedule(driver.store->schedules().first()); });
        QTest::newRow("everything is cleared")
            << std::function([](ScheduleDriver &driver) { driver.store->clearPersonalContent(); });
    }

    void leavingTheFormForgetsTheDraft()
    {
        QFETCH(std::function<void(ScheduleDriver &)>, leave);
        ScheduleDriver driver;
        const ScheduleItem item = driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();
        driver.screen->editListed(0);
        driver.note().setNotes(QStringLiteral("Bring the book"));
        QTRY_VERIFY(!driver.store->noteDrafts().draft(item.id).isEmpty());

        leave(driver);
        driver.screen.reset();

        QVERIFY(driver.store->noteDrafts().draft(item.id).isEmpty());
    }

    void aScheduleThatCannotBeWrittenKeepsItsDraft()
    {
        ScheduleDriver driver;
        const ScheduleItem item = driver.has(lecture, wednesday, {9, 0}, {10, 0});
        driver.opensScreen();
        driver.screen->editListed(0);
        driver.note().setNotes(QStringLiteral("Bring the book"));

        driver.preferences.failWritesWith(Error{ErrorCode::StorageFull, {}});
        driver.note().save();
        driver.screen.reset();

        QVERIFY(!driver.store->noteDrafts().draft(item.id).isEmpty());
    }

    void timesAreWorded()
    {
        ScheduleDriver driver;
        driver.has(lecture, wednesday, {9, 0}, {10, 40});
        driver.hasOfCalendar(QStringLiteral("work"), QStringLiteral("Open"), wednesday, {8, 0});
        driver.store->setVisibleCalendarIDs({QStringLiteral("work")});
        driver.opensScreen();

        driver.screen->selectBlock(0);
        QCOMPARE(driver.screen->sheets()->note()->timeText(), QStringLiteral("2026年9月9日 08:00"));
        driver.screen->selectBlock(1);
        QCOMPARE(driver.screen->sheets()->note()->timeText(),
                 QStringLiteral("2026年9月9日 09:00 – 2026年9月9日 10:40"));
        driver.inEnglish();
        QCOMPARE(driver.screen->sheets()->note()->timeText(),
                 QStringLiteral("Sep 9, 2026, 09:00 – Sep 9, 2026, 10:40"));
    }
};

TESSALY_TEST_MAIN(ScheduleNoteTest)
#include "ScheduleNoteTest.moc"
