#include "store/DocumentSession.h"
#include "model/Uuid.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// A document that is being edited.
struct SessionUnderTest : StoreUnderTest
{
    /// What stands in the editor.
    QString text;
    MarkdownDocument document;
    std::unique_ptr<DocumentSession> session;

    explicit SessionUnderTest(const QByteArray &content = "text")
    {
        startInEnglish();
        library().addDocumentCategory(u"Notes"_s);
        document = *library().addDocument(u"Title"_s, {});
        files.write(path(), content);
        open();
    }
    void open()
    {
        session.reset();
        session = std::make_unique<DocumentSession>([this] { return text; });
        text = session->open(library(), document.id).value_or(u"(not opened)"_s);
    }
    /// Opens it as a start after a crash does: on the files as they are now.
    void reopenAfterCrash()
    {
        QMap<QString, QByteArray> before;
        for (const QString &each : files.paths())
            before.insert(each, files.read(each).value_or(QByteArray()));
        session.reset();
        for (const QString &each : files.paths())
            files.remove(each);
        for (auto each = before.cbegin(); each != before.cend(); ++each)
            files.write(each.key(), each.value());
        open();
    }
    void type(const QString &more)
    {
        text += more;
        session->edit();
    }
    [[nodiscard]] QString path() const { return u"/documents/"_s + uuidText(document.id) + u".md"_s; }
    [[nodiscard]] QString draftPath() const { return u"/Drafts/"_s + uuidText(document.id) + u".json"_s; }
    [[nodiscard]] QByteArray onDisk() const { return files.read(path()).value_or("(missing)"); }
    [[nodiscard]] const MarkdownDocument &stored() const { return library().documents().first(); }
    [[nodiscard]] QString says() const { return session->message().text.english; }
    [[nodiscard]] MessageKind kind() const { return session->message().kind; }
};

} // namespace

class DocumentSessionTest : public QObject
{
    Q_OBJECT

private slots:
    void aSessionOpensWithWhatRecordAndFileHold()
    {
        const SessionUnderTest its;
        QCOMPARE(its.session->title(), u"Title"_s);
        QCOMPARE(its.session->categoryID(), std::nullopt);
        QCOMPARE(its.text, u"text"_s);
        QVERIFY(its.session->isEditable() && !its.session->hasUnsavedChanges());
        QCOMPARE(its.says(), QString());
    }

    void whatIsChangedIsUnsavedUntilItIsSaved_data()
    {
        QTest::addColumn<std::function<void(SessionUnderTest &)>>("change");
        const auto row = [](const char *name, const std::function<void(SessionUnderTest &)> &change) {
            QTest::newRow(name) << change;
        };
        row("text", [](SessionUnderTest &its) { its.type(u" more"_s); });
        row("title", [](SessionUnderTest &its) { its.session->setTitle(u" New "_s); });
        row("category",
            [](SessionUnderTest &its) { its.session->setCategoryID(its.library().documentCategories().first().id); });
    }

    void whatIsChangedIsUnsavedUntilItIsSaved()
    {
        QFETCH(const std::function<void(SessionUnderTest &)>, change);
        SessionUnderTest its;
        its.clock.advance(60);
        const MarkdownDocument before = its.stored();
        const QSignalSpy changed(its.session.get(), &DocumentSession::changed);

        change(its);
        QVERIFY(its.session->hasUnsavedChanges());
        QCOMPARE(changed.size(), 1);
        QVERIFY(its.onDisk() == "text" && its.stored() == before);
        QVERIFY(its.session->save());
        QVERIFY(!its.session->hasUnsavedChanges());
        QVERIFY(its.onDisk() != "text" || its.stored().title == u"New" || its.stored().categoryID);
        QCOMPARE(its.stored().updatedAt, its.clock.now());
    }

    void aBlankTitleKeepsTheFormerOne()
    {
        SessionUnderTest its;
        its.session->setTitle(u"  "_s);
        QVERIFY(its.session->save());
        QCOMPARE(its.stored().title, u"Title"_s);
    }

    void leavingSavesAlsoWithoutAChangeAndEndsIt()
    {
        SessionUnderTest its;
        its.clock.advance(60);
        QVERIFY(its.session->leave());
        QCOMPARE(its.stored().updatedAt, its.clock.now());

        const int writes = its.preferences.writeCount();
        its.session.reset();
        QCOMPARE(its.preferences.writeCount(), writes);
    }

