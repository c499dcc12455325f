#pragma once

#include "model/Instant.h"
#include "model/StepDescription.h"

#include <QObject>

#include <deque>

namespace tessaly {

/// A step that can be undone.
struct UndoStep
{
    StepDescription description = {};
    StateChange change = {};
};

/// The steps of this run of the program, the newest last. It keeps them; PlannerStore performs them.
class UndoHistory : public QObject
{
    Q_OBJECT

public:
    /// Older steps are forgotten.
    static constexpr size_t capacity = 1000;
    /// Edits of one text that are no further apart are one step.
    static constexpr double typingPauseSeconds = 5;

    using QObject::QObject;

    /// The step that undo, or redo, would take next; null when there is none.
    [[nodiscard]] const UndoStep *nextUndo() const { return m_done.empty() ? nullptr : &m_done.back(); }
    [[nodiscard]] const UndoStep *nextRedo() const { return m_undone.empty() ? nullptr : &m_undone.back(); }

    /// Adds a step that has just been done, or continues the last one; nothing can be redone any more.
    void record(const UndoStep &step, Instant now);
    /// Makes the last two steps one if both edit the same one record and nothing else.
    void joinLast();
    /// Takes the step away. There must be one.
    [[nodiscard]] UndoStep takeUndo();
    [[nodiscard]] UndoStep takeRedo();
    /// Forgets all changes of the document, which is gone for good.
    void forget(const QUuid &documentID);
    /// Adds a step that was undone, or done again; one that changed nothing is dropped.
    void putUndone(const UndoStep &step);
    void putRedone(const UndoStep &step);

signals:
    /// What undo or redo would do next has changed.
    void changed();
    /// The user has done something.
    void recorded(const tessaly::UndoStep &step);
    /// The change of `step` is what undo or redo did; empty when nothing was left to do. `hasNewEvent`: an event that
    /// was deleted with its schedule is written again.
    void undone(const tessaly::UndoStep &step, bool hasNewEvent);
    void redone(const tessaly::UndoStep &step);

private:
    std::deque<UndoStep> m_done;
    std::deque<UndoStep> m_undone;
    Instant m_lastEdit;
    /// Whether the last step was recorded, not redone, and nothing came after it.
    bool m_canContinue = false;
};

} // namespace tessaly
