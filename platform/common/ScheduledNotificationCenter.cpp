#include "platform/common/ScheduledNotificationCenter.h"

#include "platform/Preferences.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessaly {
namespace {

/// How long to wait before trying again to reach somebody who shows notifications.
constexpr double retrySeconds = 60;

const QString identifierKey = QStringLiteral("identifier");
const QString titleKey = QStringLiteral("title");
const QString bodyKey = QStringLiteral("body");
const QString minuteKey = QStringLiteral("minute");
// No zone: a reminder for half past five stays at half past five wherever the user goes.
const QString minuteFormat = QStringLiteral("yyyy-MM-ddTHH:mm");

} // namespace

const QString ScheduledNotificationCenter::requestsKey = QStringLiteral("larkspan-notification-requests-v1");

ScheduledNotificationCenter::ScheduledNotificationCenter(Preferences &preferences, NotificationPresenter &presenter,
                                                         const Clock &clock, UserCalendar calendar)
    : m_preferences(preferences), m_presenter(presenter), m_clock(clock), m_calendar(std::move(calendar)),
      m_alarm(clock.makeAlarm([this] { deliverDue(); })), m_zoneWatch(clock.watchZone([this] {
          m_calendar = m_calendar.inZone(m_clock.zone());
          deliverDue();
      }))
{
    load();
    m_presenter.setAvailabilityHandler([this] { deliverDue(); });
}

ScheduledNotificationCenter::~ScheduledNotificationCenter()
{
    m_presenter.setAvailabilityHandler({});
}

void ScheduledNotificationCenter::start()
{
    m_isStarted = true;
    const Instant oldest = m_clock.now().plus(-longestDelaySeconds);
    if (m_requests.removeIf([&](const NotificationRequest &request) { return due(request) < oldest; }) > 0)
        save();
    deliverDue();
}

void ScheduledNotificationCenter::add(const NotificationRequest &request)
{
    m_requests.removeIf([&](const NotificationRequest &other) { return other.identifier == request.identifier; });
    if (due(request) >= m_clock.now())
        m_requests.append(request);
    save();
    setAlarm();
}

Instant ScheduledNotificationCenter::due(const NotificationRequest &request) const
{
    return m_calendar.instant(request.minute.date(), request.minute.time());
}

void ScheduledNotificationCenter::load()
{
    const QByteArray json = m_preferences.get<QByteArray>(requestsKey).value_or(QByteArray());
    const QJsonArray entries = QJsonDocument::fromJson(json).array();
    for (const QJsonValue &entry : entries) {
        NotificationRequest request{.identifier = entry[identifierKey].toString(),
                                    .title = entry[titleKey].toString(),
                                    .body = entry[bodyKey].toString(),
                                    .minute = QDateTime::fromString(entry[minuteKey].toString(), minuteFormat)};
        if (request.minute.isValid())
            m_requests.append(std::move(request));
    }
}

void ScheduledNotificationCenter::save()
{
    QJsonArray entries;
    for (const NotificationRequest &request : std::as_const(m_requests)) {
        entries.append(QJsonObject{{identifierKey, request.identifier},
                                   {titleKey, request.title},
                                   {bodyKey, request.body},
                                   {minuteKey, request.minute.toString(minuteFormat)}});
    }
    // A request that cannot be kept still fires while the planner runs.
    (void)m_preferences.setValue(requestsKey, QJsonDocument(entries).toJson(QJsonDocument::Compact));
}

void ScheduledNotificationCenter::deliverDue()
{
    if (!m_isStarted)
        return;
    const Instant now = m_clock.now();
    const auto isLater = [&](const NotificationRequest &request) { return due(request) > now; };
    const auto firstDue = std::stable_partition(m_requests.begin(), m_requests.end(), isLater);
    QList<NotificationRequest> dueRequests(std::make_move_iterator(firstDue),
                                           std::make_move_iterator(m_requests.end()));
    if (!dueRequests.isEmpty()) {
        m_requests.erase(firstDue, m_requests.end());
        // Before they are shown: a crash in between loses a notification, but none ever comes twice.
        save();
    }
    std::ranges::stable_sort(dueRequests, {}, [this](const NotificationRequest &request) { return due(request); });
    for (const NotificationRequest &request : std::as_const(dueRequests))
        present(request);
    setAlarm();
}

void ScheduledNotificationCenter::present(const NotificationRequest &request)
{
    const QPointer<QObject> alive(&m_alive);
    m_presenter.present({request.identifier, request.title, request.body}, [=, this](Presentation presentation) {
        if (!alive || presentation == Presentation::Shown)
            return;
        // It may have been replaced while the desktop was asked.
        if (std::ranges::find(m_requests, request.identifier, &NotificationRequest::identifier) != m_requests.end())
            return;
        m_requests.append(request);
        save();
        setAlarm(m_clock.now().plus(retrySeconds));
    });
}

void ScheduledNotificationCenter::setAlarm(std::optional<Instant> retry)
{
    std::optional<Instant> next;
    for (const NotificationRequest &request : std::as_const(m_requests)) {
        Instant when = due(request);
        if (retry && when < *retry && when <= m_clock.now())
            when = *retry;
        next = std::min(next.value_or(when), when);
    }
    if (next && m_isStarted)
        m_alarm->set(*next);
    else
        m_alarm->cancel();
}

} // namespace tessaly
