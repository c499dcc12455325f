#include "store/LinkTurns.h"

#include "model/LinkTiming.h"
#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

namespace {

/// An alarm that rings later than this rang after the machine had slept.
constexpr double latestRing = 60;
/// A reading that is not answered does not keep its link from being read for ever.
constexpr double longestReading = 3600;

} // namespace

LinkTurns::LinkTurns(const Clock &clock) : m_clock(clock), m_alarm(clock.makeAlarm([this] { ring(); }))
{
}

LinkTurns::~LinkTurns() = default;

void LinkTurns::start()
{
    m_isStarted = true;
    setAlarm();
}

void LinkTurns::setLinks(const QList<CalendarFeed> &feeds)
{
    QHash<QUuid, Turn> turns;
    for (const CalendarFeed &feed : feeds) {
        if (feed.isKeptUpToDate.value_or(false))
            turns.insert(feed.id, m_turns.value(feed.id, Turn{.due = m_clock.now()}));
    }
    m_turns = std::move(turns);
    setAlarm();
}

void LinkTurns::begin(Turn &turn) const
{
    turn.lastReading = m_clock.now();
    turn.due = turn.lastReading.plus(longestReading);
}

void LinkTurns::began(const QUuid &feedID)
{
    const auto turn = m_turns.find(feedID);
    if (turn == m_turns.end())
        return;
    begin(*turn);
    setAlarm();
}

void LinkTurns::succeeded(const QUuid &feedID, std::optional<double> refreshSeconds)
{
    const auto turn = m_turns.find(feedID);
    if (turn == m_turns.end())
        return;
    const Instant now = m_clock.now();
    *turn = {.due = now.plus(updateDelay(refreshSeconds, feedID)), .lastReading = now};
    setAlarm();
}

void LinkTurns::failed(const QUuid &feedID)
{
    const auto turn = m_turns.find(feedID);
    if (turn == m_turns.end())
        return;
    const Instant now = m_clock.now();
    const int failures = turn->failures + 1;
    *turn = {.due = now.plus(retryDelay(failures, feedID)), .lastReading = now, .failures = failures};
    setAlarm();
}

void LinkTurns::ring()
{
    const Instant now = m_clock.now();
    const bool hasGap = m_alarmAt && (now < *m_alarmAt || now > m_alarmAt->plus(latestRing));
    QList<QUuid> dueNow;
    for (auto turn = m_turns.begin(); turn != m_turns.end(); ++turn) {
        if (turn->due > now && !(hasGap && isDueAfterGap(turn->lastReading, now)))
            continue;
        begin(*turn);
        dueNow.append(turn.key());
    }
    setAlarm();
    for (const QUuid &feedID : dueNow)
        emit due(feedID);
}

void LinkTurns::setAlarm()
{
    m_alarmAt.reset();
    if (!m_isStarted || m_turns.isEmpty()) {
        m_alarm->cancel();
        return;
    }
    m_alarmAt = std::ranges::min_element(m_turns, {}, &Turn::due)->due;
    m_alarm->set(*m_alarmAt);
}

} // namespace tessaly
