#include "model/RecordCodecWriter.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace tessaly::codec {

namespace {

constexpr char upperHexDigits[] = "0123456789ABCDEF";

constexpr auto hexPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {upperHexDigits[byte >> 4], upperHexDigits[byte & 15]};
    return pairs;
}();

/// Most bytes that one UTF-16 unit becomes: \u00XX.
constexpr qsizetype bytesPerUnit = 6;

/// The letter of the two-character escape of an ASCII unit, 0 when it stands for itself, 'u' when it has none.
constexpr auto escapeLetters = [] {
    std::array<char, 128> letters{};
    for (int control = 0; control < 0x20; ++control)
        letters[control] = 'u';
    letters['\b'] = 'b';
    letters['\f'] = 'f';
    letters['\n'] = 'n';
    letters['\r'] = 'r';
    letters['\t'] = 't';
    letters['"'] = '"';
    letters['\\'] = '\\';
    return letters;
}();

char *writeEscape(char *out, char16_t unit)
{
    const char letter = escapeLetters[unit];
    *out++ = '\\';
    *out++ = letter;
    if (letter != 'u')
        return out;
    *out++ = '0';
    *out++ = '0';
    *out++ = upperHexDigits[unit >> 4];
    *out++ = upperHexDigits[unit & 15];
    return out;
}

char *writeUtf8(char *out, char32_t point)
{
    if (point < 0x800) {
        *out++ = static_cast<char>(0xC0 | (point >> 6));
    } else {
        if (point < 0x10000) {
            *out++ = static_cast<char>(0xE0 | (point >> 12));
        } else {
            *out++ = static_cast<char>(0xF0 | (point >> 18));
            *out++ = static_cast<char>(0x80 | ((point >> 12) & 0x3F));
        }
        *out++ = static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    }
    *out++ = static_cast<char>(0x80 | (point & 0x3F));
    return out;
}

using EightUnits = std::uint16_t __attribute__((vector_size(16)));
using EightBytes = std::uint8_t __attribute__((vector_size(8)));

/// Copies ASCII that stands for itself, eight units at a time while there are so many. `out` must have room for eight
/// bytes more than are written.
void copyPlainRun(const char16_t *&in, const char16_t *end, char *&out)
{
    constexpr std::uint16_t firstPlain = 0x20;
    constexpr std::uint16_t lastPlain = 0x7F;
    constexpr std::uint16_t quote = '"';
    constexpr std::uint16_t backslash = '\\';
    constexpr int bitsPerUnit = 16;
    static_assert(std::endian::native == std::endian::little, "the first unit is looked for in the lowest bits");
    for (; end - in >= 8; in += 8, out += 8) {
        EightUnits units;
        std::memcpy(&units, in, sizeof units);
        const auto hits = (units < firstPlain) | (units > lastPlain) | (units == quote) | (units == backslash);
        const EightBytes bytes = __builtin_convertvector(units, EightBytes);
        std::memcpy(out, &bytes, sizeof bytes);
        std::uint64_t halves[2];
        std::memcpy(halves, &hits, sizeof halves);
        if ((halves[0] | halves[1]) == 0)
            continue;
        const int plain =
            halves[0] != 0 ? std::countr_zero(halves[0]) / bitsPerUnit : 4 + std::countr_zero(halves[1]) / bitsPerUnit;
        in += plain;
        out += plain;
        return;
    }
    while (in != end && *in < escapeLetters.size() && escapeLetters[*in] == 0)
        *out++ = static_cast<char>(*in++);
}

/// Writes one character that does not stand for itself; a surrogate without its partner becomes U+FFFD.
void writeOther(const char16_t *&in, const char16_t *end, char *&out)
{
    const char16_t unit = *in++;
    if (unit < escapeLetters.size()) {
        out = writeEscape(out, unit);
        return;
    }
    char32_t point = unit;
    if (QChar::isSurrogate(unit)) {
        if (QChar::isHighSurrogate(unit) && in != end && QChar::isLowSurrogate(*in))
            point = QChar::surrogateToUcs4(unit, *in++);
        else
            point = QChar::ReplacementCharacter;
    }
    out = writeUtf8(out, point);
}

} // namespace

void Writer::makeRoom(qsizetype count)
{
    m_bytes.resize(std::max<qsizetype>({256, m_size + count, m_bytes.size() + m_bytes.size() / 2}));
    m_data = m_bytes.data();
}

QByteArray Writer::take()
{
    m_bytes.truncate(m_size);
    m_data = nullptr;
    m_size = 0;
    return std::exchange(m_bytes, QByteArray());
}

void Writer::splice(qsizetype offset, qsizetype removed, QByteArrayView text)
{
    const qsizetype tail = m_size - offset - removed;
    if (text.size() > removed)
        grow(text.size() - removed);
    else
        m_size -= removed - text.size();
    char *const place = m_data + offset;
    std::memmove(place + text.size(), place + removed, size_t(tail));
    std::memcpy(place, text.data(), size_t(text.size()));
}

void Writer::releaseBeyond(qsizetype limit)
{
    if (m_bytes.size() > limit)
        (void)take();
}

void Writer::value(const QString &text)
{
    const qsizetype before = m_size;
    char *const start = grow(text.size() * bytesPerUnit + 10);
    char *out = start;
    const auto *in = reinterpret_cast<const char16_t *>(text.constData());
    const char16_t *const end = in + text.size();

    *out++ = '"';
    while (in != end) {
        copyPlainRun(in, end, out);
        while (in != end && (*in >= escapeLetters.size() || escapeLetters[*in] != 0))
            writeOther(in, end, out);
    }
    *out++ = '"';
    m_size = before + (out - start);
}

void Writer::value(double number)
{
    // Every integer of this size is exact in a double, and integers are much cheaper to write.
    constexpr double exactIntegers = 9007199254740992.0;
    constexpr qsizetype mostDigits = 32;

    if (!std::isfinite(number)) {
        m_hasFailed = true;
        return;
    }
    const qsizetype before = m_size;
    char *const start = grow(mostDigits);
    std::to_chars_result written{};
    if (std::abs(number) < exactIntegers && number == std::trunc(number) && !(number == 0 && std::signbit(number)))
        written = std::to_chars(start, start + mostDigits, static_cast<std::int64_t>(number));
    else
        written = std::to_chars(start, start + mostDigits, number);
    m_size = before + (written.ptr - start);
}

void Writer::value(const QUuid &id)
{
    std::array<std::uint8_t, 16> bytes;
    qToBigEndian(id.data1, bytes.data());
    qToBigEndian(id.data2, bytes.data() + 4);
    qToBigEndian(id.data3, bytes.data() + 6);
    std::memcpy(bytes.data() + 8, id.data4, sizeof id.data4);
    constexpr std::array<std::uint8_t, 16> places = {1, 3, 5, 7, 10, 12, 15, 17, 20, 22, 25, 27, 29, 31, 33, 35};
    char *const out = grow(38);
    out[0] = out[37] = '"';
    out[9] = out[14] = out[19] = out[24] = '-';
    for (std::size_t i = 0; i < bytes.size(); ++i)
        std::memcpy(out + places[i], hexPairs[bytes[i]].data(), 2);
}

} // namespace tessaly::codec
