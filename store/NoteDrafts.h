#pragma once

#include <QJsonObject>
#include <QUuid>

namespace tessaly {

class StoredValues;

/// Unsaved text of schedule notes, under a separate key: it is restored when the window was closed, or the program or
/// the machine crashed, before it was saved.
class NoteDrafts
{
public:
    /// The values must outlive the drafts.
    explicit NoteDrafts(StoredValues &values) : m_values(values) {}

    void load();

    /// The fields last kept for the schedule, see typedFields(); empty when there are none.
    [[nodiscard]] QJsonObject draft(const QUuid &scheduleID) const;
    /// Replaces the former fields. Without a field the draft is dropped.
    void keep(const QUuid &scheduleID, const QJsonObject &fields);
    void drop(const QUuid &scheduleID) { keep(scheduleID, {}); }
    void dropAll();

private:
    void save();

    StoredValues &m_values;
    /// By the ids of the schedules.
    QJsonObject m_drafts;
};

} // namespace tessaly
