#include "bench/Bench.h"
#include "model/ICalendarReader.h"
#include "platform/common/SqlitePreferences.h"
#include "store/PlannerStore.h"
#include "tests/store/FakePorts.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

// Links that are kept up to date, as seen by the main thread: one of 10,000 events that brings nothing new, and one of
// 100,000 that brings a change.

namespace tessaly::bench {

namespace {

constexpr int manyEvents = 10'000;
constexpr int mostEvents = 100'000;
constexpr double longestBusySeconds = 0.005;
/// From there on an interruption is felt.
constexpr double longestPauseSeconds = 0.05;

QByteArray timetable(int events, int stamp, const QByteArray &firstTitle = "Lecture 0")
{
    QByteArray text = "BEGIN:VCALENDAR\r\n";
    for (int i = 0; i < events; ++i)
        text += "BEGIN:VEVENT\r\nUID:" + QByteArray::number(i) + "@example.org\r\nDTSTAMP:2026112" +
                QByteArray::number(stamp) +
                "T000000Z\r\nDTSTART;TZID=Europe/Vienna:20261122T080000\r\nDTEND;TZID=Europe/Vienna:20261122T093000\r\n"
                "SUMMARY:" +
                (i == 0 ? firstTitle : "Lecture " + QByteArray::number(i)) + "\r\nEND:VEVENT\r\n";
    return text + "END:VCALENDAR\r\n";
}

/// Seconds of the processor that this thread has used.
double threadSeconds()
{
    timespec used = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

class FollowedLink
{
public:
    /// Without preferences, fake ones that count what is written.
    explicit FollowedLink(int events, Preferences *preferences = nullptr)
        : m_store(m_fakes.portsWith({.preferences = preferences}))
    {
        m_store.start();
        m_store.calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics"), {.isKeptUpToDate = true});
        take(timetable(events, 0));
    }

    /// Brings the link up to date. Seconds that the main thread was busy.
    double update(const QByteArray &text)
    {
        m_fakes.clock.advance(4000);
        const double before = threadSeconds();
        take(text);
        return threadSeconds() - before;
    }
    /// The most seconds that the main thread was busy without a look at what else there is to do.
    [[nodiscard]] double longestPause() const { return m_longestPause; }
    [[nodiscard]] int writes() const { return m_fakes.preferences.writeCount(); }

private:
    void take(const QByteArray &text)
    {
        m_longestPause = 0;
        const Instant now = m_fakes.clock.now();
        step([&] { m_fakes.feedDownloader.answer(0, text); });
        while (m_store.calendarLinks().lastRead(m_store.calendarFeeds().constFirst()) != now)
            step([] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); });
        step([] { QCoreApplication::processEvents(); });
    }
    void step(const std::function<void()> &work)
    {
        const double before = threadSeconds();
        work();
        m_longestPause = std::max(m_longestPause, threadSeconds() - before);
    }

    FakePorts m_fakes;
    PlannerStore m_store;
    double m_longestPause = 0;
};

} // namespace

TESSALY_BENCH(LinkUpdate)
{
    FollowedLink link(manyEvents);
    const int writes = link.writes();
    std::vector<double> busy;
    for (int i = 0; i < 15; ++i)
        busy.push_back(link.update(timetable(manyEvents, i % 10)));
    if (link.writes() != writes)
        report.failed(QStringLiteral("link of 10,000 events, nothing new"), QStringLiteral("it wrote"));
    std::ranges::sort(busy);
    const double median = busy[busy.size() / 2];
    report.atMostTimes(QStringLiteral("link of 10,000 events, nothing new: main thread"), median,
                       QStringLiteral("5 ms"), longestBusySeconds, 1);
    const QByteArray text = timetable(manyEvents, 0);
    const QTimeZone zone("Europe/Vienna");
    const auto parse = medianSeconds(5, {{[&] { keep(parseICalendar(text, {}, zone)); }}});
    report.shown(QStringLiteral("the same"), median, QStringLiteral("reading it"), parse.front());
}

TESSALY_BENCH(LargeLink)
{
    const QTemporaryDir directory;
    const std::unique_ptr<Preferences> preferences = SqlitePreferences::open(directory.path()).takeValue();
    FollowedLink link(mostEvents, preferences.get());
    const QString limit = QStringLiteral("50 ms");
    report.atMostTimes(QStringLiteral("link of 100,000 events, first reading: longest pause"), link.longestPause(),
                       limit, longestPauseSeconds, 1);
    std::vector<double> pauses;
    for (int i = 1; i < 6; ++i) {
        link.update(timetable(mostEvents, i, "Moved to room " + QByteArray::number(i)));
        pauses.push_back(link.longestPause());
    }
    std::ranges::sort(pauses);
    report.atMostTimes(QStringLiteral("link of 100,000 events, one changed: longest pause"), pauses[pauses.size() / 2],
                       limit, longestPauseSeconds, 1);
}

} // namespace tessaly::bench
