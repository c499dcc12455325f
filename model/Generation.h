#pragma once

#include "model/Instant.h"

#include <QString>

#include <optional>

namespace tessaly {

/// Why the state of a moment was kept. All but Hourly are restore points: the state before something that takes away.
enum class GenerationReason {
    Hourly,
    Clear,
    LinkDeletion,
    LinkUpdate, ///< takes away schedules with notes or tasks
    FirstSync,
    Sync, ///< takes away many schedules
    Restore,
    Import,
    Update, ///< the first start of a newer version of the program
};

/// The state of the planner at a moment, kept as a file of its own.
struct Generation
{
    Instant moment = {};
    GenerationReason reason = GenerationReason::Hourly;
    /// How many schedules went, or the new version of the program; empty for other reasons.
    QString detail = {};
    /// The first bytes of the SHA-256 of the file, in hexadecimal.
    QString digest = {};
    /// Of the file, in bytes.
    qint64 size = 0;

    [[nodiscard]] bool isRestorePoint() const { return reason != GenerationReason::Hourly; }
    bool operator==(const Generation &) const = default;
};

/// The name of the file: moment (UTC, yyyyMMddTHHmmsszzzZ), reason, detail and digest, all but the size. Names sort by
/// moment.
[[nodiscard]] QString generationFileName(const Generation &generation);
/// What the name says; nothing for any other file.
[[nodiscard]] std::optional<Generation> generationFromFileName(const QString &name);

} // namespace tessaly
