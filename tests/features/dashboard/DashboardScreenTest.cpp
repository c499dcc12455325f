#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"
#include "views/dashboard/DashboardViewModel.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// The overview on Wednesday 2026-09-09 12:00 in Vienna.
struct DashboardDriver : StoreUnderTest
{
    DashboardViewModel screen;

    DashboardDriver() { clock.setNow(at(9, 12)); }
    [[nodiscard]] Instant at(int day, int hour, int minute = 0) const
    {
        return calendar.instant(QDate(2026, 9, day), QTime(hour, minute));
    }
    void open() { screen.setStore(&start()); }

    [[nodiscard]] QStringList goals()
    {
        QStringList lines;
        for (int row = 0; row < screen.goals()->rowCount(); ++row) {
            const QModelIndex index = screen.goals()->index(row, 0);
            lines.append(index.data(Qt::UserRole).toString() + u' ' + index.data(Qt::UserRole + 2).toString());
        }
        return lines;
    }
};

Goal goalWith(const QString &title, const QList<double> &openWeights, const QList<double> &doneWeights)
{
    QList<GoalTask> tasks;
    for (const double weight : openWeights)
        tasks.append(GoalTask{.weight = weight});
    for (const double weight : doneWeights)
        tasks.append(GoalTask{.weight = weight, .isComplete = true});
    return {.title = title, .subgoals = QList<Subgoal>{{.tasks = tasks}}};
}

} // namespace

class DashboardScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void theGreetingFollowsNameAndLanguage()
    {
        DashboardDriver given;
        given.open();
        QSignalSpy changes(&given.screen, &DashboardViewModel::greetingChanged);

        QCOMPARE(given.screen.greeting(), u"久待你的再度光临。"_s);
        given.store->setPreferredName(u"Mei"_s);
        QCOMPARE(given.screen.greeting(), u"Mei，久待你的再度光临。"_s);
        given.store->setInterfaceLanguage(AppLanguage::English);
        QCOMPARE(given.screen.greeting(), u"Mei, your return has been awaited with quiet joy."_s);
        given.store->setPreferredName({});
        QCOMPARE(given.screen.greeting(), u"Your return has been awaited with quiet joy."_s);
        QCOMPARE(changes.size(), 3);
    }

    void theNextScheduleFollowsTheTime()
    {
        DashboardDriver given;
        given.open();
        given.store->addSchedule({.title = u"Review"_s, .date = given.at(9, 15), .endDate = given.at(9, 16)});
        given.store->addSchedule({.title = u"Lunch"_s, .date = given.at(9, 12), .endDate = given.at(9, 13)});
        given.store->addSchedule({.title = u"Tomorrow"_s, .date = given.at(10, 9)});
        QCOMPARE(given.screen.nextTitle(), u"Lunch"_s);
        QCOMPARE(given.screen.nextDateText(), u"2026年9月9日 12:00"_s);
        QCOMPARE(given.screen.remainingCount(), 2);
        QSignalSpy changes(&given.screen, &DashboardViewModel::dayChanged);

        given.clock.advance(3600);
        QCOMPARE(given.screen.nextTitle(), u"Lunch"_s);
        QCOMPARE(changes.size(), 0);
        given.clock.advance(1);
        QCOMPARE(given.screen.nextTitle(), u"Review"_s);
        QCOMPARE(given.screen.remainingCount(), 1);
        QCOMPARE(changes.size(), 1);

        given.clock.advance(5 * 3600);
        QVERIFY(!given.screen.hasNext());
        QVERIFY(given.screen.nextDateText().isEmpty());
        given.clock.advance(6 * 3600);
        QCOMPARE(given.screen.nextTitle(), u"Tomorrow"_s);
    }

    void theFirstThreeGoalsAreListedAndAllAreCounted()
    {
        DashboardDriver given;
        given.open();
        given.store->addGoal(goalWith(u"full"_s, {}, {1}));
        given.store->addGoal(goalWith(u"nearly"_s, {0.01}, {9.99}));
        given.store->addGoal(goalWith(u"begun"_s, {3}, {1}));
        given.store->addGoal(goalWith(u"fourth"_s, {1}, {}));

        QCOMPARE(given.goals(), (QStringList{u"full 100"_s, u"nearly 99"_s, u"begun 25"_s}));
        QCOMPARE(given.screen.activeGoalCount(), 3);

        QSignalSpy resets(given.screen.goals(), &QAbstractItemModel::modelReset);
        Goal begun = given.store->goals().at(2);
        begun.isComplete = true;
        given.store->updateGoal(begun);
        QCOMPARE(given.goals().last(), u"begun 100"_s);
        QCOMPARE(given.screen.activeGoalCount(), 2);
        QCOMPARE(resets.size(), 0);
    }
};

TESSALY_TEST_MAIN(DashboardScreenTest)
#include "DashboardScreenTest.moc"
