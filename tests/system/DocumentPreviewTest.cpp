#include "tests/support/TestMain.h"
#include "tests/system/DocumentUnderTest.h"

#include <QDesktopServices>
#include <QImage>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>

using namespace tessaly;
using namespace Qt::StringLiterals;

/// What a user sees of a document, in the real engine.
class DocumentPreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void rendersWhatMarkdownMeans_data();
    void rendersWhatMarkdownMeans();
    void anEditLeavesTheRestAsItIs_data();
    void anEditLeavesTheRestAsItIs();
    void definitionsOfAFormulaHoldForTheOthers();
    void showsTwentyMegabytesOfPictures();
    void showsTenThousandLines();
    void typesetsManyFormulasWhereTheyAreSeen();
    void keepsTheOldRenderingUntilTheNewOneIsComplete();
    void showsTheEndOnRequest();
    void skipsTextsThatComeTooFastButNotTheLast();
    void reportsLinksForABrowserOnly();
    void followsTheColourSchemeAtOnce();
    void restsWhileItIsHidden();
    void comesBackWhenThePageBreaks();
    void leavesOutOnlyWhatTheEngineSaysOfItself();

private:
    std::unique_ptr<DocumentUnderTest> m_document = std::make_unique<DocumentUnderTest>();
};

namespace {

QtMessageHandler engineHandler = nullptr;
/// What it passed on.
QStringList passedOn;

/// Receives what would be given to the desktop's programs.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    UrlCatcher()
    {
        for (const QString &scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~UrlCatcher() override
    {
        for (const QString &scheme : schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }

private:
    const QStringList schemes{u"http"_s, u"https"_s, u"mailto"_s, u"smb"_s, u"file"_s};
};

const QString content = u"document.getElementById('content').textContent.trim()"_s;
/// Without what tells the requests of pages apart.
const QString markup = u"document.getElementById('content').innerHTML.replace(/\\/picture\\/[^?]*/g, '')"_s;

QString count(const QString &selector)
{
    return u"document.querySelectorAll('%1').length"_s.arg(selector);
}

/// Noise, which no format makes smaller.
QString noisePicture(const QTemporaryDir &folder, const QString &name, int side)
{
    QImage image(side, side, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int row = 0; row < side; ++row)
        random.fillRange(reinterpret_cast<quint32 *>(image.scanLine(row)), side);
    const QString path = folder.filePath(name);
    return image.save(path, "PNG") ? QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) : QString();
}

} // namespace

void DocumentPreviewTest::rendersWhatMarkdownMeans_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<QString>("script");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("rows of aligned equations")
        << u"$$\\begin{aligned} a &= b \\\\ c &= d \\\\ e &= f \\end{aligned}$$"_s << count(u"mjx-mtr"_s)
        << QVariant(3);
    QTest::newRow("the four delimiters") << u"$a$ \\(b\\)\n\n$$c$$\n\n\\[d\\]"_s
                                         << count(u"mjx-container"_s) + u"*10+"_s +
                                                count(u"mjx-container[display=true]"_s)
                                         << QVariant(42);
    QTest::newRow("indices are no emphasis")
        << u"$a_1 + b_2$ and $c_1 * d_2 * e$"_s << count(u"mjx-msub"_s) + u"*10+"_s + count(u"em"_s) << QVariant(40);
    QTest::newRow("indices within raw HTML") << u"<div>\n$a_1 + b_2$\n</div>\n\n<pre>\n$c_1 d_2$\n</pre>\n$e_1$ $f_2$"_s
                                             << count(u"mjx-msub"_s) << QVariant(4);
    QTest::newRow("braces and thin spaces") << u"$\\{a\\,b\\}$"_s << count(u"mjx-mspace, mjx-merror"_s) << QVariant(1);
    QTest::newRow("an extension that MathJax loads later")
        << u"$\\cancel{x}$"_s << count(u"mjx-menclose"_s) << QVariant(1);
    QTest::newRow("the typesetter's own fonts")
        << u"$x$"_s << u"[...document.fonts].some(face => face.family.startsWith('MJX') && face.status === 'loaded')"_s
        << QVariant(true);
    QTest::newRow("colours of code") << u"```python\ndef f(): pass\n```"_s
                                     << u"getComputedStyle(document.querySelector('.hljs-keyword')).color"_s
                                     << QVariant(u"rgb(215, 58, 73)"_s);
    QTest::newRow("table") << u"| a | b |\n| - | - |\n| 1 | 2 |"_s
                           << u"getComputedStyle(document.querySelector('td')).borderTopWidth + "_s + count(u"th, td"_s)
                           << QVariant(u"1px4"_s);
    QTest::newRow("nested lists") << u"- a\n  1. b\n     - c"_s << count(u"ul > li > ol > li > ul > li"_s)
                                  << QVariant(1);
    QTest::newRow("task list") << u"- [x] done\n- [ ] open"_s
                               << count(u"input:disabled"_s) + u"*10+"_s + count(u"input:checked"_s) << QVariant(21);
    QTest::newRow("a line end is a break") << u"a\nb\r\nc"_s << count(u"p > br"_s) << QVariant(2);
    QTest::newRow("Chinese, emoji, right to left")
        << u"**中文**测试 😀 👨‍👩‍👧 שלום مرحبا"_s << content
        << QVariant(u"中文测试 😀 👨‍👩‍👧 שלום مرحبا"_s);
    QTest::newRow("what would end a script or a literal")
        << u"```\n</script><!-- <script> ` ${x} \\` \\\n```"_s << content
        << QVariant(u"</script><!-- <script> ` ${x} \\` \\"_s);
    for (const char *start : {"<script>", "<ScRiPt src='x'>", "</script>", "<!-- a", "<style>", "<textarea>", "<title>",
                              "<select>", "<video src='x'>", "<xmp>", "<?php", "<plaintext>"}) {
        QTest::addRow("unclosed %s", start)
            << QLatin1String(start) + u"\n**b** <i>c</i>\n\n- `<style>`\n- d"_s
            << u"["_s + count(u"strong, i, li, code"_s) +
                   u", document.body.innerText.includes(`%1`)].join()"_s.arg(QLatin1String(start))
            << QVariant(u"5,true"_s);
    }
    QTest::newRow("closed elements are what they are")
        << u"x <textarea>y</textarea> <!-- y --> <b>z</b> \\<title>"_s
        << u"document.querySelector('textarea').value + document.querySelector('b').nextSibling.data"_s
        << QVariant(u"y <title>"_s);
    QTest::newRow("a text changes nothing but itself")
        << u"<style>b{color:red}</style>\n\n<svg><style>b{color:red}</style></svg><link rel=stylesheet href=x>"
           "<meta http-equiv=x><base href=x><iframe src=x></iframe><object></object><embed src=x>"
           "<noscript><p title='</noscript><style>b{color:red}</style>'></noscript> **b** `<style>`"_s
        << count(u"#content :is(style,link,meta,base,iframe,object,embed)"_s) +
               u"+getComputedStyle(document.querySelector('strong')).color+document.querySelector('code').innerText"_s
        << QVariant(u"0rgb(34, 34, 34)<style>"_s);
    QTest::newRow("elements written as words")
        << u"a <link> <meta x> <base> b"_s << content << QVariant(u"a <link> <meta x> <base> b"_s);
    QTest::newRow("alignment of columns")
        << u"| a | b | c |\n| -: | :-: | - |\n| 1 | 2 | 3 |"_s
        << u"[...document.querySelectorAll('td')].map(cell => getComputedStyle(cell).textAlign).join()"_s
        << QVariant(u"right,center,left"_s);
    QTest::newRow("nothing is wider than the view")
        << u"%1 `%1`\n\n# %1\n\n> - %1\n\n    %1\n\n|%2\n|%3\n|%2\n\n$%4$\n\n$$%4$$"_s.arg(
               QString(300, u'x'), u" word |"_s.repeated(40), u"-|"_s.repeated(40), u"a+"_s.repeated(100) + u'b')
        << u"document.documentElement.scrollWidth <= innerWidth"_s << QVariant(true);
    QTest::newRow("prices")
        << u"| a | b | c | d |\n| - | - | - | - |\n| Pro | $10 | $100 | $P(A\\|B)$ |\n\n$5 **b** $6"_s
        << u"["_s + count(u"td"_s) + u", "_s + count(u"mjx-container"_s) + u", "_s + count(u"strong"_s) + u"].join()"_s
        << QVariant(u"4,1,1"_s);
    QTest::newRow("an environment without delimiters")
        << u"\\begin{align}\na &= b \\\\\n&= c\n\\end{align}"_s << count(u"mjx-mtr"_s) << QVariant(2);
    QTest::newRow("brackets that are no formula")
        << u"\\[1\\] [a](https://a.org/Rust_\\(b\\))"_s
        << u"document.querySelector('p').innerText + document.querySelector('a').href"_s
        << QVariant(u"[1] ahttps://a.org/Rust_(b)"_s);
    QTest::newRow("dollars in indented code") << u"a\n\n    $x$"_s << count(u"mjx-container"_s) << QVariant(0);
    QTest::newRow("escaped dollars") << u"\\$5 and \\$6, $x$"_s
                                     << u"document.querySelector('p').innerText.slice(0, 10) + "_s +
                                            count(u"mjx-container"_s)
                                     << QVariant(u"$5 and $6,1"_s);
    QTest::newRow("names that the page uses itself")
        << u"<i id='content'>a</i><i name='MathJax'>b</i> $x$"_s << count(u"mjx-container"_s) << QVariant(1);
}

