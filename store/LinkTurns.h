#pragma once

#include "model/CalendarFeed.h"

#include <QHash>
#include <QList>
#include <QObject>

#include <memory>

namespace tessaly {

class Alarm;
class Clock;

/// Decides when each link that is kept up to date is read: at the start, as LinkTiming says after that, and when the
/// machine wakes up. One alarm serves them all; without such a link there is none. Main thread only.
class LinkTurns : public QObject
{
    Q_OBJECT

public:
    /// The clock must outlive it.
    explicit LinkTurns(const Clock &clock);
    ~LinkTurns() override;
    Q_DISABLE_COPY_MOVE(LinkTurns)

    /// Nothing is due before.
    void start();
    /// Takes the links as they are now. One that is kept up to date from now on is due at once.
    void setLinks(const QList<CalendarFeed> &feeds);
    // A reading of a link, whoever asked for it.
    void began(const QUuid &feedID);
    void succeeded(const QUuid &feedID, std::optional<double> refreshSeconds);
    void failed(const QUuid &feedID);

signals:
    /// The link is to be read now.
    void due(const QUuid &feedID);

private:
    struct Turn
    {
        Instant due = {};
        Instant lastReading = {};
        int failures = 0;
    };

    /// Has the turn wait for the answer.
    void begin(Turn &turn) const;
    void ring();
    void setAlarm();

    const Clock &m_clock;
    QHash<QUuid, Turn> m_turns;
    std::unique_ptr<Alarm> m_alarm;
    /// When the alarm is to ring.
    std::optional<Instant> m_alarmAt;
    bool m_isStarted = false;
};

} // namespace tessaly
