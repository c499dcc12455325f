#include "app/StartFailure.h"

#include "store/ErrorText.h"
#include "ui/Ui.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

#include <cstdio>
#include <utility>

namespace tessaly {

int showStartFailure(const Error &error)
{
    const std::pair prefix{QStringLiteral("Tessaly 无法启动："), QStringLiteral("Tessaly cannot start: ")};
    const QString chinese = prefix.first + errorText(error, AppLanguage::Chinese);
    const QString english = prefix.second + errorText(error, AppLanguage::English);
    std::fprintf(stderr, "%s\n%s\n", qUtf8Printable(chinese), qUtf8Printable(english));

    QQmlApplicationEngine engine;
    installImageProviders(engine);
    engine.setInitialProperties({{QStringLiteral("chinese"), chinese}, {QStringLiteral("english"), english}});
    engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/StartFailure.qml")));
    if (!engine.rootObjects().isEmpty())
        QGuiApplication::exec();
    return 1;
}

} // namespace tessaly
