#include "app/tour/TourStop.h"
#include "views/schedule/CalendarSelectionModel.h"
#include "views/schedule/ScheduleViewModel.h"

namespace tessaly {

namespace {

TourStop onSchedule(const QString &name, void (*open)(ScheduleViewModel &), void (*close)(ScheduleViewModel &))
{
    return {name, ShellModel::Schedule, onViewModel(open), onViewModel(close)};
}

/// Turns all choices for the week and the month on, with something outside the shown hours, or all but the row above
/// the hours off.
void choose(ScheduleViewModel &viewModel, bool isOn)
{
    DisplayChoices &choices = *viewModel.store()->displayChoices();
    for (const QString &key : DisplayChoices::storedKeys())
        choices.setStored(key, isOn);
    choices.setHidesWeekend(false);
    choices.setHasAllDayRow(true);
    viewModel.store()->setDisplayEndHour(isOn ? 18 : 24);
    viewModel.store()->setDisplayStartHour(isOn ? 10 : 0);
}

/// The import sheet with something of its links.
TourStop onLinks(const QString &name, void (*open)(CalendarSelectionModel &))
{
    const auto openSheet =
        onViewModel<ScheduleViewModel>([](ScheduleViewModel &viewModel) { viewModel.sheets()->openImportSettings(); });
    const auto closeSheet =
        onViewModel<ScheduleViewModel>([](ScheduleViewModel &viewModel) { viewModel.sheets()->closeSheet(); });
    const auto openLinks = onViewModel(open);
    const auto closeLinks = onViewModel<CalendarSelectionModel>([](CalendarSelectionModel &links) {
        links.details()->close();
        links.trial()->setUrl({});
    });
    const auto both = [](const auto &first, const auto &second) {
        return [first, second](QObject &content, QObject &screen) {
            first(content, screen);
            second(content, screen);
        };
    };
    return {name, ShellModel::Schedule, both(openSheet, openLinks), both(closeLinks, closeSheet)};
}

} // namespace

QList<TourStop> scheduleStops()
{
    using ViewModel = ScheduleViewModel;
    const auto closeSheet = [](ViewModel &viewModel) { viewModel.sheets()->closeSheet(); };
    return {
        {QStringLiteral("schedule-week"), ShellModel::Schedule},
        onSchedule(
            QStringLiteral("schedule-month"), [](ViewModel &viewModel) { viewModel.setScope(ViewModel::Scope::Month); },
            [](ViewModel &viewModel) { viewModel.setScope(ViewModel::Scope::Week); }),
        onSchedule(
            QStringLiteral("schedule-week-choices"), [](ViewModel &viewModel) { choose(viewModel, true); },
            [](ViewModel &viewModel) { choose(viewModel, false); }),
        onSchedule(
            QStringLiteral("schedule-month-choices"),
            [](ViewModel &viewModel) {
                choose(viewModel, true);
                viewModel.setScope(ViewModel::Scope::Month);
            },
            [](ViewModel &viewModel) {
                viewModel.setScope(ViewModel::Scope::Week);
                choose(viewModel, false);
            }),
        onSchedule(
            QStringLiteral("sheet-import"), [](ViewModel &viewModel) { viewModel.sheets()->openImportSettings(); },
            closeSheet),
        onLinks(QStringLiteral("sheet-import-details"), [](CalendarSelectionModel &links) { links.showDetails(0); }),
        onLinks(QStringLiteral("sheet-import-trial"),
                [](CalendarSelectionModel &links) {
                    links.trial()->open(QStringLiteral("https://example.org/courses/autumn.ics"));
                }),
        onSchedule(
            QStringLiteral("sheet-display"), [](ViewModel &viewModel) { viewModel.sheets()->openDisplaySettings(); },
            closeSheet),
        onSchedule(
            QStringLiteral("sheet-sync"), [](ViewModel &viewModel) { viewModel.sheets()->openSyncSettings(); },
            closeSheet),
        onSchedule(
            QStringLiteral("note"), [](ViewModel &viewModel) { viewModel.editListed(0); },
            [](ViewModel &viewModel) { viewModel.sheets()->closeNote(); }),
        onSchedule(
            QStringLiteral("note-view"),
            [](ViewModel &viewModel) {
                viewModel.editListed(0);
                viewModel.sheets()->note()->cancel();
            },
            [](ViewModel &viewModel) { viewModel.sheets()->closeNote(); }),
        atFoot(QStringLiteral("schedule-lower"), ShellModel::Schedule),
    };
}

} // namespace tessaly
