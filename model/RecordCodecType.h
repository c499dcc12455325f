#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// What the parser knows of the records that it fills. Internal to the codec.
namespace tessaly::codec {

struct Scalar;
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

} // namespace tessaly::codec
