#include "views/schedule/CalendarSelectionModel.h"

namespace tessaly {

namespace {

QList<RowListModel<CalendarFeedRow>::Role> feedRoles()
{
    return {
        {"name", [](const CalendarFeedRow &row) -> QVariant { return row.name; }},
        {"lastUpdated", [](const CalendarFeedRow &row) -> QVariant { return row.lastUpdated; }},
        {"failure", [](const CalendarFeedRow &row) -> QVariant { return row.failure; }},
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
    emit storeChanged();
    refresh();
}

void CalendarSelectionModel::setFeedURL(const QString &url)
{
    if (m_feedURL == url)
        return;
    m_feedURL = url;
    emit feedURLChanged();
}

void CalendarSelectionModel::addTypedLink()
{
    if (m_store->addCalendarFeed(m_feedURL))
        setFeedURL(QString());
}

void CalendarSelectionModel::updateFeed(int row)
{
    m_store->refreshCalendarFeed(m_feeds.rows().value(row).id);
}

void CalendarSelectionModel::deleteFeed(int row)
{
    m_store->deleteCalendarFeed(m_feeds.rows().value(row).id);
}

void CalendarSelectionModel::refresh()
{
    const int before = feedCount();
    QList<CalendarFeedRow> rows;
    for (const CalendarFeed &feed : m_store->calendarFeeds()) {
        const QString lastUpdated = feed.lastUpdated ? m_store->dateText(*feed.lastUpdated, false) : QString();
        rows.append({feed.id, feed.name, lastUpdated, m_store->calendarFeedFailure(feed.id)});
    }
    m_feeds.setRows(rows);
    if (feedCount() != before)
        emit feedCountChanged();
}

} // namespace tessaly
