#include "app/WindowMemory.h"

#include "platform/Preferences.h"
#include "store/PreferenceKeys.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>

#include <utility>

namespace tessaly {

namespace {

/// A window being dragged changes every few milliseconds; it is written once it rests.
constexpr int restMs = 500;

QList<QRect> availableScreens()
{
    QList<QRect> areas;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        areas.append(screen->availableGeometry());
    return areas;
}

} // namespace

WindowMemory::WindowMemory(QQuickWindow &window, Preferences &preferences, QObject *parent)
    : QObject(parent), m_window(window), m_preferences(preferences)
{
    restore();
    m_timer.setSingleShot(true);
    m_timer.setInterval(restMs);
    connect(&m_timer, &QTimer::timeout, this, &WindowMemory::save);
    for (const auto signal : {&QWindow::xChanged, &QWindow::yChanged, &QWindow::widthChanged, &QWindow::heightChanged})
        connect(&window, signal, &m_timer, qOverload<>(&QTimer::start));
    connect(&window, &QWindow::visibilityChanged, &m_timer, qOverload<>(&QTimer::start));
    // By name, since the type of the argument is private to Qt.
    connect(&window, SIGNAL(closing(QQuickCloseEvent *)), this, SLOT(save()));
    connect(qApp, &QGuiApplication::aboutToQuit, this, &WindowMemory::save);
}

void WindowMemory::restore()
{
    const QString text = m_preferences.get<QString>(keys::windowFrame).value_or(QString());
    const std::optional<WindowFrame> frame = WindowFrame::fromString(text);
    if (!frame) {
        m_window.resize(firstSize(m_window.size(), m_window.screen()->availableSize(), m_window.minimumSize()));
        return;
    }
    place(*frame);
    m_current = {m_window.framePosition(), m_window.size(), frame->isMaximized};
}

void WindowMemory::place(const WindowFrame &frame)
{
    const std::optional<WindowFrame> place = fitted(frame, availableScreens(), m_window.minimumSize());
    m_window.resize(place ? place->size
                          : firstSize(frame.size, m_window.screen()->availableSize(), m_window.minimumSize()));
    if (place)
        m_window.setFramePosition(place->position);
    m_window.setWindowStates(frame.isMaximized ? Qt::WindowMaximized : Qt::WindowNoState);
}

void WindowMemory::putBack()
{
    // Qt would restore the place of the content as that of the frame.
    if (!m_current.size.isEmpty())
        place(m_current);
}

void WindowMemory::save()
{
    m_timer.stop();
    switch (m_window.visibility()) {
    case QWindow::Windowed:
        m_current = {m_window.framePosition(), m_window.size(), false};
        break;
    case QWindow::Maximized:
    case QWindow::FullScreen:
        // Position and size stay those to go back to.
        m_current.isMaximized = true;
        break;
    default:
        return;
    }
    // The window system decides the final place after the window was shown.
    if (!std::exchange(m_hasSettled, true)) {
        m_saved = m_current;
    } else if (m_current != m_saved && !m_current.size.isEmpty()) {
        m_saved = m_current;
        (void)m_preferences.setValue(keys::windowFrame, m_current.toString());
    }
}

} // namespace tessaly
