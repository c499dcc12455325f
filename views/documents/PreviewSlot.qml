import QtQuick

/// What shows a document as a page. A file that brings in an engine has it as its root.
Item {
    property string markdown
    /// The folder of the document.
    property url baseUrl
    /// Whether the text is still being rendered.
    property bool isRendering: false

    /// The user has clicked a link in the page.
    signal linkActivated(url link)
}
