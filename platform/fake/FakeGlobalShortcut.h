#pragma once

#include "platform/GlobalShortcut.h"

namespace tessaly {

/// A desktop that grants or refuses the key at once.
class FakeGlobalShortcut final : public GlobalShortcut
{
public:
    /// What turnOn() leads to.
    State answer = State::On;

    [[nodiscard]] State state() const override { return m_state; }
    [[nodiscard]] QString keys() const override
    {
        return m_state == State::On ? QStringLiteral("Ctrl+Alt+K") : QString();
    }
    void look() override
    {
        if (m_state == State::Unknown)
            change(answer == State::Missing ? State::Missing : State::Off);
    }
    void turnOn(const QString &) override { change(answer); }
    void turnOff() override { change(State::Off); }
    void press() const { announcePress({}); }

private:
    void change(State state)
    {
        m_state = state;
        announceChange();
    }

    State m_state = State::Unknown;
};

} // namespace tessaly
