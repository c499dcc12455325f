#pragma once

#include "model/DateLabels.h"
#include "model/Repetition.h"
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
    Q_PROPERTY(QStringList repetitions READ repetitions NOTIFY repetitionsChanged)
    Q_PROPERTY(int repetition READ repetition WRITE setRepetition NOTIFY changed)
    Q_PROPERTY(bool isAfterCompletion READ isAfterCompletion WRITE setAfterCompletion NOTIFY changed)
    Q_PROPERTY(QString nextDateText READ nextDateText NOTIFY changed)

public:
    explicit ReminderEditor(QObject *parent = nullptr);

    /// The store must outlive the editor.
    void setStore(PlannerStore *store);

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

    /// See repetitionTexts().
    [[nodiscard]] QStringList repetitions() const;
    /// A row of repetitions(). A to-do without a due date does not repeat.
    [[nodiscard]] int repetition() const;
    void setRepetition(int row);
    [[nodiscard]] bool isAfterCompletion() const { return m_isAfterCompletion; }
    void setAfterCompletion(bool isAfterCompletion);
    /// When the to-do would be due the next time, completed on the day on which it is due; empty if it does not repeat.
    [[nodiscard]] QString nextDateText() const;

    /// Takes the to-do over, if it is there; what was edited until then is lost.
    void begin(const QUuid &id);
    /// Ends editing. As one step, the store gets what the user has changed; a blank title stays what it was. Nothing
    /// when the to-do is gone.
    void save();
    void cancel();

signals:
    void changed();
    void repetitionsChanged();
    /// Editing has begun or ended.
    void idChanged();

private:
    /// `item` with what has been edited.
    [[nodiscard]] ReminderItem edited(ReminderItem item) const;
    [[nodiscard]] Repetition formerRepetition() const
    {
        return repetitionOf(m_former.recurrenceRule.value_or(QString()));
    }

    PlannerStore *m_store = nullptr;
    ReminderItem m_former{.id = {}};
    QString m_title;
    QString m_requirement;
    std::optional<Instant> m_dueDate;
    Repetition m_repetition = Repetition::Never;
    bool m_isAfterCompletion = false;
};

} // namespace tessaly
