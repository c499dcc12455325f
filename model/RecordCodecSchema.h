#pragma once

#include "model/CalendarFeed.h"
#include "model/RecordCodecField.h"
#include "model/SavedData.h"

/// The keys of the persisted records, once for reading, writing and comparing field by field. Internal to the codec
/// and StateChange.
namespace tessaly::codec {

template <>
struct Schema<ScheduleTask>
{
    using Fields = FieldList<Field<"id", &ScheduleTask::id, Presence::Required>,
                             Field<"title", &ScheduleTask::title, Presence::Required>,
                             Field<"isComplete", &ScheduleTask::isComplete, Presence::Required>>;
};

template <>
struct Schema<ScheduleItem>
{
    using Fields =
        FieldList<Field<"id", &ScheduleItem::id, Presence::FreshIfAbsent>,
                  Field<"title", &ScheduleItem::title, Presence::Required>,
                  Field<"date", &ScheduleItem::date, Presence::Required>,
                  Field<"endDate", &ScheduleItem::endDate, Presence::Optional>,
                  Field<"notes", &ScheduleItem::notes, Presence::Optional>,
                  Field<"taskTitle", &ScheduleItem::taskTitle, Presence::Optional>,
                  Field<"isTaskComplete", &ScheduleItem::isTaskComplete, Presence::Optional>,
                  Field<"tasks", &ScheduleItem::tasks, Presence::Optional>,
                  Field<"tag", &ScheduleItem::tag, Presence::Optional>,
                  Field<"colorName", &ScheduleItem::colorName, Presence::Optional>,
                  Field<"customColorHex", &ScheduleItem::customColorHex, Presence::Optional>,
                  Field<"calendarExportRequested", &ScheduleItem::calendarExportRequested, Presence::Optional>,
                  Field<"calendarEventIdentifier", &ScheduleItem::calendarEventIdentifier, Presence::Optional>,
                  Field<"calendarIdentifier", &ScheduleItem::calendarIdentifier, Presence::Optional>,
                  Field<"calendarColorHex", &ScheduleItem::calendarColorHex, Presence::Optional>,
                  Field<"leadMinutes", &ScheduleItem::leadMinutes, Presence::Optional>,
                  Field<"plannedItemID", &ScheduleItem::plannedItemID, Presence::Optional>>;
};

template <>
struct Schema<ReminderItem>
{
    using Fields = FieldList<Field<"id", &ReminderItem::id, Presence::FreshIfAbsent>,
                             Field<"title", &ReminderItem::title, Presence::Required>,
                             Field<"dueDate", &ReminderItem::dueDate, Presence::Optional>,
                             Field<"requirement", &ReminderItem::requirement, Presence::Optional>,
                             Field<"isComplete", &ReminderItem::isComplete, Presence::Optional>,
                             Field<"completedAt", &ReminderItem::completedAt, Presence::Optional>,
                             Field<"recurrenceRule", &ReminderItem::recurrenceRule, Presence::Optional>,
                             Field<"recurrenceStart", &ReminderItem::recurrenceStart, Presence::Optional>,
                             Field<"recursAfterCompletion", &ReminderItem::recursAfterCompletion, Presence::Optional>>;
};

template <>
struct Schema<GoalTask>
{
    using Fields = FieldList<Field<"id", &GoalTask::id, Presence::FreshIfAbsent>,
                             Field<"title", &GoalTask::title, Presence::Required>,
                             Field<"weight", &GoalTask::weight, Presence::Optional>,
                             Field<"isComplete", &GoalTask::isComplete, Presence::Optional>,
                             Field<"completedAt", &GoalTask::completedAt, Presence::Optional>>;
};

template <>
struct Schema<Subgoal>
{
    using Fields = FieldList<Field<"id", &Subgoal::id, Presence::FreshIfAbsent>,
                             Field<"title", &Subgoal::title, Presence::Required>,
                             Field<"tasks", &Subgoal::tasks, Presence::Optional>,
                             Field<"isComplete", &Subgoal::isComplete, Presence::Optional>,
                             Field<"completedAt", &Subgoal::completedAt, Presence::Optional>>;
};

template <>
struct Schema<Goal>
{
    using Fields =
        FieldList<Field<"id", &Goal::id, Presence::FreshIfAbsent>, Field<"title", &Goal::title, Presence::Required>,
                  Field<"summary", &Goal::summary, Presence::Optional>,
                  Field<"category", &Goal::category, Presence::Optional>,
                  Field<"targetDate", &Goal::targetDate, Presence::Optional>,
                  Field<"progress", &Goal::progress, Presence::Optional>,
                  Field<"colorName", &Goal::colorName, Presence::Optional>,
                  Field<"isComplete", &Goal::isComplete, Presence::Optional>,
                  Field<"subgoals", &Goal::subgoals, Presence::Optional>>;
};

template <>
struct Schema<MarkdownCategory>
{
    using Fields = FieldList<Field<"id", &MarkdownCategory::id, Presence::Required>,
                             Field<"name", &MarkdownCategory::name, Presence::Required>>;
};

template <>
struct Schema<MarkdownDocument>
{
    using Fields = FieldList<Field<"id", &MarkdownDocument::id, Presence::Required>,
                             Field<"title", &MarkdownDocument::title, Presence::Required>,
                             Field<"categoryID", &MarkdownDocument::categoryID, Presence::Optional>,
                             Field<"updatedAt", &MarkdownDocument::updatedAt, Presence::Required>>;
};

template <>
struct Schema<DeletedDocument>
{
    using Fields = FieldList<Field<"id", &DeletedDocument::id, Presence::Required>,
                             Field<"title", &DeletedDocument::title, Presence::Required>,
                             Field<"categoryID", &DeletedDocument::categoryID, Presence::Optional>,
                             Field<"updatedAt", &DeletedDocument::updatedAt, Presence::Required>,
                             Field<"deletedAt", &DeletedDocument::deletedAt, Presence::Required>>;
};

template <>
struct Schema<CalendarFeed>
{
    using Fields = FieldList<Field<"id", &CalendarFeed::id, Presence::Required>,
                             Field<"name", &CalendarFeed::name, Presence::Required>,
                             Field<"urlString", &CalendarFeed::urlString, Presence::Required>,
                             Field<"lastUpdated", &CalendarFeed::lastUpdated, Presence::Optional>,
                             Field<"colorHex", &CalendarFeed::colorHex, Presence::Optional>,
                             Field<"isKeptUpToDate", &CalendarFeed::isKeptUpToDate, Presence::Optional>,
                             Field<"readsRepetitions", &CalendarFeed::readsRepetitions, Presence::Optional>>;
};

template <>
struct Schema<SavedData>
{
    using Fields = FieldList<Field<"schedules", &SavedData::schedules, Presence::Required>,
                             Field<"reminders", &SavedData::reminders, Presence::Required>,
                             Field<"goals", &SavedData::goals, Presence::Required>>;
};

template <>
struct Schema<DocumentLibraryData>
{
    using Fields = FieldList<Field<"categories", &DocumentLibraryData::categories, Presence::Required>,
                             Field<"documents", &DocumentLibraryData::documents, Presence::Required>,
                             Field<"deleted", &DocumentLibraryData::deleted, Presence::Optional>>;
};

} // namespace tessaly::codec
