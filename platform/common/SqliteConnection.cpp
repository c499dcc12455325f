#include "platform/common/SqliteConnection.h"

#include <sqlite3.h>

#include <cerrno>

namespace tessaly {

namespace {

ErrorCode errorCode(int code, int systemError)
{
    const bool isSpaceLacking = systemError == ENOSPC || systemError == EDQUOT;
    switch (code & 0xff) {
    case SQLITE_FULL:
        return ErrorCode::StorageFull;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorCode::StorageLocked;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
    case SQLITE_CANTOPEN:
        return isSpaceLacking ? ErrorCode::StorageFull : ErrorCode::StorageUnwritable;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return ErrorCode::StorageCorrupt;
    case SQLITE_IOERR:
        if (isSpaceLacking)
            return ErrorCode::StorageFull;
        if (systemError == EROFS || systemError == EACCES)
            return ErrorCode::StorageUnwritable;
        return ErrorCode::StorageFailed;
    default:
        return ErrorCode::StorageFailed;
    }
}

} // namespace

SqliteConnection::~SqliteConnection()
{
    sqlite3_close_v2(m_handle);
}

int SqliteConnection::open(const QString &path, Access access)
{
    int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    flags |= access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    if (access == Access::Create)
        flags |= SQLITE_OPEN_CREATE;
    // Holds the lock of the file as long as it is open, and keeps the index of the log in memory instead of a file.
    const char *system = access == Access::Exclusive ? "unix-excl" : nullptr;
    return sqlite3_open_v2(path.toUtf8().constData(), &m_handle, flags, system);
}

int SqliteConnection::execute(const char *sql)
{
    return sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr);
}

Error SqliteConnection::error(int code) const
{
    const int systemError = m_handle ? sqlite3_system_errno(m_handle) : 0;
    const ErrorCode kind = errorCode(code, systemError);
    return {kind, kind == ErrorCode::StorageFailed ? QString::number(code) : QString()};
}

void SqliteStatement::Finalizer::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(const SqliteConnection &connection, const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    m_failure = sqlite3_prepare_v3(connection.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    m_statement.reset(statement);
}

SqliteStatement &SqliteStatement::bind(int parameter, qint64 value)
{
    sqlite3_bind_int64(m_statement.get(), parameter, value);
    return *this;
}

SqliteStatement &SqliteStatement::bindText(int parameter, QByteArrayView utf8)
{
    // A null pointer would be stored as NULL, not as an empty text.
    sqlite3_bind_text64(m_statement.get(), parameter, utf8.isEmpty() ? "" : utf8.data(),
                        static_cast<sqlite3_uint64>(utf8.size()), SQLITE_STATIC, SQLITE_UTF8);
    return *this;
}

SqliteStatement &SqliteStatement::bindBlob(int parameter, QByteArrayView blob)
{
    sqlite3_bind_blob64(m_statement.get(), parameter, blob.isEmpty() ? "" : blob.data(),
                        static_cast<sqlite3_uint64>(blob.size()), SQLITE_STATIC);
    return *this;
}

int SqliteStatement::step()
{
    return m_statement ? sqlite3_step(m_statement.get()) : m_failure;
}

int SqliteStatement::run()
{
    const int code = step();
    reset();
    return code == SQLITE_DONE || code == SQLITE_ROW ? SQLITE_OK : code;
}

void SqliteStatement::reset()
{
    sqlite3_reset(m_statement.get());
    sqlite3_clear_bindings(m_statement.get());
}

qint64 SqliteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

QByteArray SqliteStatement::bytes(int column) const
{
    const void *data = sqlite3_column_blob(m_statement.get(), column);
    return {static_cast<const char *>(data), sqlite3_column_bytes(m_statement.get(), column)};
}

bool SqliteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

} // namespace tessaly
