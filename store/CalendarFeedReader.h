#pragma once

#include "model/Result.h"
#include "model/ScheduleItem.h"

#include <QByteArray>
#include <QObject>
#include <QThreadPool>
#include <QTimeZone>
#include <QUuid>

#include <functional>

namespace tessaly {

/// What a downloaded calendar holds.
struct ReadCalendar
{
    qsizetype eventCount = 0;
    /// See feedSchedules().
    QList<ScheduleItem> schedules = {};
};

/// How a calendar is read.
struct ReadingOptions
{
    QUuid feedID;
    /// The title of events that have none.
    QString untitled;
    QTimeZone currentZone;
};

/// The calendar in the text; see parseICalendar() and feedSchedules().
[[nodiscard]] ReadCalendar readCalendar(QByteArrayView text, const ReadingOptions &options);

/// Reads downloaded calendars without blocking the window: small ones at once, large ones on a separate thread.
class CalendarFeedReader : public QObject
{
public:
    using Completion = std::function<void(Result<ReadCalendar>)>;

    /// Largest body in bytes that is read at once.
    static constexpr qsizetype defaultLargestAtOnce = 1024 * 1024;

    explicit CalendarFeedReader(qsizetype largestAtOnce = defaultLargestAtOnce);

    /// `completion` runs once, on the calling thread, in the order of the calls; not after the reader was destroyed.
    /// A body that is not UTF-8 fails with TextEncodingInapplicable.
    void read(const QByteArray &body, const ReadingOptions &options, const Completion &completion);

private:
    qsizetype m_largestAtOnce;
    int m_waiting = 0;
    /// Last, so that its thread has ended before anything else goes.
    QThreadPool m_thread;
};

} // namespace tessaly
