import QtQuick
import Tessaly.Store
import Tessaly.Ui
import Tessaly.Versions

/// Browses the earlier states of the planner and brings back all or some of one.
Sheet {
    id: sheet

    objectName: "versions"

    readonly property int footHeight: 61

    /// Opens it with the generation of the file, or else the newest.
    function show(fileName: string) {
        versions.begin(fileName);
        open();
    }

    /// A button that has done its work is disabled, and the focus would be nowhere.
    function passFocus(button: AppButton) {
        if (button.activeFocus)
            FocusHandover.give(doneButton, FocusHandover.reasonAfter(button));
    }

    title: Language.text("历史版本", "Earlier versions")
    sheetWidth: 800
    bodyTopPadding: 0
    bodyBottomPadding: 0
    primaryButton: selectedButton
    initialFocus: list.initialFocus
    onLeaving: close()

    head: AppText {
        width: parent?.width ?? 0
        isMultiline: true
        text: Language.text("Tessaly 每小时保存一次有变化的内容。恢复之前会先保存现在的内容。", "Tessaly keeps a copy of its content every hour it changes. Restoring first keeps a copy of what is here now.")
        token: Theme.control
        color: Theme.textSecondary
        bottomPadding: 16
    }

    foot: [
        AppButton {
            id: allButton

            isRaised: true
            enabled: versions.canRestoreAll
            text: Language.text("全部恢复", "Restore all")
            onClicked: {
                sheet.passFocus(allButton);
                versions.restoreAll();
            }
        },
        AppText {
            anchors.verticalCenter: parent?.verticalCenter
            x: 120
            width: (parent?.width ?? 0) - 120 - buttons.width - 16
            horizontalAlignment: Text.AlignRight
            text: versions.outcome
            token: Theme.control
            color: Theme.textSecondary
            Accessible.role: Accessible.StatusBar
            Accessible.name: text
        },
        Row {
            id: buttons

            anchors.right: parent?.right
            spacing: 8

            AppButton {
                id: selectedButton

                kind: AppButton.Primary
                enabled: versions.canRestoreSelected
                text: Language.text("恢复所选", "Restore selected")
                onClicked: {
                    sheet.passFocus(selectedButton);
                    versions.restoreSelected();
                }
            }

            AppButton {
                id: doneButton

                isRaised: true
                text: Language.text("完成", "Done")
                onClicked: sheet.close()
            }
        }
    ]

    Item {
        // Over the whole width; what is in it scrolls by itself.
        x: -sheet.sidePadding
        width: (parent?.width ?? 0) + 2 * sheet.sidePadding
        height: Math.max(200, (sheet.parent?.height ?? 0) - 48 - sheet.bodyFlickable.y - sheet.footHeight)

        VersionsModel {
            id: versions

            store: PlannerStore
        }

        VersionList {
            id: list

            width: 248
            height: parent.height
            versions: versions
        }

        Rectangle {
            x: list.width
            width: 1
            height: parent.height
            color: Theme.border
        }

        DifferenceList {
            x: list.width + 24
            y: 16
            width: parent.width - x - sheet.sidePadding
            height: parent.height - 32
            versions: versions
        }

        Separator {
            width: parent.width
        }
    }
}
