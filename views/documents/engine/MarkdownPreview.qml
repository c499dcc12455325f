pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.DocumentEngine
import Tessaly.Ui

/// Shows Markdown as a page, transparent over what is behind. The last rendering stays, at its scroll position, until
/// the next is complete; texts that come faster than they can be rendered are skipped, the last one never. While the
/// preview is not visible, it rests.
Item {
    id: preview

    required property string markdown
    /// The folder that relative addresses of pictures are of.
    property url baseUrl
    /// Whether the text is being rendered.
    readonly property bool isRendering: internal.stage !== 0

    /// The user clicked on a link for a browser or a mail program; nothing was opened.
    signal linkActivated(link: url)
    /// The current text is on screen.
    signal rendered

    clip: true
    Accessible.role: Accessible.Pane
    Accessible.name: Language.text("预览", "Preview")
    onMarkdownChanged: internal.render()
    onVisibleChanged: {
        if (internal.isOutdated)
            internal.render();
    }
    Component.onCompleted: internal.render()

    PreviewStyle {
        id: style
    }

    PagePublisher {
        id: publisher

        profile: PreviewProfile
        onPublished: page => internal.open(page)
    }

    component Pane: DocumentPane {
        required property int place

        // Beside the view, not hidden: a hidden page draws no frame that could be shown at once.
        x: place === internal.front ? 0 : preview.width
        width: preview.width
        height: preview.height
        profile: PreviewProfile
        css: style.css
        cssImports: style.imports
        onLinkActivated: link => preview.linkActivated(link)
        onSettled: internal.show(place)
        onCrashed: internal.recover()
    }

    Pane {
        id: first

        place: 0
    }
    Pane {
        id: second

        place: 1
    }

    QtObject {
        id: internal

        property int front: 1
        /// 0 idle, 1 making the page, 2 loading it behind the one in front.
        property int stage: 0
        property bool isOutdated: false
        property string brokenText
        readonly property DocumentPane frontPane: front === 0 ? first : second
        readonly property DocumentPane backPane: front === 0 ? second : first

        function render(): void {
            isOutdated = stage !== 0 || !preview.visible;
            if (isOutdated || (preview.markdown === "" && !frontPane.hasPage))
                return;
            stage = 1;
            publisher.publish(preview.markdown, preview.baseUrl);
        }

        function open(page: url): void {
            stage = 2;
            if (frontPane.hasPage)
                frontPane.tellPlace(place => backPane.open(page, place ?? ""));
            else
                backPane.open(page, "");
        }

        function show(place: int): void {
            const hadFocus = frontPane.activeFocus;
            front = place;
            if (hadFocus)
                frontPane.forceActiveFocus();
            stage = 0;
            if (isOutdated)
                render();
            else
                preview.rendered();
        }

        /// Once more, but a text that broke its page twice is left alone.
        function recover(): void {
            if (stage === 1)
                return; // Both pages were in the process that ended.
            const isBroken = brokenText === preview.markdown;
            brokenText = preview.markdown;
            stage = 0;
            if (!isBroken)
                render();
        }
    }
}
