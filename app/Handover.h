#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tessaly {

/// The planner is two programs: one with a window, and a smaller one for the background, which does not load Qt Quick.
/// Each replaces the other in the same process, so that the data directory stays locked. The environment is that of the
/// process's start each time.
class Handover
{
public:
    /// What the program with a window was started for by the other.
    enum class Purpose {
        None,       ///< by someone else
        Background, ///< to do the other's work, which that one could not
        Window,     ///< to show its window
        Reminders,  ///< to show its window with the to-do screen
        Find,       ///< to show its window with the field that finds and adds
    };

    /// To be made first of all in main(), whose arguments must outlive it.
    explicit Handover(char *argv[]);

    [[nodiscard]] Purpose purpose() const { return m_purpose; }
    /// The reminder that the user clicked, see WaitingReminder::identifier; empty for none or for several.
    [[nodiscard]] const QString &reminder() const { return m_reminder; }

    /// Absolute path of the running program.
    [[nodiscard]] static QString program();
    /// Absolute path of the program with a window: in the one without, what that one was started by.
    [[nodiscard]] QString windowProgram() const;

    /// Runs the program for the background, with the same arguments. Returns where it is missing.
    void runInBackground() const;
    /// Runs the program with a window, which inherits the lock. Returns where that is impossible. `activationToken`
    /// lets its window come to the front; it and `reminder` may be empty.
    void runWithWindow(Purpose purpose, const QByteArray &activationToken, const QString &reminder) const;

private:
    void run(const QString &file, const QString &name, std::vector<QByteArray> environment) const;

    char **m_arguments;
    std::vector<QByteArray> m_environment;
    Purpose m_purpose = Purpose::None;
    QString m_reminder;
};

} // namespace tessaly
