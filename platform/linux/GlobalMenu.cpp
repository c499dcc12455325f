#include "platform/linux/GlobalMenu.h"

#include <QDBusConnectionInterface>

namespace tessaly {

bool hasGlobalMenu(const QDBusConnection &bus)
{
    const QDBusConnectionInterface *names = bus.interface();
    return names && names->isServiceRegistered(QStringLiteral("com.canonical.AppMenu.Registrar"));
}

} // namespace tessaly
