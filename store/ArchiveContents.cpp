#include "store/ArchiveContents.h"

#include "model/ICalendarWriter.h"
#include "model/RecordCodec.h"
#include "model/UserCalendar.h"
#include "model/Uuid.h"
#include "platform/FileSystem.h"
#include "store/DisplayChoices.h"
#include "store/PreferenceKeys.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr int archiveFormat = 1;

// Files of the archive.
const QString manifestName = u"tessaly.json"_s;
const QString dataName = u"data.json"_s;
const QString libraryName = u"documents.json"_s;
const QString feedsName = u"links.json"_s;
const QString settingsName = u"settings.json"_s;
const QString calendarName = u"schedules.ics"_s;

const QStringList &settingKeys()
{
    static const QStringList names =
        QStringList{keys::preferredName,      keys::interfaceLanguage,     keys::appearanceMode,
                    keys::displayStartHour,   keys::displayEndHour,        keys::selectedCalendarIDs,
                    keys::visibleCalendarIDs, keys::automaticCalendarSync, keys::leadMinutes} +
        DisplayChoices::storedKeys();
    return names;
}

QJsonValue jsonOf(const PreferenceValue &value)
{
    if (const auto *flag = std::get_if<bool>(&value))
        return *flag;
    if (const auto *number = std::get_if<qint64>(&value))
        return *number;
    if (const auto *list = std::get_if<QStringList>(&value))
        return QJsonArray::fromStringList(*list);
    const auto *text = std::get_if<QString>(&value);
    return text ? QJsonValue(*text) : QJsonValue();
}

std::optional<PreferenceValue> preferenceOf(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool();
    if (value.isDouble())
        return value.toInteger();
    if (value.isString())
        return value.toString();
    if (!value.isArray())
        return std::nullopt;
    QStringList texts;
    for (const QJsonValue &each : value.toArray()) {
        if (!each.isString())
            return std::nullopt;
        texts.append(each.toString());
    }
    return texts;
}

/// The names of the documents' files, from their folder on.
QStringList documentFiles(const QList<MarkdownDocument> &documents, const FileSystem &files, const QString &folder)
{
    QSet<QString> ids;
    for (const MarkdownDocument &document : documents)
        ids.insert(uuidText(document.id));
    const qsizetype idLength = uuidText({}).size();
    QStringList names;
    for (const QString &name : files.fileNames(folder)) {
        if (ids.contains(name.left(idLength)))
            names.append(name);
    }
    const QString assets = folder + u"/Assets"_s;
    for (const QString &name : files.filesBeneath(assets)) {
        if (ids.contains(name.section(u'/', -1).left(idLength)))
            names.append(u"Assets/"_s + name);
    }
    names.sort();
    return names;
}

QByteArray manifest(const QList<ArchiveEntry> &entries, Instant now)
{
    QJsonArray names;
    for (const ArchiveEntry &entry : entries)
        names.append(entry.name);
    const QDateTime created = UserCalendar(QTimeZone::utc(), Qt::Monday, QLocale::c()).dateTime(now);
    return QJsonDocument({{u"format"_s, archiveFormat},
                          {u"program"_s, u"Tessaly "_s + QCoreApplication::applicationVersion()},
                          {u"created"_s, created.toString(Qt::ISODate)},
                          {u"files"_s, names}})
        .toJson();
}

QByteArray settingsJson(const QMap<QString, PreferenceValue> &settings)
{
    QJsonObject object;
    for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
        object.insert(setting.key(), jsonOf(*setting));
    return QJsonDocument(object).toJson();
}

/// Nothing where it is no object. Unknown settings are passed over.
std::optional<QMap<QString, PreferenceValue>> decodeSettings(QByteArrayView json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json.toByteArray());
    if (!document.isObject())
        return std::nullopt;
    QMap<QString, PreferenceValue> settings;
    const QJsonObject object = document.object();
    for (const QString &key : settingKeys()) {
        if (!object.contains(key))
            continue;
        std::optional<PreferenceValue> value = preferenceOf(object.value(key));
        if (!value)
            return std::nullopt;
        settings.insert(key, *std::move(value));
    }
    return settings;
}

/// Reads the files of one archive until one of them is at fault.
class Reader
{
public:
    Reader(const FileSystem &files, const QString &folder) : m_files(files), m_folder(folder) {}

    void checkManifest()
    {
        const std::optional<QByteArray> bytes = m_files.read(path(manifestName));
        const QJsonDocument document = QJsonDocument::fromJson(bytes.value_or(QByteArray()));
        const int format = document.object().value("format"_L1).toInt();
        if (format < 1)
            m_error = Error{ErrorCode::ArchiveUnreadable};
        else if (format > archiveFormat)
            m_error = Error{ErrorCode::ArchiveNewer};
        for (const QJsonValue &name : document.object().value("files"_L1).toArray()) {
            if (!m_error && !m_files.exists(path(name.toString())))
                m_error = Error{ErrorCode::ArchiveEntryMissing, u'/' + name.toString()};
        }
    }

    template <class Value>
    void read(const QString &name, Value &into, std::optional<Value> (*decode)(QByteArrayView))
    {
        if (m_error)
            return;
        const std::optional<QByteArray> bytes = m_files.read(path(name));
        std::optional<Value> value = bytes ? decode(*bytes) : std::nullopt;
        if (value)
            into = *std::move(value);
        else
            m_error = Error{bytes ? ErrorCode::ArchiveEntryInvalid : ErrorCode::ArchiveEntryMissing, u'/' + name};
    }

    [[nodiscard]] const std::optional<Error> &error() const { return m_error; }

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder + u'/' + name; }

    const FileSystem &m_files;
    QString m_folder;
    std::optional<Error> m_error;
};

} // namespace

QMap<QString, PreferenceValue> storedSettings(const Preferences &preferences)
{
    QMap<QString, PreferenceValue> settings;
    for (const QString &key : settingKeys()) {
        if (std::optional<PreferenceValue> value = preferences.value(key))
            settings.insert(key, *std::move(value));
    }
    return settings;
}

Result<QList<ArchiveEntry>> archiveEntries(const ArchiveContents &contents, const FileSystem &files,
                                           const QString &documentFolder, Instant now)
{
    const std::optional<QByteArray> data = encodeSavedData(contents.data);
    const std::optional<QByteArray> library = encodeDocumentLibrary(contents.library);
    const std::optional<QByteArray> feeds = encodeCalendarFeeds(contents.feeds);
    if (!data || !library || !feeds)
        return Error{ErrorCode::StorageFailed};
    QList<ArchiveEntry> entries{{dataName, *data},
                                {libraryName, *library},
                                {feedsName, *feeds},
                                {settingsName, settingsJson(contents.settings)},
                                {calendarName, calendarText(contents.data.schedules, now)}};
    for (const QString &name : documentFiles(contents.library.documents, files, documentFolder))
        entries.append({.name = documentsInArchive.sliced(1) + u'/' + name, .file = documentFolder + u'/' + name});
    entries.prepend({manifestName, manifest(entries, now)});
    return entries;
}

Result<ArchiveContents> readArchive(const FileSystem &files, const QString &folder)
{
    ArchiveContents contents;
    Reader reader(files, folder);
    reader.checkManifest();
    reader.read(dataName, contents.data, decodeSavedData);
    reader.read(libraryName, contents.library, decodeDocumentLibrary);
    reader.read(feedsName, contents.feeds, decodeCalendarFeeds);
    reader.read(settingsName, contents.settings, decodeSettings);
    if (reader.error())
        return *reader.error();
    return contents;
}

} // namespace tessaly
