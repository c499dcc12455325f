#include "model/GoalOperations.h"
#include "model/ReminderRules.h"
#include "tests/store/RandomUser.h"
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
                       *encodeDocumentLibrary({{{.name = QStringLiteral("C")}}, {{.title = QStringLiteral("D")}}}));
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
        QVERIFY(store.calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics")));
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
        store.calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics"));
        m_planner->preferences.failWritesWith(Error{ErrorCode::StorageFull});
        store.clearPersonalContent();
        store.calendarLinks().deleteCalendarFeed(store.calendarFeeds().constFirst().id);
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
