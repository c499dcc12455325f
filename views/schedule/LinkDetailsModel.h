#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// An event that was left out of a linked calendar.
struct SkippedRow
{
    qsizetype place = 0;
    QString title = {};
    /// The day of its start, or that there is none.
    QString day = {};
    QString reason = {};

    [[nodiscard]] qsizetype key() const { return place; }
    bool operator==(const SkippedRow &) const = default;
};

/// One linked calendar in the import sheet: how it is, and what the user chooses for it.
class LinkDetailsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to CalendarSelectionModel")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString ownName READ ownName NOTIFY changed)
    Q_PROPERTY(QString link READ link NOTIFY changed)
    Q_PROPERTY(QString colorKey READ colorKey NOTIFY changed)
    Q_PROPERTY(bool hasColor READ hasColor NOTIFY changed)
    Q_PROPERTY(QString lastUpdate READ lastUpdate NOTIFY changed)
    Q_PROPERTY(QString failure READ failure NOTIFY changed)
    Q_PROPERTY(QString contents READ contents NOTIFY changed)
    Q_PROPERTY(bool isKeptUpToDate READ isKeptUpToDate NOTIFY changed)
    Q_PROPERTY(QString keeping READ keeping NOTIFY changed)
    Q_PROPERTY(bool readsRepetitions READ readsRepetitions NOTIFY changed)
    Q_PROPERTY(QString repetitions READ repetitions NOTIFY changed)
    Q_PROPERTY(int skippedCount READ skippedCount NOTIFY changed)
    Q_PROPERTY(int unlistedCount READ unlistedCount NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel *skipped READ skipped CONSTANT)

public:
    explicit LinkDetailsModel(QObject *parent = nullptr);

    /// The store must outlive the model.
    void setStore(PlannerStore *store);

    /// Whether there is a link to show.
    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    [[nodiscard]] const QString &name() const { return m_feed.name; }
    /// What the calendar calls itself; empty where that is the link's name already.
    [[nodiscard]] QString ownName() const;
    [[nodiscard]] const QString &link() const { return m_feed.urlString; }
    /// Of its schedules that have no colour of their own: the chosen colour, or that of the calendar without one.
    [[nodiscard]] QString colorKey() const;
    [[nodiscard]] bool hasColor() const { return m_feed.colorHex.has_value(); }
    [[nodiscard]] QString lastUpdate() const;
    /// Empty unless the link fails.
    [[nodiscard]] QString failure() const;
    [[nodiscard]] QString contents() const;
    [[nodiscard]] bool isKeptUpToDate() const { return m_feed.isKeptUpToDate.value_or(false); }
    [[nodiscard]] QString keeping() const;
    [[nodiscard]] bool readsRepetitions() const { return m_feed.readsRepetitions.value_or(false); }
    [[nodiscard]] QString repetitions() const;
    [[nodiscard]] int skippedCount() const { return static_cast<int>(m_health.skippedCount); }
    [[nodiscard]] int unlistedCount() const { return skippedCount() - m_skipped.rowCount(); }
    /// Roles: title, day, reason.
    [[nodiscard]] RowListModel<SkippedRow> *skipped() { return &m_skipped; }

    void show(const QUuid &feedID);
    Q_INVOKABLE void close();

    // Each is one step. An empty name is not taken.
    Q_INVOKABLE void rename(const QString &name);
    Q_INVOKABLE void setColor(const QString &hex);
    Q_INVOKABLE void removeColor();
    Q_INVOKABLE void setKeptUpToDate(bool isOn);
    Q_INVOKABLE void setReadsRepetitions(bool isOn);
    Q_INVOKABLE void update();
    /// Deletes the link and closes.
    Q_INVOKABLE void deleteLink();

signals:
    void changed();

private:
    void refresh();
    void edit(const std::function<void(CalendarFeed &)> &change);

    PlannerStore *m_store = nullptr;
    bool m_isOpen = false;
    CalendarFeed m_feed;
    LinkHealth m_health;
    RowListModel<SkippedRow> m_skipped;
};

} // namespace tessaly
