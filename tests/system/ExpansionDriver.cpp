#include "platform/common/LibicalExpander.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

using namespace tessaly;

/// ExpansionDriver FROM UNTIL ZONE: reads a calendar from the standard input, prints "UID ORIGINAL START END" of each
/// occurrence and "skipped LINE REASON" of what was left out. Times are seconds since 1970-01-01 UTC.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QFile input;
    if (arguments.size() != 4 || !input.open(stdin, QIODevice::ReadOnly))
        return 2;
    const auto instant = [&](qsizetype argument) {
        return Instant::fromUnixSeconds(arguments.at(argument).toDouble());
    };
    const ExpandedCalendar calendar = LibicalExpander().expand(
        input.readAll(),
        {.from = instant(1), .until = instant(2), .currentZone = QTimeZone(arguments.at(3).toLatin1())});
    const auto seconds = [](Instant time) { return static_cast<long long>(time.unixSeconds()); };
    for (const CalendarOccurrence &each : calendar.occurrences)
        std::printf("%s %lld %lld %lld\n", each.uid.constData(), seconds(each.originalStart), seconds(each.start),
                    seconds(each.end));
    for (const SkippedEvent &each : calendar.skipped)
        std::printf("skipped %lld %d\n", static_cast<long long>(each.line), static_cast<int>(each.reason));
    return 0;
}
