#include "tests/support/TestMain.h"
#include "tests/system/DocumentUnderTest.h"
#include "tests/system/LoopbackServer.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

/// Which pictures a document shows, in the real engine.
class DocumentPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { QSslConfiguration::setDefaultConfiguration(m_tlsBefore); }
    void showsLocalPicturesHoweverTheyAreNamed_data();
    void showsLocalPicturesHoweverTheyAreNamed();
    void saysWhatItDoesNotShow_data();
    void saysWhatItDoesNotShow();
    void findsOnlyFilesThatTheTextNames();
    void showsAPictureAsItIsNow();
    void runsNoScriptOfADrawing();
    void followsRedirectionsByHttpsOnly();

private:
    static constexpr int side = 8;

    [[nodiscard]] QString inFolder(const QString &name) const { return m_folder.filePath(u"documents/"_s + name); }
    void write(const QString &path, const QByteArray &bytes) const;
    /// The text with FILE for the address of a picture outside the folder, PATH for its path, SECRET for a file that is
    /// none.
    [[nodiscard]] QString filledIn(QString markdown) const;
    /// "shown" or "broken" for each picture, and what is said beside it.
    [[nodiscard]] QString outcome();

    QTemporaryDir m_folder;
    QByteArray m_png;
    LoopbackServer m_server;
    QSslConfiguration m_tlsBefore = QSslConfiguration::defaultConfiguration();
    std::unique_ptr<DocumentUnderTest> m_document = std::make_unique<DocumentUnderTest>();
};

void DocumentPictureTest::write(const QString &path, const QByteArray &bytes) const
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

void DocumentPictureTest::initTestCase()
{
    const std::optional<Certificate> certificate = makeCertificate();
    if (certificate) {
        QSslConfiguration tls = m_tlsBefore;
        tls.setLocalCertificateChain(certificate->chain);
        tls.setPrivateKey(certificate->key);
        m_server.setTls(tls);
        QSslConfiguration trusting = m_tlsBefore;
        trusting.addCaCertificates(certificate->chain);
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    QVERIFY(QDir(m_folder.path()).mkpath(u"documents/Assets"_s));
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    for (const QString &name :
         {u"outside 图 (1).png"_s, u"documents/a.png"_s, u"documents/Assets/b c.jpg"_s, u"documents/old.ppm"_s})
        QVERIFY(image.save(m_folder.filePath(name)));
    QFile saved(inFolder(u"a.png"_s));
    QVERIFY(saved.open(QIODevice::ReadOnly));
    m_png = saved.readAll();
    QFile old(inFolder(u"old.ppm"_s));
    QVERIFY(old.open(QIODevice::ReadOnly));
    write(inFolder(u"phone.heic"_s), old.readAll()); // Another format that Qt reads and the engine does not.
    write(inFolder(u"drawing.svg"_s),
          "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8' onload='parent.hacked = 1'>"
          "<script>parent.hacked = 1</script><rect width='8' height='8'/></svg>");
    write(inFolder(u"secret.png"_s), "root:x:0:0");
    QVERIFY(QFile::link(m_folder.filePath(u"outside 图 (1).png"_s), inFolder(u"way-out.png"_s)));
    m_document->setFolder(m_folder.filePath(u"documents"_s));
}

QString DocumentPictureTest::filledIn(QString markdown) const
{
    const QString outside = m_folder.filePath(u"outside 图 (1).png"_s);
    return markdown.replace(u"FILE"_s, QUrl::fromLocalFile(outside).toString(QUrl::FullyEncoded))
        .replace(u"PATH"_s, outside)
        .replace(u"SECRET"_s, QUrl::fromLocalFile(inFolder(u"secret.png"_s)).toString())
        .replace(u"FOLDER"_s, QUrl::fromLocalFile(inFolder({})).toString());
}

QString DocumentPictureTest::outcome()
{
    return m_document
        ->ask(u"[...document.querySelectorAll('#content img, .tessaly-not-shown')].map(element => element.alt === "
              u"undefined"
              " ? getComputedStyle(element, '::before').content + element.textContent"
              " : element.naturalWidth === %1 ? 'shown' : 'broken').join()"_s.arg(side))
        .toString();
}

void DocumentPictureTest::showsLocalPicturesHoweverTheyAreNamed_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::newRow("file address") << u"![](FILE)"_s;
    QTest::newRow("file address with a title") << u"![a](FILE \"title\")"_s;
    QTest::newRow("file address in an element") << u"<img src='FILE' width=8>"_s;
    QTest::newRow("path in angle brackets") << u"![](<PATH>)"_s;
    QTest::newRow("path in an element") << u"<p><img src=\"PATH\"></p>"_s;
    QTest::newRow("beside the document") << u"![](a.png)"_s;
    QTest::newRow("beside the document, the long way") << u"![](./Assets/../a.png?x#y)"_s;
    QTest::newRow("encoded") << u"![](Assets/b%20c.jpg 'title')"_s;
    QTest::newRow("in angle brackets") << u"![](<Assets/b c.jpg>)"_s;
    QTest::newRow("by reference") << u"![a][r]\n\n[r]: <Assets/b c.jpg> \"title\""_s;
    QTest::newRow("in an element") << u"<img src='a.png'>"_s;
    QTest::newRow("a drawing") << u"![](drawing.svg)"_s;
    QTest::newRow("a drawing by its address") << u"![](FOLDERdrawing.svg)"_s;
    QTest::newRow("a format of Qt's") << u"![](old.ppm)"_s;
    QTest::newRow("a format of Qt's by its address") << u"![](FOLDERphone.heic)"_s;
}

