#pragma once

#include "model/RowsChange.h"
#include "model/Search.h"
#include "store/PlannerStore.h"

#include <QObject>

namespace tessaly {

/// Searches the titles of everything that the store has. What it compares is worked out once and follows each change
/// row by row.
class RecordSearch : public QObject
{
    Q_OBJECT

public:
    struct Hit
    {
        /// In the store's list.
        qsizetype row = 0;
        SearchMatch match = {};
        /// The title of the subgoal or task that has the words; empty where the record's own has them.
        QString part = {};
    };
    struct Hits
    {
        /// The best ones first.
        QList<Hit> best = {};
        qsizetype count = 0;
    };

    /// The store must outlive the search.
    explicit RecordSearch(const PlannerStore &store, QObject *parent = nullptr);

    // At most `most` of each. Of equal ones, those nearest to now come first, open to-dos before completed ones, and
    // documents as they were last changed.
    /// Of calendars that are shown.
    [[nodiscard]] Hits schedules(const SearchQuery &query, qsizetype most) const;
    [[nodiscard]] Hits reminders(const SearchQuery &query, qsizetype most) const;
    /// With their subgoals and tasks.
    [[nodiscard]] Hits goals(const SearchQuery &query, qsizetype most) const;
    [[nodiscard]] Hits documents(const SearchQuery &query, qsizetype most) const;

private:
    const PlannerStore &m_store;
    QList<SearchKey> m_schedules;
    QList<SearchKey> m_reminders;
    QList<SearchKey> m_documents;
};

} // namespace tessaly
