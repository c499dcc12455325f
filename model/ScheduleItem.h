#pragma once

#include "model/Instant.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

/// A task linked to a schedule.
struct ScheduleTask
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    bool isComplete = false;

    bool operator==(const ScheduleTask &) const = default;
};

/// One schedule (calendar event).
struct ScheduleItem
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    Instant date = {};
    /// Absent: no explicit end; counts as one hour wherever an end is needed.
    std::optional<Instant> endDate = {};
    QString notes = {};
    /// Single linked task of early versions; kept for migration into `tasks`.
    std::optional<QString> taskTitle = {};
    bool isTaskComplete = false;
    std::optional<QList<ScheduleTask>> tasks = QList<ScheduleTask>();
    std::optional<QString> tag = {};
    /// One of "blue", "purple", "green", "orange", "pink".
    std::optional<QString> colorName = {};
    /// "#RRGGBB", upper-case.
    std::optional<QString> customColorHex = {};
    std::optional<bool> calendarExportRequested = {};
    std::optional<QString> calendarEventIdentifier = {};
    std::optional<QString> calendarIdentifier = {};
    /// "#RRGGBB", upper-case.
    std::optional<QString> calendarColorHex = {};
    /// Minutes before the start at which the user is reminded; below zero never. Absent: as the calendar says.
    std::optional<double> leadMinutes = {};
    /// The to-do or the task of a goal that it gives time to. The schedule is done when that is complete; without it,
    /// the schedule stays as it is.
    std::optional<QUuid> plannedItemID = {};

    /// The explicit end, or one hour after the start.
    [[nodiscard]] Instant end() const { return endDate.value_or(date.plus(defaultScheduleSeconds)); }

    bool operator==(const ScheduleItem &) const = default;
};

} // namespace tessaly

// Moved by copying their bytes when a list of them grows, which Qt cannot know of std::optional members.
Q_DECLARE_TYPEINFO(tessaly::ScheduleTask, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(tessaly::ScheduleItem, Q_RELOCATABLE_TYPE);
