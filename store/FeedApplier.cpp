#include "store/FeedApplier.h"

#include "store/PlannerStore.h"

#include <QTimer>

namespace tessaly {

FeedApplier::FeedApplier(PlannerStore &store) : m_store(store)
{
    connect(&store, &PlannerStore::schedulesChanged, this, [this] { ++m_revision; });
}

void FeedApplier::apply(FeedUpdate update, const Completion &completion)
{
    proceed(std::make_shared<Job>(Job{.update = std::move(update), .completion = completion, .revision = m_revision}));
}

void FeedApplier::proceed(const std::shared_ptr<Job> &job)
{
    const QList<FeedUpdate::Piece> &pieces = job->update.pieces;
    if (job->revision == m_revision && job->next < pieces.size()) {
        const FeedUpdate::Piece &piece = pieces.at(job->next++);
        m_store.editSchedules([&piece](QList<ScheduleItem> &schedules) {
            applyPiece(piece, schedules);
            return piece.rows;
        });
        job->revision = m_revision;
    }
    const bool isWhole = job->next == pieces.size();
    if (isWhole || job->revision != m_revision)
        job->completion(isWhole);
    else
        QTimer::singleShot(0, this, [this, job] { proceed(job); });
}

} // namespace tessaly
