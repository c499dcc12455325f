#pragma once

#include <QList>
#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

namespace tessaly {

/// Where the window stands, in device-independent pixels of the desktop.
struct WindowFrame
{
    /// Of the outer frame.
    QPoint position = {};
    /// Of the content.
    QSize size = {};
    bool isMaximized = false;

    bool operator==(const WindowFrame &) const = default;

    /// "x y width height", and " maximized".
    [[nodiscard]] QString toString() const;
    [[nodiscard]] static std::optional<WindowFrame> fromString(const QString &text);
};

/// The frame for the screens that there are now: no larger than the screen that it is on. Nothing when its upper edge,
/// where a window is taken hold of, lies on none of them.
[[nodiscard]] std::optional<WindowFrame> fitted(const WindowFrame &frame, const QList<QRect> &screens,
                                                QSize minimumSize);

} // namespace tessaly
