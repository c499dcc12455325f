#include "model/FeedMerge.h"
#include "platform/Clock.h"
#include "platform/FeedDownloader.h"
#include "store/CalendarFeedReader.h"
#include "store/ErrorText.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>
#include <QSet>
#include <QUrl>

namespace tessaly {

namespace {

/// The link's last path component without its extension.
QString feedName(const QUrl &url)
{
    QString path = url.path(QUrl::FullyEncoded);
    while (path.endsWith(u'/'))
        path.chop(1);
    const QString name = QUrl::fromPercentEncoding(path.section(u'/', -1).toUtf8());
    const qsizetype dot = name.lastIndexOf(u'.');
    const bool hasExtension = dot > 0 && dot < name.size() - 1;
    return name.isEmpty() ? QStringLiteral("iCalendar") : hasExtension ? name.left(dot) : name;
}

Message updatingMessage()
{
    return {{QStringLiteral("正在更新链接日历…"), QStringLiteral("Updating linked calendar…")}, MessageKind::Progress};
}

/// Without blanks and without the invisible characters that come along when a link is copied, such as zero-width
/// blanks, marks of direction and byte order marks.
QString trimmedLink(QStringView text)
{
    const auto isInvisible = [](QChar c) {
        return c.isSpace() || c.category() == QChar::Other_Format || c.category() == QChar::Other_Control;
    };
    while (!text.isEmpty() && isInvisible(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isInvisible(text.back()))
        text.chop(1);
    return text.toString();
}

/// How many schedules of the calendar have notes or tasks and are not among the merged ones.
qsizetype annotatedSchedulesLost(const QList<ScheduleItem> &schedules, const QList<ScheduleItem> &merged,
                                 const QString &calendarIdentifier)
{
    QSet<QUuid> annotated;
    for (const ScheduleItem &item : schedules) {
        const bool hasTasks = item.tasks && !item.tasks->isEmpty();
        if (item.calendarIdentifier == calendarIdentifier && (hasTasks || !item.notes.isEmpty()))
            annotated.insert(item.id);
    }
    for (const ScheduleItem &item : merged)
        annotated.remove(item.id);
    return annotated.size();
}

bool isHttp(const QUrl &url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https");
}

} // namespace

bool PlannerStore::addCalendarFeed(const QString &urlString)
{
    const QString trimmed = trimmedLink(urlString);
    const QUrl url(trimmed);
    if (!isHttp(url)) {
        setCalendarSyncMessage(
            {{QStringLiteral("请输入有效的 iCalendar 链接。"), QStringLiteral("Enter a valid iCalendar link.")},
             MessageKind::Failure});
        return false;
    }
    const CalendarFeed feed{.name = feedName(url), .urlString = trimmed};
    perform({.feeds = {additionOf(feed, m_calendarFeeds.size())},
             .settings = {{keys::visibleCalendarIDs, {.after = QStringList(feedCalendarIdentifier(feed.id))}}}});
    refreshCalendarFeed(feed.id);
    return true;
}

void PlannerStore::refreshCalendarFeed(const QUuid &feedID)
{
    const qsizetype row = rowOf(m_calendarFeeds, feedID);
    if (row < 0)
        return;
    const QUrl url(m_calendarFeeds.at(row).urlString);
    if (!url.isValid() || url.isEmpty())
        return;
    m_feedsUnderWay.append(feedID);
    setCalendarSyncMessage(updatingMessage());
    // The downloader may outlive the store.
    ports().feedDownloader.download(url, [store = QPointer(this), feedID](const Result<QByteArray> &body) {
        if (store)
            store->readCalendarFeed(body, feedID);
    });
}

void PlannerStore::readCalendarFeed(const Result<QByteArray> &body, const QUuid &feedID)
{
    if (!body) {
        endFeedUpdate(feedID);
        failFeedUpdate(feedID, body.error());
        return;
    }
    m_feedReader->read(body.value(), feedReadingOptions(feedID), [this, feedID](Result<ReadCalendar> calendar) {
        endFeedUpdate(feedID);
        if (calendar)
            applyCalendarFeed(calendar.takeValue(), feedID);
        else
            failFeedUpdate(feedID, calendar.error());
    });
}

void PlannerStore::endFeedUpdate(const QUuid &feedID)
{
    m_feedsUnderWay.removeOne(feedID);
}

ReadingOptions PlannerStore::feedReadingOptions(const QUuid &feedID) const
{
    return {feedID, text(QStringLiteral("未命名日程"), QStringLiteral("Untitled event")), calendar().zone()};
}

void PlannerStore::applyCalendarFeed(ReadCalendar calendar, const QUuid &feedID)
{
    const qsizetype feedRow = rowOf(m_calendarFeeds, feedID);
    if (feedRow < 0)
        return;
    QList<ScheduleItem> merged = mergeFeed(std::move(calendar.schedules), feedID, m_data.schedules);
    if (!areFeedSchedules(merged, feedID, m_data.schedules))
        replaceFeedSchedules(std::move(merged), feedID);

    m_feedFailures.remove(feedID);
    m_calendarFeeds[feedRow].lastUpdated = clock().now();
    calendarFeedsAssigned({RowsChange::Kind::Updated, feedRow, 1});
    const QString count = QString::number(calendar.eventCount);
    setCalendarSyncMessage({{QStringLiteral("链接日历已更新，共导入 %1 个日程。").arg(count),
                             QStringLiteral("Linked calendar updated: %1 events imported.").arg(count)}});
}

void PlannerStore::replaceFeedSchedules(QList<ScheduleItem> merged, const QUuid &feedID)
{
    const QString identifier = feedCalendarIdentifier(feedID);
    const auto isOfFeed = [&](const ScheduleItem &item) { return item.calendarIdentifier == identifier; };
    if (const qsizetype lost = annotatedSchedulesLost(m_data.schedules, merged, identifier); lost > 0)
        m_generations.keepBefore(GenerationReason::LinkUpdate, QString::number(lost));
    const qsizetype removed = m_data.schedules.removeIf(isOfFeed);
    const qsizetype firstNew = m_data.schedules.size();
    const qsizetype added = merged.size();
    m_data.schedules.append(std::move(merged));
    if (removed == 0 && added > 0)
        schedulesAssigned({RowsChange::Kind::Inserted, firstNew, added});
    else
        schedulesAssigned({});
}

void PlannerStore::failFeedUpdate(const QUuid &feedID, const Error &error)
{
    const qsizetype row = rowOf(m_calendarFeeds, feedID);
    if (row < 0)
        return;
    m_feedFailures.insert(feedID, error);
    emit calendarFeedsChanged({RowsChange::Kind::Updated, row, 1});
    setCalendarFeedError(error);
}

QString PlannerStore::calendarFeedFailure(const QUuid &feedID) const
{
    const auto failure = m_feedFailures.constFind(feedID);
    return failure == m_feedFailures.cend() ? QString() : errorText(*failure, interfaceLanguage());
}

void PlannerStore::setCalendarFeedError(const Error &error)
{
    reportFailure(QStringLiteral("链接日历更新失败："), QStringLiteral("Linked calendar update failed: "), error);
}

void PlannerStore::deleteCalendarFeed(const QUuid &feedID)
{
    const qsizetype row = rowOf(m_calendarFeeds, feedID);
    if (row < 0)
        return;
    m_generations.keepBefore(GenerationReason::LinkDeletion);
    perform({.feeds = {removalOf(m_calendarFeeds.at(row), row)}});
}

void PlannerStore::forgetFeedUpdates(const QUuid &feedID)
{
    m_feedFailures.remove(feedID);
    m_feedsUnderWay.removeAll(feedID);
    if (m_feedsUnderWay.isEmpty())
        retractCalendarSyncMessage(updatingMessage());
}

} // namespace tessaly
