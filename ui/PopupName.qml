import QtQml
import QtQuick
import QtQuick.Templates as T

/// Names a popup for assistive technology, which meets the popup's own item first.
Binding {
    required property T.Popup popup
    required property string name

    target: popup.contentItem?.parent ?? null
    property: "Accessible.name"
    value: name
}
