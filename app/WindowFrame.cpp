#include "app/WindowFrame.h"

#include <QStringList>

#include <algorithm>

namespace tessaly {

namespace {

/// The part of the upper edge that must be visible to drag the window.
constexpr QSize graspable(96, 24);

/// Room for the frames that window managers draw.
constexpr QSize frameRoom(16, 48);
/// No frame is thinner: a window that leaves this much room fits the screen.
constexpr QSize thinnestFrame(0, 18);

} // namespace

QString WindowFrame::toString() const
{
    QString text =
        QStringLiteral("%1 %2 %3 %4").arg(position.x()).arg(position.y()).arg(size.width()).arg(size.height());
    if (isMaximized)
        text += QLatin1String(" maximized");
    return text;
}

std::optional<WindowFrame> WindowFrame::fromString(const QString &text)
{
    const QStringList words = text.split(u' ');
    if (words.size() < 4 || words.size() > 5)
        return std::nullopt;
    int numbers[4] = {};
    for (int i = 0; i < 4; ++i) {
        bool isNumber = false;
        numbers[i] = words[i].toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    const QSize size(numbers[2], numbers[3]);
    if (size.isEmpty())
        return std::nullopt;
    return WindowFrame{{numbers[0], numbers[1]}, size, words.value(4) == QLatin1String("maximized")};
}

QSize firstSize(QSize size, QSize area, QSize minimumSize)
{
    return size.boundedTo(area - frameRoom).expandedTo(minimumSize);
}

std::optional<WindowFrame> fitted(const WindowFrame &frame, const QList<QRect> &screens, QSize minimumSize)
{
    const QRect upperEdge(frame.position, QSize(frame.size.width(), graspable.height()));
    for (const QRect &screen : screens) {
        const QRect visible = screen.intersected(upperEdge);
        if (visible.width() < graspable.width() || visible.height() < graspable.height())
            continue;
        const bool isLarge = frame.size != frame.size.boundedTo(screen.size() - thinnestFrame);
        const QSize size =
            isLarge ? firstSize(frame.size, screen.size(), minimumSize) : frame.size.expandedTo(minimumSize);
        if (!isLarge || size == frame.size)
            return WindowFrame{frame.position, size, frame.isMaximized};
        const QSize spare = screen.size() - frameRoom - size;
        const QPoint last = screen.topLeft() + QPoint(std::max(0, spare.width()), std::max(0, spare.height()));
        return WindowFrame{{std::clamp(frame.position.x(), screen.x(), last.x()),
                            std::clamp(frame.position.y(), screen.y(), last.y())},
                           size,
                           frame.isMaximized};
    }
    return std::nullopt;
}

} // namespace tessaly
