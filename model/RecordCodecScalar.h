#pragma once

#include "model/Instant.h"

#include <QString>
#include <QUuid>

#include <cstdint>
#include <string_view>

/// The single values of JSON, and how the members of records take them over. Internal to the codec.
namespace tessaly::codec {

struct Scalar
{
    enum class Kind : std::uint8_t { Text, Number, Flag };

    Kind kind = Kind::Text;
    bool flag = false;
    double number = 0;
    /// Valid UTF-8.
    std::string_view text = {};
};

// Each takes the value over and says whether it is of the right type.
[[nodiscard]] bool read(const Scalar &value, QString &member);
[[nodiscard]] bool read(const Scalar &value, double &member);
[[nodiscard]] bool read(const Scalar &value, bool &member);
[[nodiscard]] bool read(const Scalar &value, Instant &member);
/// The hyphenated form, in either case.
[[nodiscard]] bool read(const Scalar &value, QUuid &member);

} // namespace tessaly::codec
