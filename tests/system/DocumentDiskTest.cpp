#include "model/Uuid.h"
#include "platform/common/LocalFileSystem.h"
#include "platform/linux/XdgLoginItem.h"
#include "store/DocumentDrafts.h"
#include "store/DocumentFolder.h"
#include "tests/support/TestMain.h"
#include "tests/system/SmallDisk.h"

#include <QDir>
#include <QDirIterator>

#include <memory>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

/// Writes one file and answers whether it says that it did.
using Writing = std::function<bool()>;
/// Prepares a directory for writing this content there.
using Writer = std::function<Writing(FileSystem &files, const QString &directory, const QString &content)>;

const QUuid documentID = QUuid::createUuid();

Writing prepareText(FileSystem &files, const QString &directory, const QString &content)
{
    const auto folder = std::make_shared<DocumentFolder>(files, directory);
    [&] { QVERIFY(folder->write(documentID, u"before"_s)); }();
    return [=] { return bool(folder->write(documentID, content)); };
}

Writing prepareNewText(FileSystem &files, const QString &directory, const QString &content)
{
    const auto folder = std::make_shared<DocumentFolder>(files, directory);
    return [=] { return bool(folder->write(documentID, content)); };
}

Writing prepareDraft(FileSystem &files, const QString &directory, const QString &content)
{
    const auto drafts = std::make_shared<DocumentDrafts>(files, directory);
    DocumentDraft draft;
    [&] { QVERIFY(drafts->keep(documentID, draft)); }();
    draft.content = content;
    return [=] { return drafts->keep(documentID, draft); };
}

/// The version of another program is to stay beside ours, which replaces it.
Writing prepareForeignVersion(FileSystem &files, const QString &directory, const QString &content)
{
    const auto folder = std::make_shared<DocumentFolder>(files, directory);
    [&] { QVERIFY(folder->write(documentID, u"before"_s)); }();
    [&] { QVERIFY(files.write(folder->documentPath(documentID), content.toUtf8() + '\n')); }();
    return [=] { return bool(folder->write(documentID, u"ours"_s)); };
}

Writing preparePicture(FileSystem &files, const QString &directory, const QString &content)
{
    const auto elsewhere = std::make_shared<QTemporaryDir>();
    const QString source = elsewhere->filePath(u"picture.png"_s);
    [&] { QVERIFY(files.write(source, content.toUtf8())); }();
    const auto folder = std::make_shared<DocumentFolder>(files, directory);
    return [=] {
        return elsewhere->isValid() && folder->importImage(documentID, QUrl::fromLocalFile(source)).has_value();
    };
}

Writing prepareAutostartEntry(FileSystem &, const QString &directory, const QString &content)
{
    const auto before = std::make_shared<XdgLoginItem>(QStringList{u"before"_s}, directory);
    [&] { QVERIFY(before->setEnabled(true)); }();
    const auto item = std::make_shared<XdgLoginItem>(QStringList{u"tessaly"_s, content}, directory);
    return [=] { return item->setEnabled(true).hasValue(); };
}

/// What stands in the files below the directory, in no order of meaning.
QByteArrayList contents(const QString &directory)
{
    QByteArrayList found;
    for (QDirIterator files(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories); files.hasNext();) {
        QFile file(files.next());
        if (files.fileName() != SmallDisk::fillerName() && file.open(QIODevice::ReadOnly))
            found.append(file.readAll());
    }
    std::ranges::sort(found);
    return found;
}

} // namespace

/// Files on disks that fail. What stood there before stays, and once the disk is well again so does the new text.
class DocumentDiskTest : public QObject
{
    Q_OBJECT

    LocalFileSystem m_files;

private slots:
    void onAFullDiskAFileIsWrittenWholeOrNotAtAll_data()
    {
        QTest::addColumn<Writer>("prepare");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("freeBlocks");
        const QList<std::pair<const char *, Writer>> writers{
            {"text", prepareText},       {"new text", prepareNewText},
            {"draft", prepareDraft},     {"foreign version", prepareForeignVersion},
            {"picture", preparePicture}, {"autostart entry", prepareAutostartEntry}};
        for (const auto &[name, writer] : writers) {
            for (const int size : {0, 1, 500, 10'000, 100'000}) {
                for (const int freeBlocks : {0, 1, 2})
                    QTest::addRow("%s, %d bytes, %d blocks", name, size, freeBlocks) << writer << size << freeBlocks;
            }
        }
    }

    void onAFullDiskAFileIsWrittenWholeOrNotAtAll()
    {
        QFETCH(const Writer, prepare);
        QFETCH(const int, size);
        QFETCH(const int, freeBlocks);
        const QString content(size, u'x');
        const QTemporaryDir roomy;
        const Writing writingWithRoom = prepare(m_files, roomy.path(), content);
        QVERIFY(writingWithRoom());
        const QByteArrayList written = contents(roomy.path());
        qint64 neededBlocks = 0;
        for (const QByteArray &bytes : written)
            neededBlocks += (bytes.size() + SmallDisk::blockSize() - 1) / SmallDisk::blockSize();
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        const Writing writing = prepare(m_files, disk.directory(), content);
        const QByteArrayList before = contents(disk.directory());
        disk.fillBut(freeBlocks);

        const bool isWritten = writing();

        QCOMPARE(contents(disk.directory()), isWritten ? written : before);
        QCOMPARE(isWritten, neededBlocks <= freeBlocks);
    }

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
