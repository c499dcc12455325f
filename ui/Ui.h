#pragma once

class QQmlEngine;

namespace tessaly {

/// Sets the interface's font families on the application, which has to exist.
void applyInterfaceFont();

/// Gives the engine the providers of icons and shadows that the controls load. Call once for each engine, before it
/// loads a file.
void installImageProviders(QQmlEngine &engine);

/// Makes a held key press a button only once, as long as the engine lives. Otherwise holding it on Delete would delete
/// one row after another.
void ignoreHeldKeysOnButtons(QQmlEngine &engine);

} // namespace tessaly
