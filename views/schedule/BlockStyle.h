#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// What the blocks of a week have in common.
class BlockStyle : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor ground MEMBER ground NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor ink MEMBER ink NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor quietInk MEMBER quietInk NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor selectedInk MEMBER selectedInk NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor flash MEMBER flash NOTIFY changed REQUIRED)
    Q_PROPERTY(QFont titleFont MEMBER titleFont NOTIFY changed REQUIRED)
    Q_PROPERTY(QFont timeFont MEMBER timeFont NOTIFY changed REQUIRED)
    Q_PROPERTY(double radius MEMBER radius NOTIFY changed REQUIRED)

public:
    using QObject::QObject;

    /// What lies beneath the blocks.
    QColor ground;
    QColor ink;
    QColor quietInk;
    QColor selectedInk;
    /// Of what is new.
    QColor flash;
    QFont titleFont;
    QFont timeFont;
    /// Points.
    double radius = 0;

signals:
    void changed();
};

} // namespace tessaly
