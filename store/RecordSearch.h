#pragma once

#include "model/RowsChange.h"
#include "model/Search.h"
#include "store/PlannerStore.h"

#include <QObject>
#include <QUuid>

namespace tessaly {

/// A text as it is searched: its title, and a signature of the longer text that belongs to it.
struct RecordKey
{
    SearchKey title = {};
    TextSignature text = {};
};

/// Searches the titles of everything that the store has, the notes of schedules and the requirements of to-dos. What it
/// compares is worked out once, in steps, and follows each change row by row.
class RecordSearch : public QObject
{
    Q_OBJECT

public:
    struct Hit
    {
        /// In the store's list.
        qsizetype row = 0;
        SearchMatch match = {};
        /// What has the words, where it is not the record's own title: that of the subgoal or task, or a piece of the
        /// notes or the requirement. The match is a place in it.
        QString part = {};
        /// Of that subgoal or task; null otherwise.
        QUuid partId = {};
    };
    struct Hits
    {
        /// The best ones first.
        QList<Hit> best = {};
        qsizetype count = 0;
    };

    /// Finds nothing until it has been prepared. The store must outlive the search.
    explicit RecordSearch(const PlannerStore &store, QObject *parent = nullptr);

    /// Works out what is compared for so many more records; how many there were.
    qsizetype prepareSome(qsizetype count);
    void prepare();

    // At most `most` of each. Of equal ones, those nearest to now come first, open to-dos before completed ones, and
    // documents as they were last changed. Titles come before texts. A text is searched for two letters or more, three
    // of the alphabet, and only while there are fewer than 300 hits.
    /// Of calendars that are shown.
    [[nodiscard]] Hits schedules(const SearchQuery &query, qsizetype most) const;
    [[nodiscard]] Hits reminders(const SearchQuery &query, qsizetype most) const;
    /// With their subgoals and tasks.
    [[nodiscard]] Hits goals(const SearchQuery &query, qsizetype most) const;
    [[nodiscard]] Hits documents(const SearchQuery &query, qsizetype most) const;

signals:
    /// So much has changed at once that there is something to prepare again.
    void fellBehind();

private:
    /// The keys of a list; those of the first rows are known.
    struct Keys
    {
        QList<RecordKey> keys = {};
        qsizetype known = 0;
    };
    template <class Record>
    void follow(Keys &keys, const QList<Record> &records, const RowsChange &change);

    const PlannerStore &m_store;
    Keys m_schedules;
    Keys m_reminders;
    Keys m_documents;
};

} // namespace tessaly
