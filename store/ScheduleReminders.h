#pragma once

#include "model/ScheduleIndex.h"
#include "model/WaitingReminder.h"

#include <QMap>
#include <QObject>
#include <QSet>

#include <optional>

namespace tessaly {

class PlannerStore;
class StoredValues;

/// The reminders of schedules, each some minutes before its schedule starts. They follow from the schedules and are not
/// stored one by one. What is stored is up to when they were given, and which were given last: a schedule whose start
/// had passed when it was entered, moved or given a reminder has none, and none is given twice, even if the clock is
/// set back. Main thread only.
class ScheduleReminders : public QObject
{
    Q_OBJECT

public:
    /// So many of those given last are remembered, and all whose schedule is still to come.
    static constexpr qsizetype mostRemembered = 1000;

    /// Loads the lead times and does nothing else. Both must outlive the object.
    ScheduleReminders(const PlannerStore &store, StoredValues &values);

    /// How many minutes before their start the schedules of a calendar or link remind, and under an empty identifier
    /// those of none; nothing where they do not. A schedule can have its own.
    [[nodiscard]] std::optional<int> leadMinutes(const QString &calendarIdentifier) const;
    /// Takes effect for what starts later than now.
    void setLeadMinutes(const QString &calendarIdentifier, std::optional<int> minutes);
    /// Takes over the lead times that were stored by something else, with the same effect.
    void readLeadMinutes();

    /// When the next reminder falls due, or should have; nothing when none is to come.
    [[nodiscard]] std::optional<Instant> next() const;
    /// The reminders that have fallen due and were not given yet.
    [[nodiscard]] QList<WaitingReminder> takeDue(Instant now);
    /// Saves what takeDue() has given.
    void save();

    /// Whether the reminder is one of a schedule.
    [[nodiscard]] static bool isOfSchedule(const WaitingReminder &reminder);
    /// The identifier of the schedule's reminder.
    [[nodiscard]] static QString identifier(const ScheduleItem &item);
    /// The schedule that the reminder is of; null when it is gone or starts at another time now.
    [[nodiscard]] static const ScheduleItem *schedule(const WaitingReminder &reminder,
                                                      const QList<ScheduleItem> &schedules);

signals:
    void leadMinutesChanged();
    /// The next reminder may be another one now.
    void changed();

private:
    void leadsHaveChanged();
    [[nodiscard]] std::optional<double> leadSeconds(const ScheduleItem &item) const;
    [[nodiscard]] double longestLead() const;
    [[nodiscard]] const ScheduleIndex &index() const;
    void follow(const RowsChange &rows);
    void load();

    const PlannerStore &m_store;
    StoredValues &m_values;
    /// By calendar identifier.
    QMap<QString, int> m_leads;
    /// Schedules that start earlier have had their reminders; absent before the first look.
    std::optional<Instant> m_givenUntil;
    bool m_hasLooked = false;
    /// Identifiers, the newest last.
    QStringList m_given;
    /// While no schedule can have a reminder, it is not kept.
    mutable std::optional<ScheduleIndex> m_index;
    mutable std::optional<std::optional<Instant>> m_next;
    /// The longest lead time that a single schedule was seen with, in seconds; negative without any.
    mutable double m_longestOwnLead = -1;
    mutable bool m_isOwnLeadKnown = false;
};

} // namespace tessaly
