#include "app/tour/TourStop.h"
#include "model/Uuid.h"
#include "views/goals/GoalViewModel.h"

#include <QQuickItem>

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

/// The item with the name; rows of lists are no children of the screen but items in it.
QQuickItem *itemNamed(QQuickItem *parent, const QString &name)
{
    if (parent->objectName() == name)
        return parent;
    for (QQuickItem *child : parent->childItems()) {
        if (QQuickItem *found = itemNamed(child, name))
            return found;
    }
    return nullptr;
}

/// How the percentage of the first goal adds up.
void openSum(QObject &, QObject &screen)
{
    QQuickItem *percentage = itemNamed(qobject_cast<QQuickItem *>(&screen), QStringLiteral("goalPercentage"));
    if (!percentage)
        qFatal("The screen shows no percentage");
    QMetaObject::invokeMethod(percentage, "clicked");
    // The first frames of what fades in are alike.
    for (int pauses = 0; pauses < 5; ++pauses)
        rest();
}

} // namespace

QList<TourStop> goalStops()
{
    return {
        {QStringLiteral("goals"), ShellModel::Goals},
        {QStringLiteral("goals-edit"), ShellModel::Goals, onViewModel(editFirstGoal), leaveToOverview},
        {QStringLiteral("goals-sum"), ShellModel::Goals, openSum, leaveToOverview},
        atFoot(QStringLiteral("goals-lower"), ShellModel::Goals),
    };
}

} // namespace tessaly
