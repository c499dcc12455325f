#include "views/goals/GoalCardModel.h"

#include "model/GoalRules.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaly {
namespace {

constexpr double defaultWeight = 1.0;

template <class Record>
Record *findRecord(std::optional<QList<Record>> &records, const QUuid &id)
{
    if (!records)
        return nullptr;
    const auto found = std::ranges::find(*records, id, &Record::id);
    return found == records->end() ? nullptr : &*found;
}

template <class Record>
QUuid neighbourID(const QList<Record> &records, const QUuid &id, int step)
{
    const qsizetype place = std::ranges::find(records, id, &Record::id) - records.cbegin();
    const qsizetype other = place + step;
    return place < records.size() && other >= 0 && other < records.size() ? records.at(other).id : QUuid();
}

} // namespace

GoalCardModel::GoalCardModel(PlannerStore &store, const QUuid &goalID, QObject *parent)
    : QObject(parent), m_store(store), m_goalID(goalID), m_rows(goalCardRoles())
{
    connect(&store, &PlannerStore::interfaceLanguageChanged, this, &GoalCardModel::goalChanged);
    connect(&store, &PlannerStore::timeZoneChanged, this, &GoalCardModel::goalChanged);
    refresh();
}

void GoalCardModel::refresh()
{
    const auto found = std::ranges::find(m_store.goals(), m_goalID, &Goal::id);
    if (found == m_store.goals().cend() || *found == m_goal)
        return;
    m_goal = *found;
    refreshRows();
    emit goalChanged();
}

void GoalCardModel::refreshRows()
{
    QList<GoalCardRow> rows;
    for (const Subgoal &subgoal : m_goal.subgoals.value_or(QList<Subgoal>())) {
        const QUuid id = subgoal.id;
        rows.append(
            {GoalRow::Part::Subgoal, id, id, subgoal.title, 0, subgoal.isComplete, m_editingSubgoals.contains(id)});
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>()))
            rows.append({GoalRow::Part::Task, task.id, id, task.title, task.weight, task.isComplete,
                         m_editingTasks.contains(task.id)});
        rows.append({GoalRow::Part::AddTask, id, id, m_newTasks.value(id), m_newTaskWeights.value(id, defaultWeight),
                     false, false});
    }
    m_rows.setRows(rows);
}

QString GoalCardModel::dueText() const
{
    if (!m_goal.targetDate)
        return {};
    return m_store.text(QStringLiteral("截止："), QStringLiteral("Due: ")) + m_store.dateText(*m_goal.targetDate, true);
}

QString GoalCardModel::percentageText() const
{
    return QString::number(percentage(progress())) + u'%';
}

QString GoalCardModel::explanation() const
{
    const QString weight = m_store.text(QStringLiteral("权重"), QStringLiteral("Weight"));
    QStringList lines;
    const QList<GoalTaskShare> shares = goalTaskShares(m_goal);
    for (const GoalTaskShare &share : shares) {
        // In one call: a title may hold a place marker of its own.
        lines.append(QStringLiteral("%1 %2 – %3 %4 (%5%)")
                         .arg(share.isDone ? QStringLiteral("✓") : QStringLiteral("○"), share.title, weight,
                              weightText(share.weight), QString::number(share.percent)));
    }
    return lines.join(u'\n');
}

void GoalCardModel::change(const std::function<bool(Goal &)> &change)
{
    Goal goal = m_goal;
    if (change(goal))
        m_store.updateGoal(goal);
}

void GoalCardModel::changeSubgoal(const QUuid &id, const std::function<bool(Subgoal &)> &changeIt)
{
    change([&](Goal &goal) {
        Subgoal *subgoal = findRecord(goal.subgoals, id);
        return subgoal && changeIt(*subgoal);
    });
}

void GoalCardModel::changeTask(const GoalCardRow &row, const std::function<bool(GoalTask &)> &changeIt)
{
    changeSubgoal(row.subgoalID, [&](Subgoal &subgoal) {
        GoalTask *task = findRecord(subgoal.tasks, row.id);
        return task && changeIt(*task);
    });
}

