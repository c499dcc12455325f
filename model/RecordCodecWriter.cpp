#include "model/RecordCodecWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace tessaly::codec {

namespace {

constexpr char upperHexDigits[] = "0123456789ABCDEF";

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

/// Copies eight units at a time while all of them are ASCII that stands for itself; stops at the first eight that are
/// not, or at fewer than eight.
void copyPlainRuns(const char16_t *&in, const char16_t *end, char *&out)
{
    while (end - in >= 8) {
        EightUnits units;
        std::memcpy(&units, in, sizeof units);
        const auto hits = (units < 0x20) | (units > 0x7F) | (units == u'"') | (units == u'\\');
        std::uint64_t halves[2];
        std::memcpy(halves, &hits, sizeof halves);
        if ((halves[0] | halves[1]) != 0)
            return;
        const EightBytes bytes = __builtin_convertvector(units, EightBytes);
        std::memcpy(out, &bytes, sizeof bytes);
        in += 8;
        out += 8;
    }
}

/// Writes one character; a surrogate without its partner becomes U+FFFD.
void writeCharacter(const char16_t *&in, const char16_t *end, char *&out)
{
    const char16_t unit = *in++;
    if (unit < 0x80) {
        if (escapeLetters[unit] == 0)
            *out++ = static_cast<char>(unit);
        else
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
    char *const start = grow(text.size() * bytesPerUnit + 2);
    char *out = start;
    const auto *in = reinterpret_cast<const char16_t *>(text.utf16());
    const char16_t *const end = in + text.size();

    *out++ = '"';
    while (in != end) {
        copyPlainRuns(in, end, out);
        for (int i = 0; i < 8 && in != end; ++i)
            writeCharacter(in, end, out);
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
    char *out = grow(38);
    const auto hex = [&out](std::uint32_t bits, int digits) {
        for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
            *out++ = upperHexDigits[(bits >> shift) & 15];
    };
    *out++ = '"';
    hex(id.data1, 8);
    *out++ = '-';
    hex(id.data2, 4);
    *out++ = '-';
    hex(id.data3, 4);
    *out++ = '-';
    hex(id.data4[0], 2);
    hex(id.data4[1], 2);
    *out++ = '-';
    for (int i = 2; i < 8; ++i)
        hex(id.data4[i], 2);
    *out = '"';
}

} // namespace tessaly::codec
