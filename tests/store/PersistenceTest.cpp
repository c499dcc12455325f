#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

#include <limits>

using namespace tessaly;

namespace {

const Error diskFull{ErrorCode::StorageFull};

} // namespace

class PersistenceTest : public QObject
{
    Q_OBJECT

private slots:
    void theBackupIsOneSaveBehind()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();

        store.addGoal({.title = QStringLiteral("one")});
        QVERIFY(!planner.saved(keys::backupStorageKey));
        store.addReminder({.title = QStringLiteral("two")});
        QCOMPARE(planner.saved(keys::backupStorageKey)->goals, store.goals());
        QVERIFY(planner.saved(keys::backupStorageKey)->reminders.isEmpty());
        store.addSchedule(scheduleTitled(QStringLiteral("three")));
        QCOMPARE(planner.saved(keys::backupStorageKey)->reminders, store.reminders());
        QCOMPARE(planner.saved(), (SavedData{store.schedules(), store.reminders(), store.goals()}));
    }

    void everyChangeIsThereAfterARestart()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        const ScheduleItem first = scheduleTitled(QStringLiteral("first"));
        ScheduleItem second = scheduleTitled(QStringLiteral("second"), 0.1 + 0.2);
        store.addSchedule(first);
        store.addSchedule(second);
        second.notes = QStringLiteral("“quoted”\n\\ 🙂");
        store.updateSchedule(second);
        store.deleteSchedule(first);

        QCOMPARE(planner.start().schedules(), QList{second});
    }

    void whatHasNoJsonFormIsNotSaved()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        const Goal good{.title = QStringLiteral("good")};
        store.addGoal(good);
        const int writes = planner.preferences.writeCount();

        store.addGoal({.title = QStringLiteral("bad"), .progress = std::numeric_limits<double>::quiet_NaN()});

        QCOMPARE(planner.preferences.writeCount(), writes);
        QCOMPARE(planner.saved()->goals, QList{good});
        QVERIFY(!store.calendarSyncMessage());
        QVERIFY(!store.hasUnsavedChanges());
    }

    void aFailedSaveIsReportedAndTheNextOneSavesEverything_data()
    {
        QTest::addColumn<bool>("isEnglish");
        QTest::addColumn<QString>("failed");
        QTest::addColumn<QString>("recovered");

        QTest::newRow("zh") << false << "无法保存更改：磁盘空间不足。"
                            << "更改已全部保存。";
        QTest::newRow("en") << true << "Could not save changes: The disk is full."
                            << "All changes are saved now.";
    }

    void aFailedSaveIsReportedAndTheNextOneSavesEverything()
    {
        QFETCH(const bool, isEnglish);
        StoreUnderTest planner;
        planner.put(keys::interfaceLanguage, isEnglish ? QStringLiteral("en") : QStringLiteral("zh"));
        PlannerStore &store = planner.start();
        QSignalSpy announced(&store, &PlannerStore::goalsChanged);

        planner.preferences.failWritesWith(diskFull);
        store.addGoal({.title = QStringLiteral("one")});
        store.setPreferredName(QStringLiteral("Ada"));
        QCOMPARE(announced.count(), 1);
        QTEST(planner.message(), "failed");
        QVERIFY(store.hasUnsavedChanges());

        planner.preferences.failWritesWith(std::nullopt);
        store.addReminder({.title = QStringLiteral("two")});
        QVERIFY(!store.hasUnsavedChanges());
        QTEST(planner.message(), "recovered");
        QCOMPARE(planner.saved(), (SavedData{{}, store.reminders(), store.goals()}));
        QCOMPARE(planner.preferences.get<QString>(keys::preferredName), QStringLiteral("Ada"));
    }

    void aMessageThatHidAFailedSaveDoesNotHideItForLong()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        store.addGoal({.title = QStringLiteral("goal")});
        planner.preferences.failWritesWith(diskFull);

        store.clearPersonalContent();
        QVERIFY(planner.message().startsWith(QStringLiteral("已清空")));
        store.retryUnsavedChanges();
        QVERIFY(planner.message().startsWith(QStringLiteral("无法保存更改")));
    }

    void whatIsUnsavedAtTheEndIsTriedOnceMore()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        planner.preferences.failWritesWith(diskFull);
        store.addGoal({.title = QStringLiteral("late")});

        planner.preferences.failWritesWith(std::nullopt);
        planner.store.reset();

        QCOMPARE(planner.saved()->goals.constFirst().title, QStringLiteral("late"));
    }

    void aSaveThatFailsForeverBuriesNothing()
    {
        StoreUnderTest planner;
        planner.put(keys::storageKey, QByteArray("damaged"));
        PlannerStore &store = planner.start();
        planner.preferences.failWritesWith(diskFull);

        store.addGoal({.title = QStringLiteral("new")});

        QCOMPARE(planner.preferences.get<QByteArray>(keys::storageKey), QByteArray("damaged"));
        planner.preferences.failWritesWith(std::nullopt);
        store.retryUnsavedChanges();
        QCOMPARE(planner.saved()->goals.size(), 1);
        QCOMPARE(planner.preferences.get<QByteArray>(keys::storageKey + QStringLiteral("-unreadable-20260528T202640Z")),
                 QByteArray("damaged"));
    }

    void aFailedWriteIsRetriedAutomatically()
    {
        using namespace std::chrono_literals;
        FakePorts fakes;
        const PlannerPorts ports = fakes.ports();
        StoredValues values(ports, 1ms);
        QSignalSpy failed(&values, &StoredValues::failed);
        QSignalSpy recovered(&values, &StoredValues::recovered);
        int failuresLeft = 3;
        int written = 0;

        values.saveBlob(QStringLiteral("a"), [&]() -> Result<void> {
            if (failuresLeft-- > 0)
                return diskFull;
            ++written;
            return {};
        });
        QVERIFY(values.hasUnsaved());

        QVERIFY(recovered.wait());
        QCOMPARE(failed.count(), 3);
        QCOMPARE(written, 1);
        QVERIFY(!values.hasUnsaved());
    }
};

TESSALY_TEST_MAIN(PersistenceTest)
#include "PersistenceTest.moc"
