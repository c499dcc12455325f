#include "views/schedule/ScheduleSheetModel.h"

#include "store/PlannerStore.h"
#include "store/RecordRows.h"

#include <QTimer>

namespace tessaly {

void ScheduleSheetModel::setStore(PlannerStore *store)
{
    m_store = store;
    connect(&store->calendarLinks(), &CalendarLinks::openingRequested, this, &ScheduleSheetModel::openImportSettings);
    connect(store, &PlannerStore::schedulesChanged, this, [this] {
        if (m_isNoteOpen && !m_note->isEditing() && rowOf(m_store->schedules(), m_note->scheduleId()) < 0)
            closeNote();
    });
    // The screen that shows the sheet is still being made.
    if (store->calendarLinks().hasOpening())
        QTimer::singleShot(0, this, &ScheduleSheetModel::openImportSettings);
}

void ScheduleSheetModel::openImportSettings()
{
    setSheet(Sheet::Import);
    m_store->calendarSync()->requestCalendarAccessAndLoad();
}

void ScheduleSheetModel::openDisplaySettings()
{
    setSheet(Sheet::Display);
    m_store->calendarSync()->requestCalendarAccessAndLoad();
}

void ScheduleSheetModel::openSyncSettings()
{
    setSheet(Sheet::Sync);
}

void ScheduleSheetModel::closeSheet()
{
    setSheet(Sheet::None);
}

void ScheduleSheetModel::setSheet(Sheet sheet)
{
    if (m_sheet == sheet)
        return;
    m_sheet = sheet;
    emit sheetChanged();
}

void ScheduleSheetModel::openNote(const ScheduleItem &schedule, NoteMode mode)
{
    // The editor shows the former note until noteChanged() is emitted.
    const std::unique_ptr<ScheduleNoteModel> former = std::move(m_note);
    m_note = std::make_unique<ScheduleNoteModel>(*m_store, schedule, mode);
    connect(m_note.get(), &ScheduleNoteModel::saved, this, [this, schedule](const ScheduleItem &changed) {
        // Undo, a sync or a link can have taken the schedule away meanwhile; what was written is worth keeping.
        if (rowOf(m_store->schedules(), changed.id) >= 0)
            m_store->updateSchedule(changed);
        else if (changed != schedule)
            m_store->addSchedule(duplicateOf(changed));
        closeNote();
    });
    connect(m_note.get(), &ScheduleNoteModel::removed, this, [this](const ScheduleItem &item) {
        closeNote();
        m_store->deleteSchedule(item);
    });
    connect(
        m_note.get(), &ScheduleNoteModel::duplicated, this,
        [this](const ScheduleItem &item) {
            const ScheduleItem copy = duplicateOf(item);
            m_store->addSchedule(copy);
            openNote(copy, NoteMode::Edit);
            // Cancelled, there is no copy.
            connect(
                m_note.get(), &ScheduleNoteModel::cancelled, this,
                [this, copy] {
                    closeNote();
                    m_store->deleteSchedule(copy);
                },
                Qt::QueuedConnection);
        },
        Qt::QueuedConnection); // the note that emits it is replaced
    connect(m_note.get(), &ScheduleNoteModel::closed, this, &ScheduleSheetModel::closeNote);
    emit noteChanged();
    setNoteOpen(true);
}

void ScheduleSheetModel::closeNote()
{
    setNoteOpen(false);
}

void ScheduleSheetModel::setNoteOpen(bool isOpen)
{
    if (m_isNoteOpen == isOpen)
        return;
    m_isNoteOpen = isOpen;
    emit isNoteOpenChanged();
}

} // namespace tessaly
