import QtQuick
import QtWebEngine
import Tessaly.Ui

/// Shows one page of a document, isolated: it cannot navigate, ask for permissions or open dialogs.
WebEngineView {
    id: pane

    /// Applied over the page's own style, from the start.
    required property string css
    /// Imports of style sheets that rank below css; they may change colours only.
    required property string cssImports
    /// Whether a page is shown that has a scroll position.
    readonly property bool hasPage: internal.hasPage

    /// The page opened or revised last is complete, with its formulas, local pictures, fonts and scroll position.
    signal settled
    /// The page cannot show the revision; a new one must.
    signal refused
    /// The user clicked a link. Only addresses for a browser or mail program are reported.
    signal linkActivated(link: url)
    /// The page's process crashed.
    signal crashed

    /// Loads a published page and scrolls it to a place from reportPlace().
    function open(page: url, place: string): void {
        internal.isOpening = true;
        internal.mayNavigate = true;
        internal.place = place;
        pane.url = page;
    }

    /// Changes the page that is shown, which keeps its scroll position or goes to its end. The revision is PagePublisher's.
    function revise(revision: string, goesToEnd: bool): void {
        internal.isOpening = true;
        patience.restart();
        runJavaScript(internal.reviseScript(revision, goesToEnd));
    }

    /// Passes the place at the top of the view to the listener.
    function reportPlace(listener: var): void {
        runJavaScript(internal.placeScript, listener);
    }

    function activate(link: url): void {
        if (/^(https?|mailto):/i.test(link.toString()))
            linkActivated(link);
    }

    backgroundColor: Theme.transparent
    Component.onCompleted: internal.injectScripts()

    settings {
        accelerated2dCanvasEnabled: false
        autoLoadIconsForPage: false
        dnsPrefetchEnabled: false
        errorPageEnabled: false
        focusOnNavigationEnabled: false
        fullScreenSupportEnabled: false
        hyperlinkAuditingEnabled: false
        javascriptCanAccessClipboard: false
        javascriptCanOpenWindows: false
        javascriptCanPaste: false
        localContentCanAccessFileUrls: false
        localContentCanAccessRemoteUrls: false
        localStorageEnabled: false
        navigateOnDropEnabled: false
        pdfViewerEnabled: false
        pluginsEnabled: false
        screenCaptureEnabled: false
        touchIconsEnabled: false
        webGLEnabled: false
        webRTCPublicInterfacesOnly: true
    }

    onCssChanged: {
        internal.injectScripts();
        if (internal.hasPage)
            runJavaScript(internal.adoptStyle());
    }
    onCssImportsChanged: {
        if (internal.hasPage)
            runJavaScript(internal.importScript());
    }

    onNavigationRequested: request => {
        if (request.isMainFrame && internal.mayNavigate && request.url === url) {
            internal.mayNavigate = false;
            return;
        }
        request.reject();
        if (request.navigationType === WebEngineNavigationRequest.LinkClickedNavigation)
            activate(request.url);
    }
    onNewWindowRequested: request => {
        if (request.userInitiated)
            activate(request.requestedUrl);
    }
    onFeaturePermissionRequested: (securityOrigin, feature) => grantFeaturePermission(securityOrigin, feature, false)
    onAuthenticationDialogRequested: request => internal.refuse(request)
    onColorDialogRequested: request => internal.refuse(request)
    onFileDialogRequested: request => internal.refuse(request)
    onJavaScriptDialogRequested: request => internal.refuse(request)
    onContextMenuRequested: request => {
        request.accepted = true;
        if (request.selectedText !== "")
            menu.popup(request.position.x, request.position.y);
    }

    onJavaScriptConsoleMessage: (level, message) => {
        if (message === "typeset")
            runJavaScript(internal.settleScript());
        else if (message === "settled")
            internal.settle();
        else if (message === "refused")
            internal.refuseRevision();
    }
    onLoadingChanged: request => {
        if (request.status === WebEngineView.LoadSucceededStatus)
            patience.restart();
        else if (request.status === WebEngineView.LoadFailedStatus)
            internal.settle();
    }
    onRenderProcessTerminated: {
        internal.isOpening = false;
        internal.hasPage = false;
        crashed();
    }

    AppMenu {
        id: menu

        AppMenuItem {
            text: Language.text("复制", "Copy")
            onTriggered: pane.triggerWebAction(WebEngineView.Copy)
        }
    }

    // A document can make the page's scripts fail.
    Timer {
        id: patience

        interval: 10000
        onTriggered: internal.settle()
    }

    QtObject {
        id: internal

        property bool hasPage: false
        property bool isOpening: false
        property bool mayNavigate: false
        property string place: ""

        readonly property string announceTypeset: `(async () => {
            try { await MathJax.startup.promise; } finally { console.info("typeset"); }
        })();`

        // Formulas change height when they are typeset, so the place is relative to the first block in view.
        readonly property string placeScript: `(() => {
            const blocks = [...document.getElementById("content").children];
            const index = blocks.findIndex(block => block.getBoundingClientRect().bottom > 0);
            return JSON.stringify({ scrollY, index, top: blocks[index]?.getBoundingClientRect().top ?? 0 });
        })()`

        // Runs before the text is laid out, because another font would lay it out again.
        // A function, because onCssChanged may run before a binding to css is updated.
        function adoptStyle(): string {
            return `{
                const sheet = new CSSStyleSheet();
                sheet.replaceSync(${JSON.stringify(pane.css)});
                document.adoptedStyleSheets = [sheet];
            }`;
        }

        function refuse(dialog: var): void {
            dialog.accepted = true;
            dialog.dialogReject();
        }

        function injectScripts(): void {
            // The engine's module does not declare the list's type.
            // qmllint disable
            userScripts.collection = [
                {
                    name: "style",
                    injectionPoint: WebEngineScript.DocumentCreation,
                    worldId: WebEngineScript.MainWorld,
                    sourceCode: adoptStyle()
                },
                {
                    name: "announce",
                    injectionPoint: WebEngineScript.DocumentReady,
                    worldId: WebEngineScript.MainWorld,
                    sourceCode: announceTypeset
                }
            ];
            // qmllint enable
        }

        function importScript(): string {
            return `(() => {
                const root = document.documentElement;
                const style = root.tessalyStyle ??= root.appendChild(document.createElement("style"));
                const loaded = new Promise(done => style.onload = style.onerror = done);
                style.textContent = ${JSON.stringify(pane.cssImports)};
                return loaded;
            })()`;
        }

        function settleScript(): string {
            return `(async () => {
                await ${importScript()};
                const pictures = [...document.images].filter(picture => !picture.src.startsWith("https:"));
                await Promise.all(pictures.map(picture => picture.decode().catch(() => {})));
                await document.fonts.ready;
                const place = JSON.parse(${JSON.stringify(place || "{}")});
                const scroll = () => {
                    const block = document.getElementById("content").children[place.index];
                    if (block && place.scrollY > 0) scrollBy(0, block.getBoundingClientRect().top - place.top);
                    else scrollTo(0, place.scrollY ?? 0);
                };
                scroll();
                await MathJax.typesetInView?.();
                scroll();
                requestAnimationFrame(() => requestAnimationFrame(() => console.info("settled")));
            })();`;
        }

        function reviseScript(revision: string, goesToEnd: bool): string {
            return `(async () => tessaly.revise({ ...${revision}, isToEnd: ${goesToEnd} }))().catch(() => false)
                .then(isShown => console.info(isShown ? "settled" : "refused"));`;
        }

        function refuseRevision(): void {
            patience.stop();
            isOpening = false;
            pane.refused();
        }

        function settle(): void {
            patience.stop();
            if (!isOpening)
                return;
            isOpening = false;
            hasPage = true;
            pane.settled();
        }
    }
}
