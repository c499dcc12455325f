#pragma once

class QQmlEngine;

namespace tessaly {

/// Sets the interface's font families on the application, which has to exist.
void applyInterfaceFont();

/// Gives the engine the providers of icons and shadows that the controls load. Call once for each engine, before it
/// loads a file.
void installImageProviders(QQmlEngine &engine);

} // namespace tessaly
