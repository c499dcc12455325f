#include "ui/IconProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <QUrlQuery>

#include <algorithm>
#include <array>
#include <cmath>

namespace tessaly {

namespace {

constexpr int defaultIconSize = 24;

/// One blurred box: offset downwards and standard deviation in pixels, strength 0 to 1.
struct ShadowLayer
{
    double offset = 0;
    double blur = 0;
    double strength = 0;
};

using ShadowLayers = std::array<ShadowLayer, 2>;

ShadowLayers shadowLayers(bool isSheet, bool isDark)
{
    if (isSheet)
        return isDark ? ShadowLayers{{{22, 30, 0.60}, {0, 1, 0}}} : ShadowLayers{{{20, 28, 0.22}, {2, 4, 0.08}}};
    return isDark ? ShadowLayers{{{8, 13, 0.46}, {0, 1, 0}}} : ShadowLayers{{{6, 11, 0.13}, {1, 1.5, 0.08}}};
}

/// Distance of a point from a rounded box around the origin; negative inside.
double boxDistance(double x, double y, double halfSize, double radius)
{
    const double dx = std::abs(x) - halfSize + radius;
    const double dy = std::abs(y) - halfSize + radius;
    return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) - radius;
}

/// How much of the layer lies at the distance from its box, 0 to 1.
double shade(const ShadowLayer &layer, double distance)
{
    // From there on the error function is 0 or 2, as far as 255 steps can tell; it takes long.
    const double reach = 5 * layer.blur;
    if (distance > reach)
        return 0;
    if (distance < -reach)
        return layer.strength;
    return layer.strength * 0.5 * std::erfc(distance / (layer.blur * std::sqrt(2.0)));
}

} // namespace

IconProvider::IconProvider() : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QStringList parts = id.split(u'?');
    const QUrlQuery query(parts.value(1));
    QFile file(QStringLiteral(":/tessaly-icons/%1.svg").arg(parts.constFirst()));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no icon named %s", qPrintable(parts.constFirst()));
        return {};
    }
    QByteArray svg = file.readAll();
    svg.replace("currentColor", query.queryItemValue(QStringLiteral("color"), QUrl::FullyDecoded).toLatin1());
    // lint-allow(colour): the placeholder that the drawings use for their inner mark
    svg.replace("#FFFFFF", query.queryItemValue(QStringLiteral("mark"), QUrl::FullyDecoded).toLatin1());
    const QByteArray stroke = query.queryItemValue(QStringLiteral("stroke")).toLatin1();
    if (!stroke.isEmpty())
        svg.replace("stroke-width=\"2\"", "stroke-width=\"" + stroke + '"');

    const QSize pixels = requestedSize.isValid() ? requestedSize : QSize(defaultIconSize, defaultIconSize);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(svg).render(&painter);
    *size = pixels;
    return image;
}

ShadowProvider::ShadowProvider() : QQuickImageProvider(QQuickImageProvider::Image)
{
}

QImage ShadowProvider::requestImage(const QString &id, QSize *size, const QSize &)
{
    constexpr int radius = 14;
    constexpr int extent = 2 * (margin + radius) + 2;
    constexpr double halfSize = radius + 1;
    const bool isDark = id.endsWith(u"dark");
    const ShadowLayers layers = shadowLayers(id.startsWith(u'2'), isDark);
    // lint-allow(colour): part of the shadow's recipe like its layers; drawn here, where Theme does not reach
    const QColor color = isDark ? QColor(0, 0, 0) : QColor(0x16, 0x1A, 0x24);

    QImage image(extent, extent, QImage::Format_ARGB32);
    for (int y = 0; y < extent; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        // The right half mirrors the left one.
        for (int x = 0; x < extent / 2; ++x) {
            double clear = 1;
            for (const ShadowLayer &layer : layers) {
                const double distance =
                    boxDistance(x + 0.5 - extent / 2.0, y + 0.5 - extent / 2.0 - layer.offset, halfSize, radius);
                clear *= 1 - shade(layer, distance);
            }
            line[x] = qRgba(color.red(), color.green(), color.blue(), qRound(255 * (1 - clear)));
            line[extent - 1 - x] = line[x];
        }
    }
    *size = image.size();
    return image;
}

} // namespace tessaly
