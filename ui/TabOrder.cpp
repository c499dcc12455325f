#include "ui/TabOrder.h"

#include <algorithm>
#include <limits>

namespace tessaly {

void TabOrder::goDown(QQuickItem *contentItem, qreal firstRowY)
{
    // Not by their places: rows may be on their way to them.
    const auto place = [firstRowY](const QQuickItem *child) {
        const QVariant index = child->property("index");
        return index.isValid() ? index.toInt() : child->y() < firstRowY ? -1 : std::numeric_limits<int>::max();
    };
    QList<QQuickItem *> children = contentItem->childItems();
    std::ranges::stable_sort(children, {}, place);
    for (qsizetype index = 1; index < children.size(); ++index)
        children.at(index)->stackAfter(children.at(index - 1));
}

} // namespace tessaly
