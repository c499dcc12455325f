#include "model/ScheduleIndex.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>

#include <algorithm>
#include <vector>

using namespace tessaly;

namespace {

ScheduleItem startingAt(double seconds)
{
    ScheduleItem item;
    item.date = {seconds};
    return item;
}

std::vector<qsizetype> rowsOf(std::span<const ScheduleIndex::Entry> entries)
{
    std::vector<qsizetype> rows;
    std::ranges::transform(entries, std::back_inserter(rows), &ScheduleIndex::Entry::row);
    return rows;
}

} // namespace

class ScheduleIndexTest : public QObject
{
    Q_OBJECT

private slots:
    void aSpanOfTimeIsFoundInOrder()
    {
        const QList<ScheduleItem> list = {startingAt(5), startingAt(3), startingAt(5), startingAt(4), startingAt(6)};
        ScheduleIndex index;
        index.apply({}, list);

        QCOMPARE(rowsOf(index.startingIn({4}, {6})), (std::vector<qsizetype>{3, 0, 2}));
        QVERIFY(index.startingIn({7}, {9}).empty());
    }

    void itFollowsEveryChangeOfTheList()
    {
        QRandomGenerator random(11);
        QList<ScheduleItem> list;
        ScheduleIndex index;
        for (int step = 0; step < 500; ++step) {
            RowsChange change;
            const int kind = random.bounded(0, 3);
            change.first = list.isEmpty() ? 0 : random.bounded(static_cast<int>(list.size()));
            change.count = std::min<qsizetype>(random.bounded(1, 5), list.size() - change.first);
            if (kind == 0 || list.isEmpty()) {
                change = {RowsChange::Kind::Inserted, change.first, 3};
                for (int added = 0; added < 3; ++added)
                    list.insert(change.first, startingAt(random.bounded(0, 20)));
            } else if (kind == 1) {
                change.kind = RowsChange::Kind::Removed;
                list.remove(change.first, change.count);
            } else {
                change.kind = RowsChange::Kind::Updated;
                for (qsizetype row = change.first; row < change.first + change.count; ++row)
                    list[row] = startingAt(random.bounded(0, 20));
            }

            index.apply(change, list);

            ScheduleIndex fresh;
            fresh.apply({}, list);
            QCOMPARE(rowsOf(index.entries()), rowsOf(fresh.entries()));
        }
    }
};

TESSALY_TEST_MAIN(ScheduleIndexTest)
#include "ScheduleIndexTest.moc"
