#include "platform/common/WholeCalendar.h"

#include "model/ICalendarText.h"

#include <QDateTime>
#include <QHash>
#include <QSet>

#include <utility>

namespace tessaly {

namespace {

constexpr qint64 daySeconds = 86400;
constexpr qsizetype mostEvents = 200'000;
/// Zones and dates of an event; more are not looked at.
constexpr qsizetype mostZones = 1000;
constexpr qsizetype longestZoneName = 255;
constexpr auto mostTimes = static_cast<qsizetype>(mostOccurrences);

/// Calls back with every value of a list until that returns false.
template <class Visitor>
bool everyValue(QByteArrayView list, Visitor visit)
{
    while (!list.isEmpty()) {
        const qsizetype comma = list.indexOf(',');
        const QByteArrayView value = comma < 0 ? list : list.first(comma);
        if (!value.trimmed().isEmpty() && !visit(value.trimmed()))
            return false;
        list = comma < 0 ? QByteArrayView() : list.sliced(comma + 1);
    }
    return true;
}

/// The zones that the events of one text name.
class NamedZones
{
public:
    explicit NamedZones(const QByteArray &text) : m_text(text), m_described({{.components = described(text)}}) {}

    /// Null where nobody knows the zone.
    EventZonePointer zone(const QByteArray &name)
    {
        const auto known = m_known.constFind(name);
        if (known != m_known.cend())
            return *known;
        if (name.size() > longestZoneName || m_known.size() >= mostZones)
            return nullptr;
        return *m_known.insert(name, m_zones.zone(name, m_text, m_described));
    }

private:
    /// The VTIMEZONEs, wherever they stand, those without end left out.
    static QList<TextComponent> described(const QByteArray &text)
    {
        QList<TextComponent> zones;
        qsizetype begin = -1;
        for (qsizetype at = 0; at < text.size() && zones.size() < mostZones;) {
            const qsizetype feed = text.indexOf('\n', at);
            const qsizetype next = feed < 0 ? text.size() : feed + 1;
            const QByteArrayView line = QByteArrayView(text).sliced(at, next - at).trimmed();
            if (line.compare("BEGIN:VTIMEZONE", Qt::CaseInsensitive) == 0) {
                begin = at;
            } else if (begin >= 0 && line.compare("END:VTIMEZONE", Qt::CaseInsensitive) == 0) {
                for (TextComponent zone :
                     readComponents(text.mid(begin, next - begin)).value_or(QList<TextComponent>())) {
                    zone.begin += begin;
                    zone.end += begin;
                    zones.append(zone);
                }
                begin = -1;
            }
            at = next;
        }
        return zones;
    }

