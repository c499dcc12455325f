#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// A dashed outline, one point wide; of an item one point high, a dashed line.
class DashedFrame : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY lookChanged)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged)

public:
    explicit DashedFrame(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

signals:
    void lookChanged();

private:
    QColor m_color;
    double m_radius = 0;
};

} // namespace tessaly
