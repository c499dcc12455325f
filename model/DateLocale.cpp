#include "model/DateLocale.h"

#include <unicode/ucal.h>

namespace tessaly {

QLocale dateLocale(const LocaleSettings &settings)
{
    for (const QByteArray &name : {settings.all, settings.time, settings.lang}) {
        if (!name.isEmpty())
            return QLocale(QString::fromLocal8Bit(name));
    }
    return QLocale::c();
}

Qt::DayOfWeek firstWeekday(const QLocale &locale)
{
    if (locale.language() == QLocale::C)
        return Qt::Monday;
    // Not QLocale's own answer: in Qt 6.4 weeks begin on Sunday in China.
    UErrorCode status = U_ZERO_ERROR;
    UCalendar *calendar = ucal_open(nullptr, 0, icuName(locale).constData(), UCAL_DEFAULT, &status);
    if (U_FAILURE(status))
        return locale.firstDayOfWeek();
    const int day = ucal_getAttribute(calendar, UCAL_FIRST_DAY_OF_WEEK);
    ucal_close(calendar);
    return day == UCAL_SUNDAY ? Qt::Sunday : static_cast<Qt::DayOfWeek>(day - UCAL_SUNDAY);
}

QByteArray icuName(const QLocale &locale)
{
    return locale.bcp47Name().replace(u'-', u'_').toLatin1();
}

} // namespace tessaly
