#include "store/CalendarLinks.h"

#include "model/LinkAddress.h"
#include "platform/Clock.h"
#include "platform/FeedDownloader.h"
#include "store/CalendarFeedReader.h"
#include "store/ErrorText.h"
#include "store/FeedApplier.h"
#include "store/LinkMessages.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

constexpr int notModified = 304;
constexpr int firstErrorStatus = 400;

Error statusError(const FeedAnswer &answer)
{
    return {ErrorCode::DownloadStatus, QString::number(answer.status)};
}

/// Why the answer is no calendar; nothing where it may be one.
std::optional<Error> objectionTo(const FeedAnswer &answer, const CalendarFacts &facts)
{
    if (answer.status >= firstErrorStatus)
        return statusError(answer);
    if (!facts.isCalendar)
        return Error{ErrorCode::CalendarNotFound, {}};
    return std::nullopt;
}

/// What the window shows of a link: everything but the version that was read.
LinkHealth withoutVersion(LinkHealth health)
{
    health.version = {};
    health.basis.clear();
    return health;
}

bool readsRepetitions(const CalendarFeed &feed)
{
    return feed.readsRepetitions.value_or(false);
}

} // namespace

CalendarLinks::CalendarLinks(PlannerStore &store, const PlannerPorts &ports, StoredValues &values)
    : m_store(store), m_ports(ports), m_values(values), m_turns(ports.clock),
      m_reader(std::make_unique<CalendarFeedReader>(ports.calendarExpander)),
      m_applier(std::make_unique<FeedApplier>(store))
{
    connect(&m_turns, &LinkTurns::due, this, [this](const QUuid &feedID) { read(feedID, false); });
}

CalendarLinks::~CalendarLinks() = default;

void CalendarLinks::load()
{
    if (auto health = m_values.decoded(keys::linkHealth, decodeLinkHealth))
        m_health = *std::move(health);
    // A removed link may come back while the planner runs, but not later.
    m_health.removeIf([this](const LinkHealth &health) { return !find(health.feedID); });
    followFeeds();
    connect(&m_store, &PlannerStore::calendarFeedsChanged, this, &CalendarLinks::followFeeds);
}

void CalendarLinks::start()
{
    m_turns.start();
}

bool CalendarLinks::addCalendarFeed(const QString &urlString, const CalendarFeed &choices)
{
    const QString trimmed = trimmedLink(urlString);
    const std::optional<QUrl> address = calendarAddress(trimmed);
    if (!address) {
        m_store.setCalendarSyncMessage(linkRefusedMessage());
        return false;
    }
    const CalendarFeed feed{.name = linkName(*address),
                            .urlString = trimmed,
                            .isKeptUpToDate = choices.isKeptUpToDate,
                            .readsRepetitions = choices.readsRepetitions};
    const QStringList shown(feedCalendarIdentifier(feed.id));
    m_store.perform({.feeds = {additionOf(feed, m_store.calendarFeeds().size())},
                     .settings = {{keys::visibleCalendarIDs, {.after = shown}}}});
    refreshCalendarFeed(feed.id);
    return true;
}

void CalendarLinks::refreshCalendarFeed(const QUuid &feedID)
{
    read(feedID, true);
}

void CalendarLinks::setCalendarFeedError(const Error &error)
{
    m_store.reportFailure(QStringLiteral("链接日历更新失败："), QStringLiteral("Linked calendar update failed: "),
                          error);
}

void CalendarLinks::deleteCalendarFeed(const QUuid &feedID)
{
    const qsizetype row = rowOf(m_store.calendarFeeds(), feedID);
    if (row < 0)
        return;
    m_store.generations().keepBefore(GenerationReason::LinkDeletion);
    m_store.perform({.feeds = {removalOf(m_store.calendarFeeds().at(row), row)}});
}

