#include "model/Restoration.h"
#include "model/Uuid.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

/// A row as "sign title part", such as "+ Lecture" or "~ Report DueDate".
QStringList words(const StateChange &change)
{
    static const QHash<DifferingPart, QString> parts{{DifferingPart::Nothing, {}},
                                                     {DifferingPart::Title, u" title"_s},
                                                     {DifferingPart::Time, u" time"_s},
                                                     {DifferingPart::DueDate, u" due"_s},
                                                     {DifferingPart::Completion, u" tick"_s},
                                                     {DifferingPart::Notes, u" notes"_s},
                                                     {DifferingPart::Tasks, u" tasks"_s},
                                                     {DifferingPart::Category, u" category"_s},
                                                     {DifferingPart::Color, u" color"_s},
                                                     {DifferingPart::Address, u" address"_s},
                                                     {DifferingPart::Value, u" value"_s}};
    QStringList words;
    for (const DifferenceRow &row : differenceRows(change)) {
        const QString sign = row.restoration == Restoration::BringBack ? u"+ "_s
                             : row.restoration == Restoration::Change  ? u"~ "_s
                                                                       : u"- "_s;
        words.append(sign + (row.title.isEmpty() ? row.key : row.title) + parts.value(row.part));
    }
    return words;
}

const QUuid id1 = QUuid::createUuid();
const QUuid id2 = QUuid::createUuid();

ScheduleItem schedule(const QUuid &id, const QString &title)
{
    return {.id = id, .title = title, .date = {800'000'000}};
}

template <class Record, class Change>
Record with(Record record, Change change)
{
    change(record);
    return record;
}

} // namespace

class RestorationTest : public QObject
{
    Q_OBJECT

private slots:
    void eachDifferenceIsARow_data()
    {
        QTest::addColumn<PlannerState>("now");
        QTest::addColumn<PlannerState>("then");
        QTest::addColumn<QStringList>("rows");

        const ScheduleItem a = schedule(id1, u"a"_s);
        const ScheduleItem b = schedule(id2, u"b"_s);
        QTest::newRow("nothing") << PlannerState{.data = {.schedules = {a}}} << PlannerState{.data = {.schedules = {a}}}
                                 << QStringList();
        QTest::newRow("another order") << PlannerState{.data = {.schedules = {a, b}}}
                                       << PlannerState{.data = {.schedules = {b, a}}} << QStringList();
        QTest::newRow("back before changed before removed")
            << PlannerState{.data = {.schedules = {schedule(QUuid::createUuid(), u"new"_s), schedule(id1, u"x"_s)}}}
            << PlannerState{.data = {.schedules = {a, b}}} << QStringList{u"+ b"_s, u"~ a title"_s, u"- new"_s};

        const auto addSchedule = [&](const char *name, auto change, const QString &part) {
            QTest::newRow(name) << PlannerState{.data = {.schedules = {with(a, change)}}}
                                << PlannerState{.data = {.schedules = {a}}}
                                << (part.isEmpty() ? QStringList() : QStringList(u"~ a "_s + part));
        };
        addSchedule(
            "start", [](ScheduleItem &item) { item.date = {800'003'600}; }, u"time"_s);
        addSchedule(
            "end", [](ScheduleItem &item) { item.endDate = item.date.plus(1800); }, u"time"_s);
        addSchedule(
            "an hour said or not", [](ScheduleItem &item) { item.endDate = item.date.plus(3600); }, u"value"_s);
        addSchedule(
            "notes", [](ScheduleItem &item) { item.notes = u"n"_s; }, u"notes"_s);
        addSchedule(
            "tasks", [](ScheduleItem &item) { item.tasks->append({.title = u"t"_s}); }, u"tasks"_s);
        addSchedule(
            "color", [](ScheduleItem &item) { item.colorName = u"pink"_s; }, u"color"_s);
        addSchedule("linked meanwhile", [](ScheduleItem &item) { item.calendarIdentifier = u"c"_s; }, {});

        const ReminderItem toDo{.id = id1, .title = u"t"_s};
        const auto addToDo = [&](const char *name, auto change, const QString &part) {
            QTest::newRow(name) << PlannerState{.data = {.reminders = {with(toDo, change)}}}
                                << PlannerState{.data = {.reminders = {toDo}}} << QStringList(u"~ t "_s + part);
        };
        addToDo(
            "due date", [](ReminderItem &item) { item.dueDate = {1}; }, u"due"_s);
        addToDo(
            "ticked", [](ReminderItem &item) { item.isComplete = true; }, u"tick"_s);
        addToDo(
            "requirement", [](ReminderItem &item) { item.requirement = u"r"_s; }, u"notes"_s);

        const Goal goal{.id = id1, .title = u"g"_s};
        const auto addGoal = [&](const char *name, auto change, const QString &part) {
            QTest::newRow(name) << PlannerState{.data = {.goals = {with(goal, change)}}}
                                << PlannerState{.data = {.goals = {goal}}} << QStringList(u"~ g "_s + part);
        };
        addGoal(
            "progress", [](Goal &changed) { changed.progress = 0.5; }, u"tick"_s);
        addGoal(
            "subgoals", [](Goal &changed) { changed.subgoals->append(Subgoal()); }, u"tasks"_s);
        addGoal(
            "goal's color", [](Goal &changed) { changed.colorName = u"pink"_s; }, u"color"_s);

        const CalendarFeed feed{.id = id1, .name = u"f"_s, .urlString = u"https://a.org"_s};
        QTest::newRow("a link that was read again")
            << PlannerState{.feeds = {with(feed, [](CalendarFeed &read) { read.lastUpdated = Instant{1}; })}}
            << PlannerState{.feeds = {feed}} << QStringList();
        QTest::newRow("a link's address")
            << PlannerState{.feeds = {with(feed, [](CalendarFeed &read) { read.urlString = u"https://b.org"_s; })}}
            << PlannerState{.feeds = {feed}} << QStringList{u"~ f address"_s};

        const MarkdownDocument document{.id = id1, .title = u"d"_s};
        const MarkdownCategory category{.id = id2, .name = u"c"_s};
        QTest::newRow("a document that was saved again")
            << PlannerState{.library = {{}, {with(document, [](MarkdownDocument &it) { it.updatedAt = {1}; })}}}
            << PlannerState{.library = {{}, {document}}} << QStringList();
        QTest::newRow("a category that went")
            << PlannerState{.library = {{}, {document}}}
            << PlannerState{.library = {{category},
                                        {with(document, [](MarkdownDocument &it) { it.categoryID = id2; })}}}
            << QStringList{u"+ c"_s, u"~ d category"_s};
        QTest::newRow("settings") << PlannerState{.settings = {{u"a"_s, true}, {u"b"_s, qint64{1}}}}
                                  << PlannerState{.settings = {{u"b"_s, qint64{2}}, {u"c"_s, u"x"_s}}}
                                  << QStringList{u"~ a value"_s, u"~ b value"_s, u"~ c value"_s};
    }

