#include "model/StateChange.h"
#include "model/StepDescription.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

using Kind = RowsChange::Kind;
using Changes = QList<RecordChange<ReminderItem>>;

/// Always the same record for a letter.
ReminderItem item(QChar letter, const QString &title = {})
{
    const QUuid id = QUuid::createUuidV5(QUuid(), QString(letter));
    return {.id = id, .title = title.isEmpty() ? QString(letter) : title};
}

QList<ReminderItem> items(const QString &letters)
{
    QList<ReminderItem> list;
    for (const QChar letter : letters)
        list.append(item(letter.toLower(), letter.isUpper() ? QStringLiteral("changed") : QString()));
    return list;
}

RecordChange<ReminderItem> edit(QChar letter)
{
    return editOf(item(letter), item(letter, QStringLiteral("changed")), 0);
}

Goal goalWith(const QList<Subgoal> &subgoals)
{
    static const QUuid id = QUuid::createUuid();
    return {.id = id, .title = QStringLiteral("G"), .subgoals = subgoals};
}

} // namespace

class StateChangeTest : public QObject
{
    Q_OBJECT

private slots:
    void changesAreAppliedAndTheirInverseLeadsBack_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<Changes>("changes");
        // Upper case: an edited record.
        QTest::addColumn<QString>("after");
        QTest::addColumn<RowsChange>("rows");

