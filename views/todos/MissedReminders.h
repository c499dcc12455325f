#pragma once

#include "model/DateLabels.h"
#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessaly {

/// An unanswered reminder. Roles: title, dueText.
struct MissedReminderRow
{
    QString identifier = {};
    QString title = {};
    /// In the words of the system's locale.
    QString dueText = {};

    [[nodiscard]] QString key() const { return identifier; }
    bool operator==(const MissedReminderRow &) const = default;
};

/// The reminders that wait for the user's answer, earliest first; the first few until all are asked for.
class MissedReminders : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int hiddenCount READ hiddenCount NOTIFY changed)
    Q_PROPERTY(bool wasClosed READ wasClosed NOTIFY changed)
    Q_PROPERTY(QString tomorrowTime READ tomorrowTime CONSTANT)

public:
    static constexpr int mostRows = 5;

    explicit MissedReminders(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model.
    void setStore(PlannerStore *store);

    [[nodiscard]] RowListModel<MissedReminderRow> *rows() { return &m_rows; }
    /// Of all reminders, shown or not.
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] int hiddenCount() const { return m_count - m_rows.rowCount(); }
    /// Whether all of them fell due while the planner was not running.
    [[nodiscard]] bool wasClosed() const { return m_wasClosed; }
    /// The time to which "Tomorrow" puts a reminder off.
    [[nodiscard]] QString tomorrowTime() const;

    /// Shows the rows beyond the first few as well, until none is left.
    Q_INVOKABLE void showAll();
    // Each returns the row that the focus goes on to, -1 when none is left.
    Q_INVOKABLE int complete(int row);
    Q_INVOKABLE int remindInTenMinutes(int row);
    Q_INVOKABLE int remindInOneHour(int row);
    Q_INVOKABLE int remindTomorrow(int row);
    Q_INVOKABLE void dismissAll();

signals:
    void storeChanged();
    void changed();

private:
    int answer(int row, ReminderAnswer answer);
    void refresh();

    PlannerStore *m_store = nullptr;
    RowListModel<MissedReminderRow> m_rows;
    std::unique_ptr<DateLabels> m_labels;
    int m_count = 0;
    bool m_wasClosed = false;
    bool m_showsAll = false;
};

} // namespace tessaly
