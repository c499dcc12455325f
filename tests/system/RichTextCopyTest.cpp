#include "tests/support/TestMain.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRegularExpression>
#include <QSignalSpy>

using namespace tessaly;
using namespace Qt::StringLiterals;

/// Copies through the real engine to the clipboard of a real display, which other programs read.
class RichTextCopyTest : public QObject
{
    Q_OBJECT

private slots:
    void everyElementCarriesItsOwnLook_data();
    void everyElementCarriesItsOwnLook();
    void anotherProgramFindsExactlyTwoTypes();
    void ofTwoCopiesOnlyTheLaterAnswers();
    void aFailureLeavesTheClipboardAlone();

private:
    [[nodiscard]] std::unique_ptr<QObject> copier()
    {
        QQmlComponent component(&m_engine);
        component.setData("import Tessaly.DocumentEngine\nWeChatClipboardRenderer {}", QUrl());
        std::unique_ptr<QObject> made(component.create());
        if (!made)
            qFatal("%s", qPrintable(component.errorString()));
        return made;
    }

    static void copy(QObject &copier, const QString &markdown)
    {
        QMetaObject::invokeMethod(&copier, "copyDocumentForWeChat", Q_ARG(QString, markdown));
    }

    /// What the clipboard holds after the copy; empty when it failed.
    [[nodiscard]] QString htmlOf(const QString &markdown)
    {
        const auto one = copier();
        QSignalSpy finished(one.get(), SIGNAL(finished(bool)));
        copy(*one, markdown);
        if (!finished.wait(patience) || !finished.first().first().toBool())
            return {};
        return QString::fromUtf8(QGuiApplication::clipboard()->mimeData()->data(u"text/html"_s));
    }

    /// What xclip prints; it asks this program, which must go on meanwhile.
    [[nodiscard]] static QByteArray clipboardSeenOutside(const QString &target)
    {
        QProcess process;
        QSignalSpy finished(&process, &QProcess::finished);
        process.start(u"xclip"_s, {u"-selection"_s, u"clipboard"_s, u"-out"_s, u"-target"_s, target});
        return finished.wait(patience) ? process.readAllStandardOutput() : QByteArray();
    }

    static constexpr int patience = 60'000;
    QQmlEngine m_engine;
};

