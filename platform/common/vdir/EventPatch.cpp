#include "platform/common/vdir/EventPatch.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr qint64 daySeconds = 86400;
constexpr qint64 earliest = -62135596800; // 0001-01-01
constexpr qint64 latest = 253402300799;   // 9999-12-31 23:59:59

qint64 wholeSeconds(Instant instant)
{
    return static_cast<qint64>(std::floor(std::clamp(instant.unixSeconds(), -1e14, 1e14)));
}

bool isInCalendar(qint64 start, qint64 end)
{
    return start >= earliest && end <= latest && start <= end;
}

/// Collects the edits of one component.
class ComponentEditor
{
public:
    ComponentEditor(const QByteArray &text, const TextComponent &component)
        : m_text(text), m_component(component), m_lineEnd(lineEndOf(text))
    {
    }

    [[nodiscard]] const TextProperty *property(QByteArrayView name) const { return m_component.property(name); }
    [[nodiscard]] const QList<TextEdit> &edits() const { return m_edits; }
    [[nodiscard]] QByteArray text() const { return edited(m_text, m_edits); }

    void set(const TextProperty &property, const QByteArray &parameters, const QByteArray &value)
    {
        m_edits.append({property.begin, property.end, line(property.name + parameters + ':' + value)});
    }
    /// In its line, else in a new one.
    void setValue(const QByteArray &name, const QByteArray &value)
    {
        if (const TextProperty *present = property(name))
            set(*present, present->parameters, value);
        else
            add(name + ':' + value);
    }
    /// Before the components within it; after the property, if that is there.
    void add(const QByteArray &content, QByteArrayView after = {})
    {
        const TextProperty *before = after.isEmpty() ? nullptr : property(after);
        if (!before && !m_component.properties.isEmpty())
            before = &m_component.properties.constLast();
        qsizetype place = before ? before->end : m_component.contentEnd;
        for (const TextComponent &inner : m_component.components) {
            if (!after.isEmpty())
                break;
            place = std::min(place, inner.begin);
        }
        m_edits.append({place, place, line(content)});
    }

    /// That it was changed just now (RFC 5545, 3.8.7); the sequence belongs to the organizer, where there is one.
    void stamp(qint64 now, bool hasNewTimes)
    {
        const QByteArray stamp = EventTime{.wall = now}.text();
        if (property("DTSTAMP"))
            setValue("DTSTAMP", stamp);
        setValue("LAST-MODIFIED", stamp);
        const TextProperty *sequence = property("SEQUENCE");
        if (hasNewTimes && !property("ORGANIZER"))
            setValue("SEQUENCE", QByteArray::number(sequence ? sequence->value.trimmed().toInt() + 1 : 1));
    }

private:
    [[nodiscard]] QByteArray line(const QByteArray &content) const { return contentLine(content, m_lineEnd); }

    const QByteArray &m_text;
    const TextComponent &m_component;
    QByteArray m_lineEnd;
    QList<TextEdit> m_edits;
};

/// Parameters of a DTSTART that say in which form its value is.
QByteArray formParameters(const TextProperty &start)
{
    QByteArray parameters;
    for (const char *name : {"VALUE", "TZID"}) {
        if (const auto value = start.parameter(name))
            parameters += QByteArray(";") + name + '=' + (value->contains(':') ? '"' + *value + '"' : *value);
    }
    return parameters;
}

void setTime(ComponentEditor &editor, const TextProperty &property, const EventTime &form,
             const std::optional<EventTime> &time, qint64 seconds)
{
    const bool isKept = time && time->form == form.form;
    const EventTime utc{.wall = seconds};
    editor.set(property, isKept ? property.parameters : property.parametersWithout({"TZID", "VALUE"}),
               (isKept ? *time : utc).text());
}

QByteArray durationText(const EventTime &start, qint64 seconds)
{
    if (start.form == EventTime::Form::Date)
        return "P" + QByteArray::number((seconds + daySeconds / 2) / daySeconds) + "D";
    return "PT" + QByteArray::number(seconds) + "S";
}

