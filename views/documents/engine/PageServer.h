#pragma once

#include <QByteArray>
#include <QHash>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

namespace tessaly {

class PictureSource;

/// Answers requests for "tessaly:" addresses: files of the npm packages under packageRoot + "npm/", published pages of
/// any size, and pictures, if it has a source of them. Everything else is not found.
class PageServer : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    explicit PageServer(PictureSource *pictures = nullptr, QObject *parent = nullptr);

    /// Serves a page (HTML, UTF-8) once from the returned address. Drops the oldest pages that are never loaded.
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
