#pragma once

#include "model/Instant.h"
#include "model/ZoneTransitions.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QTime>
#include <QTimeZone>

#include <memory>
#include <optional>

namespace tessaly {

/// The user's calendar: Gregorian, in one time zone, with one first weekday. The only place where instants become
/// dates and dates become instants.
class UserCalendar
{
public:
    UserCalendar(const QTimeZone &zone, Qt::DayOfWeek firstWeekday, const QLocale &locale);
    /// Time zone, first weekday and locale of the system.
    [[nodiscard]] static UserCalendar system();
    /// The same user's calendar in another place.
    [[nodiscard]] UserCalendar inZone(const QTimeZone &zone) const { return {zone, m_firstWeekday, m_locale}; }
    /// The same user's calendar with weeks that begin on another day.
    [[nodiscard]] UserCalendar withFirstWeekday(Qt::DayOfWeek weekday) const { return {m_zone, weekday, m_locale}; }

    [[nodiscard]] const QTimeZone &zone() const { return m_zone; }
    [[nodiscard]] Qt::DayOfWeek firstWeekday() const { return m_firstWeekday; }
    /// The system's locale, for labels that follow it.
    [[nodiscard]] const QLocale &locale() const { return m_locale; }

    /// The instant as local wall-clock time.
    [[nodiscard]] QDateTime dateTime(Instant instant) const;
    [[nodiscard]] QDate day(Instant instant) const;
    /// Whole minutes since local midnight as the clock shows them, 0 to 1439.
    [[nodiscard]] int minuteOfDay(Instant instant) const;
    /// The local wall-clock time as an instant. A time that a clock change skips is read with the offset before the
    /// gap, a repeated one is the first (RFC 5545, 3.3.5).
    [[nodiscard]] Instant instant(QDate day, QTime time) const;
    /// The first instant of the day; later than 00:00 where a clock change skips midnight.
    [[nodiscard]] Instant startOfDay(QDate day) const;
    /// The first day of the week that contains the day.
    [[nodiscard]] QDate weekStart(QDate day) const;
    /// The first day of the month that contains the day.
    [[nodiscard]] static QDate monthStart(QDate day);

    /// The same wall-clock time so many days or months later; a day that the month lacks becomes its last day.
    /// Nothing when the calendar has no such day.
    [[nodiscard]] std::optional<Instant> addingDays(Instant instant, qint64 days) const;
    [[nodiscard]] std::optional<Instant> addingMonths(Instant instant, int months) const;

private:
    [[nodiscard]] std::optional<Instant> moved(Instant instant, QDate day) const;
    /// Milliseconds since 1970-01-01 00:00 on the local clock.
    [[nodiscard]] qint64 localMilliseconds(Instant instant) const;

    QTimeZone m_zone;
    std::shared_ptr<const ZoneTransitions> m_transitions;
    Qt::DayOfWeek m_firstWeekday;
    QLocale m_locale;
};

} // namespace tessaly
