#include "ui/PressGuard.h"

#include <QGuiApplication>
#include <QPointerEvent>
#include <QQuickWindow>
#include <QStyleHints>

#include <cmath>
#include <utility>

namespace tessaly {

PressHistory *PressHistory::of(QQuickWindow *window)
{
    auto *history = window->findChild<PressHistory *>(QString(), Qt::FindDirectChildrenOnly);
    if (!history) {
        history = new PressHistory(window);
        window->installEventFilter(history);
    }
    return history;
}

bool PressHistory::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin) {
        const auto &press = static_cast<const QPointerEvent &>(*event);
        const quint64 time = press.timestamp();
        const QPointF place = press.points().constFirst().scenePosition();
        const QStyleHints &hints = *QGuiApplication::styleHints();
        const QPointF way = place - m_place;
        m_isRepeated = m_hasPress && time - m_time < static_cast<quint64>(hints.mouseDoubleClickInterval()) &&
                       std::abs(way.x()) <= hints.mouseDoubleClickDistance() &&
                       std::abs(way.y()) <= hints.mouseDoubleClickDistance();
        m_hasPress = true;
        m_time = time;
        m_place = place;
    }
    return QObject::eventFilter(watched, event);
}

PressGuard::PressGuard(QQuickItem *parent) : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
}

void PressGuard::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemSceneChange)
        m_history = data.window ? PressHistory::of(data.window) : nullptr;
    QQuickItem::itemChange(change, data);
}

void PressGuard::mousePressEvent(QMouseEvent *event)
{
    swallowRepeated(event);
}

void PressGuard::mouseDoubleClickEvent(QMouseEvent *event)
{
    swallowRepeated(event);
}

void PressGuard::swallowRepeated(QMouseEvent *event) const
{
    event->setAccepted(m_history && m_history->isRepeated());
}

} // namespace tessaly
