import QtQuick
import Tessaly.Ui

/// The header of a category: its name, or a field for it, and what can be done with it.
Item {
    id: header

    required property string title
    required property bool isExpanded
    required property bool isEditing

    readonly property bool isActive: hover.hovered || disclosure.visualFocus || actions.hasVisualFocus

    signal expansionRequested(bool isOpen)
    signal editingRequested(bool isOn)
    signal renamed(string name)
    signal removed

    function focusDelete() {
        actions.focusDelete(Qt.TabFocusReason);
    }

    function edit(isOn: bool) {
        editingRequested(isOn);
        if (isOn)
            (editor.item as Item).forceActiveFocus();
        else
            actions.focusEdit(Qt.OtherFocusReason);
    }

    implicitHeight: Theme.groupHeight

    HoverHandler {
        id: hover
    }

    DisclosureHeader {
        id: disclosure

        anchors.fill: parent
        text: header.isEditing ? "" : header.title
        isOpen: header.isExpanded
        Accessible.name: header.title
        onClicked: header.expansionRequested(!header.isExpanded)

        // Keeps the name clear of the actions, which are no part of this button.
        Item {
            width: disclosure.width - 8 - actions.x
            height: 1
        }
    }

    Loader {
        id: editor

        x: 46
        anchors.verticalCenter: parent.verticalCenter
        active: header.isEditing
        // qmllint disable unqualified
        sourceComponent: AppTextField {
            width: 260
            isSmall: true
            leftPadding: 10
            font.pixelSize: Theme.control.size
            font.weight: Font.Medium
            placeholderText: Language.text("分类名称", "Category name")
            text: header.title
            onTextEdited: header.renamed(text)
            onAccepted: header.edit(false)
        }
        // qmllint enable unqualified
    }

    RowActions {
        id: actions

        x: header.width - 8 - width
        anchors.verticalCenter: parent.verticalCenter
        itemTitle: header.title
        isRowActive: header.isActive
        isEditing: header.isEditing
        isDeleteShown: !header.isEditing
        onEditRequested: header.edit(!header.isEditing)
        onDeleteRequested: header.removed()
    }
}
