#pragma once

#include "model/WeekDrag.h"
#include "model/WeekLayout.h"
#include "views/schedule/ScheduleRows.h"

#include <QObject>
#include <QPointF>
#include <QtQml/qqml.h>

#include <optional>

namespace tessaly {

class PlannerStore;

/// What the pointer does on the week: it moves and resizes blocks and selects spans of empty time. Until the pointer is
/// released only the ghost changes; nothing is stored. Points are counted from the top left corner of the time area of
/// the first day.
class WeekDragModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(bool isActive READ isActive NOTIFY changed)
    Q_PROPERTY(bool isMove READ isMove NOTIFY changed)
    Q_PROPERTY(bool isSelection READ isSelection NOTIFY changed)
    Q_PROPERTY(bool isOfTop READ isOfTop NOTIFY changed)
    Q_PROPERTY(QRectF frame READ frame NOTIFY changed)
    Q_PROPERTY(double startY READ startY NOTIFY changed)
    Q_PROPERTY(double endY READ endY NOTIFY changed)
    Q_PROPERTY(double formerY READ formerY NOTIFY changed)
    Q_PROPERTY(QString startText READ startText NOTIFY changed)
    Q_PROPERTY(QString endText READ endText NOTIFY changed)
    Q_PROPERTY(QString lengthText READ lengthText NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString colorKey READ colorKey NOTIFY changed)
    Q_PROPERTY(QString itemId READ itemId NOTIFY changed)
    Q_PROPERTY(double itemStart READ itemStart NOTIFY changed)

public:
    /// What lies under the pointer; an item of the plan comes from elsewhere.
    enum class Hold { Empty, Block, Top, Bottom, Item };

    /// The rows are those of the shown blocks; they must outlive it.
    explicit WeekDragModel(const BlockModel &blocks, QObject *parent = nullptr);

    /// The store must outlive it.
    void setStore(PlannerStore *store) { m_store = store; }
    void follow(const QList<QDate> &days, const WeekMeasures &measures, double dayWidth);

    [[nodiscard]] Hold holdAt(double x, double y) const;
    Q_INVOKABLE [[nodiscard]] bool isEmptyAt(double x, double y) const { return holdAt(x, y) == Hold::Empty; }
    Q_INVOKABLE [[nodiscard]] bool isEdgeAt(double x, double y) const { return holdAt(x, y) > Hold::Block; }
    /// An item of the plan comes to the week: by the pointer, which is not in the week yet, or to be placed by keys
    /// from the start on, in seconds as in Instant.
    Q_INVOKABLE void beginItem(const QString &itemId, const QString &title);
    Q_INVOKABLE void placeItem(const QString &itemId, const QString &title, double start);
    /// The pointer is not in the week: nothing would be dropped.
    Q_INVOKABLE void leave();
    /// Moves the item so many days and minutes on, within the shown hours. -1 or 1 when that leads before or after the
    /// shown days, else 0.
    Q_INVOKABLE int shiftItem(int days, int minutes);
    /// Date, start and end of what is dragged.
    Q_INVOKABLE [[nodiscard]] QString spokenTimes() const;
    /// The pointer was pressed there and has moved far enough. False when what is there cannot be dragged, which
    /// refused() explains.
    Q_INVOKABLE bool begin(double x, double y);
    Q_INVOKABLE void moveTo(double x, double y, bool isFine);
    /// Carries the drag out as one step.
    Q_INVOKABLE void drop();
    Q_INVOKABLE void cancel();
    /// The row of the block that is dragged; -1 when it is not shown.
    Q_INVOKABLE [[nodiscard]] int draggedRow() const;

    [[nodiscard]] bool isActive() const { return m_drag.has_value(); }
    [[nodiscard]] bool isMove() const { return isActive() && (m_hold == Hold::Block || m_hold == Hold::Item); }
    [[nodiscard]] bool isSelection() const { return m_hold == Hold::Empty; }
    /// Whether it resizes a block by its upper edge.
    [[nodiscard]] bool isOfTop() const { return m_hold == Hold::Top; }
    /// Of the ghost, over the full width of its day; empty when its day is not shown.
    [[nodiscard]] QRectF frame() const;
    [[nodiscard]] double startY() const;
    [[nodiscard]] double endY() const;
    /// Where the dragged edge was.
    [[nodiscard]] double formerY() const;
    [[nodiscard]] QString startText() const;
    [[nodiscard]] QString endText() const;
    /// Such as "1 h 30 min".
    [[nodiscard]] QString lengthText() const;
    [[nodiscard]] QString title() const { return m_row.title; }
    [[nodiscard]] QString colorKey() const { return m_row.colorKey; }
    /// The item of the plan that is on its way; empty when there is none.
    [[nodiscard]] QString itemId() const;
    /// Where it would begin, in seconds as in Instant; NaN while it is not in the week.
    [[nodiscard]] double itemStart() const;

signals:
    void changed();
    void refused(const QString &reason);
    void spanSelected(const tessaly::FormTimes &times);

private:
    [[nodiscard]] qsizetype rowAt(QPointF point) const;
    [[nodiscard]] WeekPoint weekPoint(QPointF point) const;
    [[nodiscard]] WeekDragKind kind() const;
    [[nodiscard]] WeekDrag dragFrom(const WeekPoint &pressed) const;
    [[nodiscard]] FormTimes timesAt(const WeekPoint &point, int stepMinutes) const;

    const BlockModel &m_blocks;
    PlannerStore *m_store = nullptr;
    QList<QDate> m_days;
    WeekMeasures m_measures;
    double m_dayWidth = 0;
    std::optional<WeekDrag> m_drag;
    Hold m_hold = Hold::Empty;
    bool m_isOutside = false;
    BlockRow m_row;
    FormTimes m_times;
};

/// Why the schedule cannot be moved, in the interface language; empty when it can.
[[nodiscard]] QString fixedReason(PlannerStore &store, const ScheduleItem &schedule);
/// Gives the times to the schedule as one step; a length that was open stays open where it does not change.
void reschedule(PlannerStore &store, const QUuid &id, const FormTimes &times, bool isReported);

} // namespace tessaly
