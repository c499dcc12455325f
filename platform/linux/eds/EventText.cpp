#include "platform/linux/eds/EventText.h"

#include <cmath>
#include <utility>

namespace tessaly {

namespace {

/// Line breaks as they are written; no other control characters, which readers refuse.
QByteArray clean(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    text.removeIf([](QChar c) { return (c < u' ' && c != u'\n' && c != u'\t') || c == QChar(0x7f); });
    return text.toUtf8();
}

QString textOf(icalproperty *property)
{
    return property ? QString::fromUtf8(icalvalue_get_text(icalproperty_get_value(property))) : QString();
}

void setText(icalcomponent *event, icalproperty_kind kind, const QString &text)
{
    icalproperty *property = icalcomponent_get_first_property(event, kind);
    if (!property)
        icalcomponent_add_property(event, property = icalproperty_new(kind));
    icalproperty_set_value(property, icalvalue_new_text(clean(text).constData()));
}

void setTime(icalcomponent *event, icalproperty_kind kind, const icaltimetype &time, const ZoneLookup &lookup)
{
    icalproperty *property = icalcomponent_get_first_property(event, kind);
    if (!property)
        icalcomponent_add_property(event, property = icalproperty_new(kind));
    icalproperty_set_value(property, time.is_date ? icalvalue_new_date(time) : icalvalue_new_datetime(time));
    icalproperty_remove_parameter_by_kind(property, ICAL_VALUE_PARAMETER);
    if (time.is_date)
        icalproperty_set_parameter(property, icalparameter_new_value(ICAL_VALUE_DATE));
    const bool hasZone = !time.is_date && time.zone && !icaltime_is_utc(time);
    // A zone that stays keeps the name under which the calendar has it.
    const char *present = icalproperty_get_parameter_as_string(property, "TZID");
    if (hasZone && present && lookup(present) == time.zone)
        return;
    icalproperty_remove_parameter_by_kind(property, ICAL_TZID_PARAMETER);
    if (hasZone)
        icalproperty_set_parameter(
            property, icalparameter_new_tzid(icaltimezone_get_tzid(const_cast<icaltimezone *>(time.zone))));
}

/// Writes a time in the form in which the event has its start.
void addTimeLikeStart(icalcomponent *event, icalproperty_kind kind, const icaltimetype &time)
{
    icalproperty *property = icalproperty_new(kind);
    icalproperty_set_value(property, time.is_date ? icalvalue_new_date(time) : icalvalue_new_datetime(time));
    icalproperty *start = icalcomponent_get_first_property(event, ICAL_DTSTART_PROPERTY);
    for (const icalparameter_kind parameterKind : {ICAL_TZID_PARAMETER, ICAL_VALUE_PARAMETER}) {
        if (icalparameter *parameter = icalproperty_get_first_parameter(start, parameterKind))
            icalproperty_set_parameter(property, icalparameter_new_clone(parameter));
    }
    icalcomponent_add_property(event, property);
}

/// The seconds of a time in its zone. An hour that a clock change repeats is the first one (RFC 5545, 3.3.5); libical
/// takes the second.
time_t firstUnixTime(const icaltimetype &time)
{
    auto *zone = const_cast<icaltimezone *>(time.zone);
    const time_t unix = icaltime_as_timet_with_zone(time, zone);
    constexpr time_t clockChange = 3600;
    const icaltimetype before = icaltime_from_timet_with_zone(unix - clockChange, 0, zone);
    return before.hour == time.hour && before.minute == time.minute ? unix - clockChange : unix;
}

void removeAll(icalcomponent *event, icalproperty_kind kind)
{
    while (icalproperty *property = icalcomponent_get_first_property(event, kind)) {
        icalcomponent_remove_property(event, property);
        icalproperty_free(property);
    }
}

} // namespace

bool isRecurring(icalcomponent *event)
{
    return icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY) ||
           icalcomponent_get_first_property(event, ICAL_RDATE_PROPERTY);
}

QString uidOf(icalcomponent *event)
{
    return QString::fromUtf8(icalcomponent_get_uid(event));
}

EventText::EventText(const UserCalendar &calendar, ZoneLookup lookup)
    : m_calendar(calendar), m_lookup(std::move(lookup)),
      m_localZone(icaltimezone_get_builtin_timezone(calendar.zone().id().constData()))
{
}

Instant EventText::instant(const icaltimetype &time) const
{
    if (time.zone && !time.is_date)
        return Instant::fromUnixSeconds(static_cast<double>(firstUnixTime(time)));
    const QDate day(time.year, time.month, time.day);
    return time.is_date ? m_calendar.startOfDay(day)
                        : m_calendar.instant(day, QTime(time.hour, time.minute, qMin(time.second, 59)));
}

