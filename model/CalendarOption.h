#pragma once

#include <QString>

#include <optional>

namespace tessaly {

/// A calendar of the system as it is offered to the user; never persisted.
struct CalendarOption
{
    QString id = {};
    QString title = {};
    /// Name of the account that holds the calendar.
    QString sourceTitle = {};
    /// "#RRGGBB", upper-case.
    std::optional<QString> colorHex = {};
    /// Whether events can be added to it.
    bool isWritable = true;

    bool operator==(const CalendarOption &) const = default;
};

} // namespace tessaly
