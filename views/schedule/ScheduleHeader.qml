import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// Title, shown days, scope, navigation and the buttons of the settings sheets. The days go beneath the title, and the
/// tools to a second line, when they do not fit beside it.
Item {
    id: header

    required property ScheduleViewModel viewModel

    readonly property alias planButton: planButton
    readonly property bool isNarrow: width < 700
    readonly property real gap: isNarrow ? 8 : 12
    readonly property real toolsRoom: 10 + tools.width + tools.anchors.rightMargin
    readonly property bool isWrapped: title.implicitWidth + toolsRoom > width
    readonly property bool isRangeBelow: isNarrow || title.implicitWidth + 12 + rangeBeside.advanceWidth + toolsRoom > width
    readonly property real titleHeight: title.height + (range.visible && isRangeBelow ? range.height : 0)

    implicitHeight: isWrapped ? titleHeight + 8 + tools.height : titleHeight

    PageTitle {
        id: title

        elide: Text.ElideNone
        text: header.viewModel.headerTitle
        Accessible.name: range.visible ? text + Language.text("，", ", ") + range.text : text
    }

    TextMetrics {
        id: rangeBeside

        font: Theme.entry.font
        text: range.text
    }

    LineText {
        id: range

        x: header.isRangeBelow ? 0 : title.implicitWidth + 12
        y: header.isRangeBelow ? title.height : title.y + title.baselineOffset - baselineOffset
        visible: text !== ""
        text: header.viewModel.weekRange
        color: Theme.textSecondary
        token: header.isRangeBelow ? Theme.caption : Theme.entry
        elide: Text.ElideNone
    }

    Row {
        id: tools

        anchors.right: parent.right
        // The glyphs, not the buttons' invisible outlines, end at the page's edge; that of an open plan is visible.
        anchors.rightMargin: header.isNarrow && !planButton.visible ? -8 : 0
        y: header.isWrapped ? header.titleHeight + 8 : Math.round((header.titleHeight - height) / 2)
        spacing: header.gap

        SegmentedControl {
            name: Language.text("视图", "View")
            labels: [Language.text("周", "Week"), Language.text("月", "Month")]
            currentIndex: header.viewModel.scope
            segmentPadding: header.isNarrow ? 11 : 14
            onChosen: index => header.viewModel.scope = index
        }

        ButtonGroup {
            GroupedButton {
                iconName: "chevron-left"
                text: Language.text("上一页", "Previous")
                isFirst: true
                onClicked: header.viewModel.showPrevious()
            }

            GroupedButton {
                width: implicitWidth - (header.isNarrow ? 4 : 0)
                text: Language.text("今天", "Today")
                onClicked: header.viewModel.showToday()
            }

            GroupedButton {
                iconName: "chevron-right"
                text: Language.text("下一页", "Next")
                isLast: true
                onClicked: header.viewModel.showNext()
            }
        }

        Row {
            spacing: header.isNarrow ? 0 : 2

            Item {
                width: header.isNarrow ? 6 : 9
                height: Theme.controlHeight

                Separator {
                    x: -2
                    width: 1
                    height: parent.height
                }
            }

            IconButton {
                iconName: "import"
                text: Language.text("导入设置", "Import settings")
                onClicked: header.viewModel.sheets.openImportSettings()
            }

            IconButton {
                iconName: "eye"
                text: Language.text("显示设置", "Display settings")
                onClicked: header.viewModel.sheets.openDisplaySettings()
            }

            IconButton {
                iconName: "refresh-cw"
                text: Language.text("同步设置", "Sync settings")
                onClicked: header.viewModel.sheets.openSyncSettings()
            }

            IconButton {
                id: planButton

                readonly property bool isOfWeek: header.viewModel.scope === ScheduleViewModel.Week

                // Where there is room, the others keep their places in the month.
                visible: isOfWeek || !header.isNarrow
                iconName: "panel-right"
                text: Language.text("计划", "Plan")
                isOn: isOfWeek && PlannerStore.isPlanShown
                Accessible.checkable: true
                Accessible.checked: isOn
                onClicked: {
                    PlannerStore.isPlanShown = !isOfWeek || !PlannerStore.isPlanShown;
                    header.viewModel.scope = ScheduleViewModel.Week;
                }
            }
        }
    }
}
