#include "model/MarkdownPage.h"
#include "model/FormulaProtection.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

class MarkdownPageTest : public QObject
{
    Q_OBJECT

private slots:
    void formulasAreWrittenSoThatMarkdownLeavesThemAlone_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("expected");

        QTest::newRow("no formula") << u"a *b* _c_ \\{"_s << u"a *b* _c_ \\{"_s;
        QTest::newRow("a formula without special characters")
            << u"$x+1$ and $\\frac a b$"_s << u"$x+1$ and $\\frac a b$"_s;
        QTest::newRow("row break") << u"$$a \\\\ b$$"_s << u"$$a \\\\\\ b$$"_s;
        QTest::newRow("row break at the end of a line") << u"$$a \\\\\nb$$"_s << u"$$a \\\\\\\\\nb$$"_s;
        QTest::newRow("braces and thin space") << u"$\\{a\\,b\\}$"_s << u"$\\\\{a\\\\,b\\\\}$"_s;
        QTest::newRow("round delimiters") << u"\\(a\\)"_s << u"\\\\(a\\\\)"_s;
        QTest::newRow("square delimiters") << u"\\[a\\]"_s << u"\\\\[a\\\\]"_s;
        QTest::newRow("a pair of underscores") << u"$a_1 + b_2$"_s << u"$a\\_1 + b\\_2$"_s;
        QTest::newRow("underscores of two formulas pair too") << u"$a_{1}$ or $b_{2}$"_s << u"$a\\_{1}$ or $b\\_{2}$"_s;
        QTest::newRow("a single underscore is no emphasis") << u"$a_1$"_s << u"$a_1$"_s;
        QTest::newRow("asterisks") << u"$a*b*c$"_s << u"$a\\*b\\*c$"_s;
        QTest::newRow("emphasis outside stays") << u"*a* $b*c$ *d*"_s << u"*a* $b\\*c$ *d*"_s;
        QTest::newRow("less-than before a letter") << u"$a<b$ $a < c$"_s << u"$a\\<b$ $a < c$"_s;
        QTest::newRow("a line that would start a list") << u"$$a\n+ b\n- c$$"_s << u"$$a\n\\+ b\n\\- c$$"_s;
        QTest::newRow("a line that would start a numbered list") << u"$$a\n1. b$$"_s << u"$$a\n1\\. b$$"_s;
        QTest::newRow("lines of a quote")
            << u"> > $$\n> > a\\\\\n>> + b\n> > > c\n>> $$\n\n> $$*a*\n> \n> $$ *b*"_s
            << u"> > $$\n> > a\\\\\\\\\n>> \\+ b\n> > \\> c\n>> $$\n\n> $$*a*\n> \n> $$ *b*"_s;
        QTest::newRow("a quote in a list") << u"1. > $$\n   > a\n   > $$"_s << u"1. > $$\n   > a\n   > $$"_s;
        QTest::newRow("what would make a link") << u"$\\text{a@b.c} \\href{https://d.e}{www.f.g} 1.5:2$"_s
                                                << u"$\\text{a\\@b.c} \\href{https\\://d.e}{www\\.f.g} 1.5:2$"_s;
        QTest::newRow("code span") << u"`$a_1 b_2$` $c_1$"_s << u"`$a_1 b_2$` $c\\_1$"_s;
        QTest::newRow("fenced code") << u"```\n$a_1 b_2$\n```\n$\\{$"_s << u"```\n$a_1 b_2$\n```\n$\\\\{$"_s;
        QTest::newRow("indented code") << u"x\n\n    $\\{$\n\n$\\{$"_s << u"x\n\n    $\\{$\n\n$\\\\{$"_s;
        QTest::newRow("a paragraph of a list item") << u"- x\n\n    $\\{$"_s << u"- x\n\n    $\\\\{$"_s;
        QTest::newRow("an HTML block up to a blank line")
            << u"a\n<div>\n$a_1 b_2$\n</div>\n\n$a_1 b_2$"_s << u"a\n<div>\n$a_1 b_2$\n</div>\n\n$a\\_1 b\\_2$"_s;
        QTest::newRow("a tag alone begins an HTML block, but not within a paragraph")
            << u"<x-y z='1'>\n$\\{$\n\na\n<b>\n$\\{$"_s << u"<x-y z='1'>\n$\\{$\n\na\n<b>\n$\\\\{$"_s;
        QTest::newRow("tags with text") << u"<b>$\\{$</b>\n<i\n$\\{$"_s << u"<b>$\\\\{$</b>\n<i\n$\\\\{$"_s;
        QTest::newRow("an HTML block that its list ends") << u"- <p>\n  $\\{$\n$\\{$\n- $\\{$\n\n> <p>\n$\\{$"_s
                                                          << u"- <p>\n  $\\{$\n$\\{$\n- $\\\\{$\n\n> <p>\n$\\\\{$"_s;
        QTest::newRow("raw code goes over blank lines")
            << u"<pre>\n\n$\\{$\n</pre> x\n$\\{$"_s << u"<pre>\n\n$\\{$\n</pre> x\n$\\\\{$"_s;
        QTest::newRow("a comment, and one that nothing ends")
            << u"<!-- $\n\n-->\n$\\{$\n\n<!-- $\\{$"_s << u"<!-- $\n\n-->\n$\\\\{$\n\n<!-- $\\\\{$"_s;
        QTest::newRow("an unclosed dollar is text") << u"it costs $5 \\{ and\nmore"_s << u"it costs $5 \\{ and\nmore"_s;
        QTest::newRow("an escaped dollar is text") << u"\\$a_1 b_2\\$"_s << u"\\\\\\$a_1 b_2\\\\\\$"_s;
        QTest::newRow("one that nothing closes needs no care") << u"\\$5 `a`"_s << u"\\$5 `a`"_s;
        QTest::newRow("a dollar does not reach over list items") << u"- $5 *a*\n- $6 *b*"_s << u"- $5 *a*\n- $6 *b*"_s;
        QTest::newRow("a display formula ends at a blank line") << u"$$a\n\n*b* *c* $$"_s << u"$$a\n\n*b* *c* $$"_s;
    }

    void formulasAreWrittenSoThatMarkdownLeavesThemAlone()
    {
        QFETCH(const QString, markdown);
        QFETCH(const QString, expected);
        QCOMPARE(protectFormulas(markdown), expected);
    }

    void onlyFormulasAreLeftToBecomePictures_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("expected"); // @ stands for a dollar that makes no picture.

        const auto row = [](const char *name, const QString &markdown, const QString &expected) {
            QTest::newRow(name) << markdown << expected;
        };
        row("code span", u"$a$ `$b$`"_s, u"$a$ `@b@`"_s);
        row("backticks of two paragraphs are no code span", u"`a\n\n$b$`"_s, u"`a\n\n$b$`"_s);
        row("escaped dollar", u"\\$a $"_s, u"@a $"_s);
        row("escaped dollar in a formula", u"$a\\$b$ $c$"_s, u"$a\\@b$ $c$"_s);
        row("fenced code", u"```\n$d$\n```\n$e$"_s, u"```\n@d@\n```\n$e$"_s);
        row("fenced code in a list", u"1. a\n\n   ~~~\n   $d$\n   ~~~\n   $e$"_s,
            u"1. a\n\n   ~~~\n   @d@\n   ~~~\n   $e$"_s);
        row("a fence that its list ends", u"- ```\n  $a$\n\n$b$"_s, u"- ```\n  @a@\n\n$b$"_s);
        row("indented code", u"a\n\n    $b$\n\n\t$c$\nd"_s, u"a\n\n    @b@\n\n\t@c@\nd"_s);
        row("indented code at the start and after a heading", u"    $a$\n# b\n    $c$"_s, u"    @a@\n# b\n    @c@"_s);
        row("indented line of a paragraph", u"a\n    $b$"_s, u"a\n    $b$"_s);
        row("paragraphs of nested lists", u"- a\n\n  $b$\n  - c\n\n    $d$"_s, u"- a\n\n  $b$\n  - c\n\n    $d$"_s);
        row("indented code in a list", u"- a\n\n      $b$\n-     $c$"_s, u"- a\n\n      @b@\n-     @c@"_s);
        row("code after the list", u"- a\n\nb\n\n    $c$"_s, u"- a\n\nb\n\n    @c@"_s);
        row("code in a quote", u"> a\n>\n>     $b$\n> $c$\n\n    $d$"_s, u"> a\n>\n>     @b@\n> $c$\n\n    @d@"_s);
        row("round and square delimiters are only text", u"\\(x_1*y\\) *a*\n\\[\\text{$b$}_2*\\]"_s,
            u"\\\\(x\\_1\\*y\\\\) *a*\n\\\\[\\text{@b@}\\_2\\*\\\\]"_s);
        row("such signs within formulas", u"$$a \\[2pt]\n\n\\(b\\) $$ $\\[c\\]$"_s,
            u"$$a \\[2pt]\n\n\\(b\\) $$ $\\[c\\]$"_s);
        row("a quote's sign in code", u"```\n> $a$\n    ```\n```\n$b$"_s, u"```\n> @a@\n    ```\n```\n$b$"_s);
        row("code after a quote's paragraph", u"> a\n  ```\n$b$"_s, u"> a\n  ```\n@b@"_s);
        row("lines of a quote", u"> $$a\n> \\> b\n> $$"_s, u"> $$a\n \\> b\n $$"_s);
        row("HTML blocks", u"<p>`$a$` \\(b_1\\)\n\n<pre>\n$a$\n\n\\(</pre>\n$a$"_s,
            u"<p>`$a$` \\(b_1\\)\n\n<pre>\n@a@\n\n\\(</pre>\n$a$"_s);
        row("such signs in code, or alone", u"`\\(a_1\\)` \\( \\["_s, u"`\\(a_1\\)` \\( \\["_s);
    }

    void onlyFormulasAreLeftToBecomePictures()
    {
        QFETCH(const QString, markdown);
        QFETCH(QString, expected);
        QCOMPARE(protectDollars(markdown), expected.replace(u'@', u'\uFDD1'));
    }

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
        QFETCH(const QString, expected);
        QCOMPARE(templateLiteralText(text), expected);
    }

    void localImagesAreEmbedded_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("expected");

        QTest::newRow("PNG") << u"a ![x](file:///d/a.png) b"_s << u"a ![x](data:image/png;base64,aGk=) b"_s;
        QTest::newRow("upper-case JPG") << u"![](file:///d/a.JPG)"_s << u"![](data:image/jpeg;base64,aGk=)"_s;
        QTest::newRow("unknown extension") << u"![](file:///d/a.bmp)"_s << u"![](data:image/png;base64,aGk=)"_s;
        QTest::newRow("two") << u"![](file:///d/a.gif)![](file:///d/a.webp)"_s
                             << u"![](data:image/gif;base64,aGk=)![](data:image/webp;base64,aGk=)"_s;
        QTest::newRow("missing file") << u"![](file:///missing.png)"_s << u"![](file:///missing.png)"_s;
        QTest::newRow("remote picture") << u"![](https://e.example/a.png)"_s << u"![](https://e.example/a.png)"_s;
        QTest::newRow("plain link") << u"[x](file:///d/a.png)"_s << u"[x](file:///d/a.png)"_s;
    }

    void localImagesAreEmbedded()
    {
        QFETCH(const QString, markdown);
        QFETCH(const QString, expected);
        const FileReader reader = [](const QUrl &url) -> std::optional<QByteArray> {
            return url.path().startsWith(u"/d/"_s) ? std::optional<QByteArray>("hi") : std::nullopt;
        };
        QCOMPARE(embeddingLocalImages(markdown, reader), expected);
    }
};

TESSALY_TEST_MAIN(MarkdownPageTest)
#include "MarkdownPageTest.moc"
