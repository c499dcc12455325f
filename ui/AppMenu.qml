import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Tessaly.Ui

/// A pop-up menu; its title is its name for assistive technology. A click outside closes it and presses nothing else.
T.Menu {
    id: menu

    property T.Control opener: null
    property int openerReason: Qt.MouseFocusReason

    modal: true
    dim: false
    margins: 6
    padding: 5
    implicitWidth: Math.max(180, contentItem.implicitWidth + 10)
    implicitHeight: contentItem.implicitHeight + 10
    delegate: AppMenuItem {}
    onAboutToShow: {
        opener = parent?.Window.activeFocusItem as T.Control;
        openerReason = FocusHandover.reasonAfter(opener);
    }
    onClosed: {
        // What an entry opened keeps the focus.
        if (opener?.activeFocus)
            FocusHandover.give(opener, openerReason);
    }

    background: PopupFrame {}

    PopupName {
        popup: menu
        name: menu.title
    }

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.popupIn
            easing.type: Easing.OutCubic
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.popupOut
            easing.type: Easing.InQuad
        }
    }

    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let most = 0;
            for (let i = 0; i < menu.count; ++i)
                most = Math.max(most, menu.itemAt(i).implicitWidth);
            return most;
        }
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
    }
}
