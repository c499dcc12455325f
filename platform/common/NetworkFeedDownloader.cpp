#include "platform/common/NetworkFeedDownloader.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <memory>
#include <optional>
#include <utility>

#define ZLIB_CONST
#include <zlib.h>

namespace tessaly {

namespace {

constexpr int mostRedirects = 20;

/// Whether the error is only the status code of a complete answer.
bool isStatusOnly(QNetworkReply::NetworkError error)
{
    return (error > QNetworkReply::UnknownProxyError && error <= QNetworkReply::UnknownContentError) ||
           error >= QNetworkReply::InternalServerError;
}

QNetworkRequest requestFor(const QUrl &url, const FeedVersion &known)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Qt decompresses unless the header is set, but accepts a truncated gzip file as complete.
    request.setRawHeader("Accept-Encoding", "gzip");
    if (!known.entityTag.isEmpty())
        request.setRawHeader("If-None-Match", known.entityTag);
    if (!known.lastModified.isEmpty())
        request.setRawHeader("If-Modified-Since", known.lastModified);
    return request;
}

} // namespace

ErrorCode downloadErrorCode(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::TimeoutError:
        return ErrorCode::DownloadTimedOut;
    case QNetworkReply::InsecureRedirectError:
        return ErrorCode::DownloadInsecureRedirect;
    case QNetworkReply::TooManyRedirectsError:
        return ErrorCode::DownloadTooManyRedirects;
    case QNetworkReply::SslHandshakeFailedError:
        return ErrorCode::DownloadTlsFailed;
    case QNetworkReply::HostNotFoundError:
        return ErrorCode::DownloadHostNotFound;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::UnknownNetworkError:
        return ErrorCode::DownloadConnectionFailed;
    case QNetworkReply::RemoteHostClosedError:
        return ErrorCode::DownloadIncomplete;
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::UnknownProxyError:
        return ErrorCode::DownloadProxyFailed;
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ProtocolFailure:
        return ErrorCode::DownloadAnswerInvalid;
    default:
        return ErrorCode::DownloadFailed;
    }
}

ErrorCode downloadErrorCode(const QList<QSslError> &refusals)
{
    const auto has = [&refusals](std::initializer_list<QSslError::SslError> reasons) {
        return std::any_of(refusals.cbegin(), refusals.cend(), [&reasons](const QSslError &refusal) {
            return std::find(reasons.begin(), reasons.end(), refusal.error()) != reasons.end();
        });
    };
    if (has({QSslError::CertificateExpired, QSslError::CertificateNotYetValid}))
        return ErrorCode::DownloadCertificateOutdated;
    if (has({QSslError::HostNameMismatch}))
        return ErrorCode::DownloadCertificateOfOther;
    return refusals.isEmpty() ? ErrorCode::DownloadTlsFailed : ErrorCode::DownloadCertificateUntrusted;
}

namespace {

bool hasNetwork()
{
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    return std::any_of(interfaces.cbegin(), interfaces.cend(), [](const QNetworkInterface &each) {
        return each.flags().testFlag(QNetworkInterface::IsRunning) &&
               !each.flags().testFlag(QNetworkInterface::IsLoopBack) && !each.addressEntries().isEmpty();
    });
}

/// Without a network, no other machine is found or reached, but it is not the server's fault.
ErrorCode reachabilityCode(ErrorCode code, const QString &host)
{
    const bool isUnreached = code == ErrorCode::DownloadHostNotFound || code == ErrorCode::DownloadConnectionFailed;
    const bool isThisMachine = QHostAddress(host).isLoopback() || host == u"localhost";
    return isUnreached && !isThisMachine && !hasNetwork() ? ErrorCode::DownloadNoNetwork : code;
}

/// Decompresses a gzip file (RFC 1952), also of several members, piece by piece.
class GzipReader
{
public:
    GzipReader()
    {
        constexpr int gzipOnly = MAX_WBITS + 16;
        if (inflateInit2(&m_stream, gzipOnly) != Z_OK)
            qBadAlloc();
    }
    ~GzipReader() { inflateEnd(&m_stream); }
    Q_DISABLE_COPY_MOVE(GzipReader)

    /// Appends what the next compressed bytes give, but stops soon after the output is longer than `limit` bytes. False
    /// when the input is not gzip or is damaged. Bytes after the last member are ignored.
    [[nodiscard]] bool read(const QByteArray &input, QByteArray &output, qsizetype limit)
    {
        constexpr Bytef firstMagicByte = 0x1F;
        std::array<char, 65536> piece;
        m_stream.next_in = reinterpret_cast<const Bytef *>(input.constData());
        m_stream.avail_in = static_cast<uInt>(input.size());
        do {
            if (m_isAtEnd && m_stream.avail_in > 0) {
                if (*m_stream.next_in != firstMagicByte)
                    return true;
                inflateReset(&m_stream);
                m_isAtEnd = false;
            }
            m_stream.next_out = reinterpret_cast<Bytef *>(piece.data());
            m_stream.avail_out = static_cast<uInt>(piece.size());
            const int result = inflate(&m_stream, Z_NO_FLUSH);
            if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
                return false;
            m_isAtEnd = result == Z_STREAM_END;
            output.append(piece.data(), static_cast<qsizetype>(piece.size() - m_stream.avail_out));
        } while ((m_stream.avail_in > 0 || m_stream.avail_out == 0) && output.size() <= limit);
        return true;
    }
    /// Whether the input ended where a member did; false before the first byte.
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }

private:
    z_stream m_stream = {};
    bool m_isAtEnd = false;
};

