#include "platform/linux/eds/EventMirror.h"

#include <QUrl>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaly {

namespace {

constexpr double daySeconds = 86400;

QString encoded(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

GObjectPtr<ICalTime> utcTime(Instant instant)
{
    return GObjectPtr<ICalTime>(i_cal_time_new_from_timet_with_zone(
        static_cast<time_t>(std::floor(instant.unixSeconds())), FALSE, i_cal_timezone_get_utc_timezone()));
}

bool overlaps(const CalendarEvent &event, Instant from, Instant to)
{
    return event.startDate < to &&
           (event.endDate > from || (event.startDate == event.endDate && event.startDate >= from));
}

bool isEndless(icalcomponent *event)
{
    for (icalproperty *property = icalcomponent_get_first_property(event, ICAL_RRULE_PROPERTY); property;
         property = icalcomponent_get_next_property(event, ICAL_RRULE_PROPERTY)) {
        const icalrecurrencetype rule = icalproperty_get_rrule(property);
        if (rule.count == 0 && icaltime_is_null_time(rule.until))
            return true;
    }
    return false;
}

} // namespace

void ZoneTable::setClient(ECalClient *client)
{
    const std::lock_guard lock(m_mutex);
    m_client.reset(client ? static_cast<ECalClient *>(g_object_ref(client)) : nullptr);
    m_zones.clear();
}

ICalTimezone *ZoneTable::find(const char *tzid)
{
    const std::lock_guard lock(m_mutex);
    const QByteArray key(tzid);
    if (const auto known = m_zones.constFind(key); known != m_zones.cend())
        return *known;
    ICalTimezone *zone = i_cal_timezone_get_builtin_timezone_from_tzid(tzid);
    if (!zone)
        zone = i_cal_timezone_get_builtin_timezone(tzid);
    if (!zone && m_client)
        e_cal_client_get_timezone_sync(m_client.get(), tzid, &zone, nullptr, nullptr);
    m_zones.insert(key, zone);
    return zone;
}

QString EventName::identifier(const QString &calendarIdentifier) const
{
    QString result = calendarIdentifier + u'/' + encoded(uid);
    if (!occurrence.isEmpty())
        result += u'/' + occurrence;
    return result;
}

std::optional<EventName> EventName::parse(QStringView identifier, const QString &calendarIdentifier)
{
    if (!identifier.startsWith(calendarIdentifier + u'/'))
        return std::nullopt;
    const QList<QStringView> parts = identifier.mid(calendarIdentifier.size() + 1).split(u'/');
    if (parts.size() > 2 || parts.first().isEmpty())
        return std::nullopt;
    return EventName{.uid = QUrl::fromPercentEncoding(parts.first().toLatin1()),
                     .occurrence = parts.size() == 2 ? parts.at(1).toString() : QString()};
}

EventMirror::EventMirror(QString calendarIdentifier, std::shared_ptr<ZoneTable> zones,
                         std::shared_ptr<const EventText> text)
    : m_calendarIdentifier(std::move(calendarIdentifier)), m_zones(std::move(zones)), m_text(std::move(text))
{
}

void EventMirror::clear()
{
    m_single.clear();
    m_series.clear();
}

CalendarEvent EventMirror::named(CalendarEvent event, const QString &occurrence) const
{
    event.calendarIdentifier = m_calendarIdentifier;
    event.eventIdentifier = EventName{.uid = event.uid, .occurrence = occurrence}.identifier(m_calendarIdentifier);
    return event;
}

void EventMirror::put(ICalComponent *component)
{
    icalcomponent *event = nativeComponent(component);
    const QString uid = uidOf(event);
    if (uid.isEmpty() || icaltime_is_null_time(m_text->time(event, ICAL_DTSTART_PROPERTY)))
        return;
    const icaltimetype recurrenceId = m_text->time(event, ICAL_RECURRENCEID_PROPERTY);
    if (!icaltime_is_null_time(recurrenceId)) {
        m_series[uid].overrides[m_text->occurrenceKey(recurrenceId)] = referenceTo(component);
    } else if (isRecurring(event)) {
        m_series[uid].master = referenceTo(component);
    } else {
        m_single.insert(uid, named(m_text->read(event), {}));
    }
}

void EventMirror::replace(const QString &uid, const Components &components)
{
    m_single.remove(uid);
    m_series.erase(uid);
    for (const auto &component : components)
        put(component.get());
}

QStringList EventMirror::doubtfulSeries() const
{
    QStringList result;
    for (const auto &[uid, series] : m_series) {
        const auto isLeftOut = [this, &series = series](const auto &entry) {
            return m_text->isExcluded(nativeComponent(series.master.get()), entry.first);
        };
        if (series.master && std::ranges::any_of(series.overrides, isLeftOut))
            result.append(uid);
    }
    return result;
}

/// What the expansion of one event goes by.
struct EventMirror::Expansion
{
    const EventMirror *mirror;
    const Series *series;
    /// Of the event itself.
    icaltimetype start;
    CalendarEvent whole;
    int days;
    QList<Occurrence> *result;
};

int EventMirror::addOccurrence(ICalComponent *, ICalTime *instanceStart, ICalTime *, gpointer data, GCancellable *,
                               GError **)
{
    auto &e = *static_cast<Expansion *>(data);
    const EventText &text = *e.mirror->m_text;
    icaltimetype begin = *static_cast<icaltimetype *>(i_cal_object_get_native(I_CAL_OBJECT(instanceStart)));
    if (!begin.is_date && begin.zone != e.start.zone) {
        // What the expansion gives is in a zone of its choice; the event's own names the occurrence.
        if (e.start.zone && begin.zone)
            begin = icaltime_convert_to_zone(begin, const_cast<icaltimezone *>(e.start.zone));
        begin.zone = e.start.zone;
    }
    const QString key = text.occurrenceKey(begin);
    if (e.series->overrides.contains(key))
        return TRUE;
    CalendarEvent event = e.whole;
    event.startDate = text.instant(begin);
    if (begin.is_date) {
        icaltimetype end = begin;
        icaltime_adjust(&end, qMax(1, e.days), 0, 0, 0);
        event.endDate = text.instant(end);
    } else {
        event.endDate = event.startDate.plus(e.whole.endDate.seconds - e.whole.startDate.seconds);
    }
    e.result->append({key, begin, e.mirror->named(event, key)});
    return TRUE;
}

QList<EventMirror::Occurrence> EventMirror::expanded(const Series &series, Instant from, Instant to) const
{
    QList<Occurrence> result;
    if (!series.master)
        return result;
    icalcomponent *master = nativeComponent(series.master.get());
    const icaltimetype start = m_text->time(master, ICAL_DTSTART_PROPERTY);
    const icaltimetype end = m_text->end(master);
    Expansion expansion{
        this,
        &series,
        start,
        m_text->read(master),
        static_cast<int>(QDate(start.year, start.month, start.day).daysTo(QDate(end.year, end.month, end.day))),
        &result};
    const auto zone = [](const char *tzid, gpointer data, GCancellable *, GError **) {
        return static_cast<ZoneTable *>(data)->find(tzid);
    };
    const GObjectPtr<ICalTime> begin =
        utcTime(from.plus(-daySeconds - (expansion.whole.endDate.seconds - expansion.whole.startDate.seconds)));
    const GObjectPtr<ICalTime> until = utcTime(to.plus(daySeconds));
    e_cal_recur_generate_instances_sync(series.master.get(), begin.get(), until.get(), &addOccurrence, &expansion, zone,
                                        m_zones.get(), m_zones->local(), nullptr, nullptr);
    return result;
}

void EventMirror::appendEvents(QList<CalendarEvent> &events, Instant from, Instant to, Instant horizon) const
{
    for (const CalendarEvent &event : m_single) {
        if (overlaps(event, from, to))
            events.append(event);
    }
    for (const auto &[uid, series] : m_series) {
        for (const auto &[key, component] : series.overrides) {
            const CalendarEvent event = named(m_text->read(nativeComponent(component.get())), key);
            if (overlaps(event, from, to))
                events.append(event);
        }
        const bool isCut = series.master && isEndless(nativeComponent(series.master.get()));
        const Instant end = isCut ? std::min(to, horizon) : to;
        for (const Occurrence &occurrence : expanded(series, from, end)) {
            if (overlaps(occurrence.event, from, end))
                events.append(occurrence.event);
        }
    }
}

std::optional<CalendarEvent> EventMirror::eventOf(const QString &uid) const
{
    if (const auto single = m_single.constFind(uid); single != m_single.cend())
        return *single;
    const auto series = m_series.find(uid);
    if (series == m_series.cend())
        return std::nullopt;
    if (series->second.master) {
        const Instant start = m_text->read(nativeComponent(series->second.master.get())).startDate;
        for (const Occurrence &occurrence : expanded(series->second, start, start.plus(366 * daySeconds)))
            return occurrence.event;
    }
    for (const auto &[key, component] : series->second.overrides)
        return named(m_text->read(nativeComponent(component.get())), key);
    return std::nullopt;
}

std::optional<CalendarEvent> EventMirror::event(const EventName &name) const
{
    if (name.occurrence.isEmpty()) {
        const auto single = m_single.constFind(name.uid);
        return single == m_single.cend() ? std::nullopt : std::optional(*single);
    }
    const auto series = m_series.find(name.uid);
    if (series == m_series.cend())
        return std::nullopt;
    const auto &overrides = series->second.overrides;
    if (const auto found = overrides.find(name.occurrence); found != overrides.cend())
        return named(m_text->read(nativeComponent(found->second.get())), name.occurrence);
    const auto found = occurrence(name);
    return found ? std::optional(found->event) : std::nullopt;
}

std::optional<icaltimetype> EventMirror::startByRule(const EventName &name) const
{
    const auto found = occurrence(name);
    return found ? std::optional(found->start) : std::nullopt;
}

std::optional<EventMirror::Occurrence> EventMirror::occurrence(const EventName &name) const
{
    const auto series = m_series.find(name.uid);
    const icaltimetype key = icaltime_from_string(name.occurrence.toLatin1().constData());
    if (series == m_series.cend() || icaltime_is_null_time(key))
        return std::nullopt;
    const Instant start = m_text->instant(key);
    for (const Occurrence &occurrence : expanded(series->second, start.plus(-daySeconds), start.plus(daySeconds))) {
        if (occurrence.key == name.occurrence)
            return occurrence;
    }
    return std::nullopt;
}

} // namespace tessaly