    void eachDifferenceIsARow()
    {
        QFETCH(const PlannerState, now);
        QFETCH(const PlannerState, then);
        QTEST(words(restoration(now, then)), "rows");
    }

    void aRestoredScheduleStaysWithALinkThatComesBackToo_data()
    {
        QTest::addColumn<QString>("calendar");
        QTest::addColumn<bool>("isLinkChosen");
        QTest::addColumn<bool>("isLinked");
        const QString ofLink = feedCalendarIdentifier(id1);
        QTest::newRow("with its link") << ofLink << true << true;
        QTest::newRow("without its link") << ofLink << false << false;
        QTest::newRow("of a calendar") << u"work"_s << true << false;
    }

    void aRestoredScheduleStaysWithALinkThatComesBackToo()
    {
        QFETCH(const QString, calendar);
        QFETCH(const bool, isLinkChosen);
        QFETCH(const bool, isLinked);
        ScheduleItem item = schedule(id2, u"a"_s);
        item.calendarIdentifier = calendar;
        item.calendarEventIdentifier = u"event"_s;
        const PlannerState then{.data = {.schedules = {item}}, .feeds = {CalendarFeed{.id = id1, .name = u"f"_s}}};
        QSet<QString> keys{uuidText(id2)};
        if (isLinkChosen)
            keys.insert(uuidText(id1));

        const StateChange change = chosenPart(restoration({}, then), keys);

        QCOMPARE(change.feeds.size(), isLinkChosen ? 1 : 0);
        QCOMPARE(change.schedules.constFirst().after->calendarIdentifier.has_value(), isLinked);
        // An event that is there after all is not doubled.
        QCOMPARE(change.schedules.constFirst().after->calendarEventIdentifier, u"event"_s);
    }

    void aRestoredScheduleTakesThePlaceOfAnotherOfItsEvent()
    {
        ScheduleItem before = schedule(id1, u"a"_s);
        before.calendarIdentifier = feedCalendarIdentifier(QUuid::createUuid());
        before.calendarEventIdentifier = u"event"_s;
        ScheduleItem again = before;
        again.id = id2;
        const PlannerState then{.data = {.schedules = {before}}};
        const PlannerState now{.data = {.schedules = {again}}};

        const StateChange all = chosenPart(restoration(now, then), {uuidText(id1), uuidText(id2)});
        QCOMPARE(all.schedules.size(), 2);
        for (const RecordChange<ScheduleItem> &change : all.schedules)
            QVERIFY(!change.after || *change.after == before);

        // Beside the other one it is the user's own.
        const StateChange beside = chosenPart(restoration(now, then), {uuidText(id1)});
        QCOMPARE(beside.schedules.constFirst().after->calendarIdentifier, std::nullopt);
    }

    void onlyWhatIsChosenChanges()
    {
        const ScheduleItem a = schedule(id1, u"a"_s);
        const PlannerState now{.data = {.schedules = {schedule(id1, u"x"_s)}}, .settings = {{u"s"_s, true}}};
        const PlannerState then{.data = {.schedules = {a, schedule(id2, u"b"_s)}}, .settings = {{u"s"_s, false}}};
        const StateChange all = restoration(now, then);
        QCOMPARE(words(chosenPart(all, {uuidText(id1)})), QStringList{u"~ a title"_s});
        QCOMPARE(words(chosenPart(all, {uuidText(id2), u"s"_s})), (QStringList{u"+ b"_s, u"~ s value"_s}));
        QVERIFY(chosenPart(all, {}).isEmpty());
    }
};

TESSALY_TEST_MAIN(RestorationTest)
#include "RestorationTest.moc"
