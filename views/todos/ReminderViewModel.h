#pragma once

#include "model/DateLabels.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"
#include "views/todos/ReminderEditor.h"
#include "views/todos/ReminderRows.h"

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessaly {

/// The state of the to-do screen: the add form and the list. Created each time the screen opens; what was typed into
/// the form is there again, see FormDrafts.
class ReminderViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY formChanged)
    Q_PROPERTY(QString requirement MEMBER m_requirement NOTIFY formChanged)
    Q_PROPERTY(bool hasDueDate READ hasDueDate WRITE setHasDueDate NOTIFY formChanged)
    Q_PROPERTY(QDateTime dueDate READ dueDate WRITE setDueDate NOTIFY formChanged)
    Q_PROPERTY(int repetition READ repetition WRITE setRepetition NOTIFY formChanged)
    Q_PROPERTY(QStringList repetitions READ repetitions NOTIFY repetitionsChanged)
    Q_PROPERTY(bool isAfterCompletion READ isAfterCompletion WRITE setAfterCompletion NOTIFY formChanged)
    Q_PROPERTY(QString nextDateText READ nextDateText NOTIFY formChanged)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(tessaly::ReminderEditor *editor READ editor CONSTANT)

public:
    explicit ReminderViewModel(QObject *parent = nullptr);
    /// Saves the to-do that is being edited, and keeps what stands in the form.
    ~ReminderViewModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model.
    void setStore(PlannerStore *store);

    [[nodiscard]] const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] bool hasDueDate() const { return m_hasDueDate; }
    void setHasDueDate(bool hasDueDate);
    /// Local wall-clock time, to the minute or finer. Until it is set, one hour after the form was last used.
    [[nodiscard]] QDateTime dueDate() const;
    void setDueDate(const QDateTime &dueDate);
    /// How the to-do with a due date repeats: a row of repetitions(), the first for never.
    [[nodiscard]] int repetition() const { return m_repetition; }
    void setRepetition(int row);
    [[nodiscard]] QStringList repetitions() const;
    /// Whether the next one counts from the day on which this one is completed.
    [[nodiscard]] bool isAfterCompletion() const { return m_isAfterCompletion; }
    void setAfterCompletion(bool isAfterCompletion);
    /// When the to-do would be due the next time, completed on the day on which it is due; empty if it does not repeat.
    [[nodiscard]] QString nextDateText() const;
    /// See reminderListRows().
    [[nodiscard]] ReminderListRows *rows() { return &m_rows; }
    /// The to-do that is being edited.
    [[nodiscard]] ReminderEditor *editor() { return &m_editor; }

    /// Adds the form's to-do and empties title and requirement; a blank title does nothing and returns false.
    Q_INVOKABLE bool add();
    /// Adds the form's to-do with that title and due date, which the form does not keep.
    Q_INVOKABLE bool addUnderstood(const QString &title, const QDateTime &dueDate);
    /// Completes or reopens the to-do of a row. Returns the row that the focus goes on to, see
    /// focusHeirAfter().
    Q_INVOKABLE int toggle(int row);
    /// Deletes the to-do of a row without asking. Returns the row that the focus goes on to.
    Q_INVOKABLE int remove(int row);
    /// Opens the groups above the to-do; its row, or -1 for an unknown one.
    Q_INVOKABLE int reveal(const QString &reminderId);
    /// Edits the to-do of a row, after saving the one that was edited until then. Its row now, or -1.
    Q_INVOKABLE int edit(int row);
    /// Ends editing with or without saving, and opens the groups above the to-do: its row, or -1 if it is gone.
    Q_INVOKABLE int endEditing(bool isSaved);
    /// Saves the to-do that is being edited. If that takes it to another group, moved() tells.
    Q_INVOKABLE void leaveEditing();
    /// See tessaly::weekHeaderFor(). Only open to-dos move.
    Q_INVOKABLE [[nodiscard]] int weekHeaderFor(int draggedRow, int hoveredRow) const;
    /// Moves the due date to the week of a header row, on its weekday and at its time. A to-do without one gets one in
    /// that week, or in the present one from the header of the weeks: see dueInWeek().
    Q_INVOKABLE void moveToWeek(int row, int header);
    /// Moves the due date by so many weeks and opens the groups above the to-do: its row, or -1 where it does not move.
    /// A to-do without one becomes due in the present week when it is to move later.
    Q_INVOKABLE int moveByWeeks(int row, int weeks);
    /// The title of the group in which the row stands, or which it heads.
    Q_INVOKABLE [[nodiscard]] QString groupTitle(int row) const;
    /// Opens or closes the group of a header row; on other rows and empty groups does nothing.
    Q_INVOKABLE void setExpanded(int row, bool isExpanded);

signals:
    void storeChanged();
    void formChanged();
    void repetitionsChanged();
    /// The to-do just added is shown in this row, or this is the header of the closed group that holds it.
    void added(int row);
    /// A to-do that undo or redo has brought back or changed is shown in this row, or this is the header of the closed
    /// group that holds it.
    void restored(int row);
    /// A to-do has got to another group. It is shown in this row, or this is the header of the closed group.
    void moved(int row);

private:
    void useForm();
    /// The first day of the week in which something can still become due.
    [[nodiscard]] QDate thisWeek() const;
    /// Moves the due date as one step; whether the to-do can be moved there.
    bool setWeek(const QUuid &id, QDate firstDay, bool isReported);
    /// The row of the to-do, or -1.
    [[nodiscard]] int rowOfItem(const QUuid &id) const;
    /// The to-do as the form describes it.
    [[nodiscard]] ReminderItem draft() const;
    void showChanged(const StateChange &change);
    template <class Change>
    int leaveRow(int row, Change change);
    void onTimeZoneChanged();
    /// To-dos without a completion time are listed in the current month.
    void onMonthBegun();
    void refreshRows();
    /// Waits for the next to-do that becomes overdue.
    void waitForNextDue();

    PlannerStore *m_store = nullptr;
    ReminderListRows m_rows;
    ReminderGroupStates m_groups;
    ReminderEditor m_editor;
    std::unique_ptr<DateLabels> m_labels;
    std::unique_ptr<Alarm> m_nextMonth;
    std::unique_ptr<Alarm> m_nextDue;
    QString m_title;
    QString m_requirement;
    Instant m_dueDate;
    bool m_hasDueDate = false;
    bool m_isDueDateChosen = false;
    int m_repetition = 0;
    bool m_isAfterCompletion = false;
};

} // namespace tessaly
