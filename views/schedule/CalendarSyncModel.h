#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// A schedule that a sync asks about.
struct HeldScheduleRow
{
    QUuid id = {};
    QString title = {};
    QString date = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const HeldScheduleRow &) const = default;
};

/// A restore point that the sync sheet offers to show.
struct RestorePointRow
{
    QString fileName = {};
    QString title = {};
    QString moment = {};

    [[nodiscard]] QString key() const { return fileName; }
    bool operator==(const RestorePointRow &) const = default;
};

/// What the sync sheet says: the access, the last sync, what it left out, and what it asks about.
class CalendarSyncModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString lastSync READ lastSync NOTIFY changed)
    Q_PROPERTY(QString leftOut READ leftOut NOTIFY changed)
    Q_PROPERTY(int heldCount READ heldCount NOTIFY changed)
    Q_PROPERTY(QString heldReason READ heldReason NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel *held READ held CONSTANT)
    Q_PROPERTY(int restorePointCount READ restorePointCount NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel *restorePoints READ restorePoints CONSTANT)

public:
    explicit CalendarSyncModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);

    /// When the last sync was and what it did.
    [[nodiscard]] QString lastSync() const;
    /// The calendars that the last sync left out and why, one a line; empty when there are none.
    [[nodiscard]] QString leftOut() const;
    [[nodiscard]] int heldCount() const { return m_held.rowCount(); }
    /// In which calendars the schedules are no longer.
    [[nodiscard]] QString heldReason() const;
    /// Roles: title, date.
    [[nodiscard]] RowListModel<HeldScheduleRow> *held() { return &m_held; }
    [[nodiscard]] int restorePointCount() const { return m_restorePoints.rowCount(); }
    /// The newest three. Roles: fileName, title, moment.
    [[nodiscard]] RowListModel<RestorePointRow> *restorePoints() { return &m_restorePoints; }

signals:
    void storeChanged();
    void changed();

private:
    void refresh();
    void refreshRestorePoints();
    [[nodiscard]] QString momentText(Instant moment) const;
    [[nodiscard]] QString calendarTitle(const QString &identifier) const;

    PlannerStore *m_store = nullptr;
    RowListModel<HeldScheduleRow> m_held;
    RowListModel<RestorePointRow> m_restorePoints;
};

} // namespace tessaly
