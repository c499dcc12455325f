#include "model/ICalendarWriter.h"

#include "model/DisplayTitle.h"
#include "model/ICalendarText.h"
#include "model/UserCalendar.h"
#include "model/Uuid.h"

#include <algorithm>

namespace tessaly {

namespace {

/// "20260609T090000Z"; empty where the format has no such year.
QByteArray utcText(Instant instant, const UserCalendar &utc)
{
    const QDateTime time = utc.dateTime(instant);
    if (!time.isValid() || time.date().year() < 1 || time.date().year() > 9999)
        return {};
    return time.toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1();
}

class Writer
{
public:
    explicit Writer(Instant now) : m_stamp(utcText(now, m_utc))
    {
        add("BEGIN:VCALENDAR");
        add("VERSION:2.0");
        add("PRODID:-//Tessaly//Tessaly//EN");
    }

    void addEvent(const ScheduleItem &schedule)
    {
        const QByteArray start = utcText(schedule.date, m_utc);
        const QByteArray end = utcText(std::max(schedule.date, schedule.end()), m_utc);
        if (start.isEmpty() || end.isEmpty())
            return;
        add("BEGIN:VEVENT");
        add("UID:" + uuidText(schedule.id).toLatin1());
        add("DTSTAMP:" + m_stamp);
        add("DTSTART:" + start);
        add("DTEND:" + end);
        add("SUMMARY:" + escapedText(displayTitle(schedule)));
        if (!schedule.notes.isEmpty())
            add("DESCRIPTION:" + escapedText(schedule.notes));
        if (schedule.tag && !schedule.tag->isEmpty())
            add("CATEGORIES:" + escapedText(*schedule.tag));
        add("END:VEVENT");
    }

    [[nodiscard]] QByteArray text()
    {
        add("END:VCALENDAR");
        return std::move(m_text);
    }

private:
    void add(const QByteArray &content) { m_text += contentLine(content, "\r\n"); }

    UserCalendar m_utc{QTimeZone::utc(), Qt::Monday, QLocale::c()};
    QByteArray m_stamp;
    QByteArray m_text;
};

} // namespace

QByteArray calendarText(const QList<ScheduleItem> &schedules, Instant now)
{
    Writer writer(now);
    for (const ScheduleItem &schedule : schedules)
        writer.addEvent(schedule);
    return writer.text();
}

} // namespace tessaly