    void aSessionThatIsTakenAwaySaves()
    {
        SessionUnderTest its;
        its.type(u" more"_s);
        its.session.reset();
        QCOMPARE(its.onDisk(), QByteArray("text more"));
    }

    void anUnknownDocumentSavesNothing()
    {
        SessionUnderTest its;
        QVERIFY(its.session->leave());
        its.library().deleteDocument(its.document);
        its.open();
        QCOMPARE(its.text, u"(not opened)"_s);
        QVERIFY(its.session->save() && !its.session->isEditable());
        QVERIFY(!its.files.exists(its.library().documentPath(its.document)));
    }

    void whatCannotBeSavedStaysOpenAndIsReported()
    {
        SessionUnderTest its;
        its.session->report({{u"已复制。"_s, u"Copied."_s}, MessageKind::Success});
        its.files.setReadOnly(true);
        its.type(u" more"_s);
        const QSignalSpy saved(its.session.get(), &DocumentSession::saved);

        QVERIFY(!its.session->leave());
        QVERIFY(its.session->hasUnsavedChanges() && saved.isEmpty());
        QCOMPARE(its.kind(), MessageKind::Failure);
        QVERIFY2(its.says().startsWith(u"The document could not be saved."_s), qPrintable(its.says()));

        its.files.setReadOnly(false);
        QVERIFY(its.session->leave());
        QCOMPARE(saved.size(), 1);
        QCOMPARE(its.onDisk(), QByteArray("text more"));
        QCOMPARE(its.says(), u"Copied."_s);
    }

    void aWindowIsHeldOnceByWhatCannotBeSaved()
    {
        SessionUnderTest its;
        its.type(u" more"_s);
        QVERIFY(its.session->mayCloseWindow());
        QCOMPARE(its.onDisk(), QByteArray("text more"));

        its.files.setReadOnly(true);
        its.type(u" and more"_s);
        QVERIFY(!its.session->mayCloseWindow());
        QVERIFY2(its.says().endsWith(u"Close the window again to discard it."_s), qPrintable(its.says()));
        QVERIFY(its.session->mayCloseWindow());

        its.files.setReadOnly(false);
        QVERIFY(its.session->save());
        its.files.setReadOnly(true);
        QVERIFY(its.session->mayCloseWindow());
        its.type(u" still more"_s);
        its.files.setReadOnly(false);
        its.files.failNextWrites(1);
        QVERIFY(!its.session->mayCloseWindow());
        QVERIFY2(its.says().contains(u"keep it as a draft"_s), qPrintable(its.says()));
    }

    void whatWasTypedSurvivesACrash()
    {
        SessionUnderTest its;
        its.session->setTitle(u"New"_s);
        its.type(u" more"_s);
        QVERIFY(!its.files.exists(its.draftPath()));
        QTRY_VERIFY(its.files.exists(its.draftPath()));
        QCOMPARE(its.onDisk(), QByteArray("text"));

        its.reopenAfterCrash();

        QCOMPARE(its.text, u"text more"_s);
        QCOMPARE(its.session->title(), u"New"_s);
        QVERIFY(its.session->hasUnsavedChanges());
        QCOMPARE(its.says(), u"Changes that had not been saved were restored."_s);
        QCOMPARE(its.kind(), MessageKind::Notice);
        QVERIFY(its.session->keptVersion().isEmpty());
        QVERIFY(its.session->save());
        QVERIFY(its.says().isEmpty() && !its.files.exists(its.draftPath()));
    }

    void aDraftThatCannotBeWrittenIsReported()
    {
        SessionUnderTest its;
        its.files.setReadOnly(true);
        its.type(u" more"_s);
        QTRY_COMPARE(its.says(), u"The draft could not be written. Save the document, or free up disk space."_s);
        QCOMPARE(its.kind(), MessageKind::Failure);

        its.files.setReadOnly(false);
        its.type(u" still more"_s);
        QTRY_COMPARE(its.says(), QString());
        QVERIFY(its.files.exists(its.draftPath()));
    }

    void aDraftIsWrittenWhileTypingDoesNotPause()
    {
        SessionUnderTest its;
        QTimer keys;
        connect(&keys, &QTimer::timeout, &keys, [&its] { its.type(u"x"_s); });
        keys.start(50);
        QTRY_VERIFY(its.files.exists(its.draftPath()));
    }

