#include "views/schedule/BlockGround.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGNinePatchNode>
#include <QSGRendererInterface>

#include <algorithm>

namespace tessaly {

namespace {

constexpr double stripWidth = 3;
constexpr double frameWidth = 2;

} // namespace

void paintBlockGround(QPainter &painter, const QRectF &box, const BlockColors &colors, double ratio)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto fillRounded = [&](const QRectF &rect, double radius, const QColor &color) {
        const double fitting = std::min({radius * ratio, rect.width() / 2, rect.height() / 2});
        painter.setBrush(color);
        painter.drawRoundedRect(rect, fitting, fitting);
    };
    const double edge = blockEdgeWidth * ratio;
    fillRounded(box.adjusted(-edge, -edge, edge, edge), colors.radius + blockEdgeWidth, colors.edge);
    const double frame = colors.isSelected ? frameWidth : 0;
    if (colors.isSelected)
        fillRounded(box, colors.radius, colors.strip);
    const double inset = frame * ratio;
    fillRounded(box.adjusted(inset, inset, -inset, -inset), colors.radius - frame, colors.fill);
    painter.setClipRect(QRectF(box.topLeft(), QSizeF(stripWidth * ratio, box.height())));
    fillRounded(box, colors.radius, colors.strip);
    painter.setClipping(false);
}

BlockGround::BlockGround(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QSGNode *BlockGround::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *patch = static_cast<QSGNinePatchNode *>(node);
    if (size().isEmpty() || !m_colors.fill.isValid()) {
        delete node;
        return nullptr;
    }
    if (!patch)
        patch = window()->createNinePatchNode();
    const double ratio = window()->effectiveDevicePixelRatio();
    // The corners keep their size, and a stretched pixel is between them. The software back end does that only where a
    // unit is a pixel.
    const double corner = blockEdgeWidth + std::max(m_colors.radius, stripWidth);
    const bool canStretch =
        window()->rendererInterface()->graphicsApi() != QSGRendererInterface::Software || ratio == 1;
    const double least = 2 * corner + 1 - 2 * blockEdgeWidth;
    const bool isStretched = canStretch && std::min(width(), height()) >= least;
    const double padding = isStretched ? corner : 0;
    const QImage image = picture(isStretched ? QSizeF(least, least) : size(), ratio);
    patch->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas));
    patch->setDevicePixelRatio(ratio);
    patch->setPadding(padding, padding, padding, padding);
    patch->setBounds(boundingRect().adjusted(-blockEdgeWidth, -blockEdgeWidth, blockEdgeWidth, blockEdgeWidth));
    patch->update();
    return patch;
}

QImage BlockGround::picture(QSizeF size, double ratio) const
{
    const QSizeF whole(size.width() + 2 * blockEdgeWidth, size.height() + 2 * blockEdgeWidth);
    QImage image((whole * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintBlockGround(painter, QRectF({blockEdgeWidth, blockEdgeWidth}, size), m_colors);
    return image;
}

} // namespace tessaly
