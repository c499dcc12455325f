import Tessaly.DocumentEngine

/// The preview of the web engine. Loading this file loads the engine.
PreviewSlot {
    id: slot

    isRendering: preview.isRendering
    onEndRequested: preview.showEnd()

    MarkdownPreview {
        id: preview

        anchors.fill: parent
        markdown: slot.markdown
        baseUrl: slot.baseUrl
        onLinkActivated: link => slot.linkActivated(link)
    }
}
