#include "model/Uuid.h"
#include "tests/support/TestMain.h"
#include "tests/system/PlannerOnDisk.h"
#include "tests/system/SmallDisk.h"

#include <QDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

using Step = void (*)(PlannerStore &);

/// What a planner of its own finds: the texts that can be read in the window, and those that can be restored.
QStringList found(const QString &directory)
{
    const auto planner = PlannerOnDisk::open(directory);
    if (!planner)
        return {u"nothing can be opened"_s};
    planner->store().start();
    DocumentLibrary &library = planner->store().documentLibrary();
    const QList<DeletedDocument> deleted = library.deletedDocuments();
    for (const DeletedDocument &document : deleted)
        library.restoreDocument(document.id);
    QStringList texts;
    for (const MarkdownDocument &document : library.documents()) {
        const bool hasPicture =
            QDir(directory + u"/Documents/Assets"_s).exists(uuidText(document.id) + u"-picture.png"_s);
        texts.append(library.readDocument(document).text + (hasPicture ? u" with its picture"_s : QString()));
    }
    texts.sort();
    return texts;
}

} // namespace

// Documents are deleted and brought back on a disk that is full: no text and no picture gets lost, neither in the
// running planner nor in one that starts after a crash.
class DeletedDocumentsDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsLost_data()
    {
        QTest::addColumn<Step>("step");
        QTest::addColumn<int>("freeBlocks");
        const Step removeOne = [](PlannerStore &store) {
            store.documentLibrary().deleteDocument(store.documentLibrary().documents().constFirst());
        };
        const Step restoreOne = [](PlannerStore &store) {
            store.documentLibrary().restoreDocument(store.documentLibrary().deletedDocuments().constFirst().id);
        };
        const Step undo = [](PlannerStore &store) { store.undo(); };
        const Step restoreState = [](PlannerStore &store) {
            StateChange change;
            const MarkdownDocument &document = store.documentLibrary().documents().constFirst();
            change.documents.append({.id = document.id, .row = 0, .before = document, .after = {}});
            (void)store.restore(change);
        };
        for (const int blocks : {0, 1, 2, 8}) {
            QTest::addRow("delete, %d blocks", blocks) << removeOne << blocks;
            QTest::addRow("restore, %d blocks", blocks) << restoreOne << blocks;
            QTest::addRow("undo a deletion, %d blocks", blocks) << undo << blocks;
            QTest::addRow("restore an earlier state, %d blocks", blocks) << restoreState << blocks;
        }
    }

    void nothingIsLost()
    {
        QFETCH(const Step, step);
        QFETCH(const int, freeBlocks);
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("a file system can be mounted neither as root nor in a user namespace");
        auto planner = PlannerOnDisk::open(disk.directory());
        QVERIFY(planner);
        PlannerStore &store = planner->store();
        store.start();
        QStringList texts;
        for (const QString &title : {u"one"_s, u"two"_s, u"three"_s}) {
            const MarkdownDocument document = *store.documentLibrary().addDocument(title, std::nullopt);
            QVERIFY(LocalFileSystem().makeFolder(disk.directory() + u"/Documents/Assets"_s));
            QVERIFY(LocalFileSystem().write(
                disk.directory() + u"/Documents/Assets/"_s + uuidText(document.id) + u"-picture.png"_s, "picture"));
            texts.append(u"# "_s + title + u"\n with its picture"_s);
        }
        texts.sort();
        store.documentLibrary().deleteDocument(store.documentLibrary().documents().constLast());
        disk.fillBut(freeBlocks);

        step(store);

        QTemporaryDir crashed;
        copyTo(crashed.path(), disk.directory());
        QCOMPARE(found(crashed.path()), texts);

        disk.makeRoom();
        // Quitting saves what could not be saved before.
        planner.reset();
        QTemporaryDir later;
        copyTo(later.path(), disk.directory());
        QCOMPARE(found(later.path()), texts);
    }

private:
    /// But what fills the disk.
    static void copyTo(const QString &target, const QString &directory)
    {
        LocalFileSystem files;
        for (const QString &name : files.filesBeneath(directory)) {
            const QString copy = target + u'/' + name;
            QVERIFY(files.makeFolder(QFileInfo(copy).path()));
            if (name != SmallDisk::fillerName())
                QVERIFY(files.copy(directory + u'/' + name, copy));
        }
    }
};

int main(int argc, char *argv[])
{
    fixTestEnvironment();
    leaveSharedMounts();
    QGuiApplication application(argc, argv);
    DeletedDocumentsDiskTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DeletedDocumentsDiskTest.moc"
