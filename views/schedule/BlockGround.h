#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqml.h>

class QPainter;

namespace tessaly {

/// How the ground of a block is drawn; lengths in points.
struct BlockColors
{
    QColor fill;
    /// Of the strip along the left edge, and of the frame of a selected block.
    QColor strip;
    /// Of the line around it, which sets it off from what it touches.
    QColor edge;
    double radius = 0;
    bool isSelected = false;
};

/// How far the line around a block lies outside of its box, in points.
inline constexpr double blockEdgeWidth = 1;

/// Draws the ground into `box`, the line around it outside, with `ratio` units to a point.
void paintBlockGround(QPainter &painter, const QRectF &box, const BlockColors &colors, double ratio = 1);

/// The ground of a block in the week, drawn as one picture: a rounded box with a
/// strip along its left edge, a frame in the colour of the strip when selected, and around it a line that sets it off
/// from a block that it touches or covers.
class BlockGround : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill READ fill WRITE setFill NOTIFY changed)
    Q_PROPERTY(QColor strip READ strip WRITE setStrip NOTIFY changed)
    Q_PROPERTY(QColor edge READ edge WRITE setEdge NOTIFY changed)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)
    Q_PROPERTY(bool isSelected READ isSelected WRITE setSelected NOTIFY changed)

public:
    explicit BlockGround(QQuickItem *parent = nullptr);

    [[nodiscard]] const QColor &fill() const { return m_colors.fill; }
    [[nodiscard]] const QColor &strip() const { return m_colors.strip; }
    [[nodiscard]] const QColor &edge() const { return m_colors.edge; }
    [[nodiscard]] double radius() const { return m_colors.radius; }
    [[nodiscard]] bool isSelected() const { return m_colors.isSelected; }

    void setFill(const QColor &fill) { set(m_colors.fill, fill); }
    void setStrip(const QColor &strip) { set(m_colors.strip, strip); }
    void setEdge(const QColor &edge) { set(m_colors.edge, edge); }
    void setRadius(double radius) { set(m_colors.radius, radius); }
    void setSelected(bool isSelected) { set(m_colors.isSelected, isSelected); }

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

    BlockColors m_colors;
};

} // namespace tessaly
