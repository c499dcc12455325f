import QtQuick
import Tessaly.Todos
import Tessaly.Ui

/// How the to-do of the form repeats, and when it would be due the next time.
Row {
    id: picker

    required property ReminderViewModel reminders

    readonly property string label: Language.text("重复", "Repeat")

    spacing: 8
    height: Theme.controlHeight

    AppText {
        anchors.verticalCenter: parent.verticalCenter
        text: picker.label
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    AppComboBox {
        id: choice

        width: 150
        name: picker.label
        model: picker.reminders.repetitions
        currentIndex: picker.reminders.repetition
        // A list in another language resets it.
        onModelChanged: currentIndex = Qt.binding(() => picker.reminders.repetition)
        onActivated: index => {
            picker.reminders.repetition = index;
            currentIndex = Qt.binding(() => picker.reminders.repetition);
        }
    }

    Item {
        width: 8
        height: 1
    }

    AppCheckBox {
        anchors.verticalCenter: parent.verticalCenter
        visible: picker.reminders.repetition > 0
        text: Language.text("从完成当天算起", "After completion")
        checked: picker.reminders.isAfterCompletion
        onToggled: picker.reminders.isAfterCompletion = checked
    }

    Item {
        width: 8
        height: 1
    }

    AppText {
        anchors.verticalCenter: parent.verticalCenter
        visible: picker.reminders.nextDateText !== ""
        text: Language.text("下次：%1", "Next: %1").arg(picker.reminders.nextDateText)
        token: Theme.caption
        color: Theme.textSecondary
    }
}
