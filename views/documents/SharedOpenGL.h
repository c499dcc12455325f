#pragma once

namespace tessaly {

/// Makes the OpenGL context that the web engine shares with the windows, unless there is one. Without one the engine
/// complains when its library is loaded, and crashes when it draws.
void ensureSharedOpenGL();

} // namespace tessaly
