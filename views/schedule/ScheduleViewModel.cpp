#include "views/schedule/ScheduleViewModel.h"

#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

ScheduleViewModel::ScheduleViewModel(QObject *parent)
    : QObject(parent), m_days(dayRoles()), m_blocks(blockRoles()), m_monthLines(monthLineRoles()),
      m_dayList(dayListRoles())
{
    m_form = std::make_unique<ScheduleFormModel>();
    m_sheets = std::make_unique<ScheduleSheetModel>();
}

ScheduleViewModel::~ScheduleViewModel() = default;

void ScheduleViewModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    m_focusDate = store->clock().now();
    m_measures = weekMeasures(store->displayStartHour(), store->displayEndHour());
    m_form->setStore(store);
    m_sheets->setStore(store);
    m_index.apply({}, store->schedules());

    connect(store, &PlannerStore::schedulesChanged, this, &ScheduleViewModel::onSchedulesChanged);
    connect(store, &PlannerStore::visibleCalendarIDsChanged, this, &ScheduleViewModel::refresh);
    connect(store, &PlannerStore::displayHoursChanged, this, &ScheduleViewModel::onDisplayHoursChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &ScheduleViewModel::refresh);
    connect(store, &PlannerStore::timeZoneChanged, this, &ScheduleViewModel::onTimeZoneChanged);
    connect(store, &PlannerStore::todayChanged, this, &ScheduleViewModel::refresh);
    emit storeChanged();
    emit measuresChanged();
    refresh();
}

CalendarScope ScheduleViewModel::calendarScope() const
{
    return m_scope == Scope::Week ? CalendarScope::Week : CalendarScope::Month;
}

QDate ScheduleViewModel::focusDay() const
{
    return m_store->calendar().day(m_focusDate);
}

ScheduleSource ScheduleViewModel::source() const
{
    return {m_store->schedules(), m_index, m_store->visibleCalendarIDs(), m_store->calendar(), m_store->isEnglish()};
}

const ScheduleItem *ScheduleViewModel::scheduleWithId(const QUuid &id) const
{
    const QList<ScheduleItem> &schedules = m_store->schedules();
    const auto found = std::ranges::find(schedules, id, &ScheduleItem::id);
    return found == schedules.cend() ? nullptr : &*found;
}

QString ScheduleViewModel::headerTitle() const
{
    if (!m_store)
        return {};
    if (m_scope == Scope::Week)
        return m_store->text(QStringLiteral("本周"), QStringLiteral("This week"));
    return monthTitle(focusDay(), m_store->isEnglish());
}

QString ScheduleViewModel::dayListTitle() const
{
    if (!m_store)
        return {};
    return m_store->dateText(m_focusDate, true) + u' ' +
           m_store->text(QStringLiteral("的安排"), QStringLiteral("schedule"));
}

int ScheduleViewModel::hourCount() const
{
    return m_store ? std::max(m_store->displayEndHour() - m_store->displayStartHour(), 0) : 0;
}

int ScheduleViewModel::focusedPlace() const
{
    return m_store ? static_cast<int>(m_visibleDays.indexOf(focusDay())) : -1;
}

void ScheduleViewModel::setScope(Scope scope)
{
    if (m_scope == scope)
        return;
    m_scope = scope;
    // The hidden body keeps no rows: it is built again when its scope returns.
    m_blocks.setRows({});
    m_monthLines.setRows({});
    refresh();
    emit scopeChanged();
}

void ScheduleViewModel::setDayWidth(double width)
{
    if (m_dayWidth == width)
        return;
    m_dayWidth = width;
    emit dayWidthChanged();
    if (m_store && m_scope == Scope::Week)
        refreshBlocks(viewportSchedules(m_visibleDays, source()));
}

void ScheduleViewModel::setFocusDate(Instant date)
{
    if (m_focusDate == date)
        return;
    m_focusDate = date;
    m_form->moveTo(focusDay());
    refresh();
}

