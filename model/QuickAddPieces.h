#pragma once

#include "model/QuickAdd.h"
#include "model/QuickAddDates.h"
#include "model/QuickAddTimes.h"

namespace tessaly {

/// What a phrase says of time, before it is reckoned.
struct QuickAddPhrase
{
    std::optional<QuickAddDay> day = {};
    std::optional<QuickAddTime> time = {};
    /// The part of the day, said apart from the time.
    DayPeriod period = DayPeriod::None;
    /// Minutes.
    std::optional<int> length = {};
    std::optional<int> minutesFromNow = {};
    bool isDeadline = false;
    /// What was understood, in order; neighbours are one span.
    QList<TextSpan> understood = {};
};

[[nodiscard]] QuickAddPhrase quickAddPhrase(const QString &phrase, const QuickAddToday &today);

} // namespace tessaly
