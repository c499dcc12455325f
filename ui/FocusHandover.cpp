#include "ui/FocusHandover.h"

namespace tessaly {

int FocusHandover::reasonAfter(QQuickItem *holder)
{
    const bool hasRing = holder && holder->property("visualFocus").toBool();
    return hasRing ? Qt::TabFocusReason : Qt::MouseFocusReason;
}

void FocusHandover::give(QQuickItem *item, int reason)
{
    if (!item)
        return;
    item->forceActiveFocus(static_cast<Qt::FocusReason>(reason));
    // A control has this property.
    if (item->property("focusReason").isValid())
        item->setProperty("focusReason", reason);
}

} // namespace tessaly
