#include "bench/Bench.h"
#include "bench/ProcessFigures.h"
#include "bench/VirtualScreen.h"
#include "model/ICalendarWriter.h"
#include "model/RecordCodec.h"
#include "platform/common/SqlitePreferences.h"
#include "store/PreferenceKeys.h"
#include "tests/support/RecordGenerator.h"

#include <QDir>
#include <QStandardPaths>
#include <QThread>

#include <algorithm>
#include <chrono>

namespace tessaly {
namespace {

using namespace Qt::StringLiterals;
using bench::ProcessFigures;
using bench::VirtualScreen;

constexpr int samples = 9;
constexpr double patience = 60;
constexpr int idleSeconds = 30;
constexpr double tick = 0.01;
constexpr qsizetype manySchedules = 10'000;
constexpr qsizetype someReminders = 40;
constexpr qsizetype someGoals = 10;

double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Folders that no program of the user looks into.
QProcessEnvironment environment(const QTemporaryDir &home)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const auto &[name, folder] : {std::pair("XDG_CONFIG_HOME", "config"), std::pair("XDG_DATA_HOME", "data"),
                                       std::pair("XDG_CACHE_HOME", "cache"), std::pair("XDG_RUNTIME_DIR", "run")}) {
        const QString path = home.filePath(QString::fromLatin1(folder));
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        variables.insert(QString::fromLatin1(name), path);
    }
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    return variables;
}

/// A session bus that starts the services of this computer as they are asked for.
class SessionBus
{
public:
    explicit SessionBus(const QProcessEnvironment &variables)
    {
        m_daemon.setProcessEnvironment(variables);
        m_daemon.setStandardErrorFile(QProcess::nullDevice());
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--print-address"_s, u"--nofork"_s});
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) {
        }
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }
    ~SessionBus()
    {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(SessionBus)

    [[nodiscard]] QString address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};

SavedData records()
{
    return RecordGenerator(3).savedData(manySchedules, someReminders, someGoals);
}

bool fill(const QString &directory)
{
    auto preferences = SqlitePreferences::open(directory);
    return preferences && preferences.value()->setValue(keys::hasAskedPreferredName, true) &&
           preferences.value()->setValue(keys::automaticCalendarSync, false) &&
           preferences.value()->setValue(keys::storageKey, encodeSavedData(records()).value_or(QByteArray()));
}

struct FirstFrame
{
    double wall = 0;
    ProcessFigures figures = {};
    /// When nothing has happened for a while, too.
    ProcessFigures rest = {};
};

ProcessFigures atRest(qint64 process)
{
    constexpr int pauseMs = 400;
    ProcessFigures before = bench::figuresOf(process);
    const double end = now() + patience;
    while (now() < end) {
        QThread::msleep(pauseMs);
        const ProcessFigures after = bench::figuresOf(process);
        if (after.cpuSeconds - before.cpuSeconds < 1e-3)
            return after;
        before = after;
    }
    return before;
}

struct Program
{
    QString path;
    QStringList arguments;
    /// Whether to wait until nothing happens any more.
    bool isLetRest = false;
};

QStringList plannerArguments(const QString &data)
{
    return {u"--data-dir"_s, data, u"--calendar"_s, u"none"_s};
}

/// Nothing where no frame came.
std::optional<FirstFrame> firstFrame(const VirtualScreen &screen, const QProcessEnvironment &variables,
                                     const Program &program)
{
    while (screen.isDrawnOn())
        QThread::msleep(1); // The window of the one before.
    QProcess process;
    process.setProcessEnvironment(variables);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    const double start = now();
    process.start(program.path, program.arguments);
    if (!process.waitForStarted())
        return std::nullopt;
    while (!screen.isDrawnOn() && now() < start + patience)
        QThread::usleep(200);
    FirstFrame frame{.wall = now() - start, .figures = bench::figuresOf(process.processId())};
    const bool isShown = screen.isDrawnOn() && frame.figures.cpuSeconds > 0;
    if (program.isLetRest)
        frame.rest = atRest(process.processId());
    process.kill();
    process.waitForFinished();
    return isShown ? std::optional(frame) : std::nullopt;
}

