#pragma once

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <QString>
#include <QTimeZone>

namespace tessaly {

/// A date and a time as they stand in a field: what is being typed need not exist.
struct DateTimeParts
{
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
};

enum class DateTimePart { Year, Month, Day, Hour, Minute };

/// A part of a field's text, or what stands before or after one.
struct DateTimePiece
{
    DateTimePart part = DateTimePart::Year;
    QString text = {};
    bool isEditable = false;
};

[[nodiscard]] QLocale dateTimeLocale(bool isEnglish);

[[nodiscard]] DateTimeParts dateTimeParts(const QDateTime &moment);
[[nodiscard]] int &partOf(DateTimeParts &parts, DateTimePart part);

/// "Nov 21, 2026, 09:30" or "2026年11月21日 09:30"; a month that does not exist is shown as its number.
[[nodiscard]] QList<DateTimePiece> dateTimePieces(const DateTimeParts &parts, bool isEnglish, bool isDateOnly);

/// The moment at which the zone's clock shows the time: the first of two, or after the gap where a clock change skips
/// it. Invalid without a date or time.
[[nodiscard]] QDateTime momentOf(QDate date, QTime time, const QTimeZone &zone);

/// The first month whose English name begins with the letters, of either case; 0 when there is none.
[[nodiscard]] int monthBeginningWith(const QString &letters);

/// The first year that a field takes.
constexpr int firstYear = 1000;

/// What a text says about a moment.
struct DateTimeReading
{
    /// Invalid when the text is no moment, or none that exists.
    QDateTime moment = {};
    /// The text is a moment, or more typing can make it one.
    bool isBegun = false;
};

/// Reads a moment: ISO 8601, also with a blank for the T and with single digits, or a field's own text in either
/// language. Without an offset the wall-clock time is that of the zone of `current`. A time that is missing, and in
/// Chinese a year or month, is that of `current`. Seconds are dropped.
[[nodiscard]] DateTimeReading readDateTime(const QString &text, const QDateTime &current);

} // namespace tessaly
