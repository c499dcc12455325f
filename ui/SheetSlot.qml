import QtQuick

/// The place of a sheet that is read and made when it is first shown.
Loader {
    id: slot

    /// The sheet's file, in which a Sheet is the root.
    required property url file
    /// Values of the sheet's required properties.
    property var requirements: ({})
    /// Whether the sheet is open; setting it opens or closes the sheet.
    property bool isShown: false

    onIsShownChanged: {
        if (isShown && status === Loader.Null)
            setSource(file, requirements);
        if (item)
            item.isShown = isShown; // qmllint disable property
    }

    Connections {
        function onIsShownChanged() {
            // qmllint disable
            slot.isShown = slot.item.isShown;
            // qmllint enable
        }

        target: slot.item
    }
}
