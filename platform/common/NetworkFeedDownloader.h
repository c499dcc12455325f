#pragma once

#include "platform/FeedDownloader.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslError>

#include <chrono>

namespace tessaly {

/// What an error of the network means to the user.
[[nodiscard]] ErrorCode downloadErrorCode(QNetworkReply::NetworkError error);
/// Why a certificate was refused: the first of the reasons that the user can do something about.
[[nodiscard]] ErrorCode downloadErrorCode(const QList<QSslError> &refusals);

/// Downloads over Qt Network, without blocking, without cookies and without a cache.
///
/// A download ends in failure after `silence` without a byte (DownloadTimedOut), when the body, decompressed, grows
/// past `largestBody` bytes (DownloadTooLarge), on a step from https to http (DownloadInsecureRedirect), after 20
/// redirects (DownloadTooManyRedirects), on any TLS error (DownloadTlsFailed, or why the certificate was refused), when
/// the connection ends before the body does (DownloadIncomplete), and while this machine is on no network
/// (DownloadNoNetwork). Links that are neither http nor https fail with DownloadFailed.
class NetworkFeedDownloader final : public FeedDownloader
{
public:
    struct Limits
    {
        std::chrono::milliseconds silence = std::chrono::seconds(60);
        qint64 largestBody = qint64(64) * 1024 * 1024;
    };

    explicit NetworkFeedDownloader(Limits limits);
    NetworkFeedDownloader() : NetworkFeedDownloader(Limits()) {}

    void download(const QUrl &url, const FeedVersion &known, Completion completion) override;

private:
    Limits m_limits;
    QNetworkAccessManager m_network;
};

} // namespace tessaly
