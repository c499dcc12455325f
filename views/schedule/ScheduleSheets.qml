import QtQuick
import Tessaly.Schedule

/// The sheets of the schedule screen, each made when it first opens.
Item {
    id: sheets

    required property ScheduleViewModel viewModel

    // Bound components cannot be made by a Loader of another file in Qt 6.4.
    // qmllint disable unqualified

    SheetLoader {
        isOpen: sheets.viewModel.sheet === ScheduleViewModel.Import
        sourceComponent: CalendarSelectionView {
            onDone: sheets.viewModel.closeSheet()
        }
    }

    SheetLoader {
        isOpen: sheets.viewModel.sheet === ScheduleViewModel.Display
        sourceComponent: CalendarDisplaySettingsView {
            onDone: sheets.viewModel.closeSheet()
        }
    }

    SheetLoader {
        isOpen: sheets.viewModel.sheet === ScheduleViewModel.Sync
        sourceComponent: CalendarSyncSettingsView {
            onDone: sheets.viewModel.closeSheet()
        }
    }

    SheetLoader {
        isOpen: sheets.viewModel.isNoteOpen
        sourceComponent: ScheduleNoteEditor {
            note: sheets.viewModel.note
            viewModel: sheets.viewModel
        }
    }

    // qmllint enable unqualified
}
