#include "views/documents/DocumentDesktop.h"

#include "views/documents/SharedOpenGL.h"

#include <QJSEngine>

namespace tessaly {

DocumentDesktop::DocumentDesktop(FileDialogs &fileDialogs, QObject *parent)
    : QObject(parent), m_fileDialogs(fileDialogs),
      m_previewSource(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Documents/EnginePreview.qml")),
      m_copierSource(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Documents/EngineCopier.qml"))
{
}

DocumentDesktop *DocumentDesktop::create(QQmlEngine *, QJSEngine *)
{
    Q_ASSERT(s_instance);
    QJSEngine::setObjectOwnership(s_instance, QJSEngine::CppOwnership);
    return s_instance;
}

void DocumentDesktop::prepareEngine()
{
    ensureSharedOpenGL();
}

void DocumentDesktop::setSources(const QUrl &preview, const QUrl &copier)
{
    m_previewSource = preview;
    m_copierSource = copier;
}

} // namespace tessaly
