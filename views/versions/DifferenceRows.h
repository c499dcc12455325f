#pragma once

#include "model/Restoration.h"
#include "views/RowListModel.h"

namespace tessaly {

class PlannerStore;

/// A row of the box that shows what a restore would do: the head of an area, a record, or the rest of an area.
struct DifferenceListRow
{
    enum class Kind { Area, Record, More };

    Kind kind = Kind::Record;
    StateArea area = {};
    /// Of the record or setting.
    QString recordKey = {};
    QString title = {};
    QString detail = {};
    Restoration restoration = {};
    bool isChecked = false;
    /// Of an area: some of its rows are checked.
    bool isPartial = false;
    bool isOpen = false;
    /// An area without difference.
    bool isVoid = false;

    [[nodiscard]] QString key() const
    {
        return QString::number(static_cast<int>(kind)) + QString::number(static_cast<int>(area)) + recordKey;
    }
    bool operator==(const DifferenceListRow &) const = default;
};

/// What the user did with the rows.
struct DifferenceChoice
{
    QSet<QString> checked = {};
    QSet<StateArea> open = {};
    /// Areas of which every row is shown.
    QSet<StateArea> unfolded = {};
};

/// As the sheet opens: what comes back is checked, and its areas are open.
[[nodiscard]] DifferenceChoice firstChoice(const QList<DifferenceRow> &differences);

/// Schedules, to-dos, goals and documents always; links and settings where they differ. Of an open area the first three
/// rows, and the others once it is unfolded.
[[nodiscard]] QList<DifferenceListRow> differenceListRows(const QList<DifferenceRow> &differences,
                                                          const DifferenceChoice &choice, const PlannerStore &store);

/// Roles: kind, title, detail, restoration, isChecked, isPartial, isOpen, isVoid. Kind and restoration are the numbers
/// of their values.
[[nodiscard]] QList<RowListModel<DifferenceListRow>::Role> differenceRoles();

} // namespace tessaly
