#include "platform/common/SqliteBackups.h"

#include "platform/common/LocalFileSystem.h"
#include "platform/common/SqlitePreferences.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTimeZone>
#include <sqlite3.h>

#include <unistd.h>

namespace tessaly {

namespace {

/// A copy gets its name only when it is whole.
const QString unfinishedName = QStringLiteral("unfinished");

/// So many pages are written, 1 MB of them, before they are brought to the disk: a save of the planner in between never
/// has to wait until the disk has taken a whole copy.
constexpr int pagesAtOnce = 32;
/// In hexadecimal digits.
constexpr qsizetype digestLength = 16;

void removeDatabase(const QString &path)
{
    for (const char *suffix : {"", "-journal", "-wal"})
        QFile::remove(path + QLatin1String(suffix));
}

Error writeFailure(const QString &folder)
{
    return {isDiskFull(folder) ? ErrorCode::StorageFull : ErrorCode::StorageUnwritable, {}};
}

Result<void> copyPages(SqliteConnection &source, SqliteConnection &copy, const QFile &file)
{
    sqlite3_backup *backup = sqlite3_backup_init(copy.handle(), "main", source.handle(), "main");
    if (!backup)
        return copy.error(sqlite3_extended_errcode(copy.handle()));
    int code = SQLITE_OK;
    while (code == SQLITE_OK) {
        code = sqlite3_backup_step(backup, pagesAtOnce);
        ::fdatasync(file.handle());
    }
    (void)sqlite3_backup_finish(backup);
    return code == SQLITE_DONE ? Result<void>() : copy.error(code);
}

/// One plain file, without a log beside it.
Result<void> copyDatabase(SqliteConnection &source, const QString &path)
{
    QFile file(path);
    // lint-allow(files): SQLite writes it; this only makes it and brings it to the disk
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return writeFailure(QFileInfo(path).path());
    {
        SqliteConnection copy;
        int code = copy.open(path, SqliteConnection::Access::Create);
        if (code == SQLITE_OK)
            code = copy.execute("PRAGMA locking_mode = EXCLUSIVE; PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF");
        if (code != SQLITE_OK)
            return copy.error(code);
        if (Result<void> copied = copyPages(source, copy, file); !copied)
            return copied;
        if (code = copy.execute("PRAGMA journal_mode = DELETE"); code != SQLITE_OK)
            return copy.error(code);
    }
    return ::fsync(file.handle()) == 0 ? Result<void>() : writeFailure(QFileInfo(path).path());
}

/// Gives the database and its log another name. The database goes first: without its log it might pass for a sound one.
bool setAside(const QString &database, Instant now)
{
    const auto milliseconds = static_cast<qint64>(now.unixSeconds() * 1000);
    const QString moment =
        QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone::utc()).toString(u"yyyyMMdd'T'HHmmsszzz'Z'");
    const QString name = QFileInfo(database).path() + QStringLiteral("/planner-damaged-%1.sqlite").arg(moment);
    for (const char *suffix : {"", "-wal", "-journal"}) {
        const QString file = database + QLatin1String(suffix);
        if (QFileInfo::exists(file) && !QFile::rename(file, name + QLatin1String(suffix)))
            return false;
    }
    return true;
}

std::optional<QString> digestOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return std::nullopt;
    return QString::fromLatin1(hash.result().toHex().first(digestLength));
}

} // namespace

SqliteBackups::SqliteBackups(const QString &directory)
    : m_database(QDir(directory).filePath(SqlitePreferences::fileName)), m_folder(folderIn(directory))
{
    m_thread.setMaxThreadCount(1);
}

SqliteBackups::~SqliteBackups() = default;

QString SqliteBackups::folderIn(const QString &directory)
{
    return QDir(directory).filePath(QStringLiteral("Backups"));
}

QString SqliteBackups::path(const Generation &generation) const
{
    return m_folder + u'/' + generationFileName(generation);
}

template <class Work, class Completion>
void SqliteBackups::ask(Work work, Completion completion)
{
    m_thread.start([this, work = std::move(work), completion = std::move(completion)]() mutable {
        auto result = work();
        QMetaObject::invokeMethod(
            &m_receiver, [completion = std::move(completion), result = std::move(result)] { completion(result); },
            Qt::QueuedConnection);
    });
}

template <class Answer, class Completion>
void SqliteBackups::askSnapshot(std::function<Result<Answer>(SqliteConnection &)> work, Completion completion)
{
    auto snapshot = std::make_shared<SqliteConnection>();
    int code = snapshot->open(m_database, SqliteConnection::Access::Exclusive);
    if (code == SQLITE_OK)
        code = snapshot->execute("BEGIN; SELECT count(*) FROM preference");
    ask(
        [snapshot, code, work = std::move(work)]() -> Result<Answer> {
            if (code != SQLITE_OK)
                return snapshot->error(code);
            return work(*snapshot);
        },
        std::move(completion));
}

