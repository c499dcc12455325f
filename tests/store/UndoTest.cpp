#include "model/GoalOperations.h"
#include "model/ReminderRules.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

#include <algorithm>

using namespace tessaly;

namespace {

const EventCalendar work{.identifier = QStringLiteral("work"), .title = QStringLiteral("Work")};

/// Everything that is saved, byte for byte; lists without an order are sorted.
QList<QByteArray> savedState(const StoreUnderTest &planner)
{
    QList<QByteArray> state;
    for (const QString &key : {keys::storageKey, keys::calendarFeedsKey, keys::documentMetadataKey})
        state.append(planner.preferences.get<QByteArray>(key).value_or(QByteArray()));
    QStringList visible = planner.preferences.get<QStringList>(keys::visibleCalendarIDs).value_or(QStringList());
    visible.sort();
    state.append(visible.join(u' ').toUtf8());
    auto waiting =
        decodeWaitingReminders(planner.preferences.get<QByteArray>(keys::waitingReminders).value_or(QByteArray("[]")));
    std::ranges::sort(*waiting, {}, &WaitingReminder::identifier);
    state.append(encodeWaitingReminders(*waiting));
    return state;
}

/// A user who does one thing after the other.
class RandomUser
{
public:
    RandomUser(PlannerStore &store, quint64 seed) : m_store(store), m_random(seed) {}

    void act()
    {
        switch (m_random.below(12)) {
        case 0:
        case 1:
            return workOnSchedules();
        case 2:
        case 3:
        case 4:
            return workOnReminders();
        case 5:
        case 6:
        case 7:
            return workOnGoals();
        case 8:
            return workOnFeeds();
        case 9:
        case 10:
            return workOnDocuments();
        default:
            if (m_random.happens(0.2))
                m_store.clearPersonalContent();
        }
    }

private:
    /// A row of the list, or -1 for an empty list and now and then: something is to be added.
    template <class Record>
    qsizetype any(const QList<Record> &records)
    {
        return records.isEmpty() || m_random.happens(0.45) ? -1 : m_random.below(records.size());
    }

    void workOnSchedules()
    {
        const qsizetype row = any(m_store.schedules());
        if (row < 0)
            return m_store.addSchedule(m_random.schedule());
        ScheduleItem item = m_store.schedules().at(row);
        if (m_random.happens(0.3))
            return m_store.deleteSchedule(item);
        ScheduleItem other = m_random.schedule();
        other.id = item.id;
        if (m_random.happens(0.5))
            return m_store.updateSchedule(other);
        item.notes = other.notes;
        m_store.updateSchedule(item);
    }

    void workOnReminders()
    {
        const qsizetype row = any(m_store.reminders());
        if (row < 0)
            return m_store.addReminder(m_random.reminder());
        ReminderItem item = m_store.reminders().at(row);
        if (m_random.happens(0.2))
            return m_store.removeReminder(item.id);
        if (m_random.happens(0.5))
            return m_store.updateReminder(toggled(item, m_store.clock().now()));
        item.title = m_random.words(2);
        m_store.updateReminder(item);
    }

    void workOnGoals()
    {
        const qsizetype row = any(m_store.goals());
        if (row < 0)
            return m_store.addGoal(m_random.goal());
        Goal goal = m_store.goals().at(row);
        if (m_random.happens(0.15))
            return m_store.removeGoal(goal.id);
        const QList<Subgoal> subgoals = goal.subgoals.value_or(QList<Subgoal>());
        const qsizetype subgoalRow = any(subgoals);
        if (subgoalRow < 0) {
            addSubgoal(goal, m_random.words(2));
        } else if (const Subgoal &subgoal = subgoals.at(subgoalRow); m_random.happens(0.3)) {
            addTask(goal, subgoal.id, m_random.words(2), 1.5);
        } else if (m_random.happens(0.3)) {
            removeSubgoal(goal, subgoal.id);
        } else if (m_random.happens(0.5)) {
            moveSubgoal(goal, subgoal.id, subgoals.constFirst().id);
        } else {
            toggleSubgoal(goal, subgoal.id);
        }
        m_store.updateGoal(goal);
    }

