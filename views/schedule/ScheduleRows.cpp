#include "views/schedule/ScheduleRows.h"

namespace tessaly {

QList<DayModel::Role> dayRoles()
{
    return {
        {"weekday", [](const DayRow &row) -> QVariant { return row.weekday; }},
        {"number", [](const DayRow &row) -> QVariant { return row.number; }},
        {"isToday", [](const DayRow &row) -> QVariant { return row.isToday; }},
        {"isFocused", [](const DayRow &row) -> QVariant { return row.isFocused; }},
        {"isOutside", [](const DayRow &row) -> QVariant { return row.isOutside; }},
        {"note", [](const DayRow &row) -> QVariant { return row.note; }},
        {"narrowNote", [](const DayRow &row) -> QVariant { return row.narrowNote; }},
        {"isNoteSpecial", [](const DayRow &row) -> QVariant { return row.isNoteSpecial; }},
        {"dayOff", [](const DayRow &row) -> QVariant { return row.dayOff; }},
        {"spokenName", [](const DayRow &row) -> QVariant { return row.spokenName; }},
    };
}

QList<BlockModel::Role> blockRoles()
{
    return {
        {"frame", [](const BlockRow &row) -> QVariant { return QRectF(row.frame); }},
        {"title", [](const BlockRow &row) -> QVariant { return row.title; }},
        {"timeShown", [](const BlockRow &row) -> QVariant { return row.timeShown; }},
        {"explanation", [](const BlockRow &row) -> QVariant { return row.explanation; }},
        {"hidesDetail", [](const BlockRow &row) -> QVariant { return row.hidesDetail; }},
        {"colorKey", [](const BlockRow &row) -> QVariant { return row.colorKey; }},
        {"isSelected", [](const BlockRow &row) -> QVariant { return row.isSelected; }},
        {"spokenName", [](const BlockRow &row) -> QVariant { return row.spokenName; }},
    };
}

QList<MonthLineModel::Role> monthLineRoles()
{
    return {
        {"cellIndex", [](const MonthLineRow &row) -> QVariant { return row.cellIndex; }},
        {"slot", [](const MonthLineRow &row) -> QVariant { return row.slot; }},
        {"title", [](const MonthLineRow &row) -> QVariant { return row.title; }},
        {"startText", [](const MonthLineRow &row) -> QVariant { return row.startText; }},
        {"colorKey", [](const MonthLineRow &row) -> QVariant { return row.colorKey; }},
        {"isOutside", [](const MonthLineRow &row) -> QVariant { return row.isOutside; }},
        {"spokenName", [](const MonthLineRow &row) -> QVariant { return row.spokenName; }},
    };
}

QList<DayListModel::Role> dayListRoles()
{
    return {
        {"place", [](const DayListRow &row) -> QVariant { return row.place; }},
        {"title", [](const DayListRow &row) -> QVariant { return row.title; }},
        {"isDone", [](const DayListRow &row) -> QVariant { return row.isDone; }},
        {"timeRange", [](const DayListRow &row) -> QVariant { return row.timeRange; }},
        {"tag", [](const DayListRow &row) -> QVariant { return row.tag; }},
        {"colorKey", [](const DayListRow &row) -> QVariant { return row.colorKey; }},
    };
}

} // namespace tessaly
