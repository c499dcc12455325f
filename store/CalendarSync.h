#pragma once

#include "model/CalendarGroups.h"
#include "model/CalendarMerge.h"
#include "platform/EventStore.h"
#include "store/Message.h"
#include "store/SyncOutcome.h"

#include <QObject>
#include <QTimer>

#include <optional>

namespace tessaly {

class PlannerStore;
struct PlannerPorts;

/// How far a sync goes.
struct SyncScope
{
    bool exportsLocalSchedules = false;
    /// From 1900 to 2100; otherwise a year around now.
    bool isFullHistory = false;
    /// Whether the user asked for it.
    bool isRequested = false;
};

/// The part of the planner store that works with the system's calendars: lists them, brings their events into the
/// schedules, writes schedules to them, now or whenever they change. Main thread only. Outcomes and failures are
/// reported on the status line.
class CalendarSync : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isAvailable READ isAvailable CONSTANT)
    Q_PROPERTY(QString serviceName READ serviceName NOTIFY serviceNameChanged)
    Q_PROPERTY(bool hasLoadedCalendars READ hasLoadedCalendars NOTIFY availableCalendarsChanged)
    Q_PROPERTY(bool isSyncing READ isSyncing NOTIFY isSyncingChanged)
    Q_PROPERTY(bool hasHeldRemovals READ hasHeldRemovals NOTIFY outcomeChanged)
    Q_PROPERTY(Consent consent READ consent NOTIFY consentChanged)
    Q_PROPERTY(bool isConsentAwaited READ isConsentAwaited NOTIFY consentChanged)

public:
    /// Whether the user lets the planner use the system's calendars.
    enum class Consent {
        NotNeeded, ///< the calendars are the planner's own, or the system asks
        Undecided,
        Allowed,
        Refused,
    };
    Q_ENUM(Consent)

    using AccessCompletion = EventStore::AccessCompletion;

    /// Both must outlive it.
    CalendarSync(PlannerStore &store, const PlannerPorts &ports);

    /// Whether calendars can ever be listed.
    [[nodiscard]] bool isAvailable() const;
    /// What the user knows the calendars as, within a sentence, in the interface language.
    [[nodiscard]] QString serviceName() const;
    /// Whether the list of calendars has been read, which may be empty.
    [[nodiscard]] bool hasLoadedCalendars() const { return m_hasLoadedCalendars; }
    /// Every calendar, by account and title.
    [[nodiscard]] const QList<CalendarOption> &availableCalendars() const { return m_availableCalendars; }
    /// Those offered for new events: the ones that can be written, in the same order.
    [[nodiscard]] QList<CalendarOption> calendarChoices() const { return writableCalendars(m_availableCalendars); }

    // Consent
    [[nodiscard]] Consent consent() const;
    /// Whether something waits for the user's first answer.
    [[nodiscard]] bool isConsentAwaited() const { return m_isConsentAsked || !m_accessRequests.isEmpty(); }
    /// Puts the question once more.
    Q_INVOKABLE void askForConsent();
    /// Keeps the answer and lets go on, or refuses, what waits for it. Taking the consent back ends the automatic sync
    /// until it is given again; the schedules stay.
    Q_INVOKABLE void answerConsent(bool isAllowed);
    /// Answers whether the calendars may be used, once the user has answered where the planner has to ask.
    void requestCalendarAccess(AccessCompletion completion);

    // Calendars and sync
    /// Lists the calendars; refusal and failure are reported.
    Q_INVOKABLE void requestCalendarAccessAndLoad();
    /// Imports the events of a year around now from the selected calendars.
    Q_INVOKABLE void importSelectedCalendars();
    /// Selects every calendar and imports.
    Q_INVOKABLE void importAllCalendars();
    /// Imports the whole history and exports the schedules that are in no calendar.
    Q_INVOKABLE void syncWithAppleCalendar();
    /// Syncs now and after each change of the calendars, when automatic sync is on and access is granted; refusal is
    /// silent.
    void startAutomaticCalendarSync();
    /// Does nothing while a sync is running, or without the user's consent.
    void performCalendarSync(SyncScope scope);

    [[nodiscard]] bool isSyncing() const { return m_isSyncing; }
    [[nodiscard]] const std::optional<SyncOutcome> &lastSync() const { return m_lastSync; }
    /// The calendars that the last sync left out, wholly or in part.
    [[nodiscard]] const QList<UnreadCalendar> &leftOut() const { return m_leftOut; }
    [[nodiscard]] const QList<HeldRemoval> &heldRemovals() const { return m_heldRemovals; }
    [[nodiscard]] bool hasHeldRemovals() const { return !m_heldRemovals.isEmpty(); }
    /// Repeats the last sync, and removes what it asked about.
    Q_INVOKABLE void removeHeldSchedules();
    /// Makes these schedules the planner's own, and repeats the last sync. They are not written to a calendar; each
    /// continues its event if that comes back.
    Q_INVOKABLE void keepHeldSchedules();

    // The event of one schedule
    /// Whether the calendar is there and the user allows its use.
    [[nodiscard]] bool canCreateEventIn(const QString &calendarIdentifier) const;
    /// Creates the event of a stored schedule in the calendar and links the two; a failure is reported.
    void createEvent(const QUuid &scheduleID, const QString &calendarIdentifier);
    /// Gives title and times of the schedule to its event, if it has one and the user allows it. A failure is ignored.
    void changeEvent(const ScheduleItem &schedule);
    /// Removes the event of the schedule; likewise. Whether the calendar was asked to.
    bool removeEvent(const ScheduleItem &schedule);