void RichTextCopyTest::everyElementCarriesItsOwnLook_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<QStringList>("patterns");

    const auto row = [](const char *name, const QString &markdown, const QStringList &patterns) {
        QTest::newRow(name) << markdown << patterns;
    };
    const QString service = u"src=\"https://latex\\.codecogs\\.com/svg\\.image\\?"_s;
    row("formula in a line", u"a $x^2$ b"_s,
        {u"<p style=[^>]*>a <img "_s + service + u"x%5E2\" alt=\"formula\" style=\"[^\"]*display: inline-block"_s});
    row("formula of its own", u"a\n$$\nx\n+ y\n$$\nb"_s,
        {service + u"x%0A%2B%20y\" alt=\"formula\" style=\"[^\"]*margin: 16px auto[^\"]*display: block"_s});
    row("a lone dollar", u"costs $5\nor $"_s, {u"costs \\$5<br[^>]*>or \\$"_s});
    row("prices, and a bar in a cell", u"$5 **a** $6\n\n| $P(A\\|B)$ | $7 |\n| - | - |"_s,
        {u">\\$5 <strong[^>]*>a</strong> \\$6<"_s, service + u"P\\(A%7CB\\)\""_s, u">\\$7</th>"_s});
    row("round and square delimiters stay", u"\\(x_1,y_2\\) \\\\(a\\\\)\n\n\\[*b* \\\\ c\\]"_s,
        {u">\\\\\\(x_1,y_2\\\\\\) \\\\\\(a\\\\\\)<"_s, u">\\\\\\[\\*b\\* \\\\\\\\ c\\\\\\]<"_s});
    row("paragraphs and list items", u"a\n\n- b"_s,
        {u"<p style=\"[^\"]*margin: 12px 0px[^\"]*width: auto"_s, u"<li style=\"[^\"]*width: auto"_s,
         u"<ul style=\"[^\"]*padding: 0px 0px 0px 26px"_s});
    row("table", u"| a |\n| - |\n| b |"_s,
        {u"<table style=\"[^\"]*margin: 16px 0px[^\"]*width: 100%"_s,
         u"<th style=\"[^\"]*background-color: rgb\\(243, 243, 243\\)"_s,
         u"<td style=\"[^\"]*border-width: 1px[^\"]*|<td style=\"[^\"]*border: 1px solid rgb\\(153, 153, 153\\)"_s});
    row("colours of code", u"```python\ndef f(): pass\n```"_s,
        {u"<span style=\"color: rgb\\(215, 58, 73\\)[^>]*>def<"_s});
    row("code without a frame of its own", u"```python\nf()\n```"_s,
        {u"<code style=\"[^\"]*background-color: rgba\\(0, 0, 0, 0\\)[^\"]*padding: 0px;"_s});
    row("alignment of columns", u"| a | b |\n| -: | :-: |\n| c | d |"_s,
        {u"<th [^>]*text-align: right[^>]*>a<"_s, u"<td [^>]*text-align: right[^>]*>c<"_s,
         u"<td [^>]*text-align: center[^>]*>d<"_s});
    row("margins as they were written", u"<p style='margin:0 -4px'>a</p>"_s, {u"<p style=\"[^\"]*margin: 0px -4px"_s});
    row("elements written as words", u"a <link> <meta x> <base>"_s,
        {u">a &lt;link&gt; &lt;meta x&gt; &lt;base&gt;<"_s});
    row("elements of no standard", u"<x-widget src='x'>a</x-widget>"_s, {u"^(?![\\s\\S]*x-widget)[\\s\\S]*>a<"_s});
    row("heading", u"# Title"_s, {u"<h1 style=\"[^\"]*font-size: 24px; font-weight: 700"_s});
    row("Chinese, emoji, right to left", u"中文 😀 שלום"_s, {u">中文 😀 שלום<"_s});
    row("pictures keep their address", u"![](file:///a.png) ![](rel.png)"_s,
        {u"src=\"file:///a.png\""_s, u"src=\"rel.png\""_s});
    row("script as text", u"`</script>` <b class='x' id='content'>c</b>"_s,
        {u"&lt;/script&gt;"_s, u"<b style=[^>]*>c<"_s});
    row("dollars that are none of a formula", u"\\$5, \\$6, `$HOME $PATH`\n\n```sh\necho $a $b\n```\n\n    $c$"_s,
        {u">\\$5, \\$6, <"_s, u">\\$HOME \\$PATH<"_s, u">\\$a<.*>\\$b<"_s, u"^(?![\\s\\S]*svg\\.image)"_s});
    row("what could run or load",
        u"<iframe src='x'></iframe><form action='x'><b onclick='x' data-x='y'>a</b></form>"
        "<a href='java&#10;script:x'>b</a> <a href='data:text/html,x'>c</a>"
        "<style>i{color:red}</style><i>d</i><meta name='x'><base href='x'><object></object>"_s,
        {u">a</b>"_s, u"<a style=[^>]*>b</a>"_s, u"<a style=[^>]*>c</a>"_s,
         u"<i style=\"color: rgb\\(34, 34, 34\\)"_s});
    row("what loads but pictures",
        u"<video autoplay src='https://load/'></video><audio src='https://load/'><source src='https://load/'></audio>"
        "<picture><source srcset='https://load/'><img src='https://picture/' srcset='https://load/ 2x'></picture>"
        "<svg><image href='https://load/'/><use xlink:href='https://load/'/><a href='https://link/'><text>a</text></a>"
        "</svg><table background='https://load/'><tr><td>b</table><input type='image' src='https://load/'>"_s,
        {u"^(?![\\s\\S]*https://load)"_s, u"<img src=\"https://picture/\""_s, u"<a href=\"https://link/\""_s,
         u">b</td>"_s});
    row("alike but not the same", u"<b style='color:red'><i>a</i></b> <b><i>b</i></b> [c](d) <a>e</a>\n> *f*"_s,
        {u"<i style=\"color: rgb\\(255, 0, 0\\)[^>]*>a"_s, u"<i style=\"color: rgb\\(34, 34, 34\\)[^>]*>b"_s,
         u"<a [^>]*style=\"color: rgb\\(0, 0, 238\\)[^>]*>c"_s, u"<a style=\"color: rgb\\(34, 34, 34\\)[^>]*>e"_s,
         u"<em style=\"color: rgb\\(85, 85, 85\\)[^>]*>f"_s});
    row("line heights of larger text", u"# a\n\n> # b"_s,
        {u"<h1 [^>]*line-height: 42px[^>]*>a"_s, u"<h1 [^>]*line-height: 28px[^>]*>b"_s});
}

