#include "model/MarkdownPage.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

class MarkdownPageTest : public QObject
{
    Q_OBJECT

private slots:
    void textStaysInsideTheTemplateLiteral_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("backslash, then backtick") << u"\\`"_s << u"\\\\\\`"_s;
        QTest::newRow("substitution") << u"${x} $y"_s << u"\\${x} $y"_s;
        QTest::newRow("end of script") << u"</script></SCRIPT >"_s << u"<\\/script><\\/SCRIPT >"_s;
        QTest::newRow("start of script") << u"<script>"_s << u"<\\script>"_s;
        QTest::newRow("comment") << u"<!-- x -->"_s << u"<\\!-- x -->"_s;
        QTest::newRow("other elements") << u"<b></b><!doctype>"_s << u"<b></b><!doctype>"_s;
    }

    void textStaysInsideTheTemplateLiteral()
    {
        QFETCH(const QString, text);
        QTEST(templateLiteralText(text), "expected");
    }

    void localImagesAreEmbedded_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("expected");

        QTest::newRow("PNG") << u"a ![x](file:///d/a.png) b"_s << u"a ![x](data:image/png;base64,aGk=) b"_s;
        QTest::newRow("upper-case JPG") << u"![](file:///d/a.JPG)"_s << u"![](data:image/jpeg;base64,aGk=)"_s;
        QTest::newRow("unknown extension") << u"![](file:///d/a.bmp)"_s << u"![](data:image/png;base64,aGk=)"_s;
        QTest::newRow("drawing") << u"![](file:///d/a.svg)"_s << u"![](data:image/svg+xml;base64,aGk=)"_s;
        QTest::newRow("two") << u"![](file:///d/a.gif)![](file:///d/a.webp)"_s
                             << u"![](data:image/gif;base64,aGk=)![](data:image/webp;base64,aGk=)"_s;
        QTest::newRow("missing file") << u"![](file:///missing.png)"_s << u"![](file:///missing.png)"_s;
        QTest::newRow("remote picture") << u"![](https://e.example/a.png)"_s << u"![](https://e.example/a.png)"_s;
        QTest::newRow("plain link") << u"[x](file:///d/a.png)"_s << u"[x](file:///d/a.png)"_s;
    }

    void localImagesAreEmbedded()
    {
        QFETCH(const QString, markdown);
        const FileReader reader = [](const QUrl &url) -> std::optional<QByteArray> {
            return url.path().startsWith(u"/d/"_s) ? std::optional<QByteArray>("hi") : std::nullopt;
        };
        QTEST(embeddingLocalImages(markdown, reader), "expected");
    }
};

TESSALY_TEST_MAIN(MarkdownPageTest)
#include "MarkdownPageTest.moc"
