#pragma once

#include "model/AppLanguage.h"
#include "model/DateLabels.h"
#include "model/ReminderItem.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QString>
#include <QtQml/qqml.h>
#include <QUuid>

#include <utility>

namespace tessaly {

/// What rows of the to-do screen stand for.
namespace ReminderRowKind {
Q_NAMESPACE
QML_ELEMENT

enum class Kind {
    NoDueDate, ///< header of the open to-dos without a due date; begins the first card
    DueDates,  ///< header of the weeks
    Completed, ///< header of the months; begins the second card
    Week,
    Month,
    Reminder,
};
Q_ENUM_NS(Kind)
} // namespace ReminderRowKind

/// A row of the to-do screen. Roles: kind, label (of a week or month), isExpanded, isEmpty, count, overdueCount (of
/// headers), isNested (a week or month, or a to-do in one), isLast (of its card), title, requirement, dueText,
/// repeatText, isComplete, isOverdue, isEditing (of to-dos).
struct ReminderListRow
{
    ReminderRowKind::Kind kind = ReminderRowKind::Kind::Reminder;
    /// Of the week or month, also of its to-dos.
    QString label = {};
    QUuid id = {};
    QString title = {};
    QString requirement = {};
    /// In the words of the system's locale, empty without a due date.
    QString dueText = {};
    /// How it repeats, in the interface language; empty when it does not.
    QString repeatText = {};
    bool isComplete = false;
    bool isExpanded = false;
    /// A header that holds nothing does not open.
    bool isEmpty = false;
    bool isLast = false;
    bool isOverdue = false;
    bool isEditing = false;
    int count = 0;
    int overdueCount = 0;
    /// First day, of a week.
    QDate firstDay = {};

    [[nodiscard]] bool isNested() const { return !label.isEmpty(); }
    /// A to-do that changes its group leaves one row and gets another.
    [[nodiscard]] std::pair<std::pair<int, QUuid>, QString> key() const
    {
        return {{static_cast<int>(kind), id}, label};
    }
    bool operator==(const ReminderListRow &) const = default;
};

using ReminderListRows = RowListModel<ReminderListRow>;

[[nodiscard]] QList<ReminderListRows::Role> reminderListRoles();

/// Which groups are open. Weeks and months are remembered by their labels, also while they are not there.
struct ReminderGroupStates
{
    bool isNoDueDateExpanded = true;
    bool isDueDatesExpanded = true;
    bool isCompletedExpanded = false;
    QSet<QString> expandedWeeks = {};
    QSet<QString> expandedMonths = {};
    /// The to-do that is being edited.
    QUuid edited = {};
};

/// The header of the week to which a to-do that is dragged over a row would move: that of the week in which the row
/// stands, if it is another one; -1 otherwise. A to-do without a due date also finds the header of the weeks, which
/// stands for the present one, but no week that ends before `today`.
[[nodiscard]] int weekHeaderFor(const QList<ReminderListRow> &rows, int draggedRow, int hoveredRow, QDate today);

/// The row in which an open to-do stands, else the header of the closed group that holds it; -1 without either.
[[nodiscard]] int rowShowing(const QList<ReminderListRow> &rows, const ReminderItem &item, const UserCalendar &calendar,
                             const DateLabels &labels);

/// Two cards, in each the headers of groups and, below a header that is open, what it holds.
[[nodiscard]] QList<ReminderListRow> reminderListRows(const QList<ReminderItem> &reminders,
                                                      const UserCalendar &calendar, const DateLabels &labels,
                                                      Instant now, const ReminderGroupStates &states,
                                                      AppLanguage language);

} // namespace tessaly
