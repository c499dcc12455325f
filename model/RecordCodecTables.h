#pragma once

#include "model/RecordCodecScalar.h"
#include "model/RecordCodecSchema.h"
#include "model/RecordCodecType.h"

#include <array>
#include <type_traits>
#include <utility>

/// Makes the parser's tables of the schemas: `TypeOf<Record>::type`. Internal to the codec.
namespace tessaly::codec {

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
