import QtQuick
import QtQuick.Window
import Tessaly.Documents
import Tessaly.Ui

/// The preview, loaded with the first document, or a text that explains why there is none.
Item {
    id: pane

    required property string markdown
    required property url baseUrl

    readonly property PreviewSlot slot: loader.item as PreviewSlot
    /// Whether the current text is fully shown.
    readonly property bool isSettled: loader.active && loader.status !== Loader.Loading && !(slot?.isRendering ?? false)

    /// Opens in the user's browser or mail program what may be opened there.
    function follow(link: url) {
        if (/^(https?|mailto):/i.test(link.toString()))
            Qt.openUrlExternally(link);
    }

    objectName: "preview"

    Loader {
        id: loader

        anchors.fill: parent
        active: false
        source: DocumentDesktop.previewSource
    }
    Connections {
        // The engine takes a moment to load, so the source is shown first.
        function onFrameSwapped() {
            DocumentDesktop.prepareEngine();
            loader.active = true;
        }

        target: loader.active ? null : pane.Window.window
    }

    Binding {
        target: pane.slot
        property: "baseUrl"
        value: pane.baseUrl
        when: pane.slot !== null
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: pane.slot
        property: "markdown"
        value: pane.markdown
        // A hidden page is not rendered again, and the folder is needed to render pictures.
        when: pane.slot !== null && pane.visible && String(pane.slot.baseUrl) === String(pane.baseUrl)
        restoreMode: Binding.RestoreNone
    }
    Connections {
        function onLinkActivated(link: url) {
            pane.follow(link);
        }

        target: pane.slot
    }

    AppText {
        x: 18
        y: 18
        width: parent.width - 36
        visible: loader.active && (loader.status === Loader.Error || loader.status === Loader.Null)
        text: Language.text("此系统缺少网页组件（Qt WebEngine），无法显示预览。编辑和保存不受影响。", "The web engine (Qt WebEngine) is missing on this system, so there is no preview. Editing and saving work as usual.")
        isMultiline: true
        color: Theme.textSecondary
    }
}
