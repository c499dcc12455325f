#include "model/LinkHealth.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

class LinkHealthTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsKnownOfALinkReadsBackAsItWasWritten_data()
    {
        QTest::addColumn<LinkHealth>("health");
        LinkHealth whole{.feedID = QUuid::createUuid(),
                         .failingSince = Instant{123456789.5},
                         .failure = {u"没有网络"_s, u"no network"_s},
                         .eventCount = 42,
                         .repeatingCount = 6,
                         .addedByRepetitions = 88,
                         .skippedCount = 3,
                         .calendarName = u"课表 “A”"_s,
                         .refreshSeconds = 21600,
                         .version = {"\"a\\\"b\"", "Sun, 22 Nov 2026 09:10:00 GMT"},
                         .basis = u"https://example.org/a.ics Untitled Europe/Vienna"_s};
        for (const SkipReason reason :
             {SkipReason::NoStart, SkipReason::NoEnd, SkipReason::StartUnreadable, SkipReason::EndUnreadable,
              SkipReason::RepetitionUnreadable, SkipReason::TooLarge})
            whole.skipped.append(
                {.title = u"Lab"_s, .day = QDate(2026, 12, 5), .reason = reason, .value = u"20261012T25"_s, .line = 7});
        whole.skipped.append(SkippedEvent{});
        QTest::newRow("everything") << whole;
        QTest::newRow("nothing but the link") << LinkHealth{.feedID = QUuid::createUuid()};
    }

    void whatIsKnownOfALinkReadsBackAsItWasWritten()
    {
        QFETCH(const LinkHealth, health);
        const QList<LinkHealth> both{health, {.feedID = QUuid::createUuid()}};
        QCOMPARE(decodeLinkHealth(encodeLinkHealth(both)), std::optional(both));
    }

    void otherTextIsRefusedAndWhatNamesNoLinkIsLeftOut_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<int>("links");
        QTest::newRow("empty") << QByteArray() << -1;
        QTest::newRow("an object") << QByteArray("{}") << -1;
        QTest::newRow("cut off") << QByteArray("[{\"id\":") << -1;
        QTest::newRow("no link") << QByteArray("[]") << 0;
        QTest::newRow("no id, a wrong one, other values") << QByteArray(R"([{"events":1},{"id":"x"},7,null])") << 0;
        QTest::newRow("an unknown reason") << QByteArray(R"([{"id":"11111111-2222-3333-4444-ABCDEFABCDEF",)"
                                                         R"("skipped":[{"reason":"fromTheFuture","day":"x"}]}])")
                                           << 1;
    }

    void otherTextIsRefusedAndWhatNamesNoLinkIsLeftOut()
    {
        QFETCH(const QByteArray, json);
        QFETCH(const int, links);
        const auto decoded = decodeLinkHealth(json);
        QCOMPARE(decoded ? int(decoded->size()) : -1, links);
    }
};

TESSALY_TEST_MAIN(LinkHealthTest)
#include "LinkHealthTest.moc"
