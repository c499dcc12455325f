#include "ui/BarredCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace tessaly {

void BarredCursor::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    if (isShown)
        QGuiApplication::setOverrideCursor(Qt::ForbiddenCursor);
    else
        QGuiApplication::restoreOverrideCursor();
    emit isShownChanged();
}

} // namespace tessaly
