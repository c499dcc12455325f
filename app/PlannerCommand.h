#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tessaly {

class PlannerStore;

/// A task that needs no window. The running planner carries it out where there is one.
struct PlannerCommand
{
    enum class Verb {
        Export, ///< writes the archive `file`
        Import, ///< replaces everything by the archive `file`
        Verify, ///< checks what is stored
        Agenda, ///< lists what the next `days` days hold, as JSON where `isJson`
        Add,    ///< adds the to-do or the schedule that `text` describes, see quickEntry()
        Find,   ///< shows the field that finds and adds; needs the window of the running planner
        Open,   ///< shows the calendar behind the link, or in the file, `text`; needs the running planner
    };

    Verb verb = Verb::Agenda;
    /// Absolute.
    QString file = {};
    QString text = {};
    int days = 7;
    bool isJson = false;

    bool operator==(const PlannerCommand &) const = default;
};

/// What a command leaves: its exit status, and what it writes on the standard output and on standard error.
struct CommandAnswer
{
    int status = 0;
    QString output = {};
    QString errors = {};

    bool operator==(const CommandAnswer &) const = default;
};

// One line of JSON each, to pass on to another process.
/// A command that has nothing to do where nothing is stored.
[[nodiscard]] bool onlyReads(const PlannerCommand &command);

[[nodiscard]] QByteArray encodeCommand(const PlannerCommand &command);
[[nodiscard]] std::optional<PlannerCommand> decodeCommand(const QByteArray &json);
[[nodiscard]] QByteArray encodeAnswer(const CommandAnswer &answer);
[[nodiscard]] std::optional<CommandAnswer> decodeAnswer(const QByteArray &json);

/// The verb that the arguments after the options begin with, and its argument; nothing where it is none, or where the
/// number of arguments is wrong. A relative file name is taken from the current directory.
[[nodiscard]] std::optional<PlannerCommand> commandFrom(const QStringList &arguments);

/// Carries the command out on the store and answers in the interface language, now or later. The store must outlive
/// that.
void carryOut(const PlannerCommand &command, PlannerStore &store,
              const std::function<void(const CommandAnswer &)> &answer);

/// Carries out what another process has passed on, as encodeCommand() makes it. The reply is empty where that is from a
/// version with other commands.
void carryOutEncoded(const QByteArray &command, PlannerStore &store,
                     const std::function<void(const QByteArray &)> &reply);

} // namespace tessaly
