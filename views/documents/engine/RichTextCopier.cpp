#include "views/documents/engine/RichTextCopier.h"

#include "views/documents/engine/WeChatClipboardRenderer.h"

namespace tessaly {

RichTextCopier::~RichTextCopier()
{
    delete m_renderer;
}

void RichTextCopier::copy(const QString &markdown)
{
    m_renderer = WeChatClipboardRenderer::copy(markdown, [this](bool isCopied) { emit finished(isCopied); });
}

} // namespace tessaly
