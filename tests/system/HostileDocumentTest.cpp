#include "tests/support/TestMain.h"
#include "tests/system/DocumentUnderTest.h"
#include "tests/system/LoopbackServer.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

/// Documents that try to do more than be read.
class HostileDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_server.isReady()); }
    void nothingRunsAndNothingIsAskedFor_data();
    void nothingRunsAndNothingIsAskedFor();
    void onlyPicturesThatTheTextNamesAreFetched();
    void aScriptThatGotInWouldReachNothing_data();
    void aScriptThatGotInWouldReachNothing();
    void nothingLiesOverTheRestOfThePage_data();
    void nothingLiesOverTheRestOfThePage();
    void hugeNestingDoesNotStopThePreview_data();
    void hugeNestingDoesNotStopThePreview();

private:
    class CountingServer : public LoopbackServer
    {
    public:
        [[nodiscard]] int connections() const { return m_connections; }

    protected:
        void incomingConnection(qintptr descriptor) override
        {
            ++m_connections;
            LoopbackServer::incomingConnection(descriptor);
        }

    private:
        int m_connections = 0;
    };

    QString address(const QString &path, const QString &scheme = u"http"_s) const
    {
        return u"%1://127.0.0.1:%2%3"_s.arg(scheme).arg(m_server.serverPort()).arg(path);
    }

    /// In a new page, or as an edit of a harmless text, between its paragraphs.
    [[nodiscard]] bool showPage(const QString &markdown, bool isEdit)
    {
        const QString harmless = u"One *paragraph*.\n\n%1\n\nAnother with `code`.\n"_s;
        return isEdit ? m_document->showAnew(harmless.arg(u"Between"_s)) && m_document->show(harmless.arg(markdown))
                      : m_document->showAnew(markdown);
    }

    CountingServer m_server;
    std::unique_ptr<DocumentUnderTest> m_document = std::make_unique<DocumentUnderTest>();
};

void HostileDocumentTest::nothingRunsAndNothingIsAskedFor_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<bool>("isEdit");

    const auto row = [](const char *name, const QString &markdown) {
        QTest::newRow(name) << markdown << false;
        QTest::addRow("%s, typed into a page", name) << markdown << true;
    };
    row("script", u"<script>hacked = 1; fetch('URL')</script><script src='URL'></script>"_s);
    row("module script", u"<script type='module'>hacked = 1; import 'URL'</script>"_s);
    row("handlers", u"<img src='x' onerror='hacked = 1'><svg onload='hacked = 1'></svg>"
                    "<details open ontoggle='hacked = 1'><summary>a</summary></details>"
                    "<input autofocus onfocus='hacked = 1'><style onload='hacked = 1'></style>"_s);
    row("frames", u"<iframe src='URL'></iframe><iframe srcdoc=\"<script>parent.hacked = 1</script><img src='URL'>\">"
                  "</iframe><object data='URL'></object><embed src='URL'><frameset><frame src='URL'></frameset>"_s);
    row("form", u"<form action='URL' method='post'><input name='a' value='b'>"
                "<button formaction='URL'>x</button><input type='submit'></form>"_s);
    row("refresh", u"<meta http-equiv='refresh' content='0;url=URL'>"_s);
    row("policy of its own", u"<meta http-equiv='Content-Security-Policy' content=\"default-src * 'unsafe-inline'\">"
                             "<script>hacked = 1</script>"_s);
    row("base", u"<base href='URL'>\n\n![](picture.png) [x](there)"_s);
    row("style", u"<style>@import url(URL); @font-face { font-family: f; src: url(URL) }"
                 " body { background: url(URL); font-family: f }</style><p style='background:url(URL)'>x</p>"_s);
    row("links to resources", u"<link rel='stylesheet' href='URL'><link rel='icon' href='URL'>"
                              "<link rel='prefetch' href='URL'><link rel='preload' as='image' href='URL'>"
                              "<link rel='manifest' href='URL'><link rel='modulepreload' href='URL'>"_s);
    row("connecting ahead", u"<link rel='preconnect' href='URL'><link rel='dns-prefetch' href='URL'>"
                            "<link rel='preconnect' href='HTTPS'><link rel='prerender' href='URL'>"_s);
    row("media",
        u"<video src='URL' poster='URL' autoplay></video><audio src='URL' autoplay></audio>"
        "<video><source src='URL'><track default src='URL'></video><picture><source srcset='URL'></picture>"_s);
    row("pictures by http", u"![](URL) <img src='URL'> <img srcset='URL 2x'> <svg><image href='URL'/></svg>"_s);
    row("files", u"<img src='file:///etc/hostname'><iframe src='file:///etc/passwd'></iframe>"_s);
    row("javascript link", u"[x](javascript:hacked=1) <a href='javascript:hacked=1'>y</a>"
                           " <a href='URL' ping='URL' download>z</a>"_s);
    row("end of the script", u"</script><script>hacked = 1</script>\n\n</ScRiPt ><script>hacked = 1</script>"_s);
    row("end of the literal", u"`; hacked = 1; ` ${hacked = 1} \\${hacked = 1} \\`; hacked = 1; //"_s);
    row("comment and script", u"<!--<script>\n\n`; hacked = 1; //-->"_s);
    row("formulas", u"$\\href{javascript:hacked=1}{x}$ $\\href{URL}{y}$ $\\style{background:url(URL)}{z}$ "
                    "$\\require{URL}$ $\\class{a' onclick='hacked=1}{b}$\n\n"
                    "<math href='javascript:hacked=1'><mtext><img src='x' onerror='hacked=1'></mtext></math>"_s);
    row("names of the page's own objects", u"<img name='getElementById'><img name='head'><a id='MathJax'></a>"
                                           "<form id='marked'><input name='parse'></form>"
                                           "<img name='documentElement'><img name='querySelectorAll'>"_s);
}

