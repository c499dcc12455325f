#pragma once

#include <QQuickImageProvider>

namespace tessaly {

/// Draws the outline icons in any colour: "image://icon/NAME?color=#RRGGBB&stroke=2". Icons are square; the requested
/// size is in device pixels.
class IconProvider : public QQuickImageProvider
{
public:
    IconProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

/// Draws the soft shadow of a rounded box as a nine-patch: "image://shadow/LEVEL/MODE" with level 1 or 2 and mode
/// "light" or "dark". `ShadowProvider::margin` pixels on each side belong to the shadow, the box's corners follow.
class ShadowProvider : public QQuickImageProvider
{
public:
    static constexpr int margin = 96;

    ShadowProvider();
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace tessaly
