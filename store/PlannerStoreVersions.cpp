#include "platform/Backups.h"
#include "store/PlannerStore.h"
#include "store/StoredState.h"

#include <QPointer>

#include <memory>

namespace tessaly {

PlannerState PlannerStore::state() const
{
    return {{m_data.schedules, m_data.reminders, m_data.goals},
            m_calendarFeeds,
            {m_documentLibrary.documentCategories(), m_documentLibrary.documents()},
            restorableSettings(ports().preferences)};
}

void PlannerStore::compareWith(const Generation &generation,
                               const std::function<void(const Result<StateChange> &)> &completion)
{
    // The other thread writes it before the completion runs.
    const auto change = std::make_shared<std::optional<StateChange>>();
    ports().backups.read(
        generation,
        [change, now = state()](const Preferences &stored) {
            if (const std::optional<PlannerState> then = storedState(stored))
                *change = restoration(now, *then);
        },
        [self = QPointer(this), change, completion](const Result<void> &read) {
            if (!self)
                return;
            if (read && *change)
                completion(**change);
            else
                completion(read ? Error{ErrorCode::StorageCorrupt, {}} : read.error());
        });
}

qsizetype PlannerStore::restore(const StateChange &change)
{
    m_generations.keepBefore(GenerationReason::Restore);
    // Events that a sync has brought since are the calendar's.
    StateChange restoring = change;
    restoring.leavesCalendars = true;
    m_documentLibrary.listRemoved(restoring);
    const StateChange done =
        perform(restoring, TextPair{QStringLiteral("恢复历史版本"), QStringLiteral("Restore earlier version")});
    return differenceRows(done).size();
}

} // namespace tessaly
