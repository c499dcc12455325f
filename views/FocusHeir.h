#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QPersistentModelIndex>

#include <algorithm>
#include <initializer_list>

namespace tessaly {

/// What a row is in a list of groups: one that can be ticked or deleted, or the header above such rows or above groups.
enum class RowLevel { Item, Group, Section };

/// Makes the change, with which the row is to go away, and returns the row that the focus then goes on to: the item
/// that followed it in its group, else the one before, else the headers above it; -1 when none of them is left.
/// `levelOf(row)` returns the level of a row.
template <class LevelOf, class Change>
int focusHeirAfter(const QAbstractItemModel &model, int row, LevelOf levelOf, Change change)
{
    QList<QPersistentModelIndex> heirs;
    for (const int neighbour : {row + 1, row - 1}) {
        if (neighbour >= 0 && neighbour < model.rowCount() && levelOf(neighbour) == RowLevel::Item)
            heirs.append(model.index(neighbour, 0));
    }
    RowLevel reached = RowLevel::Item;
    for (int above = row - 1; above >= 0 && reached != RowLevel::Section; --above) {
        if (levelOf(above) > reached) {
            reached = levelOf(above);
            heirs.append(model.index(above, 0));
        }
    }
    change();
    const auto heir = std::ranges::find_if(heirs, &QPersistentModelIndex::isValid);
    return heir == heirs.cend() ? -1 : heir->row();
}

} // namespace tessaly
