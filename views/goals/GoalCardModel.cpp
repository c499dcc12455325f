#include "views/goals/GoalCardModel.h"

#include "model/GoalRules.h"
#include "platform/Clock.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tessaly {
namespace {

template <class Record>
QUuid neighbourID(const QList<Record> &records, const QUuid &id, int step)
{
    const qsizetype place = std::ranges::find(records, id, &Record::id) - records.cbegin();
    const qsizetype other = place + step;
    return place < records.size() && other >= 0 && other < records.size() ? records.at(other).id : QUuid();
}

/// Puts a former name in the place of a blank one; whether that changes anything.
bool giveNameBack(QString &name, const QString &formerName)
{
    return trimmedBlanks(name).isEmpty() && std::exchange(name, formerName) != formerName;
}

} // namespace

GoalCardModel::GoalCardModel(PlannerStore &store, const QUuid &goalID, QObject *parent)
    : QObject(parent), m_store(store), m_goalID(goalID), m_rows(goalCardRoles()), m_details(store, this)
{
    connect(&store, &PlannerStore::interfaceLanguageChanged, this, &GoalCardModel::goalChanged);
    connect(&store, &PlannerStore::timeZoneChanged, this, &GoalCardModel::goalChanged);
    refresh();
}

GoalCardModel::~GoalCardModel()
{
    change([this](Goal &goal) {
        bool isChanged = false;
        const auto giveBack = [&](auto &record) {
            const auto former = m_editing.constFind(record.id);
            if (former != m_editing.cend())
                isChanged |= giveNameBack(record.title, *former);
        };
        giveBack(goal);
        if (!goal.subgoals)
            return isChanged;
        for (Subgoal &subgoal : *goal.subgoals) {
            giveBack(subgoal);
            if (subgoal.tasks)
                std::ranges::for_each(*subgoal.tasks, giveBack);
        }
        return isChanged;
    });
}

void GoalCardModel::refresh()
{
    const auto found = std::ranges::find(m_store.goals(), m_goalID, &Goal::id);
    if (found == m_store.goals().cend() || *found == m_goal)
        return;
    m_goal = *found;
    refreshRows();
    m_details.show(m_goal);
    emit goalChanged();
}

void GoalCardModel::refreshRows()
{
    QList<GoalCardRow> rows;
    for (const Subgoal &subgoal : m_goal.subgoals.value_or(QList<Subgoal>())) {
        const QUuid id = subgoal.id;
        rows.append({GoalRow::Part::Subgoal, id, id, subgoal.title, 0, subgoal.isComplete, m_editing.contains(id)});
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>()))
            rows.append({GoalRow::Part::Task, task.id, id, task.title, task.weight, task.isComplete,
                         m_editing.contains(task.id)});
        const NewTask added = m_newTasks.value(id);
        rows.append({GoalRow::Part::AddTask, id, id, added.title, added.weight, false, false});
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
        // In one call: a title may itself contain a place marker.
        lines.append(QStringLiteral("%1 %2 – %3 %4 (%5%)")
                         .arg(share.isDone ? QStringLiteral("✓") : QStringLiteral("○"), share.title, weight,
                              weightText(share.weight), QString::number(share.percent)));
    }
    return lines.join(u'\n');
}

template <class Operation>
bool GoalCardModel::change(Operation operation)
{
    Goal goal = m_goal;
    const bool isChanged = operation(goal);
    if (isChanged)
        m_store.updateGoal(goal);
    return isChanged;
}

void GoalCardModel::setTitle(const QString &title)
{
    change([&](Goal &goal) { return std::exchange(goal.title, title) != title; });
}

void GoalCardModel::toggle()
{
    change([](Goal &goal) {
        goal.isComplete = !goal.isComplete;
        return true;
    });
}

QString GoalCardModel::flipEditing(const QUuid &id, const QString &title)
{
    const auto edited = m_editing.constFind(id);
    if (edited == m_editing.cend()) {
        m_editing.insert(id, title);
        return title;
    }
    const QString formerTitle = *edited;
    m_editing.erase(edited);
    return trimmedBlanks(title).isEmpty() ? formerTitle : title;
}

void GoalCardModel::toggleEditing()
{
    setTitle(flipEditing(m_goalID, m_goal.title));
    emit isEditingChanged();
}

bool GoalCardModel::addSubgoal()
{
    const QString title = m_newSubgoal;
    const bool isAdded = change([&](Goal &goal) { return tessaly::addSubgoal(goal, title); });
    if (isAdded) {
        m_newSubgoal.clear();
        emit newSubgoalChanged();
    }
    return isAdded;
}

