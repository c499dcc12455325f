#pragma once

#include <QString>
#include <QUuid>

namespace tessaly {

/// The standard hyphenated text of a UUID, upper-case, without braces: the form used in JSON, keys and file names.
[[nodiscard]] inline QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace tessaly
