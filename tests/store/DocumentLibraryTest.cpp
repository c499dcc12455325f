#include "store/DocumentLibrary.h"
#include "platform/common/LocalFileSystem.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include "model/Uuid.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

/// The documents of a planner whose files are real.
class Library : public FakePorts
{
public:
    QTemporaryDir temporary;

    Library() { start(); }

    void start()
    {
        m_store.reset();
        m_store = std::make_unique<PlannerStore>(portsOver(m_files, path(u"Documents"_s)));
    }

    DocumentLibrary *operator->() { return &m_store->documentLibrary(); }

    [[nodiscard]] QString path(const QString &name) const { return temporary.filePath(name); }
    [[nodiscard]] QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }
    QUrl put(const QString &name, const QByteArray &bytes)
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        m_files.write(path(name), bytes);
        return url(name);
    }
    [[nodiscard]] QStringList titles()
    {
        QStringList titles;
        for (const MarkdownDocument &document : m_store->documentLibrary().documents())
            titles.append(document.title);
        return titles;
    }
    [[nodiscard]] QStringList filesIn(const QString &folder) const { return m_files.fileNames(path(folder)); }
    [[nodiscard]] std::optional<QByteArray> fileOf(const MarkdownDocument &document) const
    {
        return m_files.read(m_store->documentLibrary().documentSaveLocation() + u'/' + uuidText(document.id) +
                            u".md"_s);
    }
    /// What a start would find.
    [[nodiscard]] DocumentLibraryData saved() const
    {
        const auto blob = preferences.get<QByteArray>(keys::documentMetadataKey);
        return decodeDocumentLibrary(blob.value_or(QByteArray())).value_or(DocumentLibraryData());
    }
    [[nodiscard]] DocumentLibraryData shown() const
    {
        const DocumentLibrary &library = m_store->documentLibrary();
        const QList<DeletedDocument> deleted = library.deletedDocuments();
        return {library.documentCategories(), library.documents(),
                deleted.isEmpty() ? std::nullopt : std::optional(deleted)};
    }

private:
    LocalFileSystem m_files;
    std::unique_ptr<PlannerStore> m_store;
};

} // namespace

class DocumentLibraryTest : public QObject
{
    Q_OBJECT

private slots:
    void everyVerbSavesAndTellsWhatItChanged_data()
    {
        QTest::addColumn<std::function<void(Library &)>>("verb");
        QTest::addColumn<int>("categorySignals");
        QTest::addColumn<int>("documentSignals");
        const auto row = [](const char *name, int categories, int documents,
                            const std::function<void(Library &)> &verb) {
            QTest::newRow(name) << verb << categories << documents;
        };
        row("add category", 1, 0, [](Library &its) { its->addDocumentCategory(u" Notes\n"_s); });
        row("blank category", 0, 0, [](Library &its) { its->addDocumentCategory(u" \n\t"_s); });
        row("rename category", 1, 0,
            [](Library &its) { its->renameDocumentCategory(its->documentCategories().first().id, QString()); });
        row("delete category", 1, 1,
            [](Library &its) { its->deleteDocumentCategory(its->documentCategories().first().id); });
        row("delete empty category", 1, 0,
            [](Library &its) { its->deleteDocumentCategory(its->documentCategories().last().id); });
        row("add document", 0, 1, [](Library &its) { its->addDocument(u"Title"_s, {}); });
        row("blank document", 0, 0, [](Library &its) { its->addDocument(u"\r\n "_s, {}); });
        row("save", 0, 1, [](Library &its) { (void)its->saveDocument(its->documents().first(), u"text"_s); });
        row("rename", 0, 1, [](Library &its) { its->renameDocument(its->documents().first(), u" New "_s); });
        row("blank rename", 0, 0, [](Library &its) { its->renameDocument(its->documents().first(), u" "_s); });
        row("move to category", 0, 1, [](Library &its) {
            its->setDocumentCategory(its->documents().first(), its->documentCategories().last().id);
        });
        row("delete", 0, 1, [](Library &its) { its->deleteDocument(its->documents().first()); });
        row("unknown document", 0, 0, [](Library &its) {
            const MarkdownDocument gone;
            its->renameDocument(gone, u"x"_s);
            its->setDocumentCategory(gone, {});
            its->deleteDocument(gone);
        });
    }

