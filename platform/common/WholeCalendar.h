#pragma once

#include "model/SkippedEvent.h"
#include "platform/common/vdir/CalendarFile.h"

#include <QByteArray>
#include <QList>

namespace tessaly {

/// Counts events that are left out, and lists the first of them.
class SkippedEvents
{
public:
    void add(const SkippedEvent &event)
    {
        if (m_list.size() < mostSkippedListed)
            m_list.append(event);
        ++m_count;
    }
    [[nodiscard]] qsizetype count() const { return m_count; }
    [[nodiscard]] const QList<SkippedEvent> &list() const { return m_list; }

private:
    QList<SkippedEvent> m_list;
    qsizetype m_count = 0;
};

/// An event of a calendar with all that its UID says of it, and where it stands.
struct WholeEvent
{
    FileEvent event = {};
    /// The value of its UID; of an event without one the title.
    QByteArray uid = {};
    qsizetype line = 0;
    /// Of its first rule, or the first property that lists dates.
    qsizetype repetitionLine = 0;
    bool isCancelled = false;

    /// The entry that lists the event as left out.
    [[nodiscard]] SkippedEvent skipped(SkipReason reason, const QByteArray &value = {}) const;
};

/// The events of a calendar before their repetitions are worked out.
struct WholeCalendar
{
    /// By their first mention.
    QList<WholeEvent> events = {};
    SkippedEvents skipped = {};
};

/// Reads every VEVENT that can be read in any way: in several calendars, with or without an end, with times as
/// exporters write them beside the standard's forms. Cancelled events are left out without being listed, as are the
/// occurrences that a cancelled one stands for.
[[nodiscard]] WholeCalendar readWholeCalendar(const QByteArray &text);

} // namespace tessaly
