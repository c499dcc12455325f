#pragma once

#include "views/schedule/ScheduleNoteModel.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessaly {

class PlannerStore;

/// What is open over the schedule screen: one of the settings sheets, or the note of a schedule.
class ScheduleSheetModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(Sheet sheet READ sheet NOTIFY sheetChanged)
    Q_PROPERTY(tessaly::ScheduleNoteModel *note READ note NOTIFY noteChanged)
    Q_PROPERTY(bool isNoteOpen READ isNoteOpen NOTIFY isNoteOpenChanged)

public:
    /// The settings sheet that is open.
    enum class Sheet { None, Import, Display, Sync };
    Q_ENUM(Sheet)

    using QObject::QObject;

    /// The store must outlive the model.
    void setStore(PlannerStore *store);

    [[nodiscard]] Sheet sheet() const { return m_sheet; }
    /// The state of the note editor that is open or was last; null before the first.
    [[nodiscard]] ScheduleNoteModel *note() const { return m_note.get(); }
    [[nodiscard]] bool isNoteOpen() const { return m_isNoteOpen; }

    /// Opens the note of a schedule. Saving it changes the store's schedule and closes the note. When the schedule goes
    /// meanwhile, a note that is only shown closes, and saving one that is edited adds another like it.
    void openNote(const ScheduleItem &schedule, NoteMode mode);

    Q_INVOKABLE void openImportSettings();
    Q_INVOKABLE void openDisplaySettings();
    Q_INVOKABLE void openSyncSettings();
    Q_INVOKABLE void closeSheet();
    void closeNote();

signals:
    void sheetChanged();
    void noteChanged();
    void isNoteOpenChanged();

private:
    void setSheet(Sheet sheet);
    void setNoteOpen(bool isOpen);

    PlannerStore *m_store = nullptr;
    std::unique_ptr<ScheduleNoteModel> m_note;
    Sheet m_sheet = Sheet::None;
    bool m_isNoteOpen = false;
};

} // namespace tessaly
