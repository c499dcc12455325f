pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessaly.Ui

/// Says in both languages why the program ends before it began: no language is known at this point.
ApplicationWindow {
    id: window

    required property string chinese
    required property string english

    width: 480
    height: column.height + 56
    minimumWidth: 360
    minimumHeight: column.height + 56
    visible: true
    title: Qt.application.name
    color: Theme.bg
    // Keys reach it without a window manager, too.
    Component.onCompleted: requestActivate()

    Column {
        id: column

        x: 28
        y: 28
        width: parent.width - 56
        spacing: 12

        Repeater {
            model: [window.chinese, window.english]

            AppText {
                required property string modelData

                width: column.width
                text: modelData
                isMultiline: true
                Accessible.role: Accessible.AlertMessage
            }
        }

        AppButton {
            anchors.right: parent.right
            kind: AppButton.Primary
            // lint-allow(text): both languages at once, since none is known yet
            text: "关闭 / Close"
            focus: true
            onClicked: window.close()
            Keys.onReturnPressed: window.close()
            Keys.onEnterPressed: window.close()
            Keys.onEscapePressed: window.close()
        }
    }
}
