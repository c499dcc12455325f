#pragma once

#include <QByteArrayView>

#include <initializer_list>

namespace tessaly {

/// Stored with each value; the numbers are part of the file format.
enum class ValueType : qint64 { Flag = 0, Integer = 1, Text = 2, TextList = 3, Blob = 4 };

// The checksums are CRC-32 (ISO-HDLC), part of the file format: docs/DATA.md describes them.

/// Of a value that is no blob: `number` where the type is one of a number, else `text`.
[[nodiscard]] quint32 checksumOfPlain(ValueType type, qint64 number, QByteArrayView text);
[[nodiscard]] quint32 checksumOfBlob(QByteArrayView blob);
/// Of the blob with the checksum `former` after one more edit.
[[nodiscard]] quint32 checksumOfEdit(quint32 former, qint64 offset, qint64 removed, QByteArrayView inserted);

/// The checksum of a value, and one of all that the key says, the first among it.
[[nodiscard]] qint64 digest(quint32 checksum, QByteArrayView key, std::initializer_list<qint64> place);
/// The checksum of the value in a digest.
[[nodiscard]] quint32 checksumIn(qint64 digest);

} // namespace tessaly
