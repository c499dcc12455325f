#pragma once

#include <QDBusConnection>

namespace tessaly {

/// Whether the desktop shows the menu bars of its windows: com.canonical.AppMenu.Registrar has an owner.
[[nodiscard]] bool hasGlobalMenu(const QDBusConnection &bus = QDBusConnection::sessionBus());

} // namespace tessaly
