#include "model/FeedUpdate.h"

#include "model/CalendarFeed.h"
#include "model/FeedMerge.h"

#include <QSet>

#include <algorithm>

namespace tessaly {

namespace {

bool isAnnotated(const ScheduleItem &item)
{
    return !item.notes.isEmpty() || (item.tasks && !item.tasks->isEmpty());
}

/// The schedules after the refresh.
QList<ScheduleItem> refreshed(const QList<ScheduleItem> &schedules, QList<ScheduleItem> merged, const QUuid &feedID,
                              qsizetype &annotatedLost)
{
    const QString calendar = feedCalendarIdentifier(feedID);
    QSet<QUuid> continued;
    continued.reserve(merged.size());
    for (const ScheduleItem &item : std::as_const(merged))
        continued.insert(item.id);
    QList<ScheduleItem> after;
    after.reserve(schedules.size() + merged.size());
    for (const ScheduleItem &item : schedules) {
        const bool isOfFeed = item.calendarIdentifier == calendar;
        const bool isContinued = continued.contains(item.id);
        if (isOfFeed && !isContinued && isAnnotated(item))
            ++annotatedLost;
        if (!isOfFeed && !(isContinued && isDetachedFrom(item, feedID)))
            after.append(item);
    }
    for (ScheduleItem &item : merged)
        after.append(std::move(item));
    return after;
}

class PieceCutter
{
public:
    PieceCutter(const QList<ScheduleItem> &before, const QList<ScheduleItem> &after, qsizetype largest)
        : m_before(before), m_after(after), m_largest(largest)
    {
    }

    QList<FeedUpdate::Piece> cut()
    {
        const auto [left, right] = std::ranges::mismatch(m_before, m_after);
        const qsizetype first = left - m_before.cbegin();
        const auto [lastLeft, lastRight] = std::mismatch(m_before.crbegin(), std::reverse_iterator(left),
                                                         m_after.crbegin(), std::reverse_iterator(right));
        const qsizetype beforeEnd = m_before.size() - (lastLeft - m_before.crbegin());
        const qsizetype afterEnd = m_after.size() - (lastRight - m_after.crbegin());
        const qsizetype common = std::min(beforeEnd, afterEnd);
        update(first, common);
        for (qsizetype end = beforeEnd; end > common; end -= std::min(m_largest, end - common)) {
            const qsizetype count = std::min(m_largest, end - common);
            m_pieces.append({.rows = {RowsChange::Kind::Removed, end - count, count}});
        }
        for (qsizetype row = common; row < afterEnd; row += m_largest)
            add(RowsChange::Kind::Inserted, row, std::min(row + m_largest, afterEnd));
        return std::move(m_pieces);
    }

private:
    /// Rows that both lists have.
    void update(qsizetype first, qsizetype end)
    {
        const auto differs = [this](qsizetype row) { return m_before.at(row) != m_after.at(row); };
        while (first < end) {
            while (first < end && !differs(first))
                ++first;
            const qsizetype most = std::min(first + m_largest, end);
            qsizetype last = first;
            for (qsizetype row = first; row < most; ++row) {
                if (differs(row))
                    last = row + 1;
            }
            if (last > first)
                add(RowsChange::Kind::Updated, first, last);
            first = most;
        }
    }
    void add(RowsChange::Kind kind, qsizetype first, qsizetype end)
    {
        m_pieces.append({.rows = {kind, first, end - first}, .items = m_after.sliced(first, end - first)});
    }

    const QList<ScheduleItem> &m_before;
    const QList<ScheduleItem> &m_after;
    qsizetype m_largest;
    QList<FeedUpdate::Piece> m_pieces;
};

} // namespace

FeedUpdate feedUpdate(QList<ScheduleItem> fresh, const QUuid &feedID, const QList<ScheduleItem> &schedules,
                      qsizetype largestPiece)
{
    QList<ScheduleItem> merged = mergeFeed(std::move(fresh), feedID, schedules);
    if (areFeedSchedules(merged, feedID, schedules))
        return {};
    FeedUpdate update;
    const QList<ScheduleItem> after = refreshed(schedules, std::move(merged), feedID, update.annotatedLost);
    update.pieces = PieceCutter(schedules, after, largestPiece).cut();
    return update;
}

void applyPiece(const FeedUpdate::Piece &piece, QList<ScheduleItem> &schedules)
{
    const auto [kind, first, count] = piece.rows;
    switch (kind) {
    case RowsChange::Kind::Removed:
        schedules.remove(first, count);
        break;
    case RowsChange::Kind::Inserted:
        if (first == schedules.size()) {
            schedules.append(piece.items);
            break;
        }
        schedules.insert(first, count, {});
        std::ranges::copy(piece.items, schedules.begin() + first);
        break;
    case RowsChange::Kind::Updated:
        std::ranges::copy(piece.items, schedules.begin() + first);
        break;
    case RowsChange::Kind::Reset:
        Q_UNREACHABLE();
    }
}

} // namespace tessaly
