#include "ui/DateTimeText.h"

#include <QRegularExpression>

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

QString englishMonths()
{
    QStringList names;
    for (int month = 1; month <= 12; ++month)
        names += {dateTimeLocale(true).monthName(month), dateTimeLocale(true).monthName(month, QLocale::ShortFormat)};
    return names.join(u'|');
}

/// The whole texts that are read. Numbers that can never be a month, a day or a time do not match.
const QList<QRegularExpression> &wholeForms()
{
    static const QString month = u"(?<month>0?[1-9]|1[0-2])"_s;
    static const QString day = u"(?<day>0?[1-9]|[12][0-9]|3[01])"_s;
    static const QString time = u"(?<hour>[01]?[0-9]|2[0-3]):(?<minute>[0-5][0-9])"_s;
    static const QString year = u"(?<year>[0-9]{4})"_s;
    static const QList<QRegularExpression> forms = {
        QRegularExpression(u"^\\s*"_s + year + u"[-/.]"_s + month + u"[-/.]"_s + day + u"(?:[T ]\\s*"_s + time +
                           u"(?::[0-5][0-9](?:[.,][0-9]+)?)?(?<offset>Z|[+-][0-9]{2}:?[0-9]{2})?)?\\s*$"_s),
        // lint-allow(text): what is read, in whatever language the interface is
        QRegularExpression(u"^\\s*(?:(?:"_s + year + u"年)?"_s + month + u"月)?"_s + day + u"[日号](?:\\s*"_s + time +
                           u")?\\s*$"_s),
        QRegularExpression(u"^\\s*(?<name>"_s + englishMonths() + u")\\s+"_s + day + u"(?:,\\s*|\\s+)"_s + year +
                               u"(?:(?:,\\s*|\\s+)"_s + time + u")?\\s*$"_s,
                           QRegularExpression::CaseInsensitiveOption)};
    return forms;
}

QDateTime momentRead(const QRegularExpressionMatch &match, const QDateTime &current)
{
    const QString name = match.captured(u"name"_s);
    const QDate today = current.date();
    const auto numberOf = [&match](const QString &group, int otherwise) {
        return match.captured(group).isEmpty() ? otherwise : match.captured(group).toInt();
    };
    const int month = name.isEmpty() ? numberOf(u"month"_s, today.month()) : monthBeginningWith(name);
    const QDate date(numberOf(u"year"_s, today.year()), month, numberOf(u"day"_s, today.day()));
    const bool hasTime = !match.captured(u"hour"_s).isEmpty();
    const QTime time = hasTime ? QTime(match.captured(u"hour"_s).toInt(), match.captured(u"minute"_s).toInt())
                               : QTime(current.time().hour(), current.time().minute());
    const QString offset = match.captured(u"offset"_s);
    if (!date.isValid() || date.year() < firstYear)
        return {};
    if (offset.isEmpty())
        return momentOf(date, time, current.timeZone());
    const QDateTime base = QDateTime::fromString(u"2000-01-01T00:00:00"_s + offset, Qt::ISODate);
    // lint-allow(instant): an offset that stands in the text leaves nothing to choose
    return QDateTime(date, time, Qt::OffsetFromUTC, base.offsetFromUtc()).toTimeZone(current.timeZone());
}

} // namespace

QLocale dateTimeLocale(bool isEnglish)
{
    return isEnglish ? QLocale(QLocale::English, QLocale::UnitedStates)
                     : QLocale(QLocale::Chinese, QLocale::SimplifiedHanScript, QLocale::China);
}

QDateTime momentOf(QDate date, QTime time, const QTimeZone &zone)
{
    if (!date.isValid() || !time.isValid())
        return {};
    // lint-allow(instant): a field has the planner's rule without knowing the planner. By the offset of the day before,
    // a time that comes twice is the first, and one that is skipped lies after the gap.
    const int offsetBefore = QDateTime(date.addDays(-1), QTime(12, 0), zone).offsetFromUtc();
    const QDateTime early = QDateTime(date, time, Qt::OffsetFromUTC, offsetBefore).toTimeZone(zone);
    const QDateTime moment(date, time, zone);
    return moment.isValid() && early.time() != time ? moment : early;
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

DateTimeReading readDateTime(const QString &text, const QDateTime &current)
{
    bool isBegun = false;
    for (const QRegularExpression &form : wholeForms()) {
        const QRegularExpressionMatch match = form.match(text, 0, QRegularExpression::PartialPreferCompleteMatch);
        if (match.hasMatch()) {
            const QDateTime moment = momentRead(match, current);
            return {moment, moment.isValid()};
        }
        isBegun |= match.hasPartialMatch();
    }
    return {{}, isBegun};
}

} // namespace tessaly
