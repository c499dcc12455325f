#include "tests/system/DocumentUnderTest.h"

#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

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

/// Seconds from a changed text to its rendering on screen.
double editToPreview(DocumentUnderTest &preview, const QString &text, int samples)
{
    std::vector<double> times;
    for (int sample = 0; sample < samples; ++sample) {
        QElapsedTimer timer;
        timer.start();
        if (!preview.show(text + u"edit %1\n"_s.arg(sample)))
            qFatal("The preview did not come");
        times.push_back(double(timer.nsecsElapsed()) / 1e9);
    }
    return median(times);
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
    QFile file(u"/proc/%1/smaps_rollup"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("Pss:"))
            return line.mid(4).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

bool isDescendant(const QString &process)
{
    QString at = process;
    while (at.toLongLong() > 1) {
        if (at.toLongLong() == QCoreApplication::applicationPid())
            return true;
        QFile file(u"/proc/%1/stat"_s.arg(at));
        if (!file.open(QIODevice::ReadOnly))
            return false;
        const QByteArray stat = file.readAll();
        at = QString::fromLatin1(stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(1));
    }
    return false;
}

/// Of this process and those it started, shared pages divided among their users.
double memoryInUse()
{
    qint64 bytes = 0;
    for (const QString &entry : QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs)) {
        if (isDescendant(entry))
            bytes += proportionalBytes(entry);
    }
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

    print("edit-empty", editToPreview(preview, {}, 9));
    print("edit-10k", editToPreview(preview, document(10'000), 9));
    print("edit-100k", editToPreview(preview, document(100'000), 5));
    const LongestPause pause;
    print("edit-1m", editToPreview(preview, document(1'000'000), 3));
    print("pause-1m", pause.seconds());
    print("copy-10k", copy(*preview.view().engine(), document(10'000)));
    print("copy-100k", copy(*preview.view().engine(), document(100'000)));
    print("copy-1m", copy(*preview.view().engine(), document(1'000'000)));
}
