#pragma once

#include "model/DateLabels.h"
#include "model/ReminderGroups.h"
#include "model/RowsChange.h"
#include "views/FocusHeir.h"

#include <QAbstractListModel>
#include <QSet>
#include <QtQml/qqml.h>
#include <QUuid>

#include <memory>

namespace tessaly {

class Alarm;
class PlannerStore;

/// The to-do screen's groups and to-dos as one flat list: two cards, in each the headers of groups and, below a header
/// that is expanded, what it holds. Follows the store row by row: a change of one to-do moves or changes that row (and
/// adds or drops the header of its group) and touches no other.
class ReminderListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ReminderViewModel")

public:
    enum class Kind {
        NoDueDate, ///< header of the open to-dos without a due date
        DueDates,  ///< header of the weeks
        Completed, ///< header of the months; begins the second card
        Week,
        Month,
        Reminder,
    };
    Q_ENUM(Kind)

    enum Role {
        KindRole = Qt::UserRole,
        LabelRole,       ///< string: of a week or month; of another header empty, its words are the screen's
        IsExpandedRole,  ///< bool: of a header
        IsEmptyRole,     ///< bool: of a header that holds nothing and therefore does not open
        IsNestedRole,    ///< bool: a week or month, or a to-do in one
        IsLastRole,      ///< bool: the last row of its card
        ReminderIdRole,  ///< string
        TitleRole,       ///< string
        RequirementRole, ///< string, empty when there is none
        DueTextRole,     ///< string in the words of the system's locale, empty without a due date
        IsCompleteRole,  ///< bool
    };

    /// The store must outlive the model.
    explicit ReminderListModel(const PlannerStore &store, QObject *parent = nullptr);
    ~ReminderListModel() override;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Opens or closes the group of a header row; on other rows and empty groups does nothing. Weeks and months are
    /// remembered by their labels, also while they are not there.
    Q_INVOKABLE void setExpanded(int row, bool isExpanded);
    /// The to-do of a row, or a null id.
    [[nodiscard]] QUuid reminderAt(int row) const;
    [[nodiscard]] RowLevel levelOf(int row) const;
    /// Row of the to-do, or -1 while it is not shown.
    [[nodiscard]] int rowOf(const QUuid &id) const;

private:
    /// A header and the to-dos under it.
    struct Block
    {
        Kind kind = Kind::Week;
        /// Null for a header that holds weeks or months, or nothing.
        const ReminderGroup *group = nullptr;
        bool isExpanded = false;
        int firstRow = 0;

        /// Rows shown, the header among them.
        [[nodiscard]] int height() const;
    };
    struct Extent
    {
        int first = 0;
        int count = 0;
    };

    /// Whether the store still holds a row that leaves its group.
    enum class StoreRow { Stays, IsGone };

    void onChanged(const RowsChange &change);
    void reset();
    void onTimeZoneChanged();
    void placeUndated();
    void updateRow(qsizetype storeRow);
    void insertItem(qsizetype storeRow);
    void removeItem(qsizetype storeRow, StoreRow fate);
    /// All rows of the store from `first` on are counted anew.
    void shift(qsizetype first, qsizetype by);
    [[nodiscard]] ReminderPlacement placement(const ReminderItem &item) const;
    [[nodiscard]] ReminderGroups &section(ReminderSection section);

    [[nodiscard]] QList<Block> blocks() const;
    /// Rows shown for a to-do at the position, which is in the group; with the group's header when that goes too.
    [[nodiscard]] Extent extentOf(const ReminderGroup *group, const ReminderGroups::Position &position) const;
    /// Rows that a group not there yet will take with its first to-do. `place` is among the section's groups.
    [[nodiscard]] Extent extentOfNewGroup(const ReminderPlacement &placement, qsizetype place) const;
    [[nodiscard]] const Block &blockOf(int row) const;
    /// Row of the store, or -1 for a header.
    [[nodiscard]] qsizetype storeRowOf(int row) const;
    [[nodiscard]] int rowOfStoreRow(qsizetype storeRow) const;
    /// Rows appeared or vanished at `row`: headers and the ends of the cards may look different.
    void tellSurroundings(int row);
    [[nodiscard]] bool isLast(int row) const;
    [[nodiscard]] QVariant headerData(const Block &block, int role) const;
    [[nodiscard]] QVariant itemData(const ReminderItem &item, int role) const;

    const PlannerStore &m_store;
    std::unique_ptr<DateLabels> m_labels;
    std::unique_ptr<Alarm> m_nextMonth;
    /// Of every row of the store.
    QList<ReminderPlacement> m_placements;
    ReminderGroups m_noDueDate{ReminderSection::NoDueDate};
    ReminderGroups m_weeks{ReminderSection::Due};
    ReminderGroups m_months{ReminderSection::Completed};
    QList<Block> m_blocks;
    /// While a row leaves that the store has dropped already: views may look at the rows once more. Else -1.
    qsizetype m_goneStoreRow = -1;
    QSet<QString> m_expandedWeeks;
    QSet<QString> m_expandedMonths;
    bool m_isNoDueDateExpanded = true;
    bool m_isDueDatesExpanded = true;
    bool m_isCompletedExpanded = false;
};

} // namespace tessaly
