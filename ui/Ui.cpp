#include "ui/Ui.h"

#include "ui/IconProvider.h"

#include <QFont>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlEngine>

namespace tessaly {

namespace {

/// Qt 6.4 clicks a button with each repetition of Space.
class HeldKeyFilter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        const bool presses = key->key() == Qt::Key_Space || key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        return presses && key->isAutoRepeat() && watched->inherits("QQuickAbstractButton");
    }
};

} // namespace

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

void ignoreHeldKeysOnButtons(QQmlEngine &engine)
{
    QCoreApplication::instance()->installEventFilter(new HeldKeyFilter(&engine));
}

} // namespace tessaly
