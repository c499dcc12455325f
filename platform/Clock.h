#pragma once

#include "model/Instant.h"

namespace tessaly {

/// The current time.
class Clock
{
public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual Instant now() const = 0;
};

} // namespace tessaly
