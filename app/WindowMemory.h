#pragma once

#include "app/WindowFrame.h"

#include <QObject>
#include <QTimer>

class QQuickWindow;

namespace tessaly {

class Preferences;

/// Restores the place of the window from the last run or before it was closed, and saves where it is moved to. The
/// place that the window system first gives it is not saved: a start changes nothing.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the memory. To be made before the window is shown.
    WindowMemory(QQuickWindow &window, Preferences &preferences, QObject *parent = nullptr);

    /// Restores the place of a closed window. To be called before it is shown again.
    void putBack();

public slots:
    /// Writes what has changed without waiting any longer.
    void save();

private:
    void restore();
    void place(const WindowFrame &frame);

    QQuickWindow &m_window;
    Preferences &m_preferences;
    QTimer m_timer;
    std::optional<WindowFrame> m_saved;
    WindowFrame m_current;
    bool m_hasSettled = false;
};

} // namespace tessaly
