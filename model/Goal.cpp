#include "model/Goal.h"

namespace tessaly {

double Goal::calculatedProgress() const
{
    if (isComplete)
        return 1.0;

    bool hasTasks = false;
    double total = 0;
    double done = 0;
    for (const Subgoal &subgoal : subgoals.value_or(QList<Subgoal>())) {
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>())) {
            const double weight = countedWeight(task);
            hasTasks = true;
            total += weight;
            if (task.isComplete || subgoal.isComplete)
                done += weight;
        }
    }
    if (!hasTasks)
        return progress;
    return total != 0 ? done / total : 0;
}

} // namespace tessaly
