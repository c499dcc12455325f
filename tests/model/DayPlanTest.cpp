#include "model/DayPlan.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

const UserCalendar calendar{QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()};
const QDate plainDay(2026, 11, 25);
const QDate springDay(2026, 3, 29);  // 02:00 becomes 03:00
const QDate autumnDay(2026, 10, 25); // 03:00 becomes 02:00

Instant at(QDate day, const QString &time)
{
    return time == "24:00"_L1 ? calendar.startOfDay(day.addDays(1))
                              : calendar.instant(day, QTime::fromString(time, u"H:mm"_s));
}

/// "9:00-10:30 12:00-13:00", sorted; "<" stands for the evening before, ">" for the morning after.
QList<ScheduleItem> schedules(QDate day, const QString &text)
{
    QList<ScheduleItem> items;
    for (const QString &span : text.split(u' ', Qt::SkipEmptyParts)) {
        const QStringList ends = span.split(u'-');
        ScheduleItem item{.title = span};
        item.date = ends.at(0) == "<"_L1 ? at(day.addDays(-1), u"22:00"_s) : at(day, ends.at(0));
        item.endDate = ends.at(1) == ">"_L1 ? at(day.addDays(1), u"2:00"_s) : at(day, ends.at(1));
        items.append(item);
    }
    return items;
}

QList<FormTimes> busy(QDate day, const QString &text)
{
    return busyTimes(day, schedules(day, text), {}, calendar);
}

} // namespace

class DayPlanTest : public QObject
{
    Q_OBJECT

private slots:
    void theLoadOfADay_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("planned");
        QTest::addColumn<QString>("added");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("end");
        QTest::addColumn<QList<int>>("load");

