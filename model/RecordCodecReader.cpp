#include "model/RecordCodecReader.h"

#include <boost/json/basic_parser_impl.hpp>

#include <bit>
#include <charconv>
#include <cstring>
#include <string>

namespace tessaly::codec {

namespace {

namespace json = boost::json;

constexpr std::size_t deepestNesting = 64;
/// A goal task: envelope, goal, subgoal, task.
constexpr std::size_t deepestRecord = 4;

/// UTF-16 units that valid UTF-8 becomes: one per byte that starts a character, one more if it starts four bytes.
qsizetype utf16Length(std::string_view utf8)
{
    constexpr std::uint64_t lowBits = 0x0101010101010101;
    const char *in = utf8.data();
    std::size_t left = utf8.size();
    auto units = qsizetype(left);
    for (; left >= sizeof lowBits; in += sizeof lowBits, left -= sizeof lowBits) {
        std::uint64_t eight;
        std::memcpy(&eight, in, sizeof eight);
        const std::uint64_t continuing = (eight >> 7) & ~(eight >> 6) & lowBits;
        const std::uint64_t leadsFour = (eight >> 7) & (eight >> 6) & (eight >> 5) & (eight >> 4) & lowBits;
        // The product's highest byte is the sum of all bytes.
        units += qsizetype((leadsFour * lowBits) >> 56) - qsizetype((continuing * lowBits) >> 56);
    }
    for (; left > 0; ++in, --left) {
        const auto byte = static_cast<unsigned char>(*in);
        units += (byte >= 0xF0 ? 1 : 0) - ((byte & 0xC0) == 0x80 ? 1 : 0);
    }
    return units;
}

using EightBytes = std::uint8_t __attribute__((vector_size(8)));
using EightUnits = std::uint16_t __attribute__((vector_size(16)));

/// Copies eight ASCII bytes at a time; stops at the first eight that are not all ASCII, or at fewer than eight.
void copyAsciiRuns(const char *&in, const char *end, char16_t *&out)
{
    constexpr std::uint64_t highBits = 0x8080808080808080;
    while (end - in >= 8) {
        std::uint64_t eight;
        std::memcpy(&eight, in, sizeof eight);
        if ((eight & highBits) != 0)
            return;
        EightBytes bytes;
        std::memcpy(&bytes, in, sizeof bytes);
        const EightUnits units = __builtin_convertvector(bytes, EightUnits);
        std::memcpy(out, &units, sizeof units);
        in += 8;
        out += 8;
    }
}

char32_t nextPoint(const char *&in)
{
    const auto next = [&in] { return static_cast<char32_t>(static_cast<unsigned char>(*in++)); };
    const char32_t lead = next();
    if (lead < 0x80)
        return lead;
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    char32_t point = lead & (0x3FU >> following);
    for (int i = 0; i < following; ++i)
        point = (point << 6) | (next() & 0x3F);
    return point;
}

/// Takes exactly the memory needed, which QString::fromUtf8 does not for text beyond ASCII.
QString textFromValidUtf8(std::string_view utf8)
{
    const qsizetype units = utf16Length(utf8);
    if (units == qsizetype(utf8.size()))
        return QString::fromLatin1(utf8.data(), units);

    QString text(units, Qt::Uninitialized);
    auto *out = reinterpret_cast<char16_t *>(text.data());
    const char *const end = utf8.data() + utf8.size();
    for (const char *in = utf8.data(); in != end;) {
        copyAsciiRuns(in, end, out);
        for (int i = 0; i < 8 && in != end; ++i) {
            const char32_t point = nextPoint(in);
            if (QChar::requiresSurrogates(point)) {
                *out++ = QChar::highSurrogate(point);
                *out++ = QChar::lowSurrogate(point);
            } else {
                *out++ = char16_t(point);
            }
        }
    }
    return text;
}

/// Values of the hexadecimal digits; 0xFF for any other byte.
constexpr auto hexValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(0xFF);
    for (std::uint8_t i = 0; i < 10; ++i)
        values[std::size_t('0') + i] = i;
    for (std::uint8_t i = 0; i < 6; ++i)
        values[std::size_t('a') + i] = values[std::size_t('A') + i] = static_cast<std::uint8_t>(10 + i);
    return values;
}();

/// Collects the parser's events into records.
///
/// A value that does not fit marks its field as bad instead of ending the parse, because a later duplicate of the key
/// may still replace it. A record that ends with a bad field, or without a required one, makes the field that holds it
/// bad, up to the root.
class Handler
{
public:
    static constexpr std::size_t max_array_size = std::size_t(-1);
    static constexpr std::size_t max_object_size = std::size_t(-1);
    static constexpr std::size_t max_string_size = std::size_t(-1);
    static constexpr std::size_t max_key_size = std::size_t(-1);

