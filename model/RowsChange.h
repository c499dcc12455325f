#pragma once

#include <QMetaType>
#include <QtGlobal>

namespace tessaly {

/// What one assignment did to a list of records. Rows refer to the list after an insertion or update and to the
/// list before a removal.
struct RowsChange
{
    enum class Kind {
        Reset,    ///< anything may differ
        Inserted, ///< rows first … first + count - 1 are new
        Removed,  ///< rows first … first + count - 1 are gone
        Updated,  ///< rows first … first + count - 1 hold new values
    };

    Kind kind = Kind::Reset;
    qsizetype first = 0;
    qsizetype count = 0;

    bool operator==(const RowsChange &) const = default;
};

} // namespace tessaly

Q_DECLARE_METATYPE(tessaly::RowsChange)
