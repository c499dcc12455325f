#include "tests/system/DocumentUnderTest.h"

#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <unistd.h>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

void print(const char *name, double value)
{
    std::printf("%s %g\n", name, value);
    std::fflush(stdout);
}

/// Prose with a formula, a table and some code in every tenth section.
QString document(qsizetype bytes)
{
    QString text;
    for (int section = 0; text.size() < bytes; ++section) {
        text += u"## Section %1\n\nSome *words* about `code`, 中文 and a [link](https://example.org/%1). Some more "
                u"words that "
                "make the paragraph as long as paragraphs tend to be, which is two or three lines on a page.\n\n"
                "- first\n- second\n\n"_s.arg(section);
        if (section % 10 == 0)
            text +=
                u"$$x_%1^2$$\n\n| a | b |\n| - | - |\n| 1 | 2 |\n\n```cpp\nint main() { return %1; }\n```\n\n"_s.arg(
                    section);
    }
    return text;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

QByteArray fileContents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The fields after the program's name, as in proc(5); the first is the state.
QList<QByteArray> processStatus(const QString &process)
{
    const QByteArray stat = fileContents(u"/proc/%1/stat"_s.arg(process));
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ');
}

bool isDescendant(const QString &process)
{
    QString at = process;
    while (at.toLongLong() > 1) {
        if (at.toLongLong() == QCoreApplication::applicationPid())
            return true;
        at = QString::fromLatin1(processStatus(at).value(1));
    }
    return false;
}

QStringList ownProcesses()
{
    QStringList processes = QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs);
    processes.removeIf([](const QString &process) { return !isDescendant(process); });
    return processes;
}

/// Of this process and those it started.
double processorSeconds()
{
    double ticks = 0;
    for (const QString &process : ownProcesses()) {
        const QList<QByteArray> status = processStatus(process);
        ticks += status.value(11).toDouble() + status.value(12).toDouble();
    }
    return ticks / double(sysconf(_SC_CLK_TCK));
}

/// The longest time, in seconds, for which the main thread did not respond while it runs.
class LongestPause
{
public:
    LongestPause()
    {
        QObject::connect(&m_tick, &QTimer::timeout, [this] { m_longest = std::max(m_longest, m_sinceTick.restart()); });
        m_tick.setTimerType(Qt::PreciseTimer);
        m_tick.start(1);
        m_sinceTick.start();
    }

    [[nodiscard]] double seconds() const { return double(m_longest) / 1e3; }

private:
    QTimer m_tick;
    QElapsedTimer m_sinceTick;
    qint64 m_longest = 0;
};

/// What an edit took, in seconds.
struct Taken
{
    double untilShown = 0;
    double cpu = 0; ///< in all processes
    double longestPause = 0;
};

/// Replaces a word in a paragraph in the middle of the text again and again.
Taken editToPreview(DocumentUnderTest &preview, const QString &text, int samples)
{
    std::vector<double> times;
    double cpu = 0;
    double longestPause = 0;
    const qsizetype place = std::max<qsizetype>(text.indexOf(u"Some *words*"_s, text.size() / 2), 0);
    // The first one shows another document.
    for (int sample = -1; sample < samples; ++sample) {
        if (sample == 0)
            cpu = processorSeconds();
        const LongestPause pause;
        QElapsedTimer timer;
        timer.start();
        if (!preview.show(text.first(place) + u"Edit %1. "_s.arg(sample) + text.sliced(place)))
            qFatal("The preview did not come");
        if (sample < 0)
            continue;
        times.push_back(double(timer.nsecsElapsed()) / 1e9);
        longestPause = std::max(longestPause, pause.seconds());
    }
    return {median(times), (processorSeconds() - cpu) / samples, longestPause};
}

/// What marked takes for the text, without anything of ours, in the page that is shown.
Taken markedAlone(DocumentUnderTest &preview, const QString &text, int runs)
{
    const QString literal = QString::fromUtf8(QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact));
    const QString script = u"(() => { const module = { exports: {} }; const { exports } = module;\n%1\n"
                           "const [text] = %2; const times = [];"
                           "for (let run = 0; run < %3; ++run) { const start = performance.now();"
                           " module.exports.parse(text, { gfm: true, breaks: true });"
                           " times.push(performance.now() - start); }"
                           "return times.sort((a, b) => a - b)[times.length >> 1]; })()"_s;
    const QString marked = QString::fromUtf8(fileContents(QStringLiteral(BENCH_MARKED)));
    const double cpu = processorSeconds();
    const double median = preview.ask(script.arg(marked, literal, QString::number(runs))).toDouble() / 1e3;
    if (median <= 0)
        qFatal("marked did not run");
    return {median, (processorSeconds() - cpu) / runs};
}

void measureEdits(DocumentUnderTest &preview, const QByteArray &name, qsizetype bytes, int samples)
{
    const QString text = document(bytes);
    const Taken edit = editToPreview(preview, text, samples);
    print(("edit-" + name).constData(), edit.untilShown);
    print(("edit-cpu-" + name).constData(), edit.cpu);
    print(("edit-pause-" + name).constData(), edit.longestPause);
    const Taken marked = markedAlone(preview, text, samples);
    print(("marked-" + name).constData(), marked.untilShown);
    print(("marked-cpu-" + name).constData(), marked.cpu);
}

double copy(QQmlEngine &engine, const QString &text)
{
    QQmlComponent component(&engine);
    component.setData("import Tessaly.DocumentEngine\nWeChatClipboardRenderer {}", QUrl());
    const std::unique_ptr<QObject> copier(component.create());
    QSignalSpy finished(copier.get(), SIGNAL(finished(bool)));
    QElapsedTimer timer;
    timer.start();
    QMetaObject::invokeMethod(copier.get(), "copyDocumentForWeChat", Q_ARG(QString, text));
    if (!finished.wait(120'000) || !finished.first().first().toBool())
        qFatal("The copy did not come");
    return double(timer.nsecsElapsed()) / 1e9;
}

qint64 proportionalBytes(const QString &process)
{
    for (const QByteArray &line : fileContents(u"/proc/%1/smaps_rollup"_s.arg(process)).split('\n')) {
        if (line.startsWith("Pss:"))
            return line.mid(4).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

/// Of this process and those it started, shared pages divided among their users.
double memoryInUse()
{
    qint64 bytes = 0;
    for (const QString &process : ownProcesses())
        bytes += proportionalBytes(process);
    return double(bytes);
}

} // namespace

/// Opens documents in the engine and prints what it took, a name and a number a line: seconds or bytes.
int main(int argc, char *argv[])
{
    fixEngineEnvironment();
    const QGuiApplication application(argc, argv);
    QQuickView before;
    before.show();
    QSignalSpy(&before, &QQuickWindow::frameSwapped).wait();
    print("memory-before", memoryInUse());

    QElapsedTimer timer;
    timer.start();
    DocumentUnderTest preview;
    if (!preview.show(document(10'000)))
        qFatal("The preview did not come");
    print("first", double(timer.nsecsElapsed()) / 1e9);
    print("memory-after", memoryInUse());

    measureEdits(preview, "10k", 10'000, 60);
    measureEdits(preview, "100k", 100'000, 30);
    measureEdits(preview, "1m", 1'000'000, 9);
    print("copy-10k", copy(*preview.view().engine(), document(10'000)));
    print("copy-100k", copy(*preview.view().engine(), document(100'000)));
    print("copy-1m", copy(*preview.view().engine(), document(1'000'000)));
}