void HostileDocumentTest::nothingRunsAndNothingIsAskedFor()
{
    QFETCH(QString, markdown);
    QFETCH(const bool, isEdit);
    markdown.replace(u"URL"_s, address(u"/hit"_s)).replace(u"HTTPS"_s, address(u""_s, u"https"_s));
    const int before = m_server.connections();
    QVERIFY(showPage(markdown, isEdit));
    const QVariant page = m_document->ask(u"location.pathname"_s);
    (void)m_document->ask(u"for (const e of document.body.getElementsByTagName('*')) if (e.click) e.click();"
                          "for (const form of document.forms) HTMLFormElement.prototype.submit.call(form);"_s);
    QTRY_COMPARE(m_document->ask(u"document.readyState"_s), QVariant(u"complete"_s));

    QCOMPARE(m_document->ask(u"typeof hacked"_s), QVariant(u"undefined"_s));
    QCOMPARE(m_document->ask(u"location.pathname"_s), page);
    // What was on its way has arrived once the engine has made another page.
    QVERIFY(m_document->showAnew(u"next"_s));
    QCOMPARE(m_server.connections(), before);
}

void HostileDocumentTest::onlyPicturesThatTheTextNamesAreFetched()
{
    const int before = m_server.connections();
    QVERIFY(m_document->show(u"![](%1)"_s.arg(address(u"/named.png"_s, u"https"_s))));
    QTRY_VERIFY(m_server.connections() > before);

    QVERIFY(m_document->show(u"Not a picture, but named: %1"_s.arg(address(u"/named.css"_s, u"https"_s))));
    const int afterwards = m_server.connections();
    (void)m_document->ask(u"window.failed = 0; for (const path of ['/unnamed.png', '/named.css?a', '/']) {"
                          " const image = new Image; image.onerror = () => ++failed; image.src = '%1' + path; }"_s.arg(
                              address(u""_s, u"https"_s)));
    QTRY_COMPARE(m_document->ask(u"failed"_s), QVariant(3));
    QCOMPARE(m_server.connections(), afterwards);
}

void HostileDocumentTest::aScriptThatGotInWouldReachNothing_data()
{
    QTest::addColumn<QString>("script");

    const auto row = [](const char *name, const QString &promise) { QTest::newRow(name) << promise; };
    row("files", u"fetch('file:///etc/passwd')"_s);
    row("other pages", u"fetch('/page/1')"_s);
    row("the network", u"fetch('URL')"_s);
    row("files as pictures", u"new Promise((done, failed) => { const image = new Image; image.onload = done;"
                             " image.onerror = failed; image.src = 'file:///usr/share/pixmaps/debian-logo.png'; })"_s);
    row("a socket", u"new Promise((done, failed) => { const socket = new WebSocket('URL'.replace('http', 'ws'));"
                    " socket.onopen = done; socket.onerror = failed; })"_s);
    row("a worker", u"new Promise((done, failed) => { const worker = new Worker('data:text/javascript,postMessage(1)');"
                    " worker.onmessage = done; worker.onerror = failed; })"_s);
    row("code from text", u"Promise.resolve().then(() => eval('1'))"_s);
    row("the clipboard", u"navigator.clipboard.readText()"_s);
    row("the place", u"new Promise((done, failed) => navigator.geolocation.getCurrentPosition(done, failed))"_s);
    row("microphone", u"navigator.mediaDevices.getUserMedia({audio: true})"_s);
    row("the screen", u"navigator.mediaDevices.getDisplayMedia({video: true})"_s);
    row("notifications",
        u"Notification.requestPermission().then(answer => answer === 'granted' || Promise.reject())"_s);
    row("another window", u"Promise.resolve().then(() => window.open('URL') || Promise.reject())"_s);
    row("storage", u"Promise.resolve().then(() => localStorage.setItem('a', 'b'))"_s);
}

