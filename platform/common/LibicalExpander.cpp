#include "platform/common/LibicalExpander.h"

#include "platform/common/WholeCalendar.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

constexpr qint64 daySeconds = 86400;
constexpr qint64 yearSeconds = 366 * daySeconds;
/// What clocks differ at most, and more.
constexpr qint64 clockMargin = 2 * daySeconds;
constexpr qsizetype mostInCalendar = 500'000;
/// Some two seconds.
constexpr qint64 calendarSteps = 3'000'000;

/// Lines that end in carriage returns alone are no lines to the reader.
QByteArray withLineFeeds(QByteArrayView text)
{
    QByteArray result = QByteArray::fromRawData(text.data(), text.size());
    if (!result.contains('\n') && result.contains('\r'))
        result.replace('\r', '\n');
    return result;
}

Instant instantOf(qint64 unixSeconds)
{
    return Instant::fromUnixSeconds(static_cast<double>(unixSeconds));
}

class Expansion
{
public:
    explicit Expansion(const ExpansionOptions &options)
        : m_options(options), m_user(options.currentZone, Qt::Monday, QLocale::c()),
          m_from(static_cast<qint64>(std::floor(options.from.unixSeconds()))),
          m_until(static_cast<qint64>(std::ceil(options.until.unixSeconds())))
    {
    }

    ExpandedCalendar of(WholeCalendar calendar)
    {
        for (WholeEvent &each : calendar.events)
            add(each);
        m_result.skipped = calendar.skipped.list() + m_skipped.list();
        std::ranges::stable_sort(m_result.skipped, {}, &SkippedEvent::line);
        m_result.skipped.resize(std::min(m_result.skipped.size(), mostSkippedListed));
        m_result.skippedCount = calendar.skipped.count() + m_skipped.count();
        return std::move(m_result);
    }

private:
    void add(WholeEvent &whole)
    {
        if (!expand(whole)) {
            m_skipped.add(whole.skipped(SkipReason::TooLarge));
            return;
        }
        const qsizetype first = m_result.occurrences.size();
        if (!addOccurrences(whole)) {
            m_result.occurrences.resize(first);
            m_skipped.add(whole.skipped(SkipReason::TooLarge));
            return;
        }
        std::sort(m_result.occurrences.begin() + first, m_result.occurrences.end(),
                  [](const CalendarOccurrence &a, const CalendarOccurrence &b) { return a.start < b.start; });
    }

    /// False if it is too large. Rules that cannot be read are listed, and the event is read without them.
    bool expand(WholeEvent &whole)
    {
        FileEvent &event = whole.event;
        RuleWindow window = windowFor(event);
        const bool isExpanded = event.expandWithin(window);
        for (const QByteArray &rule : std::as_const(window.unreadableRules)) {
            m_skipped.add(whole.skipped(SkipReason::RepetitionUnreadable, rule));
            event.rules.removeAll(rule);
        }
        m_budget = window.budget;
        return isExpanded;
    }

    /// Where occurrences of the event may lie that are asked for, before all are moved and after, on its own clock.
    [[nodiscard]] RuleWindow windowFor(const FileEvent &event) const
    {
        RuleWindow window{.first = m_from - clockMargin, .last = m_until + clockMargin, .budget = m_budget};
        if (!event.pattern)
            return window;
        const auto widen = [&](const EventPart &part) {
            const EventDuration length = part.length(m_user);
            window.first = std::min(window.first, m_from - clockMargin - length.days * daySeconds - length.seconds);
        };
        widen(*event.pattern);
        for (const EventPart &part : event.overrides) {
            if (!part.changesFollowing)
                continue;
            widen(part);
            const qint64 shift = part.start.wallOn(event.pattern->start) - part.recurrenceId->wall;
            window.first = std::min({window.first, window.first - shift, part.recurrenceId->wall});
            window.last = std::max(window.last, window.last - shift);
        }
        return window;
    }

    /// False if there are too many.
    bool addOccurrences(const WholeEvent &whole)
    {
        const EventPart *lastPart = nullptr;
        EventDuration length;
        QString title;
        bool hasAny = false;
        bool isWithin = true;
        whole.event.forEachOccurrence([&](const EventPart &part, const EventTime &original, const EventTime &start) {
            hasAny = true;
            if (&part != lastPart) {
                lastPart = &part;
                length = part.length(m_user);
                title = part.title.value_or(QString());
                if (title.isEmpty())
                    title = m_options.untitled;
            }
            const qint64 begin = start.unixSeconds(m_user);
            const qint64 end = EventPart::endAfter(start, begin, length, m_user);
            const bool isAsked = begin < m_until && (end > m_from || begin > m_from);
            isWithin = isWithin && (!isAsked || m_result.occurrences.size() < mostInCalendar);
            if (!isAsked || !isWithin)
                return;
            const qint64 first =
                original.wall == start.wall && &part == &*whole.event.pattern ? begin : original.unixSeconds(m_user);
            m_result.occurrences.append({whole.uid, title, instantOf(first), instantOf(begin), instantOf(end)});
        });
        if (isWithin && hasAny) {
            ++m_result.eventCount;
            m_result.repeatingCount += whole.event.isRecurring() ? 1 : 0;
        }
        return isWithin;
    }

    const ExpansionOptions &m_options;
    UserCalendar m_user;
    /// In seconds since 1970-01-01 UTC.
    qint64 m_from;
    qint64 m_until;
    RuleBudget m_budget{.steps = calendarSteps};
    SkippedEvents m_skipped;
    ExpandedCalendar m_result;
};

qint64 wallOf(const QDateTime &time)
{
    return QDateTime(time.date(), time.time(), Qt::UTC).toSecsSinceEpoch();
}

} // namespace

ExpandedCalendar LibicalExpander::expand(QByteArrayView text, const ExpansionOptions &options) const
{
    return Expansion(options).of(readWholeCalendar(withLineFeeds(text)));
}

std::optional<QDateTime> LibicalExpander::nextRepetition(const QString &rule, const QDateTime &start,
                                                         const QDateTime &after) const
{
    const qint64 first = wallOf(start);
    const qint64 last = wallOf(after);
    const QByteArray text = rule.toLatin1();
    if (!start.isValid() || !after.isValid())
        return std::nullopt;
    if (last < first)
        return start;
    // Rules of seconds need not be followed for a century, where they give a time at once.
    std::optional<qint64> next;
    for (const qint64 length : {daySeconds, yearSeconds, 100 * yearSeconds}) {
        if (!next)
            next = ruleTimeAfter(text, {.wall = first}, last,
                                 {.first = last, .last = last + length, .budget = {.steps = calendarSteps}});
    }
    if (!next)
        return std::nullopt;
    const QDateTime wall = QDateTime::fromSecsSinceEpoch(*next, Qt::UTC).addMSecs(start.time().msec());
    return start.timeSpec() == Qt::LocalTime ? QDateTime(wall.date(), wall.time())
                                             : QDateTime(wall.date(), wall.time(), start.timeZone());
}

} // namespace tessaly
