#include "platform/common/SqlitePreferences.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <sqlite3.h>

namespace tessaly {

namespace {

/// Stored with each value; the numbers are part of the file format.
enum class ValueType : qint64 { Flag = 0, Integer = 1, Text = 2, TextList = 3, Blob = 4 };

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

} // namespace

struct SqlitePreferences::Statements
{
    explicit Statements(const SqliteConnection &connection)
        : begin(connection, "BEGIN IMMEDIATE"), commit(connection, "COMMIT"),
          row(connection, "SELECT value_id FROM preference WHERE key = ?"),
          read(connection, "SELECT id, type, CASE type WHEN 4 THEN NULL ELSE content END FROM stored_value"
                           " WHERE id = (SELECT value_id FROM preference WHERE key = ?)"),
          insert(connection, "INSERT INTO stored_value (type, content) VALUES (?, ?)"),
          point(connection, "INSERT INTO preference (key, value_id) VALUES (?1, ?2)"
                            " ON CONFLICT (key) DO UPDATE SET value_id = ?2"),
          forget(connection, "DELETE FROM preference WHERE key = ?"),
          removeUnused(connection, "DELETE FROM stored_value WHERE id = ?1"
                                   " AND NOT EXISTS (SELECT 1 FROM preference WHERE value_id = ?1)")
    {
    }

    SqliteStatement begin;
    SqliteStatement commit;
    SqliteStatement row;
    SqliteStatement read;
    SqliteStatement insert;
    SqliteStatement point;
    SqliteStatement forget;
    SqliteStatement removeUnused;
};

SqlitePreferences::SqlitePreferences() = default;

SqlitePreferences::~SqlitePreferences() = default;

void SqlitePreferences::prepareStatements()
{
    m_statements = std::make_unique<Statements>(m_connection);
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
    const QByteArray name = key.toUtf8();
    SqliteStatement &read = m_statements->read;
    const int code = read.bindText(1, name).step();
    if (code != SQLITE_ROW) {
        read.reset();
        return code == SQLITE_DONE ? SQLITE_OK : code;
    }
    const qint64 row = read.integer(0);
    const auto type = static_cast<ValueType>(read.integer(1));
    const qint64 number = read.integer(2);
    const QByteArray bytes = read.bytes(2);
    read.reset();

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
        if (std::optional<QStringList> list = listFromText(bytes)) {
            value = *std::move(list);
            return SQLITE_OK;
        }
        return SQLITE_CORRUPT;
    case ValueType::Blob: {
        QByteArray blob;
        const int read = readBlob(row, blob);
        if (read == SQLITE_OK)
            value = std::move(blob);
        return read;
    }
    }
    return SQLITE_CORRUPT;
}

int SqlitePreferences::readBlob(qint64 row, QByteArray &blob) const
{
    // Read in place: a column of a row would be copied once more on its way.
    sqlite3_blob *source = nullptr;
    int code = sqlite3_blob_open(m_connection.handle(), "main", "stored_value", "content", row, 0, &source);
    if (code == SQLITE_OK) {
        blob.resize(sqlite3_blob_bytes(source));
        code = sqlite3_blob_read(source, blob.data(), static_cast<int>(blob.size()), 0);
    }
    sqlite3_blob_close(source);
    return code;
}

Result<void> SqlitePreferences::setValue(const QString &key, const PreferenceValue &value)
{
    return inTransaction([&] {
        qint64 row = 0;
        const int code = insert(value, row);
        return code == SQLITE_OK ? point(key, row) : code;
    });
}

Result<void> SqlitePreferences::remove(const QString &key)
{
    return inTransaction([&] {
        qint64 row = 0;
        int code = rowOf(key, row);
        if (code != SQLITE_OK || row == 0)
            return code;
        const QByteArray name = key.toUtf8();
        code = m_statements->forget.bindText(1, name).run();
        return code == SQLITE_OK ? removeUnlessUsed(row) : code;
    });
}

Result<void> SqlitePreferences::rotate(const QString &key, const QString &backupKey, QByteArrayView blob)
{
    return inTransaction([&] {
        qint64 former = 0;
        qint64 row = 0;
        int code = rowOf(key, former);
        // The oldest value goes first, so that the new one can take its pages.
        if (code == SQLITE_OK && former != 0)
            code = point(backupKey, former);
        if (code == SQLITE_OK)
            code = insertBlob(blob, row);
        return code == SQLITE_OK ? point(key, row) : code;
    });
}

Result<void> SqlitePreferences::keepAside(const QString &from, const QString &to)
{
    return inTransaction([&] {
        qint64 row = 0;
        const int code = rowOf(from, row);
        return code == SQLITE_OK && row != 0 ? point(to, row) : code;
    });
}

Result<void> SqlitePreferences::inTransaction(const std::function<int()> &work)
{
    // What could not be read may be what this write would bury.
    if (m_readFailure)
        return *m_readFailure;
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

/// The row that the key points to, 0 for none.
int SqlitePreferences::rowOf(const QString &key, qint64 &row) const
{
    const QByteArray name = key.toUtf8();
    SqliteStatement &find = m_statements->row;
    const int code = find.bindText(1, name).step();
    row = code == SQLITE_ROW ? find.integer(0) : 0;
    find.reset();
    return code == SQLITE_ROW || code == SQLITE_DONE ? SQLITE_OK : code;
}

int SqlitePreferences::insert(const PreferenceValue &value, qint64 &row)
{
    if (const auto *blob = std::get_if<QByteArray>(&value))
        return insertBlob(*blob, row);
    SqliteStatement &insert = m_statements->insert;
    QByteArray text;
    if (const auto *flag = std::get_if<bool>(&value)) {
        insert.bind(1, static_cast<qint64>(ValueType::Flag)).bind(2, *flag ? 1 : 0);
    } else if (const auto *number = std::get_if<qint64>(&value)) {
        insert.bind(1, static_cast<qint64>(ValueType::Integer)).bind(2, *number);
    } else if (const auto *string = std::get_if<QString>(&value)) {
        text = string->toUtf8();
        insert.bind(1, static_cast<qint64>(ValueType::Text)).bindText(2, text);
    } else {
        text = listText(std::get<QStringList>(value));
        insert.bind(1, static_cast<qint64>(ValueType::TextList)).bindText(2, text);
    }
    const int code = insert.run();
    row = sqlite3_last_insert_rowid(m_connection.handle());
    return code;
}

int SqlitePreferences::insertBlob(QByteArrayView blob, qint64 &row)
{
    const int code = m_statements->insert.bind(1, static_cast<qint64>(ValueType::Blob)).bindBlob(2, blob).run();
    row = sqlite3_last_insert_rowid(m_connection.handle());
    return code;
}

/// Points the key to the row; the value it pointed to before goes when no other key points to it.
int SqlitePreferences::point(const QString &key, qint64 row)
{
    qint64 displaced = 0;
    int code = rowOf(key, displaced);
    if (code != SQLITE_OK || displaced == row)
        return code;
    const QByteArray name = key.toUtf8();
    code = m_statements->point.bindText(1, name).bind(2, row).run();
    return code == SQLITE_OK && displaced != 0 ? removeUnlessUsed(displaced) : code;
}

int SqlitePreferences::removeUnlessUsed(qint64 row)
{
    return m_statements->removeUnused.bind(1, row).run();
}

} // namespace tessaly
