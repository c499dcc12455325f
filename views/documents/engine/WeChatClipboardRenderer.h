#pragma once

#include "views/documents/engine/PageServer.h"
#include "views/documents/engine/RequestGate.h"

#include <QObject>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineProfile>

#include <functional>
#include <memory>

namespace tessaly {

/// Turns Markdown into HTML whose every element carries its own look, in a page that nobody sees, and puts it on the
/// clipboard beside the Markdown: exactly the types text/html (UTF-8) and text/plain. Nothing is fetched from anywhere.
class WeChatClipboardRenderer : public QObject
{
    Q_OBJECT

public:
    /// Called once with whether the clipboard was filled; on failure the clipboard is as it was.
    using Completion = std::function<void(bool)>;

    /// Starts; one that is under way is deleted, its completion never called. The renderer deletes itself when done;
    /// who deletes it before gives up. It must not outlive the application object.
    static WeChatClipboardRenderer *copy(const QString &markdown, Completion completion);

    ~WeChatClipboardRenderer() override;

private:
    WeChatClipboardRenderer(QString markdown, Completion completion);
    void start();
    void poll();
    void take(const QVariant &html);
    void finish(bool isCopied);

    /// The one in progress.
    static WeChatClipboardRenderer *active;

    QString m_markdown;
    Completion m_completion;
    PageServer m_server;
    RequestGate m_gate;
    QTimer m_timeLimit;
    QTimer m_pollTimer;
    std::unique_ptr<QWebEngineProfile> m_profile;
    std::unique_ptr<QWebEnginePage> m_webPage;
    int m_attempts = 0;
};

} // namespace tessaly