        const auto row = [](const char *name, QDate day, const char *planned, const char *added, int start, int end,
                            const QList<int> &load) {
            QTest::newRow(name) << day << QString::fromLatin1(planned) << QString::fromLatin1(added) << start << end
                                << load;
        };
        row("an empty day", plainDay, "", "", 8, 20, {0, 0, 720});
        row("overlapping time counts once", plainDay, "9:00-10:40 9:30-10:30 12:00-13:00 14:00-16:00 15:00-15:45", "",
            8, 20, {280, 0, 440});
        row("one within a longer one", plainDay, "9:00-12:00 9:30-10:00 11:30-12:30", "", 8, 20, {210, 0, 510});
        row("only what lies in the hours", plainDay, "6:00-9:00 19:30-21:00 22:00-23:00", "", 8, 20, {90, 0, 630});
        row("over midnight", plainDay, "<-1:30 23:00->", "", 0, 24, {150, 0, 1290});
        row("all day takes no time", plainDay, "0:00-24:00 <-> 9:00-10:00", "", 8, 20, {60, 0, 660});
        row("touching does not count twice", plainDay, "9:00-10:00 10:00-11:00", "", 8, 20, {120, 0, 600});
        row("what is added", plainDay, "10:00-11:30 16:00-17:00 18:30-20:00", "13:00-14:00", 8, 20, {300, 60, 420});
        row("added where something is", plainDay, "9:00-10:30", "10:00-11:00", 8, 20, {120, 30, 600});
        row("no hours", plainDay, "9:00-10:00", "", 8, 8, {0, 0, 0});
        row("an hour less in spring", springDay, "1:00-4:00", "", 0, 24, {120, 0, 1260});
        row("all day in spring", springDay, "0:00-24:00", "", 0, 24, {0, 0, 1380});
        row("an hour more in autumn", autumnDay, "1:00-4:00", "", 0, 24, {240, 0, 1260});
    }
    void theLoadOfADay()
    {
        QFETCH(QDate, day);
        QFETCH(QString, planned);
        QFETCH(QString, added);
        QFETCH(int, start);
        QFETCH(int, end);
        QFETCH(QList<int>, load);
        std::optional<FormTimes> adding;
        if (!added.isEmpty())
            adding = busy(day, added).constFirst();
        const DayLoad found = dayLoad(day, {start, end}, busy(day, planned), adding, calendar);
        QCOMPARE((QList<int>{found.planned, found.added, found.free}), load);
    }

    void theFirstFreeHour_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("planned");
        QTest::addColumn<Instant>("now");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, QDate day, const char *planned, Instant now, const char *expected) {
            QTest::newRow(name) << day << QString::fromLatin1(planned) << now << QString::fromLatin1(expected);
        };
        const Instant before = at(plainDay.addDays(-1), u"10:24"_s);
        row("a later day begins with its hours", plainDay, "", before, "08:00");
        row("today begins at the next quarter", plainDay, "", at(plainDay, u"10:24"_s), "10:30");
        row("on the quarter at once", plainDay, "", at(plainDay, u"10:30"_s), "10:30");
        row("after what is going on", plainDay, "9:00-10:40", at(plainDay, u"10:24"_s), "10:40");
        row("too short a gap", plainDay, "8:00-9:00 9:45-10:00", before, "10:00");
        row("a gap of exactly an hour", plainDay, "8:00-9:00 10:00-19:30", before, "09:00");
        row("a short one within a long one", plainDay, "8:00-12:00 9:00-9:30", before, "12:00");
        row("all day leaves it free", plainDay, "0:00-24:00", before, "08:00");
        row("nothing is free", plainDay, "8:00-19:15", before, "");
        row("the hour ends with the hours", plainDay, "8:00-19:00", before, "19:00");
        row("today is over", plainDay, "", at(plainDay, u"19:01"_s), "");
        row("a day that is over", plainDay, "", at(plainDay.addDays(1), u"9:00"_s), "");
    }
    void theFirstFreeHour()
    {
        QFETCH(QDate, day);
        QFETCH(QString, planned);
        QFETCH(Instant, now);
        QFETCH(QString, expected);
        const auto found = firstFreeHour(day, {8, 20}, busy(day, planned), now, calendar);
        QCOMPARE(found ? calendar.dateTime(found->start).toString(u"HH:mm"_s) : QString(), expected);
        QVERIFY(!found || found->end.seconds - found->start.seconds == 3600);
    }

    void hiddenCalendarsTakeNoTime()
    {
        QList<ScheduleItem> items = schedules(plainDay, u"9:00-10:00"_s);
        items.first().calendarIdentifier = u"work"_s;
        QVERIFY(busyTimes(plainDay, items, {}, calendar).isEmpty());
        QCOMPARE(busyTimes(plainDay, items, {u"work"_s}, calendar).size(), 1);
    }

    void whatIsOpenAndWhatIsPlanned()
    {
        SavedData data;
        data.reminders = {{.title = u"whenever"_s},
                          {.title = u"later"_s, .dueDate = Instant{200}},
                          {.title = u"done"_s, .dueDate = Instant{10}, .isComplete = true},
                          {.title = u"soon"_s, .dueDate = Instant{100}}};
        const GoalTask task{.title = u"draft"_s, .weight = 3};
        const GoalTask finished{.title = u"finished"_s, .isComplete = true};
        const Subgoal subgoal{.tasks = QList<GoalTask>{finished, task}};
        const Subgoal over{.tasks = QList<GoalTask>{{.title = u"of it"_s}}, .isComplete = true};
        data.goals = {{.title = u"Book"_s, .subgoals = QList<Subgoal>{over, subgoal}},
                      {.title = u"Past"_s,
                       .isComplete = true,
                       .subgoals = QList<Subgoal>{{.tasks = QList<GoalTask>{{.title = u"past"_s}}}}}};
        QStringList titles;
        for (const PlanItem &item : openPlanItems(data))
            titles.append(item.title + item.goalTitle);
        QCOMPARE(titles, (QStringList{u"soon"_s, u"later"_s, u"whenever"_s, u"draftBook"_s}));

        const ScheduleItem ofTask{.date = {50}, .endDate = Instant{60}, .plannedItemID = task.id};
        const ScheduleItem ofDone{.plannedItemID = data.reminders.at(2).id};
        const ScheduleItem ofGone{.plannedItemID = QUuid::createUuid()};
        QCOMPARE(plannedItem(ofTask, data), (PlannedItem{u"draft"_s, true, false}));
        QCOMPARE(plannedItem(ofDone, data), (PlannedItem{u"done"_s, false, true}));
        QVERIFY(!plannedItem(ofGone, data));
        QVERIFY(!plannedItem({}, data));

        ScheduleItem earlier = ofTask;
        earlier.date = {20};
        earlier.endDate = Instant{30};
        QCOMPARE(plannedStarts({ofTask, earlier}, {25}).value(task.id), Instant{20});
        QCOMPARE(plannedStarts({ofTask, earlier}, {30}).value(task.id), Instant{50});
        QVERIFY(plannedStarts({ofTask, earlier}, {60}).isEmpty());
    }
};

TESSALY_TEST_MAIN(DayPlanTest)
#include "DayPlanTest.moc"
