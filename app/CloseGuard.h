#pragma once

#include <QObject>

class QQuickWindow;

namespace tessaly {

class PlannerStore;

/// Keeps the window open where closing it would end the program and lose changes that could not be saved.
class CloseGuard : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the guard. Each closing is one more try to save.
    CloseGuard(QQuickWindow &window, PlannerStore &store, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    /// Ends the program whatever is lost.
    void closeAnyway();

signals:
    /// The window stays open: the user is to be asked.
    void refused();

private:
    QQuickWindow &m_window;
    PlannerStore &m_store;
    bool m_isOpen = false;
};

} // namespace tessaly
