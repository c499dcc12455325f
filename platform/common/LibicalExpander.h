#pragma once

#include "platform/CalendarExpander.h"

namespace tessaly {

/// Works repetitions out by libical. One text gives at most half a million occurrences; an event that goes beyond that,
/// or beyond what may be spent on its rules, is skipped as too large.
class LibicalExpander final : public CalendarExpander
{
public:
    [[nodiscard]] ExpandedCalendar expand(QByteArrayView text, const ExpansionOptions &options) const override;
    [[nodiscard]] std::optional<QDateTime> nextRepetition(const QString &rule, const QDateTime &start,
                                                          const QDateTime &after) const override;
};

} // namespace tessaly
