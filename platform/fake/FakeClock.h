#pragma once

#include "platform/Clock.h"

namespace tessaly {

/// A clock that stands still until it is told otherwise.
class FakeClock final : public Clock
{
public:
    explicit FakeClock(Instant start) : m_now(start) {}

    [[nodiscard]] Instant now() const override { return m_now; }
    void setNow(Instant now) { m_now = now; }
    void advance(double seconds) { m_now = m_now.plus(seconds); }

private:
    Instant m_now;
};

} // namespace tessaly
