import QtQuick
import Tessaly.Schedule
import Tessaly.Ui

/// What is behind the typed link, and how it is to be added.
Rectangle {
    id: box

    required property LinkTrialModel trial
    readonly property bool isReadable: trial.state === LinkTrialModel.Readable
    readonly property bool isFailed: trial.state === LinkTrialModel.Failed

    /// A button of the box was used and is gone.
    signal finished

    implicitHeight: column.height + 24
    radius: Theme.popupRadius
    color: Theme.inset
    Accessible.role: Accessible.StatusBar
    Accessible.name: title.text + name.text + " " + facts.text

    Spinner {
        x: 14
        y: 14
        visible: box.trial.state === LinkTrialModel.Running
    }

    Icon {
        x: 14
        y: 14
        visible: box.trial.state !== LinkTrialModel.Running
        name: box.isReadable ? "circle-check" : box.isFailed ? "circle-alert" : "info"
        color: box.isReadable ? Theme.success : box.isFailed ? Theme.destructive : Theme.textSecondary
    }

    Column {
        id: column

        x: 38
        y: 12
        width: parent.width - x - 14
        spacing: 6

        Row {
            width: parent.width

            AppText {
                id: title

                width: box.isReadable ? Math.ceil(implicitWidth) : parent.width
                isMultiline: !box.isReadable
                text: box.trial.title
                token: Theme.control
                color: box.isFailed ? Theme.destructive : Theme.text
            }

            AppText {
                id: name

                width: parent.width - title.width
                visible: text !== ""
                text: box.trial.name
                token: Theme.groupLabel

                ElidedTip {}
            }
        }

        AppText {
            id: facts

            width: parent.width
            isMultiline: true
            visible: text !== ""
            text: box.trial.facts
            token: Theme.control
            color: Theme.textSecondary
        }

        Row {
            visible: box.isReadable
            spacing: 24

            Toggle {
                visible: !box.trial.isFile
                height: 20
                text: Language.text("自动更新", "Keep up to date")
                checked: box.trial.isKeptUpToDate
                onToggled: box.trial.isKeptUpToDate = checked
            }

            Toggle {
                height: 20
                text: Language.text("读取重复日程", "Read repeated events")
                checked: box.trial.readsRepetitions
                onToggled: box.trial.readsRepetitions = checked
            }
        }

        AppButton {
            visible: box.isReadable && box.trial.isFile
            isSmall: true
            isRaised: true
            text: Language.text("导入为自己的日程", "Import as own schedules")
            onClicked: {
                box.trial.importFile();
                box.finished();
            }
        }

        AppButton {
            visible: box.trial.state === LinkTrialModel.OtherScheme
            isSmall: true
            isRaised: true
            text: Language.text("改用 https", "Use https")
            onClicked: {
                box.trial.useHttps();
                box.finished();
            }
        }
    }
}