void CalendarLinks::updateCalendarFeed(const CalendarFeed &feed)
{
    const qsizetype row = rowOf(m_store.calendarFeeds(), feed.id);
    if (row >= 0)
        m_store.perform({.feeds = {editOf(m_store.calendarFeeds().at(row), feed, row)}});
}

const LinkHealth *CalendarLinks::health(const QUuid &feedID) const
{
    const auto found = std::ranges::find(m_health, feedID, &LinkHealth::feedID);
    return found == m_health.cend() ? nullptr : &*found;
}

std::optional<Instant> CalendarLinks::lastRead(const CalendarFeed &feed) const
{
    const auto quiet = m_lastRead.constFind(feed.id);
    return quiet == m_lastRead.cend() ? feed.lastUpdated : std::max(feed.lastUpdated, std::optional(*quiet));
}

bool CalendarLinks::tryLink(const QString &urlString, const Tried &completion)
{
    const std::optional<QUrl> address = calendarAddress(trimmedLink(urlString));
    if (!address) {
        m_store.setCalendarSyncMessage(linkRefusedMessage());
        return false;
    }
    m_ports.feedDownloader.download(
        *address, {}, [self = QPointer(this), completion](const Result<FeedAnswer> &answer) {
            if (!self)
                return;
            if (!answer) {
                completion(answer.error());
                return;
            }
            const ReadingOptions options = self->optionsFor({});
            self->m_reader->tryBody(answer.value().body, options, [=](const Result<CalendarTrial> &trial) {
                const auto objection = trial ? objectionTo(answer.value(), trial.value().once) : std::nullopt;
                if (objection)
                    completion(*objection);
                else
                    completion(trial);
            });
        });
    return true;
}

void CalendarLinks::forgetUpdates(const QUuid &feedID)
{
    m_requestsUnderWay.removeAll(feedID);
    if (m_requestsUnderWay.isEmpty())
        m_store.retractCalendarSyncMessage(linkUpdatingMessage());
}

void CalendarLinks::requestOpening(const QString &place)
{
    m_opening = place;
    emit openingRequested();
}

void CalendarLinks::followFeeds()
{
    m_turns.setLinks(m_store.calendarFeeds());
    QHash<QUuid, bool> ways;
    QList<QUuid> changed;
    for (const CalendarFeed &feed : m_store.calendarFeeds()) {
        const bool way = readsRepetitions(feed);
        ways.insert(feed.id, way);
        if (m_readsRepetitions.value(feed.id, way) != way)
            changed.append(feed.id);
    }
    m_readsRepetitions = ways;
    for (const QUuid &feedID : changed)
        refreshCalendarFeed(feedID);
}

void CalendarLinks::read(const QUuid &feedID, bool isRequested)
{
    const CalendarFeed *feed = find(feedID);
    if (!feed)
        return;
    const QUrl url(feed->urlString);
    if (!url.isValid() || url.isEmpty())
        return;
    Reading reading{.feedID = feedID, .isRequested = isRequested, .basis = basisOf(*feed)};
    FeedVersion known;
    if (isRequested) {
        m_requestsUnderWay.append(feedID);
        m_store.setCalendarSyncMessage(linkUpdatingMessage());
    } else if (const LinkHealth *former = health(feedID); former && former->basis == reading.basis) {
        known = former->version;
    }
    reading.isConditional = !known.isEmpty();
    m_turns.began(feedID);
    // The downloader may outlive the planner.
    m_ports.feedDownloader.download(url, known, [self = QPointer(this), reading](const Result<FeedAnswer> &answer) {
        if (self)
            self->takeAnswer(answer, reading);
    });
}

void CalendarLinks::takeAnswer(const Result<FeedAnswer> &answer, const Reading &reading)
{
    const CalendarFeed *feed = find(reading.feedID);
    if (!answer || !feed) {
        end(reading);
        if (!answer)
            fail(answer.error(), reading);
        return;
    }
    if (answer.value().status >= firstErrorStatus && feed->isKeptUpToDate.value_or(false)) {
        end(reading);
        fail(statusError(answer.value()), reading);
        return;
    }
    const LinkHealth *known = health(reading.feedID);
    if (answer.value().status != notModified || !reading.isConditional || !known) {
        readBody(answer.value(), reading);
        return;
    }
    LinkHealth unchanged = *known;
    unchanged.failure = {};
    settle(unchanged, reading);
}

