#include "store/RecordSearch.h"

#include "model/DisplayTitle.h"
#include "model/ScheduleRules.h"
#include "model/SearchText.h"
#include "platform/Clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessaly {

namespace {

/// More rows than this are worked out again in steps.
constexpr qsizetype mostAtOnce = 500;
/// Ranks of texts come after those of titles.
constexpr int textRank = 100;
/// Nobody reads on, and reading texts takes time.
constexpr qsizetype enoughHits = 300;
/// Notes are short. With a larger signature, most of those without the words need not be read.
constexpr qsizetype signatureFactor = 3;

QString titleOf(const ScheduleItem &item)
{
    return displayTitle(item);
}
template <class Record>
QString titleOf(const Record &record)
{
    return record.title;
}

QString textOf(const ScheduleItem &item)
{
    return item.notes;
}
QString textOf(const ReminderItem &item)
{
    return item.requirement.value_or(QString());
}
QString textOf(const MarkdownDocument &)
{
    return {};
}

template <class Record>
RecordKey keyOf(const Record &record)
{
    RecordKey key{.title = SearchKey::of(titleOf(record))};
    if (const QString text = textOf(record); !text.isEmpty())
        key.text = TextSignature(searchFolded(text), signatureFactor * text.toUtf8().size());
    return key;
}

template <class Keys, class Record>
qsizetype learn(Keys &keys, const QList<Record> &records, qsizetype count)
{
    const qsizetype end = std::min(keys.known + count, records.size());
    const qsizetype first = std::exchange(keys.known, end);
    for (qsizetype row = first; row < end; ++row)
        keys.keys[row] = keyOf(records.at(row));
    return end - first;
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

/// Adds the records whose texts have the words, as long as there are few hits.
template <class Keys, class Record, class IsWanted>
void addTexts(QList<RecordSearch::Hit> &hits, const Keys &keys, const QList<Record> &records, const SearchQuery &query,
              IsWanted isWanted)
{
    const TextProbe probe = TextProbe::of(query);
    for (qsizetype row = 0; row < keys.known && hits.size() < enoughHits && !probe.groups.isEmpty(); ++row) {
        const RecordKey &key = keys.keys.at(row);
        if (key.text.bytes() == 0 || !key.text.mayHave(probe) || match(key.title, query) || !isWanted(row))
            continue;
        const QString text = textOf(records.at(row));
        if (const std::optional<SearchExcerpt> piece = excerpt(text, searchFolded(text), query))
            hits.append({.row = row,
                         .match = {.rank = textRank, .start = piece->start, .length = piece->length},
                         .part = piece->text});
    }
}

template <class Keys, class Record, class IsWanted>
QList<RecordSearch::Hit> matching(const Keys &keys, const QList<Record> &records, const SearchQuery &query,
                                  IsWanted isWanted)
{
    QList<RecordSearch::Hit> hits;
    if (query.isEmpty())
        return hits;
    for (qsizetype row = 0; row < keys.known; ++row) {
        const std::optional<SearchMatch> found = match(keys.keys.at(row).title, query);
        if (found && isWanted(row))
            hits.append({.row = row, .match = *found});
    }
    addTexts(hits, keys, records, query, isWanted);
    return hits;
}

/// The best match among the titles of a goal.
std::optional<RecordSearch::Hit> matchOf(const Goal &goal, const SearchQuery &query)
{
    std::optional<RecordSearch::Hit> best;
    const auto look = [&](const QString &title, const QString &part, const QUuid &partId) {
        const std::optional<SearchMatch> found = match(SearchKey::of(title), query);
        if (found && (!best || (!best->part.isEmpty() && found->rank < best->match.rank)))
            best = RecordSearch::Hit{.match = *found, .part = part, .partId = partId};
    };
    look(goal.title, {}, {});
    for (const Subgoal &subgoal : goal.subgoals.value_or(QList<Subgoal>())) {
        look(subgoal.title, subgoal.title, subgoal.id);
        for (const GoalTask &task : subgoal.tasks.value_or(QList<GoalTask>()))
            look(task.title, task.title, task.id);
    }
    return best;
}

} // namespace

template <class Record>
void RecordSearch::follow(Keys &keys, const QList<Record> &records, const RowsChange &change)
{
    const bool isWhole = change.kind == RowsChange::Kind::Reset;
    if (isWhole)
        keys.keys.resize(records.size());
    else if (change.kind == RowsChange::Kind::Inserted)
        keys.keys.insert(change.first, change.count, {});
    else if (change.kind == RowsChange::Kind::Removed)
        keys.keys.remove(change.first, change.count);
    const qsizetype first = isWhole ? 0 : change.first;
    const qsizetype count = isWhole ? records.size() : change.count;
    const bool isInserted = change.kind == RowsChange::Kind::Inserted;
    if (first > keys.known || (first == keys.known && !isInserted && !isWhole))
        return;
    if (change.kind == RowsChange::Kind::Removed) {
        keys.known -= std::min(count, keys.known - first);
        return;
    }
    if (count > mostAtOnce) {
        keys.known = first;
        emit fellBehind();
        return;
    }
    if (isWhole)
        keys.known = count;
    else if (isInserted)
        keys.known += count;
    for (qsizetype row = first; row < std::min(first + count, keys.known); ++row)
        keys.keys[row] = keyOf(records.at(row));
}

RecordSearch::RecordSearch(const PlannerStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    m_schedules.keys.resize(store.schedules().size());
    m_reminders.keys.resize(store.reminders().size());
    m_documents.keys.resize(store.documentLibrary().documents().size());
    connect(&store, &PlannerStore::schedulesChanged, this,
            [this](const RowsChange &change) { follow(m_schedules, m_store.schedules(), change); });
    connect(&store, &PlannerStore::remindersChanged, this,
            [this](const RowsChange &change) { follow(m_reminders, m_store.reminders(), change); });
    connect(&store.documentLibrary(), &DocumentLibrary::documentsChanged, this,
            [this](const RowsChange &change) { follow(m_documents, m_store.documentLibrary().documents(), change); });
}

qsizetype RecordSearch::prepareSome(qsizetype count)
{
    qsizetype done = learn(m_reminders, m_store.reminders(), count);
    done += learn(m_documents, m_store.documentLibrary().documents(), count - done);
    done += learn(m_schedules, m_store.schedules(), count - done);
    return done;
}

void RecordSearch::prepare()
{
    while (prepareSome(mostAtOnce) > 0) {
    }
}

RecordSearch::Hits RecordSearch::schedules(const SearchQuery &query, qsizetype most) const
{
    const QList<ScheduleItem> &schedules = m_store.schedules();
    const QSet<QString> visible = m_store.visibleCalendarIDs();
    const double now = m_store.clock().now().seconds;
    const auto isShown = [&](qsizetype row) { return isDisplayed(schedules.at(row), visible); };
    return bestOf(matching(m_schedules, schedules, query, isShown), most,
                  [&](qsizetype row) { return std::abs(schedules.at(row).date.seconds - now); });
}

RecordSearch::Hits RecordSearch::reminders(const SearchQuery &query, qsizetype most) const
{
    const QList<ReminderItem> &reminders = m_store.reminders();
    return bestOf(matching(m_reminders, reminders, query, [](qsizetype) { return true; }), most,
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
    return bestOf(matching(m_documents, documents, query, [](qsizetype) { return true; }), most,
                  [&](qsizetype row) { return -documents.at(row).updatedAt.seconds; });
}

} // namespace tessaly
