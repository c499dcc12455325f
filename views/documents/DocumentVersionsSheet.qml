pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tessaly.Documents
import Tessaly.Store
import Tessaly.Ui

/// The former texts of a document: what restoring one would add to the text and remove from it.
Sheet {
    id: sheet

    readonly property int footHeight: 61

    /// The text is to take the place of the present one.
    signal restored(text: string)

    function show(documentId: string, presentText: string) {
        versions.begin(documentId, presentText);
        open();
    }

    title: Language.text("文档的历史版本", "Earlier versions of the document")
    sheetWidth: 800
    bodyTopPadding: 0
    bodyBottomPadding: 0
    primaryButton: restoreButton
    initialFocus: list
    onLeaving: close()

    head: AppText {
        width: parent?.width ?? 0
        isMultiline: true
        text: Language.text("保留最近 50 个保存过的版本。恢复之前会先保存现在的文字。", "The last 50 saved versions are kept. Restoring first saves the present text.")
        token: Theme.control
        color: Theme.textSecondary
        bottomPadding: 16
    }

    foot: [
        AppButton {
            id: restoreButton

            anchors.right: doneButton.left
            anchors.rightMargin: 8
            kind: AppButton.Primary
            enabled: versions.canRestore
            text: Language.text("恢复", "Restore")
            onClicked: {
                sheet.restored(versions.text);
                sheet.close();
            }
        },
        AppButton {
            id: doneButton

            anchors.right: parent?.right
            isRaised: true
            text: Language.text("完成", "Done")
            onClicked: sheet.close()
        }
    ]

    Item {
        // Over the whole width; what is in it scrolls by itself.
        x: -sheet.sidePadding
        width: (parent?.width ?? 0) + 2 * sheet.sidePadding
        height: Math.max(200, (sheet.parent?.height ?? 0) - 48 - sheet.bodyFlickable.y - sheet.footHeight)

        DocumentVersionsModel {
            id: versions

            store: PlannerStore
        }

        Rectangle {
            width: 200
            height: parent.height
            color: Theme.inset
        }

        ListView {
            id: list

            width: 200
            height: parent.height
            leftMargin: 8
            rightMargin: 8
            topMargin: 8
            bottomMargin: 8
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: true
            highlightMoveDuration: 0
            model: versions.versions
            currentIndex: versions.current
            Accessible.role: Accessible.List
            Accessible.name: sheet.title
            Keys.onUpPressed: versions.current = currentIndex - 1
            Keys.onDownPressed: versions.current = currentIndex + 1
            T.ScrollBar.vertical: AppScrollBar {}

            delegate: Rectangle {
                id: row

                required property int index
                required property string title

                width: list.width - 16
                height: 30
                radius: Theme.smallRadius
                color: ListView.isCurrentItem ? Theme.selected : hover.hovered ? Theme.hover : Theme.transparent
                Accessible.role: Accessible.ListItem
                Accessible.name: title
                Accessible.selectable: true
                Accessible.selected: ListView.isCurrentItem
                Accessible.onPressAction: versions.current = index

                AppText {
                    x: 12
                    width: parent.width - 24
                    anchors.verticalCenter: parent.verticalCenter
                    text: row.title
                    token: Theme.control
                    Accessible.ignored: true
                }

                HoverHandler {
                    id: hover
                }

                TapHandler {
                    onTapped: versions.current = row.index
                }
            }
        }

        Rectangle {
            x: list.width
            width: 1
            height: parent.height
            color: Theme.border
        }

        AppText {
            id: summary

            x: list.width + 24
            y: 16
            width: parent.width - x - sheet.sidePadding
            text: versions.summary
            token: Theme.control
            color: Theme.textSecondary
            isMultiline: true
        }

        ListView {
            id: lines

            x: summary.x
            y: summary.y + summary.height + 12
            width: summary.width
            height: parent.height - y - 16
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: count > 0
            model: versions.lines
            Accessible.role: Accessible.List
            Accessible.name: summary.text
            Keys.onUpPressed: contentY = Scrolling.within(lines, contentY - 40)
            Keys.onDownPressed: contentY = Scrolling.within(lines, contentY + 40)
            Keys.onPressed: event => Scrolling.press(lines, event)
            T.ScrollBar.vertical: AppScrollBar {}

            delegate: ComparedLineItem {
                width: lines.width
            }

            FocusRing {
                visible: lines.activeFocus
                gap: 0
            }
        }

        Separator {
            width: parent.width
        }
    }
}
