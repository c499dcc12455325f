#include "model/BackupPlan.h"
#include "tests/store/RandomUser.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

namespace {

const QString version = QStringLiteral("1.0");
constexpr double minute = 60;
constexpr double hour = 3600;

/// The newest first.
QList<GenerationReason> reasons(const FakePorts &fakes)
{
    QList<GenerationReason> reasons;
    for (const Generation &generation : fakes.backups.list())
        reasons.append(generation.reason);
    return reasons;
}

template <class Record>
void sortById(QList<Record> &records)
{
    std::ranges::sort(records, {}, &Record::id);
}

/// What a restore promises to bring back: the order of the records is not among it, nor what links them with events,
/// nor when links were read and documents changed.
PlannerState promised(PlannerState state)
{
    for (ScheduleItem &item : state.data.schedules) {
        item.calendarIdentifier.reset();
        item.calendarColorHex.reset();
        item.calendarExportRequested.reset();
        item.calendarEventIdentifier.reset();
    }
    for (CalendarFeed &feed : state.feeds)
        feed.lastUpdated.reset();
    for (MarkdownDocument &document : state.library.documents)
        document.updatedAt = {};
    sortById(state.data.schedules);
    sortById(state.data.reminders);
    sortById(state.data.goals);
    sortById(state.feeds);
    sortById(state.library.categories);
    sortById(state.library.documents);
    return state;
}

QSet<QString> allKeys(const StateChange &change)
{
    QSet<QString> keys;
    for (const DifferenceRow &row : differenceRows(change))
        keys.insert(row.key);
    return keys;
}

void restoreAll(PlannerStore &store, const Generation &generation)
{
    store.compareWith(generation, [&store](const Result<StateChange> &change) {
        QVERIFY(change);
        store.restore(chosenPart(change.value(), allKeys(change.value())));
    });
}

} // namespace

class GenerationsTest : public QObject
{
    Q_OBJECT

private slots:
    void aChangedStateIsKeptOnceAnHour()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        store.generations().start(version);
        store.addGoal({});
        QVERIFY(planner.backups.list().isEmpty());
        planner.clock.advance(minute);
        QCOMPARE(planner.backups.list().size(), 1);

        planner.clock.advance(5 * hour);
        QVERIFY2(planner.backups.list().size() == 1, "nothing has changed");
        store.addGoal({});
        planner.clock.advance(minute);
        QCOMPARE(planner.backups.list().size(), 2);

