#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqml.h>

class QQuickWindow;

namespace tessaly {

/// Puts the edges of its target, whose `transform` it is, between device pixels where the display's scale is not a
/// whole number: there lines of one pixel would be one or two device pixels wide in turn. It moves and stretches the
/// target by less than a device pixel. Scrolling changes it frame by frame.
class PixelSnap : public QQuickTransform
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *target READ target WRITE setTarget NOTIFY targetChanged REQUIRED)

public:
    using QQuickTransform::QQuickTransform;

    [[nodiscard]] QQuickItem *target() const { return m_target; }
    /// Takes effect once.
    void setTarget(QQuickItem *target);
    void applyTo(QMatrix4x4 *matrix) const override;

signals:
    void targetChanged();

private:
    void watch(QQuickWindow *window);
    void snap();

    QPointer<QQuickItem> m_target;
    QMetaObject::Connection m_frames;
    QPointF m_offset;
    QPointF m_stretch{1, 1};
};

} // namespace tessaly
