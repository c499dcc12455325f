#include "store/UndoHistory.h"

#include <utility>

namespace tessaly {

namespace {

UndoStep takeLast(std::deque<UndoStep> &steps)
{
    UndoStep step = std::move(steps.back());
    steps.pop_back();
    return step;
}

} // namespace

void UndoHistory::record(const UndoStep &step, Instant now)
{
    const bool isTyping = m_canContinue && now.seconds - m_lastEdit.seconds <= typingPauseSeconds &&
                          isSameText(m_done.back().change, step.change);
    if (isTyping)
        m_done.back().change = joinedEdits(std::move(m_done.back().change), step.change);
    else
        m_done.push_back(step);
    if (m_done.size() > capacity)
        m_done.pop_front();
    m_undone.clear();
    m_lastEdit = now;
    m_canContinue = true;
    emit changed();
    emit recorded(step);
}

void UndoHistory::joinLast()
{
    if (m_done.size() < 2 || !isSameRecord(m_done.at(m_done.size() - 2).change, m_done.back().change))
        return;
    const UndoStep last = takeLast(m_done);
    m_done.back().change = joinedEdits(std::move(m_done.back().change), last.change);
    emit changed();
}

void UndoHistory::forget(const QUuid &documentID)
{
    const auto isOfDocument = [&documentID](const auto &change) { return change.id == documentID; };
    for (std::deque<UndoStep> *steps : {&m_done, &m_undone}) {
        std::erase_if(*steps, [&isOfDocument](UndoStep &step) {
            const qsizetype removed =
                step.change.documents.removeIf(isOfDocument) + step.change.deletedDocuments.removeIf(isOfDocument);
            return removed > 0 && step.change.isEmpty();
        });
    }
    m_canContinue = false;
    emit changed();
}

UndoStep UndoHistory::takeUndo()
{
    m_canContinue = false;
    return takeLast(m_done);
}

UndoStep UndoHistory::takeRedo()
{
    m_canContinue = false;
    return takeLast(m_undone);
}

void UndoHistory::putUndone(const UndoStep &step)
{
    if (!step.change.isEmpty())
        m_undone.push_back(step);
    emit changed();
}

void UndoHistory::putRedone(const UndoStep &step)
{
    if (!step.change.isEmpty())
        m_done.push_back(step);
    emit changed();
}

} // namespace tessaly
