import QtQuick

/// Copies a document to the clipboard as rich text. It is the root of files that load an engine.
Item {
    signal copyRequested(string markdown)
    /// The last request is done; requests that another has overtaken are never answered.
    signal finished(bool isCopied)
}
