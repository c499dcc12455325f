#pragma once

#include <QString>

#include <optional>

namespace tessaly {

/// A calendar of the system offered for import; never persisted.
struct CalendarOption
{
    QString id = {};
    QString title = {};
    /// Name of the account that holds the calendar.
    QString sourceTitle = {};
    /// "#RRGGBB", upper-case.
    std::optional<QString> colorHex = {};

    bool operator==(const CalendarOption &) const = default;
};

} // namespace tessaly
