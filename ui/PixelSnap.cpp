#include "ui/PixelSnap.h"

#include <QMatrix4x4>
#include <QQuickWindow>

#include <cmath>

namespace tessaly {

namespace {

/// Fraction of a device pixel. Without it, an edge in the middle of a pixel would be rounded either way.
constexpr double nudge = 0.05;

} // namespace

PixelSnap::~PixelSnap()
{
    s_snaps.remove(m_item);
}

void PixelSnap::classBegin()
{
    // QML makes the item its parent.
    m_item = qobject_cast<QQuickItem *>(parent());
    Q_ASSERT(m_item);
    s_snaps.insert(m_item, this);
    connect(m_item, &QQuickItem::windowChanged, this, &PixelSnap::watch);
    watch(m_item->window());
}

void PixelSnap::watch(QQuickWindow *window)
{
    disconnect(m_frames);
    // By then every item has its position. If a separate thread renders, this one is blocked meanwhile.
    if (window)
        m_frames = connect(window, &QQuickWindow::beforeSynchronizing, this, &PixelSnap::snap, Qt::DirectConnection);
}

void PixelSnap::snap()
{
    const double ratio = m_item->window()->effectiveDevicePixelRatio();
    QPointF offset;
    QPointF stretch(1, 1);
    if (ratio != std::floor(ratio) && m_item->parentItem() && m_item->isVisible()) {
        // What moves an ancestor moves this item too.
        for (const QQuickItem *ancestor = m_item->parentItem(); ancestor; ancestor = ancestor->parentItem()) {
            if (PixelSnap *outer = s_snaps.value(ancestor)) {
                outer->snap();
                break;
            }
        }
        const QPointF place = m_item->parentItem()->mapToScene(m_item->position());
        const auto onPixel = [ratio](double length) { return std::round(length * ratio) / ratio; };
        offset = QPointF(onPixel(place.x()), onPixel(place.y())) + QPointF(nudge, nudge) / ratio - place;
        const QSizeF size = m_item->size();
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
