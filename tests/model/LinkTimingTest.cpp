#include "model/LinkTiming.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

constexpr double hour = 3600;
constexpr double day = 24 * hour;

/// The first number of an id decides how much longer its link waits.
QUuid idSpreadBy(uint thousandths)
{
    return {thousandths, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
}

} // namespace

class LinkTimingTest : public QObject
{
    Q_OBJECT

private slots:
    void anUpdateWaitsAnHourOrAsLongAsTheCalendarAsks_data()
    {
        QTest::addColumn<std::optional<double>>("asked");
        QTest::addColumn<double>("expected");
        QTest::newRow("nothing asked") << std::optional<double>() << hour;
        QTest::newRow("a minute") << std::optional(60.0) << hour;
        QTest::newRow("six hours") << std::optional(6 * hour) << 6 * hour;
        QTest::newRow("a week") << std::optional(7 * day) << 7 * day;
        QTest::newRow("a year") << std::optional(365 * day) << 31 * day;
    }

    void anUpdateWaitsAnHourOrAsLongAsTheCalendarAsks()
    {
        QFETCH(const std::optional<double>, asked);
        QFETCH(const double, expected);
        QCOMPARE(updateDelay(asked, idSpreadBy(0)), expected);
        QCOMPARE(updateDelay(asked, idSpreadBy(500)), expected * 1.05);
        QVERIFY(updateDelay(asked, idSpreadBy(999)) < expected * 1.1);
    }

    void aFailingLinkIsTriedEverMoreRarely_data()
    {
        QTest::addColumn<int>("failures");
        QTest::addColumn<double>("expected");
        QTest::newRow("first") << 1 << 300.0;
        QTest::newRow("second") << 2 << 600.0;
        QTest::newRow("fifth") << 5 << 4800.0;
        QTest::newRow("seventh") << 7 << 19200.0;
        QTest::newRow("eighth") << 8 << 6 * hour;
        QTest::newRow("many") << 1'000'000 << 6 * hour;
    }

    void aFailingLinkIsTriedEverMoreRarely()
    {
        QFETCH(const int, failures);
        QFETCH(const double, expected);
        QCOMPARE(retryDelay(failures, idSpreadBy(0)), expected);
    }

    void afterAGapALinkIsDueUnlessItWasJustRead_data()
    {
        QTest::addColumn<double>("secondsSince");
        QTest::addColumn<bool>("isDue");
        QTest::newRow("just read") << 60.0 << false;
        QTest::newRow("read long ago") << 301.0 << true;
        QTest::newRow("read in the future, before the clock was set back") << -301.0 << true;
    }

    void afterAGapALinkIsDueUnlessItWasJustRead()
    {
        QFETCH(const double, secondsSince);
        QFETCH(const bool, isDue);
        QCOMPARE(isDueAfterGap(Instant{1000}, Instant{1000 + secondsSince}), isDue);
    }
};

TESSALY_TEST_MAIN(LinkTimingTest)
#include "LinkTimingTest.moc"
