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

/// Something that is left of the day. Roles: itemId, section (see ShellModel::SidebarItem), title, timeText, colorKey
/// (of a schedule: the name of a palette colour, or "#RRGGBB"), isToDo, isOverdue.
struct TodayRow
{
    QUuid id = {};
    QString title = {};
    QString timeText = {};
    QString colorKey = {};
    bool isToDo = false;
    bool isOverdue = false;

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const TodayRow &) const = default;
};

/// What is left of the day, see todayEntries(). It follows the store and the time.
class TodayModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    static constexpr int mostRows = 7;

    explicit TodayModel(QObject *parent = nullptr);
    ~TodayModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);
    [[nodiscard]] RowListModel<TodayRow> *rows() { return &m_rows; }
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.rows().size()); }

    /// Completes the to-do of a row. Returns the row that the focus goes on to, -1 when none is left.
    Q_INVOKABLE int toggle(int row);

signals:
    void storeChanged();
    void countChanged();

private:
    void refresh();

    PlannerStore *m_store = nullptr;
    std::unique_ptr<Alarm> m_alarm;
    RowListModel<TodayRow> m_rows;
};

} // namespace tessaly
