#include "model/StepDescription.h"

#include <algorithm>

namespace tessaly {

namespace {

/// What is done with a record.
enum class Deed { Add, Delete, Restore, Edit, Complete, Reopen, Move };

TextPair nameOf(Deed deed, const TextPair &record)
{
    static const QMap<Deed, TextPair> verbs = {
        {Deed::Add, {QStringLiteral("添加"), QStringLiteral("Add ")}},
        {Deed::Delete, {QStringLiteral("删除"), QStringLiteral("Delete ")}},
        {Deed::Restore, {QStringLiteral("恢复"), QStringLiteral("Restore ")}},
        {Deed::Edit, {QStringLiteral("编辑"), QStringLiteral("Edit ")}},
        {Deed::Complete, {QStringLiteral("完成"), QStringLiteral("Complete ")}},
        {Deed::Reopen, {QStringLiteral("恢复未完成的"), QStringLiteral("Reopen ")}},
        {Deed::Move, {QStringLiteral("移动"), QStringLiteral("Move ")}},
    };
    const TextPair verb = verbs.value(deed);
    return {verb.chinese + record.chinese, verb.english + record.english};
}

TextPair scheduleWord()
{
    return {QStringLiteral("日程"), QStringLiteral("schedule")};
}
TextPair toDoWord()
{
    return {QStringLiteral("待办"), QStringLiteral("to-do")};
}
TextPair goalWord()
{
    return {QStringLiteral("目标"), QStringLiteral("goal")};
}
TextPair subgoalWord()
{
    return {QStringLiteral("子目标"), QStringLiteral("subgoal")};
}
TextPair taskWord()
{
    return {QStringLiteral("任务"), QStringLiteral("task")};
}
TextPair linkWord()
{
    return {QStringLiteral("链接日历"), QStringLiteral("linked calendar")};
}
TextPair categoryWord()
{
    return {QStringLiteral("分类"), QStringLiteral("category")};
}
TextPair documentWord()
{
    return {QStringLiteral("文档"), QStringLiteral("document")};
}

template <class Record>
QString titleOf(const Record &record)
{
    return record.title;
}
QString titleOf(const CalendarFeed &feed)
{
    return feed.name;
}
QString titleOf(const MarkdownCategory &category)
{
    return category.name;
}

template <class Record>
Deed completion(const Record &before, const Record &after)
{
    if (before.isComplete == after.isComplete)
        return Deed::Edit;
    return after.isComplete ? Deed::Complete : Deed::Reopen;
}

/// What differs between two lists within a record, as far as it concerns the records of the lists themselves.
template <class Record>
std::optional<StepDescription> difference(const QList<Record> &before, const QList<Record> &after, const TextPair &word)
{
    const auto missing = [](const QList<Record> &from, const QList<Record> &in) {
        QStringList titles;
        for (const Record &record : from) {
            if (std::ranges::find(in, record.id, &Record::id) == in.cend())
                titles.append(titleOf(record));
        }
        return titles;
    };
    if (const QStringList removed = missing(before, after); !removed.isEmpty())
        return StepDescription{nameOf(Deed::Delete, word), removed};
    if (!missing(after, before).isEmpty())
        return StepDescription{nameOf(Deed::Add, word)};
    if (!std::ranges::equal(before, after, {}, &Record::id, &Record::id))
        return StepDescription{nameOf(Deed::Move, word)};
    return std::nullopt;
}

/// A change within a list whose records stay.
template <class Record>
StepDescription editWithin(const QList<Record> &before, const QList<Record> &after, const TextPair &word)
{
    for (qsizetype row = 0; row < before.size(); ++row) {
        if (before.at(row) != after.at(row))
            return {nameOf(completion(before.at(row), after.at(row)), word)};
    }
    return {};
}

StepDescription subgoalEdit(const Subgoal &before, const Subgoal &after)
{
    const QList<GoalTask> tasksBefore = before.tasks.value_or(QList<GoalTask>());
    const QList<GoalTask> tasksAfter = after.tasks.value_or(QList<GoalTask>());
    if (const auto tasks = difference(tasksBefore, tasksAfter, taskWord()))
        return *tasks;
    if (tasksBefore != tasksAfter)
        return editWithin(tasksBefore, tasksAfter, taskWord());
    return {nameOf(completion(before, after), subgoalWord())};
}

StepDescription edit(const Goal &before, const Goal &after)
{
    const QList<Subgoal> subgoalsBefore = before.subgoals.value_or(QList<Subgoal>());
    const QList<Subgoal> subgoalsAfter = after.subgoals.value_or(QList<Subgoal>());
    if (const auto subgoals = difference(subgoalsBefore, subgoalsAfter, subgoalWord()))
        return *subgoals;
    for (qsizetype row = 0; row < subgoalsBefore.size(); ++row) {
        if (subgoalsBefore.at(row) != subgoalsAfter.at(row))
            return subgoalEdit(subgoalsBefore.at(row), subgoalsAfter.at(row));
    }
    return {nameOf(completion(before, after), goalWord())};
}

StepDescription edit(const ScheduleItem &before, const ScheduleItem &after)
{
    const QList<ScheduleTask> tasksBefore = before.tasks.value_or(QList<ScheduleTask>());
    const QList<ScheduleTask> tasksAfter = after.tasks.value_or(QList<ScheduleTask>());
    ScheduleItem otherwiseSame = after;
    otherwiseSame.tasks = before.tasks;
    if (otherwiseSame != before || tasksBefore == tasksAfter)
        return {nameOf(Deed::Edit, scheduleWord())};
    if (const auto tasks = difference(tasksBefore, tasksAfter, taskWord()))
        return *tasks;
    return editWithin(tasksBefore, tasksAfter, taskWord());
}

StepDescription edit(const ReminderItem &before, const ReminderItem &after)
{
    return {nameOf(completion(before, after), toDoWord())};
}
StepDescription edit(const CalendarFeed &before, const CalendarFeed &after)
{
    if (before.name != after.name)
        return {{QStringLiteral("重命名链接日历"), QStringLiteral("Rename linked calendar")}};
    if (before.colorHex != after.colorHex)
        return {{QStringLiteral("更改链接日历的颜色"), QStringLiteral("Change color of linked calendar")}};
    return {nameOf(Deed::Edit, linkWord())};
}
StepDescription edit(const MarkdownCategory &, const MarkdownCategory &)
{
    return {nameOf(Deed::Edit, categoryWord())};
}
StepDescription edit(const MarkdownDocument &, const MarkdownDocument &)
{
    return {nameOf(Deed::Edit, documentWord())};
}

/// Nothing when the list did not change.
template <class Record>
std::optional<StepDescription> describeList(const QList<RecordChange<Record>> &changes, const TextPair &word)
{
    if (changes.isEmpty())
        return std::nullopt;
    StepDescription description;
    for (const RecordChange<Record> &change : changes) {
        if (change.before && !change.after)
            description.removed.append(titleOf(*change.before));
    }
    const RecordChange<Record> &first = changes.constFirst();
    if (!description.removed.isEmpty())
        description.name = nameOf(Deed::Delete, word);
    else if (!first.before)
        description.name = nameOf(Deed::Add, word);
    else
        description = edit(*first.before, *first.after);
    return description;
}

StepDescription describeLists(const StateChange &change)
{
    // What takes others along comes first: a link its schedules, a category the documents that were in it.
    if (const auto feeds = describeList(change.feeds, linkWord()))
        return *feeds;
    if (const auto categories = describeList(change.categories, categoryWord()))
        return *categories;
    const bool isRestored = !change.deletedDocuments.isEmpty() && !change.deletedDocuments.constFirst().after;
    if (isRestored)
        return {nameOf(Deed::Restore, documentWord())};
    if (const auto documents = describeList(change.documents, documentWord()))
        return *documents;
    if (const auto schedules = describeList(change.schedules, scheduleWord()))
        return *schedules;
    if (const auto reminders = describeList(change.reminders, toDoWord()))
        return *reminders;
    return describeList(change.goals, goalWord()).value_or(StepDescription());
}

} // namespace

StepDescription describe(const StateChange &change)
{
    StepDescription description = describeLists(change);
    const qsizetype count = description.removed.size();
    if (count == 1) {
        const QString &title = description.removed.constFirst();
        description.report = {QStringLiteral("已删除“%1”").arg(title), QStringLiteral("Deleted “%1”").arg(title)};
    } else if (count > 1) {
        const QString number = QString::number(count);
        description.report = {QStringLiteral("已删除 %1 项").arg(number),
                              QStringLiteral("Deleted %1 items").arg(number)};
    }
    return description;
}

} // namespace tessaly