    void everyVerbSavesAndTellsWhatItChanged()
    {
        QFETCH(const std::function<void(Library &)>, verb);
        QFETCH(const int, categorySignals);
        QFETCH(const int, documentSignals);
        Library its;
        its->addDocumentCategory(u"full"_s);
        its->addDocumentCategory(u"empty"_s);
        its->addDocument(u"in category"_s, its->documentCategories().first().id);
        its->addDocument(u"without"_s, {});
        const DocumentLibraryData before = its.shown();
        const int writes = its.preferences.writeCount();
        const QSignalSpy categories(its.operator->(), &DocumentLibrary::documentCategoriesChanged);
        const QSignalSpy documents(its.operator->(), &DocumentLibrary::documentsChanged);
        its.clock.advance(60);

        verb(its);

        QCOMPARE(categories.size(), categorySignals);
        QCOMPARE(documents.size(), documentSignals);
        QCOMPARE(its.preferences.writeCount() - writes, categorySignals + documentSignals > 0 ? 1 : 0);
        QCOMPARE(its.saved(), its.shown());
        QCOMPARE(its.shown() == before, categorySignals + documentSignals == 0);
        its.start();
        QCOMPARE(its.shown(), its.saved());
    }

    void aNewDocumentHoldsItsTitleAsHeading()
    {
        Library its;
        const auto document = its->addDocument(u"  第1讲\n"_s, {});
        QVERIFY(document);
        QCOMPARE(document->title, u"第1讲"_s);
        QCOMPARE(document->updatedAt, its.clock.now());
        QCOMPARE(its.fileOf(*document), u"# 第1讲\n"_s.toUtf8());
        QCOMPARE(its.filesIn(u"Documents"_s), QStringList{uuidText(document->id) + u".md"_s});
    }

    void deletingACategoryKeepsItsDocuments()
    {
        Library its;
        its->addDocumentCategory(u"a"_s);
        const QUuid category = its->documentCategories().first().id;
        const auto document = its->addDocument(u"kept"_s, category);
        its.clock.advance(60);

        its->deleteDocumentCategory(category);

        QCOMPARE(its->documents().first().categoryID, std::nullopt);
        // Losing the category is no change of the document.
        QCOMPARE(its->documents().first().updatedAt, document->updatedAt);
        QVERIFY(its.fileOf(*document));
    }

    void changesMakeADocumentNewAndLeaveTheNameOfItsFile()
    {
        Library its;
        const auto document = its->addDocument(u"old"_s, {});
        const QStringList files = its.filesIn(u"Documents"_s);
        its.clock.advance(60);

        its->renameDocument(*document, u"new"_s);
        QCOMPARE(its->documents().first().updatedAt, its.clock.now());
        its.clock.advance(60);
        QVERIFY(its->saveDocument(*document, u"text 😀\n"_s));

        QCOMPARE(its->documents().first().title, u"new"_s);
        QCOMPARE(its->documents().first().updatedAt, its.clock.now());
        QCOMPARE(its.filesIn(u"Documents"_s), files);
        its.start();
        QCOMPARE(its->readDocument(*document).text, u"text 😀\n"_s);
    }

