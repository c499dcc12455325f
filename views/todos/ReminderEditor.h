#pragma once

#include "store/PlannerStore.h"

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>
#include <QUuid>

namespace tessaly {

/// The to-do that is edited in its row, as it stands in the fields. The store knows nothing of it until it is saved.
class ReminderEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ReminderViewModel")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
    Q_PROPERTY(QString formerTitle READ formerTitle NOTIFY changed)
    Q_PROPERTY(QString requirement READ requirement WRITE setRequirement NOTIFY changed)
    Q_PROPERTY(bool hasDueDate READ hasDueDate WRITE setHasDueDate NOTIFY changed)
    Q_PROPERTY(QDateTime dueDate READ dueDate WRITE setDueDate NOTIFY changed)

public:
    explicit ReminderEditor(QObject *parent = nullptr);

    /// The store must outlive the editor.
    void setStore(PlannerStore *store) { m_store = store; }

    /// Null while nothing is edited.
    [[nodiscard]] const QUuid &id() const { return m_former.id; }
    [[nodiscard]] const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] const QString &formerTitle() const { return m_former.title; }
    [[nodiscard]] const QString &requirement() const { return m_requirement; }
    void setRequirement(const QString &requirement);
    [[nodiscard]] bool hasDueDate() const { return m_dueDate.has_value(); }
    /// A to-do that had no due date is due in an hour, one that had one has it again.
    void setHasDueDate(bool hasDueDate);
    /// Local wall-clock time, invalid without a due date.
    [[nodiscard]] QDateTime dueDate() const;
    void setDueDate(const QDateTime &dueDate);

    /// Takes the to-do over, if it is there; what was edited until then is lost.
    void begin(const QUuid &id);
    /// Ends editing. As one step, the store gets what the user has changed; a blank title stays what it was. Nothing
    /// when the to-do is gone.
    void save();
    void cancel();

signals:
    void changed();
    /// Editing has begun or ended.
    void idChanged();

private:
    PlannerStore *m_store = nullptr;
    ReminderItem m_former{.id = {}};
    QString m_title;
    QString m_requirement;
    std::optional<Instant> m_dueDate;
};

} // namespace tessaly
