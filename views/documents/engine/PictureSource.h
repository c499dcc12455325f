#pragma once

#include <QByteArray>
#include <QCache>
#include <QNetworkAccessManager>
#include <QObject>
#include <QSet>
#include <QThreadPool>
#include <QUrl>

#include <functional>
#include <optional>

namespace tessaly {

/// A picture as the engine shows it: its media type and its bytes.
struct Picture
{
    QByteArray type;
    QByteArray bytes;
};

/// The local picture, made a PNG where Qt reads its format and the engine does not. Nothing for a file that is no
/// picture by its contents, whatever its name, nor for a device or pipe.
[[nodiscard]] std::optional<Picture> readPicture(const QString &path);

/// Finds the pictures that a document names and its page cannot load by itself: local files, and what an address with
/// https redirects to, by https only.
class PictureSource : public QObject
{
    Q_OBJECT

public:
    /// Called once, later, on the caller's thread.
    using Answer = std::function<void(const std::optional<Picture> &)>;

    explicit PictureSource(QObject *parent = nullptr);
    ~PictureSource() override;

    /// From now on the pictures of this document are found; relative addresses are of files in the folder.
    void setDocument(const QString &markdown, const QString &folder);
    /// Looks for a picture by its address, as the document has it.
    void find(const QString &address, const Answer &answer);

private:
    [[nodiscard]] std::optional<QString> localFile(const QString &address) const;
    void read(const QString &path, const Answer &answer);
    void fetch(const QUrl &address, const Answer &answer);

    QString m_markdown;
    QString m_folder;
    QSet<QByteArray> m_named;
    QNetworkAccessManager m_network;
    /// What was fetched, so that not every rendering asks for it again; costs are bytes.
    QCache<QByteArray, Picture> m_fetched;
    QThreadPool m_worker;
};

} // namespace tessaly
