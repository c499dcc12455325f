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

/// The size of a window that has not been shown yet, so that it fits the free area of the screen with its frame, whose
/// size is not known before. No less than the minimum.
[[nodiscard]] QSize firstSize(QSize size, QSize area, QSize minimumSize);

/// The frame for the free areas of the screens that there are now. One that is larger than the screen that it is on is
/// made to fit there. Nothing when its upper edge, where a window is taken hold of, lies on none of them.
[[nodiscard]] std::optional<WindowFrame> fitted(const WindowFrame &frame, const QList<QRect> &screens,
                                                QSize minimumSize);

} // namespace tessaly
