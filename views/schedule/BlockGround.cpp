#include "views/schedule/BlockGround.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGNinePatchNode>
#include <QSGRendererInterface>

#include <algorithm>

namespace tessaly {

namespace {

constexpr double edgeWidth = 1;
constexpr double stripWidth = 3;
constexpr double frameWidth = 2;

} // namespace

BlockGround::BlockGround(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QSGNode *BlockGround::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *patch = static_cast<QSGNinePatchNode *>(node);
    if (size().isEmpty() || !m_fill.isValid()) {
        delete node;
        return nullptr;
    }
    if (!patch)
        patch = window()->createNinePatchNode();
    const double ratio = window()->effectiveDevicePixelRatio();
    // The corners keep their size, and a stretched pixel is between them. The software back end does that only where a
    // unit is a pixel.
    const double corner = edgeWidth + std::max(m_radius, stripWidth);
    const bool canStretch =
        window()->rendererInterface()->graphicsApi() != QSGRendererInterface::Software || ratio == 1;
    const double least = 2 * corner + 1 - 2 * edgeWidth;
    const bool isStretched = canStretch && std::min(width(), height()) >= least;
    const double padding = isStretched ? corner : 0;
    const QImage image = picture(isStretched ? QSizeF(least, least) : size(), ratio);
    patch->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureCanUseAtlas));
    patch->setDevicePixelRatio(ratio);
    patch->setPadding(padding, padding, padding, padding);
    patch->setBounds(boundingRect().adjusted(-edgeWidth, -edgeWidth, edgeWidth, edgeWidth));
    patch->update();
    return patch;
}

QImage BlockGround::picture(QSizeF size, double ratio) const
{
    const QRectF box({edgeWidth, edgeWidth}, size);
    const QSizeF whole(size.width() + 2 * edgeWidth, size.height() + 2 * edgeWidth);
    QImage image((whole * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto fillRounded = [&](const QRectF &rect, double radius, const QColor &color) {
        const double fitting = std::min({radius, rect.width() / 2, rect.height() / 2});
        painter.setBrush(color);
        painter.drawRoundedRect(rect, fitting, fitting);
    };
    fillRounded(QRectF({0, 0}, whole), m_radius + edgeWidth, m_edge);
    const double frame = m_isSelected ? frameWidth : 0;
    if (m_isSelected)
        fillRounded(box, m_radius, m_strip);
    fillRounded(box.adjusted(frame, frame, -frame, -frame), m_radius - frame, m_fill);
    painter.setClipRect(QRectF(box.topLeft(), QSizeF(stripWidth, box.height())));
    fillRounded(box, m_radius, m_strip);
    return image;
}

} // namespace tessaly
