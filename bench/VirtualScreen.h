#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace tessaly::bench {

/// An X server without a window manager, whose pixels are read from the file that it keeps them in: a new window is in
/// the upper left corner, and what is there is black until something has drawn.
class VirtualScreen
{
public:
    VirtualScreen();
    ~VirtualScreen();
    Q_DISABLE_COPY_MOVE(VirtualScreen)

    /// False where there is no Xvfb.
    [[nodiscard]] bool isThere() const { return m_pixel != nullptr; }
    /// Such as ":7".
    [[nodiscard]] QString display() const { return m_display; }
    /// Whether a window has drawn something.
    [[nodiscard]] bool isDrawnOn() const;

private:
    void findPixel();

    QTemporaryDir m_directory;
    QProcess m_server;
    QString m_display;
    QFile m_framebuffer;
    /// One pixel where every window has its ground, in the mapped file.
    const volatile uchar *m_pixel = nullptr;
};

} // namespace tessaly::bench
