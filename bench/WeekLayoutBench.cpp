#include "bench/Bench.h"
#include "model/RecordCodec.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "tests/store/FakePorts.h"
#include "tests/support/RecordGenerator.h"
#include "views/schedule/ScheduleViewModel.h"

#include <algorithm>

namespace tessaly::bench {

namespace {

constexpr double oneFrame = 0.016;
const QString oneFrameName = QStringLiteral("one frame, 16 ms");

UserCalendar vienna()
{
    return {QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
}

/// A planner in memory, its clock in the middle of the generated schedules.
class Planner : public FakePorts
{
public:
    explicit Planner(const QList<ScheduleItem> &schedules)
    {
        clock.setNow(calendar.instant({2025, 6, 11}, {10, 0}));
        const std::optional<QByteArray> blob = encodeSavedData({.schedules = schedules});
        isReady = blob && preferences.setValue(keys::storageKey, *blob).hasValue();
        QSet<QString> identifiers;
        for (const ScheduleItem &schedule : schedules) {
            if (schedule.calendarIdentifier)
                identifiers.insert(*schedule.calendarIdentifier);
        }
        store = std::make_unique<PlannerStore>(ports());
        store->setVisibleCalendarIDs(identifiers);
        screen.setStore(store.get());
        screen.setDayWidth(118);
        isReady = isReady && store->schedules().size() == schedules.size();
    }

    std::unique_ptr<PlannerStore> store;
    ScheduleViewModel screen;
    bool isReady = false;
};

QList<ScheduleItem> generated(qsizetype count)
{
    return RecordGenerator().savedData(count, 0, 0).schedules;
}

/// So many schedules in the one week of June 9, 2025.
QList<ScheduleItem> crowdedWeek(qsizetype count)
{
    RecordGenerator generator;
    QList<ScheduleItem> schedules = generated(count);
    const Instant monday = vienna().startOfDay({2025, 6, 9});
    for (ScheduleItem &schedule : schedules) {
        schedule.date = monday.plus(60.0 * static_cast<double>(generator.below(7 * 1440)));
        schedule.endDate = schedule.date.plus(60.0 * static_cast<double>(15 + generator.below(120)));
    }
    return schedules;
}

/// What any answer about a span of time costs without an index.
double plainScan(const QList<ScheduleItem> &schedules, const InstantRange &range)
{
    double sum = 0;
    for (const ScheduleItem &schedule : schedules) {
        if (schedule.date >= range.from && schedule.date < range.to)
            sum += schedule.date.seconds;
    }
    return sum;
}

} // namespace

TESSALY_BENCH(WeekLayout)
{
    for (const qsizetype size : {500, 5000}) {
        const UserCalendar calendar = vienna();
        const QList<ScheduleItem> schedules = crowdedWeek(size);
        ScheduleIndex index;
        index.apply({}, schedules);
        QSet<QString> identifiers;
        for (const ScheduleItem &schedule : schedules)
            identifiers.insert(schedule.calendarIdentifier.value_or(QString()));
        const ScheduleSource source{schedules, index, identifiers, calendar, true};
        const QList<QDate> days = visibleDays(CalendarScope::Week, {2025, 6, 11}, calendar);
        const QList<QList<DayEvent>> events = viewportSchedules(days, source);
        const WeekMeasures measures = weekMeasures(0, 24);
        const InstantRange range = viewport(days, calendar).value();

        const auto columns = [&] {
            for (const QList<DayEvent> &day : events)
                keep(positionedEvents(day));
        };
        const auto layout = [&] { keep(blockRows(days, viewportSchedules(days, source), source, measures, 118, {})); };
        const auto seconds = medianSeconds(40, {{columns}, {layout}, {[&] { keep(plainScan(schedules, range)); }}});
        const QString name = QStringLiteral("week of %1: ").arg(size);
        const QString limit = QStringLiteral("10 ms");
        report.atMostTimes(name + QStringLiteral("sub-columns"), seconds[0], limit, 0.010, 1);
        report.atMostTimes(name + QStringLiteral("whole layout"), seconds[1], limit, 0.010, 1);
        report.shown(name + QStringLiteral("whole layout"), seconds[1], QStringLiteral("plain scan"), seconds[2]);
    }
}

TESSALY_BENCH(ScheduleScreen)
{
    using Scope = ScheduleViewModel::Scope;
    for (const qsizetype size : {10000, 100000}) {
        const QList<ScheduleItem> schedules = generated(size);
        Planner planner(schedules);
        if (!planner.isReady)
            return report.failed(QStringLiteral("schedule screen"), QStringLiteral("the planner does not load"));
        ScheduleViewModel &screen = planner.screen;
        const InstantRange range =
            viewport(visibleDays(CalendarScope::Month, {2025, 6, 11}, planner.calendar), planner.calendar).value();

        bool isForth = false;
        const auto step = [&] {
            isForth = !isForth;
            isForth ? screen.showNext() : screen.showPrevious();
        };
        const auto switchScope = [&] { screen.setScope(screen.scope() == Scope::Week ? Scope::Month : Scope::Week); };
        const auto scan = [&] { keep(plainScan(planner.store->schedules(), range)); };
        const auto inScope = [&screen](Scope scope) { return [&screen, scope] { screen.setScope(scope); }; };
        const auto reopen = [&] {
            ScheduleIndex index;
            index.apply({}, planner.store->schedules());
            keep(index);
        };
        const auto seconds = medianSeconds(
            40, {{step, inScope(Scope::Week)}, {step, inScope(Scope::Month)}, {switchScope}, {reopen}, {scan}});
        const QStringList names = {QStringLiteral("move one week"), QStringLiteral("move one month"),
                                   QStringLiteral("switch week and month"), QStringLiteral("open: sort by start")};
        for (qsizetype index = 0; index < names.size(); ++index) {
            const QString name = QStringLiteral("%1 schedules: %2").arg(size).arg(names.at(index));
            const double measured = seconds.at(static_cast<size_t>(index));
            // Sorting happens once, when the screen opens.
            if (index + 1 < names.size())
                report.atMostTimes(name, measured, oneFrameName, oneFrame, 1);
            report.shown(name, measured, QStringLiteral("plain scan"), seconds.back());
        }
    }
}

} // namespace tessaly::bench
