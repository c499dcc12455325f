#pragma once

#include "model/Generation.h"

#include <QDate>
#include <QList>

namespace tessaly {

class UserCalendar;

/// How many generations are kept.
struct BackupLimits
{
    int hours = 24;
    int days = 30;
    int months = 12;
    int restorePoints = 20;
    /// Of all files together, in bytes.
    qint64 size = 1024LL * 1024 * 1024;
};

/// The generations that are no longer kept. Of those kept hourly, the last of each of the newest hours, days and months
/// that have any stays; of the restore points, the newest stay. While what stays is larger than the limit, the oldest
/// goes, but never the newest of all.
[[nodiscard]] QList<Generation> outdatedGenerations(QList<Generation> generations, const UserCalendar &calendar,
                                                    const BackupLimits &limits = {});

} // namespace tessaly
