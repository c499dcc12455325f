#include "model/FeedMerge.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>

#include <algorithm>
#include <iterator>

namespace tessaly {

namespace {

bool isOfCalendar(const ScheduleItem &item)
{
    return item.calendarIdentifier && !isFeedCalendar(*item.calendarIdentifier);
}

/// A removed schedule whose event was removed with it keeps the calendar alone: coming back, it gets a new event there.
bool wantsEvent(const ScheduleItem &item)
{
    return isOfCalendar(item) && !item.calendarEventIdentifier;
}

bool isOtherEvent(const ScheduleItem &before, const ScheduleItem &after)
{
    return before.title != after.title || before.date != after.date || before.end() != after.end();
}

} // namespace

StateChange PlannerStore::perform(const StateChange &change, const std::optional<TextPair> &name,
                                  const TextPair &report)
{
    StateChange followed = change;
    followReminders(followed);
    StateChange done = apply(std::move(followed));
    if (done.isEmpty())
        return done;
    StepDescription description = describe(done);
    if (name) {
        // Such as an import, which is more than what it happens to remove.
        if (report.chinese.isEmpty())
            description.removed.clear();
        description.name = *name;
        description.report = report;
    }
    m_history.record({description, done}, clock().now());
    return done;
}

void PlannerStore::undo()
{
    if (!m_history.nextUndo())
        return;
    const UndoStep step = m_history.takeUndo();
    const auto [done, hasNewEvent] = applyStep(inverted(step.change));
    m_history.putUndone({step.description, inverted(done)});
    emit m_history.undone({step.description, done}, hasNewEvent);
}

void PlannerStore::redo()
{
    if (!m_history.nextRedo())
        return;
    const UndoStep step = m_history.takeRedo();
    const StateChange done = applyStep(step.change).done;
    m_history.putRedone({step.description, done});
    emit m_history.redone({step.description, done});
}

PlannerStore::AppliedStep PlannerStore::applyStep(StateChange change)
{
    if (change.leavesCalendars)
        return {.done = apply(std::move(change))};
    const QHash<QUuid, QString> wantedEvents = takeWantedEvents(change.schedules);
    AppliedStep applied{.done = apply(std::move(change))};
    for (auto wanted = wantedEvents.cbegin(); wanted != wantedEvents.cend(); ++wanted) {
        applied.hasNewEvent = applied.hasNewEvent || m_calendarSync.canCreateEventIn(*wanted);
        createEvent(wanted.key(), *wanted);
    }
    return applied;
}

StateChange PlannerStore::apply(StateChange change)
{
    takeSchedulesOfRemovedFeeds(change);
    StateChange done{.leavesCalendars = change.leavesCalendars};
    Touched touched;
    values().together([&] {
        touched = applyToLists(change, done);
        for (auto setting = change.settings.cbegin(); setting != change.settings.cend(); ++setting) {
            if (const auto applied = applySetting(setting.key(), *setting))
                done.settings.insert(setting.key(), *applied);
        }
    });
    announce(touched);
    if (done.settings.contains(keys::leadMinutes))
        m_scheduleReminders.readLeadMinutes();
    if (!change.leavesCalendars)
        writeToCalendar(done.schedules);
    return done;
}

PlannerStore::Touched PlannerStore::applyToLists(const StateChange &change, StateChange &done)
{
    const auto applyTo = [&](auto &records, const auto &changes, auto &doneChanges) {
        auto applied = applyChanges(records, changes);
        doneChanges = std::move(applied.changes);
        return applied.rows;
    };
    const auto save = [this](SavedDataEncoder::Section section, const std::optional<RowsChange> &rows) {
        if (rows)
            m_dataWriter.save(m_data, section, *rows);
    };
    m_waitingReminders.replace(change.waitingBefore, change.waitingAfter, done);
    Touched touched;
    touched.schedules = applyTo(m_data.schedules, change.schedules, done.schedules);
    save(SavedDataEncoder::Section::Schedules, touched.schedules);
    touched.reminders = applyTo(m_data.reminders, change.reminders, done.reminders);
    save(SavedDataEncoder::Section::Reminders, touched.reminders);
    touched.goals = applyTo(m_data.goals, change.goals, done.goals);
    save(SavedDataEncoder::Section::Goals, touched.goals);
    if (!touched.reminders && (!done.waitingBefore.isEmpty() || !done.waitingAfter.isEmpty()))
        m_dataWriter.save();
    touched.feeds = applyTo(m_calendarFeeds, change.feeds, done.feeds);
    if (touched.feeds)
        saveCalendarFeeds();
    touched.library = m_documentLibrary.apply(change, done);
    return touched;
}

void PlannerStore::announce(const Touched &touched)
{
    if (touched.schedules)
        emit schedulesChanged(*touched.schedules);
    if (touched.reminders)
        emit remindersChanged(*touched.reminders);
    if (touched.goals)
        emit goalsChanged(*touched.goals);
    if (touched.feeds)
        emit calendarFeedsChanged(*touched.feeds);
    m_documentLibrary.announce(touched.library);
}

void PlannerStore::followReminders(StateChange &change) const
{
    const QString title = text(QStringLiteral("提醒事项"), QStringLiteral("Reminder"));
    QList<WaitingReminder> waiting = m_waitingReminders.list();
    for (const RecordChange<ReminderItem> &each : std::as_const(change.reminders)) {
        if (!each.after)
            continue;
        const ReminderItem *before = each.before ? &*each.before : nullptr;
        auto after = waitingAfter(before, *each.after, title, waiting, calendar(), clock().now());
        if (!after)
            continue;
        waiting = *std::move(after);
        // Although none may wait: the desktop may be showing it.
        if (const auto former = before ? waitingReminder(*before, title, calendar()) : std::nullopt)
            change.waitingBefore.append(*former);
    }
    for (const RecordChange<ScheduleItem> &each : std::as_const(change.schedules)) {
        const bool stays = !each.before || (each.after && each.after->date == each.before->date);
        if (!stays && !waiting.isEmpty())
            waiting.removeIf([former = ScheduleReminders::identifier(*each.before)](const WaitingReminder &reminder) {
                return reminder.identifier == former;
            });
    }
    const auto addMissing = [](QList<WaitingReminder> &to, const QList<WaitingReminder> &of,
                               const QList<WaitingReminder> &in) {
        std::ranges::copy_if(of, std::back_inserter(to), [&in](const auto &each) { return !in.contains(each); });
    };
    addMissing(change.waitingBefore, m_waitingReminders.list(), waiting);
    addMissing(change.waitingAfter, waiting, m_waitingReminders.list());
}

void PlannerStore::takeSchedulesOfRemovedFeeds(StateChange &change)
{
    QSet<QString> calendars;
    for (const RecordChange<CalendarFeed> &feed : std::as_const(change.feeds)) {
        if (feed.after || rowOf(m_calendarFeeds, feed.id) < 0)
            continue;
        calendars.insert(feedCalendarIdentifier(feed.id));
        m_calendarLinks.forgetUpdates(feed.id);
    }
    if (calendars.isEmpty())
        return;
    // Also those that an update brought after the step.
    for (qsizetype row = 0; row < m_data.schedules.size(); ++row) {
        const ScheduleItem &item = m_data.schedules.at(row);
        if (item.calendarIdentifier && calendars.contains(*item.calendarIdentifier))
            change.schedules.append(removalOf(item, row));
    }
}

QHash<QUuid, QString> PlannerStore::takeWantedEvents(QList<RecordChange<ScheduleItem>> &changes)
{
    QHash<QUuid, QString> calendars;
    for (RecordChange<ScheduleItem> &change : changes) {
        if (change.before || !change.after || !wantsEvent(*change.after))
            continue;
        calendars.insert(change.id, *change.after->calendarIdentifier);
        change.after->calendarIdentifier.reset();
        change.after->calendarColorHex.reset();
    }
    return calendars;
}

void PlannerStore::writeToCalendar(QList<RecordChange<ScheduleItem>> &changes)
{
    for (RecordChange<ScheduleItem> &change : changes) {
        if (!change.after) {
            const bool hasEvent = !change.before->calendarIdentifier || isOfCalendar(*change.before);
            if (hasEvent && m_calendarSync.removeEvent(*change.before))
                change.before->calendarEventIdentifier.reset();
        } else if (change.before && isOtherEvent(*change.before, *change.after)) {
            m_calendarSync.changeEvent(*change.after);
        }
    }
}

void PlannerStore::createEvent(const QUuid &scheduleID, const QString &calendarIdentifier)
{
    m_calendarSync.requestCalendarAccess(
        [self = QPointer(this), scheduleID, calendarIdentifier](const Result<bool> &granted) {
            if (self && granted && granted.value())
                self->m_calendarSync.createEvent(scheduleID, calendarIdentifier);
        });
}

} // namespace tessaly
