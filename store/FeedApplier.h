#pragma once

#include "model/FeedUpdate.h"

#include <QObject>

#include <functional>
#include <memory>

namespace tessaly {

class PlannerStore;

/// Brings updates of linked calendars into the schedules, piece by piece, so that the window stays usable meanwhile.
class FeedApplier : public QObject
{
public:
    /// True when the update is in; false when something else has changed the schedules between two pieces, so that the
    /// rest no longer fits.
    using Completion = std::function<void(bool isWhole)>;

    /// The store must outlive it.
    explicit FeedApplier(PlannerStore &store);

    /// The first piece is applied at once, each further one in a turn of the event loop of its own. `completion` runs
    /// after the last; not after the applier was destroyed.
    void apply(FeedUpdate update, const Completion &completion);

private:
    struct Job
    {
        FeedUpdate update;
        Completion completion;
        qsizetype next = 0;
        /// The revision that the next piece fits.
        int revision = 0;
    };
    void proceed(const std::shared_ptr<Job> &job);

    PlannerStore &m_store;
    /// Counts the changes of the schedules.
    int m_revision = 0;
};

} // namespace tessaly
