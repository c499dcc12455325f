#pragma once

#include "model/AppLanguage.h"
#include "model/StateChange.h"

namespace tessaly {

/// What a step did, in words.
struct StepDescription
{
    /// Such as "Delete to-do".
    TextPair name = {};
    /// Titles of what the step removed. A goal counts once, whatever it holds; so do a category and a link.
    QStringList removed = {};
    /// Says what was removed; empty when nothing was.
    TextPair report = {};

    bool operator==(const StepDescription &) const = default;
};

/// Describes what the user did by what differs.
[[nodiscard]] StepDescription describe(const StateChange &change);

} // namespace tessaly
