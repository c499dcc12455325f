// What the engine has to find when it starts, done when this library is loaded.

#include "model/MarkdownPage.h"
#include "views/documents/SharedOpenGL.h"

#include <QUrl>
#include <QWebEngineUrlScheme>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace tessaly {

namespace {

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
    ensureSharedOpenGL();
    spareRootTheSandbox();
    registerScheme();
}

Q_CONSTRUCTOR_FUNCTION(prepareEngine)

} // namespace

} // namespace tessaly
