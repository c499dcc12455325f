#pragma once

#include "views/shell/ShellModel.h"

#include <QList>
#include <QString>

#include <functional>

namespace tessaly {

/// A place to visit: a screen, and what opens and closes something over it.
struct TourStop
{
    QString name;
    ShellModel::SidebarItem section;
    /// Both get the window's content and the screen in it; may be empty.
    std::function<void(QObject &content, QObject &screen)> open = {};
    std::function<void(QObject &content, QObject &screen)> close = {};
};

/// Those of each area, in the order in which they are visited.
[[nodiscard]] QList<TourStop> scheduleStops();
[[nodiscard]] QList<TourStop> planStops();
[[nodiscard]] QList<TourStop> toDoStops();
[[nodiscard]] QList<TourStop> goalStops();
[[nodiscard]] QList<TourStop> documentStops();
/// What opens over the window, whatever the screen.
[[nodiscard]] QList<TourStop> windowStops();

/// How long a stop waits for what comes from another process or thread.
constexpr int tourPatienceMs = 20'000;
/// Lets the program go on for a moment in a loop like its own: in another, nothing is deleted later and the web engine
/// hardly moves.
void rest();

/// Calls the function with the screen's view-model.
template <class ViewModel>
std::function<void(QObject &, QObject &)> onViewModel(void (*verb)(ViewModel &))
{
    return [verb](QObject &, QObject &screen) {
        auto *viewModel = screen.findChild<ViewModel *>();
        if (!viewModel)
            qFatal("The screen has no %s", ViewModel::staticMetaObject.className());
        verb(*viewModel);
    };
}

/// The next visit creates the screen again.
void leaveToOverview(QObject &content, QObject &screen);
/// Undoes what a stop has done, and the message about it with it.
[[nodiscard]] std::function<void(QObject &, QObject &)> undoAndLeave(int steps);
/// The foot of a long screen.
[[nodiscard]] TourStop atFoot(const QString &name, ShellModel::SidebarItem section);
[[nodiscard]] ShellModel &shellOf(QObject &content);
/// Closes a sheet or a page over the window, should it be there.
void closeNamed(const QObject &content, const QString &name);

} // namespace tessaly
