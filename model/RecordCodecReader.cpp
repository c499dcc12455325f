#include "model/RecordCodecReader.h"

#include "model/RecordCodecScalar.h"

#include <boost/json/basic_parser_impl.hpp>

#include <array>
#include <bit>
#include <charconv>
#include <string>

namespace tessaly::codec {

namespace {

namespace json = boost::json;

constexpr std::size_t deepestNesting = 64;
/// A goal task: envelope, goal, subgoal, task.
constexpr std::size_t deepestRecord = 4;

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
        // The parser's own number is up to some units in the last place off; it only distinguishes overflow from
        // underflow.
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

bool readObject(QByteArrayView text, const RecordType &type, void *record)
{
    return readRoot(text, type, record, false);
}

bool readArray(QByteArrayView text, const RecordType &elementType, void *list)
{
    return readRoot(text, elementType, list, true);
}

} // namespace tessaly::codec
