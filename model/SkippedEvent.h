#pragma once

#include <QByteArrayView>
#include <QDate>
#include <QString>

#include <algorithm>
#include <optional>

namespace tessaly {

/// Why an event of a calendar was left out, or what of it.
enum class SkipReason {
    NoStart,
    NoEnd,
    StartUnreadable,
    /// A calendar that is read whole gives the event without its end.
    EndUnreadable,
    /// The event is given without the rule or the date that could not be read.
    RepetitionUnreadable,
    /// The event, or what was read before it, goes beyond what is read of one calendar.
    TooLarge,
};

/// An event that was left out of a calendar that was read, or read in part.
struct SkippedEvent
{
    /// Plain text, empty where the event has none.
    QString title = {};
    /// The day of its start, where that can be read.
    std::optional<QDate> day = {};
    SkipReason reason = SkipReason::NoStart;
    /// What could not be read, shortened to 60 characters; empty where there is nothing.
    QString value = {};
    /// Line of the file, counted from 1: that of the property that could not be read, else that of BEGIN:VEVENT.
    qsizetype line = 0;

    bool operator==(const SkippedEvent &) const = default;
};

/// How many of the events that were left out are listed.
inline constexpr qsizetype mostSkippedListed = 1000;

/// SkippedEvent::value of the bytes of a file.
[[nodiscard]] inline QString shownValue(QByteArrayView bytes)
{
    constexpr qsizetype longest = 60;
    const QString text = QString::fromUtf8(bytes.first(std::min(bytes.size(), 4 * longest)));
    return text.size() <= longest ? text : text.first(longest - 1) + u'…';
}

} // namespace tessaly