/// Gives an event its times, in the form that it has where possible.
void setTimes(ComponentEditor &editor, EventPart part, qint64 start, qint64 end, const UserCalendar &user)
{
    const TextProperty &startLine = *editor.property("DTSTART");
    const bool wasDate = part.start.form == EventTime::Form::Date;
    const EventPart before = part;
    std::optional<EventTime> newStart = part.start.at(start, user);
    if (wasDate && (!part.start.at(end, user) || end <= start))
        newStart.reset();
    const bool keepsForm = newStart.has_value();
    const EventTime startTime = newStart.value_or(EventTime{.wall = start});
    if (before.start.unixSeconds(user) != start || !keepsForm)
        setTime(editor, startLine, before.start, newStart, start);
    const EventTime endForm = keepsForm ? part.end.value_or(startTime) : startTime;
    const std::optional<EventTime> newEnd = endForm.at(end, user);
    part.start = startTime;
    if (const TextProperty *endLine = editor.property("DTEND")) {
        if (before.end->unixSeconds(user) != end || !keepsForm)
            setTime(editor, *endLine, *before.end, keepsForm ? newEnd : std::nullopt, end);
    } else if (const TextProperty *durationLine = editor.property("DURATION")) {
        if (part.endSeconds(startTime, user) != end || !keepsForm)
            editor.set(*durationLine, durationLine->parameters, durationText(startTime, end - start));
    } else if (part.endSeconds(startTime, user) != end) {
        const EventTime written = newEnd.value_or(EventTime{.wall = end});
        editor.add("DTEND" + (written.form == before.start.form ? formParameters(startLine) : QByteArray()) + ':' +
                       written.text(),
                   "DTSTART");
    }
}

/// The text with a component for one occurrence of a recurring event, which so far follows the pattern.
QByteArray withOverride(const QByteArray &text, const EventPart &pattern, const EventOccurrence &occurrence,
                        const UserCalendar &user)
{
    const TextComponent component = eventComponents(text).at(pattern.position);
    const TextProperty &start = *component.property("DTSTART");
    const QByteArray copy = text.mid(component.begin, component.end - component.begin);
    const QByteArray lineEnd = lineEndOf(text);
    QList<TextEdit> edits;
    const auto replace = [&](const TextProperty &property, const QByteArray &with) {
        edits.append({property.begin - component.begin, property.end - component.begin, with});
    };
    for (const TextProperty &property : component.properties) {
        if (property.name == "RRULE" || property.name == "RDATE" || property.name == "EXDATE" ||
            property.name == "EXRULE")
            replace(property, {});
        else if (&property == &start)
            replace(property,
                    contentLine("RECURRENCE-ID" + formParameters(start) + ':' + occurrence.original, lineEnd) +
                        contentLine(start.name + start.parameters + ':' + occurrence.original, lineEnd));
        else if (property.name == "DTEND" && pattern.end) {
            const EventTime end = pattern.end->at(occurrence.end, user).value_or(EventTime{.wall = occurrence.end});
            const QByteArray parameters =
                end.form == pattern.end->form ? property.parameters : property.parametersWithout({"TZID", "VALUE"});
            replace(property, contentLine(property.name + parameters + ':' + end.text(), lineEnd));
        }
    }
    return edited(text, {{component.end, component.end, edited(copy, edits)}});
}

const FileEvent *eventOf(const QList<FileEvent> &events, const QString &uid)
{
    const auto found = std::ranges::find(events, uid, &FileEvent::uid);
    return found == events.cend() ? nullptr : &*found;
}

bool isOverride(const EventOccurrence &occurrence, const EventKey &key)
{
    return occurrence.part->recurrenceId && occurrence.part->recurrenceId->text() == key.original;
}

} // namespace

std::optional<QByteArray> newEventText(const NewEvent &event, qint64 now)
{
    const qint64 start = wholeSeconds(event.startDate);
    const qint64 end = std::max(start, wholeSeconds(event.endDate));
    if (!isInCalendar(start, end))
        return std::nullopt;
    const QByteArray stamp = EventTime{.wall = now}.text();
    QByteArray text;
    const auto add = [&](const QByteArray &content) { text += contentLine(content, "\r\n"); };
    add("BEGIN:VCALENDAR");
    add("VERSION:2.0");
    add("PRODID:-//Tessaly//Tessaly//EN");
    add("BEGIN:VEVENT");
    add("UID:" + escapedText(event.uid));
    add("DTSTAMP:" + stamp);
    add("CREATED:" + stamp);
    add("LAST-MODIFIED:" + stamp);
    add("SUMMARY:" + escapedText(event.title));
    add("DTSTART:" + EventTime{.wall = start}.text());
    add("DTEND:" + EventTime{.wall = end}.text());
    if (!event.notes.isEmpty())
        add("DESCRIPTION:" + escapedText(event.notes));
    add("END:VEVENT");
    add("END:VCALENDAR");
    return text;
}

