#include "views/schedule/CalendarSelectionModel.h"

#include "views/schedule/LinkTexts.h"

namespace tessaly {

namespace {

QList<RowListModel<CalendarFeedRow>::Role> feedRoles()
{
    return {
        {"name", [](const CalendarFeedRow &row) -> QVariant { return row.name; }},
        {"health", [](const CalendarFeedRow &row) -> QVariant { return row.health; }},
        {"isFailing", [](const CalendarFeedRow &row) -> QVariant { return row.isFailing; }},
    };
}

} // namespace

CalendarSelectionModel::CalendarSelectionModel(QObject *parent) : QObject(parent), m_feeds(feedRoles())
{
}

void CalendarSelectionModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(store, &PlannerStore::calendarFeedsChanged, this, &CalendarSelectionModel::refresh);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &CalendarSelectionModel::refresh);
    connect(store, &PlannerStore::todayChanged, this, &CalendarSelectionModel::refresh);
    connect(&store->calendarLinks(), &CalendarLinks::healthChanged, this, &CalendarSelectionModel::refresh);
    m_trial.setStore(store);
    m_details.setStore(store);
    connect(&store->calendarLinks(), &CalendarLinks::openingRequested, this, &CalendarSelectionModel::takeOpening);
    emit storeChanged();
    refresh();
    takeOpening();
}

void CalendarSelectionModel::takeOpening()
{
    const QString place = m_store->calendarLinks().takeOpening();
    if (place.isEmpty())
        return;
    m_details.close();
    m_trial.open(place);
}

void CalendarSelectionModel::addTypedLink()
{
    if (m_store->calendarLinks().addCalendarFeed(m_trial.url(), m_trial.choices()))
        m_trial.setUrl(QString());
}

void CalendarSelectionModel::updateFeed(int row)
{
    m_store->calendarLinks().refreshCalendarFeed(m_feeds.rows().value(row).id);
}

void CalendarSelectionModel::deleteFeed(int row)
{
    m_store->calendarLinks().deleteCalendarFeed(m_feeds.rows().value(row).id);
}

void CalendarSelectionModel::showDetails(int row)
{
    m_details.show(m_feeds.rows().value(row).id);
}

void CalendarSelectionModel::refresh()
{
    const int before = feedCount();
    QList<CalendarFeedRow> rows;
    for (const CalendarFeed &feed : m_store->calendarFeeds())
        rows.append({feed.id, feed.name, healthText(*m_store, feed), isFailing(*m_store, feed)});
    m_feeds.setRows(rows);
    if (feedCount() != before)
        emit feedCountChanged();
}

} // namespace tessaly
