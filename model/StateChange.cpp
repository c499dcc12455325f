#include "model/StateChange.h"

#include "model/RecordCodecSchema.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

/// Calls `visit` with a pointer to each member that is stored.
template <class Record, class Visit>
void forEachMember(const Visit &visit)
{
    [&visit]<class... Fields>(codec::FieldList<Fields...>) {
        (visit(Fields::member), ...);
    }(typename codec::Schema<Record>::Fields());
}

template <class Record>
void invert(QList<RecordChange<Record>> &changes)
{
    for (RecordChange<Record> &change : changes)
        std::swap(change.before, change.after);
}

/// The change of a record as it applies to the record that is there now.
template <class Record>
Record changed(Record current, const RecordChange<Record> &change)
{
    forEachMember<Record>([&](auto member) {
        if (current.*member == (*change.before).*member)
            current.*member = (*change.after).*member;
    });
    return current;
}

/// The changes of records that are to be found in the list, by id.
template <class Record>
class Wanted
{
public:
    explicit Wanted(const QList<RecordChange<Record>> &changes)
    {
        for (const RecordChange<Record> &change : changes) {
            if (change.before)
                m_changes.insert(change.id, &change);
        }
        m_only = m_changes.size() == 1 ? *m_changes.cbegin() : nullptr;
    }

    [[nodiscard]] bool isEmpty() const { return m_changes.isEmpty(); }
    [[nodiscard]] const RecordChange<Record> *of(const QUuid &id) const
    {
        // Comparing is much cheaper than looking up, and the list may be long.
        if (m_only)
            return id == m_only->id ? m_only : nullptr;
        return m_changes.value(id);
    }

private:
    QHash<QUuid, const RecordChange<Record> *> m_changes;
    const RecordChange<Record> *m_only = nullptr;
};

/// The rows that were touched: whole if they follow one another.
class TouchedRows
{
public:
    explicit TouchedRows(RowsChange::Kind kind) : m_kind(kind) {}

    void add(qsizetype row)
    {
        m_first = m_count == 0 ? row : m_first;
        m_isContiguous = m_isContiguous && row == m_first + m_count;
        m_last = row;
        ++m_count;
    }
    [[nodiscard]] bool isEmpty() const { return m_count == 0; }
    [[nodiscard]] RowsChange rows() const
    {
        if (m_kind == RowsChange::Kind::Updated || m_isContiguous)
            return {m_kind, m_first, m_last - m_first + 1};
        return {};
    }

private:
    RowsChange::Kind m_kind;
    qsizetype m_first = 0;
    qsizetype m_last = 0;
    qsizetype m_count = 0;
    bool m_isContiguous = true;
};

template <class Record>
void removeRows(QList<Record> &records, const QList<qsizetype> &rows)
{
    if (rows.size() == 1) {
        records.removeAt(rows.constFirst());
        return;
    }
    qsizetype row = 0;
    auto next = rows.cbegin();
    records.removeIf([&](const Record &) {
        const bool isRemoved = next != rows.cend() && *next == row;
        next += isRemoved ? 1 : 0;
        ++row;
        return isRemoved;
    });
}

/// The added records whose ids are not there yet, by row.
template <class Record>
QList<const RecordChange<Record> *> arrivals(const QList<Record> &records, const QList<RecordChange<Record>> &changes)
{
    QSet<QUuid> ids;
    QList<const RecordChange<Record> *> arriving;
    for (const RecordChange<Record> &change : changes) {
        if (change.before || !change.after)
            continue;
        ids.insert(change.id);
        arriving.append(&change);
    }
    if (arriving.isEmpty())
        return arriving;
    QSet<QUuid> present;
    const bool isOne = arriving.size() == 1;
    for (const Record &record : records) {
        if (isOne ? record.id == arriving.constFirst()->id : ids.contains(record.id))
            present.insert(record.id);
    }
    arriving.removeIf([&](const auto *change) { return present.contains(change->id); });
    std::ranges::stable_sort(arriving, {}, [](const auto *change) { return change->row; });
    return arriving;
}

