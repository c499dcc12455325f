#pragma once

#include "model/OverviewRules.h"
#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QtQml/qqml.h>
#include <QUuid>

#include <memory>

namespace tessaly {

class Alarm;

/// One of the first goals with its progress. Roles: title, progress (0 to 1), percentage, goalId.
struct GoalProgressRow
{
    QUuid id = {};
    QString title = {};
    double progress = 0;

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const GoalProgressRow &) const = default;
};

/// What the overview shows. It follows the store, and the time: an alarm waits for the end of a schedule or of the day,
/// whichever comes first.
class DashboardViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString greeting READ greeting NOTIFY greetingChanged)
    Q_PROPERTY(int openReminderCount READ openReminderCount NOTIFY remindersChanged)
    Q_PROPERTY(int remainingCount READ remainingCount NOTIFY dayChanged)
    Q_PROPERTY(int activeGoalCount READ activeGoalCount NOTIFY goalsChanged)
    Q_PROPERTY(bool hasNext READ hasNext NOTIFY dayChanged)
    Q_PROPERTY(QString nextTitle READ nextTitle NOTIFY dayChanged)
    Q_PROPERTY(QString nextDateText READ nextDateText NOTIFY dayChanged)
    Q_PROPERTY(QString nextId READ nextId NOTIFY dayChanged)
    Q_PROPERTY(QString nextColor READ nextColor NOTIFY dayChanged)
    Q_PROPERTY(QAbstractItemModel *goals READ goals CONSTANT)
    Q_PROPERTY(int goalCount READ goalCount NOTIFY goalsChanged)

public:
    explicit DashboardViewModel(QObject *parent = nullptr);
    ~DashboardViewModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model.
    void setStore(PlannerStore *store);

    [[nodiscard]] QString greeting() const;
    [[nodiscard]] int openReminderCount() const { return m_openReminderCount; }
    /// Schedules of today that have not ended.
    [[nodiscard]] int remainingCount() const { return static_cast<int>(m_remaining.upcoming.size()); }
    [[nodiscard]] int activeGoalCount() const { return m_activeGoalCount; }
    [[nodiscard]] bool hasNext() const { return !m_remaining.upcoming.isEmpty(); }
    /// Of the first schedule that remains; empty without one.
    [[nodiscard]] QString nextTitle() const;
    [[nodiscard]] QString nextDateText() const;
    [[nodiscard]] QString nextId() const;
    /// Name of a palette colour, or "#RRGGBB".
    [[nodiscard]] QString nextColor() const;
    /// The first three goals, complete or not.
    [[nodiscard]] QAbstractItemModel *goals() { return &m_goals; }
    [[nodiscard]] int goalCount() const { return static_cast<int>(m_goals.rows().size()); }

signals:
    void storeChanged();
    void greetingChanged();
    void remindersChanged();
    void dayChanged();
    void goalsChanged();

private:
    [[nodiscard]] const ScheduleItem *next() const;
    void countReminders();
    void lookAtDay();
    void lookAtGoals();

    PlannerStore *m_store = nullptr;
    std::unique_ptr<Alarm> m_alarm;
    RemainingDay m_remaining;
    RowListModel<GoalProgressRow> m_goals;
    int m_openReminderCount = 0;
    int m_activeGoalCount = 0;
};

} // namespace tessaly
