#pragma once

#include <QObject>

namespace tessaly {

/// Lets the keys of undo and redo through to the window while the text field with the focus has nothing of its own to
/// undo or redo; a text field would swallow them. A key that is held down stops at the field.
class UndoKeys : public QObject
{
    Q_OBJECT

public:
    /// Watches all events of the application while it lives.
    explicit UndoKeys(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace tessaly
