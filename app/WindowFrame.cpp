#include "app/WindowFrame.h"

#include <QStringList>

#include <algorithm>

namespace tessaly {

namespace {

/// So much of the upper edge must be visible to drag the window by.
constexpr QSize graspable(96, 24);

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

std::optional<WindowFrame> fitted(const WindowFrame &frame, const QList<QRect> &screens, QSize minimumSize)
{
    const QRect upperEdge(frame.position, QSize(frame.size.width(), graspable.height()));
    for (const QRect &screen : screens) {
        const QRect visible = screen.intersected(upperEdge);
        if (visible.width() < graspable.width() || visible.height() < graspable.height())
            continue;
        return WindowFrame{frame.position, frame.size.boundedTo(screen.size()).expandedTo(minimumSize),
                           frame.isMaximized};
    }
    return std::nullopt;
}

} // namespace tessaly
