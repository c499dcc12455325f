#include "model/Uuid.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

namespace {

using Kind = RowsChange::Kind;

/// What the list's signal said, one entry per emission.
QList<RowsChange> changes(const QSignalSpy &spy)
{
    QList<RowsChange> found;
    for (const QVariantList &arguments : spy)
        found.append(arguments.constFirst().value<RowsChange>());
    return found;
}

} // namespace

class RecordVerbsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyVerbAnnouncesExactlyTheRowsItTouched()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        QSignalSpy spy(&store, &PlannerStore::remindersChanged);
        ReminderItem first{.title = QStringLiteral("first")};
        const ReminderItem second{.title = QStringLiteral("second")};
        const ReminderItem third{.title = QStringLiteral("third")};

        store.addReminder(first);
        store.addReminder(second);
        store.addReminder(third);
        first.isComplete = true;
        store.updateReminder(first);
        store.removeReminder(second.id);

        QCOMPARE(changes(spy), (QList<RowsChange>{{Kind::Inserted, 0, 1},
                                                  {Kind::Inserted, 1, 1},
                                                  {Kind::Inserted, 2, 1},
                                                  {Kind::Updated, 0, 1},
                                                  {Kind::Removed, 1, 1}}));
        QCOMPARE(store.reminders(), (QList{first, third}));
    }

    void unknownRecordsChangeNothing()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();

        store.updateSchedule(scheduleTitled(QStringLiteral("unknown")));
        store.deleteSchedule(scheduleTitled(QStringLiteral("unknown")));
        store.updateReminder({.title = QStringLiteral("unknown")});
        store.removeReminder(QUuid::createUuid());
        store.updateGoal({.title = QStringLiteral("unknown")});
        store.removeGoal(QUuid::createUuid());

        QCOMPARE(planner.preferences.writeCount(), 0);
        QVERIFY(store.schedules().isEmpty() && store.reminders().isEmpty() && store.goals().isEmpty());
    }

    void removingTakesEveryRecordOfThatId()
    {
        StoreUnderTest planner;
        const Goal twice{.title = QStringLiteral("twice")};
        const Goal other{.title = QStringLiteral("other")};
        planner.put(keys::storageKey, *encodeSavedData({.goals = {twice, other, twice}}));
        PlannerStore &store = planner.start();
        QSignalSpy spy(&store, &PlannerStore::goalsChanged);

        // The id of a record in the list itself must survive the removal.
        store.removeGoal(store.goals().constFirst().id);

        QCOMPARE(store.goals(), QList{other});
        QCOMPARE(changes(spy), QList<RowsChange>{RowsChange{}});
    }

    void clearingKeepsTheSchedulesAndEmptiesTheRest()
    {
        StoreUnderTest planner;
        const ScheduleItem full{.title = QStringLiteral("Talk"),
                                .date = {1},
                                .endDate = Instant{2},
                                .notes = QStringLiteral("private"),
                                .taskTitle = QStringLiteral("old"),
                                .isTaskComplete = true,
                                .tasks = QList<ScheduleTask>{{.title = QStringLiteral("task")}},
                                .tag = QStringLiteral("tag"),
                                .colorName = QStringLiteral("pink"),
                                .calendarEventIdentifier = QStringLiteral("event"),
                                .calendarIdentifier = QStringLiteral("calendar")};
        planner.put(keys::storageKey,
                    *encodeSavedData({{full}, {{.title = QStringLiteral("r")}}, {{.title = QStringLiteral("g")}}}));
        PlannerStore &store = planner.startInEnglish();

        store.clearPersonalContent();

        ScheduleItem emptied = full;
        emptied.notes.clear();
        emptied.taskTitle.reset();
        emptied.isTaskComplete = false;
        emptied.tasks = QList<ScheduleTask>();
        QCOMPARE(store.schedules(), QList{emptied});
        QVERIFY(store.reminders().isEmpty());
        QVERIFY(store.goals().isEmpty());
        QCOMPARE(planner.saved(), (SavedData{{emptied}, {}, {}}));
        QCOMPARE(planner.message(), QStringLiteral("Notes, linked tasks, to-dos, and goals have been cleared."));
    }
};

TESSALY_TEST_MAIN(RecordVerbsTest)
#include "RecordVerbsTest.moc"
