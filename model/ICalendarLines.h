#pragma once

#include "model/ZoneTransitions.h"

#include <QDate>
#include <QTime>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// The lines of an iCalendar text as parseICalendar() reads them, for it and for calendarFacts(), which have to agree.
/// All of it is inline: it runs for every line of a text.
namespace tessaly::icalendar {

using std::string_view;

/// The text without the characters at both ends for which the predicate holds.
template <class Predicate>
string_view trimmed(string_view text, Predicate isDropped)
{
    while (!text.empty() && isDropped(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isDropped(text.back()))
        text.remove_suffix(1);
    return text;
}

// Plain values stand for "none" below where an optional would do: this is the part that runs for every line, and the
// compiler passes optionals through memory.

enum class Property { Start, End, Uid, Summary, Other };
inline constexpr std::size_t propertyCount = 4;
/// Stands for a date or time that cannot be read.
inline constexpr qint64 unreadable = std::numeric_limits<qint64>::min();
inline constexpr string_view beginEvent = "BEGIN:VEVENT";
inline constexpr string_view endEvent = "END:VEVENT";
inline constexpr string_view calendarNamePrefix = "X-WR-CALNAME:";

/// A line without the colons at its beginning, which do not count.
inline string_view withoutLeadingColons(string_view line)
{
    while (line.starts_with(':'))
        line.remove_prefix(1);
    return line;
}

/// A line divided at its first ":".
struct DividedLine
{
    explicit DividedLine(string_view line)
    {
        line = withoutLeadingColons(line);
        const std::size_t colon = line.find(':');
        parameters = line.substr(0, colon);
        if (colon != string_view::npos)
            value = line.substr(colon + 1);
    }

    string_view parameters;
    string_view value;
};

/// Where the property's name begins: the first piece that is not empty, between semicolons, before the first colon.
inline string_view fromName(string_view line)
{
    if (line.empty() || (line.front() != ':' && line.front() != ';'))
        return line;
    line = withoutLeadingColons(line);
    while (line.starts_with(';'))
        line.remove_prefix(1);
    return line;
}

/// Whether `text`, from the name on, begins with exactly this name.
template <std::size_t size>
bool isNamed(string_view text, const char (&name)[size])
{
    // Compared without a call: this is asked of every line.
    constexpr std::size_t length = size - 1;
    if (text.size() < length || std::memcmp(text.data(), name, length) != 0)
        return false;
    return text.size() == length || text[length] == ':' || text[length] == ';';
}

/// The property that the line sets.
inline Property propertyOf(string_view line)
{
    const string_view text = fromName(line);
    switch (text.empty() ? '\0' : text.front()) {
    case 'D':
        if (isNamed(text, "DTSTART"))
            return Property::Start;
        return isNamed(text, "DTEND") ? Property::End : Property::Other;
    case 'U':
        return isNamed(text, "UID") ? Property::Uid : Property::Other;
    case 'S':
        return isNamed(text, "SUMMARY") ? Property::Summary : Property::Other;
    default:
        return Property::Other;
    }
}

/// Whether a line can change what is read. Folded lines that cannot are skipped without being joined.
inline bool matters(string_view line)
{
    const string_view text = fromName(line);
    const auto endsName = [](char c) { return c == ':' || c == ';'; };
    const bool isNameComplete = std::ranges::any_of(text, endsName) && !text.starts_with(':');
    return !isNameComplete || propertyOf(line) != Property::Other || isNamed(text, "BEGIN") || isNamed(text, "END") ||
           isNamed(text, "X-WR-CALNAME");
}

/// Gives the unfolded lines of a text one after the other.
class UnfoldedLines
{
public:
    /// A byte-order mark is passed over.
    explicit UnfoldedLines(string_view text) : m_next(text.data()), m_end(text.data() + text.size())
    {
        constexpr string_view byteOrderMark = "\xEF\xBB\xBF";
        if (text.starts_with(byteOrderMark))
            m_next += byteOrderMark.size();
    }

    /// False at the end. The line lives until the next call, in the text or, if isJoined(), in the buffer.
    bool next(string_view &line)
    {
        if (m_next == m_end)
            return false;
        line = physicalLine();
        m_isJoined = false;
        if (!isContinuation())
            return true;
        if (!matters(line)) {
            while (isContinuation())
                (void)physicalLine();
            return true;
        }
        m_joined.assign(line);
        while (isContinuation())
            m_joined += trimmed(physicalLine(), [](char c) { return c == ' ' || c == '\t'; });
        m_isJoined = true;
        line = m_joined;
        return true;
    }

    /// Where the next line begins.
    [[nodiscard]] const char *position() const { return m_next; }
    [[nodiscard]] bool isJoined() const { return m_isJoined; }
    [[nodiscard]] std::string &buffer() { return m_joined; }

private:
    [[nodiscard]] bool isContinuation() const { return m_next != m_end && (*m_next == ' ' || *m_next == '\t'); }

    string_view physicalLine()
    {
        const char *begin = m_next;
        const auto length = static_cast<std::size_t>(m_end - begin);
        const auto *feed = static_cast<const char *>(std::memchr(begin, '\n', length));
        if (!feed) {
            m_next = m_end;
            return {begin, length};
        }
        m_next = feed + 1;
        const char *end = feed != begin && feed[-1] == '\r' ? feed - 1 : feed;
        return {begin, static_cast<std::size_t>(end - begin)};
    }

    const char *m_next;
    const char *m_end;
    std::string m_joined;
    bool m_isJoined = false;
};

/// The value of `count` decimal digits, or a negative number.
inline int number(const char *digits, int count)
{
    int value = 0;
    bool isBad = false;
    for (int i = 0; i < count; ++i) {
        const unsigned digit = static_cast<unsigned char>(digits[i]) - unsigned('0');
        isBad |= digit > 9;
        value = value * 10 + static_cast<int>(digit);
    }
    return isBad ? -1 : value;
}

/// Of eight digits; or unreadable.
inline qint64 dateSeconds(const char *digits)
{
    constexpr qint64 unixEpochJulianDay = 2440588;
    const QDate date(number(digits, 4), number(digits + 4, 2), number(digits + 6, 2));
    return date.year() > 0 ? (date.toJulianDay() - unixEpochJulianDay) * 86400 : unreadable;
}

/// Of six digits; or unreadable.
inline qint64 timeSeconds(const char *digits)
{
    const QTime time(number(digits, 2), number(digits + 2, 2), number(digits + 4, 2));
    return time.isValid() ? time.msecsSinceStartOfDay() / 1000 : unreadable;
}

/// Reads dates and times. A date that repeats the one before, as the end of most events does, is not worked out again.
class WallClockReader
{
public:
    /// A value as seconds from 1970-01-01 00:00 on its own clock; or unreadable.
    qint64 seconds(string_view value)
    {
        const bool isDateOnly = value.size() == dateLength;
        const string_view digits = trimmed(value, [](char c) { return c == 'Z'; });
        if (digits.size() != (isDateOnly ? dateLength : dateTimeLength))
            return unreadable;
        if (std::memcmp(digits.data(), m_lastDigits.data(), dateLength) != 0) {
            std::memcpy(m_lastDigits.data(), digits.data(), dateLength);
            m_lastDate = dateSeconds(digits.data());
        }
        if (m_lastDate == unreadable || isDateOnly)
            return m_lastDate;
        const qint64 time = timeSeconds(digits.data() + dateLength + 1);
        return time == unreadable || digits[dateLength] != 'T' ? unreadable : m_lastDate + time;
    }

private:
    static constexpr std::size_t dateLength = 8;
    static constexpr std::size_t dateTimeLength = 15;

    std::array<char, dateLength> m_lastDigits{};
    qint64 m_lastDate = unreadable;
};

/// The zones that one file names, each listed once.
class NamedZones
{
public:
    explicit NamedZones(const QTimeZone &current) : m_current(std::make_shared<ZoneTransitions>(current)) {}

    /// The zone of the TZID parameter among the parameters, or the current one.
    const ZoneTransitions &zone(string_view parameters)
    {
        constexpr string_view key = "TZID=";
        const std::size_t found = parameters.find(key);
        if (found == string_view::npos)
            return *m_current;
        const string_view rest = parameters.substr(found + key.size());
        const string_view identifier = rest.substr(0, rest.find(';'));
        if (!m_last || identifier != m_last->first)
            m_last = &entry(identifier);
        return *m_last->second;
    }

private:
    using Zones = std::map<std::string, std::shared_ptr<ZoneTransitions>, std::less<>>;

    const Zones::value_type &entry(string_view identifier)
    {
        if (const auto known = m_zones.find(identifier); known != m_zones.end())
            return *known;
        const auto zone = zoneOfIdentifier(QByteArray(identifier.data(), static_cast<qsizetype>(identifier.size())));
        auto transitions = zone ? std::make_shared<ZoneTransitions>(*zone) : m_current;
        return *m_zones.emplace(identifier, std::move(transitions)).first;
    }

    std::shared_ptr<ZoneTransitions> m_current;
    Zones m_zones;
    const Zones::value_type *m_last = nullptr;
};

/// The event that is being read: its lines and its times.
class OpenEvent
{
public:
    struct Kept
    {
        bool isPresent = false;
        string_view line;
        /// Holds the line when it was joined from several.
        std::string joined;
    };

    explicit OpenEvent(const QTimeZone &currentZone) : m_zones(currentZone) {}

    [[nodiscard]] bool isOpen() const { return m_isOpen; }

    void begin()
    {
        m_isOpen = true;
        for (Kept &kept : m_kept)
            kept.isPresent = false;
    }

    /// False if there was none.
    bool end() { return std::exchange(m_isOpen, false); }

    /// Returns what the line sets.
    Property keep(string_view line, UnfoldedLines &lines)
    {
        const Property property = propertyOf(line);
        if (property == Property::Other)
            return property;
        Kept &kept = m_kept[static_cast<std::size_t>(property)];
        kept.isPresent = true;
        kept.line = line;
        if (lines.isJoined()) {
            kept.joined.swap(lines.buffer());
            kept.line = kept.joined;
        }
        return property;
    }

    [[nodiscard]] const Kept &kept(Property property) const { return m_kept[static_cast<std::size_t>(property)]; }

    /// Seconds since 1970-01-01 00:00 UTC; or unreadable.
    qint64 time(Property property)
    {
        const Kept &found = kept(property);
        if (!found.isPresent)
            return unreadable;
        const DividedLine divided(found.line);
        const qint64 wallClock = m_wallClock.seconds(divided.value);
        if (wallClock == unreadable || divided.value.ends_with('Z'))
            return wallClock;
        return m_zones.zone(divided.parameters).unixSeconds(wallClock);
    }

    /// On the event's own clock, in seconds from 1970-01-01 00:00; or unreadable.
    qint64 wallTime(Property property)
    {
        const Kept &found = kept(property);
        return found.isPresent ? m_wallClock.seconds(DividedLine(found.line).value) : unreadable;
    }

private:
    NamedZones m_zones;
    WallClockReader m_wallClock;
    std::array<Kept, propertyCount> m_kept;
    bool m_isOpen = false;
};

} // namespace tessaly::icalendar
