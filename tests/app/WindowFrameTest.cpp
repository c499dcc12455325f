#include "app/WindowFrame.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

class WindowFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void theStoredTextGivesTheFrameBack()
    {
        const WindowFrame frame{{-1200, 40}, {1000, 700}, true};

        QCOMPARE(WindowFrame::fromString(frame.toString()), frame);
    }

    void anythingElseIsNoFrame_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text : {"", "10 20", "10 20 x 40", "10 20 0 40", "10 20 -5 40", "1 2 3 4 maximized 5"})
            QTest::newRow(text) << QString::fromLatin1(text);
    }

    void anythingElseIsNoFrame()
    {
        QFETCH(const QString, text);
        QVERIFY(!WindowFrame::fromString(text));
    }

    void theWindowComesBackOnlyWhereItCanBeReached_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QRect>("expected");

        QTest::newRow("inside") << QRect(100, 50, 1000, 700) << QRect(100, 50, 1000, 700);
        QTest::newRow("on the second screen") << QRect(2000, 50, 1000, 700) << QRect(2000, 50, 1000, 700);
        QTest::newRow("on a screen that is gone") << QRect(5000, 50, 1000, 700) << QRect();
        QTest::newRow("upper edge above all screens") << QRect(100, -60, 1000, 700) << QRect();
        QTest::newRow("almost out to the left") << QRect(-950, 50, 1000, 700) << QRect();
        QTest::newRow("partly out to the left") << QRect(-500, 50, 1000, 700) << QRect(-500, 50, 1000, 700);
        QTest::newRow("larger than the screen") << QRect(0, 0, 4000, 3000) << QRect(0, 0, 1904, 1032);
        QTest::newRow("taller than the screen") << QRect(2400, 90, 1180, 1024) << QRect(2004, 0, 1180, 976);
        QTest::newRow("at its minimum on a small screen") << QRect(3300, 50, 920, 620) << QRect(3300, 50, 920, 620);
        QTest::newRow("filling the screen within a thin frame") << QRect(0, 0, 1918, 1055) << QRect(0, 0, 1918, 1055);
        QTest::newRow("smaller than the minimum") << QRect(10, 10, 300, 200) << QRect(10, 10, 920, 620);
    }

    void theWindowComesBackOnlyWhereItCanBeReached()
    {
        QFETCH(const QRect, frame);
        const QList<QRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}, {3200, 0, 800, 600}};

        const auto place = fitted({frame.topLeft(), frame.size()}, screens, {920, 620});

        QTEST(place ? QRect(place->position, place->size) : QRect(), "expected");
    }

    void theFirstSizeLeavesRoomForTheFrame_data()
    {
        QTest::addColumn<QSize>("area");
        QTest::addColumn<QSize>("expected");

        QTest::newRow("large screen") << QSize(1920, 1080) << QSize(1180, 800);
        QTest::newRow("low screen") << QSize(1366, 768) << QSize(1180, 720);
        QTest::newRow("smaller than the minimum") << QSize(800, 600) << QSize(920, 620);
    }

    void theFirstSizeLeavesRoomForTheFrame()
    {
        QFETCH(const QSize, area);

        QTEST(firstSize({1180, 800}, area, {920, 620}), "expected");
    }
};

TESSALY_TEST_MAIN(WindowFrameTest)
#include "WindowFrameTest.moc"
