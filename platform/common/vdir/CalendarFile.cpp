#include "platform/common/vdir/CalendarFile.h"

#include <QFileInfo>

#include <algorithm>

namespace tessaly {

namespace {

constexpr qint64 daySeconds = 86400;
constexpr qsizetype mostOverrides = 20000;

QList<TextComponent> eventsIn(const QList<TextComponent> &calendars)
{
    QList<TextComponent> events;
    for (const TextComponent &calendar : calendars)
        std::ranges::copy_if(calendar.components, std::back_inserter(events),
                             [](const TextComponent &each) { return each.name == "VEVENT"; });
    return events;
}

/// Reads the VEVENTs of one file.
class FileReader
{
public:
    FileReader(const QByteArray &text, const QList<TextComponent> &calendars, EventZones &zones)
        : m_text(text), m_calendars(calendars), m_zones(zones)
    {
    }

    [[nodiscard]] std::optional<EventTime> time(const TextProperty &property, QByteArrayView value) const
    {
        bool isDate = false;
        bool isUtc = false;
        const std::optional<qint64> wall = wallFrom(value, &isDate, &isUtc);
        if (!wall)
            return std::nullopt;
        EventTime result{.form = isUtc    ? EventTime::Form::Utc
                                 : isDate ? EventTime::Form::Date
                                          : EventTime::Form::Floating,
                         .wall = *wall};
        const auto tzid = property.parameter("TZID");
        if (!tzid || result.form != EventTime::Form::Floating)
            return result;
        result.zone = m_zones.zone(*tzid, m_text, m_calendars);
        result.isZoneUnknown = !result.zone;
        if (result.zone)
            result.form = EventTime::Form::Zoned;
        return result;
    }

    /// Nothing where the VEVENT cannot be understood.
    [[nodiscard]] std::optional<EventPart> part(const TextComponent &component) const
    {
        EventPart result;
        bool isBad = component.property("DTSTART") == nullptr;
        const auto set = [&](const TextProperty &property, auto &target) {
            const auto read = time(property, property.value);
            isBad |= !read;
            if (read)
                target = *read;
        };
        for (const TextProperty &property : component.properties) {
            if (property.name == "DTSTART") {
                set(property, result.start);
            } else if (property.name == "DTEND") {
                set(property, result.end);
            } else if (property.name == "RECURRENCE-ID") {
                set(property, result.recurrenceId);
                result.changesFollowing = property.parameter("RANGE") == QByteArray("THISANDFUTURE");
            } else if (property.name == "DURATION") {
                result.duration = durationFrom(property.value);
                isBad |= !result.duration;
            } else if (property.name == "SUMMARY" && !result.title) {
                result.title = unescapedText(property.value);
            } else if (property.name == "DESCRIPTION" && result.notes.isEmpty()) {
                result.notes = unescapedText(property.value);
            }
        }
        if (isBad)
            return std::nullopt;
        return result;
    }

