#include "app/tour/TourStop.h"
#include "model/ReminderRules.h"
#include "model/Uuid.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"
#include "views/todos/MissedReminders.h"
#include "views/todos/ReminderViewModel.h"

#include <algorithm>

namespace tessaly {

namespace {

void openAllGroups(ReminderViewModel &reminders)
{
    for (int row = 0; row < reminders.rows()->rowCount(); ++row)
        reminders.setExpanded(row, true);
}

/// Reminders of the to-dos with a due date, as if they had been missed; not as a step, so that no other screen says so.
void missReminders(MissedReminders &missed)
{
    const PlannerStore &store = *missed.store();
    QList<WaitingReminder> reminders;
    for (const ReminderItem &item : store.reminders()) {
        if (auto reminder = waitingReminder(item, {}, store.calendar())) {
            reminder->state = ReminderState::Missed;
            reminders.append(*reminder);
        }
    }
    StateChange done;
    missed.store()->waitingReminders().replace({}, reminders, done);
}

void forgetMissed(MissedReminders &missed)
{
    StateChange done;
    WaitingReminders &reminders = missed.store()->waitingReminders();
    reminders.replace(QList(reminders.list()), {}, done);
}

void fillInRepetition(ReminderViewModel &reminders)
{
    constexpr int weekly = 3;
    reminders.setTitle(QStringLiteral("…"));
    reminders.setHasDueDate(true);
    reminders.setRepetition(weekly);
}

void deleteFirstToDo(ReminderViewModel &reminders)
{
    openAllGroups(reminders);
    for (int row = 0; row < reminders.rows()->rowCount(); ++row) {
        if (reminders.rows()->rows().at(row).kind != ReminderRowKind::Kind::Reminder)
            continue;
        reminders.remove(row);
        return;
    }
}

/// What has changed since a restore point.
TourStop earlierVersions()
{
    const auto open = [](QObject &content, QObject &screen) {
        PlannerStore &store = *screen.findChild<ReminderViewModel *>()->store();
        if (store.generations().list().isEmpty()) {
            store.generations().keepBefore(GenerationReason::FirstSync);
            store.generations().keepBefore(GenerationReason::Clear);
        }
        ReminderItem reminder = store.reminders().constLast();
        reminder.title += QStringLiteral(" 2");
        store.updateReminder(reminder);
        store.removeReminder(store.reminders().constFirst().id);
        store.deleteSchedule(store.schedules().constFirst());
        store.addSchedule({.title = reminder.title, .date = store.clock().now()});
        shellOf(content).undo()->dismiss();
        QMetaObject::invokeMethod(&content, "versionsRequested");
    };
    const auto close = [](QObject &content, QObject &screen) {
        constexpr int steps = 4;
        closeNamed(content, QStringLiteral("versions"));
        undoAndLeave(steps)(content, screen);
    };
    return {QStringLiteral("sheet-versions"), ShellModel::Reminders, open, close};
}

/// A to-do that is overdue and repeats, while it is edited.
TourStop editedToDo()
{
    const auto open = [](QObject &, QObject &screen) {
        auto &reminders = *screen.findChild<ReminderViewModel *>();
        PlannerStore &store = *reminders.store();
        const auto dated = std::ranges::find_if(
            store.reminders(), [](const ReminderItem &item) { return item.dueDate && !item.isComplete; });
        ReminderItem late = withDueDate(*dated, store.clock().now().plus(-3600), store.calendar());
        late = withRepetition(late, Repetition::Weekly, false, store.calendar());
        store.updateReminder(late);
        openAllGroups(reminders);
        QMetaObject::invokeMethod(&screen, "edit", Q_ARG(int, reminders.reveal(uuidText(late.id))));
    };
    const auto close = [](QObject &content, QObject &screen) {
        (void)screen.findChild<ReminderViewModel *>()->endEditing(false);
        undoAndLeave(1)(content, screen);
    };
    return {QStringLiteral("todos-edit"), ShellModel::Reminders, open, close};
}

/// A title that says a time.
void typePhrase(ReminderViewModel &reminders)
{
    reminders.setTitle(
        reminders.store()->text(QStringLiteral("明天下午3点交周报"), QStringLiteral("Report by Friday 5pm")));
}

} // namespace

QList<TourStop> toDoStops()
{
    return {
        {QStringLiteral("todos"), ShellModel::Reminders},
        {QStringLiteral("todos-open"), ShellModel::Reminders, onViewModel(openAllGroups), leaveToOverview},
        editedToDo(),
        {QStringLiteral("todos-phrase"), ShellModel::Reminders, onViewModel(typePhrase), leaveToOverview},
        {QStringLiteral("todos-missed"), ShellModel::Reminders, onViewModel(missReminders), onViewModel(forgetMissed)},
        {QStringLiteral("todos-repeat"), ShellModel::Reminders, onViewModel(fillInRepetition), leaveToOverview},
        {QStringLiteral("todos-undo"), ShellModel::Reminders, onViewModel(deleteFirstToDo), undoAndLeave(1)},
        earlierVersions(),
    };
}

} // namespace tessaly
