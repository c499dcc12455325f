#pragma once

#include "views/RowListModel.h"
#include "views/schedule/DaySchedules.h"

#include <QRect>
#include <QUuid>

namespace tessaly {

/// A schedule in the row above the hours.
struct AllDayBarRow
{
    QUuid id = {};
    /// From the top left corner of the first day's part of the row.
    QRect frame = {};
    int firstPlace = 0;
    int line = 0;
    bool beginsEarlier = false;
    bool endsLater = false;
    QString title = {};
    QString colorKey = {};
    bool isSelected = false;
    /// First and last day, title, tag.
    QString spokenName = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const AllDayBarRow &) const = default;
};

using AllDayBarModel = RowListModel<AllDayBarRow>;

[[nodiscard]] QList<AllDayBarModel::Role> barRoles();
[[nodiscard]] QList<AllDayBarRow> barRows(const AllDayRow &row, const ScheduleSource &source, double dayWidth,
                                          const QUuid &selectedID);
/// As AllDayBarRow::frame.
[[nodiscard]] QRect barFrame(const AllDaySpan &span, double dayWidth);
/// Start and end in words. With an all-day row, of what stands there the days, unless it is one alone, and of the rest
/// the day of an end that is not on the given one.
[[nodiscard]] QString timesText(const ScheduleItem &schedule, const ScheduleSource &source, QDate day);
/// The first and the last day in words.
[[nodiscard]] QString daysText(const FormTimes &times, const UserCalendar &calendar, bool isEnglish);

} // namespace tessaly
