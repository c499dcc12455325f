#pragma once

#include "store/DocumentSearch.h"
#include "store/RecordSearch.h"

#include <QObject>
#include <QTimer>

namespace tessaly {

/// What the planner searches: the records in the main thread, the texts of documents in another. Each store has one,
/// from the first time that it is asked for.
class PlannerSearch : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] static PlannerSearch &of(PlannerStore &store);

    [[nodiscard]] const RecordSearch &records() const { return m_records; }
    [[nodiscard]] DocumentSearch &documents() { return m_documents; }
    [[nodiscard]] QList<DocumentSearch::File> documentFiles() const;

    enum class Pace {
        Calm, ///< nobody waits for it
        Soon, ///< the user is about to search; everything else goes on
    };
    /// Reads the documents that have changed, and works out what is compared of the records, a little at a time.
    void prepare(Pace pace);

signals:
    /// Records can be found that could not be found before.
    void prepared();

private:
    explicit PlannerSearch(PlannerStore &store);
    void takeStep();

    PlannerStore &m_store;
    RecordSearch m_records;
    DocumentSearch m_documents;
    QTimer m_steps;
    bool m_hasMore = false;
};

} // namespace tessaly
