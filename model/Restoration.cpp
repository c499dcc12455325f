#include "model/Restoration.h"

#include "model/StateDifference.h"
#include "model/Uuid.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

/// The earlier state of a record, with what no restore touches as it is now.
template <class Record>
Record earlier(const Record &then, const Record &now)
{
    Record record = then;
    if constexpr (requires { record.calendarEventIdentifier; }) {
        record.calendarExportRequested = now.calendarExportRequested;
        record.calendarEventIdentifier = now.calendarEventIdentifier;
        record.calendarIdentifier = now.calendarIdentifier;
        record.calendarColorHex = now.calendarColorHex;
    }
    if constexpr (requires { record.lastUpdated; })
        record.lastUpdated = now.lastUpdated;
    if constexpr (requires { record.updatedAt; })
        record.updatedAt = now.updatedAt;
    return record;
}

// Whether what the user knows of a record is the same, and what differs first.

DifferingPart difference(const ScheduleItem &a, const ScheduleItem &b)
{
    if (a.title != b.title)
        return DifferingPart::Title;
    if (a.date != b.date || a.end() != b.end())
        return DifferingPart::Time;
    if (a.notes != b.notes)
        return DifferingPart::Notes;
    if (a.tasks != b.tasks || a.isTaskComplete != b.isTaskComplete)
        return DifferingPart::Tasks;
    if (a.tag != b.tag)
        return DifferingPart::Category;
    if (a.colorName != b.colorName || a.customColorHex != b.customColorHex)
        return DifferingPart::Color;
    return earlier(b, a) == a ? DifferingPart::Nothing : DifferingPart::Value;
}

DifferingPart difference(const ReminderItem &a, const ReminderItem &b)
{
    if (a.title != b.title)
        return DifferingPart::Title;
    if (a.dueDate != b.dueDate)
        return DifferingPart::DueDate;
    if (a.isComplete != b.isComplete)
        return DifferingPart::Completion;
    return a == b ? DifferingPart::Nothing : DifferingPart::Notes;
}

DifferingPart difference(const Goal &a, const Goal &b)
{
    if (a.title != b.title)
        return DifferingPart::Title;
    if (a.targetDate != b.targetDate)
        return DifferingPart::DueDate;
    if (a.isComplete != b.isComplete || a.progress != b.progress)
        return DifferingPart::Completion;
    if (a.subgoals != b.subgoals)
        return DifferingPart::Tasks;
    if (a.summary != b.summary)
        return DifferingPart::Notes;
    if (a.category != b.category)
        return DifferingPart::Category;
    return a == b ? DifferingPart::Nothing : DifferingPart::Color;
}

DifferingPart difference(const CalendarFeed &a, const CalendarFeed &b)
{
    if (a.name != b.name)
        return DifferingPart::Title;
    return a.urlString == b.urlString ? DifferingPart::Nothing : DifferingPart::Address;
}

DifferingPart difference(const MarkdownCategory &a, const MarkdownCategory &b)
{
    return a == b ? DifferingPart::Nothing : DifferingPart::Title;
}

DifferingPart difference(const MarkdownDocument &a, const MarkdownDocument &b)
{
    if (a.title != b.title)
        return DifferingPart::Title;
    return a.categoryID == b.categoryID ? DifferingPart::Nothing : DifferingPart::Category;
}

std::optional<Instant> dateOf(const ScheduleItem &item)
{
    return item.date;
}
std::optional<Instant> dateOf(const ReminderItem &item)
{
    return item.dueDate;
}
std::optional<Instant> dateOf(const Goal &goal)
{
    return goal.targetDate;
}
std::optional<Instant> dateOf(const CalendarFeed &)
{
    return {};
}
std::optional<Instant> dateOf(const MarkdownCategory &)
{
    return {};
}
std::optional<Instant> dateOf(const MarkdownDocument &document)
{
    return document.updatedAt;
}

template <class Record>
QString titleOf(const Record &record)
{
    if constexpr (requires { record.title; })
        return record.title;
    else
        return record.name;
}

template <class Record>
QList<RecordChange<Record>> changesOf(const QList<Record> &now, const QList<Record> &then)
{
    QList<RecordChange<Record>> changes;
    for (RecordChange<Record> &change : differences(now, then)) {
        const bool isEdit = change.before && change.after;
        if (isEdit && difference(*change.before, *change.after) == DifferingPart::Nothing)
            continue;
        if (isEdit)
            change.after = earlier(*change.after, *change.before);
        changes.append(std::move(change));
    }
    return changes;
}

Restoration restorationOf(bool isThereBefore, bool isThereAfter)
{
    return !isThereBefore ? Restoration::BringBack : isThereAfter ? Restoration::Change : Restoration::Remove;
}

