#include "platform/common/LocalFileSystem.h"
#include "platform/common/SqlitePreferences.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

namespace tessaly {

namespace {

constexpr qint64 applicationId = 0x5465736c; // "Tesl"
constexpr qint64 schemaVersion = 1;

// Big pages: a planner is a few large values.
constexpr const char *creation = R"(
PRAGMA page_size = 32768;
PRAGMA synchronous = FULL;
BEGIN IMMEDIATE;
PRAGMA application_id = 0x5465736c;
PRAGMA user_version = 1;
CREATE TABLE stored_value (id INTEGER PRIMARY KEY, type INTEGER NOT NULL, content NOT NULL);
CREATE TABLE value_edit (value_id INTEGER NOT NULL, number INTEGER NOT NULL, offset INTEGER NOT NULL,
    removed INTEGER NOT NULL, inserted BLOB NOT NULL, PRIMARY KEY (value_id, number)) WITHOUT ROWID;
CREATE TABLE preference (key TEXT NOT NULL PRIMARY KEY, value_id INTEGER NOT NULL, edits INTEGER NOT NULL,
    size INTEGER NOT NULL) WITHOUT ROWID;
COMMIT;
)";

// With secure_delete FAST freed pages are not overwritten, which would double the bytes of every save; the next saves
// take these pages.
constexpr const char *settings = R"(
PRAGMA synchronous = FULL;
PRAGMA secure_delete = FAST;
PRAGMA wal_autocheckpoint = 0;
PRAGMA journal_size_limit = 4194304;
)";

// The log is brought into the file when the planner is idle. When it is never idle, a save in between must do it.
constexpr qint64 pageBytes = 32768;
constexpr qint64 logBytesToMove = 4 * 1024 * 1024;
constexpr qint64 logBytesLimit = 64 * 1024 * 1024;
constexpr std::chrono::seconds idleTime(2);

Error failure(ErrorCode code, const QString &detail = {})
{
    return {code, detail};
}

/// Makes an empty database. It gets its name only when it is whole, so that a file of that name is never a beginning.
Result<void> createFile(const QString &path)
{
    const QString unfinished = path + QStringLiteral(".new");
    for (const char *suffix : {"", "-journal", "-wal", "-shm"})
        QFile::remove(unfinished + QLatin1String(suffix));
    {
        SqliteConnection connection;
        int code = connection.open(unfinished, SqliteConnection::Access::Create);
        if (code == SQLITE_OK)
            code = connection.execute(creation);
        if (code != SQLITE_OK)
            return connection.error(code);
    }
    if (!QFile::setPermissions(unfinished, QFile::ReadOwner | QFile::WriteOwner) || !QFile::rename(unfinished, path))
        return failure(ErrorCode::StorageUnwritable);
    return {};
}

Result<void> readPragma(const SqliteConnection &connection, const char *pragma, qint64 &value)
{
    SqliteStatement statement(connection, pragma);
    const int code = statement.step();
    if (code != SQLITE_ROW)
        return connection.error(code);
    value = statement.integer(0);
    return {};
}

} // namespace

Result<std::unique_ptr<SqlitePreferences>> SqlitePreferences::open(const QString &directory,
                                                                   std::chrono::milliseconds lockWait)
{
    const QString path = QDir(directory).filePath(fileName);
    if (!makePrivateFolder(directory))
        return failure(isDiskFull(directory) ? ErrorCode::StorageFull : ErrorCode::StorageUnwritable);
    if (!QFileInfo::exists(path)) {
        // A log without its file is all that is left of a planner; a new file would swallow it.
        if (QFileInfo(path + QStringLiteral("-wal")).size() > 0)
            return failure(ErrorCode::StorageCorrupt);
        if (Result<void> created = createFile(path); !created)
            return created.error();
    }
    std::unique_ptr<SqlitePreferences> preferences(new SqlitePreferences);
    if (Result<void> opened = preferences->openFile(path, lockWait); !opened)
        return opened.error();
    return preferences;
}

bool SqlitePreferences::isMissing(const QString &directory)
{
    const QString path = QDir(directory).filePath(fileName);
    return !QFileInfo::exists(path) && !QFileInfo::exists(path + QStringLiteral("-wal"));
}

Result<std::unique_ptr<SqlitePreferences>> SqlitePreferences::openCopy(const QString &path)
{
    std::unique_ptr<SqlitePreferences> preferences(new SqlitePreferences);
    const int code = preferences->m_connection.open(path, SqliteConnection::Access::Read);
    if (code != SQLITE_OK)
        return preferences->m_connection.error(code);
    if (Result<void> checked = preferences->check(); !checked)
        return checked.error();
    if (Result<void> prepared = preferences->prepareStatements(); !prepared)
        return prepared.error();
    if (Result<void> checked = preferences->checkValues("SELECT key FROM preference"); !checked)
        return checked.error();
    return preferences;
}

