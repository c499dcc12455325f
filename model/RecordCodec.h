#pragma once

#include "model/CalendarFeed.h"
#include "model/SavedData.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace tessaly {

// JSON of the persisted records (RFC 8259, UTF-8). Keys are the field names; absent optionals are not written; dates
// are seconds since 2001-01-01 UTC in shortest round-trip text. Unknown keys are ignored, `null` under an optional key
// means absent, of duplicate keys the last counts. A missing required key, a value of the wrong type (0 and 1 are no
// booleans), invalid UTF-8, a lone surrogate, a number beyond the range of doubles, a byte-order mark, text after the
// value, or nesting beyond 64 levels makes the whole decode fail.
//
// UUIDs are read in either case and written upper-case. Schedules, to-dos and goals without an `id` get a fresh one. A
// schedule that has a `taskTitle` but no `tasks` (or null there) gets one task of that title.

[[nodiscard]] std::optional<SavedData> decodeSavedData(QByteArrayView json);
[[nodiscard]] std::optional<DocumentLibraryData> decodeDocumentLibrary(QByteArrayView json);
[[nodiscard]] std::optional<QList<CalendarFeed>> decodeCalendarFeeds(QByteArrayView json);

/// No bytes when a value has no JSON form (NaN, infinity). A surrogate without its partner is written as U+FFFD.
[[nodiscard]] std::optional<QByteArray> encodeSavedData(const SavedData &data);
[[nodiscard]] std::optional<QByteArray> encodeDocumentLibrary(const DocumentLibraryData &library);
[[nodiscard]] std::optional<QByteArray> encodeCalendarFeeds(const QList<CalendarFeed> &feeds);

} // namespace tessaly
