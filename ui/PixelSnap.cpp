#include "ui/PixelSnap.h"

#include <QMatrix4x4>
#include <QQuickWindow>

#include <cmath>

namespace tessaly {

namespace {

/// Of a device pixel. What ends in the middle of one would be rounded up or down as the last binary digit has it.
constexpr double nudge = 0.05;

} // namespace

void PixelSnap::setTarget(QQuickItem *target)
{
    if (m_target || !target)
        return;
    m_target = target;
    connect(target, &QQuickItem::windowChanged, this, &PixelSnap::watch);
    watch(target->window());
    emit targetChanged();
}

void PixelSnap::watch(QQuickWindow *window)
{
    disconnect(m_frames);
    // Then every item has its place. Where a thread of its own renders, this one waits meanwhile.
    if (window)
        m_frames = connect(window, &QQuickWindow::beforeSynchronizing, this, &PixelSnap::snap, Qt::DirectConnection);
}

void PixelSnap::snap()
{
    const double ratio = m_target->window()->effectiveDevicePixelRatio();
    QPointF offset;
    QPointF stretch(1, 1);
    if (ratio != std::floor(ratio) && m_target->parentItem() && m_target->isVisible()) {
        const QPointF place = m_target->parentItem()->mapToScene(m_target->position());
        const auto onPixel = [ratio](double length) { return std::round(length * ratio) / ratio; };
        offset = QPointF(onPixel(place.x()), onPixel(place.y())) + QPointF(nudge, nudge) / ratio - place;
        const QSizeF size = m_target->size();
        if (!size.isEmpty())
            stretch = QPointF(onPixel(size.width()) / size.width(), onPixel(size.height()) / size.height());
    }
    if (m_offset == offset && m_stretch == stretch)
        return;
    m_offset = offset;
    m_stretch = stretch;
    update();
}

void PixelSnap::applyTo(QMatrix4x4 *matrix) const
{
    matrix->translate(static_cast<float>(m_offset.x()), static_cast<float>(m_offset.y()));
    matrix->scale(static_cast<float>(m_stretch.x()), static_cast<float>(m_stretch.y()));
}

} // namespace tessaly