void DocumentPictureTest::showsLocalPicturesHoweverTheyAreNamed()
{
    QFETCH(const QString, markdown);
    QVERIFY(m_document->show(filledIn(markdown)));
    QCOMPARE(outcome(), u"shown"_s);
}

void DocumentPictureTest::saysWhatItDoesNotShow_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const QString &markdown, const QString &expected) {
        QTest::newRow(name) << markdown << u"\" 此处不显示：\""_s + expected;
    };
    const auto picture = [](const char *name, const QString &markdown, const QString &address) {
        QTest::newRow(name) << markdown << u"broken,\" 此处不显示：\""_s + address;
    };
    picture("no encryption", u"![](http://127.0.0.1:9/a.png)"_s, u"http://127.0.0.1:9/a.png"_s);
    picture("a file that is no picture", u"![](SECRET)"_s, u"SECRET"_s);
    picture("a file that is no picture, beside", u"![](secret.png)"_s, u"secret.png"_s);
    picture("a device", u"![](file:///dev/zero)"_s, u"file:///dev/zero"_s);
    picture("out of the folder", u"![](../outside%20图%20(1).png)"_s, u"../outside%20%E5%9B%BE%20(1).png"_s);
    picture("out of the folder by a link", u"![](way-out.png)"_s, u"way-out.png"_s);
    picture("not there", u"![](nothing.png)"_s, u"nothing.png"_s);
    picture("on another machine", u"![](file://host/a.png)"_s, u"file://host/a.png"_s);
    row("a frame", u"<iframe src='https://a.org/x'></iframe>"_s, u"https://a.org/x"_s);
    row("a film", u"<video autoplay><source src='https://a.org/f.mp4'>old</video>"_s, u"https://a.org/f.mp4"_s);
    row("an object", u"a <object data='b.pdf'></object>"_s, u"b.pdf"_s);
    row("something without address", u"<iframe srcdoc='<b>a</b>'></iframe>"_s, u"<iframe>"_s);
}

void DocumentPictureTest::saysWhatItDoesNotShow()
{
    QFETCH(const QString, markdown);
    QFETCH(const QString, expected);
    QVERIFY(m_document->show(filledIn(markdown)));
    QTRY_COMPARE(outcome(), filledIn(expected));
}

void DocumentPictureTest::findsOnlyFilesThatTheTextNames()
{
    QVERIFY(m_document->showAnew(u"![](a.png)"_s));
    (void)m_document->ask(u"window.found = ''; for (const address of ['%1', 'a.png']) { const image = new Image;"
                          " image.onload = () => found += 'found'; image.onerror = () => found += 'refused';"
                          " image.src = '/picture/1?' + encodeURIComponent(address); }"_s.arg(filledIn(u"FILE"_s)));
    QTRY_COMPARE(m_document->ask(u"found.length"_s), QVariant(12));
}

void DocumentPictureTest::showsAPictureAsItIsNow()
{
    const QString width = u"document.querySelector('img').naturalWidth"_s;
    for (const int newSide : {3, 5}) {
        QImage image(newSide, newSide, QImage::Format_RGB32);
        QVERIFY(image.save(inFolder(u"changing.png"_s)));
        QVERIFY(m_document->show(u"![](changing.png) %1"_s.arg(newSide)));
        QCOMPARE(m_document->ask(width), QVariant(newSide));
    }
}

void DocumentPictureTest::runsNoScriptOfADrawing()
{
    QVERIFY(m_document->show(filledIn(u"![](drawing.svg) ![](FOLDERdrawing.svg)"_s)));
    QCOMPARE(outcome(), u"shown,shown"_s);
    QCOMPARE(m_document->ask(u"typeof hacked"_s), QVariant(u"undefined"_s));
}

void DocumentPictureTest::followsRedirectionsByHttpsOnly()
{
    if (QSslConfiguration::defaultConfiguration() == m_tlsBefore)
        QSKIP("openssl, which makes the certificate, is missing");
    QUrl plain = m_server.url(u"/end.png"_s);
    m_server.on(u"/safe.png"_s, redirect("302 Found", plain));
    m_server.on(u"/end.png"_s, response("200 OK", m_png));
    m_server.on(u"/page.png"_s, response("200 OK", "<html></html>"));
    plain.setScheme(u"http"_s);
    m_server.on(u"/unsafe.png"_s, redirect("302 Found", plain));
    for (const auto &[path, expected] : std::initializer_list<std::pair<QString, QString>>{
             {u"/safe.png"_s, u"shown"_s}, {u"/unsafe.png"_s, u"broken"_s}, {u"/page.png"_s, u"broken"_s}}) {
        const QString address = m_server.url(path).toString();
        QVERIFY(m_document->show(u"![](%1)"_s.arg(address)));
        QTRY_COMPARE_WITH_TIMEOUT(
            outcome(), expected == u"shown"_s ? expected : expected + u",\" 此处不显示：\""_s + address, 30'000);
    }
}

int main(int argc, char *argv[])
{
    fixEngineEnvironment();
    QGuiApplication application(argc, argv);
    DocumentPictureTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DocumentPictureTest.moc"
