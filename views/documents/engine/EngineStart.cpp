// What the engine has to find when it starts, done when this library is loaded.

#include "model/MarkdownPage.h"
#include "views/documents/SharedOpenGL.h"

#include <QLoggingCategory>
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

/// Chromium and its helper processes then report only what ends them. Who asks for a log of theirs gets it.
void quietenChromium()
{
    const QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    if (!flags.contains("--log-level") && !flags.contains("--enable-logging"))
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", (flags + " --log-level=3").trimmed());
}

QtMessageHandler nextHandler = nullptr;

/// What Qt WebEngine 6.4 says of itself at each start, in no logging category of its own.
bool isEngineTalk(const QString &message)
{
    return message == QLatin1String("Sandboxing disabled by user.") ||
           (message.startsWith(QLatin1String("QWebEngine")) &&
            message.endsWith(QLatin1String("You should not use it as a QML type.")));
}

void passOnButEngineTalk(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!isEngineTalk(message))
        nextHandler(type, context, message);
}

void quietenQt()
{
    // QT_LOGGING_RULES still has the last word.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.webenginecontext.debug=false\nqt.webenginecontext.info=false"));
    nextHandler = qInstallMessageHandler(passOnButEngineTalk);
}

void prepareEngine()
{
    quietenChromium();
    quietenQt();
    ensureSharedOpenGL();
    spareRootTheSandbox();
    registerScheme();
}

Q_CONSTRUCTOR_FUNCTION(prepareEngine)

} // namespace

} // namespace tessaly