/// Puts the records into their rows; the rows where they stand then.
template <class Record>
QList<qsizetype> insertRows(QList<Record> &records, const QList<const RecordChange<Record> *> &arriving)
{
    const auto rowFor = [](const RecordChange<Record> *change, qsizetype size) {
        return std::clamp(change->row, qsizetype(0), size);
    };
    if (arriving.size() == 1) {
        const qsizetype row = rowFor(arriving.constFirst(), records.size());
        records.insert(row, *arriving.constFirst()->after);
        return {row};
    }
    QList<qsizetype> rows;
    QList<Record> all;
    all.reserve(records.size() + arriving.size());
    auto next = arriving.cbegin();
    const auto arriveUpTo = [&](qsizetype row) {
        for (; next != arriving.cend() && (*next)->row <= row; ++next, ++row) {
            rows.append(all.size());
            all.append(*(*next)->after);
        }
    };
    for (Record &record : records) {
        arriveUpTo(all.size());
        all.append(std::move(record));
    }
    for (; next != arriving.cend(); ++next) {
        rows.append(all.size());
        all.append(*(*next)->after);
    }
    records = std::move(all);
    return rows;
}

/// The one text that the edit changes; null when it changes anything else.
template <class Record>
const void *editedText(const RecordChange<Record> &change)
{
    static const Record anchor;
    const void *text = nullptr;
    qsizetype count = 0;
    forEachMember<Record>([&](auto member) {
        if ((*change.before).*member == (*change.after).*member)
            return;
        ++count;
        using Value = std::remove_cvref_t<decltype(anchor.*member)>;
        if constexpr (std::is_same_v<Value, QString> || std::is_same_v<Value, std::optional<QString>>)
            text = &(anchor.*member);
    });
    return count == 1 ? text : nullptr;
}

template <class Record>
bool isSameRecord(const QList<RecordChange<Record>> &first, const QList<RecordChange<Record>> &second)
{
    const auto isEdit = [](const auto &changes) {
        return changes.size() == 1 && changes.constFirst().before && changes.constFirst().after;
    };
    return isEdit(first) && isEdit(second) && first.constFirst().id == second.constFirst().id;
}

template <class Record>
bool isSameText(const QList<RecordChange<Record>> &first, const QList<RecordChange<Record>> &second)
{
    if (!isSameRecord(first, second))
        return false;
    const void *text = editedText(first.constFirst());
    return text && text == editedText(second.constFirst());
}

template <class Record>
void joinEdit(QList<RecordChange<Record>> &first, const QList<RecordChange<Record>> &second)
{
    if (!first.isEmpty())
        first.first().after = second.constFirst().after;
}

/// Whether the change touches one list of records only. A restore or an import is never a part of typing.
bool isOfOneList(const StateChange &change)
{
    const int lists = int(!change.schedules.isEmpty()) + int(!change.reminders.isEmpty()) +
                      int(!change.goals.isEmpty()) + int(!change.feeds.isEmpty()) + int(!change.categories.isEmpty()) +
                      int(!change.documents.isEmpty());
    return lists == 1 && !change.leavesCalendars && change.deletedDocuments.isEmpty() && change.settings.isEmpty();
}

bool touchesWaiting(const StateChange &change)
{
    return !change.waitingBefore.isEmpty() || !change.waitingAfter.isEmpty();
}

/// What the first put there and the second took away again is in neither.
void joinWaiting(StateChange &first, const StateChange &second)
{
    for (const auto &gone : second.waitingBefore) {
        if (!first.waitingAfter.removeOne(gone))
            first.waitingBefore.append(gone);
    }
    first.waitingAfter.append(second.waitingAfter);
}

} // namespace

StateChange inverted(StateChange change)
{
    invert(change.schedules);
    invert(change.reminders);
    invert(change.goals);
    invert(change.feeds);
    invert(change.categories);
    invert(change.documents);
    invert(change.deletedDocuments);
    for (SettingChange &setting : change.settings)
        std::swap(setting.before, setting.after);
    std::swap(change.waitingBefore, change.waitingAfter);
    return change;
}

