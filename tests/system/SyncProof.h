#pragma once

#include "model/ScheduleItem.h"
#include "tests/platform/EventStoreContract.h"

#include <QHash>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>

namespace tessaly {

/// A planner in a process of its own that syncs with a calendar service while another program changes the same
/// calendar. Keeps book of what both did, and compares it with what is there in the end.
///
/// The titles of events say who changes them: "own" those of the planner, "theirs" those of the other program, "shared"
/// those of the other program that only the planner changes, "both" those that both change.
class SyncProof
{
public:
    /// `service` is what the planner's process is told, and must be that of the driver, which must outlive this.
    SyncProof(EventStoreDriver &driver, const QString &service);

    /// Runs the planner until it is killed at a random moment, at most that many milliseconds after it began to sync.
    /// The other program goes on all the while.
    void runUntilKilled(int milliseconds);
    /// Runs the planner beside the other program for that many syncs.
    void runFor(int syncs);
    /// Runs the planner until `disturb`, which is called at random moments, has answered true that many times, or for a
    /// minute. Before each of them, and at the end, the planner stands still until `settle` answers true: what was
    /// synced before is certain, what comes between the two may be lost. Answers how often it was disturbed.
    int runDisturbed(int times, const std::function<bool()> &settle, const std::function<bool()> &disturb);
    /// Syncs with nobody disturbing it; what differs from what was done, or between planner and service, in words.
    [[nodiscard]] QStringList faults();

    /// How often the planner was killed in the middle of a sync.
    [[nodiscard]] int killsInSync() const { return m_killsInSync; }

private:
    void start(QProcess &planner, const QStringList &arguments) const;
    void actAside(QProcess &planner);
    void read(QProcess &planner);
    void kill(QProcess &planner);
    static bool standStill(const QProcess &planner, const std::function<bool()> &settle);
    /// Reads what the planner said while the service was disturbed.
    void readUncertain(QProcess &planner);
    void note(const QByteArray &line);
    /// What is on its way to the service may be lost with it, or with the planner.
    void loseTrack();
    void put(const QString &uid, int number);
    [[nodiscard]] QList<ScheduleItem> schedules() const;
    [[nodiscard]] QList<CalendarEvent> events();
    void compareSides(QStringList &faults);
    void compareWithBook(QStringList &faults);

    EventStoreDriver &m_driver;
    QString m_service;
    QTemporaryDir m_data;
    QRandomGenerator m_random{QRandomGenerator::global()->generate()};
    int m_killsInSync = 0;
    bool m_isInSync = false;
    /// Since the service was disturbed, until a sync after that has ended.
    bool m_isUncertain = false;
    bool m_isReadingUncertain = false;
    QByteArray m_unreadOutput;

    /// Of the other program: the number in the title of each event that is there.
    QHash<QString, int> m_put;
    /// Of the planner: the UIDs of its events, whether deleted or not.
    QSet<QByteArray> m_added;
    /// What was saved, and since which sync the service must have it as well: later ones, the last, all of those
    /// before.
    struct Edits
    {
        QSet<QByteArray> added = {};
        QHash<QByteArray, int> changed = {};
        QSet<QByteArray> deleted = {};
    };
    Edits m_latest;
    Edits m_inSync;
    Edits m_synced;
    QSet<QByteArray> m_perhapsDeleted;
};

} // namespace tessaly
