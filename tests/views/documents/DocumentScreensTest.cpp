#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

#include "model/Uuid.h"
#include "ui/Ui.h"

#include <QDesktopServices>
#include <QMetaEnum>
#include <QPointer>
#include <QQuickStyle>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;

/// The window in English, at the documents screen; pages are shown by a fake.
struct DocumentWindow : WindowUnderTest
{
    void openLibrary()
    {
        planner.put(keys::interfaceLanguage, u"en"_s);
        planner.put(keys::hasAskedPreferredName, true);
        open();
        documentDesktop().setSources(QUrl(u"qrc:/test/FakePreview.qml"_s), QUrl(u"qrc:/test/FakeCopier.qml"_s));
        setState("section", ShellModel::Documents);
        QTRY_VERIFY(find(field, u"New category"_s));
    }
    /// Opens a document of this text in the editor.
    void openEditor(const QString &text)
    {
        openLibrary();
        const MarkdownDocument document = *planner.library().addDocument(u"Notes"_s, {});
        planner.files.write(path(document), text.toUtf8());
        QTRY_VERIFY(find(button, u"Notes"_s));
        QVERIFY(click(button, u"Notes"_s));
        QTRY_VERIFY(hasFocus(field, u"Markdown source"_s));
    }
    [[nodiscard]] static QString path(const MarkdownDocument &document)
    {
        return u"/documents/"_s + uuidText(document.id) + u".md"_s;
    }
    [[nodiscard]] QByteArray onDisk() const
    {
        return planner.files.read(path(planner.library().documents().first())).value_or("(missing)");
    }
    [[nodiscard]] bool isEditorOpen() const { return find(field, u"Document name"_s) != nullptr; }
    [[nodiscard]] QString previewText() const
    {
        for (const QString &text : visibleTexts()) {
            if (text.startsWith(u"preview: "_s))
                return text.mid(9);
        }
        return u"(none)"_s;
    }
};

} // namespace

class DocumentScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QQuickStyle::setStyle(u"Basic"_s);
        QGuiApplication::setApplicationName(u"Tessaly"_s);
        applyInterfaceFont();
    }

    void aCategoryIsAddedRenamedAndDeleted()
    {
        DocumentWindow ui;
        ui.openLibrary();
        QVERIFY(ui.click(field, u"New category"_s));
        ui.type(u"Notes"_s);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(ui.find(button, u"Edit, Notes"_s));
        QVERIFY(ui.hasFocus(field, u"New category"_s));

        QVERIFY(ui.click(button, u"Edit, Notes"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"Category name"_s));
        ui.press(Qt::Key_Home);
        ui.type(u"My "_s);
        QCOMPARE(ui.planner.library().documentCategories().first().name, u"My Notes"_s);
        QCOMPARE(ui.find(field, u"Category name"_s)->property("cursorPosition").toInt(), 3);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(!ui.find(field, u"Category name"_s));
        QVERIFY(ui.hasFocus(button, u"Edit, My Notes"_s));
        // Return ended the editing and did not open the group as well.
        QVERIFY(!ui.find(button, u"My Notes"_s)->property("isOpen").toBool());

        QVERIFY(ui.click(button, u"Delete, My Notes"_s));
        QVERIFY(ui.planner.library().documentCategories().isEmpty());
        QTRY_VERIFY(ui.hasFocus(button, u"Uncategorized"_s));
    }

    void aNewDocumentOpensTypesAndIsSavedByClosing()
    {
        DocumentWindow ui;
        ui.openLibrary();
        QVERIFY(ui.click(field, u"New Markdown document"_s));
        ui.type(u"Plan"_s);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(ui.hasFocus(field, u"Markdown source"_s));
        QVERIFY(ui.window().minimumHeight() >= 640 && ui.window().height() >= 640);

        ui.type(u"typed"_s);
        QCOMPARE(ui.onDisk(), QByteArray("# Plan\n"));
        QTRY_COMPARE(ui.previewText(), u"# Plan\ntyped"_s);
        QVERIFY(ui.click(button, u"Close"_s));

        QTRY_VERIFY(!ui.isEditorOpen());
        QCOMPARE(ui.onDisk(), QByteArray("# Plan\ntyped"));
        QTRY_VERIFY(ui.find(button, u"Plan"_s));
        QCOMPARE(ui.window().minimumHeight(), 620);
    }

    void aHeldKeyDeletesOneDocument_data()
    {
        QTest::addColumn<Qt::Key>("key");
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
            QTest::newRow(QMetaEnum::fromType<Qt::Key>().valueToKey(key)) << key;
    }

    void aHeldKeyDeletesOneDocument()
    {
        QFETCH(const Qt::Key, key);
        DocumentWindow ui;
        ui.openLibrary();
        for (const QString &title : {u"c"_s, u"b"_s, u"a"_s}) {
            ui.planner.clock.advance(60);
            (void)ui.planner.library().addDocument(title, {});
        }
        QTRY_VERIFY(ui.find(button, u"Delete, b"_s));
        ui.find(button, u"Delete, b"_s)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyPress(&ui.window(), key);
        for (int repetition = 0; repetition < 5; ++repetition) {
            for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                QKeyEvent repeated(type, key, {}, QString(), true);
                QCoreApplication::sendEvent(&ui.window(), &repeated);
            }
        }
        QTest::keyRelease(&ui.window(), key);
        QTRY_VERIFY(ui.hasFocus(button, u"Delete, c"_s));
        QCOMPARE(ui.planner.library().documents().size(), 2);
    }

    void tabGoesDownTheScreenAlsoThroughRowsThatCameLater()
    {
        DocumentWindow ui;
        ui.openLibrary();
        ui.planner.library().addDocumentCategory(u"x"_s);
        ui.planner.library().addDocumentCategory(u"y"_s);
        (void)ui.planner.library().addDocument(u"doc"_s, ui.planner.library().documentCategories().first().id);
        QTRY_VERIFY(ui.find(button, u"x"_s));
        QVERIFY(ui.click(button, u"x"_s));
        QTRY_VERIFY(ui.find(button, u"doc"_s));
        QVERIFY(ui.click(field, u"New category"_s));

        QStringList names;
        while (names.value(names.size() - 1) != u"New Markdown document" && names.size() < 20) {
            QCoreApplication::processEvents();
            ui.press(Qt::Key_Tab);
            const QAccessibleInterface *focused = QAccessible::queryAccessibleInterface(ui.window().activeFocusItem());
            names.append(focused->text(QAccessible::Name));
        }

        QCOMPARE(names.join(u" > "_s),
                 u"Add > Uncategorized > x > Edit, x > Delete, x > doc > Edit, doc > Delete, doc > y > Edit, y > "
                 "Delete, y > New Markdown document"_s);
    }

    void theModesShowSourcePreviewOrBoth()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        QVERIFY(ui.find(field, u"Markdown source"_s));
        QTRY_COMPARE(ui.previewText(), u"text"_s);
        QVERIFY(ui.click(QAccessible::PageTab, u"Edit"_s));
        QTRY_COMPARE(ui.previewText(), u"(none)"_s);
        QVERIFY(ui.find(field, u"Markdown source"_s));
        QVERIFY(ui.click(field, u"Markdown source"_s));
        ui.press(Qt::Key_End);
        ui.type(u"!"_s);
        QVERIFY(ui.click(QAccessible::PageTab, u"Preview"_s));
        QTRY_COMPARE(ui.previewText(), u"text!"_s);
        QVERIFY(!ui.find(field, u"Markdown source"_s));
        QVERIFY(ui.click(QAccessible::PageTab, u"Live"_s));
        QTRY_VERIFY(ui.find(field, u"Markdown source"_s));
        // What was typed can be undone: the field is the same.
        QVERIFY(ui.click(field, u"Markdown source"_s));
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QTRY_COMPARE(ui.previewText(), u"text"_s);
    }

    void selectingDrawsTheLinesAboveAsTheyWere()
    {
        DocumentWindow ui;
        ui.openEditor(u"A line of words that are far from the cursor.\n"_s.repeated(100));
        for (int line = 0; line < 15; ++line)
            ui.press(Qt::Key_Down);
        const QRect firstLines(40, 80, 400, 100);
        QCoreApplication::processEvents();
        const QImage before = ui.window().grabWindow().copy(firstLines);

        for (int line = 0; line < 3; ++line) {
            ui.press(Qt::Key_Down, Qt::ShiftModifier);
            QCoreApplication::processEvents();
            QCOMPARE(ui.window().grabWindow().copy(firstLines), before);
        }
        QVERIFY(ui.find(field, u"Markdown source"_s)->property("selectedText").toString().size() > 100);
    }

    void keysSaveAndClose()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        ui.press(Qt::Key_End, Qt::ControlModifier);
        ui.type(u"1"_s);
        ui.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(ui.onDisk(), QByteArray("text1"));
        QVERIFY(ui.isEditorOpen());
        // Esc in a text belongs to the input method, on a button it leaves.
        ui.press(Qt::Key_Escape);
        QVERIFY(ui.isEditorOpen());
        ui.type(u"2"_s);
        ui.press(Qt::Key_W, Qt::ControlModifier);
        QTRY_VERIFY(!ui.isEditorOpen());
        QCOMPARE(ui.onDisk(), QByteArray("text12"));
        QTRY_VERIFY(ui.hasFocus(button, u"Notes"_s));
    }

    void titleAndCategoryAreChangedInTheEditor()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        ui.planner.library().addDocumentCategory(u"Work"_s);
        QVERIFY(ui.click(field, u"Document name"_s));
        ui.press(Qt::Key_A, Qt::ControlModifier);
        ui.type(u"Renamed"_s);
        ui.press(Qt::Key_Tab);
        ui.press(Qt::Key_Tab); // Past the earlier versions.
        QTRY_VERIFY(ui.hasFocus(QAccessible::ComboBox, u"Category"_s));
        ui.press(Qt::Key_Down);
        QVERIFY(ui.click(button, u"Save"_s));
        QCOMPARE(ui.planner.library().documents().first().title, u"Renamed"_s);
        QCOMPARE(ui.planner.library().documents().first().categoryID,
                 ui.planner.library().documentCategories().first().id);
    }

    void whatCannotBeSavedKeepsEditorAndWindowOpen()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        ui.type(u"more "_s);
        ui.planner.files.setReadOnly(true);

        QVERIFY(ui.click(button, u"Close"_s));
        QVERIFY(!ui.window().close());
        ui.setState("section", ShellModel::Overview);

        QVERIFY(ui.isEditorOpen());
        const QStringList texts = ui.visibleTexts();
        QVERIFY2(
            std::any_of(texts.cbegin(), texts.cend(),
                        [](const QString &text) { return text.startsWith(u"The document could not be saved."_s); }),
            qPrintable(texts.join(u'|')));
        ui.planner.files.setReadOnly(false);
        QVERIFY(ui.click(button, u"Close"_s));
        QTRY_VERIFY(!ui.isEditorOpen());
        QCOMPARE(ui.onDisk(), QByteArray("more text"));
    }

    void anotherScreenAndTheEndOfTheProgramSaveFirst()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        ui.type(u"a "_s);
        ui.setState("section", ShellModel::Reminders);
        QTRY_VERIFY(!ui.isEditorOpen());
        QCOMPARE(ui.onDisk(), QByteArray("a text"));

        ui.setState("section", ShellModel::Documents);
        QTRY_VERIFY(ui.find(button, u"Notes"_s));
        QVERIFY(ui.click(button, u"Notes"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"Markdown source"_s));
        ui.type(u"b "_s);
        ui.quit();
        QCOMPARE(ui.onDisk(), QByteArray("b a text"));
    }

    void aPictureIsInsertedShownAndCanBeTakenBack()
    {
        DocumentWindow ui;
        const QString text = u"A line.\n"_s.repeated(200) + u"text"_s;
        ui.openEditor(text);
        ui.planner.files.write(u"/cat.png"_s, "cat");
        ui.fileDialogs.answerFilesWith({QUrl(u"file:///cat.png"_s)});
        QVERIFY(ui.click(button, u"Insert image"_s));
        const QQuickItem *source = ui.find(field, u"Markdown source"_s);
        QTRY_COMPARE(source->property("cursorPosition"), source->property("length"));
        const QRectF cursor = source->mapRectToScene(source->property("cursorRectangle").toRectF());
        QVERIFY2(QRectF(QPointF(), ui.window().size()).contains(cursor), qPrintable(QString::number(cursor.y())));
        QVERIFY(ui.click(button, u"Save"_s));
        QVERIFY(ui.onDisk().startsWith(text.toUtf8() + "\n\n![](file:///documents/Assets/"));
        // Writing goes on where it was.
        QVERIFY(ui.hasFocus(field, u"Markdown source"_s));
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        ui.press(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(ui.onDisk(), text.toUtf8());
    }

    void aMessageMovesNothingAndLeavesWhenItReportsSuccess()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        const QQuickItem *source = ui.find(field, u"Markdown source"_s);
        const QPointF place = source->mapToScene(QPointF());
        ui.planner.files.setReadOnly(true);
        ui.type(u"more "_s);
        QVERIFY(ui.click(button, u"Save"_s));
        QTRY_VERIFY(ui.find(button, u"Dismiss message"_s));
        QCOMPARE(source->mapToScene(QPointF()), place);
        QVERIFY(ui.click(button, u"Dismiss message"_s));
        QTRY_VERIFY(!ui.find(button, u"Dismiss message"_s));

        ui.planner.files.setReadOnly(false);
        QVERIFY(ui.click(button, u"Save"_s));
        QVERIFY(ui.click(button, u"Copy for WeChat"_s));
        const QString copied = u"WeChat rich text copied; formulas were converted to images."_s;
        QTRY_VERIFY(ui.find(QAccessible::StatusBar, copied));
        QTRY_VERIFY_WITH_TIMEOUT(!ui.find(QAccessible::StatusBar, copied), 10'000);
    }

    void aMarkShowsUnsavedChanges()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        const QString words = u"Unsaved changes"_s;
        const auto description = [&ui] {
            return QAccessible::queryAccessibleInterface(ui.find(button, u"Save"_s))->text(QAccessible::Description);
        };
        QVERIFY(!ui.find(QAccessible::Indicator, words));
        ui.type(u"more "_s);
        QTRY_VERIFY(ui.find(QAccessible::Indicator, words));
        QCOMPARE(description(), words);
        ui.press(Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY(!ui.find(QAccessible::Indicator, words));
        QCOMPARE(description(), u"Saved"_s);
    }

    void linksOpenInTheBrowser()
    {
        DocumentWindow ui;
        ui.openEditor(u"text"_s);
        QTRY_VERIFY(ui.find(QAccessible::StaticText, u"preview: text"_s));
        m_opened.clear();
        QDesktopServices::setUrlHandler(u"https"_s, this, "open");
        QVERIFY(ui.click(QAccessible::StaticText, u"preview: text"_s));
        QTRY_COMPARE(m_opened, u"https://example.org/"_s);
        QDesktopServices::unsetUrlHandler(u"https"_s);
    }

    void aCopyGoesOnWhenItsEditorIsClosed()
    {
        DocumentWindow ui;
        ui.openEditor(u"slow"_s);
        QVERIFY(ui.click(button, u"Copy for WeChat"_s));
        const QPointer<QObject> copier = ui.window().findChild<QObject *>(u"copier"_s);
        QVERIFY(ui.click(button, u"Close"_s));
        QTRY_VERIFY(!ui.isEditorOpen());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(copier);

        QVERIFY(QMetaObject::invokeMethod(copier, "finished", Q_ARG(bool, true)));

        QTRY_VERIFY(ui.find(QAccessible::StatusBar, u"WeChat rich text copied; formulas were converted to images."_s));
        // Nothing keeps the engine any longer.
        QTRY_VERIFY(!copier);
    }

    void withoutAnEngineTheEditorSaysSoAndWorks()
    {
        DocumentWindow ui;
        ui.openLibrary();
        ui.documentDesktop().setSources(QUrl(), QUrl());
        ui.planner.library().addDocument(u"Notes"_s, {});
        QTRY_VERIFY(ui.find(button, u"Notes"_s));
        QVERIFY(ui.click(button, u"Notes"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"Markdown source"_s));
        const QString words = u"The web engine (Qt WebEngine) is missing on this system"_s;
        QTRY_VERIFY(ui.visibleTexts().filter(words + u", so there is no preview."_s).size() == 1);
        QVERIFY(ui.click(button, u"Copy for WeChat"_s));
        QTRY_VERIFY(ui.visibleTexts().filter(words + u", so the formatting cannot be prepared."_s).size() == 1);
        ui.press(Qt::Key_W, Qt::ControlModifier);
        QTRY_VERIFY(!ui.isEditorOpen());
    }

public slots:
    void open(const QUrl &url) { m_opened = url.toString(); }

private:
    QString m_opened;
};

TESSALY_TEST_MAIN(DocumentScreensTest)
#include "DocumentScreensTest.moc"