    Handler(const RecordType &rootType, void *root, bool isRootList)
        : m_rootType(rootType), m_root(root), m_isRootList(isRootList)
    {
    }

    [[nodiscard]] bool hasSucceeded() const { return !m_isRootBad && m_isRootFinished; }

    bool on_document_begin(json::error_code & /*error*/) { return true; }
    bool on_document_end(json::error_code & /*error*/) { return true; }

    bool on_object_begin(json::error_code & /*error*/)
    {
        if (m_skippedLevels != 0) {
            ++m_skippedLevels;
        } else if (m_list) {
            if (isListBad())
                m_skippedLevels = 1;
            else
                openRecord(*m_elementType, m_elementType->append(m_list));
        } else if (m_depth == 0 && !m_isRootList) {
            openRecord(m_rootType, m_root);
        } else {
            markBad();
            m_skippedLevels = 1;
        }
        return true;
    }

    bool on_object_end(std::size_t /*count*/, json::error_code & /*error*/)
    {
        if (m_skippedLevels != 0)
            --m_skippedLevels;
        else
            closeRecord();
        return true;
    }

    bool on_array_begin(json::error_code & /*error*/)
    {
        if (m_skippedLevels != 0) {
            ++m_skippedLevels;
        } else if (m_list) {
            markBad();
            m_skippedLevels = 1;
        } else if (m_depth == 0 && m_isRootList) {
            m_list = m_root;
            m_elementType = &m_rootType;
        } else if (m_field && m_field->openList) {
            m_list = m_field->openList(top().record);
            m_elementType = m_field->element;
            top().seen |= m_fieldBit;
        } else {
            markBad();
            m_skippedLevels = 1;
        }
        return true;
    }

    bool on_array_end(std::size_t /*count*/, json::error_code & /*error*/)
    {
        if (m_skippedLevels != 0) {
            --m_skippedLevels;
            return true;
        }
        m_list = nullptr;
        m_isRootFinished = m_depth == 0;
        return true;
    }

    bool on_key_part(json::string_view part, std::size_t /*total*/, json::error_code & /*error*/)
    {
        if (m_skippedLevels == 0)
            m_parts.append(part.data(), part.size());
        return true;
    }

    bool on_key(json::string_view last, std::size_t /*total*/, json::error_code & /*error*/)
    {
        if (m_skippedLevels == 0) {
            selectField(whole(last));
            m_parts.clear();
        }
        return true;
    }

    bool on_string_part(json::string_view part, std::size_t /*total*/, json::error_code & /*error*/)
    {
        if (m_skippedLevels == 0 && m_field)
            m_parts.append(part.data(), part.size());
        return true;
    }

    bool on_string(json::string_view last, std::size_t /*total*/, json::error_code & /*error*/)
    {
        if (m_skippedLevels == 0) {
            assign({.kind = Scalar::Kind::Text, .text = whole(last)});
            m_parts.clear();
        }
        return true;
    }

    bool on_number_part(json::string_view /*part*/, json::error_code & /*error*/) { return true; }

    bool on_int64(std::int64_t number, json::string_view text, json::error_code & /*error*/)
    {
        const bool isNegativeZero = number == 0 && text.front() == '-';
        assign({.kind = Scalar::Kind::Number, .number = isNegativeZero ? -0.0 : static_cast<double>(number)});
        return true;
    }

