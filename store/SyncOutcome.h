#pragma once

#include "model/AppLanguage.h"
#include "model/CalendarMerge.h"
#include "model/Instant.h"
#include "platform/EventStore.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace tessaly {

/// What a sync did.
struct SyncOutcome
{
    Instant at = {};
    qint64 imported = 0;
    qint64 updated = 0;
    /// Absent when the sync only imported.
    std::optional<qint64> exported = {};

    bool operator==(const SyncOutcome &) const = default;
};

/// The outcome as it is stored: when (whole seconds), imported, updated and, if present, exported.
[[nodiscard]] QStringList storedOutcome(const SyncOutcome &outcome);
/// Absent where the values are not those of an outcome.
[[nodiscard]] std::optional<SyncOutcome> outcomeFrom(const QStringList &values);

/// Whether the sync left this calendar out. One of which only damaged files are missing is synced.
[[nodiscard]] bool isLeftOut(const QList<UnreadCalendar> &unread, const QString &identifier);

/// The outcome in words, with the names of the files that could not be read.
[[nodiscard]] TextPair outcomeText(const SyncOutcome &outcome, const TextPair &serviceName,
                                   const QList<UnreadCalendar> &unread);
/// Says how many removals wait for the user's decision.
[[nodiscard]] TextPair pausedText(const QList<HeldRemoval> &held);

} // namespace tessaly
