#pragma once

#include "model/UserCalendar.h"
#include "platform/EventStore.h"

namespace tessaly {

/// The one function that the module exports, under the name `edsFactoryName`. The caller owns the event store.
using EdsFactory = EventStore *(*)(const UserCalendar &calendar);
inline constexpr const char *edsFactoryName = "tessalyCreateEdsEventStore";

} // namespace tessaly
