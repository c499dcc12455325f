#include "views/documents/engine/PictureSource.h"

#include "model/PageSandbox.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeDatabase>
#include <QNetworkReply>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostBytes = 128 * 1024 * 1024;
constexpr int mostBytesFetched = 32 * 1024 * 1024;
constexpr int patience = 30'000; // Milliseconds.

/// The picture that these bytes are, as the engine shows it.
std::optional<Picture> pictureOf(QByteArray bytes)
{
    static const QSet<QString> shown{
        u"image/png"_s,     u"image/jpeg"_s, u"image/gif"_s,  u"image/webp"_s,
        u"image/svg+xml"_s, u"image/bmp"_s,  u"image/avif"_s, u"image/vnd.microsoft.icon"_s};
    const QString type = QMimeDatabase().mimeTypeForData(bytes).name();
    if (shown.contains(type))
        return Picture{type.toLatin1(), std::move(bytes)};
    QBuffer source(&bytes);
    QImageReader reader(&source);
    reader.setAutoTransform(true);
    const QImage image = type.startsWith(u"image/"_s) ? reader.read() : QImage();
    Picture converted{"image/png", {}};
    QBuffer target(&converted.bytes);
    return !image.isNull() && image.save(&target, "PNG") ? std::optional(converted) : std::nullopt;
}

} // namespace

std::optional<Picture> readPicture(const QString &path)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > mostBytes || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return pictureOf(file.readAll());
}

PictureSource::PictureSource(QObject *parent) : QObject(parent), m_fetched(2 * mostBytesFetched)
{
    m_worker.setMaxThreadCount(1);
}

PictureSource::~PictureSource()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void PictureSource::setDocument(const QString &markdown, const QString &folder, const QSet<QByteArray> &named)
{
    m_markdown = markdown;
    m_folder = folder;
    m_named = named;
}

void PictureSource::find(const QString &address, const Answer &answer)
{
    m_answered.insert(address, stateOf(address));
    const QUrl url(address);
    if (url.scheme() == u"https"_s && m_named.contains(canonicalAddress(url)))
        fetch(url, answer);
    else if (const std::optional<QString> path = localFile(address))
        read(*path, answer);
    else
        answer(std::nullopt);
}

QStringList PictureSource::outdated() const
{
    QStringList result;
    for (const auto &[address, state] : m_answered.asKeyValueRange()) {
        const bool isFetched = m_fetched.contains(canonicalAddress(QUrl(address)));
        const bool mayBeThereNow = QUrl(address).scheme() == u"https"_s && !isFetched;
        if (mayBeThereNow || stateOf(address) != state)
            result.append(address);
    }
    return result;
}

PictureSource::FileState PictureSource::stateOf(const QString &address) const
{
    const std::optional<QString> path = localFile(address);
    const QFileInfo info(path.value_or(QString()));
    return path && info.exists() ? FileState{*path, info.size(), info.lastModified()} : FileState();
}

std::optional<QString> PictureSource::localFile(const QString &address) const
{
    const QUrl url(address);
    const bool isLocal = url.isLocalFile() || url.scheme().isEmpty();
    if (!isLocal || !url.host().isEmpty() || url.path().isEmpty())
        return std::nullopt;
    const QString path = url.path(QUrl::FullyDecoded);
    if (path.startsWith(u'/'))
        return namesFile(m_markdown, path) ? std::optional(path) : std::nullopt;
    const QString folder = QFileInfo(m_folder).canonicalFilePath();
    const QString file = QFileInfo(folder + u'/' + path).canonicalFilePath();
    const bool isWithin = !folder.isEmpty() && file.startsWith(folder + u'/');
    return isWithin ? std::optional(file) : std::nullopt;
}

void PictureSource::read(const QString &path, const Answer &answer)
{
    m_worker.start([this, path, answer] {
        const std::optional<Picture> picture = readPicture(path);
        QMetaObject::invokeMethod(
            this, [picture, answer] { answer(picture); }, Qt::QueuedConnection);
    });
}

void PictureSource::fetch(const QUrl &address, const Answer &answer)
{
    const QByteArray key = canonicalAddress(address);
    if (const Picture *fetched = m_fetched.object(key)) {
        answer(*fetched);
        return;
    }
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setTransferTimeout(patience);
    QNetworkReply *reply = m_network.get(request);
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
        if (received > mostBytesFetched)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply, key, answer] {
        reply->deleteLater();
        const bool isFetched = reply->error() == QNetworkReply::NoError;
        const std::optional<Picture> picture = isFetched ? pictureOf(reply->readAll()) : std::nullopt;
        if (picture)
            m_fetched.insert(key, new Picture(*picture), picture->bytes.size());
        answer(picture);
    });
}

} // namespace tessaly
