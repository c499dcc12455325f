#pragma once

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

/// The note editor of one schedule, in view or edit mode. It works on a copy and hands the changed schedule over. What
/// is typed is kept as a draft until it is saved or cancelled, and the next editor of the schedule brings it back.
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
    Q_PROPERTY(QAbstractItemModel *tasks READ tasks CONSTANT)
    Q_PROPERTY(int taskCount READ taskCount NOTIFY tasksChanged)

public:
    /// The store must outlive the note. Opens in edit mode, whatever was asked for, when a draft comes back.
    ScheduleNoteModel(PlannerStore &store, const ScheduleItem &item, NoteMode mode, QObject *parent = nullptr);
    ~ScheduleNoteModel() override;

    [[nodiscard]] bool isEditing() const { return m_draft.isEditing; }
    /// Whether what is being edited was typed before the note was opened.
    [[nodiscard]] bool isBroughtBack() const { return m_isBroughtBack; }
    /// The schedule as it was when the note opened: its title, its times in words, its tag.
    [[nodiscard]] QString heading() const { return displayTitle(m_draft.item); }
    [[nodiscard]] QString timeText() const;
    [[nodiscard]] QString savedTag() const { return m_draft.item.tag.value_or(QString()); }

    [[nodiscard]] const QString &title() const { return m_draft.title; }
    void setTitle(const QString &title);
    [[nodiscard]] const QString &tag() const { return m_draft.tag; }
    void setTag(const QString &tag);
    [[nodiscard]] const QString &notes() const { return m_draft.notes; }
    void setNotes(const QString &notes);
    [[nodiscard]] const QString &newTask() const { return m_draft.newTask; }
    void setNewTask(const QString &title);
    [[nodiscard]] QDateTime start() const;
    void setStart(const QDateTime &start);
    [[nodiscard]] QDateTime end() const;
    void setEnd(const QDateTime &end);
    [[nodiscard]] RowListModel<NoteTaskRow> *tasks() { return &m_tasks; }
    [[nodiscard]] int taskCount() const { return static_cast<int>(m_draft.tasks.size()); }

    Q_INVOKABLE void startEditing();
    /// Back to view mode; what was typed is lost.
    Q_INVOKABLE void cancel();
    /// Emits saved() with the schedule as edited and returns to view mode.
    Q_INVOKABLE void save();
    Q_INVOKABLE void close() { emit closed(); }
    /// View mode: flips the task and emits saved() at once.
    Q_INVOKABLE void toggleTask(int row);

    Q_INVOKABLE void addTask();
    Q_INVOKABLE void deleteTask(int row);
    Q_INVOKABLE void setTaskTitle(int row, const QString &title);
    Q_INVOKABLE void setTaskComplete(int row, bool isComplete);

signals:
    void isEditingChanged();
    void languageChanged();
    void fieldsChanged();
    void tasksChanged();
    void saved(const tessaly::ScheduleItem &item);
    void closed();

private:
    [[nodiscard]] bool hasTask(int row) const { return row >= 0 && row < m_draft.tasks.size(); }
    void refreshTasks();
    void onTyped();
    void keepDraft();
    void dropDraft();

    PlannerStore &m_store;
    ScheduleDraft m_draft;
    ScheduleDraft m_opened;
    QTimer m_draftTimer;
    bool m_isBroughtBack = false;
    RowListModel<NoteTaskRow> m_tasks;
};

} // namespace tessaly
