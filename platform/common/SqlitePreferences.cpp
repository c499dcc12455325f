#include "platform/common/SqlitePreferences.h"

#include "platform/common/BlobEdits.h"
#include "platform/common/ValueDigest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <sqlite3.h>

#include <utility>

namespace tessaly {

namespace {

// An edit that is larger, or one more edit, is worth a new row: a start reads the row and all its edits.
constexpr qsizetype largestEdit = 16 * 1024;
constexpr qint64 mostEdits = 256;

bool isNumber(ValueType type)
{
    return type == ValueType::Flag || type == ValueType::Integer;
}

QByteArray listText(const QStringList &list)
{
    return QJsonDocument(QJsonArray::fromStringList(list)).toJson(QJsonDocument::Compact);
}

std::optional<QStringList> listFromText(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isArray())
        return std::nullopt;
    QStringList list;
    for (const QJsonValue &element : document.array())
        list.append(element.toString());
    return list;
}

// What an older program changes has no digest from then on. A program that knows digests sets one afterwards.
constexpr const char *digestSchema = R"(
ALTER TABLE preference ADD COLUMN digest INTEGER;
CREATE TRIGGER preference_changed AFTER UPDATE ON preference WHEN NEW.digest IS OLD.digest
    BEGIN UPDATE preference SET digest = NULL WHERE key = NEW.key; END;
)";

} // namespace

struct SqlitePreferences::Statements
{
    Statements(const SqliteConnection &connection, bool hasDigests)
        : begin(connection, "BEGIN IMMEDIATE"), commit(connection, "COMMIT"),
          find(connection, hasDigests ? "SELECT value_id, edits, size, digest FROM preference WHERE key = ?"
                                      : "SELECT value_id, edits, size, NULL FROM preference WHERE key = ?"),
          read(connection, "SELECT type, CASE type WHEN 4 THEN NULL ELSE content END FROM stored_value WHERE id = ?"),
          readEdits(connection, "SELECT offset, removed, inserted FROM value_edit WHERE value_id = ? AND number <= ?"
                                " ORDER BY number"),
          insert(connection, "INSERT INTO stored_value (type, content) VALUES (?, ?)"),
          insertEdit(connection, "INSERT INTO value_edit (value_id, number, offset, removed, inserted)"
                                 " VALUES (?, ?, ?, ?, ?)"),
          point(connection, "INSERT INTO preference (key, value_id, edits, size) VALUES (?1, ?2, ?3, ?4)"
                            " ON CONFLICT (key) DO UPDATE SET value_id = ?2, edits = ?3, size = ?4"),
          setDigest(connection, "UPDATE preference SET digest = ?2 WHERE key = ?1"),
          isUsed(connection, "SELECT 1 FROM preference WHERE value_id = ?"),
          removeEdits(connection, "DELETE FROM value_edit WHERE value_id = ?"),
          remove(connection, "DELETE FROM stored_value WHERE id = ?")
    {
    }

    SqliteStatement begin;
    SqliteStatement commit;
    SqliteStatement find;
    SqliteStatement read;
    SqliteStatement readEdits;
    SqliteStatement insert;
    SqliteStatement insertEdit;
    SqliteStatement point;
    SqliteStatement setDigest;
    SqliteStatement isUsed;
    SqliteStatement removeEdits;
    SqliteStatement remove;
};

SqlitePreferences::SqlitePreferences() = default;

SqlitePreferences::~SqlitePreferences() = default;

void SqlitePreferences::makeStatements()
{
    m_statements = std::make_unique<Statements>(m_connection, m_hasDigests);
}

std::optional<PreferenceValue> SqlitePreferences::value(const QString &key) const
{
    std::optional<PreferenceValue> value;
    if (const int code = readValue(key, value); code != SQLITE_OK) {
        m_readFailure = m_connection.error(code);
        return std::nullopt;
    }
    return value;
}

