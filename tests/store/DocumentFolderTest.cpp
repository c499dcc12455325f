#include "store/DocumentFolder.h"
#include "model/Uuid.h"
#include "platform/common/LocalFileSystem.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

class DocumentFolderTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_temporary;
    LocalFileSystem m_files;

    [[nodiscard]] QString newFolder() { return m_temporary.filePath(uuidText(QUuid::createUuid()) + u"/Documents"_s); }

private slots:
    void textComesBackAsItWasWritten()
    {
        DocumentFolder folder(m_files, newFolder());
        const QUuid id = QUuid::createUuid();
        QCOMPARE(folder.read(id).text, QString());

        QVERIFY(folder.write(id, u"# 标题\r\n\tcode 😀"_s));
        QCOMPARE(folder.read(id).text, u"# 标题\r\n\tcode 😀"_s);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{uuidText(id) + u".md"_s});

        folder.remove(id);
        QCOMPARE(folder.read(id).text, QString());
    }

    void aVersionFromElsewhereIsKeptBesideOurs_data()
    {
        QTest::addColumn<QByteArray>("foreign");
        QTest::addColumn<bool>("isOpened");
        QTest::newRow("text") << QByteArray("theirs") << false;
        QTest::newRow("not UTF-8") << QByteArray("th\xe9irs") << true;
        QTest::newRow("UTF-8 cut short") << QByteArray("their\xc3") << true;
    }

    void aVersionFromElsewhereIsKeptBesideOurs()
    {
        QFETCH(const QByteArray, foreign);
        QFETCH(const bool, isOpened);
        DocumentFolder folder(m_files, newFolder());
        const QUuid id = QUuid::createUuid();
        QVERIFY(folder.write(id, u"ours"_s));
        QVERIFY(m_files.write(folder.documentPath(id), foreign));

        if (isOpened)
            QCOMPARE(folder.read(id).text, QString());
        const QString kept = uuidText(id) + u" (changed elsewhere).md"_s;
        QCOMPARE(folder.write(id, u"ours, later"_s).keptVersion, kept);
        QCOMPARE(folder.write(id, u"ours, later still"_s).keptVersion, QString());

        QCOMPARE(folder.read(id).text, u"ours, later still"_s);
        QCOMPARE(m_files.read(folder.path() + u'/' + kept), foreign);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
    }

    void whyATextIsEmptyIsReported_data()
    {
        using State = DocumentText::State;
        using Step = std::function<void(const QString &path)>;
        QTest::addColumn<Step>("prepare");
        QTest::addColumn<State>("state");
        QTest::newRow("an empty file") << Step([](const QString &) {}) << State::Read;
        QTest::newRow("no file") << Step([](const QString &path) { QVERIFY(QFile::remove(path)); }) << State::Missing;
        QTest::newRow("no folder") << Step([](const QString &path) {
            QVERIFY(QFileInfo(path).dir().removeRecursively());
        }) << State::Unreadable;
        QTest::newRow("a folder of its name")
            << Step([](const QString &path) { QVERIFY(QFile::remove(path) && QDir().mkpath(path)); })
            << State::Unreadable;
        QTest::newRow("not UTF-8") << Step([this](const QString &path) { QVERIFY(m_files.write(path, "caf\xe9")); })
                                   << State::Unreadable;
    }

    void whyATextIsEmptyIsReported()
    {
        QFETCH(const std::function<void(const QString &)>, prepare);
        QFETCH(const DocumentText::State, state);
        DocumentFolder folder(m_files, newFolder());
        const QUuid id = QUuid::createUuid();
        QVERIFY(folder.write(id, QString()));
        prepare(folder.documentPath(id));
        QCOMPARE(folder.read(id).state, state);
        QCOMPARE(folder.read(id).text, QString());
    }

    void imagesGetNamesOfTheirOwnAndAnEncodedLink()
    {
        DocumentFolder folder(m_files, m_temporary.filePath(u"a (b) [c] 文/Documents"_s));
        const QString source = m_temporary.filePath(u"picture.JPG"_s);
        const QString bare = m_temporary.filePath(u"bare"_s);
        QVERIFY(m_files.write(source, "jpeg") && m_files.write(bare, "png"));
        const QUuid id = QUuid::createUuid();

        const std::optional<QString> first = folder.importImage(id, QUrl::fromLocalFile(source));
        const std::optional<QString> second = folder.importImage(id, QUrl::fromLocalFile(source));
        const std::optional<QString> third = folder.importImage(id, QUrl::fromLocalFile(bare));

        QVERIFY(first && second && third && *first != *second);
        QVERIFY(first->startsWith(u"file:///"_s) && first->endsWith(u".JPG"_s) && third->endsWith(u".png"_s));
        QVERIFY2(!first->contains(u'(') && !first->contains(u'[') && !first->contains(u' ') &&
                     !first->contains(u"文"_s),
                 qPrintable(*first));
        QCOMPARE(m_files.read(QUrl(*first).toLocalFile()), QByteArray("jpeg"));
        QCOMPARE(folder.importImage(id, QUrl(u"file:///missing.png"_s)), std::nullopt);
    }

    void movingTakesDocumentsAndPicturesAndOverwritesNothing()
    {
        DocumentFolder folder(m_files, newFolder());
        const QString oldPath = folder.path();
        const QString newPath = newFolder();
        const MarkdownDocument moved;
        const MarkdownDocument there;
        QVERIFY(folder.write(moved.id, u"moved"_s) && folder.write(there.id, u"old"_s));
        const QString foreign = u'/' + uuidText(moved.id) + u" (changed elsewhere 2).md"_s;
        QVERIFY(m_files.write(oldPath + foreign, "theirs"));
        QVERIFY(m_files.makeFolder(newPath) && m_files.write(newPath + u'/' + uuidText(there.id) + u".md"_s, "new"));
        QVERIFY(m_files.makeFolder(oldPath + u"/Assets/deep/er"_s) && m_files.makeFolder(newPath + u"/Assets/deep"_s));
        for (const QString &picture : {u"a.png"_s, u"deep/b.png"_s, u"deep/er/c.png"_s})
            QVERIFY(m_files.write(oldPath + u"/Assets/"_s + picture, "old"));
        QVERIFY(m_files.write(newPath + u"/Assets/deep/b.png"_s, "new"));

        QCOMPARE(folder.moveTo(newPath, {moved, there, MarkdownDocument()}), DocumentsMove::Done);

        QCOMPARE(folder.read(moved.id).text, u"moved"_s);
        QCOMPARE(folder.read(there.id).text, u"new"_s);
        QCOMPARE(m_files.read(newPath + u"/Assets/a.png"_s), QByteArray("old"));
        QCOMPARE(m_files.read(newPath + u"/Assets/deep/er/c.png"_s), QByteArray("old"));
        QCOMPARE(m_files.read(newPath + u"/Assets/deep/b.png"_s), QByteArray("new"));
        QCOMPARE(m_files.filesBeneath(oldPath + u"/Assets"_s), QStringList{u"deep/b.png"_s});
        QCOMPARE(m_files.read(newPath + foreign), QByteArray("theirs"));
        QCOMPARE(m_files.read(oldPath + u'/' + uuidText(there.id) + u".md"_s), QByteArray("old"));
        QVERIFY(!m_files.exists(oldPath + u'/' + uuidText(moved.id) + u".md"_s));
    }

    void aFolderWhereDocumentsWouldBeLostIsRefused_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<DocumentsMove>("outcome");
        QTest::newRow("of the pictures") << u"Assets"_s << DocumentsMove::RefusedWithinAssets;
        QTest::newRow("within it") << u"Assets/new/one"_s << DocumentsMove::RefusedWithinAssets;
        QTest::newRow("by another name") << u"link"_s << DocumentsMove::RefusedWithinAssets;
        QTest::newRow("within it by another name") << u"link/new"_s << DocumentsMove::RefusedWithinAssets;
        QTest::newRow("a file") << u"file"_s << DocumentsMove::RefusedUnusable;
        QTest::newRow("beneath a file") << u"file/new"_s << DocumentsMove::RefusedUnusable;
        QTest::newRow("one of a like name") << u"Assets 2"_s << DocumentsMove::Done;
    }

    void aFolderWhereDocumentsWouldBeLostIsRefused()
    {
        QFETCH(const QString, chosen);
        QFETCH(const DocumentsMove, outcome);
        DocumentFolder folder(m_files, newFolder());
        const QString path = folder.path();
        const MarkdownDocument document;
        QVERIFY(folder.write(document.id, u"text"_s) && m_files.makeFolder(path + u"/Assets"_s));
        QVERIFY(m_files.write(path + u"/Assets/a.png"_s, "a") && m_files.write(path + u"/file"_s, "b"));
        QVERIFY(QFile::link(path + u"/Assets"_s, path + u"/link"_s));

        QCOMPARE(folder.moveTo(path + u'/' + chosen, {document}), outcome);

        QCOMPARE(folder.read(document.id).text, u"text"_s);
        QVERIFY(m_files.exists(folder.path() + u"/Assets/a.png"_s));
        QCOMPARE(folder.path() == path, outcome != DocumentsMove::Done);
        QCOMPARE(m_files.fileNames(path + u"/Assets"_s).isEmpty(), outcome == DocumentsMove::Done);
        QVERIFY(!m_files.exists(path + u"/Assets/new"_s));
    }

    void aFolderMovesBesideTheOneOfItsPictures()
    {
        // Both folders are called "Assets" here: that of the documents, and the new one of the pictures.
        DocumentFolder folder(m_files, newFolder() + u"/Assets"_s);
        const QString parent = QFileInfo(folder.path()).path();
        const MarkdownDocument document;
        QVERIFY(folder.write(document.id, u"text"_s) && m_files.makeFolder(folder.path() + u"/Assets"_s));
        QVERIFY(m_files.write(folder.path() + u"/Assets/a.png"_s, "a"));

        QCOMPARE(folder.moveTo(parent, {document}), DocumentsMove::Done);

        QCOMPARE(m_files.fileNames(parent), QStringList{uuidText(document.id) + u".md"_s});
        QCOMPARE(m_files.fileNames(parent + u"/Assets"_s), QStringList{u"a.png"_s});
    }

    void whatCannotBeFoundOrMovedIsReported()
    {
        DocumentFolder folder(m_files, newFolder());
        const QString oldPath = folder.path();
        const MarkdownDocument document;
        QVERIFY(folder.write(document.id, u"text"_s));
        QVERIFY(QDir(oldPath).removeRecursively());
        QCOMPARE(folder.moveTo(newFolder(), {document}), DocumentsMove::Incomplete);
        QCOMPARE(folder.moveTo(newFolder(), {document}), DocumentsMove::Done);
    }

    void aFileMovesToAnotherDevice()
    {
        const QTemporaryDir other(u"/dev/shm/tessaly-XXXXXX"_s);
        if (!other.isValid())
            QSKIP("there is no second file system to move to");
        const QString from = m_temporary.filePath(u"cross"_s);
        QVERIFY(m_files.write(from, "text"));
        QVERIFY(m_files.move(from, other.filePath(u"cross"_s)));
        QCOMPARE(m_files.read(other.filePath(u"cross"_s)), QByteArray("text"));
        QVERIFY(!m_files.exists(from));
    }
};

TESSALY_TEST_MAIN(DocumentFolderTest)
#include "DocumentFolderTest.moc"