/// One download; lives as long as its reply.
class Transfer : public QObject
{
public:
    Transfer(QNetworkReply *reply, const NetworkFeedDownloader::Limits &limits, FeedDownloader::Completion completion)
        : QObject(reply), m_reply(reply), m_largestBody(limits.largestBody), m_completion(std::move(completion))
    {
        m_silence.setSingleShot(true);
        m_silence.setInterval(limits.silence);
        m_silence.start();
        connect(&m_silence, &QTimer::timeout, this, [this] { fail(ErrorCode::DownloadTimedOut); });
        connect(reply, &QNetworkReply::metaDataChanged, this, &Transfer::begin);
        connect(reply, &QNetworkReply::redirected, &m_silence, qOverload<>(&QTimer::start));
        connect(reply, &QNetworkReply::downloadProgress, &m_silence, qOverload<>(&QTimer::start));
        connect(reply, &QNetworkReply::readyRead, this, &Transfer::take);
        connect(reply, &QNetworkReply::sslErrors, this,
                [this](const QList<QSslError> &refusals) { m_refusals = refusals; });
        connect(reply, &QNetworkReply::finished, this, &Transfer::finish);
    }

private:
    void begin()
    {
        m_silence.start();
        // Headers of a redirect arrive as well; the last ones count.
        const QByteArray encoding = m_reply->rawHeader("Content-Encoding").trimmed().toLower();
        m_gzip = encoding == "gzip" || encoding == "x-gzip" ? std::make_unique<GzipReader>() : nullptr;
        if (announcedLength().value_or(0) > m_largestBody)
            fail(ErrorCode::DownloadTooLarge);
    }

    void take()
    {
        m_silence.start();
        const QByteArray bytes = m_reply->readAll();
        m_received += bytes.size();
        if (!m_gzip)
            m_body += bytes;
        else if (!m_gzip->read(bytes, m_body, m_largestBody))
            fail(ErrorCode::DownloadIncomplete);
        if (m_body.size() > m_largestBody)
            fail(ErrorCode::DownloadTooLarge);
    }

    void fail(ErrorCode code)
    {
        if (m_failure)
            return;
        m_failure = code;
        m_reply->abort();
    }

    [[nodiscard]] std::optional<qint64> announcedLength() const
    {
        const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
        return length.isValid() ? std::optional(length.toLongLong()) : std::nullopt;
    }

    void finish()
    {
        m_silence.stop();
        m_reply->deleteLater();
        if (!m_failure && m_reply->bytesAvailable() > 0)
            take();
        m_completion(result());
    }

    [[nodiscard]] Result<FeedAnswer> result()
    {
        if (m_failure)
            return Error{*m_failure, {}};
        const QNetworkReply::NetworkError error = m_reply->error();
        if (error == QNetworkReply::SslHandshakeFailedError)
            return Error{downloadErrorCode(m_refusals)};
        if (error != QNetworkReply::NoError && !isStatusOnly(error))
            return Error{reachabilityCode(downloadErrorCode(error), m_reply->url().host())};
        const bool isCut = m_received != announcedLength().value_or(m_received);
        const bool isGzipCut = m_gzip && m_received > 0 && !m_gzip->isAtEnd();
        if (isCut || isGzipCut)
            return Error{ErrorCode::DownloadIncomplete, {}};
        return FeedAnswer{.status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                          .body = std::move(m_body),
                          .version = {m_reply->rawHeader("ETag"), m_reply->rawHeader("Last-Modified")}};
    }

    QNetworkReply *m_reply;
    qint64 m_largestBody;
    FeedDownloader::Completion m_completion;
    QTimer m_silence;
    /// Set while the body is compressed.
    std::unique_ptr<GzipReader> m_gzip;
    /// Bytes of the body as they were sent.
    qint64 m_received = 0;
    QByteArray m_body;
    QList<QSslError> m_refusals;
    std::optional<ErrorCode> m_failure;
};

} // namespace

NetworkFeedDownloader::NetworkFeedDownloader(Limits limits) : m_limits(limits)
{
}

void NetworkFeedDownloader::download(const QUrl &url, const FeedVersion &known, Completion completion)
{
    if (url.scheme() != u"http" && url.scheme() != u"https") {
        const auto refuse = [completion = std::move(completion)] { completion(Error{ErrorCode::DownloadFailed, {}}); };
        QMetaObject::invokeMethod(&m_network, refuse, Qt::QueuedConnection);
        return;
    }
    new Transfer(m_network.get(requestFor(url, known)), m_limits, std::move(completion)); // owned by the reply
}

} // namespace tessaly