    bool on_uint64(std::uint64_t number, json::string_view /*text*/, json::error_code & /*error*/)
    {
        assign({.kind = Scalar::Kind::Number, .number = static_cast<double>(number)});
        return true;
    }

    bool on_double(double approximate, json::string_view text, json::error_code & /*error*/)
    {
        if (m_skippedLevels != 0 || !m_field)
            return assignNothing();
        // The parser's own number is up to some units in the last place off; it only tells overflow from underflow.
        Scalar value{.kind = Scalar::Kind::Number};
        const auto end = text.data() + text.size();
        const std::from_chars_result result = std::from_chars(text.data(), end, value.number);
        if (result.ec == std::errc::result_out_of_range) {
            if (!(approximate > -1 && approximate < 1))
                return assignNothing();
            value.number = text.front() == '-' ? -0.0 : 0.0;
        }
        assign(value);
        return true;
    }

    bool on_bool(bool flag, json::error_code & /*error*/)
    {
        assign({.kind = Scalar::Kind::Flag, .flag = flag});
        return true;
    }

    bool on_null(json::error_code & /*error*/)
    {
        if (m_skippedLevels != 0)
            return true;
        if (m_list || m_depth == 0)
            markBad();
        else if (m_field)
            m_field->setDefault(top().record);
        return true;
    }

    bool on_comment_part(json::string_view /*part*/, json::error_code & /*error*/) { return true; }
    bool on_comment(json::string_view /*last*/, json::error_code & /*error*/) { return true; }

private:
    /// A record that is being read, and where its parent stands meanwhile.
    struct Level
    {
        const RecordType *type;
        void *record;
        std::uint32_t seen;
        std::uint32_t bad;
        void *parentList;
        const FieldType *parentField;
        std::uint32_t parentFieldBit;
    };

    Level &top() { return m_levels[m_depth - 1]; }

    /// The string that consists of the collected parts and this last one.
    std::string_view whole(json::string_view last)
    {
        if (m_parts.empty()) [[likely]]
            return {last.data(), last.size()};
        m_parts.append(last.data(), last.size());
        return m_parts;
    }

    /// Keys mostly come in the order in which they are written, so the search starts after the last one found.
    void selectField(std::string_view key)
    {
        Level &level = top();
        const std::span<const FieldType> fields = level.type->fields;
        const std::size_t start = m_fieldBit == 0 ? 0 : std::size_t(std::countr_zero(m_fieldBit)) + 1;
        for (std::size_t i = 0, at = start; i < fields.size(); ++i, ++at) {
            if (at >= fields.size())
                at = 0;
            if (fields[at].key == key) {
                m_field = &fields[at];
                m_fieldBit = 1U << at;
                level.seen &= ~m_fieldBit;
                level.bad &= ~m_fieldBit;
                return;
            }
        }
        m_field = nullptr;
    }

    void assign(const Scalar &value)
    {
        if (m_skippedLevels != 0)
            return;
        if (m_list || m_depth == 0) {
            markBad();
        } else if (m_field) {
            if (m_field->assign(top().record, value))
                top().seen |= m_fieldBit;
            else
                markBad();
        }
    }

    /// For a value that no member can take.
    bool assignNothing()
    {
        if (m_skippedLevels == 0 && (m_list || m_field || m_depth == 0))
            markBad();
        return true;
    }

    void markBad()
    {
        if (m_depth == 0)
            m_isRootBad = true;
        else if (m_field)
            top().bad |= m_fieldBit;
    }

    bool isListBad() { return m_depth == 0 ? m_isRootBad : (top().bad & m_fieldBit) != 0; }

    void openRecord(const RecordType &type, void *record)
    {
        m_levels[m_depth++] = {&type, record, 0, 0, m_list, m_field, m_fieldBit};
        m_list = nullptr;
        m_field = nullptr;
        m_fieldBit = 0;
    }

