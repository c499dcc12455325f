#include "bench/Bench.h"

#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>

namespace tessaly {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 300'000;

QProcessEnvironment environment()
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    variables.insert(u"QT_QUICK_BACKEND"_s, u"software"_s);
    variables.insert(u"QML_IMPORT_PATH"_s, QStringLiteral(BENCH_ENGINE_DIRECTORY));
    // Neither the user's services nor his data.
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
    variables.insert(u"QT_LOGGING_RULES"_s, u"qt.scenegraph.time.renderloop=true"_s);
    return variables;
}

/// Seconds from the start of the process to the end of its first frame; negative when there is none.
double firstFrame(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.setReadChannel(QProcess::StandardError);
    const auto start = std::chrono::steady_clock::now();
    process.start(program, arguments);
    double seconds = -1;
    QByteArray seen;
    while (seconds < 0 && process.waitForReadyRead(patience)) {
        seen += process.readAllStandardError();
        if (seen.contains("renderloop"))
            seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    process.kill();
    process.waitForFinished();
    return seconds;
}

} // namespace

TESSALY_BENCH(startUp)
{
    constexpr int samples = 15;
    std::vector<double> planner;
    std::vector<double> empty;
    for (int sample = 0; sample < samples; ++sample) {
        const QTemporaryDir data;
        planner.push_back(firstFrame(QStringLiteral(BENCH_PLANNER), {u"--data-dir"_s, data.path()}));
        empty.push_back(firstFrame(QStringLiteral(BENCH_EMPTY_WINDOW), {}));
    }
    std::sort(planner.begin(), planner.end());
    std::sort(empty.begin(), empty.end());
    if (planner.front() < 0 || empty.front() < 0)
        return report.failed(u"start to first frame"_s, u"a program showed none"_s);
    report.atMostTimes(u"start to first frame"_s, planner[samples / 2], u"an empty Qt Quick window"_s,
                       empty[samples / 2], 8);
}

TESSALY_BENCH(documents)
{
    QProcess worker;
    worker.setProcessEnvironment(environment());
    worker.setProcessChannelMode(QProcess::SeparateChannels);
    worker.start(QStringLiteral(BENCH_DOCUMENT_WORKER), {});
    if (!worker.waitForFinished(patience) || worker.exitCode() != 0)
        return report.failed(u"documents"_s, QString::fromUtf8(worker.readAllStandardError()).right(300));
    QHash<QByteArray, double> values;
    for (const QByteArray &line : worker.readAllStandardOutput().split('\n'))
        values.insert(line.split(' ').first(), line.split(' ').value(1).toDouble());

    const QString emptyPage = u"edit to preview, empty text"_s;
    const double empty = values["edit-empty"];
    report.shown(u"first document, the engine's start included"_s, values["first"], emptyPage, empty);
    report.atMostTimes(u"edit to preview, 10 KB"_s, values["edit-10k"], emptyPage, empty, 4);
    report.atMostTimes(u"edit to preview, 100 KB"_s, values["edit-100k"], emptyPage, empty, 25);
    report.atMostTimes(u"edit to preview, 1 MB"_s, values["edit-1m"], emptyPage, empty, 200);
    report.shown(u"longest pause of the window meanwhile"_s, values["pause-1m"], u"one frame"_s, 1.0 / 60);
    report.shown(u"copy as rich text, 10 KB"_s, values["copy-10k"], u"its preview"_s, values["edit-10k"]);
    report.shown(u"copy as rich text, 100 KB"_s, values["copy-100k"], u"its preview"_s, values["edit-100k"]);
    report.shown(u"copy as rich text, 1 MB"_s, values["copy-1m"], u"its preview"_s, values["edit-1m"]);
    report.shownBytes(u"memory with the first document open"_s, values["memory-after"], u"before"_s,
                      values["memory-before"]);
}

} // namespace tessaly
