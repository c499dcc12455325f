#include "store/CalendarFeedReader.h"

namespace tessaly {

namespace {

Result<QList<ParsedEvent>> events(const QByteArray &body, const QString &untitled, const QTimeZone &currentZone)
{
    if (!QUtf8StringView(body).isValidUtf8())
        return Error{ErrorCode::TextEncodingInapplicable, {}};
    return parseICalendar(body, untitled, currentZone);
}

} // namespace

CalendarFeedReader::CalendarFeedReader(qsizetype largestAtOnce) : m_largestAtOnce(largestAtOnce)
{
    m_thread.setMaxThreadCount(1);
}

void CalendarFeedReader::read(const QByteArray &body, const QString &untitled, const QTimeZone &currentZone,
                              const Completion &completion)
{
    // A small body behind a large one waits its turn, or the older result would be the last to arrive.
    if (body.size() <= m_largestAtOnce && m_waiting == 0) {
        completion(events(body, untitled, currentZone));
        return;
    }
    ++m_waiting;
    m_thread.start([this, body, untitled, currentZone, completion] {
        auto result = events(body, untitled, currentZone);
        QMetaObject::invokeMethod(
            this,
            [this, completion, result = std::move(result)] {
                --m_waiting;
                completion(result);
            },
            Qt::QueuedConnection);
    });
}

} // namespace tessaly
