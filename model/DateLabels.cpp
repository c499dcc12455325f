#include "model/DateLabels.h"

#include <unicode/udat.h>
#include <unicode/udatpg.h>

#include <algorithm>

namespace tessaly {
namespace {

constexpr int capacity = 256;

/// ICU counts milliseconds in a double; beyond this its calendars have no fields (ECMA-262, 21.4.1.1).
constexpr double leastMilliseconds = -8.64e15;
constexpr double mostMilliseconds = 8.64e15;

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

/// One pattern of one locale and time zone. Without ICU's data every text is empty.
class DateLabels::Format
{
public:
    Format(const UserCalendar &calendar, const char16_t *skeleton)
    {
        const QByteArray locale = QLocale(calendar.locale()).bcp47Name().replace(u'-', u'_').toLatin1();
        const QString zone = QString::fromLatin1(calendar.zone().id());
        const QString text = pattern(locale, skeleton);
        UErrorCode status = U_ZERO_ERROR;
        m_format = udat_open(UDAT_PATTERN, UDAT_PATTERN, locale.constData(), utf16(zone), int(zone.size()), utf16(text),
                             int(text.size()), &status);
    }
    ~Format() { udat_close(m_format); }
    Q_DISABLE_COPY_MOVE(Format)

    [[nodiscard]] QString text(Instant instant) const
    {
        const double milliseconds = std::clamp(instant.unixSeconds() * 1000.0, leastMilliseconds, mostMilliseconds);
        UErrorCode status = U_ZERO_ERROR;
        char16_t buffer[capacity];
        const int32_t length = udat_format(m_format, milliseconds, buffer, capacity, nullptr, &status);
        return U_SUCCESS(status) ? QString::fromUtf16(buffer, length) : QString();
    }

private:
    static const char16_t *utf16(const QString &text) { return reinterpret_cast<const char16_t *>(text.utf16()); }

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
    if (label.isEmpty()) {
        const Instant last = m_calendar.startOfDay(firstDay.addDays(6));
        label = m_yearMonthDay->text(m_calendar.startOfDay(firstDay)) + QStringLiteral(" – ") + m_monthDay->text(last);
    }
    return label;
}

QString DateLabels::month(Instant instant) const
{
    const QDate day = m_calendar.day(instant);
    QString &label = m_months[QDate(day.year(), day.month(), 1)];
    if (label.isEmpty())
        label = m_yearMonth->text(instant);
    return label;
}

QString DateLabels::dayAndTime(Instant instant) const
{
    return m_monthDayTime->text(instant);
}

} // namespace tessaly
