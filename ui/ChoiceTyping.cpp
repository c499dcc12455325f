#include "ui/ChoiceTyping.h"

namespace tessaly {
namespace {

/// The first entry from `start` on, and round to it, that begins so.
int nextEntry(const QStringList &entries, const QString &beginning, int start)
{
    for (qsizetype step = 0; step < entries.size(); ++step) {
        const qsizetype index = (start + step) % entries.size();
        if (entries.at(index).startsWith(beginning, Qt::CaseInsensitive))
            return static_cast<int>(index);
    }
    return -1;
}

} // namespace

int ChoiceTyping::choose(const QString &character, const QStringList &entries, int current)
{
    const bool isFirst = m_typed.isEmpty();
    m_typed += character;
    const int found = nextEntry(entries, m_typed, isFirst ? current + 1 : qMax(0, current));
    const bool isRepeated = m_typed.count(character, Qt::CaseInsensitive) == m_typed.size();
    return found < 0 && isRepeated ? nextEntry(entries, character, current + 1) : found;
}

void ChoiceTyping::setCurrentIndex(QQuickItem *comboBox, int index)
{
    comboBox->setProperty("currentIndex", index);
}

} // namespace tessaly
