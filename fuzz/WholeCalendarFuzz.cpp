#include "model/ICalendarFacts.h"
#include "model/ICalendarReader.h"
#include "platform/common/LibicalExpander.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tessaly;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void requireListed(const QList<SkippedEvent> &skipped, qsizetype count)
{
    require(skipped.size() == std::min(count, mostSkippedListed));
    qsizetype line = 1;
    for (const SkippedEvent &event : skipped) {
        require(event.line >= line && event.value.size() <= 60);
        line = event.line;
    }
}

} // namespace

/// Any bytes are read without a crash, within the time that the fuzzer allows; what comes out keeps the promises of the
/// whole reader, and of the facts that go with the other one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTimeZone zone("America/Sao_Paulo");
    static const ExpansionOptions options{.from = Instant::fromUnixSeconds(1'750'000'000),
                                          .until = Instant::fromUnixSeconds(1'850'000'000),
                                          .currentZone = zone,
                                          .untitled = QStringLiteral("Untitled event")};

    const QByteArrayView text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const ExpandedCalendar calendar = LibicalExpander().expand(text, options);
    require(calendar.repeatingCount <= calendar.eventCount);
    requireListed(calendar.skipped, calendar.skippedCount);
    for (const CalendarOccurrence &each : calendar.occurrences) {
        require(!each.title.isEmpty() && each.start <= each.end && each.start < options.until);
        require(each.end > options.from || each.start > options.from);
        require(std::abs(each.originalStart.unixSeconds()) < 1e12 && std::abs(each.end.unixSeconds()) < 1e15);
    }

    const CalendarFacts facts = calendarFacts(text, zone);
    require(facts.eventCount == parseICalendar(text, options.untitled, zone).size());
    requireListed(facts.skipped, facts.skippedCount);
    return 0;
}
