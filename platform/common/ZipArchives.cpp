#include "platform/common/ZipArchives.h"

#include "platform/common/LocalFileSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <zip.h>

namespace tessaly {

namespace {

constexpr zip_uint64_t mostBytes = 4'000'000'000;
/// Of a file that is compressed already.
const QSet<QString> packedSuffixes{QStringLiteral("png"),  QStringLiteral("jpg"),  QStringLiteral("jpeg"),
                                   QStringLiteral("gif"),  QStringLiteral("webp"), QStringLiteral("heic"),
                                   QStringLiteral("avif"), QStringLiteral("jp2")};

using Source = std::unique_ptr<zip_source_t, decltype(&zip_source_free)>;
using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;

Error unwritable(const QString &path)
{
    return {isDiskFull(QFileInfo(path).path()) ? ErrorCode::StorageFull : ErrorCode::ArchiveUnwritable, path};
}

/// The detail of an error is the entry's path from the root of the archive.
Error invalidEntry(const QString &name)
{
    return {ErrorCode::ArchiveEntryInvalid, u'/' + name};
}

/// The contents of every entry. libzip copies nothing, so they have to stay until the archive is closed.
std::optional<Error> readContents(QList<ArchiveEntry> &entries)
{
    zip_uint64_t total = 0;
    for (ArchiveEntry &entry : entries) {
        if (!entry.file.isEmpty()) {
            std::optional<QByteArray> bytes = LocalFileSystem().read(entry.file);
            if (!bytes)
                return Error{ErrorCode::ArchiveSourceUnreadable, entry.file};
            entry.bytes = *std::move(bytes);
        }
        total += static_cast<zip_uint64_t>(entry.bytes.size());
        if (total > mostBytes)
            return Error{ErrorCode::ArchiveTooLarge};
    }
    return std::nullopt;
}

bool addEntry(zip_t *archive, const ArchiveEntry &entry)
{
    zip_source_t *contents =
        zip_source_buffer(archive, entry.bytes.constData(), static_cast<zip_uint64_t>(entry.bytes.size()), 0);
    const zip_int64_t index = zip_file_add(archive, entry.name.toUtf8().constData(), contents, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(contents);
        return false;
    }
    const bool isPacked = packedSuffixes.contains(QFileInfo(entry.name).suffix().toLower());
    return zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), isPacked ? ZIP_CM_STORE : ZIP_CM_DEFLATE,
                                    0) == 0;
}

std::optional<QByteArray> bytesOf(zip_source_t *source)
{
    if (zip_source_open(source) != 0)
        return std::nullopt;
    zip_stat_t stat;
    if (zip_source_stat(source, &stat) != 0 || (stat.valid & ZIP_STAT_SIZE) == 0)
        return std::nullopt;
    QByteArray bytes(static_cast<qsizetype>(stat.size), Qt::Uninitialized);
    const zip_int64_t read = zip_source_read(source, bytes.data(), stat.size);
    zip_source_close(source);
    return read == static_cast<zip_int64_t>(stat.size) ? std::optional(bytes) : std::nullopt;
}

std::optional<QByteArray> packed(const QList<ArchiveEntry> &entries)
{
    const Source source(zip_source_buffer_create(nullptr, 0, 0, nullptr), zip_source_free);
    if (!source)
        return std::nullopt;
    zip_source_keep(source.get()); // The archive takes one of the two.
    Archive archive(zip_open_from_source(source.get(), ZIP_CREATE | ZIP_TRUNCATE, nullptr), zip_discard);
    if (!archive) {
        zip_source_free(source.get());
        return std::nullopt;
    }
    for (const ArchiveEntry &entry : entries) {
        if (!addEntry(archive.get(), entry))
            return std::nullopt;
    }
    if (zip_close(archive.get()) != 0)
        return std::nullopt;
    (void)archive.release(); // Closed, it is gone.
    return bytesOf(source.get());
}

Result<void> writeArchive(const QString &path, QList<ArchiveEntry> entries)
{
    if (const std::optional<Error> error = readContents(entries))
        return *error;
    const std::optional<QByteArray> bytes = packed(entries);
    if (!bytes || !replaceFile(path, *bytes))
        return unwritable(path);
    return {};
}

bool isSafeName(const QString &name)
{
    const QStringList parts = name.split(u'/');
    return !name.contains(u'\\') && !name.contains(QChar::Null) && std::ranges::none_of(parts, [](const QString &part) {
        return part.isEmpty() || part == QLatin1String(".") || part == QLatin1String("..");
    });
}

Result<QByteArray> contentsOf(zip_t *archive, zip_uint64_t index, zip_uint64_t size, const QString &name)
{
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(zip_fopen_index(archive, index, 0), zip_fclose);
    if (!file)
        return invalidEntry(name);
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    const zip_int64_t read = zip_fread(file.get(), bytes.data(), size);
    char further = 0;
    // The checksum is compared at the end of the file.
    if (read != static_cast<zip_int64_t>(size) || zip_fread(file.get(), &further, 1) != 0)
        return invalidEntry(name);
    return bytes;
}

Result<void> extractEntries(zip_t *archive, const QString &folder)
{
    zip_uint64_t total = 0;
    QSet<QString> names;
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
        zip_stat_t stat;
        if (zip_stat_index(archive, index, 0, &stat) != 0 || (stat.valid & (ZIP_STAT_NAME | ZIP_STAT_SIZE)) == 0)
            return Error{ErrorCode::ArchiveUnreadable};
        const QString name = QString::fromUtf8(stat.name);
        if (name.endsWith(u'/'))
            continue;
        if (!isSafeName(name) || names.contains(name))
            return invalidEntry(name);
        names.insert(name);
        total += stat.size;
        if (total > mostBytes)
            return Error{ErrorCode::ArchiveTooLarge};
        const Result<QByteArray> contents = contentsOf(archive, index, stat.size, name);
        if (!contents)
            return contents.error();
        const QString target = folder + u'/' + name;
        if (!makePrivateFolder(QFileInfo(target).path()) || !replaceFile(target, contents.value()))
            return unwritable(target);
    }
    return {};
}

Result<void> extractArchive(const QString &path, const QString &folder)
{
    // What a killed program has left there is not part of this archive.
    QDir(folder).removeRecursively();
    int reason = 0;
    const Archive archive(zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &reason),
                          zip_discard);
    if (!archive)
        return Error{QFile::exists(path) ? ErrorCode::ArchiveUnreadable : ErrorCode::ArchiveSourceUnreadable, path};
    if (!makePrivateFolder(folder))
        return unwritable(folder);
    Result<void> extracted = extractEntries(archive.get(), folder);
    if (!extracted)
        QDir(folder).removeRecursively();
    return extracted;
}

} // namespace

ZipArchives::ZipArchives()
{
    m_pool.setMaxThreadCount(1);
}

ZipArchives::~ZipArchives()
{
    m_pool.waitForDone();
}

void ZipArchives::write(const QString &path, const QList<ArchiveEntry> &entries, Completion completion)
{
    run([path, entries] { return writeArchive(path, entries); }, std::move(completion));
}

void ZipArchives::extract(const QString &path, const QString &folder, Completion completion)
{
    run([path, folder] { return extractArchive(path, folder); }, std::move(completion));
}

void ZipArchives::run(std::function<Result<void>()> work, Completion completion)
{
    m_pool.start([this, work = std::move(work), completion = std::move(completion)] {
        QMetaObject::invokeMethod(
            &m_receiver, [completion, result = work()] { completion(result); }, Qt::QueuedConnection);
    });
}

} // namespace tessaly
