#include "views/shell/UndoKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QVariant>

namespace tessaly {

UndoKeys::UndoKeys(QObject *parent) : QObject(parent)
{
    qGuiApp->installEventFilter(this);
}

bool UndoKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto &key = static_cast<const QKeyEvent &>(*event);
    const bool isUndo = key.matches(QKeySequence::Undo);
    if (key.isAutoRepeat() || (!isUndo && !key.matches(QKeySequence::Redo)))
        return false;
    const QVariant hasOwn = watched->property(isUndo ? "canUndo" : "canRedo");
    if (!hasOwn.isValid() || hasOwn.toBool())
        return false;
    event->ignore();
    return true;
}

} // namespace tessaly
