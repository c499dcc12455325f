#include "model/RecordCodec.h"
#include "store/PreferenceKeys.h"
#include "tests/support/TestMain.h"
#include "tests/system/StoreOnDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace tessaly;

namespace {

/// A small file system of the test's own, seen by no other process.
class SmallDisk
{
public:
    SmallDisk() { m_isMounted = mount("tessaly", path().constData(), "tmpfs", 0, "size=8m") == 0; }
    ~SmallDisk()
    {
        if (m_isMounted)
            umount2(path().constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isMounted() const { return m_isMounted; }
    [[nodiscard]] QString directory() const { return m_directory.path(); }
    [[nodiscard]] bool remount(unsigned long flags) const
    {
        return mount("tessaly", path().constData(), "tmpfs", MS_REMOUNT | flags, "size=8m") == 0;
    }

    /// Writes until not a byte is left.
    void fill() const
    {
        QFile filler(fillerPath());
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        for (qint64 size : {65536, 4096, 1}) {
            while (filler.write(QByteArray(size, 'x')) == size) {
            }
        }
    }
    void makeRoom() const { QVERIFY(QFile::remove(fillerPath())); }

private:
    [[nodiscard]] QByteArray path() const { return m_directory.path().toLocal8Bit(); }
    [[nodiscard]] QString fillerPath() const { return m_directory.filePath(QStringLiteral("filler")); }

    QTemporaryDir m_directory;
    bool m_isMounted = false;
};

SavedData state(const PlannerStore &store)
{
    return {store.schedules(), store.reminders(), store.goals()};
}

/// What a start would find if the process ended now.
SavedData stateOnDisk(const QString &directory)
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

/// Acts as a user without the rights of root while it lives.
class OrdinaryUser
{
public:
    OrdinaryUser() { m_isOrdinary = geteuid() != 0 || seteuid(65534) == 0; }
    ~OrdinaryUser()
    {
        if (seteuid(getuid()) != 0)
            qFatal("cannot become the former user again");
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;
    [[nodiscard]] bool isOrdinary() const { return m_isOrdinary; }

private:
    bool m_isOrdinary = false;
};

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
        const SavedData saved = state(store);
        disk.fill();

        for (int number = 0; number < 5; ++number)
            store.addGoal(bigGoal(QString::number(number)));
        store.setPreferredName(QStringLiteral("Ada"));

        QVERIFY(store.hasUnsavedChanges());
        QCOMPARE(store.goals().size(), 6);
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
        QCOMPARE(stateOnDisk(disk.directory()).goals.size(), 1);
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
            QCOMPARE(stateOnDisk(directory.path()).goals.size(), 1);
        }
    }
};

namespace {

/// Gives the process a view of the mounts of its own, as root or in a user namespace. Must run before threads start.
void leaveSharedMounts()
{
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return;
    mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
}

} // namespace

int main(int argc, char *argv[])
{
    leaveSharedMounts();
    fixTestEnvironment();
    QCoreApplication application(argc, argv);
    DiskTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DiskTest.moc"