void ScheduleViewModel::moveBy(int step)
{
    setFocusDate(movedFocus(m_focusDate, calendarScope(), step, m_store->calendar()));
}

void ScheduleViewModel::showToday()
{
    setFocusDate(m_store->clock().now());
}

void ScheduleViewModel::focusPlace(int place)
{
    if (!m_visibleDays.isEmpty())
        setFocusDate(m_store->calendar().startOfDay(m_visibleDays.first().addDays(place)));
}

void ScheduleViewModel::selectBlock(int row)
{
    const ScheduleItem *stored = scheduleWithId(m_blocks.rows().value(row).id);
    if (!stored)
        return;
    const ScheduleItem schedule = *stored;
    selectSchedule(schedule.id);
    setFocusDate(schedule.date);
    m_sheets->openNote(schedule, NoteMode::View);
}

void ScheduleViewModel::editListed(int row)
{
    if (const ScheduleItem *schedule = scheduleWithId(m_dayList.rows().value(row).id))
        m_sheets->openNote(*schedule, NoteMode::Edit);
}

void ScheduleViewModel::deleteListed(int row)
{
    if (const ScheduleItem *stored = scheduleWithId(m_dayList.rows().value(row).id)) {
        const ScheduleItem schedule = *stored;
        m_store->deleteSchedule(schedule);
    }
}

void ScheduleViewModel::tapTime(int place, double y)
{
    if (place < 0 || place >= m_visibleDays.size())
        return;
    selectSchedule({});
    m_sheets->closeNote();
    m_form->moveTo(m_visibleDays.at(place), tappedMinute(y, m_measures));
    focusPlace(place);
}

bool ScheduleViewModel::addSchedule()
{
    const QString title = m_form->title().trimmed();
    if (!m_form->add())
        return false;
    m_addedDate = m_form->times().start;
    if (!m_visibleDays.contains(m_store->calendar().day(m_addedDate)))
        emit addedElsewhere(m_store->text(QStringLiteral("“%1”已添加到%2。"), QStringLiteral("Added “%1” to %2."))
                                .arg(title, m_store->dateText(m_addedDate, true)));
    return true;
}

void ScheduleViewModel::selectSchedule(const QUuid &id)
{
    if (m_selectedID == id)
        return;
    m_selectedID = id;
    refresh();
}

int ScheduleViewModel::neighbourBlock(int row, int dayStep, int timeStep) const
{
    const QList<BlockRow> &blocks = m_blocks.rows();
    if (row < 0 || row >= blocks.size())
        return -1;
    return static_cast<int>(dayStep != 0 ? neighbourDay(blocks, row, dayStep) : neighbourInDay(blocks, row, timeStep));
}

void ScheduleViewModel::onSchedulesChanged(const RowsChange &change)
{
    m_index.apply(change, m_store->schedules());
    refresh();
}

void ScheduleViewModel::onTimeZoneChanged()
{
    emit m_form->fieldsChanged();
    refresh();
}

void ScheduleViewModel::onDisplayHoursChanged()
{
    m_measures = weekMeasures(m_store->displayStartHour(), m_store->displayEndHour());
    emit measuresChanged();
    refresh();
}

void ScheduleViewModel::refresh()
{
    m_visibleDays = visibleDays(calendarScope(), focusDay(), m_store->calendar());
    const QList<QList<DayEvent>> events = viewportSchedules(m_visibleDays, source());
    m_days.setRows(
        dayRows(m_visibleDays, events, {m_store->today(), focusDay(), calendarScope()}, m_store->isEnglish()));
    if (m_scope == Scope::Week)
        refreshBlocks(events);
    else
        m_monthLines.setRows(monthLineRows(m_visibleDays, events, source(), focusDay()));
    m_dayList.setRows(dayListRows(focusDay(), source()));
    emit titlesChanged();
}

void ScheduleViewModel::refreshBlocks(const QList<QList<DayEvent>> &events)
{
    m_blocks.setRows(blockRows(m_visibleDays, events, source(), m_measures, m_dayWidth, m_selectedID));
}

} // namespace tessaly
