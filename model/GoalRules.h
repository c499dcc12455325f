#pragma once

#include "model/Goal.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <algorithm>

namespace tessaly {

/// Without the blanks (Unicode space separators and tabs) at both ends. Line breaks stay.
[[nodiscard]] QString trimmedBlanks(const QString &text);

/// A fraction as whole per cent: what follows the point is dropped, so 0.999 is 99. What is not a number is 0.
[[nodiscard]] int percentage(double fraction);

/// Moves the record with the id `dragged` immediately before the one with the id `target`. Returns false, and moves
/// nothing, when the two are the same record or one is not there. A move to where the record already stands is made
/// and true.
template <class Record>
bool moveBefore(QList<Record> &records, const QUuid &dragged, const QUuid &target)
{
    const auto from = std::ranges::find(records.cbegin(), records.cend(), dragged, &Record::id);
    const auto to = std::ranges::find(records.cbegin(), records.cend(), target, &Record::id);
    if (dragged == target || from == records.cend() || to == records.cend())
        return false;
    const qsizetype source = from - records.cbegin();
    const qsizetype place = to - records.cbegin();
    records.move(source, source < place ? place - 1 : place);
    return true;
}

/// Rows of the goals that are not complete.
[[nodiscard]] QList<qsizetype> activeGoals(const QList<Goal> &goals);

/// The completed goals of one category; `rows` are rows of the store's list in its order.
struct GoalCategory
{
    QString name = {};
    QList<qsizetype> rows = {};

    bool operator==(const GoalCategory &) const = default;
};

/// The category under which a completed goal stands: its own, or `uncategorized` when that is absent or empty.
[[nodiscard]] QString categoryName(const Goal &goal, const QString &uncategorized);

/// Ascending by the code points of the name.
[[nodiscard]] QList<GoalCategory> completedGoalsByCategory(const QList<Goal> &goals, const QString &uncategorized);

/// What one task contributes to its goal's progress.
struct GoalTaskShare
{
    QString title = {};
    double weight = 0;
    /// Whole per cent of the weight of all tasks.
    int percent = 0;
    bool isDone = false;

    bool operator==(const GoalTaskShare &) const = default;
};

/// Whole per cents of the fractions, each of them at least 0, that add up to `whole` where rounding each down or up
/// can do that: those with the largest remainders are rounded up, of equal ones the earlier.
[[nodiscard]] QList<int> wholePercentages(const QList<double> &fractions, int whole);

/// The tasks of all subgoals in their order; empty when the progress does not come from tasks. The per cents of what is
/// done add up to the goal's percentage, all of them to 100.
[[nodiscard]] QList<GoalTaskShare> goalTaskShares(const Goal &goal);

} // namespace tessaly
