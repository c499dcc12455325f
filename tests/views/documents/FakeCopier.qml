import Tessaly.Documents

/// Succeeds at once, but not with an empty text; a text that begins with "slow" waits for the test.
CopierSlot {
    objectName: "copier"
    onCopyRequested: markdown => {
        if (!markdown.startsWith("slow"))
            finished(markdown !== "");
    }
}
