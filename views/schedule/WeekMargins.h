#pragma once

#include "views/RowListModel.h"
#include "views/schedule/AllDayRows.h"
#include "views/schedule/BarDragModel.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

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
    Q_PROPERTY(tessaly::BarDragModel *drag READ drag CONSTANT)
    Q_PROPERTY(int allDayHeight READ allDayHeight NOTIFY heightsChanged)
    Q_PROPERTY(int beforeHeight READ beforeHeight NOTIFY heightsChanged)
    Q_PROPERTY(int afterHeight READ afterHeight NOTIFY heightsChanged)

public:
    explicit WeekMargins(QObject *parent = nullptr);

    void follow(const WeekSchedules &week, const QList<QDate> &days, const ScheduleSource &source, double dayWidth,
                const QUuid &selectedID);

    [[nodiscard]] AllDayBarModel *bars() { return &m_bars; }
    [[nodiscard]] CountMarkModel *marks() { return &m_marks; }
    [[nodiscard]] BarDragModel *drag() { return &m_drag; }
    /// Points; 0 without such schedules, unless one is on its way.
    [[nodiscard]] int allDayHeight() const { return m_heights.allDay; }
    /// Of the strips of marks above and below the hours; 0 without marks.
    [[nodiscard]] int beforeHeight() const { return m_heights.before; }
    [[nodiscard]] int afterHeight() const { return m_heights.after; }

    /// Where an arrow key leads from a bar; the same row when there is none.
    Q_INVOKABLE [[nodiscard]] int neighbourBar(int row, int placeStep, int lineStep) const;
    Q_INVOKABLE void openBar(int row) { emit opened(m_bars.rows().value(row).id); }
    /// Moves the bar so many days on, or its end. A step that continues the one before is undone with it. Returns where
    /// the bar is then; -1 when it is not shown.
    Q_INVOKABLE int moveBar(int row, int days, bool isContinued);
    Q_INVOKABLE int resizeBar(int row, int days, bool isContinued);
    Q_INVOKABLE void deleteBar(int row) { emit deleted(m_bars.rows().value(row).id); }
    [[nodiscard]] int barOf(const QUuid &id) const;

signals:
    void heightsChanged();
    void opened(const QUuid &id);
    void shifted(const QUuid &id, tessaly::WeekDragKind kind, int days, bool isContinued);
    void deleted(const QUuid &id);

private:
    int shift(int row, WeekDragKind kind, int days, bool isContinued);
    void updateHeights();

    struct Heights
    {
        int allDay = 0;
        int before = 0;
        int after = 0;

        bool operator==(const Heights &) const = default;
    };

    AllDayBarModel m_bars;
    CountMarkModel m_marks;
    BarDragModel m_drag{m_bars};
    /// What the rows need, and what is shown.
    Heights m_needed;
    Heights m_heights;
};

} // namespace tessaly
