import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Ui

/// Where the form's schedule would stand, over the blocks. Its title is that of the form.
Item {
    id: ghost

    required property ScheduleViewModel viewModel
    readonly property ScheduleFormModel fields: viewModel.form

    /// Return was pressed.
    signal accepted
    /// Esc emptied it.
    signal emptied
    /// The focus went elsewhere.
    signal abandoned
    /// Tab goes on to the form.
    signal tabbed

    function takeFocus() {
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    x: viewModel.formFrame.x
    y: viewModel.formFrame.y
    width: viewModel.formFrame.width
    height: viewModel.formFrame.height

    Rectangle {
        anchors.fill: parent
        radius: Theme.blockRadius
        color: Qt.alpha(Theme.accentText, 0.05)
    }

    DashedFrame {
        anchors.fill: parent
        radius: Theme.blockRadius
        color: Theme.accentText
    }

    AppTextField {
        id: field

        y: parent.height < 26 ? Math.round((parent.height - height) / 2) : 3
        width: parent.width
        height: 19
        topPadding: 0
        bottomPadding: 0
        leftPadding: 8
        rightPadding: 5
        background: null
        font.pixelSize: Theme.blockTitle.size
        font.weight: Theme.blockTitle.weight
        placeholderText: Language.text("新日程", "New schedule")
        name: Language.text("新日程", "New schedule") + Language.text("，", ", ") + time.text
        text: ghost.fields.title
        onTextEdited: ghost.fields.title = text
        onAccepted: ghost.accepted()
        onActiveFocusChanged: {
            if (!activeFocus && Window.active)
                ghost.abandoned();
        }
        Keys.onEscapePressed: event => {
            event.accepted = true;
            if (inputMethodComposing)
                return;
            ghost.fields.title = "";
            ghost.emptied();
        }
        Keys.onTabPressed: ghost.tabbed()
    }

    LineText {
        id: time

        x: 8
        y: 20
        width: parent.width - x - 5
        visible: parent.height >= 36
        text: ghost.viewModel.formTimeText
        token: Theme.mini
    }
}