int SqlitePreferences::readValue(const QString &key, std::optional<PreferenceValue> &value) const
{
    Place place;
    const int code = find(key, place);
    if (code != SQLITE_OK || place.row == 0)
        return code;
    quint32 checksum = 0;
    std::optional<PreferenceValue> read;
    if (const int readCode = readPlace(place, read, checksum); readCode != SQLITE_OK)
        return readCode;
    if (place.checksum && place.checksum != checksum)
        return SQLITE_CORRUPT;
    value = std::move(read);
    return SQLITE_OK;
}

/// Also says what the checksum must be.
int SqlitePreferences::readPlace(const Place &place, std::optional<PreferenceValue> &value, quint32 &checksum) const
{
    SqliteStatement &read = m_statements->read;
    const int code = read.bind(1, place.row).step();
    const auto type = static_cast<ValueType>(read.integer(0));
    const qint64 number = isNumber(type) ? read.integer(1) : 0;
    const QByteArray bytes = isNumber(type) ? QByteArray() : read.bytes(1);
    read.reset();
    if (code != SQLITE_ROW)
        return code == SQLITE_DONE ? SQLITE_CORRUPT : code;
    checksum = checksumOfPlain(type, number, bytes);

    switch (type) {
    case ValueType::Flag:
        value = number != 0;
        return SQLITE_OK;
    case ValueType::Integer:
        value = number;
        return SQLITE_OK;
    case ValueType::Text:
        value = QString::fromUtf8(bytes);
        return SQLITE_OK;
    case ValueType::TextList:
        value = listFromText(bytes);
        return value ? SQLITE_OK : SQLITE_CORRUPT;
    case ValueType::Blob: {
        QByteArray blob;
        const int readCode = readBlob(place, blob, checksum);
        value = std::move(blob);
        return readCode;
    }
    }
    return SQLITE_CORRUPT;
}

int SqlitePreferences::readBlob(const Place &place, QByteArray &blob, quint32 &checksum) const
{
    // Read in place: a column of a row would be copied once more on its way.
    sqlite3_blob *source = nullptr;
    int code = sqlite3_blob_open(m_connection.handle(), "main", "stored_value", "content", place.row, 0, &source);
    if (code == SQLITE_OK) {
        blob.resize(sqlite3_blob_bytes(source));
        code = sqlite3_blob_read(source, blob.data(), static_cast<int>(blob.size()), 0);
    }
    sqlite3_blob_close(source);
    if (code != SQLITE_OK)
        return code;
    checksum = checksumOfBlob(blob);
    if (place.edits > 0)
        code = readEdits(place, blob, checksum);
    return code == SQLITE_OK && blob.size() != place.size ? SQLITE_CORRUPT : code;
}

/// Brings the blob of the row to the state after the edits.
int SqlitePreferences::readEdits(const Place &place, QByteArray &blob, quint32 &checksum) const
{
    SqliteStatement &read = m_statements->readEdits;
    read.bind(1, place.row).bind(2, place.edits);
    QList<StoredEdit> edits;
    int code = read.step();
    for (; code == SQLITE_ROW; code = read.step())
        edits.append({.offset = read.integer(0), .removed = read.integer(1), .inserted = read.bytes(2)});
    read.reset();
    if (code != SQLITE_DONE)
        return code;
    for (const StoredEdit &edit : std::as_const(edits))
        checksum = checksumOfEdit(checksum, edit.offset, edit.removed, edit.inserted);
    std::optional<QByteArray> edited = applyEdits(blob, edits);
    if (!edited || edits.size() != place.edits)
        return SQLITE_CORRUPT;
    blob = *std::move(edited);
    return SQLITE_OK;
}

Result<void> SqlitePreferences::setValue(const QString &key, const PreferenceValue &value)
{
    return inTransaction([&] {
        Place place;
        const int code = insert(value, place);
        return code == SQLITE_OK ? point(key, place) : code;
    });
}

Result<void> SqlitePreferences::rotate(const QString &key, const QString &backupKey, QByteArrayView blob,
                                       const std::optional<BlobEdit> &edit)
{
    return inTransaction([&] {
        Place place;
        int code = find(key, place);
        const bool isEdit = edit && place.row != 0 && place.edits < mostEdits && edit->inserted <= largestEdit &&
                            place.size - edit->removed + edit->inserted == blob.size();
        // The oldest value goes first, so that the new one can take its pages.
        if (code == SQLITE_OK && place.row != 0)
            code = point(backupKey, place);
        if (code == SQLITE_OK)
            code = isEdit ? insertEdit(place, blob, *edit) : insertBlob(blob, place);
        return code == SQLITE_OK ? point(key, place) : code;
    });
}