/// The median of what `value` picks.
template <class Value>
double median(const std::vector<FirstFrame> &frames, Value value)
{
    std::vector<double> values;
    for (const FirstFrame &frame : frames)
        values.push_back(value(frame));
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// The programs take turns. Empty where one of them shows nothing.
std::vector<std::vector<FirstFrame>> starts(const VirtualScreen &screen, const QProcessEnvironment &variables,
                                            const QList<Program> &programs)
{
    std::vector<std::vector<FirstFrame>> all(std::size_t(programs.size()));
    for (int sample = 0; sample <= samples; ++sample) {
        for (qsizetype i = 0; i < programs.size(); ++i) {
            const auto frame = firstFrame(screen, variables, programs.at(i));
            if (!frame)
                return {};
            // The first start finds nothing in memory.
            if (sample > 0)
                all[std::size_t(i)].push_back(*frame);
        }
    }
    return all;
}

double wall(const FirstFrame &frame)
{
    return frame.wall;
}
double cpu(const FirstFrame &frame)
{
    return frame.figures.cpuSeconds;
}
double peak(const FirstFrame &frame)
{
    return frame.figures.peakBytes;
}
double peakAtRest(const FirstFrame &frame)
{
    return frame.rest.peakBytes;
}

void compareWithEmptyWindow(bench::Report &report, const VirtualScreen &screen, const QString &backend,
                            const QProcessEnvironment &variables, const QString &data)
{
    const QString empty = u"an empty Qt Quick window"_s;
    const auto all = starts(screen, variables,
                            {{QStringLiteral(BENCH_PLANNER), plannerArguments(data), true},
                             {QStringLiteral(BENCH_EMPTY_WINDOW), {}, true}});
    if (all.empty())
        return report.failed(u"start, %1"_s.arg(backend), u"a program showed no window"_s);
    report.atMostTimes(u"start to first frame, %1: CPU"_s.arg(backend), median(all[0], cpu), empty, median(all[1], cpu),
                       2.5);
    report.shown(u"start to first frame, %1"_s.arg(backend), median(all[0], wall), empty, median(all[1], wall));
    report.atMostTimesBytes(u"peak memory at the first frame, %1"_s.arg(backend), median(all[0], peak), empty,
                            median(all[1], peak), 1.6);
    report.shownBytes(u"peak memory once idle, %1"_s.arg(backend), median(all[0], peakAtRest), empty,
                      median(all[1], peakAtRest));
}

void compareWithPeer(bench::Report &report, const VirtualScreen &screen, const QTemporaryDir &home,
                     QProcessEnvironment variables, const QString &data)
{
    const QString peer = QStandardPaths::findExecutable(u"gnome-calendar"_s);
    const QString name = u"gnome-calendar"_s;
    if (peer.isEmpty())
        return report.skipped(u"start beside gnome-calendar"_s, u"it is not installed"_s);
    // Its calendar of this computer.
    const QString folder = home.filePath(u"data/evolution/calendar/system"_s);
    QDir().mkpath(folder);
    QFile calendar(folder + u"/calendar.ics"_s);
    if (!calendar.open(QIODevice::WriteOnly) || calendar.write(calendarText(records().schedules, {})) < 0)
        return report.failed(u"start beside gnome-calendar"_s, calendar.errorString());
    calendar.close();
    const SessionBus bus(variables);
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    variables.insert(u"GSK_RENDERER"_s, u"cairo"_s);
    const auto all = starts(screen, variables, {{QStringLiteral(BENCH_PLANNER), plannerArguments(data)}, {peer, {}}});
    if (all.empty())
        return report.failed(u"start beside gnome-calendar"_s, u"a program showed no window"_s);
    report.atMostTimes(u"start to first frame, software: CPU"_s, median(all[0], cpu), name, median(all[1], cpu), 0.34);
    report.shown(u"start to first frame, software"_s, median(all[0], wall), name, median(all[1], wall));
    report.shownBytes(u"peak memory at the first frame, software"_s, median(all[0], peak), name, median(all[1], peak));
}

} // namespace

TESSALY_BENCH(start)
{
    const VirtualScreen screen;
    if (!screen.isThere())
        return report.failed(u"start"_s, u"there is no Xvfb"_s);
    const QTemporaryDir home;
    const QTemporaryDir data;
    if (!fill(data.path()))
        return report.failed(u"start"_s, u"the records could not be saved"_s);
    QProcessEnvironment variables = environment(home);
    variables.insert(u"DISPLAY"_s, screen.display());
    variables.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    compareWithEmptyWindow(report, screen, u"software"_s, variables, data.path());
    compareWithPeer(report, screen, home, variables, data.path());
    variables.remove(u"QT_QUICK_BACKEND"_s);
    compareWithEmptyWindow(report, screen, u"OpenGL"_s, variables, data.path());
}

TESSALY_BENCH(background)
{
    const QTemporaryDir home;
    const QTemporaryDir none;
    const QTemporaryDir data;
    if (!fill(data.path()))
        return report.failed(u"without a window"_s, u"the records could not be saved"_s);
    QProcessEnvironment variables = environment(home);
    const SessionBus bus(variables);
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    QProcess service;
    QProcess planner;
    QProcess plannerWithData;
    const auto run = [&variables](QProcess &process, const Program &program) {
        process.setProcessEnvironment(variables);
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program.path, program.arguments);
        return process.waitForStarted();
    };
    const auto inBackground = [](const QTemporaryDir &directory) {
        return Program{QStringLiteral(BENCH_PLANNER), plannerArguments(directory.path()) << u"--background"_s};
    };
    if (!run(service, {QStringLiteral(BENCH_EMPTY_SERVICE), {}}) || !run(planner, inBackground(none)) ||
        !run(plannerWithData, inBackground(data)))
        return report.failed(u"without a window"_s, u"a program did not start"_s);
    const ProcessFigures least = atRest(service.processId());
    const ProcessFigures empty = atRest(planner.processId());
    const ProcessFigures full = atRest(plannerWithData.processId());
    QThread::sleep(idleSeconds);
    const double used = bench::figuresOf(plannerWithData.processId()).cpuSeconds - full.cpuSeconds;

    const QString limit = u"a Qt Core program on the bus"_s;
    report.atMostTimesBytes(u"without a window, no records"_s, empty.residentBytes, limit, least.residentBytes, 2);
    report.shownBytes(u"the same, proportional"_s, empty.proportionalBytes, limit, least.proportionalBytes);
    report.shownBytes(u"without a window, 10,000 schedules"_s, full.residentBytes, limit, least.residentBytes);
    report.shownBytes(u"the same, proportional"_s, full.proportionalBytes, limit, least.proportionalBytes);
    report.atMostTimes(u"CPU in 30 s without a window"_s, used, u"a tick"_s, tick, 1);
    for (QProcess *process : {&service, &planner, &plannerWithData}) {
        process->kill();
        process->waitForFinished();
    }
}

} // namespace tessaly