icaltimetype EventText::time(icalcomponent *event, icalproperty_kind kind) const
{
    icalproperty *property = icalcomponent_get_first_property(event, kind);
    if (!property)
        return icaltime_null_time();
    icaltimetype time = icalvalue_get_datetime(icalproperty_get_value(property));
    if (const char *tzid = icalproperty_get_parameter_as_string(property, "TZID");
        tzid && !time.is_date && !icaltime_is_utc(time))
        time.zone = m_lookup(tzid);
    return time;
}

icaltimetype EventText::end(icalcomponent *event) const
{
    const icaltimetype start = time(event, ICAL_DTSTART_PROPERTY);
    if (const icaltimetype end = time(event, ICAL_DTEND_PROPERTY); !icaltime_is_null_time(end))
        return end;
    icaltimetype end = start;
    if (icalproperty *duration = icalcomponent_get_first_property(event, ICAL_DURATION_PROPERTY)) {
        const icaldurationtype length = icalproperty_get_duration(duration);
        const int sign = length.is_neg ? -1 : 1;
        // Days are of the calendar, hours are exact (RFC 5545, 3.3.6).
        icaltime_adjust(&end, sign * static_cast<int>(length.days + length.weeks * 7), 0, 0, 0);
        const double seconds = length.hours * 3600.0 + length.minutes * 60.0 + length.seconds;
        if (!start.is_date && seconds > 0) {
            const auto exact = static_cast<time_t>(instant(end).unixSeconds() + sign * seconds);
            return icaltime_from_timet_with_zone(exact, 0, icaltimezone_get_utc_timezone());
        }
    } else if (start.is_date) {
        icaltime_adjust(&end, 1, 0, 0, 0);
    }
    return end;
}

QString EventText::occurrenceKey(icaltimetype originalStart) const
{
    if (originalStart.zone && !originalStart.is_date)
        originalStart = icaltime_convert_to_zone(originalStart, icaltimezone_get_utc_timezone());
    return QString::fromLatin1(icaltime_as_ical_string(originalStart));
}

CalendarEvent EventText::read(icalcomponent *event) const
{
    CalendarEvent result;
    result.uid = uidOf(event);
    if (icalproperty *summary = icalcomponent_get_first_property(event, ICAL_SUMMARY_PROPERTY))
        result.title = textOf(summary);
    result.notes = textOf(icalcomponent_get_first_property(event, ICAL_DESCRIPTION_PROPERTY));
    result.startDate = instant(time(event, ICAL_DTSTART_PROPERTY));
    result.endDate = std::max(result.startDate, instant(end(event)));
    return result;
}

bool EventText::isMidnight(Instant instant) const
{
    return m_calendar.startOfDay(m_calendar.day(instant)) == instant;
}

icaltimetype EventText::written(Instant instant, Form form, icaltimezone *zone) const
{
    const Instant second = Instant::fromUnixSeconds(std::floor(instant.unixSeconds()));
    const auto unix = static_cast<time_t>(second.unixSeconds());
    if (form == Form::Zoned && zone) {
        icaltimetype time = icaltime_from_timet_with_zone(unix, 0, zone);
        time.zone = zone; // libical leaves UTC there
        // Of an hour that a clock change repeats, only the first can be written in the zone.
        if (this->instant(time) == second)
            return time;
        return icaltime_from_timet_with_zone(unix, 0, icaltimezone_get_utc_timezone());
    }
    const QDateTime local = m_calendar.dateTime(second);
    icaltimetype time = icaltime_null_time();
    time.year = local.date().year();
    time.month = local.date().month();
    time.day = local.date().day();
    time.is_date = form == Form::Date;
    if (form != Form::Date) {
        time.hour = local.time().hour();
        time.minute = local.time().minute();
        time.second = local.time().second();
    }
    return time;
}

IcalComponentPtr EventText::create(const NewEvent &event) const
{
    IcalComponentPtr result(icalcomponent_new(ICAL_VEVENT_COMPONENT));
    icalcomponent_add_property(result.get(), icalproperty_new_uid(event.uid.toUtf8().constData()));
    setText(result.get(), ICAL_SUMMARY_PROPERTY, event.title);
    if (!event.notes.isEmpty())
        setText(result.get(), ICAL_DESCRIPTION_PROPERTY, event.notes);
    icaltimezone *zone = m_localZone ? m_localZone : icaltimezone_get_utc_timezone();
    setTime(result.get(), ICAL_DTSTART_PROPERTY, written(event.startDate, Form::Zoned, zone), m_lookup);
    setTime(result.get(), ICAL_DTEND_PROPERTY, written(std::max(event.startDate, event.endDate), Form::Zoned, zone),
            m_lookup);
    return result;
}

bool EventText::change(icalcomponent *event, const EventChange &change) const
{
    icalproperty *summary = icalcomponent_get_first_property(event, ICAL_SUMMARY_PROPERTY);
    const bool hasOtherTitle = (summary || !change.title.isEmpty()) && textOf(summary) != change.title;
    if (hasOtherTitle)
        setText(event, ICAL_SUMMARY_PROPERTY, change.title);
    const bool hasOtherTimes = changeTimes(event, change.startDate, change.endDate);
    return hasOtherTitle || hasOtherTimes;
}