    const QByteArray &m_text;
    QList<TextComponent> m_described;
    EventZones m_zones{{.steps = 500'000}};
    QHash<QByteArray, EventZonePointer> m_known;
};

/// A VEVENT that is being read.
struct OpenEvent
{
    /// What was to be read, and could not.
    struct Unreadable
    {
        QByteArray value;
        qsizetype line = 0;
    };
    struct Period
    {
        EventTime start;
        std::optional<EventTime> end;
        std::optional<EventDuration> duration;
    };

    WholeEvent whole;
    EventPart part;
    QList<Period> periods;
    bool hasStart = false;
    bool isCancelled = false;
    std::optional<Unreadable> start;
    std::optional<Unreadable> end;
    QList<Unreadable> repetitions;
    bool isTooLarge = false;
};

class WholeReader
{
public:
    explicit WholeReader(const QByteArray &text) : m_text(text), m_zones(text) {}

    WholeCalendar read()
    {
        PropertyReader reader(m_text);
        while (reader.next()) {
            const TextProperty &property = reader.property;
            if (property.name == "BEGIN" || property.name == "END")
                enterOrLeave(property, reader.line);
            else if (m_isOpen && m_depth == 0)
                keep(property, reader.line);
        }
        finish();
        settle();
        return std::move(m_calendar);
    }

private:
    void enterOrLeave(const TextProperty &property, qsizetype line)
    {
        const QByteArray component = property.value.trimmed().toUpper();
        const bool isBegin = property.name == "BEGIN";
        if (component == "VEVENT" || component == "VCALENDAR") {
            finish();
            m_isOpen = isBegin && component == "VEVENT";
            m_open = {};
            m_open.whole.line = line;
            m_depth = 0;
        } else if (isBegin) {
            ++m_depth;
        } else if (m_depth > 0) {
            --m_depth;
        }
    }

    /// A date or time in one of the forms that are met: in small letters, with separators as in ISO 8601, midnight as
    /// 24:00, a day with a needless time.
    std::optional<EventTime> time(const TextProperty &property, QByteArrayView value)
    {
        QByteArray text = value.trimmed().toByteArray().toUpper();
        if (text.size() == 10 || text.size() == 19 || text.size() == 20)
            text.replace('-', "").replace(':', "");
        const bool isNextMidnight = text.mid(8, 7) == "T240000";
        if (isNextMidnight)
            text.replace(8, 7, "T000000");
        if (property.parameter("VALUE").value_or(QByteArray()).toUpper() == "DATE")
            text.truncate(8);
        bool isDate = false;
        bool isUtc = false;
        const std::optional<qint64> wall = wallFrom(text, &isDate, &isUtc);
        if (!wall)
            return std::nullopt;
        EventTime result{.form = isDate  ? EventTime::Form::Date
                                 : isUtc ? EventTime::Form::Utc
                                         : EventTime::Form::Floating,
                         .wall = *wall + (isNextMidnight ? daySeconds : 0)};
        if (result.form == EventTime::Form::Floating) {
            if (const auto name = property.parameter("TZID"))
                result.zone = m_zones.zone(*name);
            if (result.zone)
                result.form = EventTime::Form::Zoned;
        }
        return result;
    }

    void keep(const TextProperty &property, qsizetype line)
    {
        EventPart &part = m_open.part;
        const OpenEvent::Unreadable asItStands{property.value.trimmed(), line};
        if (property.name == "DTSTART") {
            const auto start = time(property, property.value);
            m_open.hasStart = start.has_value();
            m_open.start = start ? std::nullopt : std::optional(asItStands);
            part.start = start.value_or(EventTime());
        } else if (property.name == "DTEND") {
            part.end = time(property, property.value);
            m_open.end = part.end ? std::nullopt : std::optional(asItStands);
        } else if (property.name == "DURATION") {
            part.duration = durationFrom(property.value);
            m_open.end = part.duration ? std::nullopt : std::optional(asItStands);
        } else if (property.name == "SUMMARY") {
            part.title = unescapedLine(property.value).trimmed();
        } else if (property.name == "UID") {
            m_open.whole.uid = property.value.trimmed();
        } else if (property.name == "STATUS") {
            m_open.isCancelled = property.value.trimmed().toUpper() == "CANCELLED";
        } else if (property.name == "RECURRENCE-ID") {
            part.recurrenceId = time(property, property.value);
            part.changesFollowing = property.parameter("RANGE").value_or(QByteArray()).toUpper() == "THISANDFUTURE";
            if (!part.recurrenceId)
                m_open.repetitions.append(asItStands);
        } else {
            keepRepetition(property, line);
        }
    }

    void keepRepetition(const TextProperty &property, qsizetype line)
    {
        FileEvent &event = m_open.whole.event;
        if (property.name == "RRULE")
            addRule(property.value, event.rules);
        else if (property.name == "EXRULE")
            addRule(property.value, event.excludingRules);
        else if (property.name == "RDATE" || property.name == "EXDATE")
            addTimes(property, line);
        else
            return;
        if (m_open.whole.repetitionLine == 0)
            m_open.whole.repetitionLine = line;
    }

    static void addRule(QByteArray rule, QByteArrayList &rules)
    {
        rule = rule.simplified().replace(' ', "");
        while (rule.endsWith(';'))
            rule.chop(1);
        if (!rule.isEmpty())
            rules.append(rule);
    }

    void addTimes(const TextProperty &property, qsizetype line)
    {
        FileEvent &event = m_open.whole.event;
        const bool isAdded = property.name == "RDATE";
        QList<EventTime> &times = isAdded ? event.addedTimes : event.excludedTimes;
        m_open.isTooLarge |= !everyValue(property.value, [&](QByteArrayView value) {
            const qsizetype slash = value.indexOf('/');
            const auto start = time(property, slash < 0 ? value : value.first(slash));
            if (!start) {
                if (m_open.repetitions.isEmpty())
                    m_open.repetitions.append({value.toByteArray(), line});
                return true;
            }
            times.append(*start);
            if (isAdded && slash >= 0) {
                const QByteArrayView end = value.sliced(slash + 1);
                m_open.periods.append({*start, time(property, end), durationFrom(end)});
            }
            return times.size() <= mostTimes;
        });
    }

    [[nodiscard]] SkippedEvent skipped(SkipReason reason, const OpenEvent::Unreadable &unreadable = {}) const
    {
        const OpenEvent &open = m_open;
        SkippedEvent result{.title = open.part.title.value_or(QString()),
                            .reason = reason,
                            .value = shownValue(unreadable.value),
                            .line = unreadable.line > 0 ? unreadable.line : open.whole.line};
        if (open.hasStart)
            result.day = QDateTime::fromSecsSinceEpoch(open.part.start.wall, Qt::UTC).date();
        return result;
    }

    void finish()
    {
        if (!std::exchange(m_isOpen, false))
            return;
        SkippedEvents &left = m_calendar.skipped;
        if (m_open.start)
            left.add(skipped(SkipReason::StartUnreadable, *m_open.start));
        else if (!m_open.hasStart)
            left.add(skipped(SkipReason::NoStart));
        else if (m_open.isTooLarge || m_calendar.events.size() >= mostEvents)
            left.add(skipped(SkipReason::TooLarge));
        else
            take();
    }

    /// Puts the event to what is known of its UID.
    void take()
    {
        OpenEvent &open = m_open;
        if (open.end)
            m_calendar.skipped.add(skipped(SkipReason::EndUnreadable, *open.end));
        for (const OpenEvent::Unreadable &each : std::as_const(open.repetitions))
            m_calendar.skipped.add(skipped(SkipReason::RepetitionUnreadable, each));
        const bool isChange = open.part.recurrenceId.has_value();
        if (isChange) {
            open.whole.event = {};
        } else {
            open.whole.event.pattern = open.part;
            open.whole.isCancelled = open.isCancelled;
            addPeriods();
        }
        WholeEvent &known = knownEvent(isChange);
        if (!isChange) {
            open.whole.event.overrides += known.event.overrides;
            open.whole.event.excludedTimes += known.event.excludedTimes;
            known = open.whole;
        } else if (open.isCancelled) {
            known.event.excludedTimes.append(*open.part.recurrenceId);
        } else {
            known.event.overrides.append(open.part);
        }
    }

    /// What changes of an event go to, or the event itself where only changes of it are known; else a new one.
    WholeEvent &knownEvent(bool isChange)
    {
        QByteArray &uid = m_open.whole.uid;
        const bool hasUid = !uid.isEmpty();
        if (!hasUid)
            uid = m_open.part.title.value_or(QString()).toUtf8();
        const auto known = hasUid ? m_positions.constFind(uid) : m_positions.cend();
        if (known != m_positions.cend() && (isChange || !m_calendar.events.at(*known).event.pattern))
            return m_calendar.events[*known];
        if (hasUid && known == m_positions.cend())
            m_positions.insert(uid, m_calendar.events.size());
        m_calendar.events.append({.uid = uid, .line = m_open.whole.line});
        return m_calendar.events.last();
    }

    /// Dates that are added with lengths of their own are changes of the event there.
    void addPeriods()
    {
        FileEvent &event = m_open.whole.event;
        QSet<qint64> excluded;
        for (const EventTime &time : std::as_const(event.excludedTimes))
            excluded.insert(time.wallOn(m_open.part.start));
        for (const OpenEvent::Period &period : std::as_const(m_open.periods)) {
            if (excluded.contains(period.start.wallOn(m_open.part.start)) || (!period.end && !period.duration))
                continue;
            EventPart part = m_open.part;
            part.start = period.start;
            part.end = period.end;
            part.duration = period.duration;
            part.recurrenceId = period.start;
            event.overrides.append(part);
        }
    }

    void settle()
    {
        m_calendar.events.removeIf([](const WholeEvent &each) { return each.isCancelled; });
        for (WholeEvent &each : m_calendar.events)
            each.event.settleOverrides();
    }

    const QByteArray &m_text;
    NamedZones m_zones;
    WholeCalendar m_calendar;
    /// Of the events by UID.
    QHash<QByteArray, qsizetype> m_positions;
    bool m_isOpen = false;
    /// Components within the event that are open.
    qsizetype m_depth = 0;
    OpenEvent m_open;
};

} // namespace

SkippedEvent WholeEvent::skipped(SkipReason reason, const QByteArray &value) const
{
    const EventPart *part = event.pattern ? &*event.pattern : &event.overrides.constFirst();
    return {.title = part->title.value_or(QString()),
            .day = QDateTime::fromSecsSinceEpoch(part->start.wall, Qt::UTC).date(),
            .reason = reason,
            .value = shownValue(value),
            .line = repetitionLine > 0 ? repetitionLine : line};
}

WholeCalendar readWholeCalendar(const QByteArray &text)
{
    return WholeReader(text).read();
}

} // namespace tessaly
