#include "model/ScheduleDraft.h"

#include "model/DisplayTitle.h"
#include "model/ScheduleRules.h"
#include "model/Uuid.h"

#include <QJsonArray>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

void resetFields(ScheduleDraft &draft)
{
    draft.title = displayTitle(draft.item);
    draft.startDate = draft.item.date;
    draft.endDate = draft.item.end();
    draft.tag = draft.item.tag.value_or(QString());
    draft.notes = draft.item.notes;
    draft.leadMinutes = draft.item.leadMinutes;
    draft.colorHex = draft.item.customColorHex;
}

QJsonValue toJson(const std::optional<double> &number)
{
    return number ? QJsonValue(*number) : QJsonValue(QJsonValue::Null);
}

QJsonValue toJson(const std::optional<QString> &text)
{
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

QJsonValue toJson(const QString &text)
{
    return text;
}

QJsonValue toJson(const Instant &instant)
{
    return instant.seconds;
}

QJsonValue toJson(const QList<ScheduleTask> &tasks)
{
    QJsonArray json;
    for (const ScheduleTask &task : tasks)
        json.append(
            QJsonObject{{u"id"_s, uuidText(task.id)}, {u"title"_s, task.title}, {u"isComplete"_s, task.isComplete}});
    return json;
}

void read(const QJsonValue &json, std::optional<double> &number)
{
    if (json.isNull())
        number.reset();
    else if (json.isDouble())
        number = json.toDouble();
}

void read(const QJsonValue &json, std::optional<QString> &text)
{
    if (json.isNull())
        text.reset();
    else if (json.isString())
        text = json.toString();
}

void read(const QJsonValue &json, QString &text)
{
    text = json.toString(text);
}

void read(const QJsonValue &json, Instant &instant)
{
    instant.seconds = json.toDouble(instant.seconds);
}

void read(const QJsonValue &json, QList<ScheduleTask> &tasks)
{
    if (!json.isArray())
        return;
    tasks.clear();
    const QJsonArray entries = json.toArray();
    for (const QJsonValue &entry : entries)
        tasks.append({.id = QUuid::fromString(entry["id"_L1].toString()),
                      .title = entry["title"_L1].toString(),
                      .isComplete = entry["isComplete"_L1].toBool()});
}

/// Calls `visit` with each field that can be typed into: its key and where it is.
template <class Visit>
void visitFields(Visit visit)
{
    visit("title"_L1, &ScheduleDraft::title);
    visit("tag"_L1, &ScheduleDraft::tag);
    visit("startDate"_L1, &ScheduleDraft::startDate);
    visit("endDate"_L1, &ScheduleDraft::endDate);
    visit("leadMinutes"_L1, &ScheduleDraft::leadMinutes);
    visit("customColorHex"_L1, &ScheduleDraft::colorHex);
    visit("notes"_L1, &ScheduleDraft::notes);
    visit("tasks"_L1, &ScheduleDraft::tasks);
    visit("newTask"_L1, &ScheduleDraft::newTask);
}

} // namespace

ScheduleDraft draftOf(const ScheduleItem &item, NoteMode mode)
{
    ScheduleDraft draft{.item = item, .isEditing = mode == NoteMode::Edit};
    resetFields(draft);
    if (item.tasks)
        draft.tasks = *item.tasks;
    else if (item.taskTitle)
        draft.tasks = {{.title = *item.taskTitle, .isComplete = item.isTaskComplete}};
    return draft;
}

void addTask(ScheduleDraft &draft)
{
    const QString title = draft.newTask.trimmed();
    if (title.isEmpty())
        return;
    draft.tasks.append({.title = title});
    draft.newTask.clear();
}

ScheduleItem editedSchedule(const ScheduleDraft &draft)
{
    ScheduleItem edited = draft.item;
    // A title that was shown and not changed stays as it is stored.
    const QString title = draft.title.trimmed();
    if (!title.isEmpty() && draft.title != displayTitle(draft.item))
        edited.title = title;
    edited.date = draft.startDate;
    edited.endDate = leastEnd({draft.startDate, draft.endDate});
    edited.tag = draft.tag.isEmpty() ? std::nullopt : std::optional(draft.tag);
    edited.notes = draft.notes;
    edited.leadMinutes = draft.leadMinutes;
    edited.customColorHex = draft.colorHex;
    edited.tasks = draft.tasks;
    edited.taskTitle = std::nullopt;
    edited.isTaskComplete = false;
    return edited;
}

ScheduleItem duplicateOf(const ScheduleItem &schedule)
{
    ScheduleItem copy = schedule;
    copy.id = QUuid::createUuid();
    if (copy.tasks) {
        for (ScheduleTask &task : *copy.tasks)
            task.id = QUuid::createUuid();
    }
    if (!copy.customColorHex && !copy.colorName)
        copy.customColorHex = schedule.calendarColorHex;
    copy.calendarExportRequested.reset();
    copy.calendarEventIdentifier.reset();
    copy.calendarIdentifier.reset();
    copy.calendarColorHex.reset();
    return copy;
}

ScheduleItem scheduleWithTasks(const ScheduleDraft &draft)
{
    ScheduleItem changed = draft.item;
    changed.tasks = draft.tasks;
    return changed;
}

QJsonObject typedFields(const ScheduleDraft &draft, const ScheduleDraft &opened)
{
    QJsonObject fields;
    visitFields([&](QLatin1String key, auto field) {
        if (draft.*field != opened.*field)
            fields.insert(key, toJson(draft.*field));
    });
    return fields;
}

void takeUpTyped(ScheduleDraft &draft, const QJsonObject &fields)
{
    const ScheduleDraft opened = draft;
    visitFields([&](QLatin1String key, auto field) { read(fields[key], draft.*field); });
    draft.isEditing = draft.isEditing || draft != opened;
}

void cancelEditing(ScheduleDraft &draft)
{
    resetFields(draft);
    draft.tasks = draft.item.tasks.value_or(QList<ScheduleTask>());
    draft.isEditing = false;
}

} // namespace tessaly
