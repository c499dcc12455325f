#include "model/Utf8Text.h"

#include <cstdint>
#include <cstring>

namespace tessaly::codec {

namespace {

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

} // namespace

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

} // namespace tessaly::codec
