#include "model/FeedMerge.h"
#include "model/CalendarFeed.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const QUuid feedID(QStringLiteral("11111111-2222-3333-4444-abcdefabcdef"));

ParsedEvent eventOf(const QByteArray &uid, double start, const QString &title = QStringLiteral("SUMMARY:New"))
{
    return {.uid = uid, .title = title, .start = {start}, .end = {start + 5400}};
}

QString keyOf(const QByteArray &uid, Instant start)
{
    return feedSchedules({{.uid = uid, .start = start}}, feedID).constFirst().calendarEventIdentifier.value();
}

QList<ScheduleItem> refreshed(const QList<ParsedEvent> &events, const QList<ScheduleItem> &schedules)
{
    return mergeFeed(feedSchedules(events, feedID), feedID, schedules);
}

} // namespace

class FeedMergeTest : public QObject
{
    Q_OBJECT

private slots:
    void theKeyNamesFeedEventAndSecond_data()
    {
        QTest::addColumn<double>("unixSeconds");
        QTest::addColumn<QString>("expected");

        QTest::newRow("whole seconds") << 1725235200.0 << QStringLiteral("1725235200.0");
        QTest::newRow("the epoch") << 0.0 << QStringLiteral("0.0");
        QTest::newRow("before the epoch") << -62135596800.0 << QStringLiteral("-62135596800.0");
        QTest::newRow("the last year") << 253402300799.0 << QStringLiteral("253402300799.0");
        QTest::newRow("a fraction") << 1725235200.5 << QStringLiteral("1725235200.5");
    }

    void theKeyNamesFeedEventAndSecond()
    {
        QFETCH(const double, unixSeconds);
        QFETCH(const QString, expected);

        QCOMPARE(keyOf("UID:a|b", Instant::fromUnixSeconds(unixSeconds)),
                 QStringLiteral("11111111-2222-3333-4444-ABCDEFABCDEF|UID:a|b|") + expected);
    }

    void aKnownEventKeepsWhatTheUserAdded()
    {
        ScheduleItem known{.title = QStringLiteral("Old"),
                           .date = {100},
                           .notes = QStringLiteral("Mine"),
                           .tasks = QList<ScheduleTask>{{.title = QStringLiteral("Read")}},
                           .tag = QStringLiteral("Study"),
                           .colorName = QStringLiteral("pink"),
                           .customColorHex = QStringLiteral("#112233"),
                           .calendarEventIdentifier = keyOf("UID:a", {100}),
                           .calendarIdentifier = feedCalendarIdentifier(feedID)};

        const QList<ScheduleItem> merged = refreshed({eventOf("UID:a", 100)}, {known});

        known.title = QStringLiteral("SUMMARY:New");
        known.endDate = Instant{5500};
        QCOMPARE(merged, QList<ScheduleItem>{known});
    }

    void notesSurviveReadingTheCalendarWholeAndBackAgain()
    {
        // A lecture on Mondays, whose second occurrence was moved by an hour, and a single event.
        const QList<ParsedEvent> once{eventOf("UID:lecture", 1000), eventOf("UID:exam", 5000)};
        const auto whole = [] {
            FeedSchedules schedules(feedID);
            schedules.add("UID:lecture", {1000}, {.title = QStringLiteral("Lecture"), .date = {1000}});
            schedules.add("UID:lecture", {2000}, {.title = QStringLiteral("Lecture"), .date = {5600}});
            schedules.add("UID:exam", {5000}, {.title = QStringLiteral("Exam"), .date = {5000}});
            schedules.add("UID:exam", {5000}, {.title = QStringLiteral("Exam twice"), .date = {5000}});
            return schedules.take();
        };
        QList<ScheduleItem> schedules = refreshed(once, {});
        schedules[0].notes = QStringLiteral("first");
        schedules[1].notes = QStringLiteral("exam");

        QList<ScheduleItem> expanded = mergeFeed(whole(), feedID, schedules);

        QCOMPARE(expanded.size(), 3);
        QCOMPARE(expanded.at(0).notes, QStringLiteral("first"));
        QCOMPARE(expanded.at(1).notes, QString());
        QCOMPARE(expanded.at(1).date, Instant{5600});
        QCOMPARE(expanded.at(2).notes, QStringLiteral("exam"));
        QCOMPARE(expanded.at(2).title, QStringLiteral("Exam"));
        expanded[1].notes = QStringLiteral("moved");
        QCOMPARE(mergeFeed(whole(), feedID, expanded), expanded);

        QCOMPARE(refreshed(once, expanded), schedules);
    }

