#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// A task's share of its goal. Roles: title, weightText, percentText, isDone.
struct GoalShareRow
{
    qsizetype place = 0;
    QString title = {};
    QString weight = {};
    int percent = 0;
    bool isDone = false;

    [[nodiscard]] qsizetype key() const { return place; }
    bool operator==(const GoalShareRow &) const = default;
};

/// What a goal's card says besides its title: the overview, the category and the due date, which can be edited, how the
/// percentage adds up, and when the goal would be reached. Every edit goes through the store and is saved at once.
class GoalDetails : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to GoalCardModel")
    Q_PROPERTY(QString summary READ summary WRITE setSummary NOTIFY changed)
    Q_PROPERTY(QString category READ category WRITE setCategory NOTIFY changed)
    Q_PROPERTY(bool hasDueDate READ hasDueDate WRITE setHasDueDate NOTIFY changed)
    Q_PROPERTY(QDateTime dueDate READ dueDate WRITE setDueDate NOTIFY changed)
    Q_PROPERTY(QString forecast READ forecast NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel *shares READ shares CONSTANT)
    Q_PROPERTY(QString sumText READ sumText NOTIFY changed)

public:
    /// The store must outlive the details.
    GoalDetails(PlannerStore &store, QObject *parent);

    [[nodiscard]] QString summary() const { return m_goal.summary.value_or(QString()); }
    void setSummary(const QString &summary);
    [[nodiscard]] QString category() const { return m_goal.category.value_or(QString()); }
    void setCategory(const QString &category);
    [[nodiscard]] bool hasDueDate() const { return m_goal.targetDate.has_value(); }
    /// A goal without one is due in a month, one that had one when it was shown has it again.
    void setHasDueDate(bool hasDueDate);
    /// Local wall-clock time, invalid without a due date.
    [[nodiscard]] QDateTime dueDate() const;
    void setDueDate(const QDateTime &dueDate);
    /// See forecastText(); empty where there is none.
    [[nodiscard]] QString forecast() const;
    /// None where the percentage does not come from tasks, see goalTaskShares().
    [[nodiscard]] RowListModel<GoalShareRow> *shares() { return &m_shares; }
    /// "Done: 37%. All tasks: 100%"
    [[nodiscard]] QString sumText() const;

    /// Shows the goal.
    void show(const Goal &goal);

signals:
    void changed();

private:
    void save(const Goal &goal);
    void refreshShares();

    PlannerStore &m_store;
    Goal m_goal{.id = {}};
    std::optional<Instant> m_formerDueDate;
    RowListModel<GoalShareRow> m_shares;
};

} // namespace tessaly
