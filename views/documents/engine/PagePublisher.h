#pragma once

#include "views/documents/engine/PreviewProfile.h"

#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

/// Makes preview pages out of Markdown, away from the main thread: large documents and their pictures take a while.
class PagePublisher : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PreviewProfile *profile MEMBER m_profile REQUIRED)

public:
    explicit PagePublisher(QObject *parent = nullptr);
    ~PagePublisher() override;

    /// Emits published() later, once for each call and in their order. Relative addresses of pictures are of files in
    /// the folder.
    Q_INVOKABLE void publish(const QString &markdown, const QUrl &folder);

signals:
    /// The page can be loaded, once, from this address of the profile's server; pictures that the text names are let
    /// through from now on.
    void published(const QUrl &page);

private:
    QPointer<PreviewProfile> m_profile;
    QThreadPool m_worker;
};

} // namespace tessaly
