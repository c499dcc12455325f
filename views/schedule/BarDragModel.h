#pragma once

#include "model/WeekDrag.h"
#include "views/schedule/AllDayRows.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <optional>

namespace tessaly {

class PlannerStore;

/// What the pointer does in the row above the hours: it takes a bar to other days, or one of its ends. Until it is
/// released nothing is stored. Points are counted as in AllDayBarRow::frame.
class BarDragModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to WeekMargins")
    Q_PROPERTY(bool isActive READ isActive NOTIFY changed)
    Q_PROPERTY(bool isMove READ isMove NOTIFY changed)
    Q_PROPERTY(bool isOfStart READ isOfStart NOTIFY changed)
    Q_PROPERTY(int row READ row NOTIFY changed)
    Q_PROPERTY(QRectF frame READ frame NOTIFY changed)
    Q_PROPERTY(bool beginsEarlier READ beginsEarlier NOTIFY changed)
    Q_PROPERTY(bool endsLater READ endsLater NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString colorKey READ colorKey NOTIFY changed)

public:
    /// The bars are those that are shown; they must outlive it.
    explicit BarDragModel(const AllDayBarModel &bars, QObject *parent = nullptr);

    /// The store must outlive it.
    void setStore(PlannerStore *store) { m_store = store; }
    void follow(const QList<QDate> &days, double dayWidth);

    /// Whether an end of a bar is there that can be taken.
    Q_INVOKABLE [[nodiscard]] bool isEndAt(double x, double y) const;
    /// The pointer was pressed there and has moved far enough. False when nothing is there, or it cannot be moved,
    /// which refused() explains.
    Q_INVOKABLE bool begin(double x, double y);
    Q_INVOKABLE void moveTo(double x);
    /// Carries the drag out as one step.
    Q_INVOKABLE void drop();
    Q_INVOKABLE void cancel();

    [[nodiscard]] bool isActive() const { return m_bar.has_value(); }
    [[nodiscard]] bool isMove() const { return isActive() && m_kind == WeekDragKind::Move; }
    [[nodiscard]] bool isOfStart() const { return m_kind == WeekDragKind::ResizeStart; }
    /// Of the bar that is dragged; -1 when it is not shown.
    [[nodiscard]] int row() const;
    /// Of the ghost; empty when none of its days is shown.
    [[nodiscard]] QRectF frame() const;
    [[nodiscard]] bool beginsEarlier() const { return m_span && m_span->beginsEarlier; }
    [[nodiscard]] bool endsLater() const { return m_span && m_span->endsLater; }
    [[nodiscard]] QString title() const { return m_bar ? m_bar->title : QString(); }
    [[nodiscard]] QString colorKey() const { return m_bar ? m_bar->colorKey : QString(); }
    /// Lines that the ghost needs.
    [[nodiscard]] int lineCount() const { return m_bar ? m_bar->line + 1 : 0; }

signals:
    void changed();
    void refused(const QString &reason);
    /// The schedule has these times now.
    void dropped(tessaly::WeekDragKind kind, const tessaly::FormTimes &times);

private:
    [[nodiscard]] const AllDayBarRow *barAt(double x, double y) const;
    [[nodiscard]] WeekDragKind kindAt(const AllDayBarRow &bar, double x) const;
    [[nodiscard]] QDate dayAt(double x) const;
    void place();

    const AllDayBarModel &m_bars;
    PlannerStore *m_store = nullptr;
    QList<QDate> m_days;
    double m_dayWidth = 0;
    std::optional<AllDayBarRow> m_bar;
    std::optional<AllDaySpan> m_span;
    WeekDragKind m_kind = WeekDragKind::Move;
    QDate m_pressed;
    FormTimes m_former;
    FormTimes m_times;
};

} // namespace tessaly
