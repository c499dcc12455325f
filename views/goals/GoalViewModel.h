#pragma once

#include "store/PlannerStore.h"
#include "views/goals/GoalCardModel.h"
#include "views/goals/GoalRows.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QtQml/qqml.h>

namespace tessaly {

/// The state of the goals screen: the form, the active goals and the completed ones by category. Created each
/// time the screen opens.
class GoalViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString title MEMBER m_title NOTIFY formChanged)
    Q_PROPERTY(QString summary MEMBER m_summary NOTIFY formChanged)
    Q_PROPERTY(QString category MEMBER m_category NOTIFY formChanged)
    Q_PROPERTY(bool hasDueDate MEMBER m_hasDueDate NOTIFY formChanged)
    Q_PROPERTY(QDateTime targetDate READ targetDate WRITE setTargetDate NOTIFY formChanged)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)

public:
    explicit GoalViewModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model. The target date becomes one month from now.
    void setStore(PlannerStore *store);

    /// Local wall-clock time.
    [[nodiscard]] QDateTime targetDate() const;
    void setTargetDate(const QDateTime &date);
    /// See goalListRoles().
    [[nodiscard]] GoalListRows *rows() { return &m_rows; }

    /// Adds the form's goal and empties its texts; a blank title does nothing and returns false.
    Q_INVOKABLE bool add();
    /// The card of a goal, created on first use; null for an unknown id. It lives until the first change of the list
    /// after the goal was removed.
    Q_INVOKABLE tessaly::GoalCardModel *card(const QString &goalId);
    /// Completes or reopens the goal. Returns the row that the focus goes on to, see focusHeirAfter().
    Q_INVOKABLE int toggle(const QString &goalId);
    /// Deletes the goal without asking. Returns the row that the focus goes on to.
    Q_INVOKABLE int remove(const QString &goalId);
    /// Opens the groups above the goal, which may be named by one of its subgoals or tasks; its row, or -1 for an
    /// unknown one.
    Q_INVOKABLE int reveal(const QString &itemId);
    /// Opens or closes the group of a header row; an empty one does not open.
    Q_INVOKABLE void setExpanded(int row, bool isExpanded);

signals:
    void storeChanged();
    void formChanged();
    /// A goal that undo or redo has brought back or changed is shown in this row.
    void restored(int row);

private:
    template <class Change>
    int leaveRow(const QUuid &goalID, Change change);
    void onChanged(const RowsChange &change);
    void refreshRows();
    void showChanged(const StateChange &change);
    void translateUncategorized();

    PlannerStore *m_store = nullptr;
    GoalListRows m_rows;
    QHash<QUuid, GoalCardModel *> m_cards;
    /// Of the goals that the last change removed.
    QList<GoalCardModel *> m_goneCards;
    QString m_title;
    QString m_summary;
    QString m_category;
    Instant m_targetDate;
    bool m_hasDueDate = true;
    bool m_isCompletedExpanded = false;
    QSet<QString> m_expandedCategories;
};

} // namespace tessaly
