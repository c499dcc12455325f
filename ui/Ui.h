#pragma once

class QQmlEngine;

namespace tessaly {

/// Sets the interface's font families on the application, which has to exist.
void applyInterfaceFont();

/// Gives the engine the providers of icons and shadows that the controls load. Call once for each engine, before it
/// loads a file.
void installImageProviders(QQmlEngine &engine);

/// Lets a key that is held press a button once, for as long as the engine lives: the row that takes the place of a
/// deleted one is not deleted as well.
void ignoreHeldKeysOnButtons(QQmlEngine &engine);

} // namespace tessaly
