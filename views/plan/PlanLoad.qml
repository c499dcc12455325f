import QtQuick
import Tessaly.Plan
import Tessaly.Ui

/// How full the day is.
Item {
    id: load

    required property PlanModel plan

    implicitHeight: 68
    Accessible.role: Accessible.StaticText
    Accessible.name: [plan.dayText, plan.plannedText, plan.freeText].join(Language.text("，", ", ")) // qmllint disable

    LineText {
        width: parent.width - planned.width - 8
        text: load.plan.dayText
        token: Theme.button
    }

    LineText {
        id: planned

        anchors.right: parent.right
        text: load.plan.plannedText
        token: Theme.button
        elide: Text.ElideNone
    }

    Rectangle {
        id: track

        y: 26
        width: parent.width
        height: 4
        radius: 2
        color: Theme.track

        Rectangle {
            width: Math.max(height, track.width * (load.plan.share + load.plan.addedShare))
            height: parent.height
            radius: 2
            visible: load.plan.addedShare > 0
            color: Theme.accentText
            opacity: 0.7
        }

        Rectangle {
            width: Math.max(height, track.width * load.plan.share)
            height: parent.height
            radius: 2
            visible: load.plan.share > 0
            color: Theme.accent
        }
    }

    LineText {
        y: 36
        width: parent.width
        text: load.plan.freeText
        token: Theme.caption
        color: Theme.textSecondary
    }
}
