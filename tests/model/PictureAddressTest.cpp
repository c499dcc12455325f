#include "model/PictureAddress.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

class PictureAddressTest : public QObject
{
    Q_OBJECT

private slots:
    void addressesOfPicturesFollow_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto add = [](const char *name, const QByteArray &before, const QByteArray &after) {
            QTest::newRow(name) << before << after;
        };
        add("nothing", "", "");
        add("no address", "# a\nfile: Assets/p.png\n", "# a\nfile: Assets/p.png\n");
        add("Markdown", "![](file:///old/Assets/p.png)", "![](file:///new/a%20b/p.png)");
        add("title", "![a](file:///old/Assets/p.png \"t\")", "![a](file:///new/a%20b/p.png \"t\")");
        add("brackets", "![a](<file:///old/Assets/p.png>)", "![a](<file:///new/a%20b/p.png>)");
        add("HTML", "<img src='file:///old/Assets/p.png'>", "<img src='file:///new/a%20b/p.png'>");
        add("alone at the end", "file:///old/Assets/p.png", "file:///new/a%20b/p.png");
        add("twice", "file:///a/Assets/p.png file:///b/Assets/p.png",
            "file:///new/a%20b/p.png file:///new/a%20b/p.png");
        add("folder of that name above", "file:///Assets/Assets/p.png", "file:///new/a%20b/p.png");
        add("another picture", "![](file:///old/Assets/q.png)", "![](file:///old/Assets/q.png)");
        add("another folder", "![](file:///old/p.png)", "![](file:///old/p.png)");
        add("no name", "![](file:///old/Assets/)", "![](file:///old/Assets/)");
        add("folder beneath", "![](file:///old/Assets/x/p.png)", "![](file:///old/Assets/x/p.png)");
        add("address in an address", "file://file:///old/Assets/p.png", "file:///new/a%20b/p.png");
        add("other bytes", "\xff\r\nfile:///\xe4\xb8/Assets/p.png\xff", "\xff\r\nfile:///\xe4\xb8/Assets/p.png\xff");
    }

    void addressesOfPicturesFollow()
    {
        QFETCH(const QByteArray, before);
        const auto isPicture = [](QByteArrayView name) { return name == "p.png"; };
        QTEST(withPicturesIn(before, "/new/a%20b", isPicture), "after");
    }
};

TESSALY_TEST_MAIN(PictureAddressTest)
#include "PictureAddressTest.moc"
