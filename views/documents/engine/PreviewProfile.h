#pragma once

#include "views/documents/engine/PageServer.h"
#include "views/documents/engine/PictureSource.h"
#include "views/documents/engine/RequestGate.h"

#include <QQuickWebEngineProfile>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

/// The engine profile that all previews share. It keeps nothing on disk, serves the pages and blocks everything else.
class PreviewProfile : public QQuickWebEngineProfile
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    explicit PreviewProfile(QObject *parent = nullptr);

    [[nodiscard]] PageServer &server() { return m_server; }
    [[nodiscard]] RequestGate &gate() { return m_gate; }
    [[nodiscard]] PictureSource &pictures() { return m_pictures; }

private:
    PictureSource m_pictures;
    PageServer m_server{&m_pictures};
    RequestGate m_gate;
};

} // namespace tessaly
