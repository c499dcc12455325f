#pragma once

#include "platform/CalendarExpander.h"

namespace tessaly {

/// Gives the same answer to every text, and repeats everything daily.
class FakeCalendarExpander final : public CalendarExpander
{
public:
    [[nodiscard]] ExpandedCalendar expand(QByteArrayView, const ExpansionOptions &) const override { return answer; }

    /// Repeats every day, whatever the rule.
    [[nodiscard]] std::optional<QDateTime> nextRepetition(const QString &, const QDateTime &start,
                                                          const QDateTime &after) const override
    {
        return after < start ? start : start.addDays(start.daysTo(after) + (start.time() > after.time() ? 0 : 1));
    }

    ExpandedCalendar answer;
};

} // namespace tessaly
