#include <QGuiApplication>
#include <QQmlApplicationEngine>

/// The least that a program with a Qt Quick window can be; what the planner's start is compared with.
int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nWindow { visible: true; width: 1180; height: 800 }");
    return QGuiApplication::exec();
}
