#pragma once

#include "model/DayPlan.h"
#include "model/DisplayTitle.h"
#include "model/ScheduleDraft.h"
#include "views/RowListModel.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <QtQml/qqml.h>
#include <QUuid>

namespace tessaly {

class PlannerStore;

/// A task in the note editor.
struct NoteTaskRow
{
    QUuid id = {};
    QString title = {};
    bool isComplete = false;

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const NoteTaskRow &) const = default;
};

/// The note editor of one schedule, in view or edit mode. It works on a copy and emits saved() with the changed
/// schedule. Typed text is kept as a draft until it is saved or cancelled; the next editor of the schedule restores it.
class ScheduleNoteModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isEditingChanged)
    Q_PROPERTY(bool isBroughtBack READ isBroughtBack NOTIFY isEditingChanged)
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QString timeText READ timeText NOTIFY languageChanged)
    Q_PROPERTY(QString savedTag READ savedTag CONSTANT)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY fieldsChanged)
    Q_PROPERTY(QString tag READ tag WRITE setTag NOTIFY fieldsChanged)
    Q_PROPERTY(QString notes READ notes WRITE setNotes NOTIFY fieldsChanged)
    Q_PROPERTY(QString newTask READ newTask WRITE setNewTask NOTIFY fieldsChanged)
    Q_PROPERTY(QDateTime start READ start WRITE setStart NOTIFY fieldsChanged)
    Q_PROPERTY(QDateTime end READ end WRITE setEnd NOTIFY fieldsChanged)
    Q_PROPERTY(QString endNote READ endNote NOTIFY fieldsChanged)
    Q_PROPERTY(QString colorKey READ colorKey NOTIFY fieldsChanged)
    Q_PROPERTY(int leadChoice READ leadChoice WRITE setLeadChoice NOTIFY fieldsChanged)
    Q_PROPERTY(QStringList leadChoices READ leadChoices NOTIFY languageChanged)
    Q_PROPERTY(QAbstractItemModel *tasks READ tasks CONSTANT)
    Q_PROPERTY(QString plannedTitle READ plannedTitle NOTIFY plannedItemChanged)
    Q_PROPERTY(bool isOfGoalTask READ isOfGoalTask NOTIFY plannedItemChanged)
    Q_PROPERTY(bool isPlannedComplete READ isPlannedComplete NOTIFY plannedItemChanged)
    Q_PROPERTY(int taskCount READ taskCount NOTIFY tasksChanged)

public:
    /// The store must outlive the note. If there is a draft, the note opens in edit mode, whatever the mode is.
    ScheduleNoteModel(PlannerStore &store, const ScheduleItem &item, NoteMode mode, QObject *parent = nullptr);
    ~ScheduleNoteModel() override;

    [[nodiscard]] const QUuid &scheduleId() const { return m_draft.item.id; }
    [[nodiscard]] bool isEditing() const { return m_draft.isEditing; }
    /// Whether a draft was restored.
    [[nodiscard]] bool isBroughtBack() const { return m_isBroughtBack; }
    /// The schedule as it was when the note opened: its title, its times in words, its tag.
    [[nodiscard]] QString heading() const { return displayTitle(m_draft.item); }
    [[nodiscard]] QString timeText() const;
    [[nodiscard]] QString savedTag() const { return m_draft.item.tag.value_or(QString()); }

    [[nodiscard]] const QString &title() const { return m_draft.title; }
    void setTitle(const QString &title) { type(m_draft.title, title); }
    [[nodiscard]] const QString &tag() const { return m_draft.tag; }
    void setTag(const QString &tag) { type(m_draft.tag, tag); }
    [[nodiscard]] const QString &notes() const { return m_draft.notes; }
    void setNotes(const QString &notes) { type(m_draft.notes, notes); }
    [[nodiscard]] const QString &newTask() const { return m_draft.newTask; }
    void setNewTask(const QString &title) { type(m_draft.newTask, title); }
    [[nodiscard]] QDateTime start() const;
    void setStart(const QDateTime &start);
    [[nodiscard]] QDateTime end() const;
    /// As ScheduleFormModel::endNote().
    [[nodiscard]] QString endNote() const;
    void setEnd(const QDateTime &end);
    /// The colour in which the schedule is shown: a palette name or "#RRGGBB".
    [[nodiscard]] QString colorKey() const;
    /// Gives it a colour of its own.
    Q_INVOKABLE void setColorHex(const QString &hex);
    /// When the schedule reminds: a row of leadChoices(). The first leaves that to its calendar; one that was not
    /// chosen here stands at the end.
    [[nodiscard]] int leadChoice() const;
    void setLeadChoice(int row);
    [[nodiscard]] QStringList leadChoices() const;
    [[nodiscard]] RowListModel<NoteTaskRow> *tasks() { return &m_tasks; }
    [[nodiscard]] int taskCount() const { return static_cast<int>(m_draft.tasks.size()); }

    /// The to-do or goal task that the schedule gives time to; empty when there is none.
    [[nodiscard]] QString plannedTitle() const { return planned().title; }
    [[nodiscard]] bool isOfGoalTask() const { return planned().isGoalTask; }
    [[nodiscard]] bool isPlannedComplete() const { return planned().isComplete; }
    /// Completes it, or opens it again.
    Q_INVOKABLE void togglePlanned();

    Q_INVOKABLE void startEditing();
    /// Back to view mode; what was typed is lost.
    Q_INVOKABLE void cancel();
    /// Back to view mode; what was typed is there again when editing is started the next time. Cancels if nothing was.
    Q_INVOKABLE void setAside();
    /// Emits saved() with the schedule as edited and returns to view mode.
    Q_INVOKABLE void save();
    Q_INVOKABLE void close() { emit closed(); }
    /// Deletes the schedule without asking.
    Q_INVOKABLE void remove();
    /// Adds another schedule like it, for editing.
    Q_INVOKABLE void duplicate() { emit duplicated(m_draft.item); }
    /// View mode: flips the task and emits saved() at once.
    Q_INVOKABLE void toggleTask(int row);

    Q_INVOKABLE void addTask();
    Q_INVOKABLE void deleteTask(int row);
    Q_INVOKABLE void setTaskTitle(int row, const QString &title)
    {
        changeTask(row, [&](ScheduleTask &task) { task.title = title; });
    }
    Q_INVOKABLE void setTaskComplete(int row, bool isComplete)
    {
        changeTask(row, [&](ScheduleTask &task) { task.isComplete = isComplete; });
    }

signals:
    void isEditingChanged();
    void languageChanged();
    void fieldsChanged();
    void tasksChanged();
    void plannedItemChanged();
    void saved(const tessaly::ScheduleItem &item);
    void removed(const tessaly::ScheduleItem &item);
    void duplicated(const tessaly::ScheduleItem &item);
    void closed();
    /// What was typed has been given up.
    void cancelled();

private:
    [[nodiscard]] PlannedItem planned() const;
    [[nodiscard]] bool hasTask(int row) const { return row >= 0 && row < m_draft.tasks.size(); }
    template <class Change>
    void changeTask(int row, Change change)
    {
        if (!hasTask(row))
            return;
        change(m_draft.tasks[row]);
        refreshTasks();
    }
    void type(QString &field, const QString &text);
    void refreshTasks();
    void onTyped();
    void takeUpDraft();
    void keepDraft();
    void dropDraft();
    void leaveEditing();

    PlannerStore &m_store;
    ScheduleDraft m_draft;
    ScheduleDraft m_opened;
    QTimer m_draftTimer;
    bool m_isBroughtBack = false;
    RowListModel<NoteTaskRow> m_tasks;
};

} // namespace tessaly
