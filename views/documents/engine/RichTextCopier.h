#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class WeChatClipboardRenderer;

/// Copies Markdown for the article editor of WeChat, which keeps inline styles but drops style sheets, classes and
/// scripts.
class RichTextCopier : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;
    ~RichTextCopier() override;

    /// Emits finished() later. A copy under way, also one of another copier, is given up: its finished() never comes.
    Q_INVOKABLE void copy(const QString &markdown);

signals:
    /// Whether the clipboard now holds the HTML and the Markdown; if not, it is as it was.
    void finished(bool isCopied);

private:
    QPointer<WeChatClipboardRenderer> m_renderer;
};

} // namespace tessaly
