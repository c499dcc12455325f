import Tessaly.DocumentEngine

/// Copies with the web engine. Loading this file loads the engine.
CopierSlot {
    id: slot

    onCopyRequested: markdown => renderer.copyDocumentForWeChat(markdown)

    WeChatClipboardRenderer {
        id: renderer

        onFinished: ok => slot.finished(ok)
    }
}
