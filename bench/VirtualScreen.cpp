#include "bench/VirtualScreen.h"

#include <QtEndian>

namespace tessaly::bench {

namespace {

constexpr int patience = 30'000;
constexpr qsizetype bytesPerPixel = 4;
constexpr qsizetype column = 400;
constexpr qsizetype line = 300;

/// A field of the header of X's window dump format, counted in words.
quint32 word(const uchar *header, qsizetype place)
{
    return qFromBigEndian<quint32>(header + place * qsizetype(sizeof(quint32)));
}

} // namespace

VirtualScreen::VirtualScreen()
{
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1440x1000x24"), QStringLiteral("-fbdir"), m_directory.path(),
                    QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-noreset")});
    while (!m_server.canReadLine() && m_server.waitForReadyRead(patience)) {
    }
    const QByteArray number = m_server.readLine().trimmed();
    if (number.isEmpty())
        return;
    m_display = QLatin1Char(':') + QString::fromLatin1(number);
    findPixel();
}

VirtualScreen::~VirtualScreen()
{
    m_server.terminate();
    m_server.waitForFinished(patience);
}

void VirtualScreen::findPixel()
{
    m_framebuffer.setFileName(m_directory.filePath(QStringLiteral("Xvfb_screen0")));
    if (!m_framebuffer.open(QIODevice::ReadOnly))
        return;
    const uchar *dump = m_framebuffer.map(0, m_framebuffer.size());
    if (!dump)
        return;
    constexpr qsizetype bytesPerColor = 12;
    const qsizetype lineLength = word(dump, 12);
    const qsizetype pixels = qsizetype(word(dump, 0)) + qsizetype(word(dump, 19)) * bytesPerColor;
    const qsizetype offset = pixels + line * lineLength + column * bytesPerPixel;
    if (offset + bytesPerPixel <= m_framebuffer.size())
        m_pixel = dump + offset;
}

bool VirtualScreen::isDrawnOn() const
{
    // Red, green and blue; the fourth byte means nothing.
    return (m_pixel[0] | m_pixel[1] | m_pixel[2]) != 0;
}

} // namespace tessaly::bench
