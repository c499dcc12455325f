#include <QCoreApplication>
#include <QDBusConnection>

/// The least that a program without a window that listens on the session bus can be; what the planner in the background
/// is compared with.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? QCoreApplication::exec() : 1;
}
