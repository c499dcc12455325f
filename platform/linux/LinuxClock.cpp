#include "platform/linux/LinuxClock.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstring>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace tessaly {
namespace {

class TimerDescriptorAlarm final : public Alarm
{
public:
    explicit TimerDescriptorAlarm(std::function<void()> callback)
        : m_descriptor(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)), m_callback(std::move(callback)),
          m_notifier(m_descriptor, QSocketNotifier::Read)
    {
        if (m_descriptor < 0)
            qFatal("tessaly: the system has no timer left: %s", std::strerror(errno));
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { fire(); });
    }
    ~TimerDescriptorAlarm() override
    {
        m_notifier.setEnabled(false);
        close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(TimerDescriptorAlarm)

    void set(Instant when) override
    {
        // Times before 1970 or as good as never would be refused; a value of zero would disarm.
        const double seconds = std::clamp(when.unixSeconds(), 0.001, 1e12);
        itimerspec time{};
        time.it_value.tv_sec = static_cast<time_t>(seconds);
        time.it_value.tv_nsec = static_cast<long>((seconds - std::floor(seconds)) * 1e9);
        constexpr int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
        if (timerfd_settime(m_descriptor, flags, &time, nullptr) == 0 || errno != ECANCELED)
            return;
        // The clock was set after the last look at it, and the kernel reports that only now: ring at once.
        time.it_value = {.tv_sec = 0, .tv_nsec = 1};
        timerfd_settime(m_descriptor, flags, &time, nullptr);
    }
    void cancel() override
    {
        const itimerspec never{};
        timerfd_settime(m_descriptor, 0, &never, nullptr);
    }

private:
    void fire()
    {
        // The read fails with ECANCELED when the clock was set, and with EAGAIN when the alarm was set or cancelled
        // after it had fired.
        quint64 expirations = 0;
        const bool isOver = read(m_descriptor, &expirations, sizeof expirations) == sizeof expirations;
        if (isOver || errno == ECANCELED)
            m_callback();
    }

    int m_descriptor;
    std::function<void()> m_callback;
    QSocketNotifier m_notifier;
};

class DirectoryZoneWatch final : public ZoneWatch
{
public:
    DirectoryZoneWatch(const LinuxClock &clock, const QString &directory, std::function<void()> callback)
        : m_clock(clock), m_zone(clock.zone()), m_callback(std::move(callback))
    {
        m_watcher.addPath(directory);
        QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_watcher, [this] { look(); });
    }

private:
    void look()
    {
        if (const QTimeZone now = m_clock.zone(); now != m_zone) {
            m_zone = now;
            m_callback();
        }
    }

    const LinuxClock &m_clock;
    QTimeZone m_zone;
    std::function<void()> m_callback;
    QFileSystemWatcher m_watcher;
};

} // namespace

QString LinuxClock::localtimePath()
{
    return qEnvironmentVariableIsEmpty("TZ") ? QStringLiteral("/etc/localtime") : QString();
}

LinuxClock::LinuxClock(const QString &localtimePath) : m_localtimePath(localtimePath)
{
}

Instant LinuxClock::now() const
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Instant::fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

QTimeZone LinuxClock::zone() const
{
    const QString directory = QStringLiteral("/zoneinfo/");
    const QString target = m_localtimePath.isEmpty() ? QString() : QFileInfo(m_localtimePath).symLinkTarget();
    const qsizetype place = target.indexOf(directory);
    // A copy of the zone's file has no name; Qt finds one for it.
    const QTimeZone linked(place < 0 ? QByteArray() : target.sliced(place + directory.size()).toUtf8());
    return linked.isValid() ? linked : QTimeZone::systemTimeZone();
}

std::unique_ptr<ZoneWatch> LinuxClock::watchZone(std::function<void()> callback) const
{
    if (m_localtimePath.isEmpty())
        return nullptr;
    return std::make_unique<DirectoryZoneWatch>(*this, QFileInfo(m_localtimePath).path(), std::move(callback));
}

std::unique_ptr<Alarm> LinuxClock::makeAlarm(std::function<void()> callback) const
{
    return std::make_unique<TimerDescriptorAlarm>(std::move(callback));
}

} // namespace tessaly
