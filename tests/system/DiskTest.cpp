#include "model/RecordCodec.h"
#include "platform/common/SqliteBackups.h"
#include "store/PreferenceKeys.h"
#include "tests/support/TestMain.h"
#include "tests/system/SmallDisk.h"
#include "tests/system/StoreOnDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace tessaly;

namespace {

struct State
{
    SavedData data;
    QList<WaitingReminder> waiting;

    bool operator==(const State &) const = default;
};

State state(PlannerStore &store)
{
    return {{store.schedules(), store.reminders(), store.goals()}, store.waitingReminders().list()};
}

/// What a start would find if the process ended now.
State stateOnDisk(const QString &directory)
{
    const QTemporaryDir copy;
    for (const QString &file : QDir(directory).entryList({SqlitePreferences::fileName + u'*'}, QDir::Files))
        QFile::copy(QDir(directory).filePath(file), copy.filePath(file));
    StoreOnDisk planner(SqlitePreferences::open(copy.path()).takeValue());
    return state(planner.store());
}

Goal bigGoal(const QString &title)
{
    return {.title = title, .summary = QString(100'000, u'x')};
}

} // namespace

class DiskTest : public QObject
{
    Q_OBJECT

private slots:
    void aFullDiskLosesNothing()
    {
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        StoreOnDisk planner(SqlitePreferences::open(disk.directory()).takeValue());
        PlannerStore &store = planner.store();
        store.setInterfaceLanguage(AppLanguage::English);
        store.addGoal(bigGoal(QStringLiteral("saved")));
        const State saved = state(store);
        disk.fill();

        for (int number = 0; number < 5; ++number)
            store.addGoal(bigGoal(QString::number(number)));
        store.addReminder({.title = QStringLiteral("due"), .dueDate = store.clock().now().plus(3600)});
        store.setPreferredName(QStringLiteral("Ada"));

        QVERIFY(store.hasUnsavedChanges());
        QCOMPARE(store.goals().size(), 6);
        QCOMPARE(store.waitingReminders().list().size(), 1);
        QVERIFY2(store.calendarSyncMessage()->startsWith(QStringLiteral("Could not save changes: The disk is full")),
                 qPrintable(*store.calendarSyncMessage()));
        QCOMPARE(stateOnDisk(disk.directory()), saved);

        disk.makeRoom();
        QTRY_VERIFY_WITH_TIMEOUT(!store.hasUnsavedChanges(), 15000);
        QCOMPARE(stateOnDisk(disk.directory()), state(store));
        QCOMPARE(planner.preferences().get<QString>(keys::preferredName), QStringLiteral("Ada"));
        QCOMPARE(store.calendarSyncMessage(), QStringLiteral("All changes are saved now."));
    }

    void aPlannerStartsOnAFullDisk()
    {
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        StoreOnDisk(SqlitePreferences::open(disk.directory()).takeValue())
            .store()
            .addGoal(bigGoal(QStringLiteral("a")));
        disk.fill();

        StoreOnDisk planner(SqlitePreferences::open(disk.directory()).takeValue());
        QCOMPARE(planner.store().goals().size(), 1);
        planner.store().addGoal(bigGoal(QStringLiteral("b")));
        QVERIFY(planner.store().hasUnsavedChanges());
        disk.makeRoom();
        planner.store().retryUnsavedChanges();
        QCOMPARE(stateOnDisk(disk.directory()), state(planner.store()));
    }

    void aFirstStartOnAFullDiskIsAnError()
    {
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        disk.fill();

        const auto opened = SqlitePreferences::open(disk.directory());
        QVERIFY(!opened.hasValue());
        QCOMPARE(opened.error().code, ErrorCode::StorageFull);
        disk.makeRoom();
        QVERIFY(SqlitePreferences::open(disk.directory()).hasValue());
    }

    void aFullDiskLeavesNoHalfGeneration_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("freeBlocks");
        for (const int size : {0, 1, 500, 10'000, 100'000, 1'000'000}) {
            for (const int freeBlocks : {0, 1, 2, 8, 16, 24, 40, 100})
                QTest::addRow("%d bytes, %d blocks", size, freeBlocks) << size << freeBlocks;
        }
    }

    void aFullDiskLeavesNoHalfGeneration()
    {
        QFETCH(const int, size);
        QFETCH(const int, freeBlocks);
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        const auto preferences = SqlitePreferences::open(disk.directory()).takeValue();
        QVERIFY(preferences->setValue(keys::storageKey, QByteArray(size, 'x')));
        disk.fillBut(freeBlocks);
        {
            SqliteBackups backups(disk.directory());
            std::optional<Result<Generation>> kept;
            backups.keep({.moment = Instant::fromUnixSeconds(1'795'341'600), .reason = GenerationReason::Clear},
                         [&](const Result<Generation> &result) { kept = result; });
            QTRY_VERIFY(kept);
            if (*kept) {
                QVERIFY(backups.check(kept->value()));
            } else {
                QCOMPARE(kept->error().code, ErrorCode::StorageFull);
                QVERIFY(QDir(SqliteBackups::folderIn(disk.directory())).entryList(QDir::Files).isEmpty());
            }
        }
        disk.makeRoom();
        QCOMPARE(preferences->get<QByteArray>(keys::storageKey), QByteArray(size, 'x'));
        QVERIFY(preferences->setValue(keys::storageKey, QByteArray("y")));
    }

    void aFullDiskLeavesTheDatabaseThatAGenerationWasToReplace()
    {
        for (const int freeBlocks : {0, 1, 2, 8, 16}) {
            const SmallDisk disk;
            if (!disk.isMounted())
                QSKIP("a file system can be mounted neither as root nor in a user namespace");
            SqliteBackups backups(disk.directory());
            {
                const auto preferences = SqlitePreferences::open(disk.directory()).takeValue();
                QVERIFY(preferences->setValue(keys::storageKey, QByteArray(100'000, 'x')));
                std::optional<bool> isKept;
                backups.keep({.moment = Instant::fromUnixSeconds(1'795'341'600)},
                             [&](const Result<Generation> &result) { isKept = result.hasValue(); });
                QTRY_VERIFY(isKept);
                QVERIFY(*isKept);
            }
            disk.fillBut(freeBlocks);
            const Result<void> put = backups.putBack(backups.list().constFirst(), Instant());
            QVERIFY(!put);
            QCOMPARE(put.error().code, ErrorCode::StorageFull);
            const auto preferences = SqlitePreferences::open(disk.directory());
            QVERIFY(preferences);
            QCOMPARE(preferences.value()->get<QByteArray>(keys::storageKey), QByteArray(100'000, 'x'));
        }
    }

    void aReadOnlyFileSystemIsAnErrorAndTouchesNothing()
    {
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        StoreOnDisk(SqlitePreferences::open(disk.directory()).takeValue())
            .store()
            .addGoal(bigGoal(QStringLiteral("a")));
        QVERIFY(disk.remount(MS_RDONLY));

        const auto opened = SqlitePreferences::open(disk.directory());
        QVERIFY(!opened.hasValue());
        QCOMPARE(opened.error().code, ErrorCode::StorageUnwritable);

        QVERIFY(disk.remount(0));
        QCOMPARE(stateOnDisk(disk.directory()).data.goals.size(), 1);
    }

    void withoutTheRightToWriteOpeningIsAnError_data()
    {
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<int>("directoryMode");
        QTest::addColumn<int>("fileMode");

        constexpr int readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        constexpr int writable = readable | QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
        constexpr int searchable = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
        QTest::newRow("directory, first start") << false << (readable | searchable) << 0;
        QTest::newRow("directory") << true << (readable | searchable) << writable;
        QTest::newRow("file") << true << (writable | searchable) << readable;
        QTest::newRow("file not even readable") << true << (writable | searchable) << 0;
    }

    void withoutTheRightToWriteOpeningIsAnError()
    {
        QFETCH(const bool, hasFile);
        QFETCH(const int, directoryMode);
        QFETCH(const int, fileMode);
        const QTemporaryDir directory;
        const QString file = directory.filePath(SqlitePreferences::fileName);
        if (hasFile) {
            StoreOnDisk(SqlitePreferences::open(directory.path()).takeValue()).store().addGoal({});
            QVERIFY(QFile::setPermissions(file, QFile::Permissions(fileMode)));
        }
        QVERIFY(QFile::setPermissions(directory.path(), QFile::Permissions(directoryMode)));

        {
            const OrdinaryUser user;
            if (!user.isOrdinary())
                QSKIP("root cannot give up its rights here");
            const auto opened = SqlitePreferences::open(directory.path());
            QVERIFY(!opened.hasValue());
            QCOMPARE(opened.error().code, ErrorCode::StorageUnwritable);
        }

        QVERIFY(QFile::setPermissions(directory.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        if (hasFile) {
            QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
            QCOMPARE(stateOnDisk(directory.path()).data.goals.size(), 1);
        }
    }
};

int main(int argc, char *argv[])
{
    leaveSharedMounts();
    fixTestEnvironment();
    QCoreApplication application(argc, argv);
    DiskTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DiskTest.moc"
