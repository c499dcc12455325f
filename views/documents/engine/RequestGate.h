#pragma once

#include <QByteArray>
#include <QSet>
#include <QWebEngineUrlRequestInterceptor>

namespace tessaly {

/// Backs up the pages' own policy: lets a page reach the page server and allowed pictures, and blocks every other
/// request, including redirects.
class RequestGate : public QWebEngineUrlRequestInterceptor
{
    Q_OBJECT

public:
    explicit RequestGate(QObject *parent = nullptr);

    /// Allows these picture addresses (canonicalAddress, https), and no others.
    void setAllowedPictures(const QSet<QByteArray> &addresses) { m_pictures = addresses; }

    void interceptRequest(QWebEngineUrlRequestInfo &info) override;

private:
    QSet<QByteArray> m_pictures;
};

} // namespace tessaly
