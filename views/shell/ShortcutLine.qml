pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// What keys do, and the keys as caps. Read as one text: "Find and add, Ctrl K".
Item {
    id: line

    required property string name
    required property list<string> keys
    /// The word between the keys.
    required property string between
    property bool isLast: false

    /// The caps of "Ctrl+," are "Ctrl" and ",".
    function caps(keys: string): list<string> {
        return keys.split("+");
    }

    implicitHeight: 32
    Accessible.role: Accessible.StaticText
    Accessible.name: name + ", " + keys.map(keys => caps(keys).join(" ")).join(" " + between + " ") // qmllint disable

    AppText {
        anchors.verticalCenter: parent.verticalCenter
        text: line.name
        token: Theme.control
        Accessible.ignored: true
    }

    Row {
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Repeater {
            model: line.keys

            Row {
                id: combination

                required property string modelData
                required property int index

                spacing: 8

                LineText {
                    height: 22
                    visible: combination.index > 0
                    text: line.between
                    token: Theme.caption
                    color: Theme.textSecondary
                    Accessible.ignored: true
                }

                Row {
                    spacing: 4

                    Repeater {
                        model: line.caps(combination.modelData)

                        KeyCap {
                            required property string modelData

                            text: modelData
                        }
                    }
                }
            }
        }
    }

    Separator {
        y: 31
        width: parent.width
        visible: !line.isLast
    }
}