Result<void> SqlitePreferences::copyValue(const QString &from, const QString &to)
{
    return inTransaction([&] {
        Place place;
        const int code = find(from, place);
        return code == SQLITE_OK && place.row != 0 ? point(to, place) : code;
    });
}

Result<void> SqlitePreferences::together(const std::function<Result<void>()> &writes)
{
    Result<void> written;
    const Result<void> committed = inTransaction([&] {
        const bool isWithinAnother = std::exchange(m_isTogether, true);
        written = writes();
        m_isTogether = isWithinAnother;
        return written ? SQLITE_OK : SQLITE_ABORT;
    });
    return written ? committed : written;
}

Result<void> SqlitePreferences::inTransaction(const std::function<int()> &work)
{
    if (m_readFailure)
        return *m_readFailure;
    if (m_isTogether) {
        const int code = work();
        return code == SQLITE_OK ? Result<void>() : m_connection.error(code);
    }
    int code = m_statements->begin.run();
    if (code == SQLITE_OK)
        code = work();
    if (code == SQLITE_OK)
        code = m_statements->commit.run();
    if (code == SQLITE_OK) {
        limitLog();
        return {};
    }
    const Error error = m_connection.error(code);
    if (sqlite3_get_autocommit(m_connection.handle()) == 0)
        (void)m_connection.execute("ROLLBACK");
    return error;
}

int SqlitePreferences::find(const QString &key, Place &place) const
{
    const QByteArray name = key.toUtf8();
    SqliteStatement &find = m_statements->find;
    const int code = find.bindText(1, name).step();
    const bool isFound = code == SQLITE_ROW;
    if (isFound)
        place = {.row = find.integer(0), .edits = find.integer(1), .size = find.integer(2)};
    const bool hasDigest = isFound && !find.isNull(3);
    const qint64 digest = find.integer(3);
    find.reset();
    if (!isFound)
        return code == SQLITE_DONE ? SQLITE_OK : code;
    if (hasDigest)
        place.checksum = checksumIn(digest);
    return hasDigest && digest != digestOf(name, place) ? SQLITE_CORRUPT : SQLITE_OK;
}

qint64 SqlitePreferences::digestOf(const QByteArray &key, const Place &place)
{
    const quint32 checksum = place.checksum.value_or(0);
    return digest(checksum, key, {place.row, place.edits, place.size});
}

int SqlitePreferences::insert(const PreferenceValue &value, Place &place)
{
    if (const auto *blob = std::get_if<QByteArray>(&value))
        return insertBlob(*blob, place);
    SqliteStatement &insert = m_statements->insert;
    ValueType type = ValueType::Text;
    qint64 number = 0;
    QByteArray text;
    if (const auto *flag = std::get_if<bool>(&value)) {
        type = ValueType::Flag;
        number = *flag ? 1 : 0;
    } else if (const auto *integer = std::get_if<qint64>(&value)) {
        type = ValueType::Integer;
        number = *integer;
    } else if (const auto *string = std::get_if<QString>(&value)) {
        text = string->toUtf8();
    } else {
        type = ValueType::TextList;
        text = listText(std::get<QStringList>(value));
    }
    insert.bind(1, static_cast<qint64>(type));
    if (isNumber(type))
        insert.bind(2, number);
    else
        insert.bindText(2, text);
    const int code = insert.run();
    place = {.row = sqlite3_last_insert_rowid(m_connection.handle()), .checksum = checksumOfPlain(type, number, text)};
    return code;
}

int SqlitePreferences::insertBlob(QByteArrayView blob, Place &place)
{
    const int code = m_statements->insert.bind(1, static_cast<qint64>(ValueType::Blob)).bindBlob(2, blob).run();
    place = {
        .row = sqlite3_last_insert_rowid(m_connection.handle()), .size = blob.size(), .checksum = checksumOfBlob(blob)};
    return code;
}