std::optional<EventOccurrence> findOccurrence(QList<FileEvent> &events, const EventKey &key,
                                              const PatchContext &context)
{
    const auto event = std::ranges::find(events, key.uid, &FileEvent::uid);
    if (event == events.end() || !event->expand(context.horizon))
        return std::nullopt;
    const std::vector<EventOccurrence> all = event->occurrences(context.user);
    const auto found = std::ranges::find(all, key.original, &EventOccurrence::original);
    return found == all.cend() ? std::nullopt : std::optional(*found);
}

Result<QByteArray> textWithChange(const QByteArray &text, const EventKey &key, const EventChange &change,
                                  const PatchContext &context)
{
    std::optional<QList<FileEvent>> events = readCalendarFile(text, context.fileName, context.zones);
    if (!events)
        return Error{ErrorCode::CalendarWriteFailed, context.fileName};
    const std::optional<EventOccurrence> occurrence = findOccurrence(*events, key, context);
    if (!occurrence)
        return Error{ErrorCode::CalendarEventMissing};
    const qint64 start = wholeSeconds(change.startDate);
    const qint64 end = std::max(start, wholeSeconds(change.endDate));
    if (!isInCalendar(start, end))
        return Error{ErrorCode::CalendarWriteFailed};
    const EventPart &part = *occurrence->part;
    const bool hasNewTimes = start != occurrence->start || end != occurrence->end;
    const bool hasNewTitle = change.title != part.title.value_or(QString());
    if (!hasNewTimes && !hasNewTitle)
        return text;
    if (!key.original.isEmpty() && !isOverride(*occurrence, key)) {
        const FileEvent &event = *eventOf(*events, key.uid);
        return textWithChange(withOverride(text, *event.pattern, *occurrence, context.user), key, change, context);
    }
    const QList<TextComponent> components = eventComponents(text);
    ComponentEditor editor(text, components.at(part.position));
    if (hasNewTitle)
        editor.setValue("SUMMARY", escapedText(change.title));
    if (hasNewTimes)
        setTimes(editor, part, start, end, context.user);
    editor.stamp(context.now, hasNewTimes);
    return editor.text();
}

Result<QByteArray> textWithoutEvent(const QByteArray &text, const EventKey &key, const PatchContext &context)
{
    std::optional<QList<FileEvent>> events = readCalendarFile(text, context.fileName, context.zones);
    if (!events)
        return Error{ErrorCode::CalendarWriteFailed, context.fileName};
    const std::optional<EventOccurrence> occurrence = findOccurrence(*events, key, context);
    if (!occurrence)
        return Error{ErrorCode::CalendarEventMissing};
    const QList<TextComponent> components = eventComponents(text);
    const FileEvent &event = *eventOf(*events, key.uid);
    QList<TextEdit> edits;
    const auto drop = [&](const EventPart &part) {
        edits.append({components.at(part.position).begin, components.at(part.position).end, {}});
    };
    if (!key.original.isEmpty() && event.pattern) {
        ComponentEditor pattern(text, components.at(event.pattern->position));
        const QByteArray form = formParameters(*pattern.property("DTSTART"));
        pattern.add("EXDATE" + form + ':' + key.original, "DTSTART");
        pattern.stamp(context.now, false);
        edits += pattern.edits();
    }
    for (const EventPart &part : event.overrides) {
        if (part.recurrenceId->text() == key.original)
            drop(part);
    }
    if (key.original.isEmpty())
        drop(*event.pattern);
    const QByteArray rest = edited(text, edits);
    const std::optional<QList<TextComponent>> remaining = readComponents(rest);
    const bool isEmpty = remaining && std::ranges::none_of(*remaining, [](const TextComponent &calendar) {
                             return std::ranges::any_of(calendar.components, [](const TextComponent &each) {
                                 return each.name != "VTIMEZONE";
                             });
                         });
    return isEmpty ? QByteArray() : rest;
}

} // namespace tessaly
