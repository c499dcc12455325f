#include "bench/Bench.h"

#include "tests/support/TestMain.h"

#include <QQuickStyle>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace tessaly::bench {

namespace {

struct Bench
{
    const char *name;
    BenchFunction function;
};

std::vector<Bench> &benches()
{
    static std::vector<Bench> all;
    return all;
}

double secondsFor(const std::function<void()> &run, int repetitions)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < repetitions; ++i)
        run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / repetitions;
}

struct Sampling
{
    int repetitions = 1;
    /// The other subjects have emptied the caches; a long run fills them again by itself.
    bool isWarmedUp = false;
};

Sampling samplingFor(const Subject &subject)
{
    // Short enough to mostly fit between two interruptions by other programs, so that the median is free of them.
    constexpr double leastSample = 2e-3;
    constexpr double longRun = 20e-3;
    constexpr int most = 100000;
    if (subject.prepare) {
        subject.prepare();
        secondsFor(subject.run, 1);
        return {};
    }
    secondsFor(subject.run, 1);
    const double once = secondsFor(subject.run, 1);
    const int repetitions = once * most < leastSample ? most : std::max(1, int(leastSample / once));
    return {repetitions, once < longRun};
}

QString duration(double seconds)
{
    const auto text = [](double value, const char *unit) {
        return QString::number(value, 'f',
                               value < 10    ? 2
                               : value < 100 ? 1
                                             : 0) +
               QLatin1Char(' ') + QString::fromUtf8(unit);
    };
    if (seconds < 1e-6)
        return text(seconds * 1e9, "ns");
    if (seconds < 1e-3)
        return text(seconds * 1e6, "µs");
    if (seconds < 1)
        return text(seconds * 1e3, "ms");
    return text(seconds, "s");
}

QString megabytes(double bytes)
{
    return QString::number(bytes / 1e6, 'f', 0) + QStringLiteral(" MB");
}

QString factorText(double factor)
{
    return QString::number(factor, 'f', factor < 10 ? 2 : 1) + QStringLiteral("×");
}

/// std::printf pads by bytes, which misaligns anything beyond ASCII.
QByteArray padded(const QString &text, qsizetype width)
{
    return text.leftJustified(width).toUtf8();
}

} // namespace

std::vector<double> medianSeconds(int samples, const std::vector<Subject> &subjects)
{
    std::vector<Sampling> samplings;
    for (const Subject &subject : subjects)
        samplings.push_back(samplingFor(subject));

    std::vector<std::vector<double>> times(subjects.size());
    for (int sample = 0; sample < samples; ++sample) {
        for (std::size_t i = 0; i < subjects.size(); ++i) {
            if (subjects[i].prepare)
                subjects[i].prepare();
            if (samplings[i].isWarmedUp)
                subjects[i].run();
            times[i].push_back(secondsFor(subjects[i].run, samplings[i].repetitions));
        }
    }

    std::vector<double> medians;
    for (std::vector<double> &ofOne : times) {
        const auto middle = ofOne.begin() + std::ptrdiff_t(ofOne.size() / 2);
        std::nth_element(ofOne.begin(), middle, ofOne.end());
        medians.push_back(*middle);
    }
    return medians;
}

void Report::timesFasterThan(const QString &name, double measured, const QString &limitName, double limit,
                             double factor)
{
    const bool isMet = limit >= factor * measured;
    m_hasMissed |= !isMet;
    row(name, duration(measured), limitName + QLatin1Char(' ') + duration(limit),
        factorText(limit / measured) + QStringLiteral(" faster"), QStringLiteral("≥ ") + factorText(factor),
        isMet ? QStringLiteral("ok") : QStringLiteral("FAIL"));
}

void Report::atMostTimes(const QString &name, double measured, const QString &limitName, double limit, double factor)
{
    const bool isMet = measured <= factor * limit;
    m_hasMissed |= !isMet;
    row(name, duration(measured), limitName + QLatin1Char(' ') + duration(limit), factorText(measured / limit),
        QStringLiteral("≤ ") + factorText(factor), isMet ? QStringLiteral("ok") : QStringLiteral("FAIL"));
}

void Report::shown(const QString &name, double measured, const QString &limitName, double limit)
{
    row(name, duration(measured), limitName + QLatin1Char(' ') + duration(limit), factorText(measured / limit),
        QString(), QString());
}

void Report::atMostTimesBytes(const QString &name, double measured, const QString &limitName, double limit,
                              double factor)
{
    const bool isMet = measured <= factor * limit;
    m_hasMissed |= !isMet;
    row(name, megabytes(measured), limitName + QLatin1Char(' ') + megabytes(limit), factorText(measured / limit),
        QStringLiteral("≤ ") + factorText(factor), isMet ? QStringLiteral("ok") : QStringLiteral("FAIL"));
}

void Report::shownBytes(const QString &name, double measured, const QString &limitName, double limit)
{
    row(name, megabytes(measured), limitName + QLatin1Char(' ') + megabytes(limit), factorText(measured / limit),
        QString(), QString());
}

void Report::skipped(const QString &name, const QString &why)
{
    std::printf("%s skipped: %s\n", padded(name, 44).constData(), qUtf8Printable(why));
    std::fflush(stdout);
}

void Report::failed(const QString &name, const QString &why)
{
    m_hasMissed = true;
    std::printf("%s FAIL: %s\n", padded(name, 44).constData(), qUtf8Printable(why));
    std::fflush(stdout);
}

void Report::row(const QString &name, const QString &measured, const QString &limit, const QString &ratio,
                 const QString &demanded, const QString &verdict)
{
    const auto print = [](const QString &first, const QString &second, const QString &third, const QString &fourth,
                          const QString &fifth, const QString &sixth) {
        std::printf("%s %s %s %s %s %s\n", padded(first, 44).constData(), padded(second, 10).constData(),
                    padded(third, 38).constData(), padded(fourth, 15).constData(), padded(fifth, 9).constData(),
                    qUtf8Printable(sixth));
        std::fflush(stdout);
    };
    if (!std::exchange(m_hasHeader, true))
        print(QStringLiteral("name"), QStringLiteral("measured"), QStringLiteral("limit in the same run"),
              QStringLiteral("ratio"), QStringLiteral("demanded"), QString());
    print(name, measured, limit, ratio, demanded, verdict);
}

int registerBench(const char *name, BenchFunction function)
{
    benches().push_back({name, function});
    return 0;
}

namespace {

int runBenches(const char *filter)
{
    std::sort(benches().begin(), benches().end(),
              [](const Bench &left, const Bench &right) { return std::strcmp(left.name, right.name) < 0; });
    Report report;
    int count = 0;
    for (const Bench &bench : benches()) {
        if (std::strstr(bench.name, filter) == nullptr)
            continue;
        bench.function(report);
        ++count;
    }
    if (count == 0) {
        std::fprintf(stderr, "No bench has \"%s\" in its name. There are:\n", filter);
        for (const Bench &bench : benches())
            std::fprintf(stderr, "  %s\n", bench.name);
        return 2;
    }
    return report.hasMissed() ? 1 : 0;
}

} // namespace

} // namespace tessaly::bench

/// Exit code 1 when a demanded ratio is missed.
int main(int argc, char *argv[])
{
    // The store and its database keep timers, the editor a window.
    tessaly::fixTestEnvironment();
    const QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    if (argc == 1)
        return tessaly::bench::runBenches("");
    if (argc == 3 && std::strcmp(argv[1], "--filter") == 0)
        return tessaly::bench::runBenches(argv[2]);
    std::fprintf(stderr, "usage: tessaly_bench [--filter NAME]\n");
    return 2;
}
