#include "model/Uuid.h"
#include "store/RecordRows.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

class DeletedDocumentsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->startInEnglish();
        m_document = *library().addDocument(QStringLiteral("Notes"), {});
        QVERIFY(library().saveDocument(m_document, QStringLiteral("text")));
        m_document = library().documents().constFirst();
        QVERIFY(m_planner->files.write(QStringLiteral("/picture.png"), "png"));
        const auto url = library().importImage(m_document, QUrl::fromLocalFile(QStringLiteral("/picture.png")));
        m_picture = QUrl(*url).fileName();
    }

    void deletingMovesTextAndPicturesAndRestoringMovesThemBack()
    {
        library().deleteDocument(m_document);
        QVERIFY(library().documents().isEmpty());
        QCOMPARE(library().deletedDocuments().constFirst().title, m_document.title);
        QCOMPARE(place(), QStringLiteral("Deleted"));

        restart();
        QCOMPARE(place(), QStringLiteral("Deleted"));
        library().restoreDocument(m_document.id);

        QCOMPARE(library().documents(), QList{m_document});
        QVERIFY(library().deletedDocuments().isEmpty());
        QCOMPARE(place(), QStringLiteral("documents"));
    }

    void everyStepOfADocumentIsUndone()
    {
        library().deleteDocument(m_document);
        library().restoreDocument(m_document.id);

        store().undo();
        QCOMPARE(place(), QStringLiteral("Deleted"));
        QCOMPARE(library().deletedDocuments().size(), 1);
        store().undo();
        QCOMPARE(place(), QStringLiteral("documents"));
        QCOMPARE(library().documents(), QList{m_document});
        QVERIFY(library().deletedDocuments().isEmpty());
        store().redo();
        QCOMPARE(place(), QStringLiteral("Deleted"));
        store().undo();

        // What was written into a document that was just added is not lost with the addition.
        store().undo();
        QVERIFY(library().documents().isEmpty());
        QCOMPARE(place(), QStringLiteral("Deleted"));
        store().redo();
        QCOMPARE(place(), QStringLiteral("documents"));
    }

    void aTextWhoseAdditionWasUndoneIsFoundByTheNextStart()
    {
        store().undo();
        restart();

        QCOMPARE(library().deletedDocuments().constFirst().id, m_document.id);
        QCOMPARE(library().deletedDocuments().constFirst().title, QStringLiteral("text"));
        library().restoreDocument(m_document.id);
        QCOMPARE(place(), QStringLiteral("documents"));
    }

    void aPictureThatAnotherDocumentShowsStays()
    {
        const auto other = library().addDocument(QStringLiteral("Other"), {});
        QVERIFY(library().saveDocument(*other, QStringLiteral("![](file:///documents/Assets/%1)").arg(m_picture)));

        library().deleteDocument(m_document);

        QVERIFY(m_planner->files.exists(QStringLiteral("/documents/Assets/") + m_picture));
    }

    void whatACrashLeavesBetweenFilesAndListIsPutRight_data()
    {
        QTest::addColumn<bool>("isDeleting");
        QTest::newRow("while deleting") << true;
        QTest::newRow("while restoring") << false;
    }

    void whatACrashLeavesBetweenFilesAndListIsPutRight()
    {
        QFETCH(const bool, isDeleting);
        if (!isDeleting)
            library().deleteDocument(m_document);
        const QString before = place();
        const PreferenceValue listed = *m_planner->preferences.value(keys::documentMetadataKey);
        if (isDeleting)
            library().deleteDocument(m_document);
        else
            library().restoreDocument(m_document.id);
        QVERIFY(place() != before);

        // The files have moved, the list was not saved.
        m_planner->put(keys::documentMetadataKey, listed);
        restart();
        QCOMPARE(place(), before);

        // The text is in both places.
        const auto path = [this](const char *folder) {
            return u'/' + QString::fromLatin1(folder) + u'/' + uuidText(m_document.id) + QStringLiteral(".md");
        };
        QVERIFY(m_planner->files.write(path(isDeleting ? "Deleted" : "documents"), "text"));
        restart();
        QCOMPARE(place(), before);

        // The list was saved, the files could not move.
        m_planner->files.setReadOnly(true);
        if (isDeleting)
            library().deleteDocument(library().documents().constFirst());
        else
            library().restoreDocument(m_document.id);
        QCOMPARE(place(), before);
        m_planner->files.setReadOnly(false);
        restart();
        QCOMPARE(place(), isDeleting ? QStringLiteral("Deleted") : QStringLiteral("documents"));
    }

    void destroyingIsFinal()
    {
        library().deleteDocument(m_document);
        library().destroyDocument(m_document.id);

        QCOMPARE(place(), QString());
        QVERIFY(library().deletedDocuments().isEmpty());
        while (store().history().nextUndo())
            store().undo();
        QVERIFY2(library().documents().isEmpty(), "a document without its text must not come back");
        restart();
        QVERIFY(library().deletedDocuments().isEmpty());
    }

    void afterThirtyDaysItIsGone()
    {
        library().deleteDocument(m_document);
        m_planner->clock.advance(29 * 86400.0);
        QCOMPARE(library().daysLeft(library().deletedDocuments().constFirst()), 1);
        QCOMPARE(place(), QStringLiteral("Deleted"));

        // At midnight, while the planner runs.
        m_planner->clock.advance(86400);
        QVERIFY(library().deletedDocuments().isEmpty());
        QCOMPARE(place(), QString());
    }

private:
    [[nodiscard]] PlannerStore &store() const { return *m_planner->store; }
    [[nodiscard]] DocumentLibrary &library() const { return m_planner->library(); }

    void restart()
    {
        m_planner->start();
        m_planner->store->start();
    }

    /// The folder in which text and picture are, whole and alone; empty where there is none.
    [[nodiscard]] QString place() const
    {
        QStringList places;
        for (const QString &folder : {QStringLiteral("documents"), QStringLiteral("Deleted")}) {
            const QString path = u'/' + folder + u'/';
            const auto text = m_planner->files.read(path + uuidText(m_document.id) + QStringLiteral(".md"));
            const bool hasPicture = m_planner->files.exists(path + QStringLiteral("Assets/") + m_picture);
            if (text || hasPicture)
                places.append(text == "text" && hasPicture ? folder : QStringLiteral("a part in ") + folder);
        }
        return places.join(u' ');
    }

    std::unique_ptr<StoreUnderTest> m_planner;
    MarkdownDocument m_document;
    QString m_picture;
};

TESSALY_TEST_MAIN(DeletedDocumentsTest)
#include "DeletedDocumentsTest.moc"