    void closeRecord()
    {
        const Level closed = top();
        --m_depth;
        m_list = closed.parentList;
        m_field = closed.parentField;
        m_fieldBit = closed.parentFieldBit;
        if (m_list)
            m_elementType = closed.type;
        else
            m_isRootFinished = true;

        const bool isComplete = (closed.seen & closed.type->requiredFields) == closed.type->requiredFields;
        if (isComplete && closed.bad == 0) {
            closed.type->finish(closed.record, closed.seen);
            return;
        }
        markBad();
        // Nothing of a bad list is kept, so worthless input cannot pile up memory.
        if (m_list)
            closed.type->removeLast(m_list);
    }

    const RecordType &m_rootType;
    void *m_root;
    bool m_isRootList;
    bool m_isRootBad = false;
    bool m_isRootFinished = false;
    /// Levels open inside a value that is only checked for form.
    std::size_t m_skippedLevels = 0;
    /// The list that is being read in the current record, null outside of one.
    void *m_list = nullptr;
    const RecordType *m_elementType = nullptr;
    /// The field of the current record whose value comes; null for an unknown key.
    const FieldType *m_field = nullptr;
    /// The bit of the last known field.
    std::uint32_t m_fieldBit = 0;
    std::size_t m_depth = 0;
    std::array<Level, deepestRecord> m_levels;
    std::string m_parts;
};

bool readRoot(QByteArrayView text, const RecordType &type, void *root, bool isList)
{
    if (text.isEmpty())
        return false;
    json::parse_options options;
    options.max_depth = deepestNesting;
    json::basic_parser<Handler> parser(options, type, root, isList);
    json::error_code error;
    const std::size_t consumed = parser.write_some(false, text.data(), std::size_t(text.size()), error);
    return !error && parser.done() && consumed == std::size_t(text.size()) && parser.handler().hasSucceeded();
}

} // namespace

bool read(const Scalar &value, QString &member)
{
    if (value.kind != Scalar::Kind::Text)
        return false;
    member = textFromValidUtf8(value.text);
    return true;
}

bool read(const Scalar &value, double &member)
{
    member = value.number;
    return value.kind == Scalar::Kind::Number;
}

bool read(const Scalar &value, bool &member)
{
    member = value.flag;
    return value.kind == Scalar::Kind::Flag;
}

bool read(const Scalar &value, Instant &member)
{
    return read(value, member.seconds);
}

bool read(const Scalar &value, QUuid &member)
{
    constexpr std::size_t length = 36;
    if (value.kind != Scalar::Kind::Text || value.text.size() != length)
        return false;

    constexpr std::array<std::uint8_t, 16> places = {0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};
    const char *const text = value.text.data();
    bool isWellFormed = text[8] == '-' && text[13] == '-' && text[18] == '-' && text[23] == '-';
    std::array<std::uint8_t, 16> bytes;
    std::uint8_t highBits = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::uint8_t high = hexValues[static_cast<unsigned char>(text[places[i]])];
        const std::uint8_t low = hexValues[static_cast<unsigned char>(text[places[i] + 1])];
        highBits |= high | low;
        bytes[i] = static_cast<std::uint8_t>((high << 4) | low);
    }
    isWellFormed &= highBits < 16;
    if (isWellFormed)
        member = QUuid::fromRfc4122(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    return isWellFormed;
}

void finishRecord(ScheduleItem &record, std::uint32_t seen)
{
    constexpr std::uint32_t tasksField = 1U << 7;
    static_assert(fieldTypesOf<ScheduleItem>[7].key == "tasks");
    if ((seen & tasksField) == 0 && record.taskTitle)
        record.tasks = QList<ScheduleTask>{{.title = *record.taskTitle, .isComplete = record.isTaskComplete}};
}

bool readObject(QByteArrayView text, const RecordType &type, void *record)
{
    return readRoot(text, type, record, false);
}

bool readArray(QByteArrayView text, const RecordType &elementType, void *list)
{
    return readRoot(text, elementType, list, true);
}

} // namespace tessaly::codec