const GoalCardRow *GoalCardModel::rowAt(int row) const
{
    return row >= 0 && row < m_rows.rows().size() ? &m_rows.rows().at(row) : nullptr;
}

void GoalCardModel::setTitle(const QString &title)
{
    change([&](Goal &goal) { return std::exchange(goal.title, title) != title; });
}

void GoalCardModel::setNewSubgoal(const QString &title)
{
    if (std::exchange(m_newSubgoal, title) != title)
        emit newSubgoalChanged();
}

void GoalCardModel::toggle()
{
    change([](Goal &goal) {
        goal.isComplete = !goal.isComplete;
        return true;
    });
}

void GoalCardModel::toggleEditing()
{
    m_isEditing = !m_isEditing;
    const bool isNameless = trimmedBlanks(m_goal.title).isEmpty();
    if (m_isEditing)
        m_formerTitle = m_goal.title;
    if (!m_isEditing && isNameless)
        setTitle(m_formerTitle);
    emit isEditingChanged();
}

bool GoalCardModel::addSubgoal()
{
    const QString title = trimmedBlanks(m_newSubgoal);
    if (title.isEmpty())
        return false;
    setNewSubgoal({});
    change([&](Goal &goal) {
        if (!goal.subgoals)
            goal.subgoals.emplace();
        goal.subgoals->append(Subgoal{.title = title});
        return true;
    });
    return true;
}

void GoalCardModel::toggleRow(int row)
{
    const GoalCardRow *found = rowAt(row);
    const auto flip = [](auto &record) {
        record.isComplete = !record.isComplete;
        return true;
    };
    if (found && found->part == GoalRow::Part::Subgoal)
        changeSubgoal(found->id, flip);
    else if (found && found->part == GoalRow::Part::Task)
        changeTask(*found, flip);
}

void GoalCardModel::toggleRowEditing(int row)
{
    const GoalCardRow *found = rowAt(row);
    if (!found || found->part == GoalRow::Part::AddTask)
        return;
    const GoalCardRow edited = *found;
    QHash<QUuid, QString> &editing = edited.part == GoalRow::Part::Subgoal ? m_editingSubgoals : m_editingTasks;
    const bool isEnd = editing.contains(edited.id);
    const QString formerTitle = isEnd ? editing.take(edited.id) : edited.title;
    if (!isEnd)
        editing.insert(edited.id, formerTitle);
    refreshRows();
    if (isEnd && trimmedBlanks(edited.title).isEmpty())
        setRowTitle(row, formerTitle);
}

void GoalCardModel::removeRow(int row)
{
    if (!rowAt(row))
        return;
    const GoalCardRow removed = *rowAt(row);
    const auto hasID = [&](const auto &record) { return record.id == removed.id; };
    if (removed.part == GoalRow::Part::Subgoal)
        change([&](Goal &goal) { return goal.subgoals && goal.subgoals->removeIf(hasID) > 0; });
    else if (removed.part == GoalRow::Part::Task)
        changeSubgoal(removed.subgoalID,
                      [&](Subgoal &subgoal) { return subgoal.tasks && subgoal.tasks->removeIf(hasID) > 0; });
}

void GoalCardModel::setRowTitle(int row, const QString &title)
{
    if (!rowAt(row))
        return;
    const GoalCardRow changed = *rowAt(row);
    const auto setTitle = [&](auto &record) { return std::exchange(record.title, title) != title; };
    switch (changed.part) {
    case GoalRow::Part::Subgoal:
        changeSubgoal(changed.id, setTitle);
        break;
    case GoalRow::Part::Task:
        changeTask(changed, setTitle);
        break;
    case GoalRow::Part::AddTask:
        m_newTasks.insert(changed.id, title);
        refreshRows();
        break;
    }
}

