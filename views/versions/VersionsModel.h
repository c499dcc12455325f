#pragma once

#include "store/PlannerStore.h"
#include "views/versions/DifferenceRows.h"
#include "views/versions/VersionRows.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// The state of the sheet of earlier versions: which there are, which one is shown, and what restoring it would do.
class VersionsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QAbstractItemModel *versions READ versions CONSTANT)
    Q_PROPERTY(QAbstractItemModel *differences READ differences CONSTANT)
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY changed)
    Q_PROPERTY(QString heading READ heading NOTIFY changed)
    Q_PROPERTY(QString moment READ moment NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)
    Q_PROPERTY(bool isCompared READ isCompared NOTIFY changed)
    Q_PROPERTY(bool canRestoreAll READ canRestoreAll NOTIFY changed)
    Q_PROPERTY(bool canRestoreSelected READ canRestoreSelected NOTIFY changed)

public:
    /// The numbers of the roles "kind" and "restoration".
    enum RowKind { AreaRow, RecordRow, MoreRow };
    Q_ENUM(RowKind)
    enum Sign { BringBack, Change, Remove };
    Q_ENUM(Sign)

    explicit VersionsModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);

    [[nodiscard]] RowListModel<VersionRow> *versions() { return &m_versions; }
    [[nodiscard]] RowListModel<DifferenceListRow> *differences() { return &m_list; }

    /// Row of the version that is shown; -1 while there is none. Setting it compares that version with the present.
    [[nodiscard]] int current() const { return m_current; }
    void setCurrent(int row);
    [[nodiscard]] QString heading() const;
    [[nodiscard]] QString moment() const;
    /// What restoring everything would do, or why that cannot be said.
    [[nodiscard]] QString summary() const;
    /// What the last restore did; empty once another version is shown.
    [[nodiscard]] const QString &outcome() const { return m_outcome; }
    [[nodiscard]] bool isCompared() const { return m_change.has_value(); }
    [[nodiscard]] bool canRestoreAll() const { return !m_differences.isEmpty(); }
    [[nodiscard]] bool canRestoreSelected() const { return !m_choice.checked.isEmpty(); }

    /// Lists what there is now and shows the version with the file name, or else the newest.
    Q_INVOKABLE void begin(const QString &fileName);
    /// Checks or unchecks the row of a record, or all of an area.
    Q_INVOKABLE void setChecked(int row, bool isChecked);
    /// Opens or closes an area, or shows the rest of it.
    Q_INVOKABLE void toggleOpen(int row);
    Q_INVOKABLE void restoreSelected();
    Q_INVOKABLE void restoreAll();

signals:
    void storeChanged();
    void changed();

private:
    void listVersions();
    void compare();
    void setChange(const Result<StateChange> &change);
    void refreshRows();
    void restore(const QSet<QString> &keys);
    [[nodiscard]] const Generation *shown() const;

    PlannerStore *m_store = nullptr;
    RowListModel<VersionRow> m_versions;
    RowListModel<DifferenceListRow> m_list;
    int m_current = -1;
    /// Counts the comparisons: only the last one is shown.
    int m_comparison = 0;
    std::optional<StateChange> m_change;
    QList<DifferenceRow> m_differences;
    DifferenceChoice m_choice;
    QString m_outcome;
    bool m_hasFailed = false;
};

} // namespace tessaly
