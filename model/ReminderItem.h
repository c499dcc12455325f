#pragma once

#include "model/Instant.h"

#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

/// One to-do.
struct ReminderItem
{
    QUuid id = QUuid::createUuid();
    QString title = {};
    std::optional<Instant> dueDate = {};
    std::optional<QString> requirement = {};
    bool isComplete = false;
    std::optional<Instant> completedAt = {};
    /// How it repeats: the value of an RRULE (RFC 5545, 3.3.10), such as "FREQ=WEEKLY".
    std::optional<QString> recurrenceRule = {};
    /// The first due date of the row of repetitions, from which the rule counts: a to-do of the 31st stays on the last
    /// days of the months.
    std::optional<Instant> recurrenceStart = {};
    /// The rule counts from the day of completion.
    std::optional<bool> recursAfterCompletion = {};

    bool operator==(const ReminderItem &) const = default;
};

} // namespace tessaly

// Moved by copying their bytes when a list of them grows, which Qt cannot know of std::optional members.
Q_DECLARE_TYPEINFO(tessaly::ReminderItem, Q_RELOCATABLE_TYPE);
