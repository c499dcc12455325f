#include "model/ICalendarFacts.h"

#include "model/ICalendarLines.h"
#include "model/ICalendarText.h"

namespace tessaly {

namespace {

using namespace icalendar;

/// The bytes after the first colon outside quotation marks.
QByteArray valueOf(string_view line)
{
    bool isQuoted = false;
    for (std::size_t place = 0; place < line.size(); ++place) {
        if (line[place] == '"')
            isQuoted = !isQuoted;
        else if (line[place] == ':' && !isQuoted)
            return QByteArray(line.substr(place + 1).data(), static_cast<qsizetype>(line.size() - place - 1));
    }
    return {};
}

/// What the reader could not read: the value, or the whole line where it finds another value, after a colon in quotes.
QByteArray unreadableValue(string_view line)
{
    const QByteArray value = valueOf(line);
    const string_view found = DividedLine(line).value;
    const QByteArrayView whole(line.data(), static_cast<qsizetype>(line.size()));
    return value == QByteArrayView(found.data(), static_cast<qsizetype>(found.size())) ? value : whole.toByteArray();
}

/// Whether the line names a calendar: blanks at its end and small letters are no matter here.
bool isCalendarBegin(string_view line)
{
    // A text whose lines end in carriage returns alone is a single line.
    const string_view first = line.substr(0, line.find('\r'));
    const QByteArrayView bytes(first.data(), static_cast<qsizetype>(first.size()));
    return bytes.trimmed().compare("BEGIN:VCALENDAR", Qt::CaseInsensitive) == 0;
}

/// The numbers of lines, for places that only go forwards.
class LineCounter
{
public:
    explicit LineCounter(const char *begin) : m_at(begin) {}

    qsizetype lineAt(const char *place)
    {
        m_line += std::count(m_at, place, '\n');
        m_at = place;
        return m_line;
    }

private:
    const char *m_at;
    qsizetype m_line = 1;
};

class FactReader
{
public:
    explicit FactReader(const QTimeZone &currentZone) : m_event(currentZone) {}

    void read(QByteArrayView text)
    {
        UnfoldedLines lines(string_view(text.data(), static_cast<std::size_t>(text.size())));
        LineCounter counter(text.data());
        const char *begin = lines.position();
        for (string_view line; lines.next(line); begin = lines.position()) {
            if (line == beginEvent) {
                m_event.begin();
                m_beginLine = counter.lineAt(begin);
                m_repeats = false;
            } else if (line == endEvent) {
                finish();
            } else if (m_event.isOpen()) {
                m_repeats |= isNamed(fromName(line), "RRULE") || isNamed(fromName(line), "RDATE");
                const Property property = m_event.keep(line, lines);
                if (property != Property::Other)
                    m_propertyLines[static_cast<std::size_t>(property)] = counter.lineAt(begin);
            } else {
                readOfCalendar(line);
            }
        }
    }

    [[nodiscard]] CalendarFacts takeFacts()
    {
        m_facts.refreshSeconds = m_interval ? m_interval : m_lifetime;
        return std::move(m_facts);
    }

private:
    void readOfCalendar(string_view line)
    {
        const string_view text = fromName(line);
        if (isNamed(text, "X-WR-CALNAME") && m_facts.name.isEmpty())
            m_facts.name = unescapedLine(valueOf(line)).trimmed();
        else if (isNamed(text, "REFRESH-INTERVAL"))
            m_interval = positiveSeconds(valueOf(line));
        else if (isNamed(text, "X-PUBLISHED-TTL"))
            m_lifetime = positiveSeconds(valueOf(line));
        else if (!m_facts.isCalendar)
            m_facts.isCalendar = isCalendarBegin(line);
    }

    [[nodiscard]] static std::optional<double> positiveSeconds(const QByteArray &value)
    {
        const auto duration = durationFrom(value);
        const double seconds = duration ? static_cast<double>(duration->days * 86400 + duration->seconds) : 0;
        return seconds > 0 ? std::optional(seconds) : std::nullopt;
    }

    void finish()
    {
        if (!m_event.end())
            return;
        const qint64 start = m_event.time(Property::Start);
        const qint64 end = m_event.time(Property::End);
        if (start == unreadable) {
            skip(Property::Start, SkipReason::NoStart, SkipReason::StartUnreadable);
        } else if (end == unreadable) {
            skip(Property::End, SkipReason::NoEnd, SkipReason::EndUnreadable);
        } else {
            ++m_facts.eventCount;
            m_facts.repeatingCount += m_repeats ? 1 : 0;
            const Instant first = Instant::fromUnixSeconds(static_cast<double>(start));
            const Instant last = Instant::fromUnixSeconds(static_cast<double>(end));
            m_facts.firstStart = std::min(m_facts.firstStart.value_or(first), first);
            m_facts.lastEnd = std::max(m_facts.lastEnd.value_or(last), last);
        }
    }

    void skip(Property property, SkipReason absent, SkipReason bad)
    {
        if (++m_facts.skippedCount > mostSkippedListed)
            return;
        const OpenEvent::Kept &kept = m_event.kept(property);
        const OpenEvent::Kept &summary = m_event.kept(Property::Summary);
        const qint64 start = m_event.wallTime(Property::Start);
        SkippedEvent skipped{.reason = kept.isPresent ? bad : absent, .line = m_beginLine};
        if (summary.isPresent)
            skipped.title = unescapedLine(valueOf(summary.line));
        if (start != unreadable)
            skipped.day = QDateTime::fromSecsSinceEpoch(start, Qt::UTC).date();
        if (kept.isPresent) {
            skipped.value = shownValue(unreadableValue(kept.line));
            skipped.line = m_propertyLines[static_cast<std::size_t>(property)];
        }
        m_facts.skipped.append(skipped);
    }

    OpenEvent m_event;
    CalendarFacts m_facts;
    std::optional<double> m_interval;
    std::optional<double> m_lifetime;
    qsizetype m_beginLine = 0;
    std::array<qsizetype, propertyCount> m_propertyLines{};
    bool m_repeats = false;
};

} // namespace

CalendarFacts calendarFacts(QByteArrayView text, const QTimeZone &currentZone)
{
    FactReader reader(currentZone);
    reader.read(text);
    return reader.takeFacts();
}

} // namespace tessaly
