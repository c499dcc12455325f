#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"
#include "views/schedule/LinkDetailsModel.h"
#include "views/schedule/LinkTrialModel.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// A linked calendar in the import sheet.
struct CalendarFeedRow
{
    QUuid id = {};
    QString name = {};
    /// The last update and what it brought, or since when it fails and why; empty before the first.
    QString health = {};
    bool isFailing = false;

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const CalendarFeedRow &) const = default;
};

/// The state of the import sheet: the linked calendars, one of them in detail, and the link that is being typed.
class CalendarSelectionModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *feeds READ feeds CONSTANT)
    Q_PROPERTY(int feedCount READ feedCount NOTIFY feedCountChanged)
    Q_PROPERTY(tessaly::LinkTrialModel *trial READ trial CONSTANT)
    Q_PROPERTY(tessaly::LinkDetailsModel *details READ details CONSTANT)

public:
    explicit CalendarSelectionModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);

    /// Roles: name, health, isFailing.
    [[nodiscard]] RowListModel<CalendarFeedRow> *feeds() { return &m_feeds; }
    [[nodiscard]] int feedCount() const { return m_feeds.rowCount(); }
    /// The link that is being typed.
    [[nodiscard]] LinkTrialModel *trial() { return &m_trial; }
    [[nodiscard]] LinkDetailsModel *details() { return &m_details; }

    /// Adds the typed link as it is to be added, and clears the field if the link is accepted.
    Q_INVOKABLE void addTypedLink();
    Q_INVOKABLE void updateFeed(int row);
    Q_INVOKABLE void deleteFeed(int row);
    Q_INVOKABLE void showDetails(int row);
    /// Updates that brought nothing new are not announced: to be called when the sheet opens.
    Q_INVOKABLE void refresh();

signals:
    void storeChanged();
    void feedCountChanged();

private:
    void takeOpening();

    PlannerStore *m_store = nullptr;
    RowListModel<CalendarFeedRow> m_feeds;
    LinkTrialModel m_trial;
    LinkDetailsModel m_details;
};

} // namespace tessaly
