pragma ComponentBehavior: Bound

import QtQuick
import Tessaly.DocumentEngine
import Tessaly.Ui

/// Shows Markdown as a page with a transparent background. An edit changes the page that is there. Where that is not
/// possible, a new page is loaded: the previous rendering stays, at its scroll position, until the next is complete. When texts arrive faster than they can be rendered, all but the last may be skipped. Renders
/// nothing while invisible.
Item {
    id: preview

    required property string markdown
    /// The folder that relative picture addresses refer to.
    property url baseUrl
    /// Whether the text is being rendered.
    readonly property bool isRendering: internal.stage !== 0

    /// The user clicked a link for a browser or mail program. The preview opens nothing itself.
    signal linkActivated(link: url)
    /// The current text is on screen.
    signal rendered

    /// Shows the end of the text from the next rendering on.
    function showEnd() {
        internal.goesToEnd = true;
    }

    clip: true
    Accessible.role: Accessible.Pane
    Accessible.name: Language.text("预览", "Preview")
    onMarkdownChanged: internal.render()
    onBaseUrlChanged: internal.render()
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
        onRevised: revision => internal.revise(revision)
    }

    component Pane: DocumentPane {
        required property int place

        // Moved out of view, not hidden: a hidden page draws no frame, so it could not be shown at once.
        x: place === internal.front ? 0 : preview.width
        width: preview.width
        height: preview.height
        profile: PreviewProfile
        css: style.css
        cssImports: style.imports
        onLinkActivated: link => preview.linkActivated(link)
        onSettled: internal.show(place)
        onRefused: internal.publish()
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
        /// 0: idle, 1: generating the page or its revision, 2: loading it behind the front page, or revising that.
        property int stage: 0
        property bool isOutdated: false
        property bool goesToEnd: false
        property string brokenText
        readonly property DocumentPane frontPane: front === 0 ? first : second
        readonly property DocumentPane backPane: front === 0 ? second : first

        function render(): void {
            isOutdated = stage !== 0 || !preview.visible;
            if (isOutdated || (preview.markdown === "" && !frontPane.hasPage))
                return;
            if (!frontPane.hasPage) {
                publish();
                return;
            }
            stage = 1;
            publisher.revise(preview.markdown, preview.baseUrl);
        }

        function publish(): void {
            stage = 1;
            isOutdated = false;
            publisher.publish(preview.markdown, preview.baseUrl);
        }

        function revise(revision: string): void {
            if (!frontPane.hasPage) {
                publish(); // It has crashed.
                return;
            }
            stage = 2;
            frontPane.revise(revision, goesToEnd);
        }

        function open(page: url): void {
            stage = 2;
            if (goesToEnd)
                backPane.open(page, JSON.stringify({ scrollY: 1e9 }));
            else if (frontPane.hasPage)
                frontPane.reportPlace(place => backPane.open(page, place ?? ""));
            else
                backPane.open(page, "");
        }

        function show(place: int): void {
            const hadFocus = frontPane.activeFocus;
            front = place;
            if (hadFocus)
                frontPane.forceActiveFocus();
            stage = 0;
            if (isOutdated) {
                render();
                return;
            }
            goesToEnd = false;
            preview.rendered();
        }

        /// Renders again, unless the same text crashed its page before.
        function recover(): void {
            if (stage === 1)
                return; // Both pages ran in the process that crashed.
            const isBroken = brokenText === preview.markdown;
            brokenText = preview.markdown;
            stage = 0;
            if (!isBroken)
                render();
        }
    }
}