    void aScheduleThatCameBackWithoutItsFeedIsContinued()
    {
        ScheduleItem detached{.title = QStringLiteral("Old"), .date = {100}, .notes = QStringLiteral("Mine")};
        detached.calendarEventIdentifier = keyOf("UID:a", {100});

        const QList<ScheduleItem> merged = refreshed({eventOf("UID:a", 100)}, {detached});
        QCOMPARE(merged.size(), 1);
        QCOMPARE(merged.constFirst().id, detached.id);
        QCOMPARE(merged.constFirst().notes, QStringLiteral("Mine"));
        QCOMPARE(merged.constFirst().calendarIdentifier, feedCalendarIdentifier(feedID));

        // One that has stayed with the feed comes first.
        const ScheduleItem linked = refreshed({eventOf("UID:a", 100)}, {}).constFirst();
        QCOMPARE(refreshed({eventOf("UID:a", 100)}, {detached, linked}).constFirst().id, linked.id);
    }

    void anEventWithAnotherStartOrOfAnotherFeedIsNew()
    {
        const QString key = keyOf("UID:a", {100});
        const ScheduleItem moved{.date = {100},
                                 .notes = QStringLiteral("Mine"),
                                 .calendarEventIdentifier = key,
                                 .calendarIdentifier = feedCalendarIdentifier(feedID)};
        const ScheduleItem foreign{.date = {200},
                                   .notes = QStringLiteral("Theirs"),
                                   .calendarEventIdentifier = keyOf("UID:a", {200}),
                                   .calendarIdentifier = feedCalendarIdentifier(QUuid::createUuid())};

        const QList<ScheduleItem> merged = refreshed({eventOf("UID:a", 200)}, {moved, foreign});

        QCOMPARE(merged.size(), 1);
        ScheduleItem expected{.title = QStringLiteral("SUMMARY:New"),
                              .date = {200},
                              .endDate = Instant{5600},
                              .calendarEventIdentifier = foreign.calendarEventIdentifier,
                              .calendarIdentifier = feedCalendarIdentifier(feedID)};
        expected.id = merged.constFirst().id;
        QCOMPARE(merged.constFirst(), expected);
        QVERIFY(expected.id != moved.id && expected.id != foreign.id);
    }

    void ofDuplicatesTheFirstCounts()
    {
        const QByteArray uid = "UID:a";
        const ScheduleItem first{.notes = QStringLiteral("first"),
                                 .calendarEventIdentifier = keyOf(uid, {100}),
                                 .calendarIdentifier = feedCalendarIdentifier(feedID)};
        ScheduleItem second = first;
        second.notes = QStringLiteral("second");

        const QList<ScheduleItem> merged = refreshed(
            {eventOf(uid, 100, QStringLiteral("one")), eventOf(uid, 50), eventOf(uid, 100, QStringLiteral("two"))},
            {first, second});

        QCOMPARE(merged.size(), 2);
        QCOMPARE(merged.at(0).title, QStringLiteral("one"));
        QCOMPARE(merged.at(0).notes, QStringLiteral("first"));
        QCOMPARE(merged.at(1).date, Instant{50});
    }
};

TESSALY_TEST_MAIN(FeedMergeTest)
#include "FeedMergeTest.moc"