void GoalCardModel::setRowWeight(int row, double weight)
{
    if (!rowAt(row))
        return;
    const GoalCardRow changed = *rowAt(row);
    // Steps of a tenth add up to 0.30000000000000004 and the like.
    const double rounded = std::round(weight * 10) / 10;
    if (changed.part == GoalRow::Part::Task) {
        changeTask(changed, [&](GoalTask &task) { return std::exchange(task.weight, rounded) != rounded; });
    } else if (changed.part == GoalRow::Part::AddTask) {
        m_newTaskWeights.insert(changed.id, rounded);
        refreshRows();
    }
}

bool GoalCardModel::addTask(int row)
{
    const GoalCardRow *found = rowAt(row);
    const QUuid id = found && found->part == GoalRow::Part::AddTask ? found->id : QUuid();
    const QString title = trimmedBlanks(m_newTasks.value(id));
    if (title.isEmpty())
        return false;
    const double weight = m_newTaskWeights.value(id, defaultWeight);
    m_newTasks.remove(id);
    m_newTaskWeights.remove(id);
    changeSubgoal(id, [&](Subgoal &subgoal) {
        if (!subgoal.tasks)
            subgoal.tasks.emplace();
        subgoal.tasks->append(GoalTask{.title = title, .weight = weight});
        return true;
    });
    return true;
}

bool GoalCardModel::drop(const QString &idText, int row)
{
    const GoalCardRow *target = rowAt(row);
    const QUuid dragged = QUuid::fromString(idText);
    return target && !dragged.isNull() && move(*target, dragged, target->id);
}

int GoalCardModel::targetFor(int draggedRow, int hoveredRow) const
{
    const GoalCardRow *dragged = rowAt(draggedRow);
    const GoalCardRow *hovered = rowAt(hoveredRow);
    if (!dragged || !hovered || dragged == hovered || dragged->part == GoalRow::Part::AddTask)
        return -1;
    if (dragged->part == GoalRow::Part::Task)
        return hovered->part == dragged->part && hovered->subgoalID == dragged->subgoalID ? hoveredRow : -1;
    if (hovered->subgoalID == dragged->id)
        return -1;
    int row = hoveredRow;
    while (rowAt(row)->part != GoalRow::Part::Subgoal)
        --row;
    return row;
}

bool GoalCardModel::isPartOf(int row, int otherRow) const
{
    const GoalCardRow *part = rowAt(row);
    const GoalCardRow *other = rowAt(otherRow);
    return part && other && (part == other || (other->part == GoalRow::Part::Subgoal && part->subgoalID == other->id));
}

bool GoalCardModel::moveBy(int row, int step)
{
    const GoalCardRow *found = rowAt(row);
    if (!found || std::abs(step) != 1)
        return false;
    const QUuid other = neighbour(*found, step);
    // One place down is the same as the next one moved before it.
    return !other.isNull() && (step < 0 ? move(*found, found->id, other) : move(*found, other, found->id));
}

QUuid GoalCardModel::neighbour(const GoalCardRow &row, int step) const
{
    const QList<Subgoal> subgoals = m_goal.subgoals.value_or(QList<Subgoal>());
    if (row.part == GoalRow::Part::Subgoal)
        return neighbourID(subgoals, row.id, step);
    const auto subgoal = std::ranges::find(subgoals, row.subgoalID, &Subgoal::id);
    if (row.part != GoalRow::Part::Task || subgoal == subgoals.cend())
        return {};
    return neighbourID(subgoal->tasks.value_or(QList<GoalTask>()), row.id, step);
}

bool GoalCardModel::move(const GoalCardRow &place, const QUuid &dragged, const QUuid &target)
{
    bool isMoved = false;
    if (place.part == GoalRow::Part::Subgoal)
        change([&](Goal &goal) { return isMoved = goal.subgoals && moveBefore(*goal.subgoals, dragged, target); });
    else if (place.part == GoalRow::Part::Task)
        changeSubgoal(QUuid(place.subgoalID), [&](Subgoal &subgoal) {
            return isMoved = subgoal.tasks && moveBefore(*subgoal.tasks, dragged, target);
        });
    return isMoved;
}

} // namespace tessaly
