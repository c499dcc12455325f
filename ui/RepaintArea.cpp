#include "ui/RepaintArea.h"

#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSGRenderNode>

namespace tessaly {

namespace {

class EmptyNode : public QSGRenderNode
{
public:
    void setRect(const QRectF &rect) { m_rect = rect; }

    void render(const RenderState *) override {}
    [[nodiscard]] QRectF rect() const override { return m_rect; }
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }

private:
    QRectF m_rect;
};

} // namespace

RepaintArea::RepaintArea(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

QSGNode *RepaintArea::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    // The other back ends paint everything in each frame.
    if (window()->rendererInterface()->graphicsApi() != QSGRendererInterface::Software) {
        delete node;
        return nullptr;
    }
    auto *area = static_cast<EmptyNode *>(node);
    if (!area)
        area = new EmptyNode;
    area->setRect(boundingRect());
    area->markDirty(QSGNode::DirtyMaterial);
    return area;
}

} // namespace tessaly
