#include "views/schedule/CalendarSyncModel.h"

#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

namespace {

QList<RowListModel<HeldScheduleRow>::Role> heldRoles()
{
    return {
        {"title", [](const HeldScheduleRow &row) -> QVariant { return row.title; }},
        {"date", [](const HeldScheduleRow &row) -> QVariant { return row.date; }},
    };
}

QList<RowListModel<RestorePointRow>::Role> restorePointRoles()
{
    return {
        {"fileName", [](const RestorePointRow &row) -> QVariant { return row.fileName; }},
        {"title", [](const RestorePointRow &row) -> QVariant { return row.title; }},
        {"moment", [](const RestorePointRow &row) -> QVariant { return row.moment; }},
    };
}

constexpr qsizetype restorePointsShown = 3;

TextPair reasonText(const UnreadCalendar &calendar)
{
    const TextPair names{calendar.files.join(u'、'), calendar.files.join(u", ")};
    switch (calendar.reason) {
    case UnreadCalendar::Reason::Loading:
        return {QStringLiteral("系统还在读取"), QStringLiteral("still being read by the system")};
    case UnreadCalendar::Reason::Offline:
        return {QStringLiteral("账户离线或未登录"), QStringLiteral("the account is offline or not signed in")};
    case UnreadCalendar::Reason::Unreadable:
        return {QStringLiteral("无法读取"), QStringLiteral("cannot be read")};
    case UnreadCalendar::Reason::DamagedFiles:
        return {QStringLiteral("无法读取文件 %1").arg(names.chinese),
                QStringLiteral("these files cannot be read: %1").arg(names.english)};
    }
    Q_UNREACHABLE();
}

} // namespace

CalendarSyncModel::CalendarSyncModel(QObject *parent)
    : QObject(parent), m_held(heldRoles()), m_restorePoints(restorePointRoles())
{
}

void CalendarSyncModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(store->calendarSync(), &CalendarSync::outcomeChanged, this, &CalendarSyncModel::refresh);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &CalendarSyncModel::refresh);
    connect(store, &PlannerStore::schedulesChanged, this, &CalendarSyncModel::refresh);
    connect(&store->generations(), &Generations::changed, this, &CalendarSyncModel::refreshRestorePoints);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &CalendarSyncModel::refreshRestorePoints);
    emit storeChanged();
    refresh();
    refreshRestorePoints();
}

QString CalendarSyncModel::momentText(Instant moment) const
{
    const UserCalendar &calendar = m_store->calendar();
    const QString time = calendar.dateTime(moment).toString(u"HH:mm");
    const qint64 daysAgo = calendar.day(moment).daysTo(calendar.day(m_store->clock().now()));
    if (daysAgo == 0)
        return m_store->text(QStringLiteral("今天 "), QStringLiteral("Today ")) + time;
    if (daysAgo == 1)
        return m_store->text(QStringLiteral("昨天 "), QStringLiteral("Yesterday ")) + time;
    return m_store->dateText(moment, false);
}

QString CalendarSyncModel::lastSync() const
{
    const std::optional<SyncOutcome> last = m_store ? m_store->calendarSync()->lastSync() : std::nullopt;
    if (!last)
        return m_store ? m_store->text(QStringLiteral("还没有同步过"), QStringLiteral("Never")) : QString();
    QString words =
        m_store->text(QStringLiteral("%1，导入 %2 个、更新 %3 个"), QStringLiteral("%1: %2 imported, %3 updated"))
            .arg(momentText(last->at))
            .arg(last->imported)
            .arg(last->updated);
    if (last->exported)
        words += m_store->text(QStringLiteral("、导出 %1 个"), QStringLiteral(", %1 exported")).arg(*last->exported);
    return words;
}

QString CalendarSyncModel::calendarTitle(const QString &identifier) const
{
    const QList<CalendarOption> &calendars = m_store->calendarSync()->availableCalendars();
    const auto found = std::ranges::find(calendars, identifier, &CalendarOption::id);
    return found == calendars.cend() ? identifier : found->title;
}

QString CalendarSyncModel::leftOut() const
{
    if (!m_store)
        return {};
    QStringList lines;
    for (const UnreadCalendar &calendar : m_store->calendarSync()->leftOut())
        lines.append(
            m_store->text(QStringLiteral("%1：%2"), QStringLiteral("%1: %2"))
                .arg(calendarTitle(calendar.identifier), reasonText(calendar).in(m_store->interfaceLanguage())));
    return lines.join(u'\n');
}

QString CalendarSyncModel::heldReason() const
{
    if (!m_store)
        return {};
    QStringList titles;
    for (const HeldRemoval &held : m_store->calendarSync()->heldRemovals())
        titles.append(QStringLiteral("“%1”").arg(calendarTitle(held.calendarIdentifier)));
    const bool isOne = titles.size() == 1;
    const QString last = titles.isEmpty() ? QString() : titles.takeLast();
    const QString english =
        titles.isEmpty() ? last : titles.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
    const QString chinese = titles.isEmpty() ? last : titles.join(u'、') + u'和' + last;
    return m_store->text(
        QStringLiteral("它们已不在%1日历里。同步已暂停，还没有改动任何内容。").arg(chinese),
        (isOne ? QStringLiteral("They are no longer in the calendar %1. Sync is paused and nothing has been changed.")
               : QStringLiteral("They are no longer in the calendars %1. Sync is paused and nothing has been changed."))
            .arg(english));
}

void CalendarSyncModel::refreshRestorePoints()
{
    QList<RestorePointRow> rows;
    for (const Generation &point : m_store->generations().restorePoints(restorePointsShown))
        rows.append({generationFileName(point), tessaly::reasonText(point).in(m_store->interfaceLanguage()),
                     m_store->momentText(point.moment)});
    m_restorePoints.setRows(rows);
    emit changed();
}

void CalendarSyncModel::refresh()
{
    QSet<QUuid> ids;
    for (const HeldRemoval &held : m_store->calendarSync()->heldRemovals())
        ids += QSet<QUuid>(held.schedules.cbegin(), held.schedules.cend());
    QList<HeldScheduleRow> rows;
    if (!ids.isEmpty()) {
        for (const ScheduleItem &item : m_store->schedules()) {
            if (ids.contains(item.id))
                rows.append({item.id, item.title, m_store->dateText(item.date, false)});
        }
    }
    m_held.setRows(rows);
    emit changed();
}

} // namespace tessaly
