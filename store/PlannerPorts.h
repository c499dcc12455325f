#pragma once

#include "model/UserCalendar.h"

namespace tessaly {

class Clock;
class EventStore;
class FeedDownloader;
class LoginItem;
class NotificationCenter;
class Preferences;

/// The services of the system that the store works with.
struct PlannerPorts
{
    Preferences &preferences;
    EventStore &eventStore;
    NotificationCenter &notificationCenter;
    LoginItem &loginItem;
    FeedDownloader &feedDownloader;
    const Clock &clock;
    UserCalendar calendar;
};

} // namespace tessaly