template <class Record>
AppliedChanges<Record> applyChanges(QList<Record> &records, const QList<RecordChange<Record>> &changes)
{
    AppliedChanges<Record> applied;
    TouchedRows updated(RowsChange::Kind::Updated);
    TouchedRows removed(RowsChange::Kind::Removed);
    TouchedRows inserted(RowsChange::Kind::Inserted);
    QList<qsizetype> removedRows;
    const Wanted<Record> wanted(changes);
    for (qsizetype row = 0; !wanted.isEmpty() && row < records.size(); ++row) {
        const Record &current = records.at(row);
        const RecordChange<Record> *change = wanted.of(current.id);
        if (!change)
            continue;
        if (!change->after) {
            applied.changes.append(removalOf(current, row));
            removedRows.append(row);
            removed.add(row);
        } else if (Record after = changed(current, *change); after != current) {
            applied.changes.append(editOf(current, after, row));
            records[row] = std::move(after);
            updated.add(row);
        }
    }
    if (!removedRows.isEmpty())
        removeRows(records, removedRows);
    if (const auto arriving = arrivals(records, changes); !arriving.isEmpty()) {
        for (const qsizetype row : insertRows(records, arriving)) {
            applied.changes.append(additionOf(records.at(row), row));
            inserted.add(row);
        }
    }
    const int kinds = int(!updated.isEmpty()) + int(!removed.isEmpty()) + int(!inserted.isEmpty());
    if (kinds == 1)
        applied.rows = !updated.isEmpty() ? updated.rows() : !removed.isEmpty() ? removed.rows() : inserted.rows();
    else if (kinds > 1)
        applied.rows = RowsChange();
    return applied;
}

template AppliedChanges<ScheduleItem> applyChanges(QList<ScheduleItem> &, const QList<RecordChange<ScheduleItem>> &);
template AppliedChanges<ReminderItem> applyChanges(QList<ReminderItem> &, const QList<RecordChange<ReminderItem>> &);
template AppliedChanges<Goal> applyChanges(QList<Goal> &, const QList<RecordChange<Goal>> &);
template AppliedChanges<CalendarFeed> applyChanges(QList<CalendarFeed> &, const QList<RecordChange<CalendarFeed>> &);
template AppliedChanges<MarkdownCategory> applyChanges(QList<MarkdownCategory> &,
                                                       const QList<RecordChange<MarkdownCategory>> &);
template AppliedChanges<MarkdownDocument> applyChanges(QList<MarkdownDocument> &,
                                                       const QList<RecordChange<MarkdownDocument>> &);
template AppliedChanges<DeletedDocument> applyChanges(QList<DeletedDocument> &,
                                                      const QList<RecordChange<DeletedDocument>> &);

bool isSameText(const StateChange &first, const StateChange &second)
{
    return isOfOneList(first) && isOfOneList(second) && !touchesWaiting(first) && !touchesWaiting(second) &&
           (isSameText(first.schedules, second.schedules) || isSameText(first.reminders, second.reminders) ||
            isSameText(first.goals, second.goals) || isSameText(first.feeds, second.feeds) ||
            isSameText(first.categories, second.categories) || isSameText(first.documents, second.documents));
}

bool isSameRecord(const StateChange &first, const StateChange &second)
{
    return isOfOneList(first) && isOfOneList(second) &&
           (isSameRecord(first.schedules, second.schedules) || isSameRecord(first.reminders, second.reminders) ||
            isSameRecord(first.goals, second.goals) || isSameRecord(first.feeds, second.feeds) ||
            isSameRecord(first.categories, second.categories) || isSameRecord(first.documents, second.documents));
}

StateChange joinedEdits(StateChange first, const StateChange &second)
{
    joinEdit(first.schedules, second.schedules);
    joinEdit(first.reminders, second.reminders);
    joinEdit(first.goals, second.goals);
    joinEdit(first.feeds, second.feeds);
    joinEdit(first.categories, second.categories);
    joinEdit(first.documents, second.documents);
    joinWaiting(first, second);
    return first;
}

} // namespace tessaly
