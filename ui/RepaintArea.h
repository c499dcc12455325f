#pragma once

#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// Shows nothing, takes no events. It stands over items of which hundreds change in one frame, and has its whole area
/// painted then. Without OpenGL, Qt Quick otherwise joins the outlines of all that has changed to one region, which
/// takes longer than the painting: with the square of their number.
class RepaintArea : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit RepaintArea(QQuickItem *parent = nullptr);

    /// Paints the area in the next frame. The first frame in which it is visible paints it anyway.
    Q_INVOKABLE void repaint() { update(); }

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
};

} // namespace tessaly
