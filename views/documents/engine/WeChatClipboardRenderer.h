#pragma once

#include "views/documents/engine/PageServer.h"
#include "views/documents/engine/RequestGate.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <QWebEnginePage>
#include <QWebEngineProfile>

#include <memory>

namespace tessaly {

/// Copies documents for the article editor of WeChat, which keeps inline styles but drops style sheets, classes and
/// scripts. Turns Markdown into HTML whose every element carries its own look, in a page that is not shown, and puts it
/// on the clipboard beside the Markdown: exactly the types text/html (UTF-8) and text/plain. Fetches nothing.
class WeChatClipboardRenderer : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit WeChatClipboardRenderer(QObject *parent = nullptr);
    ~WeChatClipboardRenderer() override;

    /// Emits finished() later. Cancels a copy in progress, by this renderer or another: its finished() never comes.
    Q_INVOKABLE void copyDocumentForWeChat(const QString &markdown);

signals:
    /// Whether the clipboard now holds the HTML and the Markdown; if not, it is as it was.
    void finished(bool isCopied);

private:
    void start();
    void poll();
    void take(const QVariant &html);
    void finish(bool isCopied);
    void cancel();

    /// The one in progress.
    static WeChatClipboardRenderer *active;

    QString m_markdown;
    PageServer m_server;
    RequestGate m_gate;
    QTimer m_timeLimit;
    QTimer m_pollTimer;
    std::unique_ptr<QWebEngineProfile> m_profile;
    std::unique_ptr<QWebEnginePage> m_webPage;
    int m_attempts = 0;
};

} // namespace tessaly
