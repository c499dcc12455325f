#pragma once

#include "model/CalendarFeed.h"
#include "model/SavedData.h"
#include "platform/Archives.h"
#include "platform/Preferences.h"

#include <QMap>

namespace tessaly {

class FileSystem;

/// The folder of the documents' files, from the root of the archive on.
inline const QString documentsInArchive = QStringLiteral("/documents");

/// What an archive holds besides the files of the documents.
struct ArchiveContents
{
    SavedData data = {};
    DocumentLibraryData library = {};
    QList<CalendarFeed> feeds = {};
    /// By their keys in the preferences. Only those that belong to the user, not to the machine.
    QMap<QString, PreferenceValue> settings = {};

    bool operator==(const ArchiveContents &) const = default;
};

/// The settings of the user that are stored.
[[nodiscard]] QMap<QString, PreferenceValue> storedSettings(const Preferences &preferences);

/// The files of an archive (docs/DATA.md). `documentFolder` is where the files of the documents are; those that belong
/// to no document are left out. Fails where a record has no JSON form.
[[nodiscard]] Result<QList<ArchiveEntry>> archiveEntries(const ArchiveContents &contents, const FileSystem &files,
                                                         const QString &documentFolder, Instant now);

/// Reads an archive that was unpacked into `folder`, and checks that it is whole. The `detail` of an error names the
/// file that is at fault.
[[nodiscard]] Result<ArchiveContents> readArchive(const FileSystem &files, const QString &folder);

} // namespace tessaly
