#pragma once

#include <functional>
#include <utility>

namespace tessaly {

/// How the desktop wants its programs to look.
struct Appearance
{
    bool isDark = false;
    bool isHighContrast = false;
    bool hasReducedMotion = false;

    bool operator==(const Appearance &) const = default;
};

/// The appearance settings of the desktop.
class SystemAppearance
{
public:
    virtual ~SystemAppearance() = default;

    [[nodiscard]] virtual Appearance current() const = 0;
    /// False until the desktop has answered for the first time; current() is a guess until then.
    [[nodiscard]] virtual bool isSettled() const = 0;

    /// `handler` runs on the main thread when current() or isSettled() has changed. An empty function ends that.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }

protected:
    void announceChange() const
    {
        if (m_changeHandler)
            m_changeHandler();
    }

private:
    std::function<void()> m_changeHandler;
};

} // namespace tessaly
