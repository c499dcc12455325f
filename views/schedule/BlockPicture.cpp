#include "views/schedule/BlockPicture.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <cmath>

namespace tessaly {

namespace {

constexpr double narrowWidth = 72;
constexpr double leastTextWidth = 18;
constexpr double fadeWidth = 9;
constexpr double lowHeight = 26;
constexpr double titleTop = 5;
constexpr double titleLine = 15;
constexpr double timeLine = 13;
/// Wider than any line.
constexpr double unbroken = 1e6;

bool isNarrow(double width)
{
    return width < narrowWidth;
}

double textLeft(double width)
{
    return isNarrow(width) ? 6 : 8;
}

double textRight(double width)
{
    return isNarrow(width) ? 2 : 5;
}

/// One line in the middle of `line` points of height.
void paintLine(QPainter &painter, QPointF place, const QString &text, const QFont &font, double line, double width,
               bool isElided)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    const auto layOut = [&layout] {
        layout.beginLayout();
        QTextLine laidOut = layout.createLine();
        laidOut.setLineWidth(unbroken);
        laidOut.setPosition({0, 0});
        layout.endLayout();
        return laidOut;
    };
    QTextLine laidOut = layOut();
    if (isElided && laidOut.naturalTextWidth() > width) {
        layout.setText(QFontMetricsF(font).elidedText(text, Qt::ElideRight, width));
        laidOut = layOut();
    }
    layout.draw(&painter, place + QPointF(0, (line - laidOut.height()) / 2));
}

void paintTexts(QPainter &painter, const BlockLook &look, QSizeF size)
{
    const double width = blockTextWidth(size.width());
    const bool isFading = isNarrow(size.width());
    QPointF place(textLeft(size.width()),
                  size.height() < lowHeight ? std::round((size.height() - titleLine) / 2) : titleTop);
    painter.setPen(look.titleInk);
    paintLine(painter, place, look.title, look.titleFont, titleLine, width, !isFading);
    if (look.time.isEmpty())
        return;
    place.ry() += titleLine;
    painter.setPen(look.timeInk);
    paintLine(painter, place, look.time, look.timeFont, timeLine, width, !isFading);
}

/// The texts of a narrow block, which run out before its right edge.
QImage fadingTexts(const BlockLook &look, QSizeF size, double ratio)
{
    QImage image((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintTexts(painter, look, size);
    const double end = size.width() - textRight(size.width());
    // What is taken away is as much as the gradient is opaque.
    QLinearGradient fade(end - fadeWidth, 0, end, 0);
    fade.setColorAt(0, Qt::transparent);
    fade.setColorAt(1, look.titleInk);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillRect(QRectF(end - fadeWidth, 0, size.width(), size.height()), fade);
    return image;
}

} // namespace

double blockTextWidth(double blockWidth)
{
    return blockWidth < leastTextWidth ? 0 : blockWidth - textLeft(blockWidth) - textRight(blockWidth);
}

int blockMargin(double ratio)
{
    return static_cast<int>(std::ceil(blockEdgeWidth * ratio));
}

QImage blockPicture(const BlockLook &look, QSize box, double ratio)
{
    const int margin = blockMargin(ratio);
    QImage image(box + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintBlockGround(painter, QRectF(QPointF(margin, margin), box), look.colors, ratio);
    const QSizeF size = QSizeF(box) / ratio;
    if (blockTextWidth(size.width()) <= 0)
        return image;
    painter.translate(margin, margin);
    painter.scale(ratio, ratio);
    painter.setClipRect(QRectF({0, 0}, size));
    if (isNarrow(size.width()))
        painter.drawImage(QPointF(0, 0), fadingTexts(look, size, ratio));
    else
        paintTexts(painter, look, size);
    return image;
}

} // namespace tessaly