void RichTextCopyTest::everyElementCarriesItsOwnLook()
{
    QFETCH(const QString, markdown);
    QFETCH(const QStringList, patterns);
    const QString html = htmlOf(markdown);
    for (const QString &pattern : patterns)
        QVERIFY2(html.contains(QRegularExpression(pattern)), qPrintable(pattern + u"\nnot in\n"_s + html));
    QVERIFY(!html.contains(QRegularExpression(u"<[^>]* (class|id|on[a-z]+|data-[a-z]+)="_s)));
    QVERIFY(!html.contains(QRegularExpression(u"<(script|style|iframe|form|meta|base|object)"_s)));
    // One property that only an element's own style can say, for every element.
    QCOMPARE(html.count(u"word-break: "_s), html.count(QRegularExpression(u"<[a-z]"_s)));
}

void RichTextCopyTest::anotherProgramFindsExactlyTwoTypes()
{
    const QString markdown = u"# 标题 $x$\n\n- *a*\n"_s;
    const QString html = htmlOf(markdown);
    QVERIFY(!html.isEmpty());
    QCOMPARE(QGuiApplication::clipboard()->mimeData()->formats(), (QStringList{u"text/plain"_s, u"text/html"_s}));

    QByteArrayList types;
    for (const QByteArray &type : clipboardSeenOutside(u"TARGETS"_s).split('\n')) {
        if (type.contains('/') && !type.contains(';'))
            types.append(type);
    }
    std::sort(types.begin(), types.end());
    QCOMPARE(types, (QByteArrayList{"text/html", "text/plain"}));
    QCOMPARE(QString::fromUtf8(clipboardSeenOutside(u"UTF8_STRING"_s)), markdown);
    QCOMPARE(QString::fromUtf8(clipboardSeenOutside(u"text/html"_s)), html);
}

void RichTextCopyTest::ofTwoCopiesOnlyTheLaterAnswers()
{
    const auto first = copier();
    const auto second = copier();
    QSignalSpy firstFinished(first.get(), SIGNAL(finished(bool)));
    QSignalSpy secondFinished(second.get(), SIGNAL(finished(bool)));
    copy(*first, u"first"_s);
    copy(*second, u"second"_s);
    QVERIFY(secondFinished.wait(patience));
    QCOMPARE(secondFinished.first().first(), QVariant(true));
    QCOMPARE(QGuiApplication::clipboard()->text(), u"second"_s);
    QVERIFY(!htmlOf(u"third"_s).isEmpty());
    QCOMPARE(firstFinished.count(), 0);
    QCOMPARE(secondFinished.count(), 1);
}

void RichTextCopyTest::aFailureLeavesTheClipboardAlone()
{
    QGuiApplication::clipboard()->setText(u"before"_s);
    const auto one = copier();
    QSignalSpy finished(one.get(), SIGNAL(finished(bool)));
    copy(*one, QString()); // Gives an empty page, which counts as none.
    QVERIFY(finished.wait(patience));
    QCOMPARE(finished.first().first(), QVariant(false));
    QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
}

int main(int argc, char *argv[])
{
    fixTestEnvironment();
    qputenv("QT_QPA_PLATFORM", "xcb"); // Another program cannot see an offscreen clipboard.
    QGuiApplication application(argc, argv);
    RichTextCopyTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RichTextCopyTest.moc"
