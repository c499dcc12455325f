#pragma once

#include "model/AppLanguage.h"
#include "model/Instant.h"
#include "model/SkippedEvent.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessaly {

/// Which version of a file a server sent, in its own words (RFC 9110, 8.8); both may be empty.
struct FeedVersion
{
    QByteArray entityTag = {};
    QByteArray lastModified = {};

    [[nodiscard]] bool isEmpty() const { return entityTag.isEmpty() && lastModified.isEmpty(); }
    bool operator==(const FeedVersion &) const = default;
};

/// How a linked calendar is: what its last readings brought.
struct LinkHealth
{
    /// Further ones are only counted.
    static constexpr qsizetype mostSkippedListed = 100;

    QUuid feedID = {};
    /// The first of the readings that have failed since the last one that did not, and why the latest failed; its words
    /// go on within a sentence.
    std::optional<Instant> failingSince = {};
    TextPair failure = {};

    // Of the last reading that did not fail.
    qsizetype eventCount = 0;
    qsizetype repeatingCount = 0;
    /// How many schedules more there are when it is read whole.
    qsizetype addedByRepetitions = 0;
    qsizetype skippedCount = 0;
    QList<SkippedEvent> skipped = {};
    /// What the calendar calls itself.
    QString calendarName = {};
    /// How rarely it wants to be read.
    std::optional<double> refreshSeconds = {};
    FeedVersion version = {};
    /// How the version was read. Another way needs the whole calendar again.
    QString basis = {};

    bool operator==(const LinkHealth &) const = default;
};

/// A JSON array. Nothing for anything else; elements without an id are left out.
[[nodiscard]] std::optional<QList<LinkHealth>> decodeLinkHealth(QByteArrayView json);
[[nodiscard]] QByteArray encodeLinkHealth(const QList<LinkHealth> &links);

} // namespace tessaly
