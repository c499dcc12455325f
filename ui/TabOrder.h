#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// The order in which Tab visits the items beside each other: that in which they are painted.
class TabOrder : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Sorts the rows of a list, the children of its content item, by their property `index`. Children without one come
    /// before the first row, which begins at `firstRowY`, or after the last. Focus and appearance do not change as long
    /// as the children do not overlap.
    Q_INVOKABLE static void goDown(QQuickItem *contentItem, qreal firstRowY);
};

} // namespace tessaly
