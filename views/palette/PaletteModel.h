#pragma once

#include "store/PlannerSearch.h"
#include "store/PlannerStore.h"
#include "views/palette/PaletteRows.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqml.h>

#include <memory>

namespace tessaly {

/// The state of the palette: what is typed, what it would add, and what it finds.
class PaletteModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(int current READ current WRITE setCurrent NOTIFY currentChanged)
    Q_PROPERTY(QString countText READ countText NOTIFY countChanged)

public:
    /// The numbers of the role "kind".
    enum RowKind { AddScheduleRow, AddReminderRow, ResultRow, MoreRow, NothingRow };
    Q_ENUM(RowKind)

    explicit PaletteModel(QObject *parent = nullptr);
    ~PaletteModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);

    [[nodiscard]] const QString &text() const { return m_text; }
    void setText(const QString &text);
    /// See paletteRoles(); none without a text.
    [[nodiscard]] RowListModel<PaletteRow> *rows() { return &m_rows; }
    /// The row that Return chooses; -1 without rows.
    [[nodiscard]] int current() const { return m_current; }
    void setCurrent(int row);
    /// "6 results"; empty without a text.
    [[nodiscard]] QString countText() const;

    /// Empties the field, and reads the documents that have changed.
    Q_INVOKABLE void begin();
    /// The row so many on that can be chosen, without going round.
    Q_INVOKABLE void move(int by);
    /// Adds, goes there, carries the command out, or shows the rest of an area.
    Q_INVOKABLE void choose(int row);
    /// Adds what is typed as a to-do.
    Q_INVOKABLE void addReminder();

signals:
    void storeChanged();
    void textChanged();
    void currentChanged();
    void countChanged();
    /// The record is to be shown on its screen, see ShellModel::SidebarItem. Subgoals and tasks have ids of their own.
    void recordChosen(int section, const QString &id);
    /// See PaletteCommand.
    void commandChosen(int command);

private:
    void search();
    void refresh();
    void chooseFirst();
    void addSchedule();

    PlannerStore *m_store = nullptr;
    QPointer<PlannerSearch> m_search;
    std::unique_ptr<PaletteResults> m_results;
    RowListModel<PaletteRow> m_rows;
    QString m_text;
    QuickEntry m_entry;
    int m_current = -1;
    /// The user chose the row.
    bool m_isMoved = false;
};

} // namespace tessaly
