#pragma once

#include "store/PlannerStore.h"
#include "views/todos/ReminderListModel.h"

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessaly {

/// The state of the to-do screen: the add form and the list. Made anew whenever the screen is opened.
class ReminderViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString title MEMBER m_title NOTIFY formChanged)
    Q_PROPERTY(QString requirement MEMBER m_requirement NOTIFY formChanged)
    Q_PROPERTY(bool hasDueDate MEMBER m_hasDueDate NOTIFY formChanged)
    Q_PROPERTY(QDateTime dueDate READ dueDate WRITE setDueDate NOTIFY formChanged)
    Q_PROPERTY(tessaly::ReminderListModel *list READ list NOTIFY storeChanged)

public:
    explicit ReminderViewModel(QObject *parent = nullptr);
    ~ReminderViewModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model. The due date becomes one hour from now.
    void setStore(PlannerStore *store);

    /// Local wall-clock time, to the minute or finer.
    [[nodiscard]] QDateTime dueDate() const;
    void setDueDate(const QDateTime &dueDate);
    [[nodiscard]] ReminderListModel *list() const { return m_list.get(); }

    /// Adds the form's to-do and empties title and requirement; a blank title does nothing and returns false.
    Q_INVOKABLE bool add();
    /// Completes or reopens the to-do of a row of the list. Returns the row that the focus goes on to, see
    /// focusHeirAfter().
    Q_INVOKABLE int toggle(int row);
    /// Deletes the to-do of a row of the list without asking. Returns the row that the focus goes on to.
    Q_INVOKABLE int remove(int row);

signals:
    void storeChanged();
    void formChanged();
    /// The to-do just added is shown in this row.
    void added(int row);

private:
    template <class Change>
    int leaveRow(int row, Change change);

    PlannerStore *m_store = nullptr;
    std::unique_ptr<ReminderListModel> m_list;
    QString m_title;
    QString m_requirement;
    Instant m_dueDate;
    bool m_hasDueDate = false;
};

} // namespace tessaly