signals:
    void serviceNameChanged();
    void availableCalendarsChanged();
    void isSyncingChanged();
    void consentChanged();
    /// The last sync, what it left out, or what it asks about.
    void outcomeChanged();

private:
    /// A schedule that has been saved as an event.
    struct Exported
    {
        QUuid scheduleID;
        CalendarEvent event;
    };
    /// The sync that is running.
    struct Run
    {
        SyncScope scope = {};
        Instant from = {};
        Instant to = {};
        QStringList calendars = {};
        QList<UnreadCalendar> unread = {};
        /// What is merged with which schedules.
        CalendarSyncInput input = {};
        QList<ScheduleItem> schedules = {};
        CalendarMerge merge = {};
        QList<Exported> exported = {};
        qsizetype exportsUnderWay = 0;
        qint64 exportCount = 0;
        qint64 failedExports = 0;
        /// What could not be written to a calendar meanwhile; the outcome must not hide it.
        Message failure = {};
        bool isMerged = false;
        bool hasChanged = false;
    };

    void setAutomatic(bool isOn);
    void grantAccess(bool isAllowed, AccessCompletion completion);
    void loadCalendars();
    void observeCalendarChanges();
    void scheduleAutomaticSync();
    /// Why the selection leaves nothing to sync with.
    [[nodiscard]] std::optional<TextPair> selectionObstacle() const;
    void importOrSync(const TextPair &beginning, const TextPair &refusal, SyncScope scope);

    void fetch();
    void reportReading();
    void takeFetched(const FetchedEvents &fetched);
    void merge();
    void applyMerge();
    /// Before a sync that changes the schedules for the first time, or takes many away.
    void keepRestorePoint();
    void writeToCalendars();
    [[nodiscard]] CalendarSyncInput inputFor(const FetchedEvents &fetched) const;
    void exportLocalSchedules();
    void scheduleExported(const QUuid &scheduleID, const Result<CalendarEvent> &saved);
    void endSync();
    void reportOutcome();
    void repeatHeldSync();
    void reportUnreachable(const Error &error);

    /// Links each with its event; those that are gone by now take their event along.
    void link(const QList<Exported> &exported);
    /// Whether the user lets the planner use the calendars.
    [[nodiscard]] bool isAllowed() const { return consent() == Consent::NotNeeded || consent() == Consent::Allowed; }
    /// Says that the user's change of a calendar's schedule did not reach the calendar, where access was withdrawn.
    void reportUnwritten(const ScheduleItem &schedule);
    void writeBegan();
    void writeEnded();

    PlannerStore &m_store;
    const PlannerPorts &m_ports;
    QList<CalendarOption> m_availableCalendars;
    /// Waiting for the user's answer.
    QList<AccessCompletion> m_accessRequests;
    QTimer m_pendingSync;
    /// Runs while events are fetched.
    QTimer m_readingTicks;
    Run m_run;
    /// Of the sync that held the removals: the answer concerns what it looked at, neither more nor less.
    SyncScope m_heldScope;
    QSet<QUuid> m_approvedRemovals;
    QList<HeldRemoval> m_heldRemovals;
    QList<UnreadCalendar> m_leftOut;
    std::optional<SyncOutcome> m_lastSync;
    std::optional<bool> m_consentAnswer;
    /// Writes to the calendar that are not answered yet, and how many there ever were: events fetched while one went on
    /// may be those of before.
    qsizetype m_writesUnderWay = 0;
    quint64 m_writesBegun = 0;
    quint64 m_writesAtFetch = 0;
    bool m_isFetchWaiting = false;
    bool m_hasLoadedCalendars = false;
    bool m_isConsentAsked = false;
    bool m_isObserving = false;
    bool m_isSyncing = false;
};

} // namespace tessaly