void CalendarLinks::readBody(const FeedAnswer &answer, const Reading &reading)
{
    const CalendarFeed *feed = find(reading.feedID);
    if (!feed) {
        end(reading);
        return;
    }
    ReadingOptions options = optionsFor(*feed);
    options.isAside = !reading.isRequested;
    options.compared = m_store.schedules();
    m_reader->read(answer.body, options,
                   [this, answer, reading, compared = options.compared](Result<ReadCalendar> calendar) mutable {
                       const bool isStale = !compared->isSharedWith(m_store.schedules());
                       // Two holders of the list would make a copy for the first change.
                       compared.reset();
                       if (calendar && isStale) {
                           readBody(answer, reading); // The schedules have changed meanwhile.
                       } else if (calendar) {
                           applyCalendarFeed(calendar.takeValue(), answer, reading);
                       } else {
                           end(reading);
                           fail(calendar.error(), reading);
                       }
                   });
}

void CalendarLinks::applyCalendarFeed(ReadCalendar calendar, const FeedAnswer &answer, const Reading &reading)
{
    const CalendarFeed *feed = find(reading.feedID);
    const std::optional<Error> objection = objectionTo(answer, calendar.facts);
    if (!feed || (objection && feed->isKeptUpToDate.value_or(false))) {
        end(reading);
        if (feed)
            fail(*objection, reading);
        return;
    }
    FeedUpdate update = std::move(*calendar.update);
    Reading done = reading;
    done.hasChanged |= !update.pieces.isEmpty();
    done.lost += update.annotatedLost;
    if (update.annotatedLost > 0)
        m_store.generations().keepBefore(GenerationReason::LinkUpdate, QString::number(update.annotatedLost));
    m_applier->apply(std::move(update), [this, answer, done, calendar](bool isWhole) {
        if (isWhole)
            finish(calendar, answer, done);
        else
            readBody(answer, done);
    });
}

void CalendarLinks::finish(const ReadCalendar &calendar, const FeedAnswer &answer, const Reading &reading)
{
    end(reading);
    const CalendarFeed *feed = find(reading.feedID);
    if (!feed)
        return;
    LinkHealth health = healthAfter(calendar.facts, answer, reading);
    if (const std::optional<Error> objection = objectionTo(answer, calendar.facts))
        setFailure(health, *objection);
    const bool isWhole = readsRepetitions(*feed);
    if (reading.hasChanged || reading.isRequested) {
        noteUpdate(reading.feedID);
        const qsizetype count = isWhole ? calendar.scheduleCount : calendar.facts.eventCount;
        m_store.setCalendarSyncMessage(linkUpdatedMessage(count, reading.lost));
        if (!isWhole && health.repeatingCount > 0)
            countRepetitions(answer.body, reading);
    }
    settle(health, reading);
}

LinkHealth CalendarLinks::healthAfter(const CalendarFacts &facts, const FeedAnswer &answer,
                                      const Reading &reading) const
{
    const LinkHealth *former = health(reading.feedID);
    return {.feedID = reading.feedID,
            .failingSince = former ? former->failingSince : std::nullopt,
            .eventCount = facts.eventCount,
            .repeatingCount = facts.repeatingCount,
            .addedByRepetitions = former ? former->addedByRepetitions : 0,
            .skippedCount = facts.skippedCount,
            .skipped = facts.skipped.first(std::min(facts.skipped.size(), LinkHealth::mostSkippedListed)),
            .calendarName = facts.name,
            .refreshSeconds = facts.refreshSeconds,
            .version = answer.version,
            .basis = reading.basis};
}

