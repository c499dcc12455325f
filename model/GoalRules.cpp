#include "model/GoalRules.h"

#include "model/CodePointOrder.h"

#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

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

QList<qsizetype> activeGoals(const QList<Goal> &goals)
{
    QList<qsizetype> rows;
    for (qsizetype row = 0; row < goals.size(); ++row) {
        if (!goals.at(row).isComplete)
            rows.append(row);
    }
    return rows;
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

QList<int> wholePercentages(const QList<double> &fractions, int whole)
{
    QList<int> percents;
    QList<qsizetype> places;
    for (const double fraction : fractions) {
        places.append(percents.size());
        percents.append(percentage(fraction));
        whole -= percents.last();
    }
    std::ranges::stable_sort(places, std::ranges::greater(),
                             [&](qsizetype place) { return fractions.at(place) * 100 - percents.at(place); });
    for (qsizetype rank = 0; rank < std::min<qsizetype>(whole, places.size()); ++rank)
        ++percents[places.at(rank)];
    return percents;
}

QList<GoalTaskShare> goalTaskShares(const Goal &goal)
{
    if (goal.isComplete)
        return {};
    QList<GoalTaskShare> shares;
    QList<double> weights[2];
    for (const Subgoal &subgoal : goal.subgoals.value_or(QList<Subgoal>())) {
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>())) {
            const bool isDone = task.isComplete || subgoal.isComplete;
            weights[isDone].append(countedWeight(task));
            shares.append({task.title, task.weight, 0, isDone});
        }
    }
    // Without tasks the percentage is a stored one, and can be any number.
    if (shares.isEmpty())
        return {};
    // Each part of the bar separately, so that it fits the percentage beside it.
    const double total = std::accumulate(weights[0].cbegin(), weights[0].cend(), 0.0) +
                         std::accumulate(weights[1].cbegin(), weights[1].cend(), 0.0);
    const int donePercent = percentage(goal.calculatedProgress());
    for (const bool isDone : {false, true}) {
        for (double &weight : weights[isDone])
            weight /= total;
        QList<int> percents = wholePercentages(weights[isDone], isDone ? donePercent : 100 - donePercent);
        for (GoalTaskShare &share : shares) {
            if (share.isDone == isDone)
                share.percent = percents.takeFirst();
        }
    }
    return shares;
}

} // namespace tessaly
