#pragma once

#include "model/CalendarOption.h"
#include "model/ScheduleItem.h"
#include "model/UserCalendar.h"
#include "model/WeekOptions.h"

#include <QDate>
#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace tessaly {

/// What the schedule screen shows around its focus date.
enum class CalendarScope { Week, Month };

/// The half-open span [from, to).
struct InstantRange
{
    Instant from = {};
    Instant to = {};
};

/// The 7 days of the focus day's week, or its Monday to Friday when the weekend is hidden; or the 42 days of the six
/// weeks that begin on the first weekday on or before the 1st of the focus day's month. Always consecutive.
[[nodiscard]] QList<QDate> visibleDays(CalendarScope scope, QDate focusDay, const UserCalendar &calendar,
                                       const WeekOptions &options = {});
/// The day that is so many shown days on in the week: hidden weekends do not count.
[[nodiscard]] QDate shownDayOn(QDate day, int days, const WeekOptions &options);
/// The ISO 8601 number of the week in which most of the seven days from this one are.
[[nodiscard]] int weekNumber(QDate firstDay);
/// "Week 48" or "第 48 周".
[[nodiscard]] QString weekNumberText(QDate firstDay, bool isEnglish);
/// From the start of the first day to the end of the last; nothing without days.
[[nodiscard]] std::optional<InstantRange> viewport(const QList<QDate> &days, const UserCalendar &calendar);

/// Whether the schedule belongs to no calendar or to a visible one.
[[nodiscard]] bool isDisplayed(const ScheduleItem &schedule, const QSet<QString> &visibleCalendarIDs);
/// Whether the schedule starts before the range ends and ends in it or later. Without an end it ends at its start.
[[nodiscard]] bool isInViewport(const ScheduleItem &schedule, const InstantRange &range);

/// The focus instant so many weeks or months on; unchanged when the calendar has no such date.
[[nodiscard]] Instant movedFocus(Instant focus, CalendarScope scope, int by, const UserCalendar &calendar);
/// "September 2026" or "2026年9月".
[[nodiscard]] QString monthTitle(QDate day, bool isEnglish);
/// "Nov 25" or "11月25日".
[[nodiscard]] QString shortDate(QDate day, bool isEnglish);
/// "Nov 22 – 28, 2026" or "2026年11月22日 – 28日"; the second month and year only where they differ.
[[nodiscard]] QString dayRangeText(QDate first, QDate last, bool isEnglish);
/// "09:00 – 10:40", or the start alone without an end.
[[nodiscard]] QString timeRangeText(Instant start, const std::optional<Instant> &end, const UserCalendar &calendar);

/// Start and end in a form.
struct FormTimes
{
    Instant start = {};
    Instant end = {};

    bool operator==(const FormTimes &) const = default;
};

/// The form moved to another day: same hour and minute, same duration but at least 15 minutes.
[[nodiscard]] FormTimes formMovedTo(QDate day, const FormTimes &form, const UserCalendar &calendar);
/// The form moved to a minute of a day (0 to 1439), with its duration but at least 15 minutes.
[[nodiscard]] FormTimes formTappedAt(QDate day, int minuteOfDay, const FormTimes &form, const UserCalendar &calendar);
/// The end, or 15 minutes after the start when that is later.
[[nodiscard]] Instant leastEnd(const FormTimes &form);

/// Identifier of the chosen calendar if it is among the choices, else of the first choice.
[[nodiscard]] std::optional<QString> targetCalendar(const QList<CalendarOption> &choices, const QString &chosen);

/// What the add form holds.
struct ScheduleForm
{
    QString title = {};
    QString tag = {};
    FormTimes times = {};
    /// "#RRGGBB"
    QString colorHex = {};
    bool isExportRequested = false;
};

/// A new schedule from the form; nothing when the title is blank.
[[nodiscard]] std::optional<ScheduleItem> newSchedule(const ScheduleForm &form);

} // namespace tessaly
