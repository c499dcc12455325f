#pragma once

#include <QDBusConnection>

namespace tessaly {

/// Whether the desktop shows the menu bars of its windows itself: somebody owns com.canonical.AppMenu.Registrar.
[[nodiscard]] bool hasGlobalMenu(const QDBusConnection &bus = QDBusConnection::sessionBus());

} // namespace tessaly
