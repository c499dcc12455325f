#include "platform/common/vdir/EventTime.h"

#include <QDateTime>

#include <algorithm>

namespace tessaly {

namespace {

constexpr qint64 daySeconds = 86400;
constexpr qint64 zoneHorizon = 4102444800; // 2100-01-01
constexpr qint64 unixEpochJulianDay = 2440588;
constexpr qsizetype mostObservances = 200;

qint64 floorDivided(qint64 dividend, qint64 divisor)
{
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

QDate dayOf(qint64 wall)
{
    return QDate::fromJulianDay(unixEpochJulianDay + floorDivided(wall, daySeconds));
}

QTime timeOf(qint64 wall)
{
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(wall - floorDivided(wall, daySeconds) * daySeconds) * 1000);
}

qint64 wholeSeconds(Instant instant)
{
    return qRound64(instant.unixSeconds());
}

/// "+0100", "-013020"
std::optional<qint64> offsetFrom(const TextProperty *property)
{
    const QByteArray text = property ? property->value.trimmed() : QByteArray();
    bool isNumber = false;
    const int digits = text.mid(1).toInt(&isNumber);
    if (!isNumber || (text.size() != 5 && text.size() != 7) || (text[0] != '+' && text[0] != '-'))
        return std::nullopt;
    const int six = text.size() == 5 ? digits * 100 : digits;
    const qint64 seconds = six / 10000 * 3600 + six / 100 % 100 * 60 + six % 100;
    if (seconds >= daySeconds)
        return std::nullopt;
    return text[0] == '-' ? -seconds : seconds;
}

/// Adds the changes to STANDARD or DAYLIGHT. False if they cannot be determined.
bool addChanges(const TextComponent &observance, std::vector<EventZone::Change> &changes, qint64 &firstBegin,
                qint64 &firstOffset, RuleBudget &budget)
{
    const std::optional<qint64> from = offsetFrom(observance.property("TZOFFSETFROM"));
    const std::optional<qint64> to = offsetFrom(observance.property("TZOFFSETTO"));
    const TextProperty *begin = observance.property("DTSTART");
    const std::optional<qint64> start = begin ? wallFrom(begin->value.toUpper()) : std::nullopt;
    if (!from || !to || !start)
        return false;
    const qint64 firstWall = start.value();
    std::vector<qint64> walls(1, firstWall);
    for (const TextProperty &property : observance.properties) {
        if (property.name == "RRULE") {
            RuleWindow window{.first = firstWall, .last = zoneHorizon, .budget = budget};
            const auto times = ruleTimesWithin(
                property.value, {.wall = firstWall, .wallAt = [&](qint64 utc) { return utc + *from; }}, window);
            budget = window.budget;
            if (!times || !window.unreadableRules.isEmpty())
                return false;
            walls.insert(walls.end(), times->cbegin(), times->cend());
        } else if (property.name == "RDATE") {
            for (const QByteArray &value : property.value.split(',')) {
                if (const auto wall = wallFrom(value.toUpper()))
                    walls.push_back(*wall);
            }
        }
    }
    if (firstWall < firstBegin) {
        firstBegin = firstWall;
        firstOffset = *from;
    }
    for (const qint64 wall : walls)
        changes.push_back({.begin = wall - *from, .offset = *to});
    return changes.size() <= mostOccurrences;
}

EventZonePointer describedZone(const TextComponent &description, RuleBudget &budget)
{
    std::vector<EventZone::Change> changes;
    qint64 firstBegin = std::numeric_limits<qint64>::max();
    qint64 firstOffset = 0;
    if (description.components.isEmpty() || description.components.size() > mostObservances)
        return nullptr;
    for (const TextComponent &observance : description.components) {
        if (!addChanges(observance, changes, firstBegin, firstOffset, budget))
            return nullptr;
    }
    std::ranges::stable_sort(changes, {}, &EventZone::Change::begin);
    return std::make_shared<const EventZone>(firstOffset, std::move(changes));
}

/// The IANA name at the end of "/mozilla.org/20070129_1/Europe/Berlin" and the like.
std::optional<QTimeZone> zoneBehindPrefix(const QByteArray &tzid)
{
    const QByteArrayList pieces = tzid.split('/');
    for (qsizetype from = 1; tzid.startsWith('/') && from < pieces.size(); ++from) {
        if (const auto zone = zoneOfIdentifier(pieces.mid(from).join('/')))
            return zone;
    }
    return std::nullopt;
}

} // namespace

qint64 EventZone::offsetAt(qint64 unixSeconds) const
{
    if (m_known)
        return m_known->offsetAt(unixSeconds);
    const auto after = std::ranges::upper_bound(m_changes, unixSeconds, {}, &Change::begin);
    return after == m_changes.cbegin() ? m_firstOffset : std::prev(after)->offset;
}

qint64 EventZone::unixSeconds(qint64 wall) const
{
    if (m_known)
        return m_known->unixSeconds(wall);
    const qint64 before = wall - offsetAt(wall - daySeconds);
    const qint64 after = wall - offsetAt(wall + daySeconds);
    return before + offsetAt(before) == wall || after + offsetAt(after) != wall ? before : after;
}

EventZonePointer EventZones::zone(const QByteArray &tzid, const QByteArray &text, const QList<TextComponent> &calendars)
{
    if (const auto known = m_systemZones.constFind(tzid); known != m_systemZones.cend() && *known)
        return *known;
    if (!m_systemZones.contains(tzid)) {
        const auto named = zoneOfIdentifier(tzid);
        const auto zone = named ? named : zoneBehindPrefix(tzid);
        m_systemZones.insert(tzid, zone ? std::make_shared<const EventZone>(*zone) : nullptr);
        if (zone)
            return m_systemZones.value(tzid);
    }
    for (const TextComponent &calendar : calendars) {
        for (const TextComponent &component : calendar.components) {
            const TextProperty *name = component.name == "VTIMEZONE" ? component.property("TZID") : nullptr;
            if (!name || name->value != tzid)
                continue;
            const QByteArray description = text.mid(component.begin, component.end - component.begin);
            auto made = m_describedZones.constFind(description);
            if (made == m_describedZones.cend())
                made = m_describedZones.insert(description, describedZone(component, m_budget));
            if (*made)
                return *made;
        }
    }
    const QByteArray identifier = QTimeZone::windowsIdToDefaultIanaId(tzid);
    return identifier.isEmpty() ? nullptr : zone(identifier, {}, {});
}

qint64 EventTime::unixSeconds(const UserCalendar &user) const
{
    switch (form) {
    case Form::Date:
        return wholeSeconds(user.startOfDay(dayOf(wall)));
    case Form::Floating:
        return wholeSeconds(user.instant(dayOf(wall), timeOf(wall)));
    case Form::Zoned:
        return zone->unixSeconds(wall);
    case Form::Utc:
        break;
    }
    return wall;
}

std::optional<EventTime> EventTime::at(qint64 unixSeconds, const UserCalendar &user) const
{
    EventTime result = *this;
    const Instant instant = Instant::fromUnixSeconds(static_cast<double>(unixSeconds));
    if (form == Form::Utc)
        result.wall = unixSeconds;
    else if (form == Form::Zoned)
        result.wall = unixSeconds + zone->offsetAt(unixSeconds);
    else
        result.wall = (user.day(instant).toJulianDay() - unixEpochJulianDay) * daySeconds;
    if (form == Form::Floating)
        result.wall += QTime(0, 0).secsTo(user.dateTime(instant).time());
    if (isZoneUnknown || result.unixSeconds(user) != unixSeconds)
        return std::nullopt;
    return result;
}

qint64 EventTime::wallOn(const EventTime &clock) const
{
    if (clock.form == Form::Date)
        return floorDivided(wall, daySeconds) * daySeconds;
    if (form == Form::Date)
        return wall + clock.wall - floorDivided(clock.wall, daySeconds) * daySeconds;
    if (form == Form::Floating || clock.form == Form::Floating || (form == clock.form && zone == clock.zone))
        return wall;
    const qint64 unixSeconds = form == Form::Utc ? wall : zone->unixSeconds(wall);
    return clock.form == Form::Utc ? unixSeconds : unixSeconds + clock.zone->offsetAt(unixSeconds);
}

QByteArray EventTime::text() const
{
    const QString date = dayOf(wall).toString(QStringLiteral("yyyyMMdd"));
    if (form == Form::Date)
        return date.toLatin1();
    const QString time = timeOf(wall).toString(QStringLiteral("'T'HHmmss"));
    return (date + time).toLatin1() + (form == Form::Utc ? "Z" : "");
}

std::optional<qint64> wallFrom(QByteArrayView value, bool *isDate, bool *isUtc)
{
    const QByteArrayView text = value.trimmed();
    const auto number = [&](qsizetype from, qsizetype count) {
        int result = 0;
        for (const char c : text.sliced(from, count)) {
            if (c < '0' || c > '9')
                return -1;
            result = result * 10 + (c - '0');
        }
        return result;
    };
    const bool endsInZ = text.endsWith('Z');
    if (text.size() != 8 && (text.size() != (endsInZ ? 16 : 15) || text[8] != 'T'))
        return std::nullopt;
    const QDate day(number(0, 4), number(4, 2), number(6, 2));
    // A leap second is the second before it.
    const QTime time = text.size() == 8 ? QTime(0, 0) : QTime(number(9, 2), number(11, 2), std::min(number(13, 2), 59));
    if (!day.isValid() || day.year() < 1 || !time.isValid())
        return std::nullopt;
    if (isDate)
        *isDate = text.size() == 8;
    if (isUtc)
        *isUtc = endsInZ;
    return (day.toJulianDay() - unixEpochJulianDay) * daySeconds + time.msecsSinceStartOfDay() / 1000;
}

} // namespace tessaly
