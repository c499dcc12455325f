pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.Schedule
import Tessaly.Store
import Tessaly.Ui

/// When the schedules of each calendar and link remind.
Column {
    id: times

    spacing: 6

    LeadTimesModel {
        id: leads

        store: PlannerStore
    }

    Repeater {
        model: leads.rows

        Item {
            id: row

            required property int index
            required property string title
            required property int choice

            width: times.width
            height: Theme.controlHeight

            AppText {
                width: box.x - 12
                anchors.verticalCenter: parent.verticalCenter
                text: row.title
                token: Theme.control
                Accessible.ignored: true

                ElidedTip {}
            }

            AppComboBox {
                id: box

                x: parent.width - width
                width: 168
                isRaised: true
                name: Language.text("提醒，%1", "Reminder, %1").arg(row.title)
                model: leads.choices
                currentIndex: row.choice
                // A list in another language resets it.
                onModelChanged: currentIndex = Qt.binding(() => row.choice)
                onActivated: index => {
                    leads.choose(row.index, index);
                    currentIndex = Qt.binding(() => row.choice);
                }
            }
        }
    }
}
