#pragma once

#include "model/WeekLayout.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QtQml/qqml.h>

#include <memory>
#include <optional>

namespace tessaly {

class Alarm;
class PlannerStore;

/// Where the line of the current time stands in the shown week. An alarm moves it with the minute while it is there,
/// and lets it come with the first shown hour.
class CurrentTime : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(int place READ place NOTIFY moved)
    Q_PROPERTY(double y READ y NOTIFY moved)
    Q_PROPERTY(QString text READ text NOTIFY moved)

public:
    explicit CurrentTime(QObject *parent = nullptr);
    ~CurrentTime() override;

    /// The store must outlive it.
    void setStore(PlannerStore *store);
    /// The days are those of the shown week; none while no week is shown.
    void follow(const QList<QDate> &days, const WeekMeasures &measures);

    /// Place of today among the days; -1 when the line is not to be seen.
    [[nodiscard]] int place() const { return m_now ? m_now->place : -1; }
    /// Points below the top of the time area.
    [[nodiscard]] double y() const { return m_now ? m_now->y : 0; }
    /// Such as "10:24"; empty without the line.
    [[nodiscard]] const QString &text() const { return m_text; }

signals:
    void moved();

private:
    void look();
    void setAlarm();

    PlannerStore *m_store = nullptr;
    QList<QDate> m_days;
    WeekMeasures m_measures;
    std::unique_ptr<Alarm> m_alarm;
    std::optional<TimePlace> m_now;
    QString m_text;
};

} // namespace tessaly
