#include "views/schedule/LinkDetailsModel.h"

#include "model/ScheduleColors.h"
#include "store/RecordRows.h"
#include "views/schedule/LinkTexts.h"

namespace tessaly {

namespace {

QList<RowListModel<SkippedRow>::Role> skippedRoles()
{
    return {
        {"title", [](const SkippedRow &row) -> QVariant { return row.title; }},
        {"day", [](const SkippedRow &row) -> QVariant { return row.day; }},
        {"reason", [](const SkippedRow &row) -> QVariant { return row.reason; }},
    };
}

} // namespace

LinkDetailsModel::LinkDetailsModel(QObject *parent) : QObject(parent), m_skipped(skippedRoles())
{
}

void LinkDetailsModel::setStore(PlannerStore *store)
{
    m_store = store;
    connect(store, &PlannerStore::calendarFeedsChanged, this, &LinkDetailsModel::refresh);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &LinkDetailsModel::refresh);
    connect(&store->calendarLinks(), &CalendarLinks::healthChanged, this, &LinkDetailsModel::refresh);
}

void LinkDetailsModel::show(const QUuid &feedID)
{
    m_feed.id = feedID;
    m_isOpen = true;
    refresh();
}

void LinkDetailsModel::close()
{
    m_isOpen = false;
    emit changed();
}

void LinkDetailsModel::refresh()
{
    if (!m_isOpen)
        return;
    const qsizetype row = rowOf(m_store->calendarFeeds(), m_feed.id);
    if (row < 0) {
        close();
        return;
    }
    m_feed = m_store->calendarFeeds().at(row);
    const LinkHealth *health = m_store->calendarLinks().health(m_feed.id);
    m_health = health ? *health : LinkHealth();
    QList<SkippedRow> rows;
    for (const SkippedEvent &event : std::as_const(m_health.skipped)) {
        const QString untitled = m_store->text(QStringLiteral("未命名日程"), QStringLiteral("Untitled event"));
        const QString noDate = m_store->text(QStringLiteral("没有日期"), QStringLiteral("no date"));
        const QString day = event.day ? m_store->dateText(m_store->calendar().startOfDay(*event.day), true) : noDate;
        rows.append({rows.size(), event.title.isEmpty() ? untitled : event.title, day, skipText(*m_store, event)});
    }
    m_skipped.setRows(rows);
    emit changed();
}

QString LinkDetailsModel::ownName() const
{
    return m_health.calendarName == m_feed.name ? QString() : m_health.calendarName;
}

QString LinkDetailsModel::colorKey() const
{
    return calendarColor(m_feed.colorHex, feedCalendarIdentifier(m_feed.id));
}

QString LinkDetailsModel::lastUpdate() const
{
    const std::optional<Instant> moment = m_isOpen ? m_store->calendarLinks().lastRead(m_feed) : std::nullopt;
    if (!m_isOpen)
        return {};
    return moment ? linkMomentText(*m_store, *moment)
                  : m_store->text(QStringLiteral("还没有更新过"), QStringLiteral("Never"));
}

QString LinkDetailsModel::failure() const
{
    return m_isOpen && m_health.failingSince ? healthText(*m_store, m_feed) : QString();
}

QString LinkDetailsModel::contents() const
{
    return m_isOpen ? readText(*m_store, m_feed, m_health) : QString();
}

QString LinkDetailsModel::keeping() const
{
    return m_isOpen ? keepingText(*m_store, m_health) : QString();
}

QString LinkDetailsModel::repetitions() const
{
    return m_isOpen ? repetitionsText(*m_store, m_feed, m_health) : QString();
}

void LinkDetailsModel::edit(const std::function<void(CalendarFeed &)> &change)
{
    CalendarFeed feed = m_feed;
    change(feed);
    if (feed != m_feed)
        m_store->calendarLinks().updateCalendarFeed(feed);
}

void LinkDetailsModel::rename(const QString &name)
{
    const QString given = name.trimmed();
    if (given.isEmpty())
        emit changed(); // The field shows the name again.
    else
        edit([&](CalendarFeed &feed) { feed.name = given; });
}

void LinkDetailsModel::setColor(const QString &hex)
{
    edit([&](CalendarFeed &feed) { feed.colorHex = hex; });
}

void LinkDetailsModel::removeColor()
{
    edit([](CalendarFeed &feed) { feed.colorHex.reset(); });
}

void LinkDetailsModel::setKeptUpToDate(bool isOn)
{
    edit([&](CalendarFeed &feed) { feed.isKeptUpToDate = isOn ? std::optional(true) : std::nullopt; });
}

void LinkDetailsModel::setReadsRepetitions(bool isOn)
{
    edit([&](CalendarFeed &feed) { feed.readsRepetitions = isOn ? std::optional(true) : std::nullopt; });
}

void LinkDetailsModel::update()
{
    m_store->calendarLinks().refreshCalendarFeed(m_feed.id);
}

void LinkDetailsModel::deleteLink()
{
    m_store->calendarLinks().deleteCalendarFeed(m_feed.id);
}

} // namespace tessaly