    /// Every date or time in a property that may list several; of periods the start.
    [[nodiscard]] bool addTimes(const TextProperty &property, QList<EventTime> &times) const
    {
        for (const QByteArray &value : property.value.split(',')) {
            const auto read = time(property, value.split('/').constFirst());
            if (!read || times.size() >= static_cast<qsizetype>(mostOccurrences))
                return false;
            times.append(*read);
        }
        return true;
    }

private:
    const QByteArray &m_text;
    const QList<TextComponent> &m_calendars;
    EventZones &m_zones;
};

/// False where something in it cannot be understood.
bool readRecurrence(const TextComponent &component, const FileReader &reader, FileEvent &event)
{
    return std::ranges::all_of(component.properties, [&](const TextProperty &property) {
        if (property.name == "RRULE")
            event.rules.append(property.value);
        else if (property.name == "EXRULE")
            event.excludingRules.append(property.value);
        else if (property.name == "RDATE")
            return reader.addTimes(property, event.addedTimes);
        else if (property.name == "EXDATE")
            return reader.addTimes(property, event.excludedTimes);
        return true;
    });
}

} // namespace

EventDuration EventPart::length(const UserCalendar &user) const
{
    if (end && start.form == EventTime::Form::Date && end->form == EventTime::Form::Date)
        return {.days = std::max<qint64>(0, (end->wall - start.wall) / daySeconds)};
    if (end)
        return {.seconds = std::max<qint64>(0, end->unixSeconds(user) - start.unixSeconds(user))};
    const bool isWholeDay = !duration && start.form == EventTime::Form::Date;
    EventDuration result = duration.value_or(EventDuration{.days = isWholeDay ? 1 : 0});
    result.days = std::min(result.days, qint64{1'000'000});
    return result;
}

qint64 EventPart::endSeconds(const EventTime &startTime, const UserCalendar &user) const
{
    return endAfter(startTime, startTime.unixSeconds(user), length(user), user);
}

qint64 EventPart::endAfter(const EventTime &startTime, qint64 startSeconds, EventDuration length,
                           const UserCalendar &user)
{
    if (length.days == 0)
        return startSeconds + length.seconds;
    EventTime later = startTime;
    later.wall += length.days * daySeconds;
    return std::max(startSeconds, later.unixSeconds(user)) + length.seconds;
}

std::optional<std::vector<qint64>> FileEvent::expandedWalls(const RuleTimes &timesOf) const
{
    const EventTime &start = pattern->start;
    const RuleStart ruleStart{.wall = start.wall,
                              .isDate = start.form == EventTime::Form::Date,
                              .wallAt = [&](qint64 utc) { return EventTime{.wall = utc}.wallOn(start); }};
    std::vector<qint64> walls{start.wall};
    std::vector<qint64> excluded;
    for (const auto &[ruleList, target] : {std::pair(&rules, &walls), std::pair(&excludingRules, &excluded)}) {
        for (const QByteArray &rule : *ruleList) {
            const auto times = timesOf(rule, ruleStart);
            if (!times || target->size() + times->size() > mostOccurrences + 1)
                return std::nullopt;
            target->insert(target->end(), times->cbegin(), times->cend());
        }
    }
    for (const EventTime &added : addedTimes)
        walls.push_back(added.wallOn(start));
    for (const EventTime &each : excludedTimes)
        excluded.push_back(each.wallOn(start));
    std::ranges::sort(walls);
    std::ranges::sort(excluded);
    // The rule repeats the start, and an exception takes only one of two equal times away.
    walls.erase(std::unique(walls.begin(), walls.end()), walls.end());
    std::vector<qint64> kept;
    std::ranges::set_difference(walls, excluded, std::back_inserter(kept));
    return kept;
}

bool FileEvent::expand(qint64 horizon)
{
    if (!pattern || !isRecurring() || m_horizon == horizon)
        return true;
    auto walls = expandedWalls(
        [horizon](const QByteArray &rule, const RuleStart &start) { return expandedRule(rule, start, horizon); });
    if (!walls)
        return false;
    m_walls = *std::move(walls);
    m_horizon = horizon;
    return true;
}

bool FileEvent::expandWithin(RuleWindow &window)
{
    if (!pattern || !isRecurring())
        return true;
    auto walls = expandedWalls(
        [&window](const QByteArray &rule, const RuleStart &start) { return ruleTimesWithin(rule, start, window); });
    if (walls)
        m_walls = *std::move(walls);
    return walls.has_value();
}

void FileEvent::forEachOccurrence(const Visitor &visit) const
{
    if (pattern && !isRecurring())
        visit(*pattern, pattern->start, pattern->start);
    QHash<qint64, const EventPart *> overridden;
    for (const EventPart &part : overrides) {
        if (pattern)
            overridden.insert(part.recurrenceId->wall, &part);
        visit(part, *part.recurrenceId, part.start);
    }
    if (!pattern || !isRecurring())
        return;
    // Where an occurrence and all that follow it were moved.
    const EventPart *current = &*pattern;
    qint64 shift = 0;
    EventTime original = pattern->start;
    EventTime start = pattern->start;
    for (const qint64 wall : m_walls) {
        if (const EventPart *part = overridden.value(wall)) {
            if (part->changesFollowing) {
                current = part;
                shift = part->start.wallOn(pattern->start) - wall;
            }
            continue;
        }
        original.wall = wall;
        start.wall = wall + shift;
        visit(*current, original, start);
    }
}

std::vector<EventOccurrence> FileEvent::occurrences(const UserCalendar &user) const
{
    std::vector<EventOccurrence> result;
    forEachOccurrence([&](const EventPart &part, const EventTime &original, const EventTime &start) {
        const qint64 startSeconds = start.unixSeconds(user);
        const bool isOne = pattern && &part == &*pattern && !isRecurring();
        result.push_back({&part, isOne ? QByteArray() : original.text(), startSeconds, part.endSeconds(start, user)});
    });
    return result;
}

void FileEvent::settleOverrides()
{
    QHash<QByteArray, qsizetype> positions;
    QList<EventPart> settled;
    for (EventPart &part : overrides) {
        if (pattern) {
            EventTime onClock = pattern->start;
            onClock.wall = part.recurrenceId->wallOn(pattern->start);
            part.recurrenceId = onClock;
        }
        const QByteArray original = part.recurrenceId->text();
        if (positions.contains(original)) {
            settled[positions.value(original)] = part;
        } else {
            positions.insert(original, settled.size());
            settled.append(part);
        }
    }
    overrides = settled;
}

std::optional<QList<FileEvent>> readCalendarFile(const QByteArray &text, const QString &fileName, EventZones &zones)
{
    const std::optional<QList<TextComponent>> calendars = readComponents(text);
    if (!calendars || calendars->isEmpty() ||
        std::ranges::any_of(*calendars, [](const TextComponent &each) { return each.name != "VCALENDAR"; }))
        return std::nullopt;
    const FileReader reader(text, *calendars, zones);
    QList<FileEvent> events;
    QHash<QString, qsizetype> positions;
    const QList<TextComponent> components = eventsIn(*calendars);
    for (qsizetype i = 0; i < components.size(); ++i) {
        const TextComponent &component = components.at(i);
        std::optional<EventPart> part = reader.part(component);
        if (!part)
            return std::nullopt;
        part->position = i;
        const TextProperty *uid = component.property("UID");
        const QString name = uid ? unescapedText(uid->value) : QFileInfo(fileName).completeBaseName();
        if (!positions.contains(name)) {
            positions.insert(name, events.size());
            events.append(FileEvent());
            events.last().uid = name;
        }
        FileEvent &event = events[positions.value(name)];
        if (part->recurrenceId)
            event.overrides.append(*part);
        else if (event.pattern || !readRecurrence(component, reader, event))
            return std::nullopt;
        else
            event.pattern = *std::move(part);
        if (event.overrides.size() > mostOverrides)
            return std::nullopt;
    }
    for (FileEvent &event : events)
        event.settleOverrides();
    return events;
}

QList<TextComponent> eventComponents(const QByteArray &text)
{
    return eventsIn(readComponents(text).value_or(QList<TextComponent>()));
}

} // namespace tessaly
