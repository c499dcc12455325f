#pragma once

#include "model/FeedUpdate.h"
#include "model/ICalendarFacts.h"
#include "model/Result.h"
#include "model/ScheduleItem.h"

#include <QByteArray>
#include <QObject>
#include <QThreadPool>
#include <QTimeZone>
#include <QUuid>

#include <functional>
#include <optional>

namespace tessaly {

class CalendarExpander;

/// What a downloaded calendar holds.
struct ReadCalendar
{
    /// Of a calendar that was read whole, what was read and skipped is that of the whole reading.
    CalendarFacts facts = {};
    /// See feedSchedules(); none where they were compared.
    QList<ScheduleItem> schedules = {};
    /// How many were read.
    qsizetype scheduleCount = 0;
    /// What they change in the schedules that they were compared with.
    std::optional<FeedUpdate> update = {};
};

/// How a calendar is read.
struct ReadingOptions
{
    QUuid feedID = {};
    /// The title of events that have none.
    QString untitled = {};
    QTimeZone currentZone = {};
    /// Knows events without a UID again by what they are; otherwise each reading brings new ones.
    bool isKeptUpToDate = false;
    /// Reads the calendar whole: what takes place from `from` until `until`. Otherwise a repeating event counts once.
    bool readsRepetitions = false;
    Instant from = {};
    Instant until = {};
    /// Compares what was read with these schedules.
    std::optional<QList<ScheduleItem>> compared = {};
    /// Reads on the separate thread whatever the size.
    bool isAside = false;
};

/// Reads downloaded calendars without blocking the window: small ones at once, large ones on a separate thread.
class CalendarFeedReader : public QObject
{
public:
    using Completion = std::function<void(Result<ReadCalendar>)>;

    /// Largest body in bytes that is read at once.
    static constexpr qsizetype defaultLargestAtOnce = 256 * 1024;

    /// The expander must outlive the reader.
    explicit CalendarFeedReader(const CalendarExpander &expander, qsizetype largestAtOnce = defaultLargestAtOnce);

    /// `completion` runs once, on the calling thread, in the order of the calls; not after the reader was destroyed.
    /// A body that is not UTF-8 fails with TextEncodingInapplicable. Calendars that are read whole are never read at
    /// once.
    void read(const QByteArray &body, const ReadingOptions &options, const Completion &completion);
    /// What both ways of reading bring, whatever `options` say of that. Never at once.
    void tryBody(const QByteArray &body, const ReadingOptions &options,
                 const std::function<void(const Result<CalendarTrial> &)> &completion);
    /// How many schedules more there are when the calendar is read whole.
    void countRepetitions(const QByteArray &body, const ReadingOptions &options,
                          const std::function<void(qsizetype)> &completion);

private:
    /// Runs `work` on the thread, and `completion` with its result on this one.
    template <class Value>
    void runAside(const std::function<Value()> &work, const std::function<void(Value)> &completion);

    const CalendarExpander &m_expander;
    qsizetype m_largestAtOnce;
    int m_waiting = 0;
    /// Last, so that its thread has ended before anything else goes.
    QThreadPool m_thread;
};

} // namespace tessaly
