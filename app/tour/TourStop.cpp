#include "app/tour/TourStop.h"

#include <QEventLoop>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

namespace tessaly {

void rest()
{
    constexpr int restMs = 60;
    QEventLoop loop;
    QTimer::singleShot(restMs, &loop, &QEventLoop::quit);
    loop.exec();
}

void leaveToOverview(QObject &content, QObject &)
{
    content.setProperty("section", ShellModel::Overview);
}

TourStop atFoot(const QString &name, ShellModel::SidebarItem section)
{
    const auto scroll = [](QObject &, QObject &screen) {
        auto *page = screen.findChild<QQuickItem *>(QStringLiteral("page"));
        if (!page)
            qFatal("The screen does not scroll");
        const auto number = [page](const char *property) { return page->property(property).toReal(); };
        page->setProperty("contentY", number("originY") + number("contentHeight") - page->height());
    };
    return {name, section, scroll, leaveToOverview};
}

ShellModel &shellOf(QObject &content)
{
    return *content.property("shell").value<ShellModel *>();
}

void closeNamed(const QObject &content, const QString &name)
{
    const auto *item = qobject_cast<const QQuickItem *>(&content);
    if (auto *popup = item->window()->findChild<QObject *>(name))
        QMetaObject::invokeMethod(popup, "close");
    else
        qWarning("tessaly: nothing is named %s", qUtf8Printable(name));
}

std::function<void(QObject &, QObject &)> undoAndLeave(int steps)
{
    return [steps](QObject &content, QObject &screen) {
        UndoModel &undo = *shellOf(content).undo();
        for (int step = 0; step < steps; ++step)
            undo.undo();
        undo.dismiss();
        leaveToOverview(content, screen);
    };
}

} // namespace tessaly