/// Adds the edit that leads to `blob` to those of the row, and moves the place behind it.
int SqlitePreferences::insertEdit(Place &place, QByteArrayView blob, const BlobEdit &edit)
{
    const QByteArrayView inserted = blob.sliced(edit.offset, edit.inserted);
    place.edits += 1;
    place.size = blob.size();
    if (place.checksum)
        place.checksum = checksumOfEdit(*place.checksum, edit.offset, edit.removed, inserted);
    return m_statements->insertEdit.bind(1, place.row)
        .bind(2, place.edits)
        .bind(3, edit.offset)
        .bind(4, edit.removed)
        .bindBlob(5, inserted)
        .run();
}

/// Points the key to the place; the row it pointed to before goes when no other key points to it.
int SqlitePreferences::point(const QString &key, const Place &place)
{
    Place displaced;
    int code = find(key, displaced);
    if (code != SQLITE_OK)
        return code;
    const QByteArray name = key.toUtf8();
    code = m_statements->point.bindText(1, name).bind(2, place.row).bind(3, place.edits).bind(4, place.size).run();
    if (code == SQLITE_OK && m_hasDigests && place.checksum)
        code = m_statements->setDigest.bindText(1, name).bind(2, digestOf(name, place)).run();
    return code == SQLITE_OK && displaced.row != 0 && displaced.row != place.row ? removeUnlessUsed(displaced.row)
                                                                                 : code;
}

int SqlitePreferences::removeUnlessUsed(qint64 row)
{
    SqliteStatement &isUsed = m_statements->isUsed;
    int code = isUsed.bind(1, row).step();
    isUsed.reset();
    if (code != SQLITE_DONE)
        return code == SQLITE_ROW ? SQLITE_OK : code;
    code = m_statements->removeEdits.bind(1, row).run();
    return code == SQLITE_OK ? m_statements->remove.bind(1, row).run() : code;
}

Result<void> SqlitePreferences::checkKeys() const
{
    SqliteStatement keys(m_connection, "SELECT key FROM preference");
    int code = keys.step();
    for (; code == SQLITE_ROW; code = keys.step()) {
        Place place;
        if (const int found = find(QString::fromUtf8(keys.bytes(0)), place); found != SQLITE_OK)
            return m_connection.error(found);
    }
    return code == SQLITE_DONE ? Result<void>() : m_connection.error(code);
}

/// Gives a file of a version that knew no digests what it lacks. Where that fails, as on a full disk, the next start
/// tries again.
void SqlitePreferences::addDigests()
{
    int code = m_connection.execute("BEGIN IMMEDIATE");
    if (code == SQLITE_OK)
        code = m_connection.execute(digestSchema);
    if (code == SQLITE_OK) {
        m_hasDigests = true;
        makeStatements();
        code = fillInDigests();
    }
    if (code == SQLITE_OK)
        code = m_connection.execute("COMMIT");
    if (code == SQLITE_OK)
        return;
    m_hasDigests = false;
    makeStatements();
    if (sqlite3_get_autocommit(m_connection.handle()) == 0)
        (void)m_connection.execute("ROLLBACK");
}

int SqlitePreferences::fillInDigests()
{
    QStringList names;
    {
        SqliteStatement keys(m_connection, "SELECT key FROM preference");
        while (keys.step() == SQLITE_ROW)
            names.append(QString::fromUtf8(keys.bytes(0)));
    }
    for (const QString &name : std::as_const(names)) {
        Place place;
        std::optional<PreferenceValue> value;
        // What cannot be read gets no digest; who needs it will notice.
        quint32 checksum = 0;
        if (find(name, place) != SQLITE_OK || readPlace(place, value, checksum) != SQLITE_OK)
            continue;
        place.checksum = checksum;
        const QByteArray key = name.toUtf8();
        const int code = m_statements->setDigest.bindText(1, key).bind(2, digestOf(key, place)).run();
        if (code != SQLITE_OK)
            return code;
    }
    return SQLITE_OK;
}

} // namespace tessaly
