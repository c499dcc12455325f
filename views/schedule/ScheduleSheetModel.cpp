#include "views/schedule/ScheduleSheetModel.h"

#include "store/PlannerStore.h"

namespace tessaly {

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
    connect(m_note.get(), &ScheduleNoteModel::saved, this, [this](const ScheduleItem &changed) {
        m_store->updateSchedule(changed);
        closeNote();
    });
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
