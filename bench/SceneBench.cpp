#include "bench/Bench.h"
#include "tests/support/RecordGenerator.h"
#include "tests/views/shell/WindowUnderTest.h"
#include "views/schedule/ScheduleViewModel.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include <sys/resource.h>

/// The schedule screen in the program's window, drawn by the software back end, under real clicks. The figures are the
/// processor's time for a step until nothing is left to draw, because the machine has other work too.
namespace tessaly {
namespace {

constexpr double frame = 1.0 / 60;
const QString frameName = QStringLiteral("a frame");
const QDate today(2026, 9, 9);
constexpr int stepsPerFigure = 9;

double processorSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) * 1e-6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// So many schedules in the daytime of so many days in a row, the middle one being today.
QList<ScheduleItem> daytimeSchedules(qsizetype count, qsizetype days, const UserCalendar &calendar)
{
    RecordGenerator generator(14);
    QList<ScheduleItem> schedules;
    schedules.reserve(count);
    for (qsizetype index = 0; index < count; ++index) {
        ScheduleItem schedule = generator.schedule();
        const QDate day = today.addDays(index % days - days / 2);
        schedule.date = calendar.startOfDay(day).plus(900.0 * double(32 + generator.below(44)));
        schedule.endDate = schedule.date.plus(900.0 * double(2 + generator.below(5)));
        schedule.calendarIdentifier.reset();
        schedules.append(schedule);
    }
    return schedules;
}

/// Every tenth lasts one to three whole days.
QList<ScheduleItem> withWholeDays(QList<ScheduleItem> schedules, const UserCalendar &calendar)
{
    for (qsizetype index = 0; index < schedules.size(); index += 10) {
        ScheduleItem &schedule = schedules[index];
        const QDate day = calendar.day(schedule.date);
        schedule.date = calendar.startOfDay(day);
        schedule.endDate = calendar.startOfDay(day.addDays(1 + index / 10 % 3));
    }
    return schedules;
}

class Scene
{
public:
    explicit Scene(const QList<ScheduleItem> &schedules, bool hasAllDayRow = false)
    {
        m_ui.planner.put(keys::hasAllDayRow, hasAllDayRow);
        m_ui.planner.clock.setNow(m_ui.planner.calendar.instant(today, {10, 0}));
        m_ui.planner.put(keys::hasAskedPreferredName, true);
        m_ui.planner.put(keys::interfaceLanguage, QStringLiteral("en"));
        m_ui.planner.put(keys::storageKey, encodeSavedData({.schedules = schedules}).value_or(QByteArray()));
        m_ui.open();
        settle();
    }

    /// What a click on the item costs, until nothing is left to draw.
    double click(QAccessible::Role role, const QString &name)
    {
        QQuickItem *item = m_ui.find(role, name);
        if (!item)
            qFatal("nothing is named %s", qUtf8Printable(name));
        return clickAt(item->mapToScene(QPointF(item->width() / 2, item->height() / 2)));
    }

    double clickAt(QPointF place)
    {
        return costOf([&] { QTest::mouseClick(&m_ui.window(), Qt::LeftButton, {}, place.toPoint()); });
    }

    /// What each pointer event of a drag costs that starts there and leads to another time with each.
    std::vector<double> dragFrom(QPointF place)
    {
        constexpr int pixelsPerStep = 12;
        return drag(place, [&] { place.ry() += pixelsPerStep; });
    }

    /// The same of a bar above the hours, to the day after and back.
    std::vector<double> dragBarOf(QDate day)
    {
        constexpr double toBar = 24 + 13;
        QPointF place = header(day) + QPointF(0, toBar);
        double way = header(day.addDays(1)).x() - place.x();
        return drag(place, [&] { place.rx() += std::exchange(way, -way); });
    }

    /// The middle of a day's header, by the beginning of its name.
    [[nodiscard]] QPointF header(QDate day) const
    {
        const QString name = QLocale(QLocale::English).toString(day, u"dddd, MMMM d, yyyy");
        const QQuickItem *item = itemNamed(m_ui.screen(), name);
        if (!item)
            qFatal("no header of %s", qUtf8Printable(name));
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    }

    /// A time of the day that no schedule takes.
    [[nodiscard]] QPointF emptyTime(QDate day) const { return header(day) + QPointF(0, 24 + 8); }

private:
    std::vector<double> drag(QPointF &place, const std::function<void()> &step)
    {
        const auto moveOn = [&] {
            step();
            QTest::mouseMove(&m_ui.window(), place.toPoint());
        };
        QTest::mousePress(&m_ui.window(), Qt::LeftButton, {}, place.toPoint());
        moveOn();
        auto *viewModel = m_ui.screen()->findChild<ScheduleViewModel *>();
        if (!viewModel->drag()->isActive() && !viewModel->margins()->drag()->isActive())
            qFatal("nothing is dragged");
        std::vector<double> costs;
        for (int count = 0; count < stepsPerFigure; ++count)
            costs.push_back(costOf(moveOn));
        QTest::keyClick(&m_ui.window(), Qt::Key_Escape);
        QTest::mouseRelease(&m_ui.window(), Qt::LeftButton, {}, place.toPoint());
        settle();
        return costs;
    }

