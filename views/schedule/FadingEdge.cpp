#include "views/schedule/FadingEdge.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

namespace tessaly {

namespace {

constexpr double fadeWidth = 9;

} // namespace

FadingEdge::FadingEdge(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setImplicitWidth(fadeWidth);
}

void FadingEdge::setFill(const QColor &fill)
{
    if (m_fill == fill)
        return;
    m_fill = fill;
    emit fillChanged();
    update();
}

void FadingEdge::setSolidWidth(double width)
{
    if (m_solidWidth == width)
        return;
    m_solidWidth = width;
    setImplicitWidth(fadeWidth + width);
    emit solidWidthChanged();
    update();
}

QSGNode *FadingEdge::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    if (size().isEmpty() || !m_fill.isValid()) {
        delete node;
        return nullptr;
    }
    auto *image = static_cast<QSGImageNode *>(node);
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
    }
    const double ratio = window()->effectiveDevicePixelRatio();
    // One row of pixels, stretched.
    QImage row(QSizeF(width() * ratio, 1).toSize(), QImage::Format_ARGB32_Premultiplied);
    row.fill(Qt::transparent);
    QColor clear = m_fill;
    clear.setAlpha(0);
    QLinearGradient gradient(0, 0, fadeWidth * ratio, 0);
    gradient.setColorAt(0, clear);
    gradient.setColorAt(1, m_fill);
    QPainter(&row).fillRect(row.rect(), gradient);
    image->setTexture(window()->createTextureFromImage(row));
    image->setRect(boundingRect());
    image->setSourceRect(QRectF(row.rect()));
    return image;
}

} // namespace tessaly
