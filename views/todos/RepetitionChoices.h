#pragma once

#include "model/AppLanguage.h"
#include "model/Repetition.h"

#include <QStringList>

namespace tessaly {

/// The row in which a repetition is offered: Never first. Other comes last, and only where it is there already.
[[nodiscard]] int repetitionRow(Repetition repetition);
/// The repetition in a row; Never outside of them.
[[nodiscard]] Repetition repetitionInRow(int row);
[[nodiscard]] QStringList repetitionTexts(bool hasOther, AppLanguage language);

} // namespace tessaly
