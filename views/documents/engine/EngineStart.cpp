// Prepares what the engine needs at start. Runs when this library is loaded.

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

/// Chromium ends the program if root starts it with its sandbox. For all other users the sandbox stays on.
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

/// Limits Chromium and its helper processes to fatal errors, unless the environment asks for a log.
void quietenChromium()
{
    const QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    if (!flags.contains("--log-level") && !flags.contains("--enable-logging"))
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", (flags + " --log-level=3").trimmed());
}

QtMessageHandler nextHandler = nullptr;

/// Whether Qt WebEngine 6.4 prints the message at every start; these messages have no logging category.
bool isEngineNoise(const QString &message)
{
    return message == QLatin1String("Sandboxing disabled by user.") ||
           (message.startsWith(QLatin1String("QWebEngine")) &&
            message.endsWith(QLatin1String("You should not use it as a QML type.")));
}

void passOnUnlessNoise(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!isEngineNoise(message))
        nextHandler(type, context, message);
}

void quietenQt()
{
    // QT_LOGGING_RULES takes precedence.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.webenginecontext.debug=false\nqt.webenginecontext.info=false"));
    nextHandler = qInstallMessageHandler(passOnUnlessNoise);
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
