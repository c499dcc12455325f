#include "ui/DashedFrame.h"

#include <QPainter>
#include <QPen>

namespace tessaly {

DashedFrame::DashedFrame(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &DashedFrame::lookChanged, this, [this] { update(); });
}

void DashedFrame::paint(QPainter *painter)
{
    QPen pen(m_color, 1);
    pen.setDashPattern({3, 3});
    pen.setCapStyle(Qt::FlatCap);
    painter->setPen(pen);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawRoundedRect(boundingRect().adjusted(0.5, 0.5, -0.5, -0.5), m_radius, m_radius);
}

} // namespace tessaly
