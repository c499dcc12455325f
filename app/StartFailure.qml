import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessaly.Ui

/// Says in both languages why the program ends before it began: no language is known at this point.
ApplicationWindow {
    id: window

    required property string chinese
    required property string english

    width: 460
    height: column.implicitHeight + 56
    minimumWidth: 320
    visible: true
    title: Qt.application.displayName
    color: Theme.bg

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: 28
        spacing: 18

        Repeater {
            model: [window.chinese, window.english]

            Text {
                required property string modelData

                Layout.fillWidth: true
                text: modelData
                wrapMode: Text.Wrap
                textFormat: Text.PlainText
                Accessible.role: Accessible.AlertMessage
                Accessible.name: modelData
            }
        }

        Button {
            Layout.alignment: Qt.AlignRight
            text: "关闭 / Close"
            focus: true
            onClicked: window.close()
            Keys.onReturnPressed: window.close()
            Keys.onEscapePressed: window.close()
        }
    }
}
