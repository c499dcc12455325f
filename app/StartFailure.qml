pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import Tessaly.Ui

/// Says in both languages why the program ends before it began, and offers what can be done: no language is known at this point.
ApplicationWindow {
    id: window

    required property string chinese
    required property string english
    required property bool canOpenEarlier
    required property bool canStartEmpty
    property bool opensEarlier: false
    property bool startsEmpty: false

    width: canStartEmpty ? 600 : 480
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

        Row {
            anchors.right: parent.right
            spacing: 8
            Keys.onEscapePressed: window.close()

            AppButton {
                visible: window.canStartEmpty
                // lint-allow(text): both languages at once, since none is known yet
                text: "从空白开始 / Start empty"
                Keys.onReturnPressed: clicked()
                Keys.onEnterPressed: clicked()
                onClicked: {
                    window.startsEmpty = true;
                    window.close();
                }
            }
            AppButton {
                kind: window.canOpenEarlier ? AppButton.Plain : AppButton.Primary
                // lint-allow(text): likewise
                text: "关闭 / Close"
                focus: !window.canOpenEarlier
                onClicked: window.close()
                Keys.onReturnPressed: window.close()
                Keys.onEnterPressed: window.close()
            }
            AppButton {
                visible: window.canOpenEarlier
                kind: AppButton.Primary
                // lint-allow(text): likewise
                text: "打开历史版本 / Open earlier version"
                focus: window.canOpenEarlier
                Keys.onReturnPressed: clicked()
                Keys.onEnterPressed: clicked()
                onClicked: {
                    window.opensEarlier = true;
                    window.close();
                }
            }
        }
    }
}
