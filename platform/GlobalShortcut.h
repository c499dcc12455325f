#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <utility>

namespace tessaly {

/// One key that works in every program. The desktop grants it, and lets the user choose it there.
class GlobalShortcut
{
public:
    enum class State {
        Unknown, ///< look() was not called, or has no answer yet
        Missing, ///< the desktop has no such thing
        Off,
        Waiting, ///< for the desktop or the user
        On,
    };

    virtual ~GlobalShortcut() = default;

    [[nodiscard]] virtual State state() const = 0;
    /// The key in the desktop's words while it is on; may be empty.
    [[nodiscard]] virtual QString keys() const = 0;
    /// Finds out whether the desktop has such a thing. Until this or turnOn() is called, nothing is asked.
    virtual void look() = 0;
    /// Asks for the key. The desktop may ask the user, to whom `description` says what it does. Off again, or missing,
    /// when it is refused.
    virtual void turnOn(const QString &description) = 0;
    /// Gives the key back.
    virtual void turnOff() = 0;

    /// `handler` runs on the main thread when state() or keys() has changed. An empty function ends that.
    void setChangeHandler(std::function<void()> handler) { m_changeHandler = std::move(handler); }
    /// `handler` runs on the main thread when the key is pressed, with what lets a window come to the front, if the
    /// desktop gives that. An empty function ends that.
    void setPressHandler(std::function<void(const QByteArray &activationToken)> handler)
    {
        m_pressHandler = std::move(handler);
    }

protected:
    void announceChange() const
    {
        if (m_changeHandler)
            m_changeHandler();
    }
    void announcePress(const QByteArray &activationToken) const
    {
        if (m_pressHandler)
            m_pressHandler(activationToken);
    }

private:
    std::function<void()> m_changeHandler;
    std::function<void(const QByteArray &)> m_pressHandler;
};

} // namespace tessaly