void SqliteBackups::keep(const Generation &generation, KeepCompletion completion)
{
    askSnapshot<Generation>([this, generation](SqliteConnection &snapshot) { return write(snapshot, generation); },
                            std::move(completion));
}

void SqliteBackups::checkPresent(ReadCompletion completion)
{
    askSnapshot<void>(
        [this](SqliteConnection &snapshot) {
            Result<void> checked = copy(snapshot);
            removeDatabase(m_folder + u'/' + unfinishedName);
            return checked;
        },
        std::move(completion));
}

Result<void> SqliteBackups::copy(SqliteConnection &snapshot) const
{
    const QString unfinished = m_folder + u'/' + unfinishedName;
    if (!makePrivateFolder(m_folder))
        return writeFailure(m_folder);
    removeDatabase(unfinished);
    Result<void> copied = copyDatabase(snapshot, unfinished);
    if (copied) {
        const auto opened = SqlitePreferences::openCopy(unfinished);
        if (opened)
            return {};
        copied = opened.error();
    }
    removeDatabase(unfinished);
    return copied;
}

Result<Generation> SqliteBackups::write(SqliteConnection &snapshot, Generation generation) const
{
    const QString unfinished = m_folder + u'/' + unfinishedName;
    if (const Result<void> copied = copy(snapshot); !copied)
        return copied.error();
    generation.digest = digestOf(unfinished).value_or(QString());
    generation.size = QFileInfo(unfinished).size();
    const QList<Generation> former = list();
    if (!generation.isRestorePoint() && !former.isEmpty() && former.constFirst().digest == generation.digest) {
        removeDatabase(unfinished);
        return former.constFirst();
    }
    if (!QFile::rename(unfinished, path(generation)))
        return writeFailure(m_folder);
    flushFolder(m_folder);
    return generation;
}

QList<Generation> SqliteBackups::list() const
{
    QList<Generation> generations;
    const auto files = QDir(m_folder).entryInfoList(QDir::Files, QDir::Name | QDir::Reversed);
    for (const QFileInfo &file : files) {
        if (std::optional<Generation> generation = generationFromFileName(file.fileName())) {
            generation->size = file.size();
            generations.append(*std::move(generation));
        }
    }
    return generations;
}

void SqliteBackups::remove(const QList<Generation> &generations)
{
    m_thread.start([this, generations] {
        for (const Generation &generation : generations)
            QFile::remove(path(generation));
    });
}

std::optional<Generation> SqliteBackups::newestSound() const
{
    for (const Generation &generation : list()) {
        if (check(generation))
            return generation;
    }
    return std::nullopt;
}

Result<void> SqliteBackups::putBack(const Generation &generation, Instant now) const
{
    const QString directory = QFileInfo(m_database).path();
    const QString copy = m_database + QStringLiteral(".new");
    removeDatabase(copy);
    const auto failure = [&] {
        removeDatabase(copy);
        const bool isFull = QStorageInfo(directory).bytesAvailable() < generation.size;
        return isFull ? Error{ErrorCode::StorageFull, {}} : writeFailure(directory);
    };
    if (!check(generation))
        return Error{ErrorCode::StorageCorrupt, {}};
    QFile file(copy);
    // lint-allow(files): SQLite files are copied whole
    if (!QFile::copy(path(generation), copy) || !file.open(QIODevice::ReadWrite) || ::fsync(file.handle()) != 0)
        return failure();
    file.close();
    if (!setAside(m_database, now) || !QFile::rename(copy, m_database))
        return failure();
    flushFolder(directory);
    return {};
}

Result<void> SqliteBackups::check(const Generation &generation) const
{
    const std::optional<QString> digest = digestOf(path(generation));
    if (digest != generation.digest)
        return Error{ErrorCode::StorageCorrupt, {}};
    const auto opened = SqlitePreferences::openCopy(path(generation));
    return opened ? Result<void>() : opened.error();
}

void SqliteBackups::read(const Generation &generation, std::function<void(const Preferences &)> read,
                         ReadCompletion completion)
{
    ask(
        [this, generation, read = std::move(read)]() -> Result<void> {
            if (digestOf(path(generation)) != generation.digest)
                return Error{ErrorCode::StorageCorrupt, {}};
            const auto opened = SqlitePreferences::openCopy(path(generation));
            if (!opened)
                return opened.error();
            read(*opened.value());
            return {};
        },
        std::move(completion));
}

} // namespace tessaly
