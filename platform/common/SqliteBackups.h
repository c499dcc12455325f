#pragma once

#include "platform/Backups.h"

#include <QObject>
#include <QThreadPool>

#include <memory>

namespace tessaly {

class SqliteConnection;

/// Generations of the preferences in the data directory, in its folder "Backups". A thread copies, checks and reads
/// them over connections of its own. docs/DATA.md describes the files.
class SqliteBackups final : public Backups
{
public:
    /// Where this process has the preferences of the directory open, for keep(), or nobody has.
    explicit SqliteBackups(const QString &directory);
    /// Finishes what was requested.
    ~SqliteBackups() override;
    Q_DISABLE_COPY_MOVE(SqliteBackups)

    void keep(const Generation &generation, KeepCompletion completion) override;
    [[nodiscard]] QList<Generation> list() const override;
    void remove(const QList<Generation> &generations) override;
    void read(const Generation &generation, std::function<void(const Preferences &)> read,
              ReadCompletion completion) override;
    void checkPresent(ReadCompletion completion) override;

    [[nodiscard]] static QString folderIn(const QString &directory);
    /// Whether the file is as it was written.
    [[nodiscard]] Result<void> check(const Generation &generation) const;
    [[nodiscard]] QString path(const Generation &generation) const;
    /// The newest that is as it was written.
    [[nodiscard]] std::optional<Generation> newestSound() const;
    /// Makes a copy of the generation the database. What is there stays in the directory, with its log, under a name
    /// that begins with "planner-damaged". Killed at any moment, it leaves the former database, none, or the copy.
    /// Precondition: nobody has the database open.
    [[nodiscard]] Result<void> putBack(const Generation &generation, Instant now) const;

private:
    /// Runs `work` in the thread, and the completion with its result on the main thread.
    template <class Work, class Completion>
    void ask(Work work, Completion completion);
    /// Runs `work` in the thread on the database as it is now; nothing written from now on is in it.
    template <class Answer, class Completion>
    void askSnapshot(std::function<Result<Answer>(SqliteConnection &)> work, Completion completion);
    /// Copies and checks the snapshot. The copy gets the name that unfinished ones have; there is none on failure.
    [[nodiscard]] Result<void> copy(SqliteConnection &snapshot) const;
    [[nodiscard]] Result<Generation> write(SqliteConnection &snapshot, Generation generation) const;

    QString m_database;
    QString m_folder;
    /// What the thread has to say comes through it.
    QObject m_receiver;
    /// Last, so that its thread has ended before anything else goes.
    QThreadPool m_thread;
};

} // namespace tessaly
