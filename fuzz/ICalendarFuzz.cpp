#include "model/FeedMerge.h"

#include <QTimeZone>

#include <algorithm>
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

} // namespace

/// Any bytes are read without a crash; what comes out keeps the promises of the reader and of the merge.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTimeZone zone("America/Sao_Paulo");
    static const QUuid feed(QStringLiteral("11111111-2222-3333-4444-abcdefabcdef"));
    static const QString untitled = QStringLiteral("Untitled event");

    const QByteArrayView text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QList<ParsedEvent> events = parseICalendar(text, untitled, zone);
    for (const ParsedEvent &event : events) {
        require(!event.uid.isEmpty() && !event.title.isEmpty());
        require(event.start.seconds == std::floor(event.start.seconds));
        require(std::abs(event.start.unixSeconds()) < 3e11 && std::abs(event.end.unixSeconds()) < 3e11);
    }

    const QList<ScheduleItem> first = mergeFeed(feedSchedules(events, feed), feed, {});
    const QList<ScheduleItem> again = mergeFeed(feedSchedules(events, feed), feed, first);
    require(first == again && first.size() <= events.size());
    return 0;
}
