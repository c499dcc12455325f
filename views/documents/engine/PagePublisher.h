#pragma once

#include "views/documents/engine/PreviewProfile.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QThreadPool>
#include <QtQml/qqmlregistration.h>
#include <QUrl>

namespace tessaly {

/// Turns Markdown into preview pages, and edits of it into revisions of the page that is shown, on a worker thread,
/// because large documents and their pictures take a while.
class PagePublisher : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PreviewProfile *profile MEMBER m_profile REQUIRED)

public:
    explicit PagePublisher(QObject *parent = nullptr);
    ~PagePublisher() override;

    /// Emits published() later, once for each call, in the order of the calls. Relative picture addresses refer to
    /// files in the folder.
    Q_INVOKABLE void publish(const QString &markdown, const QUrl &folder);
    /// The same for the page with what was published or revised last; emits revised() later instead, unless the folder
    /// is another one.
    Q_INVOKABLE void revise(const QString &markdown, const QUrl &folder);

signals:
    /// The page can be loaded once from this address. From now on, the profile allows the pictures that its text names.
    void published(const QUrl &page);
    /// What differs, as a JSON object for the page's script (web/preview-revision.js). As to pictures, the same holds.
    void revised(const QString &revision);

private:
    void allowPictures(const QString &markdown, const QSet<QByteArray> &named);

    QPointer<PreviewProfile> m_profile;
    /// The text of the page as its script knows it, and where its pictures are.
    QString m_text;
    QUrl m_folder;
    QThreadPool m_worker;
};

} // namespace tessaly
