#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <functional>
#include <optional>
#include <vector>

namespace tessaly {

/// What a rule is applied to. Times are seconds since 1970-01-01 00:00 on the event's own clock.
struct RuleStart
{
    qint64 wall = 0;
    bool isDate = false;
    /// The event's own clock at a point in time, given in seconds since 1970-01-01 UTC.
    std::function<qint64(qint64)> wallAt = {};
};

/// No event has more occurrences, and no zone more changes; one every day reaches from 1927 to 2036.
inline constexpr std::size_t mostOccurrences = 40000;

/// The times at which a recurrence rule (RFC 5545, 3.3.10) repeats, ascending. A rule without end stops at the horizon.
/// Nothing where the rule cannot be read, or gives more than mostOccurrences before the horizon; so do rules of hours
/// and less that may search for ever.
[[nodiscard]] std::optional<std::vector<qint64>> expandedRule(const QByteArray &rule, const RuleStart &start,
                                                              qint64 horizon);

/// Work that may still be done on rules.
struct RuleBudget
{
    /// Of about a microsecond.
    qint64 steps = 0;
    /// How many rules of months and years may still turn out to give no time at all, which takes long to find out.
    int barrenRules = 2;
};

/// Which times are looked for.
struct RuleWindow
{
    /// On the event's own clock, in seconds; both belong to it.
    qint64 first = 0;
    qint64 last = 0;
    RuleBudget budget = {};
    /// Those that could not be read, which give no time.
    QByteArrayList unreadableRules = {};
};

/// Those of a rule's times that lie in the window, ascending. Takes the work from the window's steps. Nothing where
/// these do not suffice, where one rule would need too many, or where there are more than mostOccurrences.
[[nodiscard]] std::optional<std::vector<qint64>> ruleTimesWithin(const QByteArray &rule, const RuleStart &start,
                                                                 RuleWindow &window);
/// The first time after `after`, not after the window's end; nothing where there is none, and as above.
[[nodiscard]] std::optional<qint64> ruleTimeAfter(const QByteArray &rule, const RuleStart &start, qint64 after,
                                                  RuleWindow window);

} // namespace tessaly
