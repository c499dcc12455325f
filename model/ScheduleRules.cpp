#include "model/ScheduleRules.h"

#include "model/AppLanguage.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace tessaly {

namespace {

/// The Monday that stands for the day's week: of the user's week where that holds Monday to Friday in one piece, else
/// of the week of ISO 8601.
QDate workWeekStart(QDate day, const UserCalendar &calendar)
{
    const Qt::DayOfWeek first = calendar.firstWeekday();
    if (first == Qt::Saturday || first == Qt::Sunday)
        return calendar.weekStart(day).addDays((Qt::Monday - first + 7) % 7);
    return day.addDays(Qt::Monday - day.dayOfWeek());
}

} // namespace

QList<QDate> visibleDays(CalendarScope scope, QDate focusDay, const UserCalendar &calendar, const WeekOptions &options)
{
    const bool isWeek = scope == CalendarScope::Week;
    const bool isWorkWeek = isWeek && options.hidesWeekend;
    const QDate start = isWorkWeek ? workWeekStart(focusDay, calendar)
                                   : calendar.weekStart(isWeek ? focusDay : UserCalendar::monthStart(focusDay));
    const int count = isWorkWeek ? 5 : isWeek ? 7 : 42;
    QList<QDate> days;
    days.reserve(count);
    for (int index = 0; index < count; ++index) {
        const QDate day = start.addDays(index);
        if (day.isValid())
            days.append(day);
    }
    return days;
}

QDate shownDayOn(QDate day, int days, const WeekOptions &options)
{
    const int step = days < 0 ? -1 : 1;
    for (int left = std::abs(days); left > 0; --left) {
        day = day.addDays(step);
        while (options.hidesWeekend && day.dayOfWeek() > Qt::Friday)
            day = day.addDays(step);
    }
    return day;
}

int weekNumber(QDate firstDay)
{
    return firstDay.addDays((Qt::Thursday - firstDay.dayOfWeek() + 7) % 7).weekNumber();
}

QString weekNumberText(QDate firstDay, bool isEnglish)
{
    return (isEnglish ? QStringLiteral("Week %1") : QStringLiteral("第 %1 周")).arg(weekNumber(firstDay));
}

std::optional<InstantRange> viewport(const QList<QDate> &days, const UserCalendar &calendar)
{
    if (days.isEmpty())
        return std::nullopt;
    return InstantRange{calendar.startOfDay(days.first()), calendar.startOfDay(days.last().addDays(1))};
}

bool isDisplayed(const ScheduleItem &schedule, const QSet<QString> &visibleCalendarIDs)
{
    return !schedule.calendarIdentifier || visibleCalendarIDs.contains(*schedule.calendarIdentifier);
}

bool isInViewport(const ScheduleItem &schedule, const InstantRange &range)
{
    return schedule.date < range.to && schedule.endDate.value_or(schedule.date) >= range.from;
}

Instant movedFocus(Instant focus, CalendarScope scope, int by, const UserCalendar &calendar)
{
    const std::optional<Instant> moved =
        scope == CalendarScope::Month ? calendar.addingMonths(focus, by) : calendar.addingDays(focus, 7LL * by);
    return moved.value_or(focus);
}

QString monthTitle(QDate day, bool isEnglish)
{
    return interfaceLocale(isEnglish).toString(day, isEnglish ? u"MMMM yyyy" : u"yyyy年M月");
}

QString shortDate(QDate day, bool isEnglish)
{
    return interfaceLocale(isEnglish).toString(day, isEnglish ? u"MMM d" : u"M月d日");
}

QString dayRangeText(QDate first, QDate last, bool isEnglish)
{
    const QLocale locale = interfaceLocale(isEnglish);
    const bool isSameYear = first.year() == last.year();
    const bool isSameMonth = isSameYear && first.month() == last.month();
    if (isEnglish)
        return locale.toString(first, isSameYear ? u"MMM d" : u"MMM d, yyyy") + QStringLiteral(" – ") +
               locale.toString(last, isSameMonth ? u"d, yyyy" : u"MMM d, yyyy");
    return locale.toString(first, u"yyyy年M月d日") + QStringLiteral(" – ") +
           locale.toString(last, isSameMonth  ? u"d日"
                                 : isSameYear ? u"M月d日"
                                              : u"yyyy年M月d日");
}

QString timeRangeText(Instant start, const std::optional<Instant> &end, const UserCalendar &calendar)
{
    const auto clockText = [&calendar](Instant instant) {
        const auto minute = static_cast<char16_t>(calendar.minuteOfDay(instant));
        const std::array<QChar, 5> text = {QChar(u'0' + minute / 600), QChar(u'0' + minute / 60 % 10), QChar(u':'),
                                           QChar(u'0' + minute % 60 / 10), QChar(u'0' + minute % 10)};
        return QString(text.data(), text.size());
    };
    return end ? clockText(start) + QStringLiteral(" – ") + clockText(*end) : clockText(start);
}

FormTimes formMovedTo(QDate day, const FormTimes &form, const UserCalendar &calendar)
{
    return formTappedAt(day, calendar.minuteOfDay(form.start), form, calendar);
}

FormTimes formTappedAt(QDate day, int minuteOfDay, const FormTimes &form, const UserCalendar &calendar)
{
    const double duration = std::max(form.end.seconds - form.start.seconds, leastScheduleSeconds);
    const Instant start = calendar.instant(day, QTime(minuteOfDay / 60, minuteOfDay % 60));
    return {start, start.plus(duration)};
}

Instant leastEnd(const FormTimes &form)
{
    return std::max(form.end, form.start.plus(leastScheduleSeconds));
}

std::optional<QString> targetCalendar(const QList<CalendarOption> &choices, const QString &chosen)
{
    const auto found = std::ranges::find(choices, chosen, &CalendarOption::id);
    if (!chosen.isEmpty() && found != choices.cend())
        return found->id;
    return choices.isEmpty() ? std::nullopt : std::optional(choices.first().id);
}

std::optional<ScheduleItem> newSchedule(const ScheduleForm &form)
{
    const QString title = form.title.trimmed();
    if (title.isEmpty())
        return std::nullopt;
    ScheduleItem schedule;
    schedule.title = title;
    schedule.date = form.times.start;
    schedule.endDate = leastEnd(form.times);
    if (!form.tag.isEmpty())
        schedule.tag = form.tag;
    schedule.customColorHex = form.colorHex;
    schedule.calendarExportRequested = form.isExportRequested;
    return schedule;
}

} // namespace tessaly
