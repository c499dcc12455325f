#include "views/documents/engine/RequestGate.h"

#include "model/MarkdownPage.h"
#include "model/PageSandbox.h"

namespace tessaly {

RequestGate::RequestGate(QObject *parent) : QWebEngineUrlRequestInterceptor(parent)
{
}

void RequestGate::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    const QUrl url = info.requestUrl();
    const bool isOwn = url.scheme() == QUrl(packageRoot).scheme() || url.scheme() == QLatin1String("data");
    const bool isAllowedPicture = info.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeImage &&
                                  url.scheme() == QLatin1String("https") && m_pictures.contains(canonicalAddress(url));
    info.block(!isOwn && !isAllowedPicture);
}

} // namespace tessaly
