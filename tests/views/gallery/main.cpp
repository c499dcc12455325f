// Writes a picture of every control in its states: gallery <file.png> [dark] [chinese]
#include "tests/support/TestMain.h"
#include "ui/Ui.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTimer>

int main(int argc, char *argv[])
{
    tessaly::fixTestEnvironment();
    QGuiApplication application(argc, argv);
    tessaly::applyInterfaceFont();
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 2)
        return 2;
    QQuickView view;
    tessaly::installImageProviders(*view.engine());
    view.setInitialProperties({{QStringLiteral("isDark"), arguments.contains(QStringLiteral("dark"))},
                               {QStringLiteral("isEnglish"), !arguments.contains(QStringLiteral("chinese"))}});
    view.setSource(QUrl::fromLocalFile(QStringLiteral(GALLERY_SOURCE)));
    if (view.status() != QQuickView::Ready)
        return 1;
    view.show();
    // Popups that are open from the start need a moment to fade in.
    QTimer::singleShot(600, &view, [&] {
        const bool isSaved = view.grabWindow().save(arguments.at(1));
        QGuiApplication::exit(isSaved ? 0 : 1);
    });
    return QGuiApplication::exec();
}
