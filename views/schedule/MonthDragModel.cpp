#include "views/schedule/MonthDragModel.h"

#include "store/PlannerStore.h"
#include "store/RecordRows.h"
#include "views/schedule/WeekDragModel.h"

#include <algorithm>
#include <utility>

namespace tessaly {

MonthDragModel::MonthDragModel(const MonthLineModel &lines, QObject *parent) : QObject(parent), m_lines(lines)
{
}

bool MonthDragModel::begin(int row)
{
    cancel();
    const MonthLineRow line = m_lines.rows().value(row);
    const qsizetype schedule = rowOf(m_store->schedules(), line.id);
    if (schedule < 0)
        return false;
    if (const QString reason = fixedReason(*m_store, m_store->schedules().at(schedule)); !reason.isEmpty()) {
        emit refused(reason);
        return false;
    }
    m_line = line;
    m_place = line.cellIndex;
    emit changed();
    return true;
}

void MonthDragModel::moveTo(int place)
{
    if (m_line && place >= 0 && std::exchange(m_place, place) != place)
        emit changed();
}

void MonthDragModel::drop()
{
    if (!m_line)
        return;
    const QUuid id = m_line->id;
    const int days = m_place - m_line->cellIndex;
    cancel();
    const qsizetype row = rowOf(m_store->schedules(), id);
    if (row < 0 || days == 0)
        return;
    const ScheduleItem &schedule = m_store->schedules().at(row);
    const FormTimes times = movedTimes({schedule.date, schedule.end()}, days, 0, m_store->calendar());
    reschedule(*m_store, id, times, true);
    emit moved(times);
}

void MonthDragModel::cancel()
{
    if (!m_line)
        return;
    m_line.reset();
    m_place = -1;
    emit changed();
}

int MonthDragModel::row() const
{
    if (!m_line)
        return -1;
    const QList<MonthLineRow> &rows = m_lines.rows();
    const auto found =
        std::ranges::find_if(rows, [this](const MonthLineRow &row) { return row.key() == m_line->key(); });
    return found == rows.cend() ? -1 : static_cast<int>(found - rows.cbegin());
}

} // namespace tessaly