    void workOnFeeds()
    {
        const qsizetype row = any(m_store.calendarFeeds());
        if (row < 0) {
            m_store.addCalendarFeed(QStringLiteral("https://example.org/%1.ics").arg(m_random.below(1'000'000)));
            return;
        }
        const QUuid feed = m_store.calendarFeeds().at(row).id;
        if (m_random.happens(0.3))
            return m_store.deleteCalendarFeed(feed);
        ScheduleItem item = m_random.schedule();
        item.calendarIdentifier = feedCalendarIdentifier(feed);
        m_store.addSchedule(item);
    }

    void workOnDocuments()
    {
        DocumentLibrary &library = m_store.documentLibrary();
        const qsizetype row = any(library.documentCategories());
        if (row < 0)
            return library.addDocumentCategory(m_random.words(1));
        const QUuid category = library.documentCategories().at(row).id;
        if (m_random.happens(0.3))
            return library.deleteDocumentCategory(category);
        if (m_random.happens(0.5) || library.documents().isEmpty())
            return library.renameDocumentCategory(category, m_random.words(1));
        const MarkdownDocument document = library.documents().at(m_random.below(library.documents().size()));
        if (m_random.happens(0.5))
            return library.renameDocument(document, m_random.words(2));
        // Setting the same category again is no step, and changes the time of the last change.
        if (document.categoryID != category)
            library.setDocumentCategory(document, category);
    }

    PlannerStore &m_store;
    RecordGenerator m_random;
};

} // namespace

class UndoTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->eventStore.addCalendar(work);
        m_planner->startInEnglish();
    }

    void aWalkIsUndoneToItsStartAndRedoneToItsEnd_data()
    {
        QTest::addColumn<quint64>("seed");
        for (const quint64 seed : {1, 2, 3, 4})
            QTest::addRow("seed %llu", static_cast<unsigned long long>(seed)) << seed;
    }

    void aWalkIsUndoneToItsStartAndRedoneToItsEnd()
    {
        QFETCH(const quint64, seed);
        RecordGenerator generator(seed);
        m_planner->put(keys::storageKey, *encodeSavedData(generator.savedData(20, 20, 5)));
        m_planner->put(keys::documentMetadataKey,
                       *encodeDocumentLibrary({{.name = QStringLiteral("C")}}, {{.title = QStringLiteral("D")}}));
        m_planner->put(keys::calendarFeedsKey, QByteArray("[]"));
        RandomUser user(m_planner->startInEnglish(), seed);
        int recorded = 0;
        connect(&m_planner->store->history(), &UndoHistory::recorded, this, [&recorded] { ++recorded; });
        QList<QList<QByteArray>> states;
        // The first state of all is that of the first save: a start writes nothing.
        user.act();
        while (recorded < 1)
            user.act();
        states.append(savedState(*m_planner));
        while (states.size() <= 500) {
            m_planner->clock.advance(UndoHistory::typingPauseSeconds + 1);
            user.act();
            if (recorded == states.size() + 1)
                states.append(savedState(*m_planner));
            QCOMPARE(recorded, int(states.size()));
        }

        undoneAndRedone(*m_planner->store, states);
    }

    void aReminderFollowsItsToDoBackAndForth()
    {
        PlannerStore &store = *m_planner->store;
        const ReminderItem item{.title = QStringLiteral("Call"), .dueDate = store.clock().now().plus(3600)};
        store.addReminder(item);
        QCOMPARE(store.waitingReminders().list().size(), 1);
        store.undo();
        QCOMPARE(store.waitingReminders().list().size(), 0);
        store.redo();
        QCOMPARE(store.waitingReminders().list().size(), 1);

        store.updateReminder(toggled(item, store.clock().now()));
        QCOMPARE(store.waitingReminders().list().size(), 0);
        store.undo();
        QCOMPARE(store.waitingReminders().list().size(), 1);

        // Deleting leaves the reminder.
        store.removeReminder(item.id);
        QCOMPARE(store.waitingReminders().list().size(), 1);
        store.undo();
        QCOMPARE(store.waitingReminders().list().size(), 1);

        store.updateReminder(toggled(item, store.clock().now()));
        m_planner->clock.advance(7200);
        store.undo();
        QVERIFY2(store.waitingReminders().list().isEmpty(), "its minute has passed meanwhile");
        QVERIFY(!store.reminders().constFirst().isComplete);
    }

    void theEventOfADeletedScheduleIsWrittenAgain()
    {
        PlannerStore &store = *m_planner->store;
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store.addSchedule(item, work.identifier);
        QTRY_VERIFY(stored().calendarEventIdentifier);
        const QString firstEvent = *stored().calendarEventIdentifier;
        store.deleteSchedule(item);
        QTRY_VERIFY(m_planner->eventStore.allEvents().isEmpty());

        store.undo();
        QVERIFY(!stored().calendarEventIdentifier && !stored().calendarIdentifier);

        QTRY_VERIFY(stored().calendarEventIdentifier);
        QVERIFY(stored().calendarEventIdentifier != firstEvent);
        QCOMPARE(stored().calendarIdentifier, work.identifier);
        QCOMPARE(m_planner->eventStore.allEvents().size(), 1);
        QCOMPARE(m_planner->eventStore.allEvents().constFirst().title, item.title);

        store.redo();
        QTRY_VERIFY(m_planner->eventStore.allEvents().isEmpty());
        QVERIFY(store.schedules().isEmpty());
    }

    void anEventThatCannotBeWrittenAgainLeavesTheScheduleLocal()
    {
        PlannerStore &store = *m_planner->store;
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store.addSchedule(item, work.identifier);
        QTRY_VERIFY(stored().calendarEventIdentifier);
        store.deleteSchedule(item);
        QTRY_VERIFY(m_planner->eventStore.allEvents().isEmpty());
        m_planner->eventStore.loseCalendar(work.identifier);

        m_planner->eventStore.holdCompletions();
        store.undo();
        m_planner->eventStore.releaseCompletions();

        QVERIFY(!stored().calendarIdentifier);
        QCOMPARE(stored().title, item.title);
    }

    void withoutPermissionNoEventIsTouchedAndTheLinkStays()
    {
        PlannerStore &store = *m_planner->store;
        m_planner->eventStore.setNeedsConsent(true);
        store.calendarSync()->answerConsent(true);
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store.addSchedule(item, work.identifier);
        QTRY_VERIFY(stored().calendarEventIdentifier);
        const ScheduleItem linked = stored();
        store.calendarSync()->answerConsent(false);

        store.deleteSchedule(item);
        store.undo();

        QCOMPARE(stored(), linked);
        QCOMPARE(m_planner->eventStore.allEvents().size(), 1);
    }

    void undoingAnEditChangesTheEventBack()
    {
        PlannerStore &store = *m_planner->store;
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store.addSchedule(item, work.identifier);
        QTRY_VERIFY(stored().calendarEventIdentifier);
        ScheduleItem moved = stored();
        moved.date = moved.date.plus(86400);
        store.updateSchedule(moved);
        QTRY_COMPARE(m_planner->eventStore.allEvents().constFirst().startDate, moved.date);

        store.undo();

        QTRY_COMPARE(m_planner->eventStore.allEvents().constFirst().startDate, item.date);
    }

    void whatASyncBringsBetweenStays()
    {
        PlannerStore &store = *m_planner->store;
        ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store.addSchedule(item);
        item.notes = QStringLiteral("mine");
        store.updateSchedule(item);
        store.editSchedules([](QList<ScheduleItem> &schedules) {
            schedules.first().title = QStringLiteral("Moved talk");
            schedules.prepend(scheduleTitled(QStringLiteral("Synced")));
            return RowsChange();
        });

        store.undo();

        QCOMPARE(store.schedules().constFirst().title, QStringLiteral("Synced"));
        QCOMPARE(store.schedules().at(1).title, QStringLiteral("Moved talk"));
        QCOMPARE(store.schedules().at(1).notes, QString());
    }

    void aLinkComesBackWithTheSchedulesItHadInTheEnd()
    {
        PlannerStore &store = *m_planner->store;
        QVERIFY(store.addCalendarFeed(QStringLiteral("https://example.org/a.ics")));
        ScheduleItem brought = scheduleTitled(QStringLiteral("Lecture"));
        brought.calendarIdentifier = feedCalendarIdentifier(store.calendarFeeds().constFirst().id);
        store.editSchedules([&brought](QList<ScheduleItem> &schedules) {
            schedules.append(brought);
            return RowsChange();
        });
        const QSet<QString> visible = store.visibleCalendarIDs();

        store.undo();
        QVERIFY(store.calendarFeeds().isEmpty() && store.schedules().isEmpty());
        QVERIFY(store.visibleCalendarIDs().isEmpty());

        store.redo();
        QCOMPARE(store.calendarFeeds().size(), 1);
        QCOMPARE(store.schedules(), QList{brought});
        QCOMPARE(store.visibleCalendarIDs(), visible);
    }

    void typingIsOneStepUntilAPause()
    {
        DocumentLibrary &library = m_planner->library();
        PlannerStore &store = *m_planner->store;
        library.addDocumentCategory(QStringLiteral("C"));
        const QUuid id = library.documentCategories().constFirst().id;
        const auto name = [&library] { return library.documentCategories().constFirst().name; };

        library.renameDocumentCategory(id, QStringLiteral("Cl"));
        library.renameDocumentCategory(id, QStringLiteral("Cla"));
        m_planner->clock.advance(UndoHistory::typingPauseSeconds + 1);
        library.renameDocumentCategory(id, QStringLiteral("Clas"));

        store.undo();
        QCOMPARE(name(), QStringLiteral("Cla"));
        // What is typed after an undo is a step of its own.
        library.renameDocumentCategory(id, QStringLiteral("Clay"));
        store.undo();
        QCOMPARE(name(), QStringLiteral("Cla"));
        store.undo();
        QCOMPARE(name(), QStringLiteral("C"));
    }

    void aNewStepEndsWhatCouldBeRedone()
    {
        PlannerStore &store = *m_planner->store;
        store.addGoal({.title = QStringLiteral("a")});
        store.undo();
        store.addGoal({.title = QStringLiteral("b")});
        store.redo();

        QCOMPARE(store.goals().size(), 1);
        QVERIFY(!store.history().nextRedo());
    }

    void aStepThatCannotBeSavedIsSavedWholeLater()
    {
        m_planner->put(keys::storageKey, *encodeSavedData(RecordGenerator().savedData(5, 5, 5)));
        PlannerStore &store = m_planner->startInEnglish();
        store.addCalendarFeed(QStringLiteral("https://example.org/a.ics"));
        m_planner->preferences.failWritesWith(Error{ErrorCode::StorageFull});
        store.clearPersonalContent();
        store.deleteCalendarFeed(store.calendarFeeds().constFirst().id);
        QVERIFY(store.hasUnsavedChanges());

        m_planner->preferences.failWritesWith(std::nullopt);
        store.undo();

        QVERIFY(!store.hasUnsavedChanges());
        QCOMPARE(m_planner->saved(), (SavedData{store.schedules(), {}, {}}));
        QCOMPARE(decodeCalendarFeeds(*m_planner->preferences.get<QByteArray>(keys::calendarFeedsKey)),
                 store.calendarFeeds());
    }

private:
    [[nodiscard]] ScheduleItem stored() const { return m_planner->store->schedules().constFirst(); }

    void undoneAndRedone(PlannerStore &store, const QList<QList<QByteArray>> &states)
    {
        for (qsizetype step = states.size() - 2; step >= 0; --step) {
            store.undo();
            QVERIFY2(savedState(*m_planner) == states.at(step), qPrintable(QStringLiteral("undone to %1").arg(step)));
        }
        for (qsizetype step = 1; step < states.size(); ++step) {
            store.redo();
            QVERIFY2(savedState(*m_planner) == states.at(step), qPrintable(QStringLiteral("redone to %1").arg(step)));
        }
    }

    std::unique_ptr<StoreUnderTest> m_planner;
};

TESSALY_TEST_MAIN(UndoTest)
#include "UndoTest.moc"
