#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// Lets text run out into the fill colour over nine pixels, and hides it beyond. One object, because there are hundreds
/// of them.
class FadingEdge : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill READ fill WRITE setFill NOTIFY fillChanged REQUIRED)
    /// How much is hidden; the width follows.
    Q_PROPERTY(double solidWidth READ solidWidth WRITE setSolidWidth NOTIFY solidWidthChanged)

public:
    explicit FadingEdge(QQuickItem *parent = nullptr);

    [[nodiscard]] const QColor &fill() const { return m_fill; }
    void setFill(const QColor &fill);
    [[nodiscard]] double solidWidth() const { return m_solidWidth; }
    void setSolidWidth(double width);

signals:
    void fillChanged();
    void solidWidthChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private:
    QColor m_fill;
    double m_solidWidth = 0;
};

} // namespace tessaly