void DocumentPreviewTest::rendersWhatMarkdownMeans()
{
    QFETCH(const QString, markdown);
    QFETCH(const QString, script);
    QVERIFY(m_document->show(markdown));
    QTEST(m_document->ask(script), "expected");
    const QVariant edited = m_document->ask(markup);
    QVERIFY(m_document->showAnew(markdown));
    QTEST(m_document->ask(script), "expected");
    QCOMPARE(edited, m_document->ask(markup));
}

void DocumentPreviewTest::anEditLeavesTheRestAsItIs_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");

    const auto row = [](const char *name, const QString &from, const QString &to) {
        QTest::newRow(name) << from << to;
    };
    row("the last paragraph", u"@last"_s, u"@changed, *last*"_s);
    row("a paragraph in front", u"@first"_s, u"@new\n\nfirst"_s);
    row("no paragraph in front", u"@first"_s, QString());
    row("in the same paragraph", u"@within"_s, u"@with *more* text"_s);
    row("in the same list", u"- @item\n"_s, u"- @new\n- item\n- other\n"_s);
    row("between the tags of an element", u"@inside"_s, u"@inside, and $y$\n\nmore"_s);
    row("in code", u"@def"_s, u"@class"_s);
    row("the target of a link", u"/@target"_s, u"/@other"_s);
}

