#include "ui/DateTimeText.h"

#include <QTimeZone>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QString padded(int number)
{
    return QString::number(number).rightJustified(2, u'0');
}

QString monthText(int month, bool isEnglish)
{
    const bool hasName = isEnglish && month >= 1 && month <= 12;
    return hasName ? dateTimeLocale(true).monthName(month, QLocale::ShortFormat) : QString::number(month);
}

} // namespace

QLocale dateTimeLocale(bool isEnglish)
{
    return isEnglish ? QLocale(QLocale::English, QLocale::UnitedStates)
                     : QLocale(QLocale::Chinese, QLocale::SimplifiedHanScript, QLocale::China);
}

DateTimeParts dateTimeParts(const QDateTime &moment)
{
    const QDate date = moment.date();
    const QTime time = moment.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute()};
}

int &partOf(DateTimeParts &parts, DateTimePart part)
{
    switch (part) {
    case DateTimePart::Year:
        return parts.year;
    case DateTimePart::Month:
        return parts.month;
    case DateTimePart::Day:
        return parts.day;
    case DateTimePart::Hour:
        return parts.hour;
    case DateTimePart::Minute:
        break;
    }
    return parts.minute;
}

QList<DateTimePiece> dateTimePieces(const DateTimeParts &parts, bool isEnglish, bool isDateOnly)
{
    using enum DateTimePart;
    const QString year = QString::number(parts.year);
    const QString month = monthText(parts.month, isEnglish);
    const QString day = QString::number(parts.day);
    QList<DateTimePiece> pieces;
    if (isEnglish)
        pieces = {{Month, month, true}, {Day, u" "_s}, {Day, day, true}, {Year, u", "_s}, {Year, year, true}};
    else
        pieces = {{Year, year, true}, {Year, u"年"_s},  {Month, month, true},
                  {Month, u"月"_s},   {Day, day, true}, {Day, u"日"_s}};
    if (!isDateOnly) {
        pieces += {{Hour, isEnglish ? u", "_s : u" "_s},
                   {Hour, padded(parts.hour), true},
                   {Minute, u":"_s},
                   {Minute, padded(parts.minute), true}};
    }
    return pieces;
}

int monthBeginningWith(const QString &letters)
{
    for (int month = 1; month <= 12; ++month) {
        if (dateTimeLocale(true).monthName(month).startsWith(letters, Qt::CaseInsensitive))
            return month;
    }
    return 0;
}

std::optional<QDateTime> readDateTime(const QString &text, const QDateTime &current)
{
    const QString trimmed = text.trimmed();
    for (const QString &format : {u"yyyy-MM-dd"_s, u"yyyy年M月d日"_s, u"MMM d, yyyy"_s}) {
        const QDate date = QDate::fromString(trimmed, format);
        if (date.isValid())
            return QDateTime(date, current.time(), current.timeZone());
    }
    for (const QString &format : {u"yyyy年M月d日 H:mm"_s, u"MMM d, yyyy, H:mm"_s}) {
        const QDateTime moment = QDateTime::fromString(trimmed, format);
        if (moment.isValid())
            return QDateTime(moment.date(), moment.time(), current.timeZone());
    }
    const QDateTime moment = QDateTime::fromString(trimmed, Qt::ISODate);
    if (!moment.isValid())
        return std::nullopt;
    if (moment.timeSpec() == Qt::LocalTime)
        return QDateTime(moment.date(), moment.time(), current.timeZone());
    return moment.toTimeZone(current.timeZone());
}

} // namespace tessaly
