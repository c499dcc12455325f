#include "app/StartFailure.h"

#include "store/ErrorText.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

#include <cstdio>

namespace tessaly {

int showStartFailure(const Error &error)
{
    const QString chinese = QStringLiteral("Tessaly 无法启动：") + errorText(error, AppLanguage::Chinese);
    const QString english = QStringLiteral("Tessaly cannot start: ") + errorText(error, AppLanguage::English);
    std::fprintf(stderr, "%s\n%s\n", qUtf8Printable(chinese), qUtf8Printable(english));

    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("chinese"), chinese}, {QStringLiteral("english"), english}});
    engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/StartFailure.qml")));
    if (!engine.rootObjects().isEmpty())
        QGuiApplication::exec();
    return 1;
}

} // namespace tessaly
