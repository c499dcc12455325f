#include "model/ReminderRules.h"
#include "platform/Clock.h"
#include "store/RecordRows.h"
#include "views/todos/ReminderViewModel.h"

#include <algorithm>
#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;
using Kind = ReminderRowKind::Kind;

namespace {

constexpr int weekDays = 7;

} // namespace

int ReminderViewModel::rowOfItem(const QUuid &id) const
{
    const auto found = std::ranges::find(m_rows.rows(), id, &ReminderListRow::id);
    return id.isNull() || found == m_rows.rows().cend() ? -1 : static_cast<int>(found - m_rows.rows().cbegin());
}

bool ReminderViewModel::addUnderstood(const QString &title, const QDateTime &dueDate)
{
    m_title = title;
    const Instant formerDueDate = std::exchange(m_dueDate, m_store->calendar().instant(dueDate.date(), dueDate.time()));
    const bool hadDueDate = std::exchange(m_hasDueDate, true);
    const bool isAdded = add();
    m_dueDate = formerDueDate;
    m_hasDueDate = hadDueDate;
    emit formChanged();
    return isAdded;
}

int ReminderViewModel::edit(int row)
{
    const QUuid id = m_rows.rows().value(row).id;
    if (id.isNull())
        return -1;
    leaveEditing();
    m_editor.begin(id);
    return rowOfItem(id);
}

int ReminderViewModel::endEditing(bool isSaved)
{
    const QUuid id = m_editor.id();
    const QString group = m_rows.rows().value(rowOfItem(id)).label;
    if (isSaved)
        m_editor.save();
    else
        m_editor.cancel();
    const int row = reveal(id.toString());
    if (row >= 0 && m_rows.rows().at(row).label != group)
        emit moved(row);
    return row;
}

void ReminderViewModel::leaveEditing()
{
    const QUuid id = m_editor.id();
    const QString group = m_rows.rows().value(rowOfItem(id)).label;
    m_editor.save();
    const qsizetype storeRow = rowOf(m_store->reminders(), id);
    if (storeRow < 0)
        return;
    const ReminderItem &item = m_store->reminders().at(storeRow);
    const int row = item.isComplete ? -1 : rowShowing(m_rows.rows(), item, m_store->calendar(), *m_labels);
    const ReminderListRow shown = m_rows.rows().value(row);
    if (row >= 0 && (shown.id.isNull() || shown.label != group))
        emit moved(row);
}

QDate ReminderViewModel::thisWeek() const
{
    const UserCalendar &calendar = m_store->calendar();
    const Instant now = m_store->clock().now();
    const QDate firstDay = calendar.weekStart(calendar.day(now));
    // On the last minute of a week the next one is meant.
    return dueInWeek(firstDay, now, calendar) ? firstDay : firstDay.addDays(weekDays);
}

int ReminderViewModel::weekHeaderFor(int draggedRow, int hoveredRow) const
{
    const ReminderListRow dragged = m_rows.rows().value(draggedRow);
    const QDate today = m_store->calendar().day(m_store->clock().now());
    const bool isMovable = !dragged.id.isNull() && !dragged.isComplete;
    return isMovable ? tessaly::weekHeaderFor(m_rows.rows(), draggedRow, hoveredRow, today) : -1;
}

bool ReminderViewModel::setWeek(const QUuid &id, QDate firstDay, bool isReported)
{
    const qsizetype row = rowOf(m_store->reminders(), id);
    if (row < 0)
        return false;
    const ReminderItem &before = m_store->reminders().at(row);
    const UserCalendar &calendar = m_store->calendar();
    if (before.isComplete)
        return false;
    const auto dueDate = before.dueDate ? movedToWeek(*before.dueDate, firstDay, calendar)
                                        : dueInWeek(firstDay, m_store->clock().now(), calendar);
    if (!dueDate)
        return false;
    const ReminderItem after = withDueDate(before, dueDate, m_store->calendar());
    const TextPair report{u"已移动“%1”"_s.arg(before.title), u"Moved “%1”"_s.arg(before.title)};
    m_store->perform({.reminders = {editOf(before, after, row)}}, TextPair{u"移动待办"_s, u"Move to-do"_s},
                     isReported ? report : TextPair());
    return true;
}

void ReminderViewModel::moveToWeek(int row, int header)
{
    const QUuid id = m_rows.rows().value(row).id;
    const ReminderListRow shownHeader = m_rows.rows().value(header);
    const QDate firstDay = shownHeader.kind == Kind::DueDates ? thisWeek() : shownHeader.firstDay;
    if (!firstDay.isValid() || !setWeek(id, firstDay, true))
        return;
    const ReminderItem &item = m_store->reminders().at(rowOf(m_store->reminders(), id));
    if (const int shown = rowShowing(m_rows.rows(), item, m_store->calendar(), *m_labels); shown >= 0)
        emit moved(shown);
}

int ReminderViewModel::moveByWeeks(int row, int weeks)
{
    const QUuid id = m_rows.rows().value(row).id;
    const qsizetype storeRow = rowOf(m_store->reminders(), id);
    if (storeRow < 0)
        return -1;
    const UserCalendar &calendar = m_store->calendar();
    const auto dueDate = m_store->reminders().at(storeRow).dueDate;
    if (!dueDate && weeks < 1)
        return -1;
    // One without a due date gets one in the present week first.
    const QDate week =
        dueDate ? calendar.weekStart(calendar.day(*dueDate)).addDays(qint64(weeks) * weekDays) : thisWeek();
    if (!setWeek(id, week, false))
        return -1;
    const int shown = reveal(id.toString());
    emit moved(shown);
    return shown;
}

QString ReminderViewModel::groupTitle(int row) const
{
    const ReminderListRow shown = m_rows.rows().value(row);
    if (!shown.label.isEmpty())
        return shown.label;
    switch (shown.kind) {
    case Kind::DueDates:
        return m_store->text(u"有截止时间"_s, u"Due dates"_s);
    case Kind::Completed:
        return m_store->text(u"已完成"_s, u"Completed"_s);
    default:
        return m_store->text(u"无截止时间"_s, u"No due date"_s);
    }
}

void ReminderViewModel::waitForNextDue()
{
    if (const auto next = nextDueDate(m_store->reminders(), m_store->clock().now()))
        m_nextDue->set(*next);
    else
        m_nextDue->cancel();
}

} // namespace tessaly
