#pragma once

#include "model/AppLanguage.h"

#include <QDate>
#include <QString>

namespace tessaly {

/// How a to-do repeats, as far as the planner offers it; any other rule is Other.
enum class Repetition { Never, Daily, Workdays, Weekly, Monthly, Yearly, Other };

/// The value of an RRULE (RFC 5545, 3.3.10) for what is first due on that day; empty for Never and Other. A day that a
/// month or year lacks stands for the last one that it has.
[[nodiscard]] QString repetitionRule(Repetition repetition, QDate firstDay);

/// What the rule was made from; Never for an empty one.
[[nodiscard]] Repetition repetitionOf(const QString &rule);

/// Such as "every week", or "one week after it is done".
[[nodiscard]] TextPair repetitionText(Repetition repetition, bool isAfterCompletion);

} // namespace tessaly
