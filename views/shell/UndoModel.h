#pragma once

#include "model/StateChange.h"
#include "store/Message.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class PlannerStore;
class UndoHistory;
struct UndoStep;

/// What the window says of undo: the menu's entries, and the message after a removal or an undo.
class UndoModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell's model has the one that there is.")

    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(QString undoText READ undoText NOTIFY changed)
    Q_PROPERTY(QString redoText READ redoText NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(bool isUndoOffered READ isUndoOffered NOTIFY messageChanged)

public:
    /// The store must outlive the model.
    explicit UndoModel(PlannerStore &store, QObject *parent = nullptr);

    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    /// Names the step: Undo “Delete to-do”.
    [[nodiscard]] QString undoText() const;
    [[nodiscard]] QString redoText() const;

    /// What was removed, restored or undone last; empty once dismissed.
    [[nodiscard]] QString message() const;
    /// Whether the message offers to undo what it reports.
    [[nodiscard]] bool isUndoOffered() const { return m_isUndoOffered; }

    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    Q_INVOKABLE void dismiss();

signals:
    void changed();
    void messageChanged();
    /// There is a message, even the same as before; after messageChanged().
    void reported();

private:
    void report(const TextPair &message, bool isUndoOffered);
    void reportStep(const UndoStep &step);
    void reportUndone(const UndoStep &step, bool hasNewEvent);
    void reportRedone(const UndoStep &step);

    PlannerStore &m_store;
    UndoHistory &m_history;
    TextPair m_message;
    bool m_isUndoOffered = false;
};

} // namespace tessaly
