#include "ui/Ui.h"

#include "ui/IconProvider.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>

namespace tessaly {

void applyInterfaceFont()
{
    const QString interface = QStringLiteral("Inter");
    const QStringList standIns = QGuiApplication::font().families() << QStringLiteral("Noto Sans CJK SC");
    // QML of Qt 6.4 can name one family only; the others join it here.
    QFont::insertSubstitutions(interface, standIns);
    QFont::insertSubstitutions(QStringLiteral("Inter Display"), QStringList{interface} + standIns);
    QFont font;
    font.setFamilies(QStringList{interface} + standIns);
    font.setPixelSize(14);
    font.setStyleStrategy(QFont::PreferAntialias);
    QGuiApplication::setFont(font);
}

void installImageProviders(QQmlEngine &engine)
{
    engine.addImageProvider(QStringLiteral("icon"), new IconProvider);
    engine.addImageProvider(QStringLiteral("shadow"), new ShadowProvider);
}

} // namespace tessaly
