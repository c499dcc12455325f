import QtQuick

/// What puts a document on the clipboard as rich text. A file that brings in an engine has it as its root.
Item {
    signal copyRequested(string markdown)
    /// The last request is done; requests that another has overtaken are never answered.
    signal finished(bool isCopied)
}
