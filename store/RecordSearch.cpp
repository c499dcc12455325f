#include "store/RecordSearch.h"

#include "model/DisplayTitle.h"
#include "model/ScheduleRules.h"
#include "platform/Clock.h"

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

/// Brings the keys up to the records after a change.
template <class Record, class Title>
void follow(QList<SearchKey> &keys, const QList<Record> &records, const RowsChange &change, Title title)
{
    const bool isRows = change.kind != RowsChange::Kind::Reset;
    if (!isRows)
        keys.resize(records.size());
    else if (change.kind == RowsChange::Kind::Inserted)
        keys.insert(change.first, change.count, {});
    else if (change.kind == RowsChange::Kind::Removed)
        keys.remove(change.first, change.count);
    if (change.kind == RowsChange::Kind::Removed)
        return;
    const qsizetype first = isRows ? change.first : 0;
    const qsizetype end = isRows ? first + change.count : records.size();
    for (qsizetype row = first; row < end; ++row)
        keys[row] = SearchKey::of(title(records.at(row)));
}

/// The best hits by rank, then by what `order` says of their rows; less is better.
template <class Order>
RecordSearch::Hits bestOf(QList<RecordSearch::Hit> hits, qsizetype most, Order order)
{
    const auto isBetter = [&](const RecordSearch::Hit &left, const RecordSearch::Hit &right) {
        if (left.match.rank != right.match.rank)
            return left.match.rank < right.match.rank;
        const auto leftOrder = order(left.row);
        const auto rightOrder = order(right.row);
        return leftOrder != rightOrder ? leftOrder < rightOrder : left.row < right.row;
    };
    const qsizetype count = hits.size();
    const qsizetype kept = std::min(most, count);
    std::partial_sort(hits.begin(), hits.begin() + kept, hits.end(), isBetter);
    hits.resize(kept);
    return {.best = hits, .count = count};
}

template <class IsWanted>
QList<RecordSearch::Hit> matching(const QList<SearchKey> &keys, const SearchQuery &query, IsWanted isWanted)
{
    QList<RecordSearch::Hit> hits;
    if (query.isEmpty())
        return hits;
    for (qsizetype row = 0; row < keys.size(); ++row) {
        const std::optional<SearchMatch> found = match(keys.at(row), query);
        if (found && isWanted(row))
            hits.append({.row = row, .match = *found});
    }
    return hits;
}

/// The best match among the titles of a goal.
std::optional<RecordSearch::Hit> matchOf(const Goal &goal, const SearchQuery &query)
{
    std::optional<RecordSearch::Hit> best;
    const auto look = [&](const QString &title, const QString &part) {
        const std::optional<SearchMatch> found = match(SearchKey::of(title), query);
        if (found && (!best || (!best->part.isEmpty() && found->rank < best->match.rank)))
            best = RecordSearch::Hit{.match = *found, .part = part};
    };
    look(goal.title, {});
    for (const Subgoal &subgoal : goal.subgoals.value_or(QList<Subgoal>())) {
        look(subgoal.title, subgoal.title);
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>()))
            look(task.title, task.title);
    }
    return best;
}

} // namespace

RecordSearch::RecordSearch(const PlannerStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    const auto followSchedules = [this](const RowsChange &change) {
        follow(m_schedules, m_store.schedules(), change, [](const ScheduleItem &item) { return displayTitle(item); });
    };
    const auto followReminders = [this](const RowsChange &change) {
        follow(m_reminders, m_store.reminders(), change, [](const ReminderItem &item) { return item.title; });
    };
    const auto followDocuments = [this](const RowsChange &change) {
        follow(m_documents, m_store.documentLibrary().documents(), change,
               [](const MarkdownDocument &document) { return document.title; });
    };
    connect(&store, &PlannerStore::schedulesChanged, this, followSchedules);
    connect(&store, &PlannerStore::remindersChanged, this, followReminders);
    connect(&store.documentLibrary(), &DocumentLibrary::documentsChanged, this, followDocuments);
    followSchedules({});
    followReminders({});
    followDocuments({});
}

RecordSearch::Hits RecordSearch::schedules(const SearchQuery &query, qsizetype most) const
{
    const QList<ScheduleItem> &schedules = m_store.schedules();
    const QSet<QString> visible = m_store.visibleCalendarIDs();
    const double now = m_store.clock().now().seconds;
    const auto isShown = [&](qsizetype row) { return isDisplayed(schedules.at(row), visible); };
    return bestOf(matching(m_schedules, query, isShown), most,
                  [&](qsizetype row) { return std::abs(schedules.at(row).date.seconds - now); });
}

RecordSearch::Hits RecordSearch::reminders(const SearchQuery &query, qsizetype most) const
{
    const QList<ReminderItem> &reminders = m_store.reminders();
    return bestOf(matching(m_reminders, query, [](qsizetype) { return true; }), most,
                  [&](qsizetype row) { return reminders.at(row).isComplete; });
}

RecordSearch::Hits RecordSearch::goals(const SearchQuery &query, qsizetype most) const
{
    const QList<Goal> &goals = m_store.goals();
    QList<Hit> hits;
    for (qsizetype row = 0; row < goals.size() && !query.isEmpty(); ++row) {
        if (std::optional<Hit> hit = matchOf(goals.at(row), query)) {
            hit->row = row;
            hits.append(*hit);
        }
    }
    return bestOf(hits, most, [](qsizetype row) { return row; });
}

RecordSearch::Hits RecordSearch::documents(const SearchQuery &query, qsizetype most) const
{
    const QList<MarkdownDocument> &documents = m_store.documentLibrary().documents();
    return bestOf(matching(m_documents, query, [](qsizetype) { return true; }), most,
                  [&](qsizetype row) { return -documents.at(row).updatedAt.seconds; });
}

} // namespace tessaly
