#pragma once

#include "model/ScheduleRules.h"

#include <QString>
#include <QUuid>

namespace tessaly {

class PlannerStore;

/// Gives time to the open to-do or goal task: adds a schedule with its title that is linked with it, as one step. The
/// item itself stays as it is. The id of the schedule; null when there is no such item.
QUuid planItem(PlannerStore &store, const QUuid &itemID, const FormTimes &times);

/// Completes the to-do or goal task, or opens it again, as one step; nothing when there is none.
void togglePlannedItem(PlannerStore &store, const QUuid &itemID);

/// "Wed, Nov 25" or "11月25日 周三".
[[nodiscard]] QString planDayText(QDate day, bool isEnglish);
/// "Fri 13:00"; with the date instead of the weekday when it is not one of the seven days from now on.
[[nodiscard]] QString plannedTimeText(Instant start, const PlannerStore &store);

} // namespace tessaly
