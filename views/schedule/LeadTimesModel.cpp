#include "views/schedule/LeadTimesModel.h"

#include "model/LeadTime.h"

#include <algorithm>

namespace tessaly {

namespace {

QList<RowListModel<LeadTimeRow>::Role> roles()
{
    return {{"title", [](const LeadTimeRow &row) { return QVariant(row.title); }},
            {"choice", [](const LeadTimeRow &row) { return QVariant(row.choice); }}};
}

/// The choice that offers these minutes, or the next longer ones.
int choiceOf(std::optional<int> minutes)
{
    if (!minutes)
        return 0;
    const auto offered = std::ranges::lower_bound(offeredLeadMinutes, *minutes);
    const auto last = offeredLeadMinutes.end() - 1;
    return 1 + static_cast<int>(std::min(offered, last) - offeredLeadMinutes.begin());
}

} // namespace

LeadTimesModel::LeadTimesModel(QObject *parent) : QObject(parent), m_rows(roles())
{
}

void LeadTimesModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(store->calendarSync(), &CalendarSync::availableCalendarsChanged, this, &LeadTimesModel::refresh);
    connect(store, &PlannerStore::calendarFeedsChanged, this, &LeadTimesModel::refresh);
    connect(&store->scheduleReminders(), &ScheduleReminders::leadMinutesChanged, this, &LeadTimesModel::refresh);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &LeadTimesModel::refresh);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &LeadTimesModel::choicesChanged);
    refresh();
    emit storeChanged();
    emit choicesChanged();
}

QStringList LeadTimesModel::choices() const
{
    if (!m_store)
        return {};
    QStringList texts{m_store->text(QStringLiteral("不提醒"), QStringLiteral("None"))};
    for (const int minutes : offeredLeadMinutes)
        texts.append(leadText(minutes).in(m_store->interfaceLanguage()));
    return texts;
}

void LeadTimesModel::choose(int row, int choice)
{
    if (row < 0 || row >= m_rows.rowCount() || choice < 0 || choice > int(offeredLeadMinutes.size()))
        return;
    m_store->scheduleReminders().setLeadMinutes(
        m_rows.rows().at(row).identifier,
        choice == 0 ? std::nullopt : std::optional(offeredLeadMinutes.at(static_cast<size_t>(choice - 1))));
}

void LeadTimesModel::refresh()
{
    QList<LeadTimeRow> rows;
    const auto add = [&](const QString &identifier, const QString &title) {
        rows.append({identifier, title, choiceOf(m_store->scheduleReminders().leadMinutes(identifier))});
    };
    add({}, m_store->text(QStringLiteral("不属于任何日历的日程"), QStringLiteral("Schedules of no calendar")));
    for (const CalendarOption &calendar : m_store->calendarSync()->availableCalendars())
        add(calendar.id, calendar.title);
    for (const CalendarFeed &feed : m_store->calendarFeeds())
        add(feedCalendarIdentifier(feed.id), feed.name);
    m_rows.setRows(rows);
}

} // namespace tessaly
