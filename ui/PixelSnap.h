#pragma once

#include <QHash>
#include <QQmlParserStatus>
#include <QQuickItem>
#include <QtQml/qqml.h>

class QQuickWindow;

namespace tessaly {

/// Aligns the edges of the item whose `transform` it is with device pixels where the display's scale is not a whole
/// number. Without it, lines of one pixel would vary between one and two device pixels. It moves and stretches the item
/// by less than a device pixel, again in every frame in which the item has moved.
class PixelSnap : public QQuickTransform, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT

public:
    using QQuickTransform::QQuickTransform;
    ~PixelSnap() override;
    Q_DISABLE_COPY_MOVE(PixelSnap)

    void classBegin() override;
    void componentComplete() override {}
    void applyTo(QMatrix4x4 *matrix) const override;

private:
    void watch(QQuickWindow *window);
    void snap();

    inline static QHash<const QQuickItem *, PixelSnap *> s_snaps;
    QQuickItem *m_item = nullptr;
    QMetaObject::Connection m_frames;
    QPointF m_offset;
    QPointF m_stretch{1, 1};
};

} // namespace tessaly
