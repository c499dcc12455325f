#include "views/documents/engine/PageServer.h"

#include "model/MarkdownPage.h"
#include "views/documents/engine/PictureSource.h"

#include <QBuffer>
#include <QFile>
#include <QPointer>
#include <QWebEngineUrlRequestJob>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QByteArray contentType(const QString &path)
{
    static const QHash<QString, QByteArray> types{
        {u"js"_s, "text/javascript"}, {u"css"_s, "text/css"}, {u"woff"_s, "font/woff"}};
    return types.value(path.mid(path.lastIndexOf(u'.') + 1));
}

void reply(QWebEngineUrlRequestJob &job, const QByteArray &type, const QByteArray &bytes)
{
    auto *device = new QBuffer(&job);
    device->setData(bytes);
    device->open(QIODevice::ReadOnly);
    job.reply(type, device);
}

} // namespace

PageServer::PageServer(PictureSource *pictures, QObject *parent)
    : QWebEngineUrlSchemeHandler(parent), m_pictures(pictures)
{
}

QUrl PageServer::publish(const QByteArray &page)
{
    constexpr qsizetype most = 4;
    if (m_pages.size() == most)
        m_pages.removeFirst();
    m_pages.append({QUrl(packageRoot + u"page/"_s + QString::number(++m_count)), page});
    return m_pages.last().address;
}

void PageServer::requestStarted(QWebEngineUrlRequestJob *job)
{
    const QUrl address = job->requestUrl();
    if (job->requestMethod() != "GET" || address.host() != QUrl(packageRoot).host()) {
        job->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    if (m_pictures && QUrl(pictureRoot).isParentOf(address)) {
        sendPicture(*job);
        return;
    }
    const auto page = std::find_if(m_pages.cbegin(), m_pages.cend(), [&](const Page &candidate) {
        return candidate.address.matches(address, QUrl::RemoveFragment);
    });
    if (page != m_pages.cend()) {
        reply(*job, "text/html", page->text);
        m_pages.erase(page);
        return;
    }
    QFile file(u":/tessaly-packages"_s + address.path());
    const QByteArray type = contentType(address.path());
    if (type.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        job->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    reply(*job, type, file.readAll());
}

void PageServer::sendPicture(QWebEngineUrlRequestJob &job)
{
    const QPointer<QWebEngineUrlRequestJob> asking(&job);
    m_pictures->find(job.requestUrl().query(QUrl::FullyDecoded), [asking](const std::optional<Picture> &picture) {
        if (asking && picture)
            reply(*asking, picture->type, picture->bytes);
        else if (asking)
            asking->fail(QWebEngineUrlRequestJob::UrlNotFound);
    });
}

} // namespace tessaly
