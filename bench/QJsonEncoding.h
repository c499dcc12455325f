#pragma once

#include "model/ScheduleItem.h"

#include <QByteArray>

namespace tessaly::bench {

/// The main data with these schedules, encoded the way most Qt programs would: through a tree of QJsonObjects.
[[nodiscard]] QByteArray encodeWithQJson(const QList<ScheduleItem> &schedules);

} // namespace tessaly::bench
