#include "views/plan/PlanModel.h"

#include "model/WeekDrag.h"
#include "platform/Clock.h"
#include "store/PlannedItems.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

using namespace Qt::StringLiterals;

PlanModel::PlanModel(QObject *parent) : QObject(parent), m_rows(planRoles())
{
}

PlanModel::~PlanModel() = default;

void PlanModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    if (!m_day.isValid())
        m_day = store->today();
    m_labels = std::make_unique<DateLabels>(store->calendar());
    m_nextChange = store->clock().makeAlarm([this] { refresh(); });
    connect(store, &PlannerStore::schedulesChanged, this, &PlanModel::refresh);
    connect(store, &PlannerStore::remindersChanged, this, &PlanModel::refreshRows);
    connect(store, &PlannerStore::goalsChanged, this, &PlanModel::refreshRows);
    connect(store, &PlannerStore::visibleCalendarIDsChanged, this, &PlanModel::refreshLoad);
    connect(store, &PlannerStore::displayHoursChanged, this, &PlanModel::refreshLoad);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &PlanModel::refresh);
    connect(store, &PlannerStore::todayChanged, this, &PlanModel::refresh);
    connect(store, &PlannerStore::timeZoneChanged, this, [this] {
        m_labels = std::make_unique<DateLabels>(m_store->calendar());
        refresh();
    });
    emit storeChanged();
    refresh();
}

void PlanModel::setDay(const QString &day)
{
    const QDate date = QDate::fromString(day, Qt::ISODate);
    if (!date.isValid() || std::exchange(m_day, date) == date)
        return;
    refreshLoad();
}

bool PlanModel::isAdding() const
{
    return !std::isnan(m_addedStart);
}

void PlanModel::setAddedStart(double start)
{
    const bool wasAdding = isAdding();
    if (wasAdding == !std::isnan(start) && (!wasAdding || m_addedStart == start))
        return;
    m_addedStart = start;
    refreshLoad();
}

QDate PlanModel::shownDay() const
{
    return isAdding() ? m_store->calendar().day({m_addedStart}) : m_day;
}

DayHours PlanModel::hours() const
{
    return {std::clamp(m_store->displayStartHour(), 0, 24), std::clamp(m_store->displayEndHour(), 0, 24)};
}

namespace {

QString minutesText(int minutes, bool isEnglish)
{
    return lengthText({{}, Instant{minutes * 60.0}}, isEnglish);
}

} // namespace

QString PlanModel::dayText() const
{
    return m_store ? planDayText(shownDay(), m_store->isEnglish()) : QString();
}

QString PlanModel::plannedText() const
{
    if (!m_store)
        return {};
    return m_store->text(u"已安排 %1"_s, u"%1 planned"_s).arg(minutesText(m_load.planned, m_store->isEnglish()));
}

QString PlanModel::freeText() const
{
    if (!m_store)
        return {};
    const auto clock = [](int hour) { return u"%1:00"_s.arg(hour, 2, 10, QLatin1Char('0')); };
    return m_store->text(u"%1 – %2 还空 %3"_s, u"%3 free, %1 – %2"_s)
        .arg(clock(hours().start), clock(hours().end), minutesText(m_load.free, m_store->isEnglish()));
}

double PlanModel::share() const
{
    const int all = m_load.planned + m_load.free;
    return all > 0 ? static_cast<double>(m_load.planned - m_load.added) / all : 0;
}

double PlanModel::addedShare() const
{
    const int all = m_load.planned + m_load.free;
    return all > 0 ? static_cast<double>(m_load.added) / all : 0;
}

std::optional<FormTimes> PlanModel::freeHour() const
{
    const UserCalendar &calendar = m_store->calendar();
    const auto busy = busyTimes(m_day, m_store->schedules(), m_store->visibleCalendarIDs(), calendar);
    return firstFreeHour(m_day, hours(), busy, m_store->clock().now(), calendar);
}

bool PlanModel::place(int row)
{
    const QUuid item = m_rows.rows().value(row).id;
    if (item.isNull())
        return false;
    const std::optional<FormTimes> times = freeHour();
    if (!times) {
        emit refused(m_store->text(u"这一天没有连续一小时的空闲。"_s, u"No free hour on this day."_s));
        return false;
    }
    planItem(*m_store, item, *times);
    return true;
}

double PlanModel::firstStart() const
{
    if (const std::optional<FormTimes> times = freeHour())
        return times->start.seconds;
    return m_store->calendar().instant(m_day, QTime(std::min(hours().start, 23), 0)).seconds;
}

void PlanModel::refresh()
{
    refreshRows();
    refreshLoad();
}

void PlanModel::refreshRows()
{
    m_rows.setRows(planRows(*m_store, *m_labels));
    const Instant now = m_store->clock().now();
    std::optional<Instant> next;
    const auto consider = [&](Instant moment) {
        if (moment >= now && (!next || moment < *next))
            next = moment;
    };
    for (const PlanItem &item : openPlanItems(m_store->data())) {
        if (item.dueDate)
            consider(*item.dueDate);
    }
    for (const ScheduleItem &schedule : m_store->schedules()) {
        if (schedule.plannedItemID)
            consider(schedule.end());
    }
    if (next)
        m_nextChange->set(next->plus(1));
    else
        m_nextChange->cancel();
}

void PlanModel::refreshLoad()
{
    const UserCalendar &calendar = m_store->calendar();
    const auto busy = busyTimes(shownDay(), m_store->schedules(), m_store->visibleCalendarIDs(), calendar);
    std::optional<FormTimes> added;
    if (isAdding())
        added = FormTimes{{m_addedStart}, Instant{m_addedStart}.plus(defaultScheduleSeconds)};
    m_load = dayLoad(shownDay(), hours(), busy, added, calendar);
    emit loadChanged();
}

} // namespace tessaly
