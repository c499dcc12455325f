#pragma once

#include "model/CalendarFeed.h"
#include "model/Restoration.h"
#include "model/RowsChange.h"
#include "store/CalendarFiles.h"
#include "store/CalendarLinks.h"
#include "store/CalendarSync.h"
#include "store/DocumentLibrary.h"
#include "store/Generations.h"
#include "store/NoteDrafts.h"
#include "store/PlannerArchive.h"
#include "store/PlannerSettings.h"
#include "store/SavedDataWriter.h"
#include "store/ScheduleReminders.h"
#include "store/UndoHistory.h"
#include "store/WaitingReminders.h"

#include <functional>
#include <memory>

namespace tessaly {

/// The one observable object: owns every record, saves each change at once, restores everything at start. Settings and
/// the status line are in its base. Main thread only. Every change is saved and raises its signal once.
class PlannerStore : public tessaly::PlannerSettings // in full, or the tools of QML do not find it
{
    Q_OBJECT
    Q_PROPERTY(tessaly::CalendarSync *calendarSync READ calendarSync CONSTANT)
    Q_PROPERTY(bool hadUnreadableData READ hadUnreadableData CONSTANT)

public:
    /// Loads everything and writes nothing. The ports must outlive the store.
    explicit PlannerStore(const PlannerPorts &ports, QObject *parent = nullptr);
    /// Retries unsaved changes once more.
    ~PlannerStore() override;

    // Published collections, in stored order. Never keep a copy of a list: it would make the next one-record change
    // copy every record.
    [[nodiscard]] const QList<ScheduleItem> &schedules() const { return m_data.schedules; }
    [[nodiscard]] const QList<ReminderItem> &reminders() const { return m_data.reminders; }
    [[nodiscard]] const QList<Goal> &goals() const { return m_data.goals; }
    [[nodiscard]] const QList<CalendarFeed> &calendarFeeds() const { return m_calendarFeeds; }
    /// Schedules, to-dos and goals.
    [[nodiscard]] const SavedData &data() const { return m_data; }

    /// The calendars of the system.
    [[nodiscard]] CalendarSync *calendarSync() { return &m_calendarSync; }
    /// The linked calendars.
    [[nodiscard]] CalendarLinks &calendarLinks() { return m_calendarLinks; }
    [[nodiscard]] const CalendarLinks &calendarLinks() const { return m_calendarLinks; }
    /// Calendar files that are read once.
    [[nodiscard]] CalendarFiles &calendarFiles() { return m_calendarFiles; }
    /// The Markdown documents and their categories.
    [[nodiscard]] DocumentLibrary &documentLibrary() { return m_documentLibrary; }
    [[nodiscard]] const DocumentLibrary &documentLibrary() const { return m_documentLibrary; }

    /// The earlier states of the planner.
    [[nodiscard]] Generations &generations() { return m_generations; }
    /// The reminders that are still to come or unanswered.
    [[nodiscard]] WaitingReminders &waitingReminders() { return m_waitingReminders; }
    /// When schedules remind.
    [[nodiscard]] ScheduleReminders &scheduleReminders() { return m_scheduleReminders; }
    /// Everything as one file.
    [[nodiscard]] PlannerArchive &archive() { return m_archive; }
    /// Unsaved text of schedule notes.
    [[nodiscard]] NoteDrafts &noteDrafts() { return m_noteDrafts; }

    /// Whether some stored data could not be decoded at the start, so that less may be shown than was entered. It is
    /// copied to another key before a save overwrites it.
    [[nodiscard]] bool hadUnreadableData() const { return m_hadUnreadableData; }

    // Steps. Everything that the user changes goes through perform(); what a sync or the update of a link brings does
    // not, and stays when a step is undone.

    /// Applies the change and records it as one step, named after what it does unless a name is given; `report`
    /// says what it removed where that is not plain. Each list it
    /// touches is assigned once, and everything is saved in one transaction; then each list's signal is emitted. A
    /// removed link takes its schedules along; the events of schedules follow in the calendar, reminders follow their
    /// to-dos. Returns what was really changed, see applyChanges(); a change without effect is no step.
    StateChange perform(const StateChange &change, const std::optional<TextPair> &name = std::nullopt,
                        const TextPair &report = {});
    /// Takes back the last step, or does it again; nothing without one. See UndoHistory::undone().
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    [[nodiscard]] UndoHistory &history() { return m_history; }

    // Earlier versions

    /// All that an earlier version could bring back.
    [[nodiscard]] PlannerState state() const;
    /// Finds out in another thread what would lead from the present state to that of the generation, see restoration();
    /// an error when it is damaged.
    void compareWith(const Generation &generation, const std::function<void(const Result<StateChange> &)> &completion);
    /// Keeps a restore point and performs a part of a restoration as one step. How many records and settings it
    /// changed.
    qsizetype restore(const StateChange &change);

    /// Completes what a crash may have left half done. To be called once, before the event loop runs.
    void start();

