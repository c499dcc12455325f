#pragma once

#include "model/UserCalendar.h"
#include "platform/Clock.h"
#include "platform/NotificationCenter.h"
#include "platform/NotificationPresenter.h"

#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace tessaly {

class Preferences;

/// Keeps requests in the preferences until their minute begins, then has them presented, each once: a request is taken
/// out of the preferences before it is shown and put back only when nobody could show it. One alarm waits for the next
/// request. A request whose minute has begun before it was made is never delivered.
class ScheduledNotificationCenter final : public NotificationCenter
{
public:
    /// The key under which the requests are kept.
    static const QString requestsKey;
    /// A request that fell due while the planner was not running is delivered at the next start unless it is older.
    static constexpr double longestDelaySeconds = 86400;

    /// Reads the requests and does nothing else. What is passed by reference must outlive the centre.
    ScheduledNotificationCenter(Preferences &preferences, NotificationPresenter &presenter, const Clock &clock,
                                UserCalendar calendar);
    ~ScheduledNotificationCenter() override;
    Q_DISABLE_COPY_MOVE(ScheduledNotificationCenter)

    /// Delivers what was missed, forgets what is too old, and waits for the rest. Once, when the event loop is about
    /// to run.
    void start();

    void requestAuthorization() override { m_presenter.requestAuthorization(); }
    void add(const NotificationRequest &request) override;

    /// Requests that wait, in no particular order.
    [[nodiscard]] const QList<NotificationRequest> &pendingRequests() const { return m_requests; }

private:
    [[nodiscard]] Instant due(const NotificationRequest &request) const;
    void load();
    void save();
    /// Presents what is due and sets the alarm for the next.
    void deliverDue();
    void present(const NotificationRequest &request);
    /// For the next request; what could not be shown is tried again at `retry`.
    void setAlarm(std::optional<Instant> retry = std::nullopt);

    Preferences &m_preferences;
    NotificationPresenter &m_presenter;
    const Clock &m_clock;
    UserCalendar m_calendar;
    QList<NotificationRequest> m_requests;
    std::unique_ptr<Alarm> m_alarm;
    /// A minute of the wall clock is another instant elsewhere.
    std::unique_ptr<ZoneWatch> m_zoneWatch;
    bool m_isStarted = false;
    QObject m_alive;
};

} // namespace tessaly
