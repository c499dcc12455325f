#pragma once

#include "model/RecordCodecSchema.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QUuid>

#include <cstring>
#include <optional>
#include <string_view>

/// Writes records as compact JSON (RFC 8259, UTF-8). Internal to the codec.
namespace tessaly::codec {

/// A growing buffer of JSON text that keeps its memory between uses, because fresh memory costs several times as much
/// as writing to it. A value without a JSON form leaves the buffer failed until the next clear().
class Writer
{
public:
    Writer() = default;
    Q_DISABLE_COPY_MOVE(Writer)

    void clear()
    {
        m_size = 0;
        m_hasFailed = false;
    }
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }
    [[nodiscard]] qsizetype size() const { return m_size; }
    /// Valid until the next change.
    [[nodiscard]] QByteArrayView bytes() const { return {m_bytes.constData(), m_size}; }
    /// Hands the text over and forgets it.
    [[nodiscard]] QByteArray take();
    /// Replaces `removed` bytes at `offset` by `text`.
    void splice(qsizetype offset, qsizetype removed, QByteArrayView text);
    /// Gives memory back when more than this many bytes are kept.
    void releaseBeyond(qsizetype limit);

    void raw(char character) { *grow(1) = character; }
    void raw(std::string_view text) { std::memcpy(grow(qsizetype(text.size())), text.data(), text.size()); }

    void value(const QString &text);
    /// Shortest text that reads back to the same double.
    void value(double number);
    void value(Instant instant) { value(instant.seconds); }
    void value(bool flag) { raw(flag ? std::string_view("true") : std::string_view("false")); }
    void value(const QUuid &id);

private:
    /// Room for `count` more bytes, which count as written.
    char *grow(qsizetype count)
    {
        if (m_bytes.size() - m_size < count)
            makeRoom(count);
        char *const start = m_data + m_size;
        m_size += count;
        return start;
    }
    void makeRoom(qsizetype count);

    QByteArray m_bytes; // its size is the capacity
    char *m_data = nullptr;
    qsizetype m_size = 0;
    bool m_hasFailed = false;
};

template <class Record>
void write(Writer &writer, const Record &record);

template <class Record>
void writeList(Writer &writer, const QList<Record> &records)
{
    writer.raw('[');
    bool isFirst = true;
    for (const Record &record : records) {
        if (!isFirst)
            writer.raw(',');
        isFirst = false;
        write(writer, record);
    }
    writer.raw(']');
}

template <class Value>
void writeValue(Writer &writer, const Value &value)
{
    writer.value(value);
}

template <class Record>
void writeValue(Writer &writer, const QList<Record> &records)
{
    writeList(writer, records);
}

/// `{"key":` or `,"key":` as one piece of memory.
template <char Before, class WrittenField>
inline constexpr auto keyPiece = [] {
    struct
    {
        char text[WrittenField::key.size() + 4] = {};
    } piece;
    char *out = piece.text;
    *out++ = Before;
    *out++ = '"';
    for (const char character : WrittenField::key)
        *out++ = character;
    *out++ = '"';
    *out = ':';
    return piece;
}();

template <char Before, class WrittenField, class Value>
void writeField(Writer &writer, const Value &value)
{
    constexpr const auto &piece = keyPiece<Before, WrittenField>;
    writer.raw(std::string_view(piece.text, sizeof piece.text));
    writeValue(writer, value);
}

template <char Before, class WrittenField, class Value>
void writeField(Writer &writer, const std::optional<Value> &value)
{
    static_assert(Before == ',', "the first field must always be there");
    if (value)
        writeField<Before, WrittenField>(writer, *value);
}

template <class Record>
void write(Writer &writer, const Record &record)
{
    const auto writeFields = [&]<class First, class... Rest>(FieldList<First, Rest...>) {
        writeField<'{', First>(writer, record.*First::member);
        (writeField<',', Rest>(writer, record.*Rest::member), ...);
    };
    writeFields(typename Schema<Record>::Fields());
    writer.raw('}');
}

} // namespace tessaly::codec
