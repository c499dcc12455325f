#include "tests/features/schedule/ScheduleDriver.h"
#include "tests/support/TestMain.h"

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
