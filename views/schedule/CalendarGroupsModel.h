#pragma once

#include "store/PlannerStore.h"
#include "views/RowListModel.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>

namespace tessaly {

/// A check box in a list of calendars: an account, a calendar of it, or a linked calendar.
struct CalendarChoiceRow
{
    /// Identifiers of all the calendars that the box stands for.
    QStringList identifiers = {};
    QString title = {};
    /// Palette name or "#RRGGBB"; empty for accounts and linked calendars.
    QString colorKey = {};
    bool isAccount = false;
    bool isChecked = false;
    /// Only some of an account's calendars are chosen; it still counts as off.
    bool isPartial = false;

    [[nodiscard]] QString key() const { return QLatin1Char(isAccount ? 'a' : 'c') + title + identifiers.join(u'\n'); }
    bool operator==(const CalendarChoiceRow &) const = default;
};

/// The calendars of the system, account by account, and the linked calendars, each chosen or not: for import or for
/// display.
class CalendarGroupsModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(Purpose purpose READ purpose WRITE setPurpose NOTIFY purposeChanged)
    Q_PROPERTY(QAbstractItemModel *calendars READ calendars CONSTANT)
    Q_PROPERTY(QAbstractItemModel *links READ links CONSTANT)
    Q_PROPERTY(int calendarCount READ calendarCount NOTIFY rowsChanged)
    Q_PROPERTY(int linkCount READ linkCount NOTIFY rowsChanged)

public:
    enum class Purpose { Import, Display };
    Q_ENUM(Purpose)

    explicit CalendarGroupsModel(QObject *parent = nullptr);

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);
    [[nodiscard]] Purpose purpose() const { return m_purpose; }
    void setPurpose(Purpose purpose);

    [[nodiscard]] RowListModel<CalendarChoiceRow> *calendars() { return &m_calendars; }
    /// Linked calendars, which are chosen for display only.
    [[nodiscard]] RowListModel<CalendarChoiceRow> *links() { return &m_links; }
    [[nodiscard]] int calendarCount() const { return m_calendars.rowCount(); }
    [[nodiscard]] int linkCount() const { return m_links.rowCount(); }

    Q_INVOKABLE void chooseCalendar(int row, bool isChosen);
    Q_INVOKABLE void chooseLink(int row, bool isChosen);
    /// Chooses the calendars that are listed, the linked ones included, and no others.
    Q_INVOKABLE void chooseAll();

signals:
    void storeChanged();
    void purposeChanged();
    void rowsChanged();

private:
    [[nodiscard]] const QSet<QString> &chosen() const;
    void setChosen(const QSet<QString> &identifiers);
    void choose(const RowListModel<CalendarChoiceRow> &rows, int row, bool isChosen);
    void refresh();

    PlannerStore *m_store = nullptr;
    Purpose m_purpose = Purpose::Display;
    RowListModel<CalendarChoiceRow> m_calendars;
    RowListModel<CalendarChoiceRow> m_links;
};

} // namespace tessaly
