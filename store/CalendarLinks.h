#pragma once

#include "model/CalendarFeed.h"
#include "model/ICalendarFacts.h"
#include "model/LinkHealth.h"
#include "model/Result.h"
#include "model/ScheduleItem.h"
#include "store/LinkTurns.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <memory>
#include <utility>

namespace tessaly {

class CalendarFeedReader;
class FeedApplier;
class PlannerStore;
class StoredValues;
struct FeedAnswer;
struct PlannerPorts;
struct ReadCalendar;
struct ReadingOptions;

/// The part of the planner store that works with linked calendars: adds, reads and removes them, brings their events
/// into the schedules, and knows how each link is. Main thread only. What the user asks for is reported on the status
/// line.
class CalendarLinks : public QObject
{
    Q_OBJECT

public:
    /// All must outlive it.
    CalendarLinks(PlannerStore &store, const PlannerPorts &ports, StoredValues &values);
    ~CalendarLinks() override;
    Q_DISABLE_COPY_MOVE(CalendarLinks)

    /// Reads how the links are, once the store has them.
    void load();
    /// Begins to keep links up to date. To be called once, before the event loop runs.
    void start();

    /// Adds the link, shows its schedules and refreshes it. Anything but an http or https link is refused: the message
    /// is set and false returned. Of `choices`, only what the user can choose counts.
    bool addCalendarFeed(const QString &urlString, const CalendarFeed &choices = {});
    /// Downloads the link and applies its events; a failure is reported and changes no schedule.
    void refreshCalendarFeed(const QUuid &feedID);
    void setCalendarFeedError(const Error &error);
    /// Removes the feed and its schedules.
    void deleteCalendarFeed(const QUuid &feedID);
    /// Replaces the feed with the same id, as one step. Where that changes how it is read, it is read again.
    void updateCalendarFeed(const CalendarFeed &feed);

    /// Null until there was a reading.
    [[nodiscard]] const LinkHealth *health(const QUuid &feedID) const;
    /// The last reading that did not fail, also one that brought nothing new.
    [[nodiscard]] std::optional<Instant> lastRead(const CalendarFeed &feed) const;

    using Tried = std::function<void(const Result<CalendarTrial> &)>;
    /// Downloads the link and tells what is behind it, later; changes nothing. What addCalendarFeed() would refuse is
    /// refused likewise.
    bool tryLink(const QString &urlString, const Tried &completion);

    /// How a link that is read now is read.
    [[nodiscard]] ReadingOptions optionsFor(const CalendarFeed &feed) const;
    /// Forgets the updates of a removed feed that are under way.
    void forgetUpdates(const QUuid &feedID);

    /// Another program wants the user to look at a calendar: a link, or the address or path of a file.
    void requestOpening(const QString &place);
    [[nodiscard]] bool hasOpening() const { return !m_opening.isEmpty(); }
    /// The place that was requested last and not taken yet; empty without one.
    [[nodiscard]] QString takeOpening() { return std::exchange(m_opening, QString()); }

signals:
    void openingRequested();
    /// Not for a reading that brought nothing new.
    void healthChanged(const QUuid &feedID);

private:
    /// One reading of a link.
    struct Reading
    {
        QUuid feedID;
        /// Otherwise the link is only kept up to date.
        bool isRequested = true;
        /// See LinkHealth::basis.
        QString basis = {};
        /// Whether the server was asked for what differs from a known version.
        bool isConditional = false;
        /// What has been applied so far has changed schedules, and removed so many with notes or tasks.
        bool hasChanged = false;
        qsizetype lost = 0;
    };

    void followFeeds();
    void read(const QUuid &feedID, bool isRequested);
    void takeAnswer(const Result<FeedAnswer> &answer, const Reading &reading);
    void readBody(const FeedAnswer &answer, const Reading &reading);
    void applyCalendarFeed(ReadCalendar calendar, const FeedAnswer &answer, const Reading &reading);
    void finish(const ReadCalendar &calendar, const FeedAnswer &answer, const Reading &reading);
    [[nodiscard]] LinkHealth healthAfter(const CalendarFacts &facts, const FeedAnswer &answer,
                                         const Reading &reading) const;
    void noteUpdate(const QUuid &feedID);
    /// The link was read.
    void settle(LinkHealth health, const Reading &reading);
    void fail(const Error &error, const Reading &reading);
    void setFailure(LinkHealth &health, const Error &error) const;
    void end(const Reading &reading);
    void countRepetitions(const QByteArray &body, const Reading &reading);
    [[nodiscard]] QString basisOf(const CalendarFeed &feed) const;
    [[nodiscard]] const CalendarFeed *find(const QUuid &feedID) const;
    /// Saves and announces the health unless only the version differs.
    void setHealth(const LinkHealth &health);

    PlannerStore &m_store;
    const PlannerPorts &m_ports;
    StoredValues &m_values;
    LinkTurns m_turns;
    std::unique_ptr<CalendarFeedReader> m_reader;
    std::unique_ptr<FeedApplier> m_applier;
    QList<LinkHealth> m_health;
    /// Readings that brought nothing new are not saved.
    QHash<QUuid, Instant> m_lastRead;
    /// How each link is read, to notice when that changes.
    QHash<QUuid, bool> m_readsRepetitions;
    /// The feeds that the user has asked for and that are being downloaded or read, one entry for each time.
    QList<QUuid> m_requestsUnderWay;
    QString m_opening;
};

} // namespace tessaly
