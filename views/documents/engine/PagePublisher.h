#pragma once

#include "views/documents/engine/PreviewProfile.h"

#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

/// Turns Markdown into preview pages on a worker thread, because large documents and their pictures take a while.
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

signals:
    /// The page can be loaded once from this address. From now on, the profile allows the pictures that its text names.
    void published(const QUrl &page);

private:
    QPointer<PreviewProfile> m_profile;
    QThreadPool m_worker;
};

} // namespace tessaly
