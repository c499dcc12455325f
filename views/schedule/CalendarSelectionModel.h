#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// A linked calendar in the import sheet.
struct CalendarFeedRow
{
    QUuid id = {};
    QString name = {};
    /// Date and time of the last update in words; empty before the first.
    QString lastUpdated = {};
    /// Why the last update failed; empty when it did not.
    QString failure = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const CalendarFeedRow &) const = default;
};

/// The state of the import sheet: the linked calendars and the link that is being typed.
class CalendarSelectionModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *feeds READ feeds CONSTANT)
    Q_PROPERTY(int feedCount READ feedCount NOTIFY feedCountChanged)
    Q_PROPERTY(QString feedURL READ feedURL WRITE setFeedURL NOTIFY feedURLChanged)

public:
    explicit CalendarSelectionModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);

    /// Roles: name, lastUpdated, failure.
    [[nodiscard]] RowListModel<CalendarFeedRow> *feeds() { return &m_feeds; }
    [[nodiscard]] int feedCount() const { return m_feeds.rowCount(); }
    [[nodiscard]] const QString &feedURL() const { return m_feedURL; }
    void setFeedURL(const QString &url);

    /// Adds the typed link and clears the field if the link is accepted.
    Q_INVOKABLE void addTypedLink();
    Q_INVOKABLE void updateFeed(int row);
    Q_INVOKABLE void deleteFeed(int row);

signals:
    void storeChanged();
    void feedCountChanged();
    void feedURLChanged();

private:
    void refresh();

    PlannerStore *m_store = nullptr;
    RowListModel<CalendarFeedRow> m_feeds;
    QString m_feedURL;
};

} // namespace tessaly
