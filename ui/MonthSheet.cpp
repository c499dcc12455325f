#include "ui/MonthSheet.h"

#include "ui/DateTimeText.h"

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr int shownDays = 42;

} // namespace

void MonthSheet::setValue(const QDateTime &value)
{
    if (m_value == value)
        return;
    m_value = value;
    m_month = QDate(value.date().year(), value.date().month(), 1);
    emit daysChanged();
}

void MonthSheet::setEnglish(bool isEnglish)
{
    if (m_isEnglish == isEnglish)
        return;
    m_isEnglish = isEnglish;
    emit daysChanged();
}

void MonthSheet::setFirstWeekday(int weekday)
{
    if (m_firstWeekday == weekday)
        return;
    m_firstWeekday = weekday;
    emit daysChanged();
}

void MonthSheet::turn(int months)
{
    m_month = m_month.addMonths(months);
    emit daysChanged();
}

QString MonthSheet::title() const
{
    return dateTimeLocale(m_isEnglish).toString(m_month, m_isEnglish ? u"MMMM yyyy" : u"yyyy年M月");
}

QStringList MonthSheet::weekdayLetters() const
{
    QStringList letters;
    for (int column = 0; column < 7; ++column)
        letters += dateTimeLocale(m_isEnglish).dayName((m_firstWeekday - 1 + column) % 7 + 1, QLocale::NarrowFormat);
    return letters;
}

QDate MonthSheet::dateAt(int position) const
{
    return m_month.addDays(position - firstOfMonth());
}

QList<int> MonthSheet::dayNumbers() const
{
    QList<int> numbers;
    for (int position = 0; position < shownDays; ++position)
        numbers += dateAt(position).day();
    return numbers;
}

int MonthSheet::firstOfMonth() const
{
    return (m_month.dayOfWeek() - m_firstWeekday + 7) % 7;
}

int MonthSheet::lastOfMonth() const
{
    return firstOfMonth() + m_month.daysInMonth() - 1;
}

int MonthSheet::positionOf(const QDateTime &moment) const
{
    const qint64 position = dateAt(0).daysTo(moment.date());
    return position >= 0 && position < shownDays ? static_cast<int>(position) : -1;
}

QString MonthSheet::dayName(int position) const
{
    return dateTimeLocale(m_isEnglish).toString(dateAt(position), QLocale::LongFormat);
}

} // namespace tessaly
