pragma Singleton

import QtQuick

/// The keys of the planner: what its shortcuts bind, and what the sheet of shortcuts lists.
QtObject {
    readonly property string find: "Ctrl+K"
    readonly property list<string> screens: ["Ctrl+1", "Ctrl+2", "Ctrl+3", "Ctrl+4", "Ctrl+5"]
    readonly property string startNew: "Ctrl+N"
    readonly property string settings: "Ctrl+,"
    readonly property string undo: "Ctrl+Z"
    readonly property string redo: "Ctrl+Shift+Z"
    readonly property string versions: "Ctrl+Shift+H"
    readonly property string help: "F1"
    readonly property string helpSign: "?"
    readonly property string toast: "F6"
    readonly property string quit: "Ctrl+Q"
    readonly property string today: "T"
    readonly property string todayAlways: "Alt+Home"
    readonly property string previous: "Alt+←"
    readonly property string next: "Alt+→"
    readonly property string dayBefore: "Ctrl+←"
    readonly property string dayAfter: "Ctrl+→"
    readonly property string endEarlier: "Shift+↑"
    readonly property string endLater: "Shift+↓"
    readonly property string moveUp: "Ctrl+↑"
    readonly property string moveDown: "Ctrl+↓"
    readonly property string sideways: "← →"
    readonly property string upAndDown: "↑ ↓"
    readonly property string open: "Enter"
    readonly property string remove: "Delete"
    readonly property string plan: "Ctrl+Shift+P"
    readonly property string choosePlan: "P"
    readonly property string addReminder: "Ctrl+Enter"
    readonly property string saveDocument: "Ctrl+S"
    readonly property string closeDocument: "Ctrl+W"

    /// The groups of the sheet: each with a title and rows, each row with a name, its keys, and the word between them.
    /// Keys that a control handles by itself are only named here.
    function groups(): list<var> {
        const or = Language.text("或", "or");
        return [
            {
                title: Language.text("通用", "Everywhere"),
                rows: [
                    row(Language.text("查找与添加", "Find and add"), [find]),
                    row(Language.text("切换页面", "Go to a screen"), [screens[0], screens[4]], Language.text("至", "to")),
                    row(Language.text("在此页新建", "New entry on this screen"), [startNew]),
                    row(Language.text("撤销", "Undo"), [undo]),
                    row(Language.text("重做", "Redo"), [redo]),
                    row(Language.text("历史版本", "Earlier versions"), [versions]),
                    row(Language.text("设置", "Settings"), [settings]),
                    row(Language.text("转到消息", "Go to the message"), [toast]),
                    row(Language.text("键盘快捷键", "Keyboard shortcuts"), [help, helpSign], or),
                    row(Language.text("退出", "Quit"), [quit])
                ]
            },
            {
                title: Language.text("列表", "Rows"),
                rows: [
                    row(Language.text("移动一位", "Move one place"), [moveUp, moveDown], or),
                    row(Language.text("待办移动一周", "Move a to-do by a week"), [moveUp, moveDown], or)
                ]
            },
            {
                title: Language.text("查找与添加", "Find and add"),
                rows: [
                    row(Language.text("添加为待办", "Add as a to-do"), [addReminder])
                ]
            },
            {
                title: Language.text("日程", "Schedule"),
                rows: [
                    row(Language.text("在日程之间移动", "Go from schedule to schedule"), [sideways, upAndDown], or),
                    row(Language.text("打开", "Open"), [open]),
                    row(Language.text("删除", "Delete"), [remove]),
                    row(Language.text("上一页、下一页", "Previous, next"), [previous, next], or),
                    row(Language.text("今天", "Today"), [todayAlways, today], or),
                    row(Language.text("计划", "Plan"), [plan]),
                    row(Language.text("在计划中选择", "Choose in the plan"), [choosePlan]),
                    row(Language.text("移动 15 分钟", "Move by 15 minutes"), [moveUp, moveDown], or),
                    row(Language.text("移动一天", "Move by a day"), [dayBefore, dayAfter], or),
                    row(Language.text("调整结束时间", "Change the end"), [endEarlier, endLater], or)
                ]
            },
            {
                title: Language.text("编辑器", "Editor"),
                rows: [
                    row(Language.text("保存", "Save"), [saveDocument]),
                    row(Language.text("关闭", "Close"), [closeDocument])
                ]
            }
        ];
    }

    function row(name: string, keys: list<string>, between: string): var {
        return {
            name: name,
            keys: keys,
            between: between ?? ""
        };
    }
}
