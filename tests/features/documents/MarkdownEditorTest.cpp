#include "tests/features/documents/DocumentDriver.h"
#include "tests/support/TestMain.h"
#include "views/documents/MarkdownEditorModel.h"

#include <QImageReader>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// An editor on a document.
struct EditorDriver : DocumentDriver
{
    std::unique_ptr<MarkdownEditorModel> editor;
    MarkdownDocument document;

    explicit EditorDriver(const QString &content = u"# a\n"_s, const QString &category = {})
    {
        hasCategory(u"Notes"_s);
        document = has(u"a"_s, category);
        files.write(path(), content.toUtf8());
        open();
    }

    void open()
    {
        editor = std::make_unique<MarkdownEditorModel>();
        editor->setProperty("store", QVariant::fromValue(store.get()));
        editor->setProperty("desktop", QVariant::fromValue(&desktop));
        editor->open(uuidText(document.id));
    }
    [[nodiscard]] QString path() const { return u"/documents/"_s + uuidText(document.id) + u".md"_s; }
    [[nodiscard]] QString onDisk() const { return QString::fromUtf8(files.read(path()).value_or("(missing)")); }
    [[nodiscard]] const MarkdownDocument &stored() const { return library().documents().first(); }
};

/// A field's document that shows a source.
struct Field
{
    SourceText source;
    QTextDocument document;

    explicit Field(const QString &text)
    {
        document.documentLayout(); // Without one a document tells of no change.
        source.load(text);
        source.show(document, 23);
    }
    void type(int position, const QString &text)
    {
        QTextCursor cursor(&document);
        cursor.setPosition(position);
        cursor.insertText(text);
    }
    void erase(int begin, int end)
    {
        QTextCursor cursor(&document);
        cursor.setPosition(begin);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
};

} // namespace

class MarkdownEditorTest : public QObject
{
    Q_OBJECT

private slots:
    void anEditorOpensLiveWithWhatTheRecordAndTheFileHold()
    {
        const EditorDriver given(u"text"_s, u"Notes"_s);
        QCOMPARE(given.editor->property("mode").toInt(), int(MarkdownEditorModel::MarkdownMode::Split));
        QCOMPARE(given.editor->property("title").toString(), u"a"_s);
        QCOMPARE(given.editor->category(), 1);
        QCOMPARE(given.editor->content(), u"text"_s);
        QCOMPARE(given.editor->previewContent(), u"text"_s);
        QCOMPARE(given.editor->message(), QString());
        QVERIFY(!given.editor->isFresh());
        QVERIFY(EditorDriver().editor->isFresh());
    }

    void aTextThatCannotBeReadTakesNoPicture()
    {
        EditorDriver given;
        given.editor->close();
        given.files.setUnreadable(given.path());
        given.open();
        given.editor->insertImage();
        QVERIFY(given.fileDialogs.questions().isEmpty() && !given.editor->isEditable());
    }

    void lettersAreJoinedWhereTheTextHasSome()
    {
        EditorDriver given;
        given.editor->append(u"中文 -> é 😀"_s);
        QVERIFY(!given.editor->needsShaping());
        QSignalSpy changed(given.editor.get(), &MarkdownEditorModel::needsShapingChanged);
        given.editor->append(u"مرحبا"_s);
        QVERIFY(given.editor->needsShaping());
        QCOMPARE(changed.size(), 1);
    }

    void anEditorThatIsTakenAwaySavesWhatWasTyped()
    {
        EditorDriver given;
        given.editor->append(u"more"_s);
        given.editor.reset();
        QCOMPARE(given.onDisk(), u"# a\nmore"_s);
    }

    void aBurstOfKeysReachesThePreviewOnce()
    {
        EditorDriver given;
        const QSignalSpy changes(given.editor.get(), &MarkdownEditorModel::previewContentChanged);
        for (int key = 0; key < 20; ++key)
            given.editor->append(u"x"_s);
        QCOMPARE(given.editor->previewContent(), u"# a\n"_s);
        QTRY_COMPARE(given.editor->previewContent(), given.editor->content());
        QCOMPARE(changes.size(), 1);
    }

