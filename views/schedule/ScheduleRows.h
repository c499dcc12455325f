#pragma once

#include "views/RowListModel.h"

#include <QDate>
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
    /// Full date and number of schedules.
    QString spokenName = {};

    [[nodiscard]] int key() const { return place; }
    bool operator==(const DayRow &) const = default;
};

/// A block of the week timeline; the frame is inside the day column's time area, in points.
struct BlockRow
{
    QUuid id = {};
    int dayIndex = 0;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    int startMinute = 0;
    QString title = {};
    QString startText = {};
    /// Start and end; the end is one hour on when the schedule has none.
    QString timeRange = {};
    QString tag = {};
    /// Palette name or "#RRGGBB".
    QString colorKey = {};
    bool isSelected = false;
    /// Day, title, time, tag.
    QString spokenName = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const BlockRow &) const = default;
};

/// One of the at most two lines in a cell of the month grid.
struct MonthLineRow
{
    QUuid id = {};
    int cellIndex = 0;
    /// 0 or 1
    int slot = 0;
    QString title = {};
    QString startText = {};
    QString colorKey = {};
    bool isOutside = false;
    QString spokenName = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const MonthLineRow &) const = default;
};

/// A schedule of the focus day's list.
struct DayListRow
{
    QUuid id = {};
    QString title = {};
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
