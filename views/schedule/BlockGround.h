#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// The ground of a block in the week, drawn as one picture because there are hundreds of them: a rounded box with a
/// strip along its left edge, a frame in the colour of the strip when selected, and around it a line that sets it off
/// from a block that it touches or covers.
class BlockGround : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill MEMBER m_fill WRITE setFill NOTIFY changed)
    Q_PROPERTY(QColor strip MEMBER m_strip WRITE setStrip NOTIFY changed)
    Q_PROPERTY(QColor edge MEMBER m_edge WRITE setEdge NOTIFY changed)
    Q_PROPERTY(double radius MEMBER m_radius WRITE setRadius NOTIFY changed)
    Q_PROPERTY(bool isSelected MEMBER m_isSelected WRITE setSelected NOTIFY changed)

public:
    explicit BlockGround(QQuickItem *parent = nullptr);

    void setFill(const QColor &fill) { set(m_fill, fill); }
    void setStrip(const QColor &strip) { set(m_strip, strip); }
    void setEdge(const QColor &edge) { set(m_edge, edge); }
    void setRadius(double radius) { set(m_radius, radius); }
    void setSelected(bool isSelected) { set(m_isSelected, isSelected); }

signals:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private:
    template <class Value>
    void set(Value &member, const Value &value)
    {
        if (member == value)
            return;
        member = value;
        emit changed();
        update();
    }
    /// The ground of a block of that size, the line around it included.
    [[nodiscard]] QImage picture(QSizeF size, double ratio) const;

    QColor m_fill;
    QColor m_strip;
    QColor m_edge;
    double m_radius = 0;
    bool m_isSelected = false;
};

} // namespace tessaly
