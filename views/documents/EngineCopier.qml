import Tessaly.DocumentEngine

/// Copies by means of the web engine. Loading this file loads the engine.
CopierSlot {
    id: slot

    onCopyRequested: markdown => copier.copy(markdown)

    RichTextCopier {
        id: copier

        onFinished: ok => slot.finished(ok)
    }
}
