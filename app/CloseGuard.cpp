#include "app/CloseGuard.h"

#include "store/PlannerStore.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>

namespace tessaly {

CloseGuard::CloseGuard(QQuickWindow &window, PlannerStore &store, QObject *parent)
    : QObject(parent), m_window(window), m_store(store)
{
    window.installEventFilter(this);
}

bool CloseGuard::eventFilter(QObject *watched, QEvent *event)
{
    // A program that stays without its window keeps the changes and retries.
    if (event->type() != QEvent::Close || m_isOpen || !QGuiApplication::quitOnLastWindowClosed())
        return QObject::eventFilter(watched, event);
    m_store.retryUnsavedChanges();
    if (!m_store.hasUnsavedChanges())
        return QObject::eventFilter(watched, event);
    event->ignore();
    emit refused();
    return true;
}

void CloseGuard::closeAnyway()
{
    QGuiApplication::setQuitOnLastWindowClosed(true);
    m_isOpen = true;
    m_window.close();
    m_isOpen = false;
}

} // namespace tessaly
