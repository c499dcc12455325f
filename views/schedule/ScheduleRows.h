#pragma once

#include "views/RowListModel.h"

#include <QDate>
#include <QRect>
#include <QString>
#include <QUuid>

#include <tuple>

namespace tessaly {

/// A day of the week header or of the month grid. It keeps its place whatever day it shows.
struct DayRow
{
    int place = 0;
    QDate day = {};
    QString weekday = {};
    int number = 0;
    bool isToday = false;
    bool isFocused = false;
    /// Belongs to a month before or after the focus day's.
    bool isOutside = false;
    /// The day in the calendar of China, when that is shown: a lunar day, or something special.
    QString note = {};
    /// The same in a few letters.
    QString narrowNote = {};
    bool isNoteSpecial = false;
    /// As DayOff.
    int dayOff = 0;
    /// Full date, note and number of schedules.
    QString spokenName = {};

    [[nodiscard]] int key() const { return place; }
    bool operator==(const DayRow &) const = default;
};

/// A block of the week timeline.
struct BlockRow
{
    QUuid id = {};
    int dayIndex = 0;
    /// On whole points, from the top left corner of the first day's time area; day columns are one point apart.
    QRect frame = {};
    int startMinute = 0;
    /// Whether it is a later or an earlier part of a schedule over midnight.
    bool beginsEarlier = false;
    bool endsLater = false;
    QString title = {};
    /// Start and end, the start alone or nothing, as there is room. The end is one hour on when the schedule has none.
    QString timeShown = {};
    /// Title, start and end, and tag, a line for each.
    QString explanation = {};
    /// Whether there is more to tell than title and time shown.
    bool hidesDetail = false;
    /// Palette name or "#RRGGBB".
    QString colorKey = {};
    bool isSelected = false;
    /// Day, title, time, tag.
    QString spokenName = {};

    [[nodiscard]] std::pair<QUuid, int> key() const { return {id, beginsEarlier ? dayIndex : -1}; }
    bool operator==(const BlockRow &) const = default;
};

/// One of the at most two lines in a cell of the month grid, or beneath them how many more there are.
struct MonthLineRow
{
    QUuid id = {};
    /// Less than 0 for no cell.
    int cellIndex = -1;
    /// 0 or 1; 2 for how many more, whose text is the title and whose id that of the first of them.
    int slot = 0;
    /// Whether it began in an earlier cell.
    bool isContinued = false;
    QString title = {};
    QString startText = {};
    QString colorKey = {};
    bool isOutside = false;
    QString spokenName = {};

    [[nodiscard]] std::pair<QUuid, int> key() const { return {id, isContinued ? cellIndex : -1}; }
    bool operator==(const MonthLineRow &) const = default;
};

/// A schedule of the focus day's list.
struct DayListRow
{
    QUuid id = {};
    /// Among all schedules of the day.
    int place = -1;
    QString title = {};
    /// Whether the schedule gave time to something that is complete.
    bool isDone = false;
    QString timeRange = {};
    QString tag = {};
    QString colorKey = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const DayListRow &) const = default;
};

using DayModel = RowListModel<DayRow>;
using BlockModel = RowListModel<BlockRow>;
using MonthLineModel = RowListModel<MonthLineRow>;
using DayListModel = RowListModel<DayListRow>;

[[nodiscard]] QList<DayModel::Role> dayRoles();
[[nodiscard]] QList<BlockModel::Role> blockRoles();
[[nodiscard]] QList<MonthLineModel::Role> monthLineRoles();
[[nodiscard]] QList<DayListModel::Role> dayListRoles();

} // namespace tessaly
