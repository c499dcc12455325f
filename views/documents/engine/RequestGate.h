#pragma once

#include <QByteArray>
#include <QSet>
#include <QWebEngineUrlRequestInterceptor>

namespace tessaly {

/// The wall behind the pages' own policy: lets a page reach the page server and the pictures it was allowed, blocks
/// every other request, redirections included.
class RequestGate : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    explicit RequestGate(QObject *parent = nullptr);

    /// From now on, pictures of these addresses (canonicalAddress) may be fetched by https, and no others.
    void setAllowedPictures(const QSet<QByteArray> &addresses) { m_pictures = addresses; }

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;

private:
    QSet<QByteArray> m_pictures;
};

} // namespace tessaly
