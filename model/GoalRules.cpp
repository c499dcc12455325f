#include "model/GoalRules.h"

#include "model/CodePointOrder.h"

#include <cmath>
#include <limits>

namespace tessaly {

QString trimmedBlanks(const QString &text)
{
    const auto isBlank = [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; };
    const auto first = std::ranges::find_if_not(text, isBlank);
    auto last = text.cend();
    while (last != first && isBlank(*(last - 1)))
        --last;
    return text.mid(first - text.cbegin(), last - first);
}

int percentage(double fraction)
{
    const double percent = std::trunc(fraction * 100);
    if (std::isnan(percent))
        return 0;
    return static_cast<int>(std::clamp<double>(percent, std::numeric_limits<int>::min(), //
                                               std::numeric_limits<int>::max()));
}

QString categoryName(const Goal &goal, const QString &uncategorized)
{
    return goal.category.has_value() && !goal.category->isEmpty() ? *goal.category : uncategorized;
}

QList<GoalCategory> completedGoalsByCategory(const QList<Goal> &goals, const QString &uncategorized)
{
    QList<GoalCategory> categories;
    for (qsizetype row = 0; row < goals.size(); ++row) {
        if (!goals.at(row).isComplete)
            continue;
        const QString name = categoryName(goals.at(row), uncategorized);
        auto place = std::ranges::lower_bound(
            categories, name,
            [](const QString &left, const QString &right) { return precedesByCodePoint(left, right); },
            &GoalCategory::name);
        if (place == categories.end() || place->name != name)
            place = categories.insert(place, GoalCategory{name, {}});
        place->rows.append(row);
    }
    return categories;
}

QList<GoalTaskShare> goalTaskShares(const Goal &goal)
{
    QList<GoalTaskShare> shares;
    double total = 0;
    for (const Subgoal &subgoal : goal.subgoals.value_or(QList<Subgoal>())) {
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>())) {
            const double weight = countedWeight(task);
            total += weight;
            shares.append({task.title, task.weight, weight, task.isComplete || subgoal.isComplete});
        }
    }
    for (GoalTaskShare &share : shares)
        share.share /= total;
    return goal.isComplete ? QList<GoalTaskShare>() : shares;
}

} // namespace tessaly