    void importTakesCopiesOfMarkdownFiles()
    {
        Library its;
        its->addDocumentCategory(u"imported"_s);
        const QUuid category = its->documentCategories().first().id;
        const QList<QUrl> files{its.put(u"in/Notes.MD"_s, "# n\r\n"),
                                its.put(u"in/a.b.md"_s, "\xef\xbb\xbf"
                                                        "marked"),
                                its.put(u"in/latin.md"_s, "caf\xe9"),
                                its.put(u"in/Notes.markdown"_s, "x"),
                                its.put(u"in/Notes.txt"_s, "x"),
                                its.put(u"in/.md"_s, "x"),
                                its.put(u"in/  .md"_s, "x"),
                                its.url(u"in/missing.md"_s)};

        const auto last = its->importMarkdownFiles(files, category);

        QCOMPARE(its.titles(), (QStringList{u"Notes"_s, u"a.b"_s}));
        QVERIFY(last && last->id == its->documents().last().id);
        QCOMPARE(its->readDocument(its->documents().first()).text, u"# n\r\n"_s);
        QCOMPARE(its->readDocument(*last).text, u"marked"_s);
        QCOMPARE(its->documents().first().categoryID, category);
        QCOMPARE(its.filesIn(u"in"_s).size(), 7);
        QCOMPARE(its->importMarkdownFiles(files.last(3), {}), std::nullopt);
    }

    void theSaveLocationMovesWithItsFilesAndIsRemembered()
    {
        Library its;
        const auto document = its->addDocument(u"moved"_s, {});
        const auto image = its->importImage(*document, its.put(u"picture.png"_s, "png"));
        QVERIFY(image);
        const QSignalSpy moved(its.operator->(), &DocumentLibrary::documentSaveLocationChanged);

        its->setDocumentSaveLocation(its.url(u"else/where/"_s));

        QCOMPARE(moved.size(), 1);
        QCOMPARE(its->documentSaveLocation(), its.path(u"else/where"_s));
        QCOMPARE(its->readDocument(*document).text, u"# moved\n"_s);
        QCOMPARE(its.filesIn(u"else/where/Assets"_s), QStringList{QUrl(*image).fileName()});
        QVERIFY(QFileInfo(its.path(u"Documents/Assets"_s)).isDir());
        its.start();
        QCOMPARE(its->documentSaveLocation(), its.path(u"else/where"_s));
        QCOMPARE(its->readDocument(*document).text, u"# moved\n"_s);

        its.preferences.failWritesWith({});
        (void)its.preferences.setValue(keys::documentSaveLocationKey, QString());
        its.start();
        QCOMPARE(its->documentSaveLocation(), its.path(u"Documents"_s));
    }

    void aLocationThatCannotBeUsedIsNotRemembered()
    {
        Library its;
        for (const QUrl &url : {QUrl(), QUrl(u"https://example.org/documents"_s), its.url(u"Documents/Assets"_s)})
            QVERIFY(its->setDocumentSaveLocation(url) != DocumentsMove::Done);
        QCOMPARE(its->documentSaveLocation(), its.path(u"Documents"_s));
        QCOMPARE(its.preferences.value(keys::documentSaveLocationKey), std::nullopt);
    }

    void choosingTheSameFolderOnlyStoresIt()
    {
        Library its;
        const auto document = its->addDocument(u"stays"_s, {});
        its->setDocumentSaveLocation(its.url(u"Documents/../Documents"_s));
        QCOMPARE(its.preferences.get<QString>(keys::documentSaveLocationKey), its.path(u"Documents"_s));
        QVERIFY(its.fileOf(*document));
    }

    void faultsOfTheFolderAreSilentAndLoseNothing_data()
    {
        QTest::addColumn<std::function<void(const QString &folder, const QString &file)>>("fault");
        QTest::addColumn<bool>("isWritable");
        using Fault = std::function<void(const QString &folder, const QString &file)>;
        QTest::newRow("vanished: made again")
            << Fault([](const QString &folder, const QString &) { QVERIFY(QDir(folder).removeRecursively()); }) << true;
        QTest::newRow("a file has its name") << Fault([](const QString &folder, const QString &) {
            QVERIFY(QDir(folder).removeRecursively() && QFile(folder).open(QIODevice::WriteOnly));
        }) << false;
        QTest::newRow("the document's file gone")
            << Fault([](const QString &, const QString &file) { QVERIFY(QFile::remove(file)); }) << true;
        QTest::newRow("a folder has the file's name")
            << Fault([](const QString &, const QString &file) { QVERIFY(QFile::remove(file) && QDir().mkpath(file)); })
            << false;
    }

