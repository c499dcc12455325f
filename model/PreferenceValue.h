#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <variant>

namespace tessaly {

/// A preference is a flag, an integer, a string, a list of strings or a blob.
using PreferenceValue = std::variant<bool, qint64, QString, QStringList, QByteArray>;

} // namespace tessaly
