#include "views/documents/engine/PreviewProfile.h"

#include "model/MarkdownPage.h"

namespace tessaly {

PreviewProfile::PreviewProfile(QObject *parent) : QQuickWebEngineProfile(parent)
{
    setOffTheRecord(true);
    installUrlSchemeHandler(QUrl(packageRoot).scheme().toLatin1(), &m_server);
    setUrlRequestInterceptor(&m_gate);
}

} // namespace tessaly