    void faultsOfTheFolderAreSilentAndLoseNothing()
    {
        QFETCH(const std::function<void(const QString &, const QString &)>, fault);
        QFETCH(const bool, isWritable);
        Library its;
        const auto document = its->addDocument(u"one"_s, {});
        fault(its->documentSaveLocation(), its->documentSaveLocation() + u'/' + uuidText(document->id) + u".md"_s);
        its.clock.advance(60);

        QCOMPARE(its->readDocument(*document).text, QString());
        QCOMPARE(its->saveDocument(*document, u"text"_s).isWritten, isWritable);
        QCOMPARE(its->readDocument(*document).text, isWritable ? u"text"_s : QString());
        // The record changes in any case, as does one whose first text cannot be written.
        QCOMPARE(its->documents().first().updatedAt, its.clock.now());
        QVERIFY(its->addDocument(u"two"_s, {}));
        its->deleteDocument(*document);
        QCOMPARE(its.titles(), QStringList{u"two"_s});
        QCOMPARE(its.saved(), its.shown());
    }

    void aDraftComesBackUntilItIsSavedAndBuriesNoForeignVersion()
    {
        Library library;
        const MarkdownDocument document = *library->addDocument(u"Notes"_s, {});
        const QString text = library->readDocument(document).text;
        const DocumentDraft typed{
            .title = u"Notes 2"_s, .categoryID = QUuid::createUuid(), .content = text + u"typed \u00e9"_s};
        QVERIFY(library->keepDraft(document, typed));

        library.start();
        library.put(u"Documents/"_s + uuidText(document.id) + u".md"_s, "from elsewhere");
        const std::optional<DocumentDraft> back = library->takeUpDraft(document, library->readDocument(document).text);
        QVERIFY(back);
        QCOMPARE(back->title, typed.title);
        QCOMPARE(back->categoryID, typed.categoryID);
        QCOMPARE(back->content, typed.content);

        const DocumentWrite outcome = library->saveDocument(document, back->content);
        QCOMPARE(library.filesIn(u"Drafts"_s), QStringList());
        QCOMPARE(library.fileOf(document), typed.content.toUtf8());
        QVERIFY(!outcome.keptVersion.isEmpty());
        QVERIFY(!library->takeUpDraft(document, typed.content));
    }

    void aDraftThatSaysNothingNewOrHasNoDocumentIsDropped()
    {
        Library library;
        const MarkdownDocument document = *library->addDocument(u"Notes"_s, {});
        const QString text = library->readDocument(document).text;
        library->keepDraft(document, {.title = document.title, .categoryID = {}, .content = text});
        QVERIFY(!library->takeUpDraft(document, text));
        QCOMPARE(library.filesIn(u"Drafts"_s), QStringList());

        library->keepDraft(document, {.title = document.title, .categoryID = {}, .content = u"typed"_s});
        library->deleteDocument(document);
        library->destroyDocument(document.id);
        QCOMPARE(library.filesIn(u"Drafts"_s), QStringList());
    }

    void aForeignVersionThatCannotBeKeptIsNotWrittenOver()
    {
        StoreUnderTest planner;
        planner.start();
        const auto document = planner.library().addDocument(u"ours"_s, {});
        const QString path = u"/documents/"_s + uuidText(document->id) + u".md"_s;
        QVERIFY(planner.files.write(path, "theirs"));
        planner.files.failNextWrites(1);

        QVERIFY(!planner.library().saveDocument(*document, u"ours, later"_s));
        QCOMPARE(planner.files.read(path), QByteArray("theirs"));

        QVERIFY(planner.library().saveDocument(*document, u"ours, later"_s));
        QCOMPARE(planner.files.read(path), QByteArray("ours, later"));
        QCOMPARE(planner.files.fileNames(u"/documents"_s).size(), 2);
    }
};

TESSALY_TEST_MAIN(DocumentLibraryTest)
#include "DocumentLibraryTest.moc"
