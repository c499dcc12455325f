#include "views/schedule/ScheduleViewModel.h"

#include "model/DayPlan.h"
#include "platform/Clock.h"

#include <algorithm>
#include <utility>

namespace tessaly {

ScheduleViewModel::ScheduleViewModel(QObject *parent)
    : QObject(parent), m_week{.days = DayModel(dayRoles()), .contents = BlockModel(blockRoles())},
      m_month{.days = DayModel(dayRoles()), .contents = MonthLineModel(monthLineRoles())}, m_dayList(dayListRoles())
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
    m_currentTime.setStore(store);
    m_drag.setStore(store);
    m_monthDrag.setStore(store);
    m_margins.drag()->setStore(store);
    m_doneItems = completedItems(store->data());
    m_sheets->setStore(store);
    m_index.apply({}, store->schedules());
    m_linkColors = linkColors(store->calendarFeeds());

    connect(m_form.get(), &ScheduleFormModel::fieldsChanged, this, &ScheduleViewModel::formFrameChanged);
    connect(&m_drag, &WeekDragModel::refused, this, &ScheduleViewModel::refused);
    connect(&m_drag, &WeekDragModel::spanSelected, this, &ScheduleViewModel::chooseTimes);
    connect(&m_monthDrag, &MonthDragModel::refused, this, &ScheduleViewModel::refused);
    connect(&m_monthDrag, &MonthDragModel::moved, this,
            [this](const FormTimes &times) { announceDrag(WeekDragKind::Move, times); });
    connect(&m_margins, &WeekMargins::opened, this, &ScheduleViewModel::openSchedule);
    connect(&m_margins, &WeekMargins::shifted, this, &ScheduleViewModel::shiftDays);
    connect(m_margins.drag(), &BarDragModel::refused, this, &ScheduleViewModel::refused);
    connect(m_margins.drag(), &BarDragModel::dropped, this, &ScheduleViewModel::announceDrag);
    connect(&m_margins, &WeekMargins::deleted, this, &ScheduleViewModel::deleteSchedule);
    connect(store->displayChoices(), &DisplayChoices::changed, this, &ScheduleViewModel::refresh);
    connect(store, &PlannerStore::schedulesChanged, this, &ScheduleViewModel::onSchedulesChanged);
    connect(store, &PlannerStore::remindersChanged, this, &ScheduleViewModel::onItemsChanged);
    connect(store, &PlannerStore::goalsChanged, this, &ScheduleViewModel::onItemsChanged);
    connect(store, &PlannerStore::visibleCalendarIDsChanged, this, &ScheduleViewModel::refresh);
    connect(store, &PlannerStore::calendarFeedsChanged, this, &ScheduleViewModel::onCalendarFeedsChanged);
    connect(store, &PlannerStore::displayHoursChanged, this, &ScheduleViewModel::onDisplayHoursChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &ScheduleViewModel::refresh);
    connect(store, &PlannerStore::timeZoneChanged, this, &ScheduleViewModel::onTimeZoneChanged);
    connect(store, &PlannerStore::todayChanged, this, &ScheduleViewModel::refresh);
    const auto show = [this](const UndoStep &step) { showChanged(step.change); };
    connect(&store->history(), &UndoHistory::undone, this, show);
    connect(&store->history(), &UndoHistory::redone, this, show);
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
    return {m_store->schedules(), m_index,      m_store->visibleCalendarIDs(), m_store->calendar(),
            m_store->isEnglish(), m_linkColors, m_store->weekOptions(),        m_doneItems};
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

QString ScheduleViewModel::weekRange() const
{
    if (m_scope == Scope::Month || m_visibleDays.isEmpty())
        return {};
    const bool isEnglish = m_store->isEnglish();
    const QString range = dayRangeText(m_visibleDays.first(), m_visibleDays.last(), isEnglish);
    return m_store->weekOptions().showsWeekNumbers
               ? range + QStringLiteral(" · ") + weekNumberText(m_visibleDays.first(), isEnglish)
               : range;
}

QStringList ScheduleViewModel::weekNumbers() const
{
    QStringList numbers;
    if (m_store && m_store->weekOptions().showsWeekNumbers) {
        for (qsizetype place = 0; place < m_month.filledFor.size(); place += 7)
            numbers.append(QString::number(weekNumber(m_month.filledFor.at(place))));
    }
    return numbers;
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

QStringList ScheduleViewModel::weekdayNames() const
{
    const DayModel &days = m_scope == Scope::Week ? m_week.days : m_month.days;
    QStringList names;
    for (const DayRow &row : days.rows().first(std::min<qsizetype>(days.rows().size(), 7)))
        names.append(row.weekday);
    return names;
}

void ScheduleViewModel::setScope(Scope scope)
{
    if (m_scope == scope)
        return;
    m_scope = scope;
    refresh();
    emit scopeChanged();
}

void ScheduleViewModel::setDayWidth(double width)
{
    if (m_dayWidth == width)
        return;
    m_dayWidth = width;
    if (m_store && m_scope == Scope::Week)
        refreshBlocks(viewportSchedules(m_visibleDays, source()));
    emit dayWidthChanged();
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
    openSchedule(m_week.contents.rows().value(row).id);
}

void ScheduleViewModel::openSchedule(const QUuid &id)
{
    const ScheduleItem *stored = scheduleWithId(id);
    if (!stored)
        return;
    const ScheduleItem schedule = *stored;
    selectSchedule(schedule.id);
    // One that began earlier does not take the week away.
    if (isShown({schedule.date, schedule.date}))
        setFocusDate(schedule.date);
    m_sheets->openNote(schedule, NoteMode::View);
}

bool ScheduleViewModel::isShown(const FormTimes &times) const
{
    const auto [first, last] = daysOf({.start = times.start, .end = times.end}, m_store->calendar());
    return !m_visibleDays.isEmpty() && first <= m_visibleDays.last() && last >= m_visibleDays.first();
}

void ScheduleViewModel::openMonthLine(int row)
{
    openNote(m_month.contents.rows().value(row).id, NoteMode::View);
}

void ScheduleViewModel::openListed(int row)
{
    openNote(m_dayList.rows().value(row).id, NoteMode::View);
}

void ScheduleViewModel::editListed(int row)
{
    openNote(m_dayList.rows().value(row).id, NoteMode::Edit);
}

void ScheduleViewModel::openNote(const QUuid &id, NoteMode mode)
{
    if (const ScheduleItem *schedule = scheduleWithId(id))
        m_sheets->openNote(*schedule, mode);
}

int ScheduleViewModel::reveal(const QString &scheduleId)
{
    const QUuid id(scheduleId);
    if (const ScheduleItem *schedule = scheduleWithId(id))
        setFocusDate(Instant(schedule->date));
    const int place = static_cast<int>(m_listed.indexOf(id));
    if (place >= 0)
        keepListed(place);
    const int block = blockOf(id);
    if (m_scope == Scope::Week && block >= 0)
        emit blockRestored(block);
    return place;
}

void ScheduleViewModel::tapTime(int place, double y)
{
    if (place < 0 || place >= m_visibleDays.size())
        return;
    const int tapped = tappedMinute(y, m_measures);
    const int minute = m_store->weekOptions().roundsTaps ? roundedMinute(tapped) : tapped;
    chooseTimes(formTappedAt(m_visibleDays.at(place), minute, m_form->times(), m_store->calendar()));
}

void ScheduleViewModel::chooseTimes(const FormTimes &times)
{
    selectSchedule({});
    m_sheets->closeNote();
    m_form->setTimes(times);
    const UserCalendar &calendar = m_store->calendar();
    setFocusDate(calendar.startOfDay(calendar.day(times.start)));
    emit timeChosen();
}

QRectF ScheduleViewModel::formFrame() const
{
    if (!m_store || m_scope != Scope::Week)
        return {};
    const FormTimes &times = m_form->times();
    return fullFrame({times.start, leastEnd(times)}, m_visibleDays, m_measures, m_dayWidth, m_store->calendar());
}

QString ScheduleViewModel::formTimeText() const
{
    if (!m_store)
        return {};
    const QRectF frame = formFrame();
    const FormTimes &times = m_form->times();
    const bool isNarrow = frame.width() < 88;
    return timeRangeText(times.start, isNarrow ? std::nullopt : std::optional(leastEnd(times)), m_store->calendar());
}

bool ScheduleViewModel::addSchedule()
{
    const QString title = m_form->title().trimmed();
    if (!m_form->add())
        return false;
    const FormTimes &times = m_form->times();
    m_addedDate = times.start;
    m_addedID = m_store->schedules().last().id;
    if (!m_visibleDays.contains(m_store->calendar().day(m_addedDate)))
        emit addedElsewhere(m_store->text(QStringLiteral("“%1”已添加到%2。"), QStringLiteral("Added “%1” to %2."))
                                .arg(title, m_store->dateText(m_addedDate, true)));
    else if (times.end <= times.start)
        emit lengthened(m_store
                            ->text(QStringLiteral("“%1”的结束不晚于开始，改为 %2 结束。"),
                                   QStringLiteral("The end of “%1” was not after its start. It ends at %2 now."))
                            .arg(title, timeRangeText(leastEnd(times), std::nullopt, m_store->calendar())));
    return true;
}

void ScheduleViewModel::selectSchedule(const QUuid &id)
{
    if (m_selectedID == id)
        return;
    m_selectedID = id;
    refresh();
}

void ScheduleViewModel::onSchedulesChanged(const RowsChange &change)
{
    m_index.apply(change, m_store->schedules());
    refresh();
}

void ScheduleViewModel::onItemsChanged()
{
    const QSet<QUuid> items = completedItems(m_store->data());
    if (std::exchange(m_doneItems, items) != items)
        refresh();
}

void ScheduleViewModel::onTimeZoneChanged()
{
    emit m_form->fieldsChanged();
    refresh();
}

void ScheduleViewModel::showChanged(const StateChange &change)
{
    QSet<QUuid> present;
    for (const RecordChange<ScheduleItem> &each : change.schedules) {
        if (each.after)
            present.insert(each.id);
    }
    const auto report = [&](const auto &rows, auto restored) {
        for (int row = 0; row < rows.size(); ++row) {
            if (present.contains(rows.at(row).id))
                emit(this->*restored)(row);
        }
    };
    report(m_week.contents.rows(), &ScheduleViewModel::blockRestored);
    report(m_dayList.rows(), &ScheduleViewModel::listedRestored);
}

void ScheduleViewModel::onDisplayHoursChanged()
{
    m_measures = weekMeasures(m_store->displayStartHour(), m_store->displayEndHour());
    emit measuresChanged();
    refresh();
}

void ScheduleViewModel::onCalendarFeedsChanged()
{
    LinkColors colors = linkColors(m_store->calendarFeeds());
    if (colors == m_linkColors)
        return;
    m_linkColors = std::move(colors);
    refresh();
}

void ScheduleViewModel::showListed(int first, int last)
{
    if (m_listWindow.firstInView == first && m_listWindow.lastInView == last)
        return;
    const QList<int> before = m_listWindow.places(listedCount());
    m_listWindow.firstInView = first;
    m_listWindow.lastInView = last;
    if (m_store && m_listWindow.places(listedCount()) != before)
        refreshDayList();
}

int ScheduleViewModel::keepListed(int place)
{
    if (std::exchange(m_listWindow.kept, place) != place)
        refreshDayList();
    return static_cast<int>(m_listWindow.places(listedCount()).indexOf(place));
}

} // namespace tessaly