void CalendarLinks::noteUpdate(const QUuid &feedID)
{
    m_store.editCalendarFeeds([this, &feedID](QList<CalendarFeed> &feeds) -> std::optional<RowsChange> {
        const qsizetype row = rowOf(feeds, feedID);
        feeds[row].lastUpdated = m_ports.clock.now();
        return RowsChange{RowsChange::Kind::Updated, row, 1};
    });
}

void CalendarLinks::settle(LinkHealth health, const Reading &reading)
{
    if (health.failure.chinese.isEmpty())
        health.failingSince.reset();
    m_lastRead.insert(reading.feedID, m_ports.clock.now());
    m_turns.succeeded(reading.feedID, health.refreshSeconds);
    setHealth(health);
}

void CalendarLinks::fail(const Error &error, const Reading &reading)
{
    if (!find(reading.feedID))
        return;
    const LinkHealth *former = health(reading.feedID);
    LinkHealth failing = former ? *former : LinkHealth{.feedID = reading.feedID};
    setFailure(failing, error);
    m_turns.failed(reading.feedID);
    setHealth(failing);
    if (reading.isRequested)
        setCalendarFeedError(error);
}

void CalendarLinks::setFailure(LinkHealth &health, const Error &error) const
{
    health.failingSince = health.failingSince.value_or(m_ports.clock.now());
    health.failure = {errorPhrase(error, AppLanguage::Chinese), errorPhrase(error, AppLanguage::English)};
}

void CalendarLinks::end(const Reading &reading)
{
    if (reading.isRequested)
        m_requestsUnderWay.removeOne(reading.feedID);
}

void CalendarLinks::countRepetitions(const QByteArray &body, const Reading &reading)
{
    m_reader->countRepetitions(body, optionsFor(*find(reading.feedID)), [this, reading](qsizetype added) {
        const LinkHealth *former = health(reading.feedID);
        if (!former)
            return;
        LinkHealth counted = *former;
        counted.addedByRepetitions = added;
        setHealth(counted);
    });
}

ReadingOptions CalendarLinks::optionsFor(const CalendarFeed &feed) const
{
    // Whole months, so that the span does not differ from one reading to the next.
    const QDate month = UserCalendar::monthStart(m_store.today());
    return {.feedID = feed.id,
            .untitled = m_store.text(QStringLiteral("未命名日程"), QStringLiteral("Untitled event")),
            .currentZone = m_store.calendar().zone(),
            .isKeptUpToDate = feed.isKeptUpToDate.value_or(false),
            .readsRepetitions = readsRepetitions(feed),
            .from = m_store.calendar().startOfDay(month.addYears(-1)),
            .until = m_store.calendar().startOfDay(month.addYears(2).addMonths(1))};
}

QString CalendarLinks::basisOf(const CalendarFeed &feed) const
{
    const ReadingOptions options = optionsFor(feed);
    QStringList parts{feed.urlString, options.untitled, QString::fromUtf8(options.currentZone.id())};
    if (options.readsRepetitions)
        parts.append(QString::number(options.from.seconds, 'f', 0));
    return parts.join(u' ');
}

const CalendarFeed *CalendarLinks::find(const QUuid &feedID) const
{
    const qsizetype row = rowOf(m_store.calendarFeeds(), feedID);
    return row < 0 ? nullptr : &m_store.calendarFeeds().at(row);
}

void CalendarLinks::setHealth(const LinkHealth &health)
{
    const auto former = std::ranges::find(m_health, health.feedID, &LinkHealth::feedID);
    const bool isNew = former == m_health.end();
    const bool isVisible = isNew || withoutVersion(*former) != withoutVersion(health);
    if (isNew)
        m_health.append(health);
    else
        *former = health;
    if (!isVisible)
        return;
    m_values.saveBlob(keys::linkHealth,
                      [this] { return m_values.preferences().setValue(keys::linkHealth, encodeLinkHealth(m_health)); });
    emit healthChanged(health.feedID);
}

} // namespace tessaly
