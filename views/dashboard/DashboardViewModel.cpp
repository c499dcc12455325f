#include "views/dashboard/DashboardViewModel.h"

#include "model/DisplayTitle.h"
#include "model/GoalRules.h"
#include "model/ReminderRules.h"
#include "model/ScheduleColors.h"
#include "model/Uuid.h"
#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

DashboardViewModel::DashboardViewModel(QObject *parent)
    : QObject(parent),
      m_goals({{"title", [](const GoalProgressRow &row) { return QVariant(row.title); }},
               {"progress", [](const GoalProgressRow &row) { return QVariant(row.progress); }},
               {"percentage", [](const GoalProgressRow &row) { return QVariant(percentage(row.progress)); }},
               {"goalId", [](const GoalProgressRow &row) { return QVariant(uuidText(row.id)); }}})
{
}

DashboardViewModel::~DashboardViewModel() = default;

void DashboardViewModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    m_alarm = store->clock().makeAlarm([this] { lookAtDay(); });
    connect(store, &PlannerStore::remindersChanged, this, &DashboardViewModel::countReminders);
    connect(store, &PlannerStore::schedulesChanged, this, &DashboardViewModel::lookAtDay);
    connect(store, &PlannerStore::calendarFeedsChanged, this, &DashboardViewModel::dayChanged);
    connect(store, &PlannerStore::timeZoneChanged, this, &DashboardViewModel::lookAtDay);
    connect(store, &PlannerStore::goalsChanged, this, &DashboardViewModel::lookAtGoals);
    connect(store, &PlannerStore::preferredNameChanged, this, &DashboardViewModel::greetingChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &DashboardViewModel::greetingChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &DashboardViewModel::dayChanged);
    emit storeChanged();
    emit greetingChanged();
    countReminders();
    lookAtDay();
    lookAtGoals();
}

QString DashboardViewModel::greeting() const
{
    if (!m_store)
        return {};
    const QString &name = m_store->preferredName();
    if (name.isEmpty())
        return m_store->text(QStringLiteral("久待你的再度光临。"),
                             QStringLiteral("Your return has been awaited with quiet joy."));
    return name + m_store->text(QStringLiteral("，久待你的再度光临。"),
                                QStringLiteral(", your return has been awaited with quiet joy."));
}

const ScheduleItem *DashboardViewModel::next() const
{
    return hasNext() ? &m_store->schedules().at(m_remaining.upcoming.first()) : nullptr;
}

QString DashboardViewModel::nextTitle() const
{
    return next() ? displayTitle(*next()) : QString();
}

QString DashboardViewModel::nextDateText() const
{
    return next() ? m_store->dateText(next()->date, false) : QString();
}

QString DashboardViewModel::nextId() const
{
    return next() ? uuidText(next()->id) : QString();
}

QString DashboardViewModel::nextColor() const
{
    return next() ? scheduleColor(*next(), linkColors(m_store->calendarFeeds())) : QString();
}

void DashboardViewModel::countReminders()
{
    const QList<qsizetype> openReminders = openItems(m_store->reminders());
    m_openReminderCount = static_cast<int>(openReminders.size());
    emit remindersChanged();
}

void DashboardViewModel::lookAtDay()
{
    m_remaining = remainingDay(m_store->schedules(), m_store->calendar(), m_store->clock().now());
    m_alarm->set(m_remaining.validUntil);
    emit dayChanged();
}

void DashboardViewModel::lookAtGoals()
{
    constexpr qsizetype shownGoals = 3;
    const QList<Goal> &goals = m_store->goals();
    m_activeGoalCount = static_cast<int>(tessaly::activeGoalCount(goals));
    QList<GoalProgressRow> rows;
    for (qsizetype row = 0; row < std::min(shownGoals, goals.size()); ++row)
        rows.append({goals.at(row).id, goals.at(row).title, goals.at(row).calculatedProgress()});
    m_goals.setRows(rows);
    emit goalsChanged();
}

} // namespace tessaly
