#include "views/goals/GoalDetails.h"

#include "model/GoalForecast.h"
#include "model/GoalRules.h"
#include "platform/Clock.h"
#include "views/goals/GoalRows.h"

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> optionalText(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace

GoalDetails::GoalDetails(PlannerStore &store, QObject *parent)
    : QObject(parent), m_store(store),
      m_shares({{"title", [](const GoalShareRow &row) { return QVariant(row.title); }},
                {"weightText", [](const GoalShareRow &row) { return QVariant(row.weight); }},
                {"percentText", [](const GoalShareRow &row) { return QVariant(QString::number(row.percent) + u'%'); }},
                {"isDone", [](const GoalShareRow &row) { return QVariant(row.isDone); }}})
{
    connect(&store, &PlannerStore::interfaceLanguageChanged, this, &GoalDetails::changed);
    connect(&store, &PlannerStore::timeZoneChanged, this, &GoalDetails::changed);
    connect(&store, &PlannerStore::todayChanged, this, &GoalDetails::changed);
}

void GoalDetails::show(const Goal &goal)
{
    if (goal.targetDate)
        m_formerDueDate = goal.targetDate;
    m_goal = goal;
    refreshShares();
    emit changed();
}

void GoalDetails::refreshShares()
{
    QList<GoalShareRow> rows;
    for (const GoalTaskShare &share : goalTaskShares(m_goal))
        rows.append({rows.size(), share.title, weightText(share.weight), share.percent, share.isDone});
    m_shares.setRows(rows);
}

void GoalDetails::save(const Goal &goal)
{
    if (goal != m_goal)
        m_store.updateGoal(goal);
}

void GoalDetails::setSummary(const QString &summary)
{
    Goal goal = m_goal;
    goal.summary = optionalText(summary);
    save(goal);
}

void GoalDetails::setCategory(const QString &category)
{
    Goal goal = m_goal;
    goal.category = optionalText(category);
    save(goal);
}

void GoalDetails::setHasDueDate(bool hasDueDate)
{
    if (hasDueDate == this->hasDueDate())
        return;
    const Instant now = m_store.clock().now();
    Goal goal = m_goal;
    goal.targetDate.reset();
    if (hasDueDate)
        goal.targetDate = m_formerDueDate ? m_formerDueDate : m_store.calendar().addingMonths(now, 1);
    save(goal);
}

QDateTime GoalDetails::dueDate() const
{
    return m_goal.targetDate ? m_store.calendar().dateTime(*m_goal.targetDate) : QDateTime();
}

void GoalDetails::setDueDate(const QDateTime &dueDate)
{
    if (!dueDate.isValid() || dueDate == this->dueDate())
        return;
    Goal goal = m_goal;
    goal.targetDate = m_store.calendar().instant(dueDate.date(), dueDate.time());
    save(goal);
}

QString GoalDetails::forecast() const
{
    const auto forecast = goalForecast(m_goal, m_store.clock().now(), m_store.calendar());
    return forecast ? forecastText(*forecast, m_store.today(), m_store.interfaceLanguage()) : QString();
}

QString GoalDetails::sumText() const
{
    return m_store.text(u"已完成 %1%，全部任务共 100%"_s, u"Done: %1%. All tasks: 100%"_s)
        .arg(percentage(m_goal.calculatedProgress()));
}

} // namespace tessaly
