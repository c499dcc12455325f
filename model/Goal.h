#pragma once

#include "model/Instant.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <algorithm>
#include <optional>

namespace tessaly {

/// A weighted task of a subgoal.
struct GoalTask
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    double weight = 1.0;
    bool isComplete = false;
    /// When it was ticked; absent while it is open, and where an earlier version of the planner ticked it.
    std::optional<Instant> completedAt = {};

    bool operator==(const GoalTask &) const = default;
};

/// What the task counts in its goal's progress: its weight, at least 0.01.
[[nodiscard]] inline double countedWeight(const GoalTask &task)
{
    return std::max(task.weight, 0.01);
}

struct Subgoal
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    std::optional<QList<GoalTask>> tasks = QList<GoalTask>();
    bool isComplete = false;
    /// As of a task.
    std::optional<Instant> completedAt = {};

    bool operator==(const Subgoal &) const = default;
};

/// A main goal.
struct Goal
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    std::optional<QString> summary = {};
    std::optional<QString> category = {};
    std::optional<Instant> targetDate = {};
    /// Fraction 0 to 1, used only while the goal has no tasks.
    double progress = 0.0;
    QString colorName = QStringLiteral("blue");
    bool isComplete = false;
    std::optional<QList<Subgoal>> subgoals = QList<Subgoal>();

    /// The progress shown for the goal, 0 to 1 and not rounded: 1 when the goal is complete, else the share of
    /// completed weight. A completed subgoal completes its tasks; each weight counts at least 0.01.
    [[nodiscard]] double calculatedProgress() const;

    bool operator==(const Goal &) const = default;
};

} // namespace tessaly

// Moved by copying their bytes when a list of them grows, which Qt cannot know of std::optional members.
Q_DECLARE_TYPEINFO(tessaly::GoalTask, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(tessaly::Subgoal, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(tessaly::Goal, Q_RELOCATABLE_TYPE);