    void aPictureIsAddedToTheEnd_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("added");
        QTest::newRow("empty") << QString() << u"![](%1)\n"_s;
        QTest::newRow("after a line end") << u"a\n"_s << u"![](%1)\n"_s;
        QTest::newRow("within a line") << u"a"_s << u"\n\n![](%1)\n"_s;
    }

    void aPictureIsAddedToTheEnd()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, added);
        EditorDriver given(before);
        given.editor->insertImage();
        QCOMPARE(given.editor->content(), before);
        given.fileDialogs.answerFilesWith({QUrl(u"file:///missing.png"_s)});
        given.editor->insertImage();
        QCOMPARE(given.editor->content(), before);

        given.files.write(u"/in/cat.JPG"_s, "cat");
        given.fileDialogs.answerFilesWith({QUrl(u"file:///in/cat.JPG"_s)});
        given.editor->insertImage();

        const QString copy = given.files.fileNames(u"/documents/Assets"_s).value(0);
        QVERIFY(copy.startsWith(uuidText(given.document.id) + u'-') && copy.endsWith(u".JPG"_s));
        QCOMPARE(given.editor->content(), before + added.arg(u"file:///documents/Assets/"_s + copy));
        QCOMPARE(given.fileDialogs.questions().last(), u"Choose image (png, jpg, jpeg, gif, webp, heic)"_s);
        QTRY_COMPARE(given.editor->previewContent(), given.editor->content());
    }

    void aPictureThatCannotBeShownIsRefusedWithAWord()
    {
        if (QImageReader::supportedImageFormats().contains("heic"))
            QSKIP("Qt reads HEIC here");
        EditorDriver given;
        given.files.write(u"/in/cat.HEIC"_s, "cat");
        given.fileDialogs.answerFilesWith({QUrl(u"file:///in/cat.HEIC"_s)});
        given.editor->insertImage();
        QVERIFY(given.editor->hasFailed());
        QVERIFY2(given.editor->message().startsWith(u"This system cannot show HEIC images"_s),
                 qPrintable(given.editor->message()));
        QCOMPARE(given.editor->content(), u"# a\n"_s);
        QVERIFY(!given.files.exists(u"/documents/Assets"_s));
    }

    void copyingSavesAndTellsHowItWent()
    {
        EditorDriver given;
        given.editor->append(u"more"_s);
        QStringList copied;
        connect(given.editor.get(), &MarkdownEditorModel::copyRequested, this,
                [&copied](const QString &markdown) { copied.append(markdown); });

        given.editor->copyForWeChat();
        QCOMPARE(given.onDisk(), u"# a\nmore"_s);
        QCOMPARE(copied, QStringList{u"# a\nmore"_s});
        QCOMPARE(given.editor->message(), u"Preparing WeChat formatting…"_s);
        given.editor->finishCopy(true);
        QCOMPARE(given.editor->message(), u"WeChat rich text copied; formulas were converted to images."_s);
        given.editor->save();
        QVERIFY(given.editor->message().startsWith(u"WeChat"_s));
        given.editor->finishCopy(false);
        QCOMPARE(given.editor->message(), u"Formatting failed. Check your connection and try again."_s);
        QVERIFY(given.editor->hasFailed());
        // The words follow the language.
        QSignalSpy changed(given.editor.get(), &MarkdownEditorModel::sessionChanged);
        given.store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(given.editor->message(), u"格式生成失败，请检查网络后重试。"_s);
        QCOMPARE(changed.size(), 1);
    }

    void theSourceFollowsEveryChangeOfTheField()
    {
        // A no-break space and a line separator are no blank and no line end.
        Field field(u"one\u00a0two\n\nthr\u2028ee\n😀"_s);
        QCOMPARE(field.source.textToSave(), u"one\u00a0two\n\nthr\u2028ee\n😀"_s);
        const auto expect = [&field](const QString &text) {
            QCOMPARE(field.source.text(), text);
            QCOMPARE(field.source.textToSave(), text);
        };
        field.type(3, u"!"_s);
        expect(u"one!\u00a0two\n\nthr\u2028ee\n😀"_s);
        field.type(0, u"a\nb\u00a0\n"_s);
        expect(u"a\nb\u00a0\none!\u00a0two\n\nthr\u2028ee\n😀"_s);
        field.erase(1, 6);
        expect(u"ane!\u00a0two\n\nthr\u2028ee\n😀"_s);
        field.document.undo();
        field.document.undo();
        expect(u"one!\u00a0two\n\nthr\u2028ee\n😀"_s);
        field.document.redo();
        expect(u"a\nb\u00a0\none!\u00a0two\n\nthr\u2028ee\n😀"_s);
        field.source.append(u"\nend"_s);
        expect(u"a\nb\u00a0\none!\u00a0two\n\nthr\u2028ee\n😀\nend"_s);
        field.document.setPlainText(u"new"_s);
        expect(u"new"_s);
        field.erase(0, 3);
        expect(QString());

        // Pasted text brings a format of its own; the lines stay as far apart as they were.
        QTextCursor(&field.document).insertFragment(QTextDocumentFragment::fromPlainText(u"a\nb"_s));
        expect(u"a\nb"_s);
        const auto hasHeight = [](const QTextBlock &block) {
            return block.blockFormat().lineHeightType() == QTextBlockFormat::FixedHeight;
        };
        QTRY_VERIFY(hasHeight(field.document.firstBlock()) && hasHeight(field.document.lastBlock()));
        field.document.undo();
        expect(QString());
    }

    void aSourceNobodyTouchedStaysAsItWas_data()
    {
        QTest::addColumn<QString>("loaded");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("savedAfterTyping");
        QTest::newRow("unix") << u"a\nb"_s << u"a\nb"_s << u"xa\nb"_s;
        QTest::newRow("windows") << u"a\r\nb\r\n"_s << u"a\nb\n"_s << u"xa\r\nb\r\n"_s;
        QTest::newRow("mixed") << u"a\nb\r\nc\rd"_s << u"a\nb\nc\nd"_s << u"xa\nb\nc\nd"_s;
        QTest::newRow("empty") << QString() << QString() << u"x"_s;
    }

    void aSourceNobodyTouchedStaysAsItWas()
    {
        QFETCH(const QString, loaded);
        QFETCH(const QString, shown);
        QFETCH(const QString, savedAfterTyping);
        Field field(loaded);
        QCOMPARE(field.source.text(), shown);
        QCOMPARE(field.source.textToSave(), loaded);
        field.type(0, u"x"_s);
        QCOMPARE(field.source.textToSave(), savedAfterTyping);
    }
};

TESSALY_TEST_MAIN(MarkdownEditorTest)
#include "MarkdownEditorTest.moc"
