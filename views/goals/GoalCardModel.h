#pragma once

#include "model/GoalOperations.h"
#include "store/PlannerStore.h"
#include "views/goals/GoalDetails.h"
#include "views/goals/GoalRows.h"

#include <QHash>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// One goal's card: its header, and its subgoals with their tasks as one flat list. Every change goes through the store
/// and is saved at once; what is being edited and what is typed into the add rows is lost with the screen.
class GoalCardModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to GoalViewModel")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY goalChanged)
    Q_PROPERTY(QString dueText READ dueText NOTIFY goalChanged)
    Q_PROPERTY(bool isComplete READ isComplete NOTIFY goalChanged)
    Q_PROPERTY(double progress READ progress NOTIFY goalChanged)
    Q_PROPERTY(QString percentageText READ percentageText NOTIFY goalChanged)
    Q_PROPERTY(QString explanation READ explanation NOTIFY goalChanged)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isEditingChanged)
    Q_PROPERTY(QString newSubgoal MEMBER m_newSubgoal NOTIFY newSubgoalChanged)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(tessaly::GoalDetails *details READ details CONSTANT)

public:
    /// The store must outlive the card.
    GoalCardModel(PlannerStore &store, const QUuid &goalID, QObject *parent);
    /// What is left without a name while it is edited gets its former one back.
    ~GoalCardModel() override;

    [[nodiscard]] const QString &title() const { return m_goal.title; }
    void setTitle(const QString &title);
    /// "Due: " and the date; empty without one.
    [[nodiscard]] QString dueText() const;
    [[nodiscard]] bool isComplete() const { return m_goal.isComplete; }
    /// 0 to 1
    [[nodiscard]] double progress() const { return m_goal.calculatedProgress(); }
    [[nodiscard]] QString percentageText() const;
    /// Which tasks weigh how much, a line each; empty when the progress does not come from tasks.
    [[nodiscard]] QString explanation() const;
    [[nodiscard]] bool isEditing() const { return m_editing.contains(m_goalID); }
    [[nodiscard]] GoalCardRows *rows() { return &m_rows; }
    [[nodiscard]] GoalDetails *details() { return &m_details; }

    Q_INVOKABLE void toggle();
    /// Begins or ends editing. What ends without a name gets its former one back; so with rows.
    Q_INVOKABLE void toggleEditing();
    /// Appends a subgoal titled as typed; false when that is blank.
    Q_INVOKABLE bool addSubgoal();

    // Verbs on a row of the list. Rows that are not there or of another part are ignored.
    Q_INVOKABLE void toggleRow(int row);
    Q_INVOKABLE void toggleRowEditing(int row);
    Q_INVOKABLE void removeRow(int row);
    /// Of an AddTask row: what is typed.
    Q_INVOKABLE void setRowTitle(int row, const QString &title);
    /// Of an AddTask row: what is chosen. Rounded to one digit after the point.
    Q_INVOKABLE void setRowWeight(int row, double weight);
    /// Adds the task of an AddTask row and empties it; false when its title is blank.
    Q_INVOKABLE bool addTask(int row);
    /// Moves the subgoal or task whose id was dropped on the row immediately before the row. False when the text is no
    /// id of another subgoal, or of another task of the same subgoal.
    Q_INVOKABLE bool drop(const QString &idText, int row);
    /// The row before which a dragged row would land with the pointer over another row: a subgoal before the subgoal
    /// whose block that is, a task before a task of its own subgoal. -1 when it cannot land there.
    Q_INVOKABLE [[nodiscard]] int targetFor(int draggedRow, int hoveredRow) const;
    /// Whether a row is the other row, or stands in the block of that subgoal.
    Q_INVOKABLE [[nodiscard]] bool isPartOf(int row, int otherRow) const;
    /// Moves a subgoal or task up (-1) or down (1) by one place.
    Q_INVOKABLE bool moveBy(int row, int step);

    /// Shows the goal as the store holds it.
    void refresh();

signals:
    void goalChanged();
    void isEditingChanged();
    void newSubgoalChanged();

private:
    /// The task that is to be added to a subgoal.
    struct NewTask
    {
        QString title = {};
        double weight = defaultTaskWeight;
    };

    /// A task without ids for a row that is not there.
    [[nodiscard]] GoalCardRow rowAt(int row) const { return m_rows.rows().value(row); }
    /// Begins or ends editing; returns the title, or the former one if editing ends without a name.
    QString flipEditing(const QUuid &id, const QString &title);
    /// Saves what the operation has changed, if it says so.
    template <class Operation>
    bool change(Operation operation);
    [[nodiscard]] QUuid neighbour(const GoalCardRow &row, int step) const;
    bool move(const GoalCardRow &place, const QUuid &dragged, const QUuid &target);
    void refreshRows();

    PlannerStore &m_store;
    QUuid m_goalID;
    Goal m_goal;
    GoalCardRows m_rows;
    GoalDetails m_details;
    QString m_newSubgoal;
    /// By subgoal.
    QHash<QUuid, NewTask> m_newTasks;
    /// The former titles of what is being edited: the goal, subgoals, tasks.
    QHash<QUuid, QString> m_editing;
};

} // namespace tessaly
