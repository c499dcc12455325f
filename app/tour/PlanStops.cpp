#include "app/tour/TourStop.h"
#include "store/PlannedItems.h"
#include "store/PlannerStore.h"
#include "views/schedule/ScheduleViewModel.h"

namespace tessaly {

namespace {

/// The plan beside the week with something planned, and perhaps an item on its way to the week.
TourStop planStop(const QString &name, bool isPlacing)
{
    const auto open = [isPlacing](QObject &content, QObject &screen) {
        auto &viewModel = *screen.findChild<ScheduleViewModel *>();
        PlannerStore &store = *viewModel.store();
        const UserCalendar &calendar = store.calendar();
        const QDate saturday = store.today().addDays(Qt::Saturday - store.today().dayOfWeek());
        const Instant start = calendar.instant(saturday, QTime(14, 0));
        store.setPlanShown(true);
        planItem(store, store.reminders().at(1).id, {start, start.plus(defaultScheduleSeconds)});
        shellOf(content).undo()->dismiss();
        const ReminderItem &item = store.reminders().at(3);
        if (isPlacing)
            viewModel.drag()->placeItem(item.id.toString(), item.title,
                                        calendar.instant(saturday.addDays(-1), QTime(13, 0)).seconds);
    };
    const auto close = [](QObject &content, QObject &screen) {
        auto &viewModel = *screen.findChild<ScheduleViewModel *>();
        viewModel.drag()->cancel();
        viewModel.store()->setPlanShown(false);
        undoAndLeave(1)(content, screen);
    };
    return {name, ShellModel::Schedule, open, close};
}

} // namespace

QList<TourStop> planStops()
{
    return {planStop(QStringLiteral("plan"), false), planStop(QStringLiteral("plan-placing"), true)};
}

} // namespace tessaly
