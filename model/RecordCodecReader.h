#pragma once

#include "model/RecordCodecType.h"

#include <QByteArrayView>

/// Reads records from JSON. Internal to the codec.
namespace tessaly::codec {

/// False, with the record in an unspecified state, unless the whole text is one object of that type.
[[nodiscard]] bool readObject(QByteArrayView json, const RecordType &type, void *record);
/// The same for an array of such objects.
[[nodiscard]] bool readArray(QByteArrayView json, const RecordType &elementType, void *list);

} // namespace tessaly::codec
