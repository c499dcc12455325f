import QtQuick
import Tessaly.Schedule

/// The sheets of the schedule screen, each made when it first opens.
Item {
    id: sheets

    required property ScheduleViewModel viewModel
    readonly property ScheduleSheetModel open: viewModel.sheets

    /// The note has closed, and what it was opened from is no longer shown.
    signal noteOpenerGone(int reason)
    /// The user wants to see the restore point in the file.
    signal restorePointRequested(fileName: string)

    // Bound components cannot be made by a Loader of another file in Qt 6.4.
    // qmllint disable unqualified

    SheetLoader {
        isOpen: sheets.open.sheet === ScheduleSheetModel.Import
        sourceComponent: CalendarSelectionView {
            onDone: sheets.open.closeSheet()
        }
    }

    SheetLoader {
        isOpen: sheets.open.sheet === ScheduleSheetModel.Display
        sourceComponent: CalendarDisplaySettingsView {
            onDone: sheets.open.closeSheet()
        }
    }

    SheetLoader {
        isOpen: sheets.open.sheet === ScheduleSheetModel.Sync
        sourceComponent: CalendarSyncSettingsView {
            onDone: sheets.open.closeSheet()
            onRestorePointRequested: fileName => {
                sheets.open.closeSheet();
                sheets.restorePointRequested(fileName);
            }
        }
    }

    SheetLoader {
        isOpen: sheets.open.isNoteOpen
        sourceComponent: ScheduleNoteEditor {
            note: sheets.open.note
            viewModel: sheets.viewModel
            onOpenerGone: reason => sheets.noteOpenerGone(reason)
        }
    }

    // qmllint enable unqualified
}