    // Records. Each method is one step. Records are found by their id; an unknown id changes nothing.

    /// Appends the schedule and, given a calendar, writes it there once access is granted.
    void addSchedule(const ScheduleItem &item, const std::optional<QString> &calendarIdentifier = std::nullopt);
    /// Replaces the schedule with the same id, and changes its calendar event if there is one.
    void updateSchedule(const ScheduleItem &item);
    // Lets `change` edit the list in place and return the rows it changed, or nothing if none. The calendar is not
    // touched, and this is no step.
    void editSchedules(const std::function<std::optional<RowsChange>(QList<ScheduleItem> &)> &change);
    void editCalendarFeeds(const std::function<std::optional<RowsChange>(QList<CalendarFeed> &)> &change);
    /// Removes the schedule and its calendar event.
    void deleteSchedule(const ScheduleItem &item);

    /// Appends the to-do. With a due date, its reminder waits for that minute; the message says when that has passed.
    void addReminder(const ReminderItem &item);
    /// Replaces the to-do with the same id. Completing it removes its reminder, reopening it restores the reminder. If
    /// it repeats, completing it adds the next one, which takes the repetition over: reopened, it does not repeat.
    void updateReminder(const ReminderItem &item);
    /// What completing the to-do then would add; nothing if it does not repeat, or has no due date.
    [[nodiscard]] std::optional<ReminderItem> nextRepetition(const ReminderItem &item, Instant completed) const;
    /// Removes every to-do with the id. Its reminder is still shown.
    void removeReminder(const QUuid &id);

    /// Does about the reminders what the user chose, as one step: completes their to-dos, puts them off, or only
    /// removes them. The due dates stay as they are. An identifier that is not in the list is left out.
    void answerReminders(const QStringList &identifiers, ReminderAnswer answer);

    /// Shows a notification, once, that the program keeps running without its window because reminders wait.
    void reportResidence();

    void addGoal(const Goal &goal);
    /// Replaces the goal with the same id.
    void updateGoal(const Goal &goal);
    /// Removes every goal with the id.
    void removeGoal(const QUuid &id);

    /// Empties notes and tasks of every schedule and removes all to-dos and goals; the schedules remain.
    Q_INVOKABLE void clearPersonalContent();

signals:
    void schedulesChanged(const tessaly::RowsChange &change);
    void remindersChanged(const tessaly::RowsChange &change);
    void goalsChanged(const tessaly::RowsChange &change);
    void calendarFeedsChanged(const tessaly::RowsChange &change);

private:
    /// Saves the list, which the caller has changed in these rows, and emits its signal.
    void schedulesAssigned(const RowsChange &rows);
    void saveCalendarFeeds();

    /// The rows that a change touched.
    struct Touched
    {
        std::optional<RowsChange> schedules = {};
        std::optional<RowsChange> reminders = {};
        std::optional<RowsChange> goals = {};
        std::optional<RowsChange> feeds = {};
        DocumentLibrary::Touched library = {};
    };
    [[nodiscard]] StateChange apply(StateChange change);
    /// apply() for a step that is undone or redone: events that were removed with their schedules are written again.
    struct AppliedStep
    {
        StateChange done = {};
        bool hasNewEvent = false;
    };
    [[nodiscard]] AppliedStep applyStep(StateChange change);
    [[nodiscard]] Touched applyToLists(const StateChange &change, StateChange &done);
    void announce(const Touched &touched);
    /// What replacing the to-do changes: itself, and the next one if it repeats and is completed.
    [[nodiscard]] QList<RecordChange<ReminderItem>> changesFor(const ReminderItem &before, ReminderItem after,
                                                               qsizetype row) const;
    /// Adds what the changes of to-dos and schedules mean for the reminders that wait.
    void followReminders(StateChange &change) const;
    void takeSchedulesOfRemovedFeeds(StateChange &change);
    /// Unlinks the schedules that come back without their event; in which calendar each wants it.
    [[nodiscard]] static QHash<QUuid, QString> takeWantedEvents(QList<RecordChange<ScheduleItem>> &changes);
    /// Removes and changes the events of schedules; a removed schedule whose event goes with it is marked as such.
    void writeToCalendar(QList<RecordChange<ScheduleItem>> &changes);
    /// Creates the event once access is granted.
    void createEvent(const QUuid &scheduleID, const QString &calendarIdentifier);

    UndoHistory m_history;
    SavedData m_data;
    SavedDataWriter m_dataWriter;
    ScheduleReminders m_scheduleReminders;
    WaitingReminders m_waitingReminders;
    QList<CalendarFeed> m_calendarFeeds;
    DocumentLibrary m_documentLibrary;
    NoteDrafts m_noteDrafts;
    Generations m_generations;
    PlannerArchive m_archive;
    CalendarSync m_calendarSync;
    CalendarLinks m_calendarLinks;
    CalendarFiles m_calendarFiles;
    bool m_hadUnreadableData = false;
};

} // namespace tessaly
