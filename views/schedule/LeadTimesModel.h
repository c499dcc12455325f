#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>

namespace tessaly {

/// A calendar or link and when its schedules remind. Roles: title, choice.
struct LeadTimeRow
{
    /// Empty for the schedules of no calendar.
    QString identifier = {};
    QString title = {};
    /// A row of LeadTimesModel::choices().
    int choice = 0;

    [[nodiscard]] QString key() const { return identifier; }
    bool operator==(const LeadTimeRow &) const = default;
};

/// When the schedules of each calendar and link remind: first those of no calendar, then the calendars of the system,
/// then the links.
class LeadTimesModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(QStringList choices READ choices NOTIFY choicesChanged)

public:
    explicit LeadTimesModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);

    [[nodiscard]] RowListModel<LeadTimeRow> *rows() { return &m_rows; }
    /// No reminder, then the offered lead times.
    [[nodiscard]] QStringList choices() const;

    Q_INVOKABLE void choose(int row, int choice);

signals:
    void storeChanged();
    void choicesChanged();

private:
    void refresh();

    PlannerStore *m_store = nullptr;
    RowListModel<LeadTimeRow> m_rows;
};

} // namespace tessaly
