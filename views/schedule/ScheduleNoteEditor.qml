import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Ui

/// The sheet of one schedule, for viewing or editing. Both modes are equally wide, so that the sheet does not jump.
Sheet {
    id: sheet

    required property ScheduleNoteModel note
    required property ScheduleViewModel viewModel

    readonly property bool isEditing: note?.isEditing ?? false

    function leave() {
        if (!isEditing) {
            note.close();
            return;
        }
        note.setAside();
        // Whatever had the focus: Esc is a key.
        FocusHandover.give(primary, Qt.TabFocusReason);
    }

    title: isEditing ? Language.text("编辑日程", "Edit schedule") : note?.heading ?? ""
    titleLines: 2
    sheetWidth: 540
    showsToast: true
    status: note?.isBroughtBack ? Language.text("已恢复上次未保存的修改。", "Changes that had not been saved were brought back.") : ""
    primaryButton: primary
    initialFocus: isEditing ? edit.titleField : null
    onOpened: {
        if (isEditing && !isFocusChosen)
            edit.focusTitle();
    }
    onIsEditingChanged: {
        if (isEditing && (opened || activeFocus))
            edit.focusTitle();
        else if (opened)
            FocusHandover.give(primary, FocusHandover.reasonAfter(primary.Window.activeFocusItem));
    }
    onLeaving: leave()

    foot: [
        AppButton {
            id: deleteButton

            visible: !sheet.isEditing
            kind: AppButton.Destructive
            isRaised: true
            text: Language.text("删除", "Delete")
            onClicked: sheet.note.remove()
        },
        AppButton {
            anchors.left: deleteButton.right
            anchors.leftMargin: 8
            visible: !sheet.isEditing
            isRaised: true
            text: Language.text("创建副本", "Duplicate")
            onClicked: sheet.note.duplicate()
        },
        AppButton {
            anchors.right: primary.left
            anchors.rightMargin: 8
            isRaised: true
            text: sheet.isEditing ? Language.text("取消", "Cancel") : Language.text("关闭", "Close")
            onClicked: sheet.isEditing ? sheet.note.cancel() : sheet.note.close()
        },
        AppButton {
            id: primary

            anchors.right: parent?.right
            kind: AppButton.Primary
            text: sheet.isEditing ? Language.text("保存", "Save") : Language.text("编辑", "Edit")
            onClicked: sheet.isEditing ? edit.save() : sheet.note.startEditing()
        }
    ]

    NoteDetails {
        width: parent?.width ?? 0
        visible: !sheet.isEditing
        note: sheet.note
    }

    NoteForm {
        id: edit

        width: parent?.width ?? 0
        visible: sheet.isEditing
        note: sheet.note
    }
}
