#include "model/FeedUpdate.h"
#include "model/CalendarFeed.h"
#include "model/FeedMerge.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>

using namespace tessaly;

namespace {

const QUuid feedID(QStringLiteral("11111111-2222-3333-4444-abcdefabcdef"));

class World
{
public:
    explicit World(quint32 seed) : m_random(seed) {}

    int below(int limit) { return m_random.bounded(limit); }

    QList<ScheduleItem> read()
    {
        QList<ParsedEvent> events;
        for (int uid = 0; uid < 40; ++uid) {
            if (below(4) > 0)
                events.append({.uid = "UID:" + QByteArray::number(uid),
                               .title = QStringLiteral("Title %1").arg(below(3)),
                               .start = {double(uid)},
                               .end = {double(uid) + 5400}});
        }
        if (below(5) == 0)
            std::ranges::reverse(events);
        return feedSchedules(events, feedID);
    }

    /// Schedules of the user anywhere between them, notes in some, and some that were detached.
    QList<ScheduleItem> stored()
    {
        QList<ScheduleItem> schedules;
        for (ScheduleItem item : read()) {
            while (below(6) == 0)
                schedules.append({.title = QStringLiteral("own")});
            if (below(4) == 0)
                item.notes = QStringLiteral("noted");
            if (below(8) == 0)
                item.calendarIdentifier.reset();
            schedules.append(item);
        }
        return schedules;
    }

private:
    QRandomGenerator m_random;
};

/// What a refresh makes of the schedules, without regard to what stays.
QList<ScheduleItem> refreshed(const QList<ScheduleItem> &fresh, QList<ScheduleItem> schedules)
{
    const QList<ScheduleItem> merged = mergeFeed(fresh, feedID, schedules);
    schedules.removeIf([&](const ScheduleItem &item) {
        return item.calendarIdentifier == feedCalendarIdentifier(feedID) ||
               (isDetachedFrom(item, feedID) && std::ranges::count(merged, item.id, &ScheduleItem::id) > 0);
    });
    return schedules + merged;
}

} // namespace

class FeedUpdateTest : public QObject
{
    Q_OBJECT

private slots:
    void thePiecesLeadToTheRefreshedSchedules_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 0; seed < 300; ++seed)
            QTest::addRow("%u", seed) << seed;
    }

    void thePiecesLeadToTheRefreshedSchedules()
    {
        QFETCH(const quint32, seed);
        World world(seed);
        const QList<ScheduleItem> before = world.stored();
        const QList<ScheduleItem> fresh = world.read();
        const qsizetype largest = 1 + world.below(9);

        QList<ScheduleItem> schedules = before;
        const FeedUpdate update = feedUpdate(fresh, feedID, before, largest);
        for (const FeedUpdate::Piece &piece : update.pieces) {
            QVERIFY(piece.rows.count > 0 && piece.rows.count <= largest);
            applyPiece(piece, schedules);
        }

        const QList<ScheduleItem> expected = refreshed(fresh, before);
        QCOMPARE(schedules, expected);
        const auto noted = [](const QList<ScheduleItem> &items) {
            return std::ranges::count(items, QStringLiteral("noted"), &ScheduleItem::notes);
        };
        QCOMPARE(update.annotatedLost, noted(before) - noted(expected));
        QVERIFY(feedUpdate(fresh, feedID, schedules, largest).pieces.isEmpty());
    }

    void oneChangedEventIsOnePieceOfOneRow()
    {
        QList<ParsedEvent> events;
        for (int uid = 0; uid < 1000; ++uid)
            events.append({.uid = "UID:" + QByteArray::number(uid), .start = {0}, .end = {5400}});
        const QList<ScheduleItem> before = feedSchedules(events, feedID);
        events[500].title = QStringLiteral("Moved");
        const FeedUpdate update = feedUpdate(feedSchedules(events, feedID), feedID, before);
        QCOMPARE(update.pieces.size(), 1);
        QCOMPARE(update.pieces.constFirst().rows, (RowsChange{RowsChange::Kind::Updated, 500, 1}));
        QCOMPARE(update.pieces.constFirst().items.constFirst().id, before.at(500).id);
    }
};

TESSALY_TEST_MAIN(FeedUpdateTest)
#include "FeedUpdateTest.moc"
