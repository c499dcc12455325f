#include "store/CalendarFeedReader.h"

#include "model/FeedMerge.h"

namespace tessaly {

namespace {

Result<ReadCalendar> readBody(const QByteArray &body, const ReadingOptions &options)
{
    if (!QUtf8StringView(body).isValidUtf8())
        return Error{ErrorCode::TextEncodingInapplicable, {}};
    return readCalendar(body, options);
}

} // namespace

ReadCalendar readCalendar(QByteArrayView text, const ReadingOptions &options)
{
    const QList<ParsedEvent> events = parseICalendar(text, options.untitled, options.currentZone);
    return {events.size(), feedSchedules(events, options.feedID)};
}

CalendarFeedReader::CalendarFeedReader(qsizetype largestAtOnce) : m_largestAtOnce(largestAtOnce)
{
    m_thread.setMaxThreadCount(1);
}

void CalendarFeedReader::read(const QByteArray &body, const ReadingOptions &options, const Completion &completion)
{
    // A small body behind a large one waits its turn, or the older result would be the last to arrive.
    if (body.size() <= m_largestAtOnce && m_waiting == 0) {
        completion(readBody(body, options));
        return;
    }
    ++m_waiting;
    m_thread.start([this, body, options, completion] {
        auto result = readBody(body, options);
        QMetaObject::invokeMethod(
            this,
            [this, completion, result = std::move(result)]() mutable {
                --m_waiting;
                completion(std::move(result));
            },
            Qt::QueuedConnection);
    });
}

} // namespace tessaly
