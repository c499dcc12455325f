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

constexpr QLatin1String hexDigits("0123456789ABCDEF");

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
        const qsizetype digit = hexDigits.indexOf(character, 0, Qt::CaseInsensitive);
        if (digit < 0)
            return std::nullopt;
        value = value * 16 + static_cast<uint>(digit);
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
        text[digit + 1] = hexDigits.at(value >> (4U * static_cast<uint>(5 - digit)) & 0xFU);
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

LinkColors linkColors(const QList<CalendarFeed> &feeds)
{
    LinkColors colors;
    for (const CalendarFeed &feed : feeds) {
        if (feed.colorHex)
            colors.insert(feedCalendarIdentifier(feed.id), *feed.colorHex);
    }
    return colors;
}

QString scheduleColor(const ScheduleItem &schedule, const LinkColors &linkColors)
{
    if (const std::optional<QString> own = colorKey(schedule.customColorHex))
        return *own;
    if (schedule.colorName && std::ranges::find(namedColors, *schedule.colorName) != namedColors.end())
        return *schedule.colorName;
    if (!linkColors.isEmpty() && schedule.calendarIdentifier) {
        const auto chosen = linkColors.constFind(*schedule.calendarIdentifier);
        if (chosen != linkColors.cend())
            return calendarColor(*chosen, schedule.calendarIdentifier);
    }
    return calendarColor(schedule.calendarColorHex, schedule.calendarIdentifier);
}

} // namespace tessaly
