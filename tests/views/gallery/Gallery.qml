pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Ui

/// Every control in its states on one page, for comparing with the design.
Rectangle {
    id: gallery

    property bool isDark: false
    property bool isEnglish: true

    component Section: Card {
        id: section

        property string title
        default property alias content: column.data

        width: 558 - 12
        height: column.height + 32

        Column {
            id: column

            x: 18
            y: 14
            spacing: 12

            AppText {
                text: section.title
                color: Theme.textSecondary
                token: Theme.buttonPrimary
            }
        }
    }

    width: 1180
    height: 1230
    color: Theme.bg

    Binding {
        target: Theme
        property: "isDark"
        value: gallery.isDark
    }
    Binding {
        target: Language
        property: "isEnglish"
        value: gallery.isEnglish
    }

    Row {
        x: 32
        y: 28
        spacing: 24

        Column {
            spacing: 20

            Section {
                title: "Buttons"

                Row {
                    spacing: 11

                    AppButton {
                        kind: AppButton.Primary
                        text: Language.text("保存", "Save")
                    }
                    AppButton {
                        kind: AppButton.Primary
                        text: Language.text("保存", "Save")
                        down: true
                    }
                    AppButton {
                        kind: AppButton.Primary
                        text: Language.text("保存", "Save")
                        enabled: false
                    }
                    AppButton {
                        text: Language.text("插入图片", "Insert image")
                        iconName: "image"
                    }
                }
                Row {
                    spacing: 11

                    AppButton {
                        text: Language.text("取消", "Cancel")
                    }
                    AppButton {
                        text: Language.text("取消", "Cancel")
                        down: true
                    }
                    AppButton {
                        id: focused

                        text: Language.text("取消", "Cancel")
                        Component.onCompleted: forceActiveFocus(Qt.TabFocusReason)
                    }
                    AppButton {
                        text: Language.text("取消", "Cancel")
                        enabled: false
                    }
                }
                Row {
                    spacing: 11

                    AppButton {
                        kind: AppButton.Destructive
                        isSmall: true
                        text: Language.text("删除", "Delete")
                    }
                    AppButton {
                        kind: AppButton.DestructiveFill
                        text: Language.text("清空", "Clear")
                    }
                    AppButton {
                        isSmall: true
                        text: Language.text("更新", "Update")
                    }
                    IconButton {
                        iconName: "eye"
                        text: "Display"
                    }
                    RowAction {
                        text: Language.text("编辑", "Edit")
                    }
                    RowAction {
                        text: Language.text("完成", "Done")
                        isAccented: true
                    }
                    RowAction {
                        text: Language.text("删除", "Delete")
                        isDestructive: true
                        down: true
                    }
                    ButtonGroup {
                        GroupedButton {
                            isFirst: true
                            iconName: "chevron-left"
                            text: "Previous"
                        }
                        GroupedButton {
                            text: Language.text("今天", "Today")
                        }
                        GroupedButton {
                            isLast: true
                            iconName: "chevron-right"
                            text: "Next"
                        }
                    }
                }
            }

            Section {
                title: "Selection"

                Row {
                    spacing: 11

                    Toggle {
                        text: Language.text("设置截止日期", "Set due date")
                        checked: true
                    }
                    Toggle {
                        text: Language.text("设置截止日期", "Set due date")
                    }
                }
                Row {
                    spacing: 11

                    AppCheckBox {
                        checked: true
                    }
                    AppCheckBox {
                    }
                    AppCheckBox {
                        isPartial: true
                    }
                    CompletionCircle {
                        anchors.verticalCenter: parent.verticalCenter
                        isComplete: false
                    }
                    CompletionCircle {
                        anchors.verticalCenter: parent.verticalCenter
                        isComplete: true
                    }
                    AppSlider {
                        anchors.verticalCenter: parent.verticalCenter
                        from: 0.1
                        to: 10
                        value: 2.5
                    }
                    AppText {
                        token: Theme.caption
                        anchors.verticalCenter: parent.verticalCenter
                        text: "2.5"
                    }
                    ProgressTrack {
                        anchors.verticalCenter: parent.verticalCenter
                        value: 0.46
                    }
                    Spinner {
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    ColorMark {
                        anchors.verticalCenter: parent.verticalCenter
                        color: Theme.teal
                    }
                }
                Row {
                    spacing: 11

                    SegmentedControl {
                        labels: [Language.text("周", "Week"), Language.text("月", "Month")]
                    }
                    SegmentedControl {
                        width: 210
                        labels: [Language.text("编辑", "Edit"), Language.text("预览", "Preview"), Language.text("实时", "Live")]
                        currentIndex: 2
                    }
                }
            }

            Section {
                title: "Popups"
                height: 330

                Item {
                    width: 1
                    height: 1

                    CalendarPopup {
                        visible: true
                        enter: null
                        now: new Date(2026, 8, 9, 12)
                        editor: DateTimeEditor {
                            isEnglish: gallery.isEnglish
                            value: new Date(2026, 8, 11, 17, 0)
                        }
                    }
                }
            }

            Section {
                title: "Groups"

                Column {
                    width: 510

                    DisclosureHeader {
                        width: parent.width
                        text: Language.text("有日期", "With dates")
                        isOpen: true
                    }
                    DisclosureHeader {
                        width: parent.width
                        isNested: true
                        text: Language.text("本周", "This week")
                    }
                    DisclosureHeader {
                        width: parent.width
                        text: Language.text("无日期", "Without dates")
                        isVoid: true
                    }
                }
            }
        }

        Column {
            spacing: 20

            Section {
                title: "Fields"

                Row {
                    spacing: 11

                    AppTextField {
                        placeholderText: Language.text("新建分类", "New category")
                    }
                    AppTextField {
                        text: Language.text("写作", "Writing")
                    }
                    AppTextField {
                        width: 130
                        placeholderText: Language.text("新建分类", "New category")
                        enabled: false
                    }
                }
                Row {
                    spacing: 11

                    AppComboBox {
                        width: 130
                        model: [Language.text("课程讲义", "Lecture notes"), "x"]
                    }
                    AppComboBox {
                        width: 130
                        isSmall: true
                        model: [Language.text("课程讲义", "Lecture notes"), "x"]
                    }
                    DateTimeField {
                        value: new Date(2026, 8, 11, 17, 0)
                    }
                }
                Row {
                    spacing: 11

                    DateTimeField {
                        isDateOnly: true
                        value: new Date(2026, 8, 11, 17, 0)
                    }
                    ColorWell {
                        hex: "#2C66D8"
                    }
                    MultilineBase {
                        placeholder: Language.text("要求", "Requirements")
                    }
                }
            }

            Section {
                title: "Menus"
                height: 160

                AppComboBox {
                    id: openBox

                    width: 190
                    model: [Language.text("未分类", "Uncategorized"), Language.text("课程讲义", "Lecture notes"), Language.text("读书笔记", "Reading notes")]
                    Timer {
                        interval: 50
                        running: true
                        onTriggered: openBox.popup.open()
                    }
                }
            }

            Section {
                title: "Type"

                PageTitle {
                    text: Language.text("概览", "Overview")
                }
                AppText {
                    token: Theme.sheetTitle
                    text: Language.text("导入日历", "Import calendars")
                }
                AppText {
                    token: Theme.headline
                    text: Language.text("编写教材", "Write a textbook")
                }
                HeadingText {
                    text: Language.text("目标进度", "Goal progress")
                }
                AppText {
                    token: Theme.body
                    text: Language.text("还没有安排日程，给今天留一点空间吧。", "No schedules yet. Leave space for your day.")
                }
                AppText {
                    token: Theme.button
                    text: Language.text("设置保存位置", "Set save location")
                }
                AppText {
                    token: Theme.caption
                    text: Language.text("截止：2026年12月31日", "Due: Dec 31, 2026")
                }
                AppText {
                    token: Theme.mini
                    text: "09:00 – 10:40"
                }
                Rectangle {
                    width: 220
                    height: 44
                    color: Theme.accentSoft

                    AppText {
                        id: body

                        token: Theme.body
                        width: parent.width
                        isMultiline: true
                        text: Language.text("两行的中文文字两行的中文文字两行的中文文字", "Two lines of running text, wrapped at the width")
                    }
                }
                StatusLine {
                    width: 500
                                        message: Language.text("正在更新链接日历…", "Updating linked calendar…")
                }
                Item {
                    width: 500
                    height: 60

                    Toast {
                        y: 8
                        Component.onCompleted: show(Language.text("已清空备注、关联任务、待办与目标。", "Notes, linked tasks, to-dos, and goals have been cleared."))
                    }
                }
            }
        }
    }
}