bool EventText::changeTimes(icalcomponent *event, Instant start, Instant end) const
{
    end = std::max(start, end);
    const CalendarEvent present = read(event);
    if (present.startDate == start && present.endDate == end)
        return false;
    const icaltimetype oldStart = time(event, ICAL_DTSTART_PROPERTY);
    const icaltimetype oldEnd = this->end(event);
    icaltimetype newStart;
    icaltimetype newEnd;
    if (oldStart.is_date && isMidnight(start) && isMidnight(end) && start < end) {
        newStart = written(start, Form::Date, nullptr);
        newEnd = written(end, Form::Date, nullptr);
    } else if (oldStart.is_date) {
        newStart = written(start, Form::Zoned, m_localZone);
        newEnd = written(end, Form::Zoned, m_localZone);
    } else {
        const auto inFormOf = [&](const icaltimetype &old, Instant instant) {
            return old.zone ? written(instant, Form::Zoned, const_cast<icaltimezone *>(old.zone))
                            : written(instant, Form::Floating, nullptr);
        };
        newStart = inFormOf(oldStart, start);
        newEnd = inFormOf(icalcomponent_get_first_property(event, ICAL_DTEND_PROPERTY) ? oldEnd : oldStart, end);
    }
    setTime(event, ICAL_DTSTART_PROPERTY, newStart, m_lookup);
    removeAll(event, ICAL_DURATION_PROPERTY);
    setTime(event, ICAL_DTEND_PROPERTY, newEnd, m_lookup);
    return true;
}

IcalComponentPtr EventText::detach(icalcomponent *master, const icaltimetype &start) const
{
    IcalComponentPtr result(icalcomponent_new_clone(master));
    const CalendarEvent whole = read(master);
    for (const icalproperty_kind kind :
         {ICAL_RRULE_PROPERTY, ICAL_RDATE_PROPERTY, ICAL_EXDATE_PROPERTY, ICAL_EXRULE_PROPERTY})
        removeAll(result.get(), kind);
    addTimeLikeStart(result.get(), ICAL_RECURRENCEID_PROPERTY, start);
    if (start.is_date) {
        const icaltimetype oldStart = time(master, ICAL_DTSTART_PROPERTY);
        const icaltimetype oldEnd = end(master);
        const auto dayOf = [](const icaltimetype &t) { return QDate(t.year, t.month, t.day); };
        icaltimetype newEnd = start;
        icaltime_adjust(&newEnd, static_cast<int>(dayOf(oldStart).daysTo(dayOf(oldEnd))), 0, 0, 0);
        setTime(result.get(), ICAL_DTSTART_PROPERTY, start, m_lookup);
        removeAll(result.get(), ICAL_DURATION_PROPERTY);
        setTime(result.get(), ICAL_DTEND_PROPERTY, newEnd, m_lookup);
    } else {
        const Instant begin = instant(start);
        changeTimes(result.get(), begin, begin.plus(whole.endDate.seconds - whole.startDate.seconds));
    }
    return result;
}

icaltimetype EventText::exceptionTime(icalproperty *property) const
{
    icaltimetype time = icalvalue_get_datetime(icalproperty_get_value(property));
    const char *tzid = icalproperty_get_parameter_as_string(property, "TZID");
    if (tzid && !time.is_date)
        time.zone = m_lookup(tzid);
    return time;
}

bool EventText::isExcluded(icalcomponent *master, const QString &occurrenceKey) const
{
    for (icalproperty *property = icalcomponent_get_first_property(master, ICAL_EXDATE_PROPERTY); property;
         property = icalcomponent_get_next_property(master, ICAL_EXDATE_PROPERTY)) {
        if (this->occurrenceKey(exceptionTime(property)) == occurrenceKey)
            return true;
    }
    return false;
}

bool EventText::exclude(icalcomponent *master, const icaltimetype &start) const
{
    const QString key = occurrenceKey(start);
    icaltimetype bare = start;
    bare.zone = nullptr;
    bool isExcluded = false;
    icalproperty *next = icalcomponent_get_first_property(master, ICAL_EXDATE_PROPERTY);
    while (icalproperty *property = next) {
        next = icalcomponent_get_next_property(master, ICAL_EXDATE_PROPERTY);
        const icaltimetype time = exceptionTime(property);
        if (occurrenceKey(time) == key && time.is_date == start.is_date)
            isExcluded = true;
        // The service itself writes them without the zone, which other readers take for another time.
        if (!time.is_date && !time.zone && start.zone && icaltime_compare(time, bare) == 0) {
            icalcomponent_remove_property(master, property);
            icalproperty_free(property);
        }
    }
    if (isExcluded)
        return false;
    addTimeLikeStart(master, ICAL_EXDATE_PROPERTY, start);
    return true;
}

} // namespace tessaly
