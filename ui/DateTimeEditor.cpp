#include "ui/DateTimeEditor.h"

#include <QLocale>
#include <QTimeZone>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr int shownDays = 42;

QLocale localeFor(bool isEnglish)
{
    return isEnglish ? QLocale(QLocale::English, QLocale::UnitedStates)
                     : QLocale(QLocale::Chinese, QLocale::SimplifiedHanScript, QLocale::China);
}

} // namespace

DateTimeEditor::DateTimeEditor(QObject *parent) : QObject(parent)
{
}

void DateTimeEditor::setValue(const QDateTime &value)
{
    if (m_value == value)
        return;
    m_value = value;
    showMonthOf(value.date());
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::setEnglish(bool isEnglish)
{
    if (m_isEnglish == isEnglish)
        return;
    m_isEnglish = isEnglish;
    emit valueChanged();
    emit partChanged();
    emit shownMonthChanged();
}

void DateTimeEditor::setDateOnly(bool isDateOnly)
{
    if (m_isDateOnly == isDateOnly)
        return;
    m_isDateOnly = isDateOnly;
    m_partIndex = 0;
    emit valueChanged();
    emit partChanged();
}

void DateTimeEditor::setFirstWeekday(int weekday)
{
    if (m_firstWeekday == weekday)
        return;
    m_firstWeekday = weekday;
    emit valueChanged();
    emit shownMonthChanged();
}

QList<DateTimeEditor::Piece> DateTimeEditor::pieces() const
{
    const QDate date = m_value.date();
    const QString year = QString::number(date.year());
    const QString day = QString::number(date.day());
    QList<Piece> result;
    if (m_isEnglish) {
        result = {{Part::Month, localeFor(true).monthName(date.month(), QLocale::ShortFormat), true},
                  {Part::Day, u" "_s},
                  {Part::Day, day, true},
                  {Part::Year, u", "_s},
                  {Part::Year, year, true}};
    } else {
        result = {{Part::Year, year, true}, {Part::Year, u"年"_s},  {Part::Month, QString::number(date.month()), true},
                  {Part::Month, u"月"_s},   {Part::Day, day, true}, {Part::Day, u"日"_s}};
    }
    if (!m_isDateOnly) {
        result += {{Part::Hour, m_isEnglish ? u", "_s : u" "_s},
                   {Part::Hour, m_value.toString(u"HH"), true},
                   {Part::Minute, u":"_s},
                   {Part::Minute, m_value.toString(u"mm"), true}};
    }
    return result;
}

QList<DateTimeEditor::Part> DateTimeEditor::order() const
{
    QList<Part> parts;
    for (const Piece &piece : pieces()) {
        if (piece.isEditable)
            parts.append(piece.part);
    }
    return parts;
}

QString DateTimeEditor::text() const
{
    QString result;
    for (const Piece &piece : pieces())
        result += piece.text;
    return result;
}

int DateTimeEditor::partStart() const
{
    qsizetype start = 0;
    int index = 0;
    for (const Piece &piece : pieces()) {
        if (piece.isEditable && index++ == m_partIndex)
            return static_cast<int>(start);
        start += piece.text.size();
    }
    return 0;
}

int DateTimeEditor::partLength() const
{
    int index = 0;
    for (const Piece &piece : pieces()) {
        if (piece.isEditable && index++ == m_partIndex)
            return static_cast<int>(piece.text.size());
    }
    return 0;
}

void DateTimeEditor::movePart(int delta)
{
    const int last = static_cast<int>(order().size()) - 1;
    m_partIndex = std::clamp(m_partIndex + delta, 0, last);
    m_typed = 0;
    m_typedDigits = 0;
    emit partChanged();
}

void DateTimeEditor::choosePartAt(int textPosition)
{
    qsizetype end = 0;
    int index = -1;
    m_typed = 0;
    m_typedDigits = 0;
    for (const Piece &piece : pieces()) {
        end += piece.text.size();
        if (piece.isEditable)
            m_partIndex = ++index;
        if (textPosition < end && index >= 0)
            break;
    }
    emit partChanged();
}

void DateTimeEditor::edit(QDate date, QTime time)
{
    const QDateTime changed(date, QTime(time.hour(), time.minute()), m_value.timeZone());
    if (!date.isValid() || !changed.isValid() || changed == m_value)
        return;
    setValue(changed);
    emit edited(changed);
}

void DateTimeEditor::step(int delta)
{
    m_typed = 0;
    m_typedDigits = 0;
    const QDate date = m_value.date();
    const QTime time = m_value.time();
    switch (order().value(m_partIndex)) {
    case Part::Year:
        return edit(date.addYears(delta), time);
    case Part::Month:
        return edit(date.addMonths(delta), time);
    case Part::Day:
        return edit(date.addDays(delta), time);
    case Part::Hour:
        return edit(date, time.addSecs(delta * 3600));
    case Part::Minute:
        return edit(date, time.addSecs(delta * 60));
    }
}

void DateTimeEditor::typeDigit(int digit)
{
    const Part part = order().value(m_partIndex);
    const int limit = part == Part::Year    ? 9999
                      : part == Part::Month ? 12
                      : part == Part::Day   ? 31
                      : part == Part::Hour  ? 23
                                            : 59;
    const int appended = m_typed * 10 + digit;
    const bool isContinued = m_typedDigits > 0 && appended <= limit;
    m_typed = isContinued ? appended : digit;
    m_typedDigits = isContinued ? m_typedDigits + 1 : 1;
    const int number = m_typed;
    const QDate date = m_value.date();
    const QTime time = m_value.time();
    switch (part) {
    case Part::Year:
        if (number >= 1000)
            edit(QDate(number, date.month(), std::min(date.day(), QDate(number, date.month(), 1).daysInMonth())), time);
        break;
    case Part::Month:
        if (number >= 1)
            edit(QDate(date.year(), number, std::min(date.day(), QDate(date.year(), number, 1).daysInMonth())), time);
        break;
    case Part::Day:
        if (number >= 1)
            edit(QDate(date.year(), date.month(), std::min(number, date.daysInMonth())), time);
        break;
    case Part::Hour:
        edit(date, QTime(number, time.minute()));
        break;
    case Part::Minute:
        edit(date, QTime(time.hour(), number));
        break;
    }
    // No further digit fits: the next part is meant.
    const int width = part == Part::Year ? 4 : 2;
    if (number * 10 > limit || m_typedDigits == width)
        movePart(1);
}

void DateTimeEditor::setTime(int hour, int minute)
{
    edit(m_value.date(), QTime(std::clamp(hour, 0, 23), std::clamp(minute, 0, 59)));
}

void DateTimeEditor::moveDay(int days)
{
    edit(m_value.date().addDays(days), m_value.time());
}

void DateTimeEditor::moveMonth(int months)
{
    edit(m_value.date().addMonths(months), m_value.time());
}

void DateTimeEditor::chooseDay(int position)
{
    edit(gridStart().addDays(position), m_value.time());
}

void DateTimeEditor::showMonthOf(QDate date)
{
    m_shownMonth = QDate(date.year(), date.month(), 1);
    emit shownMonthChanged();
}

void DateTimeEditor::showMonth(int delta)
{
    showMonthOf(m_shownMonth.addMonths(delta));
}

QString DateTimeEditor::monthTitle() const
{
    return localeFor(m_isEnglish).toString(m_shownMonth, m_isEnglish ? u"MMMM yyyy" : u"yyyy年M月");
}

QStringList DateTimeEditor::weekdayLetters() const
{
    QStringList letters;
    for (int column = 0; column < 7; ++column)
        letters += localeFor(m_isEnglish).dayName((m_firstWeekday - 1 + column) % 7 + 1, QLocale::NarrowFormat);
    return letters;
}

QDate DateTimeEditor::gridStart() const
{
    return m_shownMonth.addDays(-((m_shownMonth.dayOfWeek() - m_firstWeekday + 7) % 7));
}

QList<int> DateTimeEditor::dayNumbers() const
{
    QList<int> numbers;
    for (int position = 0; position < shownDays; ++position)
        numbers += gridStart().addDays(position).day();
    return numbers;
}

int DateTimeEditor::firstOfMonth() const
{
    return static_cast<int>(gridStart().daysTo(m_shownMonth));
}

int DateTimeEditor::lastOfMonth() const
{
    return firstOfMonth() + m_shownMonth.daysInMonth() - 1;
}

int DateTimeEditor::chosenDay() const
{
    return positionOf(m_value);
}

int DateTimeEditor::positionOf(const QDateTime &moment) const
{
    const qint64 position = gridStart().daysTo(moment.date());
    return position >= 0 && position < shownDays ? static_cast<int>(position) : -1;
}

QString DateTimeEditor::dayName(int position) const
{
    return localeFor(m_isEnglish).toString(gridStart().addDays(position), QLocale::LongFormat);
}

} // namespace tessaly