Result<void> SqlitePreferences::openFile(const QString &path, std::chrono::milliseconds lockWait)
{
    // Another process would overwrite this one's saves.
    int code = m_connection.open(path, SqliteConnection::Access::Exclusive);
    if (code == SQLITE_OK && sqlite3_db_readonly(m_connection.handle(), "main") != 0)
        return failure(ErrorCode::StorageUnwritable);
    if (code == SQLITE_OK)
        code = sqlite3_busy_timeout(m_connection.handle(), static_cast<int>(lockWait.count()));
    if (code == SQLITE_OK)
        code = m_connection.execute(settings);
    if (code != SQLITE_OK)
        return m_connection.error(code);
    if (Result<void> checked = check(); !checked)
        return checked;
    if (code = m_connection.execute("PRAGMA journal_mode = WAL; BEGIN IMMEDIATE; ROLLBACK;"); code != SQLITE_OK)
        return m_connection.error(code);

    sqlite3_wal_hook(
        m_connection.handle(),
        [](void *self, sqlite3 *, const char *, int pages) {
            static_cast<SqlitePreferences *>(self)->m_logPages = pages;
            return SQLITE_OK;
        },
        this);
    m_logTimer.setSingleShot(true);
    m_logTimer.setInterval(idleTime);
    QObject::connect(&m_logTimer, &QTimer::timeout, &m_logTimer, [this] { moveLogIntoFile(); });
    if (Result<void> prepared = prepareStatements(); !prepared)
        return prepared;
    if (!m_hasDigests)
        addDigests();
    // Blobs are checked when they are read: nobody may ever need a damaged backup.
    return checkValues("SELECT key FROM preference JOIN stored_value ON id = value_id WHERE type <> 4");
}

Result<void> SqlitePreferences::check()
{
    qint64 application = 0;
    qint64 version = 0;
    if (Result<void> read = readPragma(m_connection, "PRAGMA application_id", application); !read)
        return read;
    if (Result<void> read = readPragma(m_connection, "PRAGMA user_version", version); !read)
        return read;
    if (application != applicationId)
        return failure(ErrorCode::StorageCorrupt);
    if (version > schemaVersion)
        return failure(ErrorCode::StorageNewer, QString::number(version));

    // Every page is looked at, but not every byte: broken chains and pages used twice are found before a save could
    // make them worse. The contents of values are checked when they are decoded.
    SqliteStatement quickCheck(m_connection, "PRAGMA quick_check(1)");
    const int code = quickCheck.step();
    if (code != SQLITE_ROW)
        return m_connection.error(code);
    SqliteStatement tables(m_connection, "SELECT count(*) FROM stored_value, value_edit, preference WHERE false");
    if (quickCheck.bytes(0) != "ok" || tables.step() != SQLITE_ROW)
        return failure(ErrorCode::StorageCorrupt);
    return {};
}

Result<void> SqlitePreferences::prepareStatements()
{
    qint64 digestColumns = 0;
    if (Result<void> read = readPragma(
            m_connection, "SELECT count(*) FROM pragma_table_info('preference') WHERE name = 'digest'", digestColumns);
        !read)
        return read;
    m_hasDigests = digestColumns > 0;
    makeStatements();
    return checkKeys();
}

Result<void> SqlitePreferences::checkValues(const char *selectKeys) const
{
    SqliteStatement keys(m_connection, selectKeys);
    int code = keys.step();
    for (; code == SQLITE_ROW; code = keys.step()) {
        std::optional<PreferenceValue> value;
        if (const int readCode = readValue(QString::fromUtf8(keys.bytes(0)), value); readCode != SQLITE_OK)
            return m_connection.error(readCode);
    }
    return code == SQLITE_DONE ? Result<void>() : m_connection.error(code);
}

void SqlitePreferences::limitLog()
{
    const qint64 logBytes = m_logPages * pageBytes;
    if (logBytes >= logBytesLimit)
        moveLogIntoFile();
    else if (logBytes >= logBytesToMove)
        m_logTimer.start();
}

void SqlitePreferences::moveLogIntoFile()
{
    // A failure loses nothing: the log stays, and the next save tries again. It does not wait for a backup that is
    // still reading the log.
    if (sqlite3_wal_checkpoint_v2(m_connection.handle(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr) ==
        SQLITE_OK)
        m_logPages = 0;
}

} // namespace tessaly
