#pragma once

#include "model/StateChange.h"

#include <QSet>

namespace tessaly {

/// The whole state of the planner as a value.
struct PlannerState
{
    SavedData data = {};
    QList<CalendarFeed> feeds = {};
    DocumentLibraryData library = {};
    /// The settings that a restore brings back, by their keys in the preferences.
    QMap<QString, PreferenceValue> settings = {};

    bool operator==(const PlannerState &) const = default;
};

/// In the order in which they are shown.
enum class StateArea { Schedules, ToDos, Goals, Links, Documents, Settings };

/// What a restore would do with one record or setting.
enum class Restoration { BringBack, Change, Remove };

/// What differs between two states of a record; of several the first counts.
enum class DifferingPart {
    Nothing,
    Title,
    Time,
    DueDate,
    Completion,
    Notes, ///< or requirement, or summary
    Tasks, ///< or subgoals
    Category,
    Color,
    Address,
    Value, ///< of a setting, or anything else
};

/// A record or setting that a restore would touch.
struct DifferenceRow
{
    StateArea area = {};
    Restoration restoration = {};
    /// The UUID of the record, or the key of the setting.
    QString key = {};
    /// As the record is restored, or else as it is; empty for a setting.
    QString title = {};
    DifferingPart part = DifferingPart::Nothing;
    /// The start of a schedule, the due date of a to-do, the target of a goal, the last change of a document.
    std::optional<Instant> date = {};

    bool operator==(const DifferenceRow &) const = default;
};

/// The change that leads from the present state to an earlier one. The times at which links were last read and
/// documents last changed are no difference.
[[nodiscard]] StateChange restoration(const PlannerState &now, const PlannerState &then);

/// What the change does: records that come back, that change, that go, each in the order of their list.
[[nodiscard]] QList<DifferenceRow> differenceRows(const StateChange &change);

/// Of a restoration, what concerns these records and settings. A schedule of a calendar that comes back is no longer
/// linked with its event, which is gone: it was removed together with the schedule. One of a link stays with the link
/// if that comes back, too, or if another schedule of the same event goes.
[[nodiscard]] StateChange chosenPart(const StateChange &restoration, const QSet<QString> &keys);

} // namespace tessaly
