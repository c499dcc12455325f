#pragma once

#include "model/ICalendarReader.h"
#include "model/Result.h"

#include <QByteArray>
#include <QObject>
#include <QThreadPool>

#include <functional>

namespace tessaly {

/// Reads downloaded calendars without holding up the window: small ones at once, large ones on a thread of its own.
class CalendarFeedReader : public QObject
{
public:
    using Completion = std::function<void(Result<QList<ParsedEvent>>)>;

    /// Largest body in bytes that is read at once.
    static constexpr qsizetype defaultLargestAtOnce = 1024 * 1024;

    explicit CalendarFeedReader(qsizetype largestAtOnce = defaultLargestAtOnce);

    /// `completion` runs once, on the calling thread, in the order of the calls; not after the reader was destroyed.
    /// A body that is not UTF-8 fails with TextEncodingInapplicable. The other arguments: parseICalendar().
    void read(const QByteArray &body, const QString &untitled, const QTimeZone &currentZone,
              const Completion &completion);

private:
    qsizetype m_largestAtOnce;
    int m_waiting = 0;
    /// Last, so that its thread has ended before anything else goes.
    QThreadPool m_thread;
};

} // namespace tessaly
