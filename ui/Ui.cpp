#include "ui/Ui.h"

#include "ui/IconProvider.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>

namespace tessaly {

void applyInterfaceFont(QGuiApplication &application)
{
    QStringList families{QStringLiteral("Inter")};
    families += QGuiApplication::font().families();
    families += QStringLiteral("Noto Sans CJK SC");
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(14);
    font.setStyleStrategy(QFont::PreferAntialias);
    application.setFont(font);
}

void installImageProviders(QQmlEngine &engine)
{
    engine.addImageProvider(QStringLiteral("icon"), new IconProvider);
    engine.addImageProvider(QStringLiteral("shadow"), new ShadowProvider);
}

} // namespace tessaly