    /// The first item within `outer` whose spoken name begins so, or null.
    static const QQuickItem *itemNamed(const QQuickItem *outer, const QString &beginning)
    {
        if (outer->property("spokenName").toString().startsWith(beginning))
            return outer;
        for (const QQuickItem *item : outer->childItems()) {
            if (const QQuickItem *found = itemNamed(item, beginning))
                return found;
        }
        return nullptr;
    }
    double costOf(const std::function<void()> &action)
    {
        settle();
        const double before = processorSeconds();
        action();
        settle();
        return processorSeconds() - before;
    }

    /// Until no frame has come for a while.
    void settle()
    {
        constexpr int whileMilliseconds = 60;
        QSignalSpy frames(&m_ui.window(), &QQuickWindow::frameSwapped);
        while (frames.wait(whileMilliseconds))
            frames.clear();
    }

    WindowUnderTest m_ui;
};

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

double medianOf(const std::function<double()> &step)
{
    std::vector<double> costs;
    for (int count = 0; count < stepsPerFigure; ++count)
        costs.push_back(step());
    return median(std::move(costs));
}

const QString openName = QStringLiteral("open Schedule");
const QString turnName = QStringLiteral("one week on");

} // namespace

TESSALY_BENCH(crowdedDayScene)
{
    const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    Scene scene(daytimeSchedules(1'000, 1, calendar));
    const auto demand = [&](const QString &what, const std::function<void()> &before,
                            const std::function<double()> &step) {
        report.atMostTimes(what, medianOf([&] {
                               before();
                               return step();
                           }),
                           frameName, frame, 6);
    };
    const auto openSchedule = [&] { return scene.click(QAccessible::ListItem, QStringLiteral("Schedule")); };
    demand(
        QStringLiteral("open Schedule at a day of 1,000"),
        [&] { scene.click(QAccessible::ListItem, QStringLiteral("Overview")); }, openSchedule);
    scene.clickAt(scene.header(today));
    demand(
        QStringLiteral("choose a day of 1,000"), [&] { scene.clickAt(scene.header(today.addDays(1))); },
        [&] { return scene.clickAt(scene.header(today)); });
}

TESSALY_BENCH(scene)
{
    const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    struct Load
    {
        const char *name;
        qsizetype schedules;
        qsizetype days;
        double open;
        double turn;
        double month;
        double day;
    };
    for (const Load &load : {Load{"10 a day", 10'000, 1'000, 4, 2, 4, 1}, Load{"54 a day", 5'000, 92, 4, 3, 4, 1},
                             Load{"100 a day", 100'000, 1'000, 9, 9, 9, 9}}) {
        Scene scene(daytimeSchedules(load.schedules, load.days, calendar));
        const auto demand = [&](const QString &what, double cost, double frames) {
            report.atMostTimes(what + QStringLiteral(", ") + QLatin1String(load.name), cost, frameName, frame, frames);
        };
        std::vector<double> openings;
        for (int count = 0; count < 5; ++count) {
            scene.click(QAccessible::ListItem, QStringLiteral("Overview"));
            openings.push_back(scene.click(QAccessible::ListItem, QStringLiteral("Schedule")));
        }
        demand(openName, median(openings), load.open);
        QDate day = today;
        demand(QStringLiteral("another day"), medianOf([&] {
                   day = day == today ? today.addDays(1) : today;
                   return scene.clickAt(scene.header(day));
               }),
               load.day);
        demand(QStringLiteral("a step of a drag"), median(scene.dragFrom(scene.header(today) + QPointF(-20, 24 + 260))),
               1);
        demand(turnName, medianOf([&] { return scene.click(QAccessible::Button, QStringLiteral("Next")); }), load.turn);
        scene.click(QAccessible::Button, QStringLiteral("Today"));
        demand(QStringLiteral("to the month"), medianOf([&] {
                   scene.click(QAccessible::PageTab, QStringLiteral("Week"));
                   return scene.click(QAccessible::PageTab, QStringLiteral("Month"));
               }),
               load.month);
        demand(QStringLiteral("to the week"), medianOf([&] {
                   scene.click(QAccessible::PageTab, QStringLiteral("Month"));
                   return scene.click(QAccessible::PageTab, QStringLiteral("Week"));
               }),
               load.month);
    }
    Scene scene(withWholeDays(daytimeSchedules(10'000, 1'000, calendar), calendar), true);
    scene.click(QAccessible::ListItem, QStringLiteral("Schedule"));
    report.atMostTimes(QStringLiteral("a step of a bar above the hours"), median(scene.dragBarOf(today)), frameName,
                       frame, 1);
    report.atMostTimes(QStringLiteral("one week on, with bars above the hours"),
                       medianOf([&] { return scene.click(QAccessible::Button, QStringLiteral("Next")); }), frameName,
                       frame, 2);
}

} // namespace tessaly