void DocumentPreviewTest::anEditLeavesTheRestAsItIs()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    QString text =
        u"@first\n\n@within ![](data:image/png;base64,AA==) and $x_1$ or $x_1$\n\n- @item\n- $x_2$\n- ![](%1)\n\n"
        "<details><summary>a</summary>\n\n@inside $x_3$\n\n![](https://127.0.0.1:9/)\n\n</details>\n\n"
        "```python\n@def f(): pass\n```\n\n[link]\n\n@last\n\n[link]: /@target\n"_s;
    const QTemporaryDir folder;
    text = text.arg(noisePicture(folder, u"a.png"_s, 4));
    QString edited = text;
    edited.replace(from, to).remove(u'@');
    text.remove(u'@');
    const QString things = u"[...document.querySelectorAll('#content :is(img, .tessaly-formula, details)')]"_s;

    QVERIFY(m_document->showAnew(text));
    const QVariant page = m_document->ask(u"location.pathname"_s);
    const int count = m_document
                          ->ask(u"window.things = %1; document.querySelector('details').open = true;"
                                " things.length"_s.arg(things))
                          .toInt();
    QCOMPARE(count, 8);
    QVERIFY(m_document->show(edited));
    QCOMPARE(m_document->ask(u"location.pathname"_s), page);
    QCOMPARE(m_document->ask(u"const now = %1; things.filter(thing => !now.includes(thing)).length"_s.arg(things)),
             QVariant(0));
    QCOMPARE(m_document->ask(u"document.querySelector('details').open"_s), QVariant(true));
    (void)m_document->ask(u"document.querySelector('details').open = false"_s);
    const QVariant markupOfEdit = m_document->ask(markup);
    QVERIFY(m_document->showAnew(edited));
    QCOMPARE(markupOfEdit, m_document->ask(markup));
}

