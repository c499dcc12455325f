#include "model/ICalendarReader.h"

#include "model/ICalendarLines.h"
#include "model/Uuid.h"

namespace tessaly {

namespace {

using namespace icalendar;

QString toQString(string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QByteArray toBytes(string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

class EventReader
{
public:
    EventReader(const QString &untitled, const QTimeZone &currentZone) : m_untitled(untitled), m_event(currentZone) {}

    void read(UnfoldedLines &lines)
    {
        string_view line;
        while (lines.next(line)) {
            if (line == beginEvent)
                m_event.begin();
            else if (line == endEvent)
                finish();
            else if (m_event.isOpen())
                (void)m_event.keep(line, lines);
            else if (line.starts_with(calendarNamePrefix))
                m_calendarName = toQString(line.substr(calendarNamePrefix.size()));
        }
    }

    [[nodiscard]] QList<ParsedEvent> takeEvents() { return std::move(m_events); }

private:
    void finish()
    {
        if (!m_event.end())
            return;
        const qint64 start = m_event.time(Property::Start);
        const qint64 end = m_event.time(Property::End);
        if (start == unreadable || end == unreadable)
            return;
        const OpenEvent::Kept &uid = m_event.kept(Property::Uid);
        const OpenEvent::Kept &summary = m_event.kept(Property::Summary);
        m_events.append({uid.isPresent ? toBytes(uid.line) : uuidText(QUuid::createUuid()).toLatin1(),
                         summary.isPresent ? toQString(summary.line) : m_untitled,
                         Instant::fromUnixSeconds(static_cast<double>(start)),
                         Instant::fromUnixSeconds(static_cast<double>(end)), m_calendarName});
    }

    QString m_untitled;
    OpenEvent m_event;
    std::optional<QString> m_calendarName;
    QList<ParsedEvent> m_events;
};

} // namespace

QList<ParsedEvent> parseICalendar(QByteArrayView text, const QString &untitled, const QTimeZone &currentZone)
{
    UnfoldedLines lines(string_view(text.data(), static_cast<std::size_t>(text.size())));
    EventReader reader(untitled, currentZone);
    reader.read(lines);
    return reader.takeEvents();
}

} // namespace tessaly
