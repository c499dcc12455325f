#pragma once

#include "model/CalendarFeed.h"
#include "model/ScheduleItem.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

namespace tessaly {

/// A colour in sRGB, components 0 to 1, opaque.
struct RgbColor
{
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const RgbColor &) const = default;
};

/// Reads six hexadecimal digits, with any number of "#" before and after them.
[[nodiscard]] std::optional<RgbColor> colorFromHex(QStringView text);
/// "#RRGGBB", upper-case; each component is rounded to the nearest of 256 steps and kept within them.
[[nodiscard]] QString colorHex(const RgbColor &color);

/// Name of the palette colour that an identifier always gets.
[[nodiscard]] QString paletteColor(QStringView identifier);
/// Colour key of a calendar: its own colour, else one chosen by the identifier, else "blue".
[[nodiscard]] QString calendarColor(const std::optional<QString> &colorHex, const std::optional<QString> &identifier);

/// The colours that the user chose for linked calendars, by their calendar identifiers.
using LinkColors = QHash<QString, QString>;
[[nodiscard]] LinkColors linkColors(const QList<CalendarFeed> &feeds);

/// Colour key of a schedule: a palette name ("blue", "teal" …) or "#RRGGBB". The own colour counts before the named
/// one, that before the calendar's.
[[nodiscard]] QString scheduleColor(const ScheduleItem &schedule, const LinkColors &linkColors = {});

} // namespace tessaly
