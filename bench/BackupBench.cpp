#include "bench/Bench.h"
#include "model/RecordCodec.h"
#include "platform/common/SqliteBackups.h"
#include "store/PreferenceKeys.h"
#include "tests/support/RecordGenerator.h"
#include "tests/system/StoreOnDisk.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>

// What the main thread feels of a backup: the longest pause between two turns of its loop while one is made, beside
// the time of a frame. It saves a to-do twenty times a second or rests; without a backup the same is shown for
// comparison.

namespace tessaly::bench {

namespace {

constexpr double frameSeconds = 0.016;
/// Milliseconds between two saves: faster than any hand. A rare save writes the whole value anew; that has
/// nothing to do with the backup.
constexpr int savingInterval = 50;
constexpr int savesAlone = 20;

class BackedUpPlanner
{
public:
    explicit BackedUpPlanner(qsizetype schedules) : m_planner(preferencesWith(schedules)), m_backups(m_directory.path())
    {
        m_planner.store().addReminder(RecordGenerator().reminder());
        changeOneToDo();
    }

    /// Seconds of the longest pause.
    [[nodiscard]] double longestPause(bool isBackedUp, bool isSaving)
    {
        bool isDone = !isBackedUp;
        int saves = 0;
        double longest = 0;
        QElapsedTimer total;
        total.start();
        QElapsedTimer sinceSave;
        sinceSave.start();
        QElapsedTimer pause;
        pause.start();
        if (isBackedUp)
            m_backups.keep({.moment = {m_seconds += 1}, .reason = GenerationReason::Clear},
                           [&](const Result<Generation> &kept) { isDone = kept.hasValue(); });
        while (!isDone || (!isBackedUp && saves < savesAlone)) {
            if (isSaving && sinceSave.hasExpired(savingInterval)) {
                sinceSave.restart();
                ++saves;
                changeOneToDo();
            }
            QCoreApplication::processEvents();
            longest = std::max(longest, static_cast<double>(pause.nsecsElapsed()) / 1e9);
            pause.restart();
        }
        m_lastSeconds = static_cast<double>(total.nsecsElapsed()) / 1e9;
        return longest;
    }

    [[nodiscard]] double lastSeconds() const { return m_lastSeconds; }

private:
    void changeOneToDo()
    {
        ReminderItem reminder = m_planner.store().reminders().constFirst();
        reminder.isComplete = !reminder.isComplete;
        m_planner.store().updateReminder(reminder);
    }

    [[nodiscard]] std::unique_ptr<SqlitePreferences> preferencesWith(qsizetype schedules) const
    {
        auto preferences = SqlitePreferences::open(m_directory.path()).takeValue();
        (void)preferences->setValue(keys::storageKey, *encodeSavedData(RecordGenerator().savedData(schedules, 0, 0)));
        return preferences;
    }

    QTemporaryDir m_directory;
    StoreOnDisk m_planner;
    SqliteBackups m_backups;
    double m_seconds = 800'000'000;
    double m_lastSeconds = 0;
};

} // namespace

TESSALY_BENCH(Backup)
{
    for (const qsizetype schedules : {100, 100'000}) {
        BackedUpPlanner planner(schedules);
        const QString name = QStringLiteral("%1, %2 schedules");
        const auto median = [&](bool isBackedUp, bool isSaving) {
            QList<double> pauses;
            for (int sample = 0; sample < 5; ++sample)
                pauses.append(planner.longestPause(isBackedUp, isSaving));
            std::ranges::sort(pauses);
            return pauses.at(2);
        };
        const QString frame = QStringLiteral("a frame");
        report.shown(name.arg(QStringLiteral("longest pause of saving, no backup")).arg(schedules), median(false, true),
                     frame, frameSeconds);
        report.atMostTimes(name.arg(QStringLiteral("longest pause, at rest, backup")).arg(schedules),
                           median(true, false), frame, frameSeconds, 1);
        report.shown(name.arg(QStringLiteral("the backup")).arg(schedules), planner.lastSeconds(), frame, frameSeconds);
        report.atMostTimes(name.arg(QStringLiteral("longest pause of saving, backup")).arg(schedules),
                           median(true, true), frame, frameSeconds, 1);
    }
}

} // namespace tessaly::bench
