#include "model/ScheduleColors.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace tessaly {

namespace {

const QString blue = QStringLiteral("blue");

// The order decides which colour an identifier gets: it must never change.
const std::array<QString, 8> palette = {
    blue,
    QStringLiteral("orange"),
    QStringLiteral("green"),
    QStringLiteral("purple"),
    QStringLiteral("pink"),
    QStringLiteral("teal"),
    QStringLiteral("red"),
    QStringLiteral("indigo"),
};

const std::array<QString, 5> namedColors = {blue, QStringLiteral("purple"), QStringLiteral("green"),
                                            QStringLiteral("orange"), QStringLiteral("pink")};

std::optional<uint> hexDigit(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit >= u'0' && unit <= u'9')
        return unit - u'0';
    if (unit >= u'a' && unit <= u'f')
        return unit - u'a' + 10U;
    if (unit >= u'A' && unit <= u'F')
        return unit - u'A' + 10U;
    return std::nullopt;
}

std::optional<QString> colorKey(const std::optional<QString> &hex)
{
    const std::optional<RgbColor> color = hex ? colorFromHex(*hex) : std::nullopt;
    return color ? std::optional(colorHex(*color)) : std::nullopt;
}

} // namespace

std::optional<RgbColor> colorFromHex(QStringView text)
{
    while (text.startsWith(u'#'))
        text = text.sliced(1);
    while (text.endsWith(u'#'))
        text.chop(1);
    if (text.size() != 6)
        return std::nullopt;

    uint value = 0;
    for (const QChar character : text) {
        const std::optional<uint> digit = hexDigit(character);
        if (!digit)
            return std::nullopt;
        value = value * 16 + *digit;
    }
    return RgbColor{(value >> 16U & 0xFFU) / 255.0, (value >> 8U & 0xFFU) / 255.0, (value & 0xFFU) / 255.0};
}

QString colorHex(const RgbColor &color)
{
    const auto step = [](double component) {
        return static_cast<uint>(std::clamp(std::round(component * 255.0), 0.0, 255.0));
    };
    const uint value = step(color.red) << 16U | step(color.green) << 8U | step(color.blue);
    // Every block of a crowded week asks for its colour; QString::arg would take most of the layout's time.
    QString text(7, u'#');
    for (qsizetype digit = 0; digit < 6; ++digit)
        text[digit + 1] = QLatin1Char("0123456789ABCDEF"[value >> (4U * static_cast<uint>(5 - digit)) & 0xFU]);
    return text;
}

QString paletteColor(QStringView identifier)
{
    size_t hash = 0;
    const QList<uint> scalars = identifier.toUcs4();
    for (const uint scalar : scalars)
        hash = (31 * hash + scalar) % palette.size();
    return palette.at(hash);
}

QString calendarColor(const std::optional<QString> &colorHex, const std::optional<QString> &identifier)
{
    if (const std::optional<QString> own = colorKey(colorHex))
        return *own;
    return identifier ? paletteColor(*identifier) : blue;
}

QString scheduleColor(const ScheduleItem &schedule)
{
    if (const std::optional<QString> own = colorKey(schedule.customColorHex))
        return *own;
    if (schedule.colorName && std::ranges::find(namedColors, *schedule.colorName) != namedColors.end())
        return *schedule.colorName;
    return calendarColor(schedule.calendarColorHex, schedule.calendarIdentifier);
}

} // namespace tessaly
