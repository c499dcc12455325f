#include "views/schedule/ScheduleNoteModel.h"

#include "model/LeadTime.h"
#include "model/ScheduleColors.h"
#include "store/PlannedItems.h"
#include "store/PlannerStore.h"
#include "views/schedule/ScheduleFormModel.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tessaly {

namespace {

/// Typed text is written to the disk at the latest after this time.
constexpr std::chrono::milliseconds longestDraftAge(500);

} // namespace

ScheduleNoteModel::ScheduleNoteModel(PlannerStore &store, const ScheduleItem &item, NoteMode mode, QObject *parent)
    : QObject(parent), m_store(store), m_draft(draftOf(item, mode)), m_opened(m_draft),
      m_tasks({
          {"title", [](const NoteTaskRow &row) -> QVariant { return row.title; }},
          {"isComplete", [](const NoteTaskRow &row) -> QVariant { return row.isComplete; }},
      })
{
    connect(&store, &PlannerStore::interfaceLanguageChanged, this, &ScheduleNoteModel::languageChanged);
    connect(&store, &PlannerStore::timeZoneChanged, this, &ScheduleNoteModel::languageChanged);
    connect(&store, &PlannerStore::timeZoneChanged, this, &ScheduleNoteModel::fieldsChanged);
    connect(&store, &PlannerStore::remindersChanged, this, &ScheduleNoteModel::plannedItemChanged);
    connect(&store, &PlannerStore::goalsChanged, this, &ScheduleNoteModel::plannedItemChanged);
    takeUpDraft();
    refreshTasks();
    m_draftTimer.setSingleShot(true);
    m_draftTimer.setInterval(longestDraftAge);
    connect(&m_draftTimer, &QTimer::timeout, this, &ScheduleNoteModel::keepDraft);
    connect(this, &ScheduleNoteModel::fieldsChanged, this, &ScheduleNoteModel::onTyped);
    connect(this, &ScheduleNoteModel::tasksChanged, this, &ScheduleNoteModel::onTyped);
}

ScheduleNoteModel::~ScheduleNoteModel()
{
    if (m_draftTimer.isActive())
        keepDraft();
}

PlannedItem ScheduleNoteModel::planned() const
{
    return plannedItem(m_draft.item, m_store.data()).value_or(PlannedItem());
}

void ScheduleNoteModel::togglePlanned()
{
    if (m_draft.item.plannedItemID)
        togglePlannedItem(m_store, *m_draft.item.plannedItemID);
}

void ScheduleNoteModel::onTyped()
{
    if (m_draft.isEditing && !m_draftTimer.isActive())
        m_draftTimer.start();
}

void ScheduleNoteModel::takeUpDraft()
{
    takeUpTyped(m_draft, m_store.noteDrafts().draft(m_draft.item.id));
    m_isBroughtBack = !typedFields(m_draft, m_opened).isEmpty();
}

void ScheduleNoteModel::keepDraft()
{
    m_draftTimer.stop();
    m_store.noteDrafts().keep(m_draft.item.id, typedFields(m_draft, m_opened));
}

void ScheduleNoteModel::dropDraft()
{
    m_draftTimer.stop();
    m_isBroughtBack = false;
    m_store.noteDrafts().drop(m_draft.item.id);
}

QString ScheduleNoteModel::timeText() const
{
    const QString start = m_store.dateText(m_draft.item.date, false);
    return m_draft.item.endDate ? start + QStringLiteral(" – ") + m_store.dateText(*m_draft.item.endDate, false)
                                : start;
}

void ScheduleNoteModel::type(QString &field, const QString &text)
{
    if (std::exchange(field, text) != text)
        emit fieldsChanged();
}

QDateTime ScheduleNoteModel::start() const
{
    return m_store.calendar().dateTime(m_draft.startDate);
}

void ScheduleNoteModel::setStart(const QDateTime &start)
{
    if (!start.isValid() || start == this->start())
        return;
    m_draft.startDate = m_store.calendar().instant(start.date(), start.time());
    emit fieldsChanged();
}

QDateTime ScheduleNoteModel::end() const
{
    return m_store.calendar().dateTime(m_draft.endDate);
}

QString ScheduleNoteModel::endNote() const
{
    return lateEndNote(m_store, {m_draft.startDate, m_draft.endDate});
}

