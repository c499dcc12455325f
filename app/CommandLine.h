#pragma once

#include "app/PlannerCommand.h"

#include <QString>
#include <QStringList>

namespace tessaly {

/// What the program was asked to do when it was started.
struct CommandLine
{
    enum class Task {
        Run,
        /// Load every screen; the exit status says whether any screen warned.
        SelfTest,
        /// Write pictures of every screen.
        Pictures,
        /// Carry out `command` without a window.
        Command,
        /// Only print `text` on the standard output.
        Print,
        /// The arguments are invalid; `text` says why.
        Refuse,
    };

    Task task = Task::Run;
    /// Absolute path of the planner that starts at login. Not read from the arguments.
    QString program = {};
    /// Absolute. Everything that the program keeps lives in it.
    QString dataDirectory = {};
    bool isDataDirectoryGiven = false;
    /// The calendars that are synced.
    enum class Calendars {
        /// Those of the system's service where it is offered, otherwise those in the data directory.
        Automatic,
        /// Those of Evolution Data Server.
        Evolution,
        /// Those in `calendarDirectory`.
        Directory,
        None,
    };
    Calendars calendars = Calendars::Automatic;
    /// Absolute.
    QString calendarDirectory = {};
    /// Sample data in memory instead of the data directory.
    bool isDemo = false;
    /// Start without a window and stay when it is closed, so that reminders arrive.
    bool isBackground = false;
    /// Show the field that finds and adds over the window.
    bool isFinding = false;
    QString picturesDirectory = {};
    PlannerCommand command = {};
    /// The link, or the absolute path of the file, whose calendar is to be shown in the window; may be empty.
    QString opened = {};
    QString text = {};
};

/// Removes XDG base directories that are not absolute paths from the environment: they have to be ignored (XDG Base
/// Directory Specification 0.8), but Qt 6.4 uses them. To be called before anything asks for a standard directory.
void forgetRelativeBaseDirectories();

/// Sets TZ to a form that Qt can open: it accepts names and the rules of POSIX.1, 8.3, but neither paths nor names such
/// as "GMT-3", and reverses "UTC+3". Where no zone can be opened, the C library's present offset from UTC is used. To
/// be called before anything asks for the time.
void nameTimeZone();

/// Reads the arguments; the first is the program's name.
[[nodiscard]] CommandLine parseCommandLine(const QStringList &arguments);

} // namespace tessaly
