#pragma once

#include "model/UserCalendar.h"

namespace tessaly {

class Archives;
class Backups;
class CalendarExpander;
class Clock;
class EventStore;
class FeedDownloader;
class FileSystem;
class LoginItem;
class NotificationPresenter;
class Preferences;

/// The services of the system that the store works with.
struct PlannerPorts
{
    Preferences &preferences;
    EventStore &eventStore;
    NotificationPresenter &notificationPresenter;
    LoginItem &loginItem;
    /// Starts the program at login while reminders wait, whatever the user chose.
    LoginItem &reminderLoginItem;
    FeedDownloader &feedDownloader;
    const Clock &clock;
    UserCalendar calendar;
    FileSystem &fileSystem;
    /// Absolute path of the folder for documents while the user has chosen none.
    QString documentsFolder;
    /// Absolute path of the folder for what is typed into documents and not saved yet.
    QString draftsFolder;
    /// Absolute path of the folder for documents that were deleted and can still be restored.
    QString deletedFolder;
    Archives &archives;
    /// Absolute path of the folder that an archive is unpacked into.
    QString importFolder;
    Backups &backups;
    /// Absolute path of the folder for the former texts of documents.
    QString versionsFolder;
    const CalendarExpander &calendarExpander;
};

} // namespace tessaly
