// What the engine has to find when it starts, done when this library is loaded.

#include "model/MarkdownPage.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QUrl>
#include <QWebEngineUrlScheme>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

// Exported by Qt for its own modules, the web engine among them; no header declares it for others.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext *context);
QT_END_NAMESPACE

namespace tessaly {

namespace {

QOpenGLContext *ownSharedContext = nullptr;

/// The engine crashes without a context to share. Where windows are drawn with OpenGL, one is there since the program's
/// start (AA_ShareOpenGLContexts); where they are not, it would make the start slower for nothing, so it comes now.
void ensureSharedContext()
{
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

/// Chromium ends the whole program when root starts it with its sandbox. Nobody else is without.
void spareRootTheSandbox()
{
#ifdef Q_OS_UNIX
    if (geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
#endif
}

void registerScheme()
{
    QWebEngineUrlScheme scheme(QUrl(packageRoot).scheme().toLatin1());
    scheme.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::CorsEnabled);
    QWebEngineUrlScheme::registerScheme(scheme);
}

void prepareEngine()
{
    ensureSharedContext();
    spareRootTheSandbox();
    registerScheme();
}

Q_CONSTRUCTOR_FUNCTION(prepareEngine)

} // namespace

} // namespace tessaly
