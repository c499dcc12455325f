#include "model/DateLabels.h"

#include "model/DateLocale.h"

#include <unicode/udat.h>
#include <unicode/udatpg.h>

#include <algorithm>

namespace tessaly {
namespace {

constexpr int capacity = 256;

/// ICU counts milliseconds in a double; beyond this its calendars have no fields (ECMA-262, 21.4.1.1).
constexpr double mostMilliseconds = 8.64e15;
constexpr double dayMilliseconds = 86400000;
constexpr qint64 unixEpochJulianDay = 2440588;

QString pattern(const QByteArray &locale, const char16_t *skeleton)
{
    UErrorCode status = U_ZERO_ERROR;
    UDateTimePatternGenerator *generator = udatpg_open(locale.constData(), &status);
    char16_t buffer[capacity];
    const int32_t length = udatpg_getBestPattern(generator, skeleton, -1, buffer, capacity, &status);
    udatpg_close(generator);
    return U_SUCCESS(status) ? QString::fromUtf16(buffer, length) : QString();
}

} // namespace

/// One pattern of one locale, for fields of the local clock. ICU only puts them into words: its own zones are as old as
/// its release. Without ICU's data every text is empty.
class DateLabels::Format
{
public:
    Format(const UserCalendar &calendar, const char16_t *skeleton)
    {
        const QByteArray locale = icuName(calendar.locale());
        const QString text = pattern(locale, skeleton);
        UErrorCode status = U_ZERO_ERROR;
        m_format = udat_open(UDAT_PATTERN, UDAT_PATTERN, locale.constData(), u"Etc/GMT", -1,
                             reinterpret_cast<const char16_t *>(text.utf16()), int(text.size()), &status);
    }
    ~Format() { udat_close(m_format); }
    Q_DISABLE_COPY_MOVE(Format)

    [[nodiscard]] QString text(QDate day, int minuteOfDay = 0) const
    {
        const double milliseconds =
            static_cast<double>(day.toJulianDay() - unixEpochJulianDay) * dayMilliseconds + minuteOfDay * 60000.0;
        UErrorCode status = U_ZERO_ERROR;
        char16_t buffer[capacity];
        const int32_t length = udat_format(m_format, std::clamp(milliseconds, -mostMilliseconds, mostMilliseconds),
                                           buffer, capacity, nullptr, &status);
        return U_SUCCESS(status) ? QString::fromUtf16(buffer, length) : QString();
    }

private:
    UDateFormat *m_format = nullptr;
};

DateLabels::DateLabels(const UserCalendar &calendar)
    : m_calendar(calendar), m_yearMonthDay(std::make_unique<Format>(calendar, u"yMMMd")),
      m_monthDay(std::make_unique<Format>(calendar, u"MMMd")), m_yearMonth(std::make_unique<Format>(calendar, u"yMMM")),
      m_monthDayTime(std::make_unique<Format>(calendar, u"MMMdjm"))
{
}

DateLabels::~DateLabels() = default;

QString DateLabels::week(QDate firstDay) const
{
    QString &label = m_weeks[firstDay];
    if (label.isEmpty())
        label = m_yearMonthDay->text(firstDay) + QStringLiteral(" – ") + m_monthDay->text(firstDay.addDays(6));
    return label;
}

QString DateLabels::month(Instant instant) const
{
    const QDate firstDay = UserCalendar::monthStart(m_calendar.day(instant));
    QString &label = m_months[firstDay];
    if (label.isEmpty())
        label = m_yearMonth->text(firstDay);
    return label;
}

QString DateLabels::dayAndTime(Instant instant) const
{
    return m_monthDayTime->text(m_calendar.day(instant), m_calendar.minuteOfDay(instant));
}

} // namespace tessaly
