#pragma once

#include "model/WeekDrag.h"
#include "views/schedule/ScheduleRows.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <optional>

namespace tessaly {

class PlannerStore;

/// A line of the month that the pointer takes to another day. Until it is released nothing is stored.
class MonthDragModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(bool isActive READ isActive NOTIFY changed)
    Q_PROPERTY(int row READ row NOTIFY changed)
    Q_PROPERTY(int place READ place NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString startText READ startText NOTIFY changed)
    Q_PROPERTY(QString colorKey READ colorKey NOTIFY changed)

public:
    /// The rows are those of the shown lines; they must outlive it.
    explicit MonthDragModel(const MonthLineModel &lines, QObject *parent = nullptr);

    /// The store must outlive it.
    void setStore(PlannerStore *store) { m_store = store; }

    /// Takes the schedule of the line. False when it cannot be moved, which refused() explains, or there is none.
    Q_INVOKABLE bool begin(int row);
    /// The pointer is over the day in the place.
    Q_INVOKABLE void moveTo(int place);
    /// Carries the drag out as one step.
    Q_INVOKABLE void drop();
    Q_INVOKABLE void cancel();

    [[nodiscard]] bool isActive() const { return m_line.has_value(); }
    /// Of the line that is dragged; -1 when there is none.
    [[nodiscard]] int row() const;
    [[nodiscard]] int place() const { return m_place; }
    [[nodiscard]] QString title() const { return line().title; }
    [[nodiscard]] QString startText() const { return line().startText; }
    [[nodiscard]] QString colorKey() const { return line().colorKey; }

signals:
    void changed();
    void refused(const QString &reason);
    /// The schedule has these times now.
    void moved(const tessaly::FormTimes &times);

private:
    [[nodiscard]] MonthLineRow line() const { return m_line.value_or(MonthLineRow()); }

    const MonthLineModel &m_lines;
    PlannerStore *m_store = nullptr;
    std::optional<MonthLineRow> m_line;
    int m_place = -1;
};

} // namespace tessaly
