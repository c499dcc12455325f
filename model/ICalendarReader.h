#pragma once

#include "model/Instant.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace tessaly {

/// An event of an iCalendar file.
struct ParsedEvent
{
    /// The whole UID line of the file, or a new UUID when there was none. Never shown, only compared.
    QByteArray uid = {};
    /// The whole SUMMARY line.
    QString title = {};
    Instant start = {};
    Instant end = {};
    /// The X-WR-CALNAME in force at the event.
    std::optional<QString> calendarName = {};

    bool operator==(const ParsedEvent &) const = default;
};

/// Reads the events of an iCalendar file (RFC 5545) in file order, from UTF-8 with or without a byte-order mark.
///
/// Reads only DTSTART, DTEND, UID, SUMMARY and X-WR-CALNAME: a recurring event yields its first occurrence, an event
/// without a readable start and end is left out. Values are whole lines with their escapes.
/// Unfolding trims the blanks of a continuation line at both ends. Of two properties with one name the later counts,
/// those of a nested alarm included.
///
/// Dates are "yyyyMMdd" and "yyyyMMdd'T'HHmmss", in UTC after a "Z", else in the zone named by TZID if the time zone
/// database knows it, else in `currentZone`. Skipped and repeated local times: RFC 5545, 3.3.5.
///
/// `untitled` is the title of events without SUMMARY. Any bytes are accepted; in titles and names those that are not
/// UTF-8 become U+FFFD.
[[nodiscard]] QList<ParsedEvent> parseICalendar(QByteArrayView text, const QString &untitled,
                                                const QTimeZone &currentZone);

} // namespace tessaly

Q_DECLARE_TYPEINFO(tessaly::ParsedEvent, Q_RELOCATABLE_TYPE);
