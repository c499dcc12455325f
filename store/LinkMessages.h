#pragma once

#include "store/Message.h"

#include <QtGlobal>

namespace tessaly {

// What the status line says of linked calendars.

[[nodiscard]] Message linkUpdatingMessage();
/// What was typed is no link to a calendar.
[[nodiscard]] Message linkRefusedMessage();
/// `lost` schedules with notes or tasks are no longer among the `count` that the link has now.
[[nodiscard]] Message linkUpdatedMessage(qsizetype count, qsizetype lost);

} // namespace tessaly
