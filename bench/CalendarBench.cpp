#include "bench/Bench.h"
#include "platform/common/vdir/VdirEventStore.h"
#include "platform/fake/FakeClock.h"
#include "store/PreferenceKeys.h"
#include "tests/system/StoreOnDisk.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

// A planner that syncs with a folder of events, beside the fetch that it takes at least.

namespace tessaly::bench {

namespace {

constexpr double longestGap = 0.05;
/// The folder reads files again that are so young that another change might not show.
constexpr int settlingMs = 2500;

class SyncedFolder
{
public:
    explicit SyncedFolder(int events)
        : m_clock(Instant::fromUnixSeconds(1'780'300'000)),
          m_folder(VdirPlace::given(makeFolder(m_directory, events)), m_clock), m_planner(makePreferences(), m_folder)
    {
        bool isOpen = false;
        m_folder.requestAccess([&](const Result<bool> &) { isOpen = true; });
        waitFor(isOpen);
        m_planner.store().setSelectedCalendarIDs({m_folder.calendars().constFirst().identifier});
    }

    void sync()
    {
        CalendarSync &sync = *m_planner.store().calendarSync();
        sync.performCalendarSync({.exportsLocalSchedules = true, .isFullHistory = true});
        while (sync.isSyncing())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    /// As much as a sync asks for.
    void fetch()
    {
        bool isFetched = false;
        m_folder.fetchEvents({m_folder.calendars().constFirst().identifier}, Instant::fromUnixSeconds(-2'208'992'400),
                             Instant::fromUnixSeconds(4'102'441'200), [&](const auto &) { isFetched = true; });
        waitFor(isFetched);
    }
    /// Seconds of the work, and the longest time meanwhile in which the main thread did nothing else.
    [[nodiscard]] std::pair<double, double> timeAndGap(const std::function<void()> &work)
    {
        QElapsedTimer sinceTick;
        qint64 longest = 0;
        QTimer ticks;
        QObject::connect(&ticks, &QTimer::timeout, [&] {
            longest = std::max(longest, sinceTick.nsecsElapsed());
            sinceTick.start();
        });
        ticks.start(1);
        sinceTick.start();
        QElapsedTimer whole;
        whole.start();
        work();
        const double seconds = static_cast<double>(whole.nsecsElapsed()) / 1e9;
        longest = std::max(longest, sinceTick.nsecsElapsed());
        return {seconds, static_cast<double>(longest) / 1e9};
    }
    void changeOne()
    {
        write(m_directory.filePath(QStringLiteral("calendars")), 0, "changed " + QByteArray::number(++m_changes));
    }
    void settle()
    {
        const QDeadlineTimer settled(settlingMs);
        while (!settled.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        fetch();
    }
    [[nodiscard]] const QList<ScheduleItem> &schedules() { return m_planner.store().schedules(); }
    /// What any write to the database changes.
    [[nodiscard]] QStringList databaseState() const
    {
        QStringList state;
        for (const QFileInfo &file : QDir(m_directory.filePath(QStringLiteral("data"))).entryInfoList(QDir::Files))
            state.append(QStringLiteral("%1 %2 %3")
                             .arg(file.fileName())
                             .arg(file.size())
                             .arg(file.lastModified().toMSecsSinceEpoch()));
        return state;
    }

private:
    static void waitFor(const bool &isDone)
    {
        while (!isDone)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    static void write(const QString &folder, int number, const QByteArray &title)
    {
        const QByteArray name = QByteArray::number(number);
        const QByteArray day = QDate(2026, 1, 1).addDays(number % 365).toString(QStringLiteral("yyyyMMdd")).toLatin1();
        QFile file(folder + QStringLiteral("/Home/") + QString::fromLatin1(name) + QStringLiteral(".ics"));
        (void)file.open(QIODevice::WriteOnly);
        file.write(
            "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//bench//EN\r\nBEGIN:VEVENT\r\nUID:" + name +
            "@bench\r\nDTSTAMP:20260101T000000Z\r\nSUMMARY:" + title + "\r\nDTSTART;TZID=Europe/Vienna:" + day +
            "T100000\r\nDTEND;TZID=Europe/Vienna:" + day +
            "T110000\r\nDESCRIPTION:Some words about the event, as most have.\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    }
    static QString makeFolder(const QTemporaryDir &directory, int events)
    {
        const QString folder = directory.filePath(QStringLiteral("calendars"));
        QDir().mkpath(folder + QStringLiteral("/Home"));
        for (int number = 0; number < events; ++number)
            write(folder, number, "Event " + QByteArray::number(number));
        return folder;
    }
    [[nodiscard]] std::unique_ptr<SqlitePreferences> makePreferences() const
    {
        const QString data = m_directory.filePath(QStringLiteral("data"));
        QDir().mkpath(data);
        return SqlitePreferences::open(data).takeValue();
    }

    QTemporaryDir m_directory;
    FakeClock m_clock;
    VdirEventStore m_folder;
    StoreOnDisk m_planner;
    int m_changes = 0;
};

} // namespace

TESSALY_BENCH(calendars)
{
    for (const int count : {10'000, 100'000}) {
        const auto name = [&](const char *what) {
            return QStringLiteral("%1, %2 events").arg(QLatin1String(what)).arg(count);
        };
        SyncedFolder planner(count);
        const auto [firstImport, importGap] = planner.timeAndGap([&] { planner.sync(); });
        std::vector<double> importGaps{importGap};
        while (count == 10'000 && importGaps.size() < 5) {
            SyncedFolder another(count);
            importGaps.push_back(another.timeAndGap([&] { another.sync(); }).second);
        }
        std::ranges::nth_element(importGaps, importGaps.begin() + std::ptrdiff_t(importGaps.size() / 2));
        if (planner.schedules().size() != count)
            return report.failed(name("first import"), QStringLiteral("%1 schedules").arg(planner.schedules().size()));
        planner.settle();

        const QStringList before = planner.databaseState();
        const auto seconds =
            medianSeconds(count > 10'000 ? 5 : 9, {{[&] { planner.sync(); }}, {[&] { planner.fetch(); }}});
        const double unchangedGap = planner.timeAndGap([&] { planner.sync(); }).second;
        if (planner.databaseState() != before)
            report.failed(name("sync without changes"), QStringLiteral("it saved something"));
        report.atMostTimes(name("sync without changes"), seconds[0], QStringLiteral("bare fetch"), seconds[1], 1.3);
        report.shown(name("first import"), firstImport, QStringLiteral("bare fetch"), seconds[1]);

        planner.changeOne();
        const auto [oneChange, changeGap] = planner.timeAndGap([&] { planner.sync(); });
        if (planner.schedules().constFirst().title == QStringLiteral("Event 0") || planner.databaseState() == before)
            report.failed(name("sync of one change"), QStringLiteral("nothing arrived, or nothing was saved"));
        report.shown(name("sync of one change"), oneChange, QStringLiteral("bare fetch"), seconds[1]);

        const QString fiftyMs = QStringLiteral("50 ms");
        const auto gap = [&](const char *what, double measured) {
            if (count == 10'000)
                report.atMostTimes(name(what), measured, fiftyMs, longestGap, 1);
            else
                report.shown(name(what), measured, fiftyMs, longestGap);
        };
        gap("longest gap, first import", importGaps[importGaps.size() / 2]);
        gap("longest gap, nothing changed", unchangedGap);
        gap("longest gap, one change", changeGap);
    }
}

} // namespace tessaly::bench
