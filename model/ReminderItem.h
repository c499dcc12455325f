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

    bool operator==(const ReminderItem &) const = default;
};

} // namespace tessaly

// Moved by copying their bytes when a list of them grows, which Qt cannot know of std::optional members.
Q_DECLARE_TYPEINFO(tessaly::ReminderItem, Q_RELOCATABLE_TYPE);
