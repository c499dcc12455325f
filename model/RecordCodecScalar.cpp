#include "model/RecordCodecScalar.h"

#include <QByteArrayView>

#include <array>

namespace tessaly::codec {

namespace {

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

} // namespace

bool read(const Scalar &value, QString &member)
{
    if (value.kind != Scalar::Kind::Text)
        return false;
    member = QString::fromUtf8(value.text.data(), qsizetype(value.text.size()));
    // Made for as many units as there are bytes, it would keep three times the memory of a Chinese text.
    member.squeeze();
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

} // namespace tessaly::codec
