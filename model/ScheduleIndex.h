#pragma once

#include "model/RowsChange.h"
#include "model/ScheduleItem.h"

#include <QList>

#include <span>
#include <vector>

namespace tessaly {

/// The rows of a list of schedules ordered by start; equal starts keep their stored order. It follows the list through
/// its changes, so that the rows of a span of time are found without looking at the others.
class ScheduleIndex
{
public:
    struct Entry
    {
        Instant start = {};
        qsizetype row = 0;

        auto operator<=>(const Entry &) const = default;
    };

    /// Takes over a change that has just been made to the list. O(n) without comparing text; a reset sorts.
    void apply(const RowsChange &change, const QList<ScheduleItem> &schedules);

    /// The schedules that start in [from, to), in order. Valid until the next apply().
    [[nodiscard]] std::span<const Entry> startingIn(Instant from, Instant to) const;
    [[nodiscard]] std::span<const Entry> entries() const { return m_entries; }

private:
    void rebuild(const QList<ScheduleItem> &schedules);
    void shiftRows(qsizetype from, qsizetype by);
    void removeRows(qsizetype first, qsizetype count);
    void insertRows(qsizetype first, qsizetype count, const QList<ScheduleItem> &schedules);

    std::vector<Entry> m_entries;
};

} // namespace tessaly
