pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// What the keys do in the palette, and how much was found.
Item {
    id: foot

    required property string countText
    /// Whether the current row adds something.
    required property bool isAdding

    component Hint: Row {
        id: hint

        required property list<string> caps
        required property string meaning

        spacing: 6

        Repeater {
            model: hint.caps

            KeyCap {
                required property string modelData

                text: modelData
                isSmall: true
            }
        }

        LineText {
            height: 20
            text: hint.meaning
            token: Theme.caption
            color: Theme.textSecondary
            Accessible.ignored: true
        }
    }

    Row {
        x: 18
        anchors.verticalCenter: parent.verticalCenter
        spacing: 18

        Hint {
            caps: ["↑", "↓"]
            meaning: Language.text("选择", "Choose")
        }
        Hint {
            caps: ["Enter"]
            meaning: foot.isAdding ? Language.text("添加", "Add") : Language.text("打开", "Open")
        }
        Hint {
            caps: ["Ctrl", "Enter"]
            meaning: Language.text("添加待办", "Add to-do")
        }
        Hint {
            caps: ["Esc"]
            meaning: Language.text("关闭", "Close")
        }
    }

    AppText {
        anchors.right: parent.right
        anchors.rightMargin: 18
        anchors.verticalCenter: parent.verticalCenter
        text: foot.countText
        token: Theme.caption
        color: Theme.textSecondary
        Accessible.ignored: true
    }
}
