#pragma once

#include "model/AppLanguage.h"

#include <array>

namespace tessaly {

/// How many minutes before their start schedules can remind, as far as the planner offers it.
inline constexpr std::array<int, 5> offeredLeadMinutes{5, 10, 15, 30, 60};

/// Such as "10 minutes before".
[[nodiscard]] inline TextPair leadText(int minutes)
{
    const QString number = QString::number(minutes == 60 ? 1 : minutes);
    return minutes == 60
               ? TextPair{QStringLiteral("提前 %1 小时").arg(number), QStringLiteral("%1 hour before").arg(number)}
               : TextPair{QStringLiteral("提前 %1 分钟").arg(number), QStringLiteral("%1 minutes before").arg(number)};
}

} // namespace tessaly
