#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// How the focus goes on when what has it goes away, and comes back. Reasons are of Qt::FocusReason. It is not QML, as
/// the compiler of Qt 6.4 crashes on reasons that are handed on.
class FocusHandover : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The reason to give to what takes the focus over: it shows a ring if the former holder did, and not after a
    /// click.
    Q_INVOKABLE [[nodiscard]] static int reasonAfter(QQuickItem *holder);
    /// Focuses the item with that reason, of which Qt tells no item that has the focus already.
    Q_INVOKABLE static void give(QQuickItem *item, int reason);
};

} // namespace tessaly