void GoalCardModel::toggleRow(int row)
{
    const GoalCardRow toggled = rowAt(row);
    const Instant now = m_store.clock().now();
    if (toggled.part == GoalRow::Part::Subgoal)
        change([&](Goal &goal) { return toggleSubgoal(goal, toggled.id, now); });
    else if (toggled.part == GoalRow::Part::Task)
        change([&](Goal &goal) { return toggleTask(goal, toggled.subgoalID, toggled.id, now); });
}

void GoalCardModel::toggleRowEditing(int row)
{
    const GoalCardRow edited = rowAt(row);
    if (edited.id.isNull() || edited.part == GoalRow::Part::AddTask)
        return;
    const QString title = flipEditing(edited.id, edited.title);
    refreshRows();
    setRowTitle(row, title);
}

void GoalCardModel::removeRow(int row)
{
    const GoalCardRow removed = rowAt(row);
    if (removed.part == GoalRow::Part::Subgoal)
        change([&](Goal &goal) { return removeSubgoal(goal, removed.id); });
    else if (removed.part == GoalRow::Part::Task)
        change([&](Goal &goal) { return removeTask(goal, removed.id, removed.subgoalID); });
}

void GoalCardModel::setRowTitle(int row, const QString &title)
{
    const GoalCardRow changed = rowAt(row);
    switch (changed.part) {
    case GoalRow::Part::Subgoal:
        change([&](Goal &goal) { return renameSubgoal(goal, changed.id, title); });
        break;
    case GoalRow::Part::Task:
        change([&](Goal &goal) { return renameTask(goal, changed.subgoalID, changed.id, title); });
        break;
    case GoalRow::Part::AddTask:
        m_newTasks[changed.id].title = title;
        refreshRows();
        break;
    }
}

void GoalCardModel::setRowWeight(int row, double weight)
{
    const GoalCardRow changed = rowAt(row);
    const double rounded = roundedTaskWeight(weight);
    if (changed.part == GoalRow::Part::Task) {
        change([&](Goal &goal) { return weighTask(goal, changed.subgoalID, changed.id, rounded); });
    } else if (changed.part == GoalRow::Part::AddTask) {
        m_newTasks[changed.id].weight = rounded;
        refreshRows();
    }
}

bool GoalCardModel::addTask(int row)
{
    const GoalCardRow added = rowAt(row);
    if (added.part != GoalRow::Part::AddTask || trimmedBlanks(added.title).isEmpty())
        return false;
    // The row is empty again before the store announces the task.
    m_newTasks.remove(added.id);
    return change([&](Goal &goal) { return tessaly::addTask(goal, added.id, added.title, added.weight); });
}

bool GoalCardModel::drop(const QString &idText, int row)
{
    const QUuid dragged = QUuid::fromString(idText);
    return !dragged.isNull() && move(rowAt(row), dragged, rowAt(row).id);
}

int GoalCardModel::targetFor(int draggedRow, int hoveredRow) const
{
    const GoalCardRow dragged = rowAt(draggedRow);
    const GoalCardRow hovered = rowAt(hoveredRow);
    if (dragged.id.isNull() || dragged == hovered || dragged.part == GoalRow::Part::AddTask)
        return -1;
    if (dragged.part == GoalRow::Part::Task)
        return hovered.part == dragged.part && hovered.subgoalID == dragged.subgoalID ? hoveredRow : -1;
    if (hovered.id.isNull() || hovered.subgoalID == dragged.id)
        return -1;
    int row = hoveredRow;
    while (rowAt(row).part != GoalRow::Part::Subgoal)
        --row;
    return row;
}

bool GoalCardModel::isPartOf(int row, int otherRow) const
{
    const GoalCardRow other = rowAt(otherRow);
    return row == otherRow || (other.part == GoalRow::Part::Subgoal && rowAt(row).subgoalID == other.id);
}

bool GoalCardModel::moveBy(int row, int step)
{
    const GoalCardRow moved = rowAt(row);
    const QUuid other = std::abs(step) == 1 ? neighbour(moved, step) : QUuid();
    // One place down is the same as the next one moved before it.
    return !other.isNull() && (step < 0 ? move(moved, moved.id, other) : move(moved, other, moved.id));
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
    const QUuid subgoalID = place.subgoalID;
    switch (place.part) {
    case GoalRow::Part::Subgoal:
        return change([&](Goal &goal) { return moveSubgoal(goal, dragged, target); });
    case GoalRow::Part::Task:
        return change([&](Goal &goal) { return moveTask(goal, subgoalID, dragged, target); });
    case GoalRow::Part::AddTask:
        break;
    }
    return false;
}

} // namespace tessaly
