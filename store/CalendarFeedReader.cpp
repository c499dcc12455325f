#include "store/CalendarFeedReader.h"

#include "model/FeedMerge.h"
#include "platform/CalendarExpander.h"

namespace tessaly {

namespace {

ExpandedCalendar expanded(const QByteArray &body, const ReadingOptions &options, const CalendarExpander &expander)
{
    return expander.expand(body, {.from = options.from,
                                  .until = options.until,
                                  .currentZone = options.currentZone,
                                  .untitled = options.untitled});
}

void readWhole(ReadCalendar &calendar, const QByteArray &body, const ReadingOptions &options,
               const CalendarExpander &expander)
{
    ExpandedCalendar whole = expanded(body, options, expander);
    FeedSchedules schedules(options.feedID, whole.occurrences.size());
    // As a single reading of the event writes it, so that both find each other's schedules.
    for (const CalendarOccurrence &occurrence : std::as_const(whole.occurrences))
        schedules.add("UID:" + occurrence.uid, occurrence.originalStart,
                      {.title = occurrence.title, .date = occurrence.start, .endDate = occurrence.end});
    calendar.schedules = schedules.take();
    calendar.facts.eventCount = whole.eventCount;
    calendar.facts.repeatingCount = whole.repeatingCount;
    calendar.facts.skipped = std::move(whole.skipped);
    calendar.facts.skippedCount = whole.skippedCount;
}

QList<ScheduleItem> readOnce(const QByteArray &body, const ReadingOptions &options)
{
    QList<ParsedEvent> events = parseICalendar(body, options.untitled, options.currentZone);
    for (ParsedEvent &event : events) {
        if (options.isKeptUpToDate && !event.uid.startsWith("UID"))
            event.uid = event.title.toUtf8() + '|' + QByteArray::number(event.end.unixSeconds(), 'f', 0);
    }
    return feedSchedules(events, options.feedID);
}

Result<ReadCalendar> readBody(const QByteArray &body, const ReadingOptions &options, const CalendarExpander &expander)
{
    if (!QUtf8StringView(body).isValidUtf8())
        return Error{ErrorCode::TextEncodingInapplicable, {}};
    ReadCalendar calendar{.facts = calendarFacts(body, options.currentZone)};
    if (options.readsRepetitions)
        readWhole(calendar, body, options, expander);
    else
        calendar.schedules = readOnce(body, options);
    calendar.scheduleCount = calendar.schedules.size();
    if (options.compared)
        calendar.update = feedUpdate(std::exchange(calendar.schedules, {}), options.feedID, *options.compared);
    return calendar;
}

Result<CalendarTrial> tryBoth(const QByteArray &body, ReadingOptions options, const CalendarExpander &expander)
{
    options.compared.reset();
    options.readsRepetitions = false;
    const Result<ReadCalendar> once = readBody(body, options, expander);
    if (!once)
        return once.error();
    const CalendarFacts &facts = once.value().facts;
    CalendarTrial trial{.once = facts, .whole = facts};
    options.readsRepetitions = true;
    if (facts.repeatingCount > 0 || facts.skippedCount > 0)
        trial.whole = readBody(body, options, expander).value().facts;
    return trial;
}

} // namespace

CalendarFeedReader::CalendarFeedReader(const CalendarExpander &expander, qsizetype largestAtOnce)
    : m_expander(expander), m_largestAtOnce(largestAtOnce)
{
    m_thread.setMaxThreadCount(1);
}

template <class Value>
void CalendarFeedReader::runAside(const std::function<Value()> &work, const std::function<void(Value)> &completion)
{
    ++m_waiting;
    m_thread.start([this, work, completion] {
        Value value = work();
        QMetaObject::invokeMethod(
            this,
            [this, completion, value = std::move(value)]() mutable {
                --m_waiting;
                completion(std::move(value));
            },
            Qt::QueuedConnection);
    });
}

void CalendarFeedReader::read(const QByteArray &body, const ReadingOptions &options, const Completion &completion)
{
    // A small body behind a large one waits its turn, or the older result would be the last to arrive.
    const bool isAside = options.isAside || options.readsRepetitions || body.size() > m_largestAtOnce || m_waiting > 0;
    if (isAside)
        runAside<Result<ReadCalendar>>([this, body, options] { return readBody(body, options, m_expander); },
                                       completion);
    else
        completion(readBody(body, options, m_expander));
}

void CalendarFeedReader::tryBody(const QByteArray &body, const ReadingOptions &options,
                                 const std::function<void(const Result<CalendarTrial> &)> &completion)
{
    runAside<Result<CalendarTrial>>([this, body, options] { return tryBoth(body, options, m_expander); }, completion);
}

void CalendarFeedReader::countRepetitions(const QByteArray &body, const ReadingOptions &options,
                                          const std::function<void(qsizetype)> &completion)
{
    const auto count = [this, body, options] {
        const qsizetype once = parseICalendar(body, options.untitled, options.currentZone).size();
        return expanded(body, options, m_expander).occurrences.size() - once;
    };
    runAside<qsizetype>(count, completion);
}

} // namespace tessaly
