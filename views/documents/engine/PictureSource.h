#pragma once

#include <QByteArray>
#include <QCache>
#include <QDateTime>
#include <QHash>
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

/// Reads a local picture. Converts it to PNG if Qt can read its format but the engine cannot. Returns nothing for a
/// file whose contents are not a picture, whatever its name, or for a device or pipe.
[[nodiscard]] std::optional<Picture> readPicture(const QString &path);

/// Finds the pictures that a document names but its page cannot load: local files, and https addresses that
/// redirect to other https addresses.
class PictureSource : public QObject
{
    Q_OBJECT

public:
    /// Called once, on the caller's thread.
    using Answer = std::function<void(const std::optional<Picture> &)>;

    explicit PictureSource(QObject *parent = nullptr);
    ~PictureSource() override;

    /// Sets the document whose pictures are found, and the https addresses that it names (namedAddresses). Relative
    /// addresses refer to files in the folder.
    void setDocument(const QString &markdown, const QString &folder, const QSet<QByteArray> &named);
    /// Finds a picture by its address as written in the document.
    void find(const QString &address, const Answer &answer);
    /// The addresses for which find() might answer differently now, since the last call of forgetAnswers().
    [[nodiscard]] QStringList outdated() const;
    void forgetAnswers() { m_answered.clear(); }

private:
    /// What a changed file differs in; empty if there is none.
    struct FileState
    {
        QString path;
        qint64 size = 0;
        QDateTime modified;

        bool operator==(const FileState &) const = default;
    };

    [[nodiscard]] std::optional<QString> localFile(const QString &address) const;
    [[nodiscard]] FileState stateOf(const QString &address) const;
    void read(const QString &path, const Answer &answer);
    void fetch(const QUrl &address, const Answer &answer);

    QString m_markdown;
    QString m_folder;
    QSet<QByteArray> m_named;
    /// The files of the addresses that find() has been asked for.
    QHash<QString, FileState> m_answered;
    QNetworkAccessManager m_network;
    /// Pictures already fetched, so that rendering again does not request them. Costs are bytes.
    QCache<QByteArray, Picture> m_fetched;
    QThreadPool m_worker;
};

} // namespace tessaly