void DocumentPreviewTest::definitionsOfAFormulaHoldForTheOthers()
{
    const QString content = u"document.querySelectorAll('mjx-merror').length + '/' +"
                            " document.querySelectorAll('#content mjx-c.mjx-c1D44E').length"_s;
    QVERIFY(m_document->showAnew(u"$\\newcommand{\\mine}{a} x$\n\n$\\mine$\n\nend"_s));
    QCOMPARE(m_document->ask(content), QVariant(u"0/1"_s));
    QVERIFY(m_document->show(u"$\\newcommand{\\mine}{a a} x$\n\n$\\mine$\n\nend"_s));
    QCOMPARE(m_document->ask(content), QVariant(u"0/2"_s));
    QVERIFY(m_document->show(u"$x$\n\n$\\mine$\n\nend"_s));
    const QVariant undefined = m_document->ask(markup);
    QVERIFY(m_document->showAnew(u"$x$\n\n$\\mine$\n\nend"_s));
    QCOMPARE(undefined, m_document->ask(markup));
}

void DocumentPreviewTest::showsTwentyMegabytesOfPictures()
{
    constexpr int side = 1180; // about 4 MB as PNG
    constexpr int pictures = 5;
    const QTemporaryDir folder;
    QString markdown = u"# Pictures\n"_s;
    for (int i = 0; i < pictures; ++i)
        markdown += u"![](%1)\n"_s.arg(
            noisePicture(folder, u"图 %1 (a) [b].png"_s.arg(i), side).replace(u'(', u"%28"_s).replace(u')', u"%29"_s));
    QVERIFY(m_document->show(markdown));
    QCOMPARE(m_document->ask(u"[...document.images].filter(image => image.naturalWidth === %1).length"_s.arg(side)),
             QVariant(pictures));
    QVERIFY(m_document->ask(u"[...document.images].reduce((sum, image) => sum + image.src.length, 0)"_s).toInt() >
            20'000'000);
}

