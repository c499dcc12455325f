#include "model/DisplayTitle.h"

#include "model/CalendarFeed.h"

namespace tessaly {

namespace {

/// Where the value of a property's line begins, after the first colon outside quotes; -1 where there is none.
qsizetype valueStart(QStringView line)
{
    bool isQuoted = false;
    for (qsizetype place = 0; place < line.size(); ++place) {
        if (line[place] == u'"')
            isQuoted = !isQuoted;
        else if (line[place] == u':' && !isQuoted)
            return place + 1;
    }
    return line.indexOf(u':') + 1;
}

} // namespace

QString displayTitle(const ScheduleItem &schedule)
{
    const QStringView line = schedule.title;
    const QStringView name = u"SUMMARY";
    const bool isLine = schedule.calendarIdentifier && isFeedCalendar(*schedule.calendarIdentifier) &&
                        line.startsWith(name) && line.size() > name.size() &&
                        (line[name.size()] == u':' || line[name.size()] == u';');
    const qsizetype start = isLine ? valueStart(line) : 0;
    if (start == 0)
        return schedule.title;
    QString title;
    title.reserve(line.size() - start);
    for (qsizetype place = start; place < line.size(); ++place) {
        const QChar next = line[place] == u'\\' && place + 1 < line.size() ? line[place + 1] : QChar();
        if (next == u'n' || next == u'N')
            title += u' ';
        else if (next == u'\\' || next == u',' || next == u';')
            title += next;
        else {
            title += line[place];
            continue;
        }
        ++place;
    }
    return title;
}

} // namespace tessaly