    void theVersionOfAnotherProgramIsReportedUntilTheNextSave()
    {
        SessionUnderTest its;
        its.files.write(its.path(), "theirs");
        its.session->report({{u"已复制。"_s, u"Copied."_s}, MessageKind::Success});
        QVERIFY(its.session->save());
        const QString kept =
            u"Another program changed this document; its version was saved as “… (changed elsewhere).md”."_s;
        QCOMPARE(its.says(), kept + u" Copied."_s);
        QCOMPARE(its.session->message().text.chinese,
                 u"其他程序改动过此文档，那个版本已另存为“… (changed elsewhere).md”。已复制。"_s);
        QCOMPARE(its.kind(), MessageKind::Notice);
        QCOMPARE(its.session->keptVersion().text.english, kept);
        QVERIFY(its.session->save());
        QCOMPARE(its.says(), u"Copied."_s);
        QVERIFY(its.session->keptVersion().isEmpty());
    }

    void aTextThatCannotBeReadIsReportedAndLeftAlone_data()
    {
        QTest::addColumn<bool>("isFolder");
        QTest::newRow("no right to the file") << false;
        QTest::newRow("the folder is out of reach") << true;
    }

    void aTextThatCannotBeReadIsReportedAndLeftAlone()
    {
        QFETCH(const bool, isFolder);
        SessionUnderTest its("real");
        QVERIFY(its.session->leave());
        its.files.setUnreadable(isFolder ? u"/documents"_s : its.path());
        its.open();
        QCOMPARE(its.says(),
                 u"The file of this document cannot be read, so its text can be neither shown nor changed: "_s +
                     its.path());
        QCOMPARE(its.kind(), MessageKind::Failure);
        QVERIFY(!its.session->isEditable());

        its.session->setTitle(u"New"_s);
        QVERIFY(its.session->mayCloseWindow() && its.session->leave());
        QVERIFY(its.session->keptVersion().isEmpty());
        QCOMPARE(its.stored().title, u"New"_s);
        QCOMPARE(its.files.paths(), QStringList{its.path()});

        its.files.setUnreadable({});
        its.open();
        QCOMPARE(its.text, u"real"_s);
        QCOMPARE(its.says(), QString());
    }

    void aFolderThatTakesNothingIsReportedAtOnceAndLetsGo()
    {
        SessionUnderTest its;
        QVERIFY(its.session->leave());
        its.files.setReadOnly(true);
        its.open();
        QCOMPARE(its.says(), u"The save location is not writable, so changes cannot be saved: /documents"_s);
        QCOMPARE(its.kind(), MessageKind::Failure);
        its.session->setTitle(u"New"_s);
        QVERIFY(its.session->mayCloseWindow() && its.session->leave());
        QVERIFY(its.session->keptVersion().isEmpty());
        QCOMPARE(its.stored().title, u"New"_s);
        QCOMPARE(its.onDisk(), QByteArray("text"));
    }

    void aBlankTextThatNobodyTypedIsNoDraft()
    {
        SessionUnderTest its;
        QVERIFY(its.session->leave());
        its.files.remove(its.path());
        its.open();
        its.files.failNextWrites(1);
        its.session->setTitle(u"New"_s);
        QVERIFY(its.session->leave());
        QVERIFY(!its.files.exists(its.library().documentPath(its.document)));

        its.open();
        its.type(u"typed"_s);
        its.files.failNextWrites(1);
        QVERIFY(!its.session->save());
        QCOMPARE(its.files.paths(), QStringList{its.draftPath()});
    }

    void aPictureThatCannotBeCopiedIsReported()
    {
        SessionUnderTest its;
        QCOMPARE(its.session->importImage(QUrl(u"file:///missing.png"_s)), std::nullopt);
        QCOMPARE(its.kind(), MessageKind::Failure);
        QVERIFY2(its.says().startsWith(u"The image could not be copied"_s), qPrintable(its.says()));
        its.files.write(u"/cat.png"_s, "cat");
        QVERIFY(its.session->importImage(QUrl(u"file:///cat.png"_s)));
    }

    void aMessageIsDismissed()
    {
        SessionUnderTest its;
        its.files.setReadOnly(true);
        its.type(u"x"_s);
        QVERIFY(!its.session->save());
        its.session->dismissMessage();
        QCOMPARE(its.says(), QString());
        QVERIFY(its.session->hasUnsavedChanges());
    }
};

TESSALY_TEST_MAIN(DocumentSessionTest)
#include "DocumentSessionTest.moc"