void ScheduleNoteModel::setEnd(const QDateTime &end)
{
    if (!end.isValid() || end == this->end())
        return;
    m_draft.endDate = m_store.calendar().instant(end.date(), end.time());
    emit fieldsChanged();
}

QString ScheduleNoteModel::colorKey() const
{
    ScheduleItem shown = m_draft.item;
    shown.customColorHex = m_draft.colorHex;
    return scheduleColor(shown, linkColors(m_store.calendarFeeds()));
}

void ScheduleNoteModel::setColorHex(const QString &hex)
{
    if (std::exchange(m_draft.colorHex, hex) != hex)
        emit fieldsChanged();
}

void ScheduleNoteModel::remove()
{
    dropDraft();
    emit removed(m_draft.item);
}

int ScheduleNoteModel::leadChoice() const
{
    if (!m_draft.leadMinutes)
        return 0;
    if (*m_draft.leadMinutes < 0)
        return 1;
    const auto found = std::ranges::find(offeredLeadMinutes, *m_draft.leadMinutes);
    return 2 + static_cast<int>(found - offeredLeadMinutes.begin());
}

void ScheduleNoteModel::setLeadChoice(int row)
{
    if (row == leadChoice() || row < 0 || row > 1 + int(offeredLeadMinutes.size()))
        return;
    if (row == 0)
        m_draft.leadMinutes.reset();
    else
        m_draft.leadMinutes = row == 1 ? -1 : offeredLeadMinutes.at(static_cast<size_t>(row - 2));
    emit fieldsChanged();
}

QStringList ScheduleNoteModel::leadChoices() const
{
    const AppLanguage language = m_store.interfaceLanguage();
    QStringList texts{m_store.text(QStringLiteral("按日历的设置"), QStringLiteral("As its calendar")),
                      m_store.text(QStringLiteral("不提醒"), QStringLiteral("None"))};
    for (const int minutes : offeredLeadMinutes)
        texts.append(leadText(minutes).in(language));
    const double opened = m_draft.item.leadMinutes.value_or(-1);
    if (opened >= 0 && std::ranges::find(offeredLeadMinutes, opened) == offeredLeadMinutes.end())
        texts.append(leadText(static_cast<int>(opened)).in(language));
    return texts;
}

void ScheduleNoteModel::startEditing()
{
    takeUpDraft();
    m_draft.isEditing = true;
    refreshTasks();
    emit fieldsChanged();
    emit isEditingChanged();
}

void ScheduleNoteModel::cancel()
{
    dropDraft();
    leaveEditing();
    emit cancelled();
}

void ScheduleNoteModel::setAside()
{
    if (typedFields(m_draft, m_opened).isEmpty()) {
        cancel();
        return;
    }
    keepDraft();
    leaveEditing();
}

void ScheduleNoteModel::leaveEditing()
{
    cancelEditing(m_draft);
    m_isBroughtBack = false;
    refreshTasks();
    emit fieldsChanged();
    emit isEditingChanged();
}

void ScheduleNoteModel::save()
{
    // One that was typed and not added yet is not lost.
    addTask();
    const ScheduleItem edited = editedSchedule(m_draft);
    m_draft.isEditing = false;
    emit saved(edited);
    // While the schedule could not be written, the draft is all that there is of it on the disk.
    if (!m_store.hasUnsavedChanges())
        dropDraft();
}

void ScheduleNoteModel::toggleTask(int row)
{
    changeTask(row, [](ScheduleTask &task) { task.isComplete = !task.isComplete; });
    if (hasTask(row))
        emit saved(scheduleWithTasks(m_draft));
}

void ScheduleNoteModel::addTask()
{
    tessaly::addTask(m_draft);
    refreshTasks();
    emit fieldsChanged();
}

void ScheduleNoteModel::deleteTask(int row)
{
    if (!hasTask(row))
        return;
    m_draft.tasks.removeAt(row);
    refreshTasks();
}

void ScheduleNoteModel::refreshTasks()
{
    QList<NoteTaskRow> rows;
    rows.reserve(m_draft.tasks.size());
    for (const ScheduleTask &task : std::as_const(m_draft.tasks))
        rows.append({task.id, task.title, task.isComplete});
    m_tasks.setRows(rows);
    emit tasksChanged();
}

} // namespace tessaly
