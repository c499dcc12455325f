#pragma once

#include "views/RowListModel.h"
#include "views/schedule/DaySchedules.h"

#include <QObject>
#include <QRect>
#include <QtQml/qqml.h>
#include <QUuid>

namespace tessaly {

/// A schedule in the row above the hours.
struct AllDayBarRow
{
    QUuid id = {};
    /// From the top left corner of the first day's part of the row.
    QRect frame = {};
    int firstPlace = 0;
    int line = 0;
    bool beginsEarlier = false;
    bool endsLater = false;
    QString title = {};
    QString colorKey = {};
    bool isSelected = false;
    /// First and last day, title, tag.
    QString spokenName = {};

    [[nodiscard]] QUuid key() const { return id; }
    bool operator==(const AllDayBarRow &) const = default;
};

/// How many schedules of a day are not drawn in a place: above the hours, or before or after them.
struct CountMarkRow
{
    enum Kind { AboveHours, BeforeHours, AfterHours };

    int place = 0;
    int kind = AboveHours;
    QString countText = {};
    QString spokenName = {};

    [[nodiscard]] std::pair<int, int> key() const { return {place, kind}; }
    bool operator==(const CountMarkRow &) const = default;
};

using AllDayBarModel = RowListModel<AllDayBarRow>;
using CountMarkModel = RowListModel<CountMarkRow>;

/// What stands around the hours of the week, both chosen in the display settings: the row of all-day and multi-day
/// schedules, and marks for those outside the shown hours.
class WeekMargins : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(QAbstractItemModel *bars READ bars CONSTANT)
    Q_PROPERTY(QAbstractItemModel *marks READ marks CONSTANT)
    Q_PROPERTY(int allDayHeight READ allDayHeight NOTIFY heightsChanged)
    Q_PROPERTY(int beforeHeight READ beforeHeight NOTIFY heightsChanged)
    Q_PROPERTY(int afterHeight READ afterHeight NOTIFY heightsChanged)

public:
    explicit WeekMargins(QObject *parent = nullptr);

    void follow(const WeekSchedules &week, const QList<QDate> &days, const ScheduleSource &source, double dayWidth,
                const QUuid &selectedID);

    [[nodiscard]] AllDayBarModel *bars() { return &m_bars; }
    [[nodiscard]] CountMarkModel *marks() { return &m_marks; }
    /// Points; 0 without such schedules.
    [[nodiscard]] int allDayHeight() const { return m_heights.allDay; }
    /// Of the strips of marks above and below the hours; 0 without marks.
    [[nodiscard]] int beforeHeight() const { return m_heights.before; }
    [[nodiscard]] int afterHeight() const { return m_heights.after; }

    /// Where an arrow key leads from a bar; the same row when there is none.
    Q_INVOKABLE [[nodiscard]] int neighbourBar(int row, int placeStep, int lineStep) const;
    Q_INVOKABLE void openBar(int row) { emit opened(m_bars.rows().value(row).id); }
    Q_INVOKABLE void moveBar(int row, int days) { emit moved(m_bars.rows().value(row).id, days); }
    Q_INVOKABLE void deleteBar(int row) { emit deleted(m_bars.rows().value(row).id); }
    [[nodiscard]] Q_INVOKABLE int barOf(const QUuid &id) const;

signals:
    void heightsChanged();
    void opened(const QUuid &id);
    void moved(const QUuid &id, int days);
    void deleted(const QUuid &id);

private:
    struct Heights
    {
        int allDay = 0;
        int before = 0;
        int after = 0;

        bool operator==(const Heights &) const = default;
    };

    AllDayBarModel m_bars;
    CountMarkModel m_marks;
    Heights m_heights;
};

} // namespace tessaly
