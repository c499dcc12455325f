#include "platform/common/ValueDigest.h"

#include <QtEndian>

#include <array>

#include <zlib.h>

namespace tessaly {

namespace {

constexpr int checksumBits = 32;

/// The checksum that began with `former`, continued by the bytes.
quint32 checksumOf(QByteArrayView bytes, quint32 former)
{
    if (bytes.isEmpty())
        return former; // zlib would begin anew where there is no pointer.
    const auto *data = reinterpret_cast<const unsigned char *>(bytes.data());
    return static_cast<quint32>(crc32_z(former, data, static_cast<size_t>(bytes.size())));
}

quint32 checksumOf(std::initializer_list<qint64> numbers, quint32 former)
{
    for (const qint64 number : numbers) {
        std::array<char, sizeof(qint64)> bytes{};
        qToLittleEndian(number, bytes.data());
        former = checksumOf(QByteArrayView(bytes.data(), std::ssize(bytes)), former);
    }
    return former;
}

} // namespace

quint32 checksumOfPlain(ValueType type, qint64 number, QByteArrayView text)
{
    return checksumOf(text, checksumOf({static_cast<qint64>(type), number}, 0));
}

quint32 checksumOfBlob(QByteArrayView blob)
{
    return checksumOf(blob, checksumOf({static_cast<qint64>(ValueType::Blob)}, 0));
}

quint32 checksumOfEdit(quint32 former, qint64 offset, qint64 removed, QByteArrayView inserted)
{
    return checksumOf(inserted, checksumOf({offset, removed}, former));
}

qint64 digest(quint32 checksum, QByteArrayView key, std::initializer_list<qint64> place)
{
    const quint32 seal = checksumOf(key, checksumOf({checksum}, checksumOf(place, 0)));
    return static_cast<qint64>(static_cast<quint64>(checksum) << checksumBits | seal);
}

quint32 checksumIn(qint64 digest)
{
    return static_cast<quint32>(digest >> checksumBits);
}

} // namespace tessaly
