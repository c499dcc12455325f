#include "model/Uuid.h"
#include "platform/common/LocalFileSystem.h"
#include "store/DocumentFolder.h"
#include "tests/support/TestMain.h"
#include "tests/system/SmallDisk.h"

#include <QDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

/// Documents on disks that fail. What stood there before stays, and once the disk is well again so does the new text.
class DocumentDiskTest : public QObject
{
    Q_OBJECT

    LocalFileSystem m_files;

private slots:
    void aDiskThatFailsLeavesTheFormerText_data()
    {
        using Step = std::function<void(const SmallDisk &)>;
        QTest::addColumn<Step>("breakDisk");
        QTest::addColumn<Step>("mend");
        QTest::newRow("full") << Step([](const SmallDisk &disk) { disk.fill(); })
                              << Step([](const SmallDisk &disk) { disk.makeRoom(); });
        QTest::newRow("read-only") << Step([](const SmallDisk &disk) { QVERIFY(disk.remount(MS_RDONLY)); })
                                   << Step([](const SmallDisk &disk) { QVERIFY(disk.remount(0)); });
    }

    void aDiskThatFailsLeavesTheFormerText()
    {
        QFETCH(const std::function<void(const SmallDisk &)>, breakDisk);
        QFETCH(const std::function<void(const SmallDisk &)>, mend);
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        DocumentFolder folder(m_files, disk.directory() + u"/Documents"_s);
        const QUuid id = QUuid::createUuid();
        QVERIFY(folder.write(id, u"before"_s));
        const QString long100K(100'000, u'x');
        breakDisk(disk);

        QVERIFY(!folder.write(id, long100K));
        QVERIFY(!folder.write(QUuid::createUuid(), long100K));
        QVERIFY(!folder.importImage(id, QUrl::fromLocalFile(QCoreApplication::applicationFilePath())));
        QCOMPARE(folder.read(id).text, u"before"_s);
        // No part of a file is left lying.
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{uuidText(id) + u".md"_s});

        mend(disk);
        QVERIFY(folder.write(id, long100K));
        QCOMPARE(folder.read(id).text, long100K);
    }

    void movingToADiskThatIsFullLeavesWhatDoesNotFit()
    {
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        const QTemporaryDir other;
        DocumentFolder folder(m_files, other.filePath(u"Documents"_s));
        const MarkdownDocument fits;
        const MarkdownDocument large;
        QVERIFY(folder.write(fits.id, u"small"_s) && folder.write(large.id, QString(9'000'000, u'x')));
        const QString oldLarge = folder.documentPath(large.id);

        QCOMPARE(folder.moveTo(disk.directory() + u"/new"_s, {large, fits}), DocumentsMove::Incomplete);

        QCOMPARE(folder.read(fits.id).text, u"small"_s);
        QCOMPARE(folder.read(large.id).text, QString());
        QCOMPARE(QFileInfo(oldLarge).size(), 9'000'000);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void aFolderWithoutTheRightToWriteLeavesTheFormerText()
    {
        const QTemporaryDir directory;
        DocumentFolder folder(m_files, directory.path());
        const QUuid id = QUuid::createUuid();
        QVERIFY(folder.write(id, u"before"_s));
        QVERIFY(QFile::setPermissions(directory.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                            QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup));
        {
            const OrdinaryUser user;
            if (!user.isOrdinary())
                QSKIP("root cannot give up its rights here");
            QVERIFY(!folder.write(id, u"after"_s));
            QVERIFY(!folder.canWrite());
            // It is there as it is to be.
            QVERIFY(folder.write(id, u"before"_s));
            folder.remove(id);
            DocumentFolder other(m_files, directory.path() + u"/Other"_s);
            for (const QString &refused : {directory.path(), directory.path() + u"/new"_s})
                QCOMPARE(other.moveTo(refused, {}), DocumentsMove::RefusedUnusable);
            QCOMPARE(other.path(), directory.path() + u"/Other"_s);
        }
        QCOMPARE(folder.read(id).text, u"before"_s);
        QVERIFY(QFile::setPermissions(directory.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
};

int main(int argc, char *argv[])
{
    leaveSharedMounts();
    fixTestEnvironment();
    QCoreApplication application(argc, argv);
    DocumentDiskTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DocumentDiskTest.moc"
