#pragma once

#include "app/WindowFrame.h"

#include <QObject>
#include <QTimer>

class QQuickWindow;

namespace tessaly {

class Preferences;

/// Puts the window where it was when the program last ran or the window was closed, and keeps account of where it is
/// moved to. Where the window
/// first comes to rest is not written: a start changes nothing.
class WindowMemory : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the memory. To be made before the window is shown.
    WindowMemory(QQuickWindow &window, Preferences &preferences, QObject *parent = nullptr);

    /// Puts a window that was closed back to where it was then. To be called before it is shown again.
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
