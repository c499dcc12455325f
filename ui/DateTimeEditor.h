#pragma once

#include <QDateTime>
#include <QObject>
#include <QtQml/qqml.h>

namespace tessaly {

/// The rules of a date-time field: its text, which part of it is chosen, and what keys do to that part. Wall-clock
/// time of the value's own time zone; seconds are cleared by every change.
class DateTimeEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QDateTime value READ value WRITE setValue NOTIFY valueChanged)
    Q_PROPERTY(bool isEnglish READ isEnglish WRITE setEnglish NOTIFY valueChanged)
    Q_PROPERTY(bool isDateOnly READ isDateOnly WRITE setDateOnly NOTIFY valueChanged)
    /// Weekday that weeks start with, 1 (Monday) to 7 (Sunday).
    Q_PROPERTY(int firstWeekday READ firstWeekday WRITE setFirstWeekday NOTIFY valueChanged)
    Q_PROPERTY(QString text READ text NOTIFY valueChanged)
    Q_PROPERTY(int partStart READ partStart NOTIFY partChanged)
    Q_PROPERTY(int partLength READ partLength NOTIFY partChanged)
    /// The month that the calendar shows, as its first day; follows the value.
    Q_PROPERTY(QDate shownMonth READ shownMonth NOTIFY shownMonthChanged)
    Q_PROPERTY(QString monthTitle READ monthTitle NOTIFY shownMonthChanged)
    Q_PROPERTY(QStringList weekdayLetters READ weekdayLetters NOTIFY valueChanged)
    Q_PROPERTY(int hour READ hour NOTIFY valueChanged)
    Q_PROPERTY(int minute READ minute NOTIFY valueChanged)
    /// The 42 days shown, as days of the month.
    Q_PROPERTY(QList<int> dayNumbers READ dayNumbers NOTIFY shownMonthChanged)
    /// Positions within the 42 days: the first and the last of the shown month, and the value's day or -1.
    Q_PROPERTY(int firstOfMonth READ firstOfMonth NOTIFY shownMonthChanged)
    Q_PROPERTY(int lastOfMonth READ lastOfMonth NOTIFY shownMonthChanged)
    Q_PROPERTY(int chosenDay READ chosenDay NOTIFY shownMonthChanged)

public:
    enum class Part { Year, Month, Day, Hour, Minute };

    explicit DateTimeEditor(QObject *parent = nullptr);

    [[nodiscard]] QDateTime value() const { return m_value; }
    void setValue(const QDateTime &value);
    [[nodiscard]] bool isEnglish() const { return m_isEnglish; }
    void setEnglish(bool isEnglish);
    [[nodiscard]] bool isDateOnly() const { return m_isDateOnly; }
    void setDateOnly(bool isDateOnly);
    [[nodiscard]] int firstWeekday() const { return m_firstWeekday; }
    void setFirstWeekday(int weekday);

    [[nodiscard]] QString text() const;
    [[nodiscard]] int partStart() const;
    [[nodiscard]] int partLength() const;
    [[nodiscard]] QDate shownMonth() const { return m_shownMonth; }
    [[nodiscard]] QString monthTitle() const;
    [[nodiscard]] QStringList weekdayLetters() const;
    [[nodiscard]] int hour() const { return m_value.time().hour(); }
    [[nodiscard]] int minute() const { return m_value.time().minute(); }
    [[nodiscard]] QList<int> dayNumbers() const;
    [[nodiscard]] int firstOfMonth() const;
    [[nodiscard]] int lastOfMonth() const;
    [[nodiscard]] int chosenDay() const;

    // Each of these that changes the value emits edited().
    Q_INVOKABLE void step(int delta);
    Q_INVOKABLE void typeDigit(int digit);
    Q_INVOKABLE void chooseDay(int position);
    Q_INVOKABLE void moveDay(int days);
    Q_INVOKABLE void moveMonth(int months);
    Q_INVOKABLE void setTime(int hour, int minute);

    Q_INVOKABLE void movePart(int delta);
    Q_INVOKABLE void choosePartAt(int textPosition);
    Q_INVOKABLE void showMonth(int delta);
    /// Position of the day among the 42 shown, or -1.
    Q_INVOKABLE int positionOf(const QDateTime &moment) const;
    /// Full date of a shown day, for assistive technology.
    Q_INVOKABLE QString dayName(int position) const;

signals:
    void valueChanged();
    void partChanged();
    void shownMonthChanged();
    /// The user changed the value.
    void edited(const QDateTime &value);

private:
    struct Piece
    {
        Part part = Part::Year;
        QString text;
        bool isEditable = false;
    };

    [[nodiscard]] QList<Piece> pieces() const;
    [[nodiscard]] QList<Part> order() const;
    [[nodiscard]] QDate gridStart() const;
    void edit(QDate date, QTime time);
    void showMonthOf(QDate date);

    QDateTime m_value;
    QDate m_shownMonth;
    int m_firstWeekday = 1;
    int m_partIndex = 0;
    int m_typed = 0;
    int m_typedDigits = 0;
    bool m_isEnglish = false;
    bool m_isDateOnly = false;
};

} // namespace tessaly
