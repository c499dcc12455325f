#pragma once

#include <QObject>
#include <QPointer>
#include <QPointF>
#include <QQuickItem>
#include <QtQml/qqml.h>

namespace tessaly {

/// Watches the presses in a window, with the mouse or a finger.
class PressHistory : public QObject
{
    Q_OBJECT

public:
    /// The history of the window, created on first use.
    static PressHistory *of(QQuickWindow *window);

    /// Whether the last press came within the time and at the place of a double click after the one before.
    [[nodiscard]] bool isRepeated() const { return m_isRepeated; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;

    quint64 m_time = 0;
    QPointF m_place;
    bool m_hasPress = false;
    bool m_isRepeated = false;
};

/// Covers a button and lets only the first press of a double or triple click through. The others were meant for what
/// was there before the rows moved, so they neither press the button nor focus it.
class PressGuard : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit PressGuard(QQuickItem *parent = nullptr);

protected:
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void swallowRepeated(QMouseEvent *event) const;

    QPointer<PressHistory> m_history;
};

} // namespace tessaly
