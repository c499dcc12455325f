#pragma once

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// Six weeks around a month, as a calendar shows them; positions are those of their 42 days.
class MonthSheet : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The chosen moment; its month is shown whenever it changes.
    Q_PROPERTY(QDateTime value READ value WRITE setValue NOTIFY daysChanged)
    Q_PROPERTY(bool isEnglish READ isEnglish WRITE setEnglish NOTIFY daysChanged)
    /// Weekday that weeks start with, 1 (Monday) to 7 (Sunday).
    Q_PROPERTY(int firstWeekday READ firstWeekday WRITE setFirstWeekday NOTIFY daysChanged)
    Q_PROPERTY(QString title READ title NOTIFY daysChanged)
    Q_PROPERTY(QStringList weekdayLetters READ weekdayLetters NOTIFY daysChanged)
    /// The days of the month.
    Q_PROPERTY(QList<int> dayNumbers READ dayNumbers NOTIFY daysChanged)
    Q_PROPERTY(int firstOfMonth READ firstOfMonth NOTIFY daysChanged)
    Q_PROPERTY(int lastOfMonth READ lastOfMonth NOTIFY daysChanged)
    /// -1 when it is not shown.
    Q_PROPERTY(int chosenDay READ chosenDay NOTIFY daysChanged)

public:
    using QObject::QObject;

    [[nodiscard]] QDateTime value() const { return m_value; }
    void setValue(const QDateTime &value);
    [[nodiscard]] bool isEnglish() const { return m_isEnglish; }
    void setEnglish(bool isEnglish);
    [[nodiscard]] int firstWeekday() const { return m_firstWeekday; }
    void setFirstWeekday(int weekday);

    [[nodiscard]] QString title() const;
    [[nodiscard]] QStringList weekdayLetters() const;
    [[nodiscard]] QList<int> dayNumbers() const;
    [[nodiscard]] int firstOfMonth() const;
    [[nodiscard]] int lastOfMonth() const;
    [[nodiscard]] int chosenDay() const { return positionOf(m_value); }

    /// Shows another month.
    Q_INVOKABLE void turn(int months);
    Q_INVOKABLE [[nodiscard]] QDate dateAt(int position) const;
    /// Position of the day, or -1.
    Q_INVOKABLE [[nodiscard]] int positionOf(const QDateTime &moment) const;
    /// Full date of a shown day, for assistive technology.
    Q_INVOKABLE [[nodiscard]] QString dayName(int position) const;

signals:
    void daysChanged();

private:
    QDateTime m_value;
    QDate m_month;
    int m_firstWeekday = 1;
    bool m_isEnglish = false;
};

} // namespace tessaly
