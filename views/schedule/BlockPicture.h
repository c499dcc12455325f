#pragma once

#include "views/schedule/BlockGround.h"

#include <QFont>
#include <QImage>
#include <QString>

namespace tessaly {

/// A block of the week as it is to be drawn.
struct BlockLook
{
    QString title;
    /// Beneath the title; may be empty.
    QString time;
    QFont titleFont;
    QFont timeFont;
    QColor titleInk;
    QColor timeInk;
    BlockColors colors;
};

/// How wide the texts of a block of that width may be, in points.
[[nodiscard]] double blockTextWidth(double blockWidth);

/// Ground and texts as one picture. `box` is the block in device pixels, `ratio` of them to a point. The picture is
/// larger by blockMargin(ratio) on each side. A text that is too long ends in an ellipsis, or runs out where a block is
/// narrow; where it is narrower than two letters it has no text.
[[nodiscard]] QImage blockPicture(const BlockLook &look, QSize box, double ratio);

/// Device pixels around a block for the line that sets it off.
[[nodiscard]] int blockMargin(double ratio);

} // namespace tessaly
