import QtQuick

/// Shows a document as a page. It is the root of files that load an engine.
Item {
    property string markdown
    /// The folder of the document.
    property url baseUrl
    /// Whether the text is still being rendered.
    property bool isRendering: false

    /// The user has clicked a link in the page.
    signal linkActivated(url link)
    /// The next rendering is to show the end of the text.
    signal endRequested
}
