#pragma once

#include "platform/common/SqliteConnection.h"
#include "platform/Preferences.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace tessaly {

/// The preferences in one SQLite file. Keys point to value rows, so that a value can move from one key to another
/// without its bytes being copied. The file belongs to one process at a time. docs/DATA.md describes the layout.
class SqlitePreferences final : public Preferences
{
public:
    inline static const QString fileName = QStringLiteral("planner.sqlite");

    /// Opens the file in the directory; creates both when neither exists yet. A file that is there already is never
    /// replaced: damaged, not the planner's, from a newer version, in use or not writable, it is an error. Waits at
    /// most `lockWait` for another process to let go of it.
    [[nodiscard]] static Result<std::unique_ptr<SqlitePreferences>>
    open(const QString &directory, std::chrono::milliseconds lockWait = std::chrono::seconds(1));
    ~SqlitePreferences() override;

    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override;
    [[nodiscard]] Result<void> setValue(const QString &key, const PreferenceValue &value) override;
    [[nodiscard]] Result<void> remove(const QString &key) override;
    [[nodiscard]] Result<void> rotate(const QString &key, const QString &backupKey, QByteArrayView blob) override;
    [[nodiscard]] Result<void> keepAside(const QString &from, const QString &to) override;

private:
    struct Statements;

    SqlitePreferences();
    [[nodiscard]] Result<void> openFile(const QString &path, std::chrono::milliseconds lockWait);
    [[nodiscard]] Result<void> check();
    void prepareStatements();
    [[nodiscard]] Result<void> inTransaction(const std::function<int()> &work);
    [[nodiscard]] int rowOf(const QString &key, qint64 &row) const;
    [[nodiscard]] int insert(const PreferenceValue &value, qint64 &row);
    [[nodiscard]] int insertBlob(QByteArrayView blob, qint64 &row);
    [[nodiscard]] int point(const QString &key, qint64 row);
    [[nodiscard]] int removeUnlessUsed(qint64 row);
    [[nodiscard]] int readValue(const QString &key, std::optional<PreferenceValue> &value) const;
    [[nodiscard]] int readBlob(qint64 row, QByteArray &blob) const;
    void limitLog();
    void moveLogIntoFile();

    SqliteConnection m_connection;
    std::unique_ptr<Statements> m_statements;
    QTimer m_logTimer;
    int m_logPages = 0;
    mutable std::optional<Error> m_readFailure;
};

} // namespace tessaly