void HostileDocumentTest::aScriptThatGotInWouldReachNothing()
{
    QFETCH(QString, script);
    script.replace(u"URL"_s, address(u"/hit"_s));
    const int before = m_server.connections();
    QVERIFY(m_document->show(u"page"_s));
    (void)m_document->ask(u"window.outcome = ''; Promise.resolve().then(() => %1)"
                          ".then(() => outcome = 'reached', () => outcome = 'refused'); 0"_s.arg(script));
    QTRY_COMPARE(m_document->ask(u"outcome"_s), QVariant(u"refused"_s));
    QCOMPARE(m_server.connections(), before);
}

void HostileDocumentTest::nothingLiesOverTheRestOfThePage_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<bool>("isEdit");

    const auto row = [](const char *name, const QString &before) {
        QTest::newRow(name) << before << false;
        QTest::addRow("%s, typed into a page", name) << before << true;
    };
    const auto styled = [&row](const char *name, const QString &style) {
        row(name, u"<div style='height:0'><a href='https://example.org/' style='display:block;width:100%;height:900px;"
                  "background:#fff;%1'>over</a></div>"_s.arg(style));
    };
    styled("fixed", u"position:fixed;inset:0"_s);
    styled("absolute", u"POSITION : absolute !important;top:0;left:0"_s);
    styled("sticky", u"position:sticky;top:0;z-index:9"_s);
    styled("moved", u"transform:translateY(-20px)"_s);
    styled("of a variable", u"--p:fixed;position:var(--p);top:0"_s);
    row("a negative margin", u"<a href='https://example.org/' style='display:inline-block;width:100%;height:900px;"
                             "margin:0 0 -900px;opacity:.9'>over</a>"_s);
    row("an open dialog", u"<dialog open style='width:100%;height:900px'>over</dialog>"_s);
    row("a drawing", u"<svg width='1' height='1' overflow='visible' style='overflow:visible'>"
                     "<rect x='-900' y='-900' width='2000' height='2000'/></svg>"_s);
    row("an element of the typesetter",
        u"$\\mathtip{x}{y}$ <mjx-status style='width:100%;height:900px'>over</mjx-status>"_s);
    row("a formula", u"$\\style{position:fixed;top:0;left:0;width:900px;height:900px}{x}$"_s);
}

void HostileDocumentTest::nothingLiesOverTheRestOfThePage()
{
    QFETCH(const QString, before);
    QFETCH(const bool, isEdit);
    QVERIFY(showPage(before + u"\n\nthe text"_s, isEdit));
    QCOMPARE(m_document->ask(u"(() => {"
                             "  const text = [...document.querySelectorAll('#content > p')]"
                             "    .find(paragraph => paragraph.innerText === 'the text');"
                             "  text.scrollIntoView({ block: 'center' });"
                             "  const { left, top, height } = text.getBoundingClientRect();"
                             "  const hit = document.elementFromPoint(left + 300, top + height / 2);"
                             "  return text.innerText + (hit === text ? '' : ' under ' + (hit ?? {}).outerHTML);"
                             "})()"_s),
             QVariant(u"the text"_s));
}

void HostileDocumentTest::hugeNestingDoesNotStopThePreview_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<bool>("isEdit");

    const auto row = [](const char *name, const QString &markdown) {
        QTest::newRow(name) << markdown << false;
        QTest::addRow("%s, typed into a page", name) << markdown << true;
    };
    constexpr int depth = 20'000;
    row("quotes", QString(depth, u'>'));
    row("brackets", QString(depth, u'['));
    row("emphasis", u"*a **b "_s.repeated(depth / 10));
    row("elements", u"<div>"_s.repeated(depth));
    row("braces in a formula", u"$"_s + QString(depth, u'{') + QString(depth, u'}') + u"$"_s);
}

void HostileDocumentTest::hugeNestingDoesNotStopThePreview()
{
    QFETCH(const QString, markdown);
    QFETCH(const bool, isEdit);
    QVERIFY(showPage(markdown, isEdit));
    QVERIFY(m_document->show(u"fine again"_s));
    QCOMPARE(m_document->ask(u"document.getElementById('content').textContent.trim()"_s), QVariant(u"fine again"_s));
}

int main(int argc, char *argv[])
{
    fixEngineEnvironment();
    QGuiApplication application(argc, argv);
    HostileDocumentTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "HostileDocumentTest.moc"
