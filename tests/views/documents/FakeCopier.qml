import Tessaly.Documents

/// Succeeds at once, but not with an empty text.
CopierSlot {
    onCopyRequested: markdown => finished(markdown !== "")
}
