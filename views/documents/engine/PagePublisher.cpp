#include "views/documents/engine/PagePublisher.h"

#include "model/MarkdownPage.h"
#include "model/PageSandbox.h"

namespace tessaly {

namespace {

std::optional<QByteArray> pictureBytes(const QUrl &url)
{
    const std::optional<Picture> picture = url.host().isEmpty() ? readPicture(url.toLocalFile()) : std::nullopt;
    return picture ? std::optional(picture->bytes) : std::nullopt;
}

} // namespace

PagePublisher::PagePublisher(QObject *parent) : QObject(parent)
{
    m_worker.setMaxThreadCount(1);
}

PagePublisher::~PagePublisher()
{
    m_worker.clear();
    m_worker.waitForDone();
}

void PagePublisher::publish(const QString &markdown, const QUrl &folder)
{
    m_worker.start([this, markdown, folder] {
        const QByteArray page = sandboxedPage(markdownPage(markdown, pictureBytes).toUtf8());
        const QSet<QByteArray> pictures = namedAddresses(markdown);
        QMetaObject::invokeMethod(
            this,
            [this, markdown, folder, page, pictures] {
                if (!m_profile)
                    return;
                m_profile->gate().setAllowedPictures(pictures);
                m_profile->pictures().setDocument(markdown, folder.toLocalFile());
                emit published(m_profile->server().publish(page));
            },
            Qt::QueuedConnection);
    });
}

} // namespace tessaly
