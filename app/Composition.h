#pragma once

#include "app/PlannerParts.h"
#include "model/AppLanguage.h"
#include "model/Generation.h"
#include "model/Instant.h"
#include "model/Result.h"

#include <functional>
#include <memory>
#include <optional>

namespace tessaly {

class FileDialogs;
class GlobalShortcut;
class SystemAppearance;

/// The planner store with its adapters. With systemParts() the only place that names adapters.
class Composition
{
public:
    /// The system's own services, over the data directory. Fails where the stored data cannot be opened. Precondition:
    /// this process is the only one on the directory.
    [[nodiscard]] static Result<std::shared_ptr<Composition>> forSystem(const CommandLine &commandLine,
                                                                        MissingData missing = MissingData::Refused);
    /// Whether the data directory holds no data.
    [[nodiscard]] static bool isNothingStored(const CommandLine &commandLine);
    /// The earlier version that the planner can be opened with where the error keeps it from starting, if any.
    [[nodiscard]] static std::optional<Generation> remedyFor(const Error &error, const CommandLine &commandLine);
    /// Puts the earlier version in the place of the stored data, which stay under another name.
    [[nodiscard]] static Result<void> openEarlier(const Generation &generation, const CommandLine &commandLine);
    /// Sample data in memory and services that do nothing. The time stands still when `now` is given; zone, first
    /// weekday and the locale of the language are then fixed too.
    [[nodiscard]] static std::shared_ptr<Composition> forDemo(AppLanguage language,
                                                              const std::optional<Instant> &now = std::nullopt);
    ~Composition();
    Composition(const Composition &) = delete;
    Composition &operator=(const Composition &) = delete;

    [[nodiscard]] PlannerStore &store() const;
    [[nodiscard]] Preferences &preferences() const;
    [[nodiscard]] SystemAppearance &systemAppearance() const;
    [[nodiscard]] FileDialogs &fileDialogs() const;
    [[nodiscard]] GlobalShortcut &globalShortcut() const;
    /// Whether the desktop shows a menu bar outside the window.
    [[nodiscard]] bool hasNativeMenuBar() const;
    /// Called when the user clicks the notification of a to-do.
    void setReminderHandler(std::function<void(const QString &identifier)> handler);

private:
    struct Parts;
    explicit Composition(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace tessaly
