#include "app/tour/TourStop.h"
#include "model/Uuid.h"
#include "views/goals/GoalViewModel.h"

namespace tessaly {

namespace {

/// Edits the first goal, its first subgoal and that one's first task.
void editFirstGoal(GoalViewModel &goals)
{
    if (goals.rows()->rows().isEmpty())
        return;
    GoalCardModel *card = goals.card(uuidText(goals.rows()->rows().first().goalID));
    card->toggleEditing();
    card->toggleRowEditing(0);
    card->toggleRowEditing(1);
}

} // namespace

QList<TourStop> goalStops()
{
    return {
        {QStringLiteral("goals"), ShellModel::Goals},
        {QStringLiteral("goals-edit"), ShellModel::Goals, onViewModel(editFirstGoal), leaveToOverview},
        atFoot(QStringLiteral("goals-lower"), ShellModel::Goals),
    };
}

} // namespace tessaly
