#include "store/PlannerSearch.h"

#include "store/PlannerStore.h"

#include <utility>

namespace tessaly {

namespace {

// A step is too short to be felt.
constexpr int stepRecords = 300;
constexpr int calmMs = 30;

} // namespace

PlannerSearch &PlannerSearch::of(PlannerStore &store)
{
    if (auto *known = store.findChild<PlannerSearch *>(QString(), Qt::FindDirectChildrenOnly))
        return *known;
    return *new PlannerSearch(store); // lives as long as the store
}

PlannerSearch::PlannerSearch(PlannerStore &store)
    : QObject(&store), m_store(store), m_records(store), m_documents(store.documentLibrary().files())
{
    connect(&m_steps, &QTimer::timeout, this, &PlannerSearch::takeStep);
    connect(&m_records, &RecordSearch::fellBehind, &m_steps, qOverload<>(&QTimer::start));
}

QList<DocumentSearch::File> PlannerSearch::documentFiles() const
{
    const DocumentLibrary &library = m_store.documentLibrary();
    QList<DocumentSearch::File> files;
    files.reserve(library.documents().size());
    for (const MarkdownDocument &document : library.documents())
        files.append({document.id, library.documentPath(document)});
    return files;
}

void PlannerSearch::prepare(Pace pace)
{
    m_steps.setInterval(pace == Pace::Soon ? 0 : calmMs);
    m_documents.prepare(documentFiles(), [this] { m_steps.start(); });
}

void PlannerSearch::takeStep()
{
    if (m_records.prepareSome(stepRecords) > 0) {
        m_hasMore = true;
        return;
    }
    m_steps.stop();
    m_steps.setInterval(calmMs);
    if (std::exchange(m_hasMore, false))
        emit prepared();
}

} // namespace tessaly
