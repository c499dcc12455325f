#pragma once

#include "store/PlannerStore.h"
#include "views/plan/PlanRows.h"

#include <QDate>
#include <QObject>
#include <QtQml/qqml.h>

#include <limits>
#include <memory>

namespace tessaly {

class Alarm;

/// What the plan panel shows: how full a day is, and what is open.
class PlanModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(QString day READ day WRITE setDay NOTIFY loadChanged)
    Q_PROPERTY(double addedStart READ addedStart WRITE setAddedStart NOTIFY loadChanged)
    Q_PROPERTY(QString dayText READ dayText NOTIFY loadChanged)
    Q_PROPERTY(QString plannedText READ plannedText NOTIFY loadChanged)
    Q_PROPERTY(QString freeText READ freeText NOTIFY loadChanged)
    Q_PROPERTY(double share READ share NOTIFY loadChanged)
    Q_PROPERTY(double addedShare READ addedShare NOTIFY loadChanged)
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)

public:
    explicit PlanModel(QObject *parent = nullptr);
    ~PlanModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the model.
    void setStore(PlannerStore *store);
    /// The day whose planned and free hours are shown, as an ISO 8601 date.
    [[nodiscard]] QString day() const { return m_day.toString(Qt::ISODate); }
    void setDay(const QString &day);
    /// The start of an hour that is about to be planned, in seconds as in Instant; its day comes first then. NaN for
    /// none.
    [[nodiscard]] double addedStart() const { return m_addedStart; }
    void setAddedStart(double start);

    [[nodiscard]] QString dayText() const;
    /// Such as "4 h 40 min planned".
    [[nodiscard]] QString plannedText() const;
    /// Such as "7 h 20 min free, 08:00 – 20:00".
    [[nodiscard]] QString freeText() const;
    /// Planned and about to be planned, 0 to 1 of the day's hours; the second is not part of the first.
    [[nodiscard]] double share() const;
    [[nodiscard]] double addedShare() const;
    [[nodiscard]] PlanRowModel *rows() { return &m_rows; }

    /// Plans the row's item in the first free hour of the day from now on; false when there is none, which refused()
    /// tells.
    Q_INVOKABLE bool place(int row);
    /// Where placing an item by hand begins, in seconds as in Instant: the first free hour, else the first of the
    /// day's hours.
    Q_INVOKABLE [[nodiscard]] double firstStart() const;

signals:
    void storeChanged();
    void loadChanged();
    void refused(const QString &reason);

private:
    [[nodiscard]] bool isAdding() const;
    [[nodiscard]] QDate shownDay() const;
    [[nodiscard]] DayHours hours() const;
    [[nodiscard]] std::optional<FormTimes> freeHour() const;
    void refresh();
    void refreshRows();
    void refreshLoad();

    PlannerStore *m_store = nullptr;
    std::unique_ptr<DateLabels> m_labels;
    /// Rings when a row changes by itself: something becomes due, or what was planned is over.
    std::unique_ptr<Alarm> m_nextChange;
    QDate m_day;
    double m_addedStart = std::numeric_limits<double>::quiet_NaN();
    DayLoad m_load;
    PlanRowModel m_rows;
};

} // namespace tessaly
