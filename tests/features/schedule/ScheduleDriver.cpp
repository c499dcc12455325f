#include "tests/features/schedule/ScheduleDriver.h"

#include <QTest>

#include <algorithm>
#include <stdexcept>

namespace tessaly {

ScheduleDriver::ScheduleDriver(Qt::DayOfWeek firstWeekday)
{
    calendar = UserCalendar(calendar.zone(), firstWeekday, QLocale::c());
    clock.setNow(at({2026, 9, 9}, {10, 20, 30}));
    store = std::make_unique<PlannerStore>(ports());
}

ScheduleItem ScheduleDriver::has(const QString &title, QDate day, QTime start, QTime end, const QString &tag)
{
    ScheduleItem item;
    item.title = title;
    item.date = at(day, start);
    item.endDate = at(day, end);
    if (!tag.isEmpty())
        item.tag = tag;
    store->addSchedule(item);
    return item;
}

void ScheduleDriver::hasOfCalendar(const QString &identifier, const QString &title, QDate day, QTime start)
{
    ScheduleItem item;
    item.title = title;
    item.date = at(day, start);
    item.calendarIdentifier = identifier;
    store->addSchedule(item);
}

void ScheduleDriver::hasCalendars(const QList<EventCalendar> &calendars)
{
    for (const EventCalendar &each : calendars)
        eventStore.addCalendar(each);
    store->calendarSync()->requestCalendarAccessAndLoad();
    QTRY_COMPARE(store->calendarSync()->availableCalendars().size(), calendars.size());
}

void ScheduleDriver::opensScreen()
{
    screen = std::make_unique<ScheduleViewModel>();
    screen->setStore(store.get());
    screen->setDayWidth(100);
}

QStringList ScheduleDriver::blocks() const
{
    QStringList texts;
    for (const BlockRow &row : screen->blocks()->rows())
        texts.append(QStringLiteral("%1 %2").arg(row.dayIndex).arg(row.title));
    return texts;
}

QStringList ScheduleDriver::monthLines() const
{
    QStringList texts;
    for (const MonthLineRow &row : screen->monthLines()->rows())
        texts.append(QStringLiteral("%1.%2 %3").arg(row.cellIndex).arg(row.slot).arg(row.title));
    return texts;
}

QStringList ScheduleDriver::listed() const
{
    QStringList texts;
    for (const DayListRow &row : screen->dayList()->rows())
        texts.append(row.title);
    return texts;
}

QDate ScheduleDriver::focusDay() const
{
    return calendar.day(screen->focusDate());
}

int ScheduleDriver::todayPlace() const
{
    const QList<DayRow> &rows = screen->days()->rows();
    const auto found = std::ranges::find(rows, true, &DayRow::isToday);
    return found == rows.cend() ? -1 : static_cast<int>(found - rows.cbegin());
}

const ScheduleItem &ScheduleDriver::stored(const QString &title) const
{
    const QList<ScheduleItem> &schedules = store->schedules();
    const auto found = std::ranges::find(schedules, title, &ScheduleItem::title);
    if (found == schedules.cend())
        throw std::out_of_range("no schedule of this title");
    return *found;
}

} // namespace tessaly
