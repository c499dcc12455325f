#pragma once

class QGuiApplication;
class QQmlEngine;

namespace tessaly {

/// Sets the interface's font families on the application.
void applyInterfaceFont(QGuiApplication &application);

/// Gives the engine the providers of icons and shadows that the controls load. Call once for each engine, before it
/// loads a file.
void installImageProviders(QQmlEngine &engine);

} // namespace tessaly