        store.addGoal({});
        planner.clock.advance(hour - 1);
        QCOMPARE(planner.backups.list().size(), 2);
        store.addGoal({});
        planner.clock.advance(1);
        QCOMPARE(planner.backups.list().size(), 3);
    }

    void whatChangedBeforeTheEndIsKeptAfterTheNextStart()
    {
        StoreUnderTest planner;
        planner.start().generations().start(version);
        planner.clock.advance(minute);
        planner.store->addGoal({});
        planner.clock.advance(10 * minute);
        planner.start().generations().start(version);
        planner.clock.advance(49 * minute - 1);
        QCOMPARE(planner.backups.list().size(), 1);
        planner.clock.advance(minute + 1);
        QCOMPARE(planner.backups.list().size(), 2);
    }

    void aClockThatIsSetBackDoesNotPutTheNextGenerationOff()
    {
        StoreUnderTest planner;
        planner.start().generations().start(version);
        planner.clock.advance(minute);
        planner.store->addGoal({});
        planner.clock.setNow(planner.clock.now().plus(-1000 * hour));
        planner.clock.advance(minute);
        QCOMPARE(planner.backups.list().size(), 2);
    }

    void outdatedGenerationsGo()
    {
        StoreUnderTest planner;
        planner.start().generations().start(version);
        for (int i = 0; i < 30; ++i)
            planner.store->clearPersonalContent();
        QCOMPARE(planner.backups.list().size(), BackupLimits().restorePoints);
        QCOMPARE(planner.store->generations().restorePoints(3).size(), 3);
        QCOMPARE(planner.store->generations().restorePoints(30).size(), BackupLimits().restorePoints);
    }

    void aRestorePointHoldsWhatIsThereBeforeTheChange_data()
    {
        QTest::addColumn<std::function<void(PlannerStore &)>>("change");
        QTest::addColumn<GenerationReason>("reason");
        using Change = std::function<void(PlannerStore &)>;
        QTest::newRow("clear") << Change([](PlannerStore &store) { store.clearPersonalContent(); })
                               << GenerationReason::Clear;
        QTest::newRow("delete a link") << Change([](PlannerStore &store) {
            store.calendarLinks().deleteCalendarFeed(store.calendarFeeds().constFirst().id);
        }) << GenerationReason::LinkDeletion;
    }

    void aRestorePointHoldsWhatIsThereBeforeTheChange()
    {
        QFETCH(const std::function<void(PlannerStore &)>, change);
        QFETCH(const GenerationReason, reason);
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        store.generations().start(version);
        QVERIFY(store.calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics")));
        ScheduleItem item = scheduleTitled(QStringLiteral("a"));
        item.notes = QStringLiteral("n");
        item.calendarIdentifier = feedCalendarIdentifier(store.calendarFeeds().constFirst().id);
        store.addSchedule(item);
        store.addReminder({.title = QStringLiteral("b")});
        const QByteArray before = *planner.preferences.get<QByteArray>(keys::storageKey);
        const QSignalSpy changes(&store.generations(), &Generations::changed);

        change(store);

        QCOMPARE(reasons(planner), QList{reason});
        QCOMPARE(changes.size(), 1);
        QVERIFY(planner.preferences.get<QByteArray>(keys::storageKey) != before);
        std::optional<QByteArray> kept;
        planner.backups.read(
            planner.backups.list().constFirst(),
            [&](const Preferences &stored) { kept = stored.get<QByteArray>(keys::storageKey); }, [](const auto &) {});
        QCOMPARE(kept, before);
    }

    void onlyALinkUpdateThatTakesNotesOrTasksAwayIsPrecededByARestorePoint_data()
    {
        QTest::addColumn<bool>("hasNotes");
        QTest::addColumn<bool>("isGone");
        QTest::addColumn<int>("restorePoints");
        QTest::newRow("goes without notes") << false << true << 0;
        QTest::newRow("stays with notes") << true << false << 0;
        QTest::newRow("goes with notes") << true << true << 1;
    }

    void onlyALinkUpdateThatTakesNotesOrTasksAwayIsPrecededByARestorePoint()
    {
        QFETCH(const bool, hasNotes);
        QFETCH(const bool, isGone);
        const auto calendar = [](const char *uid) {
            return QByteArray("BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:") + uid +
                   "\r\nSUMMARY:a\r\nDTSTART:20261122T100000Z\r\nDTEND:20261122T110000Z\r\nEND:VEVENT\r\n"
                   "END:VCALENDAR\r\n";
        };
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        store.generations().start(version);
        QVERIFY(store.calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics")));
        planner.feedDownloader.answer(0, calendar("1"));
        QCOMPARE(store.schedules().size(), 1);
        ScheduleItem item = store.schedules().constFirst();
        item.notes = QStringLiteral("n").repeated(hasNotes ? 1 : 0);
        store.updateSchedule(item);

        store.calendarLinks().refreshCalendarFeed(store.calendarFeeds().constFirst().id);
        planner.feedDownloader.answer(0, calendar(isGone ? "2" : "1"));

        QTEST(static_cast<int>(planner.backups.list().size()), "restorePoints");
        if (!planner.backups.list().isEmpty())
            QCOMPARE(planner.backups.list().constFirst().detail, QStringLiteral("1"));
    }

    void theFirstStartOfAnotherVersionKeepsARestorePoint_data()
    {
        QTest::addColumn<std::optional<QString>>("former");
        QTest::addColumn<bool>("wasUsed");
        QTest::addColumn<int>("restorePoints");
        QTest::newRow("the first start of all") << std::optional<QString>() << false << 0;
        QTest::newRow("after a version that noted none") << std::optional<QString>() << true << 1;
        QTest::newRow("same version") << std::optional(version) << true << 0;
        QTest::newRow("newer version") << std::optional(QStringLiteral("0.9")) << true << 1;
    }

    void theFirstStartOfAnotherVersionKeepsARestorePoint()
    {
        QFETCH(const std::optional<QString>, former);
        QFETCH(const bool, wasUsed);
        StoreUnderTest planner;
        if (former)
            planner.put(keys::programVersion, *former);
        if (wasUsed)
            planner.put(keys::hasAskedPreferredName, true);
        planner.start().generations().start(version);
        QTEST(static_cast<int>(planner.backups.list().size()), "restorePoints");
        planner.start().generations().start(version);
        QTEST(static_cast<int>(planner.backups.list().size()), "restorePoints");
        QCOMPARE(planner.preferences.get<QString>(keys::programVersion), version);
    }

    void everyGenerationRestoresTheStateOfItsMoment()
    {
        constexpr int histories = 1000;
        int restored = 0;
        for (int history = 0; history < histories; ++history) {
            StoreUnderTest planner;
            PlannerStore &store = planner.start();
            store.generations().start(version);
            RandomUser user(store, static_cast<quint64>(history));
            RecordGenerator random(static_cast<quint64>(history));
            QHash<QString, PlannerState> states;
            const auto note = [&](const PlannerState &state) {
                for (const Generation &generation : planner.backups.list()) {
                    if (!states.contains(generationFileName(generation)))
                        states.insert(generationFileName(generation), promised(state));
                }
            };
            for (int act = 0; act < 40; ++act) {
                const PlannerState before = store.state();
                user.act();
                note(before); // Restore points.
                if (random.happens(0.2))
                    planner.clock.advance(hour + minute);
                note(store.state());
            }
            for (int i = 0; i < 3; ++i) {
                QList<Generation> generations = planner.backups.list();
                generations.removeIf([&](const Generation &one) { return !states.contains(generationFileName(one)); });
                const Generation &generation = generations.at(random.below(generations.size()));
                const PlannerState before = promised(store.state());
                restoreAll(store, generation);
                const StateChange left = restoration(store.state(), states.value(generationFileName(generation)));
                const QList<DifferenceRow> rows = differenceRows(left);
                QVERIFY2(rows.isEmpty(),
                         qPrintable(rows.isEmpty() ? QString() : rows.constFirst().title + rows.constFirst().key));
                QCOMPARE(promised(store.state()), states.value(generationFileName(generation)));
                // What changes nothing is no step.
                if (promised(store.state()) != before && random.happens(0.5)) {
                    store.undo();
                    QCOMPARE(promised(store.state()), before);
                }
                ++restored;
            }
        }
        qInfo("%d histories, %d restores", histories, restored);
    }

    void aRestoreIsPrecededByARestorePointAndUndoneInOneStep()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.startInEnglish();
        store.generations().start(version);
        store.addGoal({.title = QStringLiteral("a")});
        store.addReminder({.title = QStringLiteral("b")});
        planner.clock.advance(minute);
        const Generation generation = planner.backups.list().constFirst();
        store.clearPersonalContent();
        store.addGoal({.title = QStringLiteral("c")});

        restoreAll(store, generation);

        QCOMPARE(store.goals().size(), 1);
        QCOMPARE(store.goals().constFirst().title, QStringLiteral("a"));
        QCOMPARE(store.reminders().size(), 1);
        QCOMPARE(reasons(planner).constFirst(), GenerationReason::Restore);
        store.undo();
        QCOMPARE(store.goals().constFirst().title, QStringLiteral("c"));
        QVERIFY(store.reminders().isEmpty());
    }

    void aRestorePointThatCannotBeKeptIsReportedAndHoldsNothingUp()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.startInEnglish();
        store.generations().start(version);
        store.addGoal({});
        planner.backups.failWith(Error{ErrorCode::StorageFull, {}});
        QStringList messages;
        connect(&store, &PlannerStore::calendarSyncMessageReported, &store, [&] { messages << planner.message(); });
        store.clearPersonalContent();
        QCOMPARE(messages.constFirst(), QStringLiteral("The restore point could not be kept: The disk is full."));
        QVERIFY(store.goals().isEmpty());
    }
};

TESSALY_TEST_MAIN(GenerationsTest)
#include "GenerationsTest.moc"
