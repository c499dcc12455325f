#include "platform/common/SystemClock.h"

#include <chrono>

namespace tessaly {

Instant SystemClock::now() const
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Instant::fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

} // namespace tessaly
