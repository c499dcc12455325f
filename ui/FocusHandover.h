#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// Passes the focus on when the item that has it goes away, and returns it later. Reasons are Qt::FocusReason. This is
/// C++ because the QML compiler of Qt 6.4 crashes on reasons that are passed as arguments.
class FocusHandover : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// The reason to use for the next holder, so that it shows a ring only if the former holder did.
    Q_INVOKABLE [[nodiscard]] static int reasonAfter(QQuickItem *holder);
    /// Focuses the item with that reason, even if it has the focus already.
    Q_INVOKABLE static void give(QQuickItem *item, int reason);
};

} // namespace tessaly
