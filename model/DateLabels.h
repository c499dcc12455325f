#pragma once

#include "model/Instant.h"
#include "model/UserCalendar.h"

#include <QHash>
#include <QString>

#include <memory>

namespace tessaly {

/// Dates in the words of the system's locale: its own order, punctuation and clock for the fields named
/// (Unicode TR 35 skeletons through ICU). Not for the fixed patterns of the interface language.
class DateLabels
{
public:
    explicit DateLabels(const UserCalendar &calendar);
    ~DateLabels();
    Q_DISABLE_COPY_MOVE(DateLabels)

    /// First day with its year, " – ", last day: "Nov 2, 2026 – Nov 8".
    [[nodiscard]] QString week(QDate firstDay) const;
    /// The month that contains the instant, with its year: "Nov 2026".
    [[nodiscard]] QString month(Instant instant) const;
    /// Month, day, hour and minute: "Nov 2, 5:30 PM".
    [[nodiscard]] QString dayAndTime(Instant instant) const;

private:
    class Format;

    UserCalendar m_calendar;
    std::unique_ptr<Format> m_yearMonthDay;
    std::unique_ptr<Format> m_monthDay;
    std::unique_ptr<Format> m_yearMonth;
    std::unique_ptr<Format> m_monthDayTime;
    // Thousands of to-dos share few weeks and months.
    mutable QHash<QDate, QString> m_weeks;
    mutable QHash<QDate, QString> m_months;
};

} // namespace tessaly
