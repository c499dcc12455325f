import QtQml
import QtQuick
import QtQuick.Templates as T

/// Names a popup for assistive technology, which reads the name of the popup's own item.
Binding {
    required property T.Popup popup
    required property string name

    target: popup.contentItem?.parent ?? null
    property: "Accessible.name"
    value: name
}
