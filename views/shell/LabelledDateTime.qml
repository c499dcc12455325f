import QtQuick
import Tessaly.Store
import Tessaly.Ui

/// A label and a date-time field beside it.
Row {
    id: pair

    required property string label
    required property date value
    property alias isDateOnly: field.isDateOnly

    signal edited(date value)
    signal accepted

    /// See DateTimeField.
    function accept(): bool {
        return field.accept();
    }

    spacing: 8

    AppText {
        anchors.verticalCenter: parent.verticalCenter
        width: Math.ceil(implicitWidth)
        text: pair.label
        token: Theme.control
        color: Theme.textSecondary
        Accessible.ignored: true
    }

    DateTimeField {
        id: field

        name: pair.label
        value: pair.value
        now: PlannerStore.now
        firstWeekday: PlannerStore.firstWeekday
        onEdited: value => pair.edited(value)
        onAccepted: pair.accepted()
    }
}
