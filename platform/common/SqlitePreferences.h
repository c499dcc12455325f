#pragma once

#include "platform/common/SqliteConnection.h"
#include "platform/Preferences.h"

#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace tessaly {

/// The preferences in one SQLite file. Keys point to value rows, so that a value can move from one key to another
/// without its bytes being copied, and to a number of edits of the row, so that a small change of a large blob is a
/// small write. The file belongs to one process at a time. docs/DATA.md describes the layout.
class SqlitePreferences final : public Preferences
{
public:
    inline static const QString fileName = QStringLiteral("planner.sqlite");

    /// Opens the file in the directory; creates both when neither exists yet. A file that is there already is never
    /// replaced: damaged, not the planner's, from a newer version, in use or not writable, it is an error. Waits at
    /// most `lockWait` for another process to let go of it.
    [[nodiscard]] static Result<std::unique_ptr<SqlitePreferences>>
    open(const QString &directory, std::chrono::milliseconds lockWait = std::chrono::seconds(1));
    /// Whether the directory has no such file, nor a log of one.
    [[nodiscard]] static bool isMissing(const QString &directory);
    /// Opens a copy of such a file, made while it was not being written, for reading only. Every value in it can be
    /// read.
    [[nodiscard]] static Result<std::unique_ptr<SqlitePreferences>> openCopy(const QString &path);
    ~SqlitePreferences() override;

    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override;
    [[nodiscard]] Result<void> setValue(const QString &key, const PreferenceValue &value) override;
    [[nodiscard]] Result<void> rotate(const QString &key, const QString &backupKey, QByteArrayView blob,
                                      const std::optional<BlobEdit> &edit = std::nullopt) override;
    [[nodiscard]] Result<void> copyValue(const QString &from, const QString &to) override;
    [[nodiscard]] Result<void> together(const std::function<Result<void>()> &writes) override;

    /// Why an existing value could not be read: it is damaged, or the disk failed. Nothing is written from then on,
    /// since a write might overwrite what could not be read.
    [[nodiscard]] const std::optional<Error> &readFailure() const { return m_readFailure; }

private:
    struct Statements;
    /// What a key points to. Row 0 is nothing.
    struct Place
    {
        qint64 row = 0;
        qint64 edits = 0;
        /// Of the value after the edits, in bytes; 0 for values that are no blobs.
        qint64 size = 0;
        /// Checksum of the value and these edits; absent where a version wrote them that knew none.
        std::optional<quint32> checksum = {};
    };

    SqlitePreferences();
    [[nodiscard]] Result<void> openFile(const QString &path, std::chrono::milliseconds lockWait);
    [[nodiscard]] Result<void> check();
    [[nodiscard]] Result<void> prepareStatements();
    void makeStatements();
    [[nodiscard]] Result<void> checkKeys() const;
    [[nodiscard]] Result<void> checkValues(const char *selectKeys) const;
    void addDigests();
    [[nodiscard]] int fillInDigests();
    [[nodiscard]] Result<void> inTransaction(const std::function<int()> &work);
    [[nodiscard]] static qint64 digestOf(const QByteArray &key, const Place &place);
    [[nodiscard]] int find(const QString &key, Place &place) const;
    [[nodiscard]] int insert(const PreferenceValue &value, Place &place);
    [[nodiscard]] int insertBlob(QByteArrayView blob, Place &place);
    [[nodiscard]] int insertEdit(Place &place, QByteArrayView blob, const BlobEdit &edit);
    [[nodiscard]] int point(const QString &key, const Place &place);
    [[nodiscard]] int removeUnlessUsed(qint64 row);
    [[nodiscard]] int readValue(const QString &key, std::optional<PreferenceValue> &value) const;
    [[nodiscard]] int readPlace(const Place &place, std::optional<PreferenceValue> &value, quint32 &checksum) const;
    /// The next two also say what the checksum must be.
    [[nodiscard]] int readBlob(const Place &place, QByteArray &blob, quint32 &checksum) const;
    [[nodiscard]] int readEdits(const Place &place, QByteArray &blob, quint32 &checksum) const;
    void limitLog();
    void moveLogIntoFile();

    SqliteConnection m_connection;
    std::unique_ptr<Statements> m_statements;
    QTimer m_logTimer;
    int m_logPages = 0;
    bool m_hasDigests = false;
    /// A transaction is open that each further write belongs to.
    bool m_isTogether = false;
    mutable std::optional<Error> m_readFailure;
};

} // namespace tessaly
