#pragma once

#include "model/DateLabels.h"
#include "model/ReminderItem.h"

#include <QList>
#include <QString>

namespace tessaly {

/// To-dos that stand under one label. `rows` are rows of the store's list, in the order in which they are shown.
struct ReminderGroup
{
    QString label = {};
    QList<qsizetype> rows = {};

    bool operator==(const ReminderGroup &) const = default;
};

/// The part of the to-do screen in which a to-do stands.
enum class ReminderSection { NoDueDate, Due, Completed };

/// Where a to-do stands: in a section and, unless that is NoDueDate, in the group with the label.
struct ReminderPlacement
{
    ReminderSection section = ReminderSection::NoDueDate;
    QString label = {};
    /// Order within a week: the due date in seconds, 0 elsewhere. Equal ones keep the store's order.
    double order = 0;

    bool operator==(const ReminderPlacement &) const = default;
};

/// Open to-dos with a due date stand under the week of that date, completed ones under the month of completion (`now`
/// when it is not known).
[[nodiscard]] ReminderPlacement reminderPlacement(const ReminderItem &item, const UserCalendar &calendar,
                                                  const DateLabels &labels, Instant now);

/// The to-dos of one section, kept in order while single ones come and go. Weeks ascend and months descend by the code
/// points of their labels: what the user reads is what is sorted.
class ReminderGroups
{
public:
    /// Where a row was put or taken from.
    struct Position
    {
        qsizetype group = 0;
        qsizetype row = 0;
        /// The group came with this row, or went with it.
        bool isWholeGroup = false;
    };

    explicit ReminderGroups(ReminderSection section) : m_section(section) {}

    [[nodiscard]] const QList<ReminderGroup> &groups() const { return m_groups; }

    /// Where `insert` would put the row. `placements` are those of every row of the store's list.
    [[nodiscard]] Position positionFor(qsizetype storeRow, const QList<ReminderPlacement> &placements) const;
    /// Where the row stands; it must be there.
    [[nodiscard]] Position positionOf(qsizetype storeRow, const QList<ReminderPlacement> &placements) const;
    void insert(const Position &position, qsizetype storeRow, const QString &label);
    void remove(const Position &position);
    /// The store's list grew or shrank before `first`: rows from there on are counted anew.
    void shift(qsizetype first, qsizetype by);
    /// Groups all rows of the section anew.
    void assign(const QList<ReminderPlacement> &placements);

private:
    [[nodiscard]] bool precedes(const QString &left, const QString &right) const;
    [[nodiscard]] qsizetype groupFor(const QString &label) const;

    ReminderSection m_section;
    QList<ReminderGroup> m_groups;
};

} // namespace tessaly