        const auto row = [](const char *name, const char *before, const Changes &changes, const char *after,
                            const RowsChange &rows) {
            QTest::newRow(name) << QString::fromLatin1(before) << changes << QString::fromLatin1(after) << rows;
        };
        row("added at the end", "ab", {additionOf(item(u'c'), 2)}, "abc", {Kind::Inserted, 2, 1});
        row("put back", "ac", {additionOf(item(u'b'), 1)}, "abc", {Kind::Inserted, 1, 1});
        row("put back past the end", "a", {additionOf(item(u'b'), 7)}, "ab", {Kind::Inserted, 1, 1});
        row("put back here and there", "bd",
            {additionOf(item(u'e'), 4), additionOf(item(u'a'), 0), additionOf(item(u'c'), 2)}, "abcde", {});
        row("put back side by side", "ad", {additionOf(item(u'b'), 1), additionOf(item(u'c'), 2)}, "abcd",
            {Kind::Inserted, 1, 2});
        row("removed", "abc", {removalOf(item(u'b'), 1)}, "ac", {Kind::Removed, 1, 1});
        row("removed side by side", "abcd", {removalOf(item(u'b'), 1), removalOf(item(u'c'), 2)}, "ad",
            {Kind::Removed, 1, 2});
        row("removed here and there", "abcde", {removalOf(item(u'a'), 0), removalOf(item(u'e'), 4)}, "bcd", {});
        row("removed with its double", "abca", {removalOf(item(u'a'), 0)}, "bc", {});
        row("edited", "abc", {edit(u'b')}, "aBc", {Kind::Updated, 1, 1});
        row("edited here and there", "abcd", {edit(u'b'), edit(u'd')}, "aBcD", {Kind::Updated, 1, 3});
        row("everything at once", "abc", {edit(u'c'), removalOf(item(u'a'), 0), additionOf(item(u'd'), 1)}, "bdC", {});
        row("removed from the wrong row", "abc", {removalOf(item(u'b'), 0)}, "ac", {Kind::Removed, 1, 1});
    }

    void changesAreAppliedAndTheirInverseLeadsBack()
    {
        QFETCH(const QString, before);
        QFETCH(const Changes, changes);
        QFETCH(const QString, after);
        QFETCH(const RowsChange, rows);
        QList<ReminderItem> list = items(before);

        const auto applied = applyChanges(list, changes);
        QCOMPARE(list, items(after));
        QCOMPARE(applied.rows, rows);

        (void)applyChanges(list, inverted({.reminders = applied.changes}).reminders);
        QCOMPARE(list, items(before));
    }

    void whatIsGoneOrThereAlreadyIsLeftOut_data()
    {
        QTest::addColumn<Changes>("changes");

        QTest::newRow("an edit of none") << Changes{edit(u'x')};
        QTest::newRow("a removal of none") << Changes{removalOf(item(u'x'), 0)};
        QTest::newRow("an addition of one that is there") << Changes{additionOf(item(u'a'), 0)};
        QTest::newRow("an edit that changes nothing") << Changes{editOf(item(u'a'), item(u'a'), 0)};
        QTest::newRow("an edit of a field that others changed")
            << Changes{editOf(item(u'a', QStringLiteral("y")), item(u'a', QStringLiteral("z")), 0)};
    }

    void whatIsGoneOrThereAlreadyIsLeftOut()
    {
        QFETCH(const Changes, changes);
        QList<ReminderItem> list = items(QStringLiteral("ab"));

        const auto applied = applyChanges(list, changes);

        QVERIFY(!applied.rows);
        QVERIFY(applied.changes.isEmpty());
        QCOMPARE(list, items(QStringLiteral("ab")));
    }

    void anEditSetsOnlyItsOwnFields()
    {
        ReminderItem edited = item(u'a');
        edited.title = QStringLiteral("mine");
        edited.requirement = QStringLiteral("read");
        ReminderItem current = item(u'a');
        current.title = QStringLiteral("theirs");
        current.dueDate = Instant{5};
        QList<ReminderItem> list{current};

        (void)applyChanges(list, {editOf(item(u'a'), edited, 0)});

        current.requirement = QStringLiteral("read");
        QCOMPARE(list, QList{current});
    }

    void onlyEditsOfOneTextContinueEachOther_data()
    {
        QTest::addColumn<StateChange>("first");
        QTest::addColumn<StateChange>("second");
        QTest::addColumn<bool>("isSame");

        const auto titled = [](const QString &from, const QString &to) {
            return StateChange{.reminders = {editOf(item(u'a', from), item(u'a', to), 0)}};
        };
        const StateChange typed = titled(QStringLiteral("1"), QStringLiteral("12"));
        const StateChange further = titled(QStringLiteral("12"), QStringLiteral("123"));
        ReminderItem required = item(u'a', QStringLiteral("12"));
        required.requirement = QStringLiteral("r");
        const StateChange other{.reminders = {editOf(item(u'a', QStringLiteral("12")), required, 0)}};
        ReminderItem ticked = item(u'a', QStringLiteral("12"));
        ticked.isComplete = true;
        const StateChange tick{.reminders = {editOf(item(u'a', QStringLiteral("12")), ticked, 0)}};
        StateChange both = further;
        both.reminders.first().after->requirement = QStringLiteral("r");
        StateChange waiting = further;
        waiting.waitingAfter.append(WaitingReminder());

        QTest::newRow("the same title") << typed << further << true;
        QTest::newRow("another text") << typed << other << false;
        QTest::newRow("a text and another") << typed << both << false;
        QTest::newRow("a tick twice") << tick << tick << false;
        QTest::newRow("another record") << typed << StateChange{.reminders = {edit(u'b')}} << false;
        QTest::newRow("an addition") << StateChange{.reminders = {additionOf(item(u'a'), 0)}} << typed << false;
        QTest::newRow("a removal") << typed << StateChange{.reminders = {removalOf(item(u'a'), 0)}} << false;
        QTest::newRow("with a reminder") << typed << waiting << false;
        QTest::newRow("nothing") << StateChange() << StateChange() << false;
    }

    void onlyEditsOfOneTextContinueEachOther()
    {
        QFETCH(const StateChange, first);
        QFETCH(const StateChange, second);
        QFETCH(const bool, isSame);

        QCOMPARE(isSameText(first, second), isSame);
        if (isSame)
            QCOMPARE(joinedEdits(first, second).reminders,
                     (Changes{editOf(*first.reminders.constFirst().before, *second.reminders.constFirst().after, 0)}));
    }

    void joinedMovesBringBackTheReminderThatTheFirstTook()
    {
        const ScheduleItem before{.title = QStringLiteral("S"), .date = {0}};
        ScheduleItem later = before;
        later.date = {900};
        ScheduleItem last = before;
        last.date = {1800};
        const WaitingReminder due{.identifier = QStringLiteral("due")};
        const WaitingReminder passing{.identifier = QStringLiteral("passing")};
        const StateChange first{
            .schedules = {editOf(before, later, 0)}, .waitingBefore = {due}, .waitingAfter = {passing}};
        const StateChange second{.schedules = {editOf(later, last, 0)}, .waitingBefore = {passing}};

        QVERIFY(isSameRecord(first, second));
        const StateChange joined = joinedEdits(first, second);

        QCOMPARE(joined.waitingBefore, QList{due});
        QCOMPARE(joined.waitingAfter, QList<WaitingReminder>());
        QVERIFY(*joined.schedules.constFirst().after == last);
    }

    void aStepIsDescribedByWhatDiffers_data()
    {
        QTest::addColumn<StateChange>("change");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("removed");

        const auto row = [](const char *name, const StateChange &change, const QStringList &removed = {}) {
            QTest::newRow(name) << change << QString::fromLatin1(name) << removed;
        };
        const ReminderItem a = item(u'a');
        ReminderItem done = a;
        done.isComplete = true;
        row("Add to-do", {.reminders = {additionOf(a, 0)}});
        row("Delete to-do", {.reminders = {removalOf(a, 0)}}, {QStringLiteral("a")});
        row("Edit to-do", {.reminders = {edit(u'a')}});
        row("Complete to-do", {.reminders = {editOf(a, done, 0)}});
        row("Reopen to-do", {.reminders = {editOf(done, a, 0)}});

        const GoalTask task{.title = QStringLiteral("T")};
        GoalTask heavier = task;
        heavier.weight = 2;
        const Subgoal empty{.title = QStringLiteral("S")};
        const Subgoal other{.title = QStringLiteral("O")};
        Subgoal full = empty;
        full.tasks = QList{task};
        Subgoal heavy = empty;
        heavy.tasks = QList{heavier};
        Subgoal complete = empty;
        complete.isComplete = true;
        const auto goals = [](const QList<Subgoal> &before, const QList<Subgoal> &after) {
            return StateChange{.goals = {editOf(goalWith(before), goalWith(after), 0)}};
        };
        row("Delete goal", {.goals = {removalOf(goalWith({full}), 0)}}, {QStringLiteral("G")});
        row("Add subgoal", goals({}, {empty}));
        row("Delete subgoal", goals({full, other}, {other}), {QStringLiteral("S")});
        row("Move subgoal", goals({full, other}, {other, full}));
        row("Complete subgoal", goals({other, empty}, {other, complete}));
        row("Add task", goals({empty}, {full}));
        row("Delete task", goals({full}, {empty}), {QStringLiteral("T")});
        row("Edit task", goals({full}, {heavy}));

        const ScheduleItem schedule{.title = QStringLiteral("L")};
        ScheduleItem noted = schedule;
        noted.notes = QStringLiteral("n");
        const CalendarFeed feed{.name = QStringLiteral("F")};
        const MarkdownCategory category{.name = QStringLiteral("C")};
        const MarkdownDocument document{.title = QStringLiteral("D"), .categoryID = category.id};
        const MarkdownDocument uncategorised{.id = document.id, .title = QStringLiteral("D")};
        row("Delete schedule", {.schedules = {removalOf(schedule, 0)}}, {QStringLiteral("L")});
        row("Edit schedule", {.schedules = {editOf(schedule, noted, 0)}});
        row("Delete linked calendar", {.schedules = {removalOf(schedule, 0)}, .feeds = {removalOf(feed, 0)}},
            {QStringLiteral("F")});
        row("Delete category",
            {.categories = {removalOf(category, 0)}, .documents = {editOf(document, uncategorised, 0)}},
            {QStringLiteral("C")});
        row("Edit document", {.documents = {editOf(document, uncategorised, 0)}});
    }

    void aStepIsDescribedByWhatDiffers()
    {
        QFETCH(const StateChange, change);
        QFETCH(const QString, name);
        QFETCH(const QStringList, removed);

        const StepDescription description = describe(change);

        QCOMPARE(description.name.english, name);
        QCOMPARE(description.removed, removed);
    }
};

TESSALY_TEST_MAIN(StateChangeTest)
#include "StateChangeTest.moc"
