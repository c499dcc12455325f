#pragma once

#include "model/ScheduleItem.h"

namespace tessaly {

/// The title as people read it. The record of a linked calendar's schedule keeps the whole line of the file,
/// "SUMMARY;LANGUAGE=en:Lunch\, then tea"; this is its value with the escapes resolved (RFC 5545, 3.3.11), and a blank
/// for a line break, since titles stand on one line. Any other title is returned as it is.
[[nodiscard]] QString displayTitle(const ScheduleItem &schedule);

} // namespace tessaly
