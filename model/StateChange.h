#pragma once

#include "model/CalendarFeed.h"
#include "model/PreferenceValue.h"
#include "model/RowsChange.h"
#include "model/SavedData.h"
#include "model/WaitingReminder.h"

#include <QList>
#include <QMap>
#include <QUuid>

#include <optional>

namespace tessaly {

/// One record before and after a change: added when there is no `before`, removed when there is no `after`.
template <class Record>
struct RecordChange
{
    QUuid id = {};
    /// Row in the list that holds the record; in both, the row before the change.
    qsizetype row = 0;
    std::optional<Record> before = {};
    std::optional<Record> after = {};

    bool operator==(const RecordChange &) const = default;
};

/// A setting before and after a change; absent stands for its default.
struct SettingChange
{
    std::optional<PreferenceValue> before = {};
    std::optional<PreferenceValue> after = {};

    bool operator==(const SettingChange &) const = default;
};

/// A step as a value: the records that differ, before and after.
struct StateChange
{
    QList<RecordChange<ScheduleItem>> schedules = {};
    QList<RecordChange<ReminderItem>> reminders = {};
    QList<RecordChange<Goal>> goals = {};
    QList<RecordChange<CalendarFeed>> feeds = {};
    QList<RecordChange<MarkdownCategory>> categories = {};
    QList<RecordChange<MarkdownDocument>> documents = {};
    QList<RecordChange<DeletedDocument>> deletedDocuments = {};
    /// By their keys in the preferences.
    QMap<QString, SettingChange> settings = {};
    /// Reminders that wait only before, and only after the change.
    QList<WaitingReminder> waitingBefore = {};
    QList<WaitingReminder> waitingAfter = {};

    /// Whether the events of its schedules stay as they are: what a restored state lacks may be wanted in the calendar.
    bool leavesCalendars = false;

    [[nodiscard]] bool isEmpty() const { return *this == StateChange{.leavesCalendars = leavesCalendars}; }
    bool operator==(const StateChange &) const = default;
};

template <class Record>
[[nodiscard]] RecordChange<Record> additionOf(const Record &record, qsizetype row)
{
    return {.id = record.id, .row = row, .after = record};
}
template <class Record>
[[nodiscard]] RecordChange<Record> removalOf(const Record &record, qsizetype row)
{
    return {.id = record.id, .row = row, .before = record};
}
template <class Record>
[[nodiscard]] RecordChange<Record> editOf(const Record &before, const Record &after, qsizetype row)
{
    return {.id = before.id, .row = row, .before = before, .after = after};
}

/// The change that leads back.
[[nodiscard]] StateChange inverted(StateChange change);

/// What applying changes to a list did.
template <class Record>
struct AppliedChanges
{
    /// Absent when nothing changed.
    std::optional<RowsChange> rows = {};
    /// What actually changed; inverted, it leads back exactly.
    QList<RecordChange<Record>> changes = {};
};

/// Applies the changes to the records with their ids. Of a record that is there before and after, only the fields that
/// differ are set, and only those that still hold the value before: what others have written meanwhile stays. A
/// removal takes every record of the id. An added record gets its row, or the end of the list; one whose id is there
/// already is left out, as are changes of records that are gone.
template <class Record>
[[nodiscard]] AppliedChanges<Record> applyChanges(QList<Record> &records, const QList<RecordChange<Record>> &changes);

/// Whether both changes are edits of one and the same text of the same record, and of nothing else.
[[nodiscard]] bool isSameText(const StateChange &first, const StateChange &second);
/// Whether the second change edits the one record that the first edits, and nothing else.
[[nodiscard]] bool isSameRecord(const StateChange &first, const StateChange &second);
/// Both changes as one, if isSameText() or isSameRecord().
[[nodiscard]] StateChange joinedEdits(StateChange first, const StateChange &second);

} // namespace tessaly
