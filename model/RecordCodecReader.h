#pragma once

#include "model/RecordCodecSchema.h"

#include <QByteArrayView>

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

/// Reads records from JSON. Internal to the codec.
namespace tessaly::codec {

struct Scalar
{
    enum class Kind : std::uint8_t { Text, Number, Flag };

    Kind kind = Kind::Text;
    bool flag = false;
    double number = 0;
    /// Valid UTF-8.
    std::string_view text = {};
};

// Each takes the value over and says whether it is of the right type.
[[nodiscard]] bool read(const Scalar &value, QString &member);
[[nodiscard]] bool read(const Scalar &value, double &member);
[[nodiscard]] bool read(const Scalar &value, bool &member);
[[nodiscard]] bool read(const Scalar &value, Instant &member);
/// The hyphenated form, in either case.
[[nodiscard]] bool read(const Scalar &value, QUuid &member);

template <class Value>
[[nodiscard]] bool read(const Scalar &value, std::optional<Value> &member)
{
    return read(value, member.emplace());
}
template <class Record>
[[nodiscard]] bool read(const Scalar & /*value*/, QList<Record> & /*member*/)
{
    return false;
}
template <class Record>
[[nodiscard]] bool read(const Scalar & /*value*/, std::optional<QList<Record>> & /*member*/)
{
    return false;
}

struct RecordType;

/// A field of a record whose type the parser does not know.
struct FieldType
{
    std::string_view key;
    bool isRequired;
    bool (*assign)(void *record, const Scalar &value);
    void (*setDefault)(void *record);
    /// The member as an empty list; null unless the field is a list of records.
    void *(*openList)(void *record);
    const RecordType *element;
};

struct RecordType
{
    std::span<const FieldType> fields;
    /// One bit per field, the first field lowest.
    std::uint32_t requiredFields;
    void *(*append)(void *list);
    void (*removeLast)(void *list);
    /// Completes the record; `seen` has the bits of the fields that have a value.
    void (*finish)(void *record, std::uint32_t seen);
};

/// False, with the record in an unspecified state, unless the whole text is one object of that type.
[[nodiscard]] bool readObject(QByteArrayView json, const RecordType &type, void *record);
/// The same for an array of such objects.
[[nodiscard]] bool readArray(QByteArrayView json, const RecordType &elementType, void *list);

/// A record without an identity: making one up for each record that is about to be read would be costly.
template <class Record>
[[nodiscard]] Record blank()
{
    if constexpr (requires { Record::id; })
        return Record{.id = QUuid()};
    else
        return Record();
}

/// Turns into a blank record where one is wanted, so that a list can make its new element in place.
template <class Record>
struct BlankMaker
{
    operator Record() const { return blank<Record>(); } // NOLINT(google-explicit-constructor)
};

template <class Member>
struct ListOf : std::false_type
{
};
template <class Record>
struct ListOf<QList<Record>> : std::true_type
{
    using Element = Record;
    static QList<Record> &open(QList<Record> &member)
    {
        member.clear();
        return member;
    }
};
template <class Record>
struct ListOf<std::optional<QList<Record>>> : std::true_type
{
    using Element = Record;
    static QList<Record> &open(std::optional<QList<Record>> &member) { return member.emplace(); }
};

template <class Record>
void finishRecord(Record & /*record*/, std::uint32_t /*seen*/)
{
}
/// Schedules of early versions have a single task in two fields of their own.
void finishRecord(ScheduleItem &record, std::uint32_t seen);

template <class Record>
struct TypeOf
{
    static const RecordType type;
};

template <class Record, class ReadField>
constexpr FieldType fieldType()
{
    using List = ListOf<std::remove_reference_t<decltype(std::declval<Record &>().*ReadField::member)>>;
    FieldType field{
        .key = ReadField::key,
        .isRequired = ReadField::presence == Presence::Required,
        .assign = [](void *record,
                     const Scalar &value) { return read(value, static_cast<Record *>(record)->*ReadField::member); },
        .setDefault =
            [](void *record) {
                static_cast<Record *>(record)->*ReadField::member = blank<Record>().*ReadField::member;
            },
        .openList = nullptr,
        .element = nullptr};
    if constexpr (List::value) {
        field.openList = [](void *record) -> void * {
            return &List::open(static_cast<Record *>(record)->*ReadField::member);
        };
        field.element = &TypeOf<typename List::Element>::type;
    }
    return field;
}

template <class Record, class... Fields>
constexpr std::array<FieldType, sizeof...(Fields)> fieldTypes(FieldList<Fields...>)
{
    return {fieldType<Record, Fields>()...};
}

template <class Record>
inline constexpr auto fieldTypesOf = fieldTypes<Record>(typename Schema<Record>::Fields());

constexpr std::uint32_t requiredFields(std::span<const FieldType> fields)
{
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < fields.size(); ++i)
        bits |= fields[i].isRequired ? 1U << i : 0U;
    return bits;
}

template <class Record>
void finish(void *record, std::uint32_t seen)
{
    Record &finished = *static_cast<Record *>(record);
    if constexpr (requires { Record::id; }) {
        constexpr std::uint32_t idField = 1;
        if ((seen & idField) == 0)
            finished.id = QUuid::createUuid();
    }
    finishRecord(finished, seen);
}

template <class Record>
const RecordType TypeOf<Record>::type{
    .fields = fieldTypesOf<Record>,
    .requiredFields = requiredFields(fieldTypesOf<Record>),
    .append = [](void *list) -> void * {
        return &static_cast<QList<Record> *>(list)->emplaceBack(BlankMaker<Record>());
    },
    .removeLast = [](void *list) { static_cast<QList<Record> *>(list)->removeLast(); },
    .finish = finish<Record>};

} // namespace tessaly::codec
