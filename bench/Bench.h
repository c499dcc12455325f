#pragma once

#include <QString>

#include <functional>
#include <vector>

/// A small harness: each file registers its benches with TESSALY_BENCH; every figure is printed beside a limit that was
/// measured in the same run, because only ratios mean something on a machine that others use too.
namespace tessaly::bench {

/// What is timed. `prepare` runs before each sample and is not timed.
struct Subject
{
    std::function<void()> run;
    std::function<void()> prepare = {};
};

/// Median seconds per run of each subject. The subjects take turns, so that a disturbance meets all of them. A subject
/// without `prepare` runs as often per sample as it takes to fill two milliseconds, and once before, not timed.
[[nodiscard]] std::vector<double> medianSeconds(int samples, const std::vector<Subject> &subjects);

/// Keeps the compiler from dropping a computation whose result nobody uses.
template <class Value>
void keep(const Value &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// Prints the table row by row and remembers whether a demand was missed. Times are seconds.
class Report
{
public:
    /// Demands that `measured` is at least `factor` times as fast as the limit.
    void timesFasterThan(const QString &name, double measured, const QString &limitName, double limit, double factor);
    /// Demands that `measured` takes at most `factor` times as long as the limit.
    void atMostTimes(const QString &name, double measured, const QString &limitName, double limit, double factor);
    /// Shows `measured` / `limit` without demanding anything.
    void shown(const QString &name, double measured, const QString &limitName, double limit);
    /// The same for memory.
    void shownBytes(const QString &name, double measured, const QString &limitName, double limit);
    void atMostTimesBytes(const QString &name, double measured, const QString &limitName, double limit, double factor);
    /// What this computer cannot measure.
    void skipped(const QString &name, const QString &why);
    /// A bench that could not do its work counts as a missed demand.
    void failed(const QString &name, const QString &why);

    [[nodiscard]] bool hasMissed() const { return m_hasMissed; }

private:
    void row(const QString &name, const QString &measured, const QString &limit, const QString &ratio,
             const QString &demanded, const QString &verdict);

    bool m_hasMissed = false;
    bool m_hasHeader = false;
};

using BenchFunction = void (*)(Report &);

/// Returns a value only so that it can initialise a variable.
int registerBench(const char *name, BenchFunction function);

} // namespace tessaly::bench

/// TESSALY_BENCH(name) { … report … }: a bench that `tessaly_bench --filter NAME` finds by its name.
#define TESSALY_BENCH(name)                                                                                            \
    static void name(tessaly::bench::Report &report);                                                                  \
    [[maybe_unused]] static const int name##Registration = tessaly::bench::registerBench(#name, name);                 \
    static void name([[maybe_unused]] tessaly::bench::Report &report)
