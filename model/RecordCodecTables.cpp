#include "model/RecordCodecTables.h"

namespace tessaly::codec {

void finishRecord(ScheduleItem &record, std::uint32_t seen)
{
    constexpr std::uint32_t tasksField = 1U << 7;
    static_assert(fieldTypesOf<ScheduleItem>[7].key == "tasks");
    if ((seen & tasksField) == 0 && record.taskTitle)
        record.tasks = QList<ScheduleTask>{{.title = *record.taskTitle, .isComplete = record.isTaskComplete}};
}

} // namespace tessaly::codec
