import QtQuick

/// A tooltip for the parent that is made when it is first shown: most never are.
Item {
    id: slot

    property string text
    property bool isShown: false

    anchors.fill: parent
    onIsShownChanged: {
        if (isShown)
            loader.active = true;
    }

    Loader {
        id: loader

        anchors.fill: parent
        active: false
        // Bound components cannot be made inside those of another file in Qt 6.4.
        // qmllint disable unqualified
        sourceComponent: Item {
            AppToolTip {
                /// Its delay is not known before.
                property bool isComplete: false

                text: slot.text
                visible: isComplete && slot.isShown
                Component.onCompleted: isComplete = true
            }
        }
        // qmllint enable unqualified
    }
}