template <class Record>
void appendRows(QList<DifferenceRow> &rows, StateArea area, const QList<RecordChange<Record>> &changes)
{
    const qsizetype first = rows.size();
    for (const RecordChange<Record> &change : changes) {
        const Record &shown = change.after ? *change.after : *change.before;
        const bool isEdit = change.before && change.after;
        rows.append({.area = area,
                     .restoration = restorationOf(change.before.has_value(), change.after.has_value()),
                     .key = uuidText(change.id),
                     .title = titleOf(shown),
                     .part = isEdit ? difference(*change.before, *change.after) : DifferingPart::Nothing,
                     .date = dateOf(shown)});
    }
    std::stable_sort(rows.begin() + first, rows.end(),
                     [](const DifferenceRow &a, const DifferenceRow &b) { return a.restoration < b.restoration; });
}

template <class Record>
void keepChosen(QList<RecordChange<Record>> &changes, const QSet<QString> &keys)
{
    changes.removeIf([&](const RecordChange<Record> &change) { return !keys.contains(uuidText(change.id)); });
}

/// The identifier of its event stays: an event that is there after all continues the schedule instead of coming as a
/// second one, and nothing writes the schedule to a calendar unasked.
void unlink(ScheduleItem &item)
{
    item.calendarExportRequested.reset();
    item.calendarIdentifier.reset();
    item.calendarColorHex.reset();
}

/// Events of links whose schedule goes: an earlier schedule of the same event takes its place.
QSet<QString> handedOverEvents(const QList<RecordChange<ScheduleItem>> &changes)
{
    QSet<QString> events;
    for (const RecordChange<ScheduleItem> &change : changes) {
        const bool isGoing = change.before && !change.after;
        if (isGoing && isFeedCalendar(change.before->calendarIdentifier.value_or(QString())))
            events.insert(change.before->calendarEventIdentifier.value_or(QString()));
    }
    return events;
}

} // namespace

StateChange restoration(const PlannerState &now, const PlannerState &then)
{
    StateChange change{.schedules = changesOf(now.data.schedules, then.data.schedules),
                       .reminders = changesOf(now.data.reminders, then.data.reminders),
                       .goals = changesOf(now.data.goals, then.data.goals),
                       .feeds = changesOf(now.feeds, then.feeds),
                       .categories = changesOf(now.library.categories, then.library.categories),
                       .documents = changesOf(now.library.documents, then.library.documents)};
    const auto valueIn = [](const QMap<QString, PreferenceValue> &settings, const QString &key) {
        const auto found = settings.constFind(key);
        return found == settings.cend() ? std::nullopt : std::optional(*found);
    };
    QMap<QString, PreferenceValue> all = now.settings;
    all.insert(then.settings);
    for (const QString &key : all.keys()) {
        const SettingChange setting{valueIn(now.settings, key), valueIn(then.settings, key)};
        if (setting.before != setting.after)
            change.settings.insert(key, setting);
    }
    return change;
}

QList<DifferenceRow> differenceRows(const StateChange &change)
{
    QList<DifferenceRow> rows;
    appendRows(rows, StateArea::Schedules, change.schedules);
    appendRows(rows, StateArea::ToDos, change.reminders);
    appendRows(rows, StateArea::Goals, change.goals);
    appendRows(rows, StateArea::Links, change.feeds);
    appendRows(rows, StateArea::Documents, change.categories);
    appendRows(rows, StateArea::Documents, change.documents);
    for (auto setting = change.settings.cbegin(); setting != change.settings.cend(); ++setting)
        rows.append({.area = StateArea::Settings,
                     .restoration = Restoration::Change,
                     .key = setting.key(),
                     .part = DifferingPart::Value});
    return rows;
}

StateChange chosenPart(const StateChange &restoration, const QSet<QString> &keys)
{
    StateChange chosen = restoration;
    keepChosen(chosen.schedules, keys);
    keepChosen(chosen.reminders, keys);
    keepChosen(chosen.goals, keys);
    keepChosen(chosen.feeds, keys);
    keepChosen(chosen.categories, keys);
    keepChosen(chosen.documents, keys);
    for (const QString &key : restoration.settings.keys()) {
        if (!keys.contains(key))
            chosen.settings.remove(key);
    }
    QSet<QString> links;
    for (const RecordChange<CalendarFeed> &feed : std::as_const(chosen.feeds)) {
        if (!feed.before)
            links.insert(feedCalendarIdentifier(feed.id));
    }
    const QSet<QString> handedOver = handedOverEvents(chosen.schedules);
    for (RecordChange<ScheduleItem> &schedule : chosen.schedules) {
        if (schedule.before || links.contains(schedule.after->calendarIdentifier.value_or(QString())))
            continue;
        if (!handedOver.contains(schedule.after->calendarEventIdentifier.value_or(QString())))
            unlink(*schedule.after);
    }
    return chosen;
}

} // namespace tessaly
