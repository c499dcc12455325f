#include "views/schedule/CalendarGroupsModel.h"

#include "model/CalendarGroups.h"
#include "model/ScheduleColors.h"

namespace tessaly {

namespace {

QList<RowListModel<CalendarChoiceRow>::Role> choiceRoles()
{
    return {
        {"title", [](const CalendarChoiceRow &row) -> QVariant { return row.title; }},
        {"colorKey", [](const CalendarChoiceRow &row) -> QVariant { return row.colorKey; }},
        {"isAccount", [](const CalendarChoiceRow &row) -> QVariant { return row.isAccount; }},
        {"isChecked", [](const CalendarChoiceRow &row) -> QVariant { return row.isChecked; }},
        {"isPartial", [](const CalendarChoiceRow &row) -> QVariant { return row.isPartial; }},
    };
}

} // namespace

CalendarGroupsModel::CalendarGroupsModel(QObject *parent)
    : QObject(parent), m_calendars(choiceRoles()), m_links(choiceRoles())
{
}

void CalendarGroupsModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(store->calendarSync(), &CalendarSync::availableCalendarsChanged, this, &CalendarGroupsModel::refresh);
    connect(store, &PlannerStore::selectedCalendarIDsChanged, this, &CalendarGroupsModel::refresh);
    connect(store, &PlannerStore::visibleCalendarIDsChanged, this, &CalendarGroupsModel::refresh);
    connect(store, &PlannerStore::calendarFeedsChanged, this, &CalendarGroupsModel::refresh);
    emit storeChanged();
    refresh();
}

void CalendarGroupsModel::setPurpose(Purpose purpose)
{
    if (m_purpose == purpose)
        return;
    m_purpose = purpose;
    emit purposeChanged();
    refresh();
}

const QSet<QString> &CalendarGroupsModel::chosen() const
{
    return m_purpose == Purpose::Import ? m_store->selectedCalendarIDs() : m_store->visibleCalendarIDs();
}

void CalendarGroupsModel::setChosen(const QSet<QString> &identifiers)
{
    if (m_purpose == Purpose::Import)
        m_store->setSelectedCalendarIDs(identifiers);
    else
        m_store->setVisibleCalendarIDs(identifiers);
}

void CalendarGroupsModel::choose(const RowListModel<CalendarChoiceRow> &rows, int row, bool isChosen)
{
    setChosen(withChoice(chosen(), rows.rows().value(row).identifiers, isChosen));
}

void CalendarGroupsModel::chooseCalendar(int row, bool isChosen)
{
    choose(m_calendars, row, isChosen);
}

void CalendarGroupsModel::chooseLink(int row, bool isChosen)
{
    choose(m_links, row, isChosen);
}

void CalendarGroupsModel::chooseAll()
{
    QSet<QString> all;
    for (const auto *rows : {&m_calendars, &m_links}) {
        for (const CalendarChoiceRow &row : rows->rows())
            all = withChoice(std::move(all), row.identifiers, true);
    }
    setChosen(all);
}

void CalendarGroupsModel::refresh()
{
    if (!m_store)
        return;
    const QSet<QString> &now = chosen();
    QList<CalendarChoiceRow> calendars;
    const QList<CalendarGroup> groups = groupCalendars(m_store->calendarSync()->availableCalendars());
    for (const CalendarGroup &group : groups) {
        const GroupChoice choice = groupChoice(group, now);
        calendars.append({.identifiers = identifiersOf(group.calendars),
                          .title = group.sourceTitle,
                          .isAccount = true,
                          .isChecked = choice == GroupChoice::All,
                          .isPartial = choice == GroupChoice::Some});
        for (const CalendarOption &calendar : group.calendars)
            calendars.append({.identifiers = {calendar.id},
                              .title = calendar.title,
                              .colorKey = calendarColor(calendar.colorHex, calendar.id),
                              .isChecked = now.contains(calendar.id)});
    }
    m_calendars.setRows(calendars);

    QList<CalendarChoiceRow> links;
    if (m_purpose == Purpose::Display) {
        for (const CalendarFeed &feed : m_store->calendarFeeds()) {
            const QString identifier = feedCalendarIdentifier(feed.id);
            links.append({.identifiers = {identifier}, .title = feed.name, .isChecked = now.contains(identifier)});
        }
    }
    m_links.setRows(links);
    emit rowsChanged();
}

} // namespace tessaly
