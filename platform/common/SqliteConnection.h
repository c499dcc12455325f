#pragma once

#include "model/Result.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace tessaly {

/// One connection to an SQLite file, for use from one thread. Calls answer with an SQLite result code, 0 for success;
/// error() puts the last failure into the planner's terms.
class SqliteConnection
{
public:
    SqliteConnection() = default;
    SqliteConnection(const SqliteConnection &) = delete;
    SqliteConnection &operator=(const SqliteConnection &) = delete;
    /// Closing brings the write-ahead log into the file and removes it.
    ~SqliteConnection();

    enum class Access {
        Create,    ///< also makes the file
        Exclusive, ///< keeps other processes out; connections of this process share the file
        Read,
    };
    [[nodiscard]] int open(const QString &path, Access access);
    [[nodiscard]] int execute(const char *sql);
    [[nodiscard]] Error error(int code) const;
    [[nodiscard]] sqlite3 *handle() const { return m_handle; }

private:
    sqlite3 *m_handle = nullptr;
};

/// A prepared statement that is used again and again. Parameters and columns count from 1 and from 0, as in SQLite.
class SqliteStatement
{
public:
    /// A statement that cannot be prepared fails at each step.
    SqliteStatement(const SqliteConnection &connection, const char *sql);

    SqliteStatement &bind(int parameter, qint64 value);
    /// The bytes of the next two must stay where they are until the statement was run.
    SqliteStatement &bindText(int parameter, QByteArrayView utf8);
    SqliteStatement &bindBlob(int parameter, QByteArrayView blob);

    /// Runs to the next row: SQLITE_ROW, SQLITE_DONE or an error.
    [[nodiscard]] int step();
    /// Runs a statement that has no rows, and resets it: 0 or an error.
    [[nodiscard]] int run();
    void reset();

    [[nodiscard]] qint64 integer(int column) const;
    [[nodiscard]] QByteArray bytes(int column) const;
    [[nodiscard]] bool isNull(int column) const;

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    int m_failure = 0;
};

} // namespace tessaly
