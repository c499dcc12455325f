#include "tests/features/documents/DocumentDriver.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

class DocumentLibraryScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyLibraryShowsTheOpenGroupOfNone()
    {
        DocumentDriver given;
        given.openScreen();
        QCOMPARE(given.shown(), (QStringList{u"v (none)"_s, u"(no documents)"_s}));
        QCOMPARE(given.screen->saveLocation(), u"/documents"_s);
        QCOMPARE(given.screen->categories(), QStringList{u"Uncategorized"_s});
    }

    void groupsHoldTheirDocumentsNewestFirst()
    {
        DocumentDriver given;
        given.hasCategory(u"Notes"_s);
        given.hasCategory(u"Empty"_s);
        const MarkdownDocument a = given.has(u"a"_s, u"Notes"_s);
        given.has(u"b"_s, u"Notes"_s);
        given.has(u"c"_s);
        given.openScreen();
        QCOMPARE(given.shown(), (QStringList{u"v (none)"_s, u"- c"_s, u"> Notes"_s, u"> Empty"_s}));

        given.screen->setExpanded(given.row(u"Notes"_s), true);
        given.screen->setExpanded(given.row(u"Empty"_s), true);
        given.screen->setExpanded(0, false);
        QCOMPARE(given.shown(),
                 (QStringList{u"> (none)"_s, u"v Notes"_s, u"- b"_s, u"- a"_s, u"v Empty"_s, u"(no documents)"_s}));
        QVERIFY(given.screen->rows()->rows().last().isLast);

        // Saving makes it the newest; the row moves and the list is not built anew.
        const QSignalSpy moves(given.screen->rows(), &QAbstractItemModel::rowsMoved);
        const QSignalSpy resets(given.screen->rows(), &QAbstractItemModel::modelReset);
        given.clock.advance(60);
        QVERIFY(given.library().saveDocument(a, u"text"_s));
        QCOMPARE(given.shown().mid(1, 3), (QStringList{u"v Notes"_s, u"- a"_s, u"- b"_s}));
        QCOMPARE(moves.size(), 1);
        QVERIFY(resets.isEmpty());
    }

    void aDocumentOfALostCategoryIsStillShown()
    {
        DocumentDriver given;
        given.startInEnglish();
        (void)given.library().addDocument(u"orphan"_s, QUuid::createUuid());
        given.openScreen();
        QCOMPARE(given.shown(), (QStringList{u"v (none)"_s, u"- orphan"_s}));
    }

    void aNewCategoryComesLastAndTheFieldIsEmptied()
    {
        DocumentDriver given;
        given.hasCategory(u"a"_s);
        given.openScreen();
        QList<int> added;
        connect(given.screen.get(), &DocumentLibraryViewModel::added, this, [&added](int row) { added.append(row); });

        given.fill("categoryName", u"  b "_s);
        given.screen->addCategory();
        given.fill("categoryName", u"  "_s);
        given.screen->addCategory();

        QCOMPARE(given.shown().mid(2), (QStringList{u"> a"_s, u"> b"_s}));
        QCOMPARE(given.screen->categories(), (QStringList{u"Uncategorized"_s, u"a"_s, u"b"_s}));
        QCOMPARE(added, QList<int>{3});
        QCOMPARE(given.screen->property("categoryName").toString(), QString());
    }

    void aNewDocumentIsFiledWhereThePickerSaysAndOpened()
    {
        DocumentDriver given;
        given.hasCategory(u"Notes"_s);
        given.openScreen();
        given.screen->setSelectedCategory(1);
        given.fill("documentTitle", u" New "_s);
        given.screen->addDocument();

        QCOMPARE(given.edited, QStringList{u"New"_s});
        QCOMPARE(given.library().documents().first().categoryID, given.library().documentCategories().first().id);
        // Its group is not opened for it.
        QCOMPARE(given.shown().last(), u"> Notes"_s);
        QCOMPARE(given.screen->property("documentTitle").toString(), QString());

        given.fill("documentTitle", u"  "_s);
        given.screen->addDocument();
        QCOMPARE(given.library().documents().size(), 1);
        QCOMPARE(given.screen->property("documentTitle").toString(), u"  "_s);
    }

    void aNameIsSavedAsItIsTypedAndMayBeEmpty()
    {
        DocumentDriver given;
        given.hasCategory(u"a"_s);
        given.hasCategory(u"b"_s);
        given.openScreen();
        given.screen->setEditing(given.row(u"a"_s), true);
        const int writes = given.preferences.writeCount();

        given.screen->renameCategory(2, u" x"_s);
        given.screen->renameCategory(2, QString());
        QCOMPARE(given.preferences.writeCount() - writes, 2);
        QCOMPARE(given.shown().mid(2), (QStringList{u"> *"_s, u"> b"_s}));

        // The field of another name takes the place of this one.
        given.screen->setEditing(given.row(u"b"_s), true);
        QCOMPARE(given.shown().mid(2), (QStringList{u"> "_s, u"> b*"_s}));
        given.screen->setEditing(given.row(u"b"_s), false);
        QCOMPARE(given.shown().last(), u"> b"_s);
    }

    void deletingACategoryFreesItsDocumentsAndThePicker()
    {
        DocumentDriver given;
        given.hasCategory(u"a"_s);
        given.has(u"kept"_s, u"a"_s);
        given.openScreen();
        given.screen->setSelectedCategory(1);
        given.screen->setEditing(given.row(u"a"_s), true);

        given.screen->remove(given.row(u"a"_s));

        QCOMPARE(given.shown(), (QStringList{u"v (none)"_s, u"- kept"_s}));
        QCOMPARE(given.screen->selectedCategory(), 0);
        given.fill("documentTitle", u"next"_s);
        given.screen->addDocument();
        QCOMPARE(given.library().documents().last().categoryID, std::nullopt);
    }

    void focusGoesToTheNextDeleteThenThePreviousThenTheHeader_data()
    {
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("focused");
        // Shown: (none), a, b | x | y, c
        QTest::newRow("next document") << u"b"_s << u"a"_s;
        QTest::newRow("previous document") << u"a"_s << u"b"_s;
        QTest::newRow("header of the emptied group") << u"c"_s << u"y"_s;
        QTest::newRow("next category") << u"x"_s << u"y"_s;
        QTest::newRow("previous category") << u"y"_s << u"x"_s;
    }

    void focusGoesToTheNextDeleteThenThePreviousThenTheHeader()
    {
        QFETCH(const QString, removed);
        QFETCH(const QString, focused);
        DocumentDriver given;
        given.hasCategory(u"x"_s);
        given.hasCategory(u"y"_s);
        given.has(u"a"_s);
        given.has(u"b"_s);
        given.has(u"c"_s, u"y"_s);
        given.openScreen();
        given.screen->setExpanded(given.row(u"y"_s), true);
        const int row = given.row(removed);
        const DocumentRow::Kind kind = given.screen->rows()->rows().at(row).kind;

        given.screen->remove(row);

        QCOMPARE(given.screen->rowToFocusAfterRemoval(row, kind), given.row(focused));
    }

    void importOpensTheLastFileAndCancellingChangesNothing()
    {
        DocumentDriver given;
        given.hasCategory(u"Notes"_s);
        given.openScreen();
        given.screen->setSelectedCategory(1);
        given.screen->importMarkdown();
        given.screen->chooseSaveLocation();
        QVERIFY(given.library().documents().isEmpty() && given.edited.isEmpty());
        QCOMPARE(given.preferences.value(keys::documentSaveLocationKey), std::nullopt);

        given.files.write(u"/in/a.md"_s, "a");
        given.files.write(u"/in/b.md"_s, "b");
        given.files.write(u"/in/c.markdown"_s, "c");
        given.fileDialogs.answerFilesWith(
            {QUrl(u"file:///in/a.md"_s), QUrl(u"file:///in/b.md"_s), QUrl(u"file:///in/c.markdown"_s)});
        given.screen->importMarkdown();
        QCOMPARE(given.edited, QStringList{u"b"_s});
        QCOMPARE(given.library().documents().first().categoryID, given.library().documentCategories().first().id);
        QCOMPARE(given.fileDialogs.questions().last(), u"Import Markdown documents (md, markdown), several"_s);

        given.fileDialogs.answerFolderWith(QUrl(u"file:///elsewhere"_s));
        given.screen->chooseSaveLocation();
        QCOMPARE(given.screen->saveLocation(), u"/elsewhere"_s);
        QCOMPARE(given.fileDialogs.questions().last(), u"Choose document save location in file:///documents"_s);
    }

    void aRefusedSaveLocationIsToldUntilAnotherIsChosen()
    {
        DocumentDriver given;
        given.has(u"a"_s);
        given.openScreen();
        const auto choose = [&given](const QString &folder) {
            given.fileDialogs.answerFolderWith(QUrl::fromLocalFile(folder));
            given.screen->chooseSaveLocation();
            return given.screen->saveLocationMessage();
        };
        const QSignalSpy told(given.screen.get(), &DocumentLibraryViewModel::saveLocationMessageChanged);
        QCOMPARE(choose(u"/documents/Assets"_s), u"The Assets folder holds the documents' pictures, so documents "
                                                 "cannot be kept in it. The save location has not changed."_s);
        QCOMPARE(told.size(), 1);
        given.files.setReadOnly(true);
        QCOMPARE(choose(u"/mnt"_s),
                 u"Documents cannot be saved in this folder. The save location has not changed: /mnt"_s);
        given.store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(told.size(), 3);
        QCOMPARE(given.screen->saveLocationMessage(), u"无法在此文件夹中保存文档，保存位置未改变：/mnt"_s);
        QCOMPARE(given.screen->saveLocation(), u"/documents"_s);

        given.files.setReadOnly(false);
        QCOMPARE(choose(u"/elsewhere"_s), QString());
        QCOMPARE(given.screen->saveLocation(), u"/elsewhere"_s);
    }

    void anAnswerAfterTheScreenHasGoneIsDropped()
    {
        DocumentDriver given;
        given.openScreen();
        given.fileDialogs.keepAnswersBack();
        given.fileDialogs.answerFolderWith(QUrl(u"file:///elsewhere"_s));
        given.screen->chooseSaveLocation();
        given.tester.reset();
        given.screen.reset();
        given.fileDialogs.giveAnswers();
        QCOMPARE(given.library().documentSaveLocation(), u"/documents"_s);
    }

    void theEntryOfNoneFollowsTheLanguage()
    {
        DocumentDriver given;
        given.openScreen();
        given.store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(given.screen->categories(), QStringList{u"未分类"_s});
    }
};

TESSALY_TEST_MAIN(DocumentLibraryScreenTest)
#include "DocumentLibraryScreenTest.moc"
