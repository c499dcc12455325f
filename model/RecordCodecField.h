#pragma once

#include <cstddef>
#include <string_view>

/// The words in which RecordCodecSchema.h describes the records. Internal to the codec.
namespace tessaly::codec {

/// What a missing key means.
enum class Presence {
    Required,     ///< the decode fails
    Optional,     ///< the member keeps its default
    FreshIfAbsent ///< a new UUID
};

/// A key as a template argument.
template <std::size_t Size>
struct Key
{
    char text[Size] = {};

    consteval Key(const char (&literal)[Size]) // NOLINT(google-explicit-constructor)
    {
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }
    [[nodiscard]] constexpr std::string_view view() const { return {text, Size - 1}; }
};

template <Key KeyText, auto Member, Presence KeyPresence>
struct Field
{
    static constexpr std::string_view key = KeyText.view();
    static constexpr auto member = Member;
    static constexpr Presence presence = KeyPresence;
};

template <class... Fields>
struct FieldList
{
};

/// `Schema<Record>::Fields`: the fields in the order in which they are written; the first one is always written.
template <class Record>
struct Schema;

} // namespace tessaly::codec
