#pragma once

#include "platform/Clock.h"

namespace tessaly {

/// The clock of the machine.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] Instant now() const override;
};

} // namespace tessaly
