#pragma once

#include <QByteArray>
#include <QHash>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

namespace tessaly {

class PictureSource;

/// Answers requests for "tessaly:" addresses: the files of the npm packages under packageRoot + "npm/", with the paths
/// that MarkdownPage writes, pages of any size that were published, and pictures from their source, if there is one.
/// Everything else is not found.
class PageServer : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    explicit PageServer(PictureSource *pictures = nullptr, QObject *parent = nullptr);

    /// Makes a page (HTML, UTF-8) ready to be loaded once from the returned address; the oldest of those that nobody
    /// loads are dropped.
    [[nodiscard]] QUrl publish(const QByteArray &page);

    void requestStarted(QWebEngineUrlRequestJob *job) override;

private:
    struct Page
    {
        QUrl address;
        QByteArray text;
    };

    void sendPicture(QWebEngineUrlRequestJob &job);

    PictureSource *m_pictures;
    QList<Page> m_pages;
    quint64 m_count = 0;
};

} // namespace tessaly
