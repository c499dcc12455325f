#include "views/documents/SharedOpenGL.h"

#include <QCoreApplication>
#include <QOpenGLContext>

#include <utility>

// Exported by Qt for its own modules, the web engine among them; no header declares it for others.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext *context);
QT_END_NAMESPACE

namespace tessaly {

namespace {

QOpenGLContext *ownSharedContext = nullptr;

} // namespace

void ensureSharedOpenGL()
{
    // Where windows are drawn with OpenGL, one is there since the program's start (AA_ShareOpenGLContexts); where they
    // are not, it would make the start slower for nothing.
    if (QOpenGLContext::globalShareContext() || !QCoreApplication::instance())
        return;
    ownSharedContext = new QOpenGLContext;
    ownSharedContext->create(); // May fail, on a platform without OpenGL: the engine then draws without, too.
    qt_gl_set_global_share_context(ownSharedContext);
    qAddPostRoutine([] {
        qt_gl_set_global_share_context(nullptr);
        delete std::exchange(ownSharedContext, nullptr);
    });
}

} // namespace tessaly
