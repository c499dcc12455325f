pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// A heading and what belongs under it, each line with its icon.
Column {
    id: list

    required property string title
    required property list<string> icons
    required property list<string> texts

    spacing: 6

    AppText {
        text: list.title
        token: Theme.captionBold
        color: Theme.textSecondary
        Accessible.role: Accessible.Heading
    }

    Repeater {
        model: list.texts.length

        Item {
            id: line

            required property int index

            width: list.width
            height: Math.max(20, label.height)

            Icon {
                y: 2
                name: list.icons[line.index]
                size: 16
                color: Theme.textSecondary
            }

            AppText {
                id: label

                x: 26
                width: parent.width - x
                isMultiline: true
                text: list.texts[line.index]
                token: Theme.control
            }
        }
    }
}
