#include "platform/common/SystemClock.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace tessaly {
namespace {

class PollingAlarm final : public Alarm
{
public:
    PollingAlarm(const Clock &clock, std::function<void()> callback) : m_clock(clock), m_callback(std::move(callback))
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    }

    void set(Instant when) override
    {
        m_when = when;
        start();
    }
    void cancel() override { m_timer.stop(); }

private:
    void start()
    {
        constexpr double longestWait = 30;
        const double wait = std::clamp(m_when.seconds - m_clock.now().seconds, 0.0, longestWait);
        m_timer.start(static_cast<int>(std::ceil(wait * 1000)));
    }
    void look()
    {
        if (m_clock.now() < m_when)
            start();
        else
            m_callback();
    }

    const Clock &m_clock;
    std::function<void()> m_callback;
    QTimer m_timer;
    Instant m_when;
};

} // namespace

Instant SystemClock::now() const
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Instant::fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

std::unique_ptr<Alarm> SystemClock::makeAlarm(std::function<void()> callback) const
{
    return std::make_unique<PollingAlarm>(*this, std::move(callback));
}

std::unique_ptr<ZoneWatch> SystemClock::watchZone(std::function<void()>) const
{
    return nullptr;
}

} // namespace tessaly
