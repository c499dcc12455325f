#include "views/documents/engine/WeChatClipboardRenderer.h"

#include "model/MarkdownPage.h"
#include "model/PageSandbox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>
#include <QWebEngineSettings>

#include <chrono>
#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int mostAttempts = 30;
constexpr auto pollInterval = 200ms;
/// How long a page may take to load, large documents on slow machines included.
constexpr auto loadLimit = 60s;

/// Stays on the one page that it loads, and prints nothing.
class SilentPage : public QWebEnginePage
{
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    bool acceptNavigationRequest(const QUrl &, NavigationType, bool) override
    {
        return !std::exchange(m_hasNavigated, true);
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int, const QString &) override {}
    void javaScriptAlert(const QUrl &, const QString &) override {}

private:
    bool m_hasNavigated = false;
};

} // namespace

WeChatClipboardRenderer *WeChatClipboardRenderer::active = nullptr;

WeChatClipboardRenderer::WeChatClipboardRenderer(QObject *parent) : QObject(parent)
{
    m_timeLimit.setSingleShot(true);
    m_pollTimer.setSingleShot(true);
    connect(&m_timeLimit, &QTimer::timeout, this, [this] { finish(false); });
    connect(&m_pollTimer, &QTimer::timeout, this, &WeChatClipboardRenderer::poll);
}

WeChatClipboardRenderer::~WeChatClipboardRenderer()
{
    if (active == this)
        active = nullptr;
}

void WeChatClipboardRenderer::copyDocumentForWeChat(const QString &markdown)
{
    if (active)
        active->cancel();
    active = this;
    m_markdown = markdown;
    start();
}

void WeChatClipboardRenderer::start()
{
    m_attempts = 0;
    m_profile = std::make_unique<QWebEngineProfile>(); // Without a name, it keeps nothing on disk.
    m_profile->installUrlSchemeHandler(QUrl(packageRoot).scheme().toLatin1(), &m_server);
    m_profile->setUrlRequestInterceptor(&m_gate);
    m_webPage = std::make_unique<SilentPage>(m_profile.get());
    m_webPage->settings()->setAttribute(QWebEngineSettings::LocalStorageEnabled, false);
    m_webPage->settings()->setAttribute(QWebEngineSettings::WebGLEnabled, false);
    m_webPage->settings()->setAttribute(QWebEngineSettings::AutoLoadIconsForPage, false);
    m_webPage->settings()->setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    connect(m_webPage.get(), &QWebEnginePage::loadFinished, this, [this](bool isLoaded) {
        m_timeLimit.stop();
        if (isLoaded)
            poll();
        else
            finish(false);
    });
    connect(m_webPage.get(), &QWebEnginePage::renderProcessTerminated, this, [this] { finish(false); });
    m_timeLimit.start(loadLimit);
    m_webPage->load(m_server.publish(sandboxedPage(inlineStylePage(m_markdown).toUtf8())));
}

void WeChatClipboardRenderer::poll()
{
    ++m_attempts;
    m_webPage->runJavaScript(u"window.brennicCopyReady ? document.getElementById('content').innerHTML : null"_s,
                             [self = QPointer(this), page = m_webPage.get()](const QVariant &html) {
                                 if (self && self->m_webPage.get() == page)
                                     self->take(html);
                             });
}

void WeChatClipboardRenderer::take(const QVariant &html)
{
    const QByteArray text = html.typeId() == QMetaType::QString ? html.toString().toUtf8() : QByteArray();
    if (text.isEmpty()) {
        if (m_attempts >= mostAttempts)
            finish(false);
        else
            m_pollTimer.start(pollInterval);
        return;
    }
    auto contents = std::make_unique<QMimeData>();
    contents->setText(m_markdown);
    contents->setData(u"text/html"_s, text);
    QGuiApplication::clipboard()->setMimeData(contents.release());
    finish(true);
}

void WeChatClipboardRenderer::finish(bool isCopied)
{
    cancel();
    emit finished(isCopied);
}

void WeChatClipboardRenderer::cancel()
{
    active = nullptr;
    m_timeLimit.stop();
    m_pollTimer.stop();
    m_webPage->disconnect(this);
    // The page may be the caller, so it goes later, and its profile after it.
    m_webPage.release()->deleteLater();
    m_profile.release()->deleteLater();
}

} // namespace tessaly
