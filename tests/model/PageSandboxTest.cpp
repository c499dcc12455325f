#include "model/PageSandbox.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

/// Which pictures a page may fetch; what its policy stops is tested with the engine that keeps it.
class PageSandboxTest : public QObject
{
    Q_OBJECT

private slots:
    void aTextNamesAnAddressAsItIsAskedFor_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<bool>("isNamed");

        const auto row = [](const char *name, const QString &markdown, const QString &asked, bool isNamed = true) {
            QTest::newRow(name) << markdown << asked << isNamed;
        };
        row("picture", u"a ![b](https://a.org/p.png) c"_s, u"https://a.org/p.png"_s);
        row("with a title", u"![b](https://a.org/p.png \"t\")"_s, u"https://a.org/p.png"_s);
        row("brackets in the address", u"![b](https://a.org/p_(1).png)"_s, u"https://a.org/p_(1).png"_s);
        row("a picture that is a link", u"[![b](https://a.org/p.png)](https://a.org/)"_s, u"https://a.org/p.png"_s);
        row("by reference", u"![b][r]\n\n[r]: https://a.org/p.png\n"_s, u"https://a.org/p.png"_s);
        row("element", u"<img src='https://a.org/p?a=1&amp;b=2'>"_s, u"https://a.org/p?a=1&b=2"_s);
        row("letter case of the host", u"<HTTPS://A.Org/P.png>"_s, u"https://a.org/P.png"_s);
        row("no path", u"![](https://a.org)"_s, u"https://a.org/"_s);
        row("fragment", u"![](https://a.org/p.svg#x)"_s, u"https://a.org/p.svg"_s);
        row("Chinese", u"![](https://a.org/图.png)"_s, u"https://a.org/%E5%9B%BE.png"_s);
        row("another query", u"![](https://a.org/p.png)"_s, u"https://a.org/p.png?secret"_s, false);
        row("another path", u"![](https://a.org/p.png)"_s, u"https://a.org/"_s, false);
        row("not encrypted", u"![](http://a.org/p.png)"_s, u"http://a.org/p.png"_s, false);
    }

    void aTextNamesAnAddressAsItIsAskedFor()
    {
        QFETCH(const QString, markdown);
        QFETCH(const QString, asked);
        QTEST(namedAddresses(markdown).contains(canonicalAddress(QUrl(asked))), "isNamed");
    }

    void aTextNamesAFileByItsPath_data()
    {
        QTest::addColumn<QString>("markdown");
        QTest::addColumn<bool>("isNamed");

        QTest::newRow("plainly") << u"<img src='/d/a b (图).png'>"_s << true;
        QTest::newRow("encoded") << u"![](file:///d/a%20b%20(%E5%9B%BE).png)"_s << true;
        QTest::newRow("escaped") << u"![](</d/a b \\(图\\).png>)"_s << true;
        QTest::newRow("another") << u"![](/d/a.png)"_s << false;
        QTest::newRow("its name alone") << u"![](a b (图).png)"_s << false;
    }

    void aTextNamesAFileByItsPath()
    {
        QFETCH(const QString, markdown);
        QTEST(namesFile(markdown, u"/d/a b (图).png"_s), "isNamed");
    }
};

TESSALY_TEST_MAIN(PageSandboxTest)
#include "PageSandboxTest.moc"
