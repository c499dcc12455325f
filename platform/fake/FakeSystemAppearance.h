#pragma once

#include "platform/SystemAppearance.h"

namespace tessaly {

/// An appearance that changes on command.
class FakeSystemAppearance final : public SystemAppearance
{
public:
    [[nodiscard]] Appearance current() const override { return m_current; }
    [[nodiscard]] bool isSettled() const override { return true; }

    void setCurrent(const Appearance &appearance)
    {
        m_current = appearance;
        announceChange();
    }

private:
    Appearance m_current;
};

} // namespace tessaly