void DocumentPreviewTest::showsTenThousandLines()
{
    QString markdown;
    for (int line = 0; line < 10'000; ++line)
        markdown += u"Line %1 with **bold** and `code`\n"_s.arg(line) + (line % 10 == 9 ? u"\n"_s : QString());
    QVERIFY(m_document->show(markdown));
    QCOMPARE(m_document->ask(count(u"p"_s) + u"+"_s + count(u"br"_s)), QVariant(10'000));
}

void DocumentPreviewTest::typesetsManyFormulasWhereTheyAreSeen()
{
    const QString formulas = u"Some $x^2$ *and $y$* here.\n$$\na\n$$\n\n- $z$\n\n"_s.repeated(500);
    const QString last = u"[...document.querySelectorAll('li')].at(-1).querySelectorAll('mjx-container').length"_s;
    const QString raw = u"[...document.querySelectorAll('#content > *')].filter(block => {"
                        "const {top, bottom} = block.getBoundingClientRect();"
                        "return bottom > 0 && top < innerHeight && block.innerText.includes('$'); }).length"_s;
    QVERIFY(m_document->show(formulas));
    QCOMPARE(m_document->ask(raw), QVariant(0));
    QCOMPARE(m_document->ask(last), QVariant(0));

    (void)m_document->ask(u"scrollTo(0, document.body.scrollHeight)"_s);
    QTRY_COMPARE(m_document->ask(last), QVariant(1));
    (void)m_document->ask(u"scrollTo(0, document.body.scrollHeight)"_s);
    QTRY_COMPARE(m_document->ask(raw), QVariant(0));
    const QString place = u"Math.round([...document.querySelectorAll('p')].at(-1).getBoundingClientRect().top)"_s;
    const int before = m_document->ask(place).toInt();
    QVERIFY(m_document->show(u"more"_s + formulas));
    QCOMPARE(m_document->ask(raw), QVariant(0));
    QVERIFY(std::abs(m_document->ask(place).toInt() - before) <= 2);
}

void DocumentPreviewTest::keepsTheOldRenderingUntilTheNewOneIsComplete()
{
    const QString blocks = u"<div style='background:#008000;height:4000px'></div>\n\n"_s;
    const auto isGreen = [this] { return m_document->picture().pixelColor(300, 300) == QColor(0, 128, 0); };
    QVERIFY(m_document->show(blocks));
    (void)m_document->ask(u"scrollTo(0, 1234)"_s);
    QTRY_VERIFY(isGreen());

    int frames = 0;
    int others = 0;
    const auto connection = QObject::connect(&m_document->view(), &QQuickWindow::afterRendering, [&] { ++frames; });
    m_document->type(blocks + u"more\n\n$x$"_s);
    QVERIFY(QTest::qWaitFor(
        [&] {
            others += isGreen() ? 0 : 1;
            return !m_document->isRendering();
        },
        60'000));
    const int after = frames + 5;
    while (frames < after) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        others += isGreen() ? 0 : 1;
        m_document->view().update();
    }
    QObject::disconnect(connection);
    QCOMPARE(others, 0);
    QCOMPARE(m_document->ask(u"scrollY"_s), QVariant(1234));
    QCOMPARE(m_document->ask(count(u"mjx-container"_s)), QVariant(1));
}

void DocumentPreviewTest::showsTheEndOnRequest()
{
    const QString blocks = u"block\n\n"_s.repeated(300);
    QVERIFY(m_document->show(blocks));
    m_document->showEnd();
    QVERIFY(m_document->show(blocks + u"last"_s));
    const QString isAtEnd = u"Math.ceil(scrollY + innerHeight) >= document.documentElement.scrollHeight"_s;
    QCOMPARE(m_document->ask(isAtEnd), QVariant(true));
    // From then on the place stays as usual.
    (void)m_document->ask(u"scrollTo(0, 0)"_s);
    QVERIFY(m_document->show(blocks + u"more"_s));
    QCOMPARE(m_document->ask(u"scrollY"_s), QVariant(0));
}

void DocumentPreviewTest::skipsTextsThatComeTooFastButNotTheLast()
{
    QVERIFY(m_document->show(u"start"_s));
    for (int i = 0; i < 20; ++i)
        m_document->type(u"text %1"_s.arg(i));
    QVERIFY(m_document->show(u"the last"_s));
    QCOMPARE(m_document->ask(content), QVariant(u"the last"_s));
}

void DocumentPreviewTest::reportsLinksForABrowserOnly()
{
    UrlCatcher openedByTheEngine;
    QVERIFY(m_document->show(u"[a](https://example.org/a)\n\n<a href='http://example.org/b' target='_blank'>b</a>\n\n"
                             "[c](file:///etc/passwd)\n\n[d](javascript:alert(1))\n\n[e](other.md)\n\n"
                             "[f](smb://host/share)\n\n[g](data:text/html,x)\n\n<a id='here' href='#here'>h</a>\n\n"
                             "[i](mailto:a@example.org)"_s));
    const QVariant page = m_document->ask(u"location.pathname"_s);
    for (int link = 0; link < 9; ++link) {
        const QStringList place =
            m_document
                ->ask(u"(r => `${Math.round(r.x + r.width / 2)} ${Math.round(r.y + r.height / 2)}`)("
                      "document.querySelectorAll('a')[%1].getBoundingClientRect())"_s.arg(link))
                .toString()
                .split(u' ');
        QTest::mouseClick(&m_document->view(), Qt::LeftButton, {}, {place.value(0).toInt(), place.value(1).toInt()});
    }
    const QStringList expected{u"https://example.org/a"_s, u"http://example.org/b"_s, u"mailto:a@example.org"_s};
    QTRY_COMPARE(m_document->links(), expected);
    QCOMPARE(m_document->ask(u"location.pathname"_s), page);
    QCOMPARE(openedByTheEngine.urls, QList<QUrl>());
}

void DocumentPreviewTest::followsTheColourSchemeAtOnce()
{
    const QString look =
        u"getComputedStyle(document.body).color + getComputedStyle(document.querySelector('.hljs-keyword'"
        ")).color + getComputedStyle(document.querySelector('p code')).backgroundColor"_s;
    const QString callouts =
        u"[...document.querySelectorAll('div')].map(element => getComputedStyle(element).color).join()"_s;
    QVERIFY(m_document->show(u"```python\ndef f(): pass\n```\n\n`x`\n\n<div style='background:#fff3cd'>light</div>"
                             "<div style='background:linear-gradient(#222,#000)'>dark</div>"
                             "<div style='background:#fff3cd;color:#00f'>own</div>"_s));
    const QVariant page = m_document->ask(u"location.pathname"_s);
    m_document->setDark(true);
    QTRY_COMPARE(m_document->ask(look), QVariant(u"rgb(236, 237, 240)rgb(255, 123, 114)rgb(42, 44, 50)"_s));
    QCOMPARE(
        m_document->ask(callouts),
        QVariant(u"rgb(236, 237, 240),rgb(0, 0, 0),rgb(255, 255, 255),rgb(0, 0, 255)"_s)); // The first is the page.
    m_document->setDark(false);
    QTRY_COMPARE(m_document->ask(look), QVariant(u"rgb(34, 34, 34)rgb(215, 58, 73)rgb(243, 244, 246)"_s));
    QCOMPARE(m_document->ask(u"location.pathname"_s), page);
}

void DocumentPreviewTest::restsWhileItIsHidden()
{
    QVERIFY(m_document->show(u"seen"_s));
    m_document->setPreviewVisible(false);
    m_document->type(u"unseen"_s);
    QVERIFY(!m_document->isRendering());
    m_document->setPreviewVisible(true);
    QVERIFY(m_document->isRendering());
    QVERIFY(m_document->show(u"unseen"_s));
    QCOMPARE(m_document->ask(content), QVariant(u"unseen"_s));
}

void DocumentPreviewTest::comesBackWhenThePageBreaks()
{
    QVERIFY(m_document->show(u"text"_s));
    const int process = m_document->pageProcess();
    QVERIFY(process > 0);
    QCOMPARE(::kill(process, SIGKILL), 0);
    QTRY_VERIFY(m_document->isRendering());
    QVERIFY(m_document->show(u"text"_s));
    QVERIFY(m_document->pageProcess() != process);
    QCOMPARE(m_document->ask(content), QVariant(u"text"_s));
}

void DocumentPreviewTest::leavesOutOnlyWhatTheEngineSaysOfItself()
{
    passedOn.clear();
    engineHandler(QtWarningMsg, {}, u"QWebEngineThing is no QObject. You should not use it as a QML type."_s);
    engineHandler(QtWarningMsg, {}, u"QWebEngineThing has failed"_s);
    QCOMPARE(passedOn, QStringList{u"QWebEngineThing has failed"_s});
}

int main(int argc, char *argv[])
{
    fixEngineEnvironment();
    QGuiApplication application(argc, argv);
    // The engine, which the test loads, puts a handler of its own before this one.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) { passedOn.append(text); });
    DocumentPreviewTest test;
    engineHandler = qInstallMessageHandler(nullptr);
    return QTest::qExec(&test, argc, argv);
}

#include "DocumentPreviewTest.moc"
