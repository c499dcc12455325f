#include "views/documents/engine/PagePublisher.h"

#include "model/MarkdownPage.h"
#include "model/PageSandbox.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>

namespace tessaly {

namespace {

/// A local picture. A file that is none by its contents is not read into a page, whatever a document calls it, and
/// neither is a device or pipe.
std::optional<QByteArray> readPicture(const QUrl &url)
{
    constexpr qint64 mostBytes = 128 * 1024 * 1024;
    const QString path = url.host().isEmpty() ? url.toLocalFile() : QString();
    const QFileInfo info(path);
    QFile file(path);
    if (!info.isFile() || info.size() > mostBytes || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (!QMimeDatabase().mimeTypeForData(bytes).name().startsWith(QLatin1String("image/")))
        return std::nullopt;
    return bytes;
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

void PagePublisher::publish(const QString &markdown)
{
    m_worker.start([this, markdown] {
        const QByteArray page = sandboxedPage(markdownPage(markdown, readPicture).toUtf8());
        const QSet<QByteArray> pictures = namedAddresses(markdown);
        QMetaObject::invokeMethod(
            this,
            [this, page, pictures] {
                if (!m_profile)
                    return;
                m_profile->gate().setAllowedPictures(pictures);
                emit published(m_profile->server().publish(page));
            },
            Qt::QueuedConnection);
    });
}

} // namespace tessaly
