#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"
#include "views/goals/GoalViewModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// The goals screen over fakes, on 2026-08-31 12:00 in Vienna, in English.
struct GoalDriver : StoreUnderTest
{
    std::unique_ptr<GoalViewModel> screen;

    void open(const QList<Goal> &goals = {})
    {
        clock.setNow(calendar.instant(QDate(2026, 8, 31), QTime(12, 0)));
        startInEnglish();
        for (const Goal &goal : goals)
            store->addGoal(goal);
        screen = std::make_unique<GoalViewModel>();
        screen->setStore(store.get());
    }
    void type(const char *field, const QString &text) { screen->setProperty(field, text); }
    GoalCardModel &card(qsizetype goal = 0) { return *screen->card(uuidText(store->goals().at(goal).id)); }

    [[nodiscard]] QStringList shown() const
    {
        QStringList lines;
        for (const GoalListRow &row : screen->rows()->rows()) {
            const auto goal = std::ranges::find(store->goals(), row.goalID, &Goal::id);
            const QString text = goal != store->goals().cend() ? goal->title : row.label;
            lines.append(QString::number(static_cast<int>(row.kind)) + u' ' + text);
        }
        return lines;
    }
    [[nodiscard]] QStringList cardRows(qsizetype goal = 0)
    {
        QStringList titles;
        for (const GoalCardRow &row : card(goal).rows()->rows())
            titles.append(row.part == GoalRow::Part::AddTask ? u"+"_s : row.title);
        return titles;
    }
    /// How many saves the action costs.
    template <class Action>
    int saves(Action action)
    {
        const int before = preferences.writeCount();
        action();
        return preferences.writeCount() - before;
    }
};

Goal writing()
{
    return {.title = u"Write"_s,
            .subgoals = QList<Subgoal>{{.title = u"Draft"_s,
                                        .tasks = QList<GoalTask>{{.title = u"one"_s, .weight = 3, .isComplete = true},
                                                                 {.title = u"two"_s, .weight = 1},
                                                                 {.title = u"three"_s, .weight = 4}}},
                                       {.title = u"Figures"_s},
                                       {.title = u"Index"_s, .tasks = {}}}};
}

} // namespace

class GoalScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void aGoalKeepsItsTextsAsTyped()
    {
        GoalDriver given;
        given.open();
        QCOMPARE(given.screen->targetDate().date(), QDate(2026, 9, 30));
        given.type("title", u"  Write "_s);
        given.type("category", u" Work"_s);

        QVERIFY(given.screen->add());

        const Goal goal = given.store->goals().first();
        QCOMPARE(goal.title, u"  Write "_s);
        QCOMPARE(goal.category, u" Work"_s);
        QCOMPARE(goal.summary, std::nullopt);
        QCOMPARE(goal.colorName, u"blue"_s);
        QVERIFY(goal.targetDate.has_value());
        QVERIFY(given.screen->property("title").toString().isEmpty());

        given.type("title", u" \t "_s);
        QVERIFY(!given.screen->add());
        given.type("title", u"No date"_s);
        given.screen->setProperty("hasDueDate", false);
        QVERIFY(given.screen->add());
        QCOMPARE(given.store->goals().last().targetDate, std::nullopt);
        QCOMPARE(given.store->goals().size(), 2);
    }

    void completedGoalsMoveToTheirCategories()
    {
        GoalDriver given;
        given.open({{.title = u"a"_s, .category = u""_s}, {.title = u"b"_s}, {.title = u"c"_s, .category = u"Work"_s}});
        QCOMPARE(given.shown(), (QStringList{u"0 a"_s, u"0 b"_s, u"0 c"_s, u"1 "_s}));
        given.screen->setExpanded(3, true);
        QCOMPARE(given.shown().size(), 4);

        given.card(2).toggle();
        given.card(0).toggle();
        given.screen->setExpanded(1, true);
        QCOMPARE(given.shown(), (QStringList{u"0 b"_s, u"1 "_s, u"2 Uncategorized"_s, u"2 Work"_s}));
        given.screen->setExpanded(2, true);
        QCOMPARE(given.shown().sliced(2), (QStringList{u"2 Uncategorized"_s, u"3 a"_s, u"2 Work"_s}));

        // The open group stays open in the other language.
        given.store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(given.shown().sliced(2), (QStringList{u"2 Work"_s, u"2 未分类"_s, u"3 a"_s}));

        given.card(0).toggle();
        QCOMPARE(given.shown().first(), u"0 a"_s);
    }

    void aKeystrokeChangesOneRowAndSavesOnce()
    {
        GoalDriver given;
        given.open({writing()});
        GoalCardModel &card = given.card();
        QSignalSpy changes(card.rows(), &QAbstractItemModel::dataChanged);
        QSignalSpy listChanges(given.screen->rows(), &QAbstractItemModel::dataChanged);

        QCOMPARE(given.saves([&] { card.setRowTitle(2, u"twos"_s); }), 1);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.first().first().toModelIndex().row(), 2);
        QCOMPARE(given.saved()->goals.first().subgoals->first().tasks->at(1).title, u"twos"_s);

        QCOMPARE(given.saves([&] { card.setTitle(u"Writes"_s); }), 1);
        QCOMPARE(given.saves([&] { card.setTitle(u"Writes"_s); }), 0);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(listChanges.size(), 0);

        // What is typed into an add row is not data.
        QCOMPARE(given.saves([&] { card.setRowTitle(4, u"f"_s); }), 0);
        QCOMPARE(changes.size(), 2);
    }

    void subgoalsAndTasksAreAddedTrimmed()
    {
        GoalDriver given;
        given.open({writing()});
        GoalCardModel &card = given.card();
        QCOMPARE(given.cardRows(), (QStringList{u"Draft"_s, u"one"_s, u"two"_s, u"three"_s, u"+"_s, u"Figures"_s,
                                                u"+"_s, u"Index"_s, u"+"_s}));
        card.setProperty("newSubgoal", u"\t Print "_s);
        QVERIFY(card.addSubgoal());
        QVERIFY(!card.addSubgoal());
        QCOMPARE(given.store->goals().first().subgoals->last().title, u"Print"_s);

        // The subgoal had no list of tasks at all.
        QVERIFY(!card.addTask(8));
        card.setRowTitle(8, u" words "_s);
        card.setRowWeight(8, 0.1 + 0.2);
        QVERIFY(card.addTask(8));
        const GoalTask task = given.store->goals().first().subgoals->at(2).tasks->first();
        QCOMPARE(task.title, u"words"_s);
        QCOMPARE(task.weight, 0.3);
        QCOMPARE(card.rows()->rows().at(9).weight, 1.0);
        QCOMPARE(card.rows()->rows().at(9).title, QString());
    }

    void tickingNeverCascades()
    {
        GoalDriver given;
        given.open({writing()});
        GoalCardModel &card = given.card();
        QCOMPARE(card.percentageText(), u"37%"_s);

        card.toggleRow(0);
        QCOMPARE(card.percentageText(), u"100%"_s);
        QVERIFY(!given.store->goals().first().subgoals->first().tasks->at(1).isComplete);
        card.toggleRow(0);
        card.toggleRow(2);
        QCOMPARE(card.percentageText(), u"50%"_s);
        card.toggle();
        QCOMPARE(card.percentageText(), u"100%"_s);
        QVERIFY(!given.store->goals().first().subgoals->first().isComplete);
        card.toggle();
        QCOMPARE(card.percentageText(), u"50%"_s);
    }

    void thePercentageExplainsItself()
    {
        GoalDriver given;
        given.open({writing(), {.title = u"bare"_s}});
        QCOMPARE(given.card().explanation(),
                 u"✓ one – Weight 3.0 (37%)\n○ two – Weight 1.0 (13%)\n○ three – Weight 4.0 (50%)"_s);
        QVERIFY(given.card(1).explanation().isEmpty());
    }

    void rowsAreDroppedBeforeTheirTarget()
    {
        GoalDriver given;
        given.open({writing()});
        GoalCardModel &card = given.card();
        const QList<GoalCardRow> rows = card.rows()->rows();
        const QString one = uuidText(rows.at(1).id);
        const QString draft = uuidText(rows.at(0).id);
        QSignalSpy resets(card.rows(), &QAbstractItemModel::modelReset);

        QVERIFY(card.drop(one, 3));
        QCOMPARE(given.cardRows().first(4), (QStringList{u"Draft"_s, u"two"_s, u"one"_s, u"three"_s}));
        QVERIFY(!card.drop(u"no id"_s, 1));
        QVERIFY(!card.drop(one, 5));
        QVERIFY(!card.drop(draft, 1));

        QVERIFY(card.drop(draft, 7));
        QCOMPARE(given.cardRows(), (QStringList{u"Figures"_s, u"+"_s, u"Draft"_s, u"two"_s, u"one"_s, u"three"_s,
                                                u"+"_s, u"Index"_s, u"+"_s}));
        QCOMPARE(resets.size(), 0);
    }

    void aDraggedRowLandsOnlyAmongItsOwn()
    {
        GoalDriver given;
        given.open({writing()});
        const GoalCardModel &card = given.card();
        QCOMPARE(card.targetFor(1, 3), 3);
        QCOMPARE(card.targetFor(1, 1), -1);
        QCOMPARE(card.targetFor(1, 4), -1);
        QCOMPARE(card.targetFor(1, 5), -1);
        QCOMPARE(card.targetFor(7, 2), 0);
        QCOMPARE(card.targetFor(7, 6), 5);
        QCOMPARE(card.targetFor(0, 3), -1);
        QCOMPARE(card.targetFor(4, 0), -1);
    }

    void theKeyboardMovesByOnePlaceAlsoToTheLast()
    {
        GoalDriver given;
        given.open({writing()});
        GoalCardModel &card = given.card();
        QVERIFY(card.moveBy(2, 1));
        QCOMPARE(given.cardRows().first(4), (QStringList{u"Draft"_s, u"one"_s, u"three"_s, u"two"_s}));
        QVERIFY(!card.moveBy(3, 1));
        QVERIFY(!card.moveBy(0, -1));
        QVERIFY(card.moveBy(7, -1));
        QCOMPARE(given.store->goals().first().subgoals->at(1).title, u"Index"_s);
    }

    void leavingTheScreenGivesEmptiedNamesBack()
    {
        GoalDriver given;
        given.open({writing(), {.title = u"Read"_s}});
        for (qsizetype goal : {0, 1})
            given.card(goal).toggleEditing();
        for (int row : {0, 1, 2})
            given.card().toggleRowEditing(row);
        given.card().setTitle({});
        given.card().setRowTitle(0, u"  "_s);
        given.card().setRowTitle(1, {});
        given.card().setRowTitle(2, u"second"_s);
        given.card(1).setTitle(u"Read on"_s);

        const int saves = given.saves([&] { given.screen.reset(); });

        QCOMPARE(saves, 1);
        Goal expected = writing();
        expected.subgoals->first().tasks->operator[](1).title = u"second"_s;
        const Goal &left = given.store->goals().first();
        QCOMPARE(left.title, expected.title);
        QCOMPARE(left.subgoals->first().title, expected.subgoals->first().title);
        for (qsizetype task : {0, 1})
            QCOMPARE(left.subgoals->first().tasks->at(task).title, expected.subgoals->first().tasks->at(task).title);
        QCOMPARE(given.store->goals().at(1).title, u"Read on"_s);
    }

    void rowsAndGoalsAreRemovedAtOnce()
    {
        GoalDriver given;
        given.open({writing()});
        QPointer<GoalCardModel> card = &given.card();
        card->removeRow(2);
        card->removeRow(4);
        QCOMPARE(given.cardRows(), (QStringList{u"Draft"_s, u"one"_s, u"three"_s, u"+"_s, u"Index"_s, u"+"_s}));

        given.screen->remove(uuidText(given.store->goals().first().id));
        QVERIFY(given.store->goals().isEmpty());
        QCOMPARE(given.shown(), (QStringList{u"1 "_s}));
        // The view may still look at the card; after the next change nobody does.
        QVERIFY(card);
        given.store->addGoal({.title = u"Next"_s});
        QTRY_VERIFY(!card);
    }

    void editingIsPartOfTheScreenAndNotOfTheData()
    {
        GoalDriver given;
        given.open({writing()});
        GoalCardModel &card = given.card();
        const int saves = given.saves([&] {
            card.toggleEditing();
            card.toggleRowEditing(0);
            card.toggleRowEditing(2);
        });
        QCOMPARE(saves, 0);
        QVERIFY(card.isEditing() && card.rows()->rows().at(0).isEditing && card.rows()->rows().at(2).isEditing);
        card.setRowWeight(2, 2.54);
        QCOMPARE(given.store->goals().first().subgoals->first().tasks->at(1).weight, 2.5);
        QVERIFY(card.rows()->rows().at(2).isEditing);

        // What is left without a name gets its former one back.
        const Goal former = given.store->goals().first();
        card.setTitle(u" "_s);
        card.setRowTitle(0, QString());
        card.setRowTitle(2, u"\t"_s);
        card.toggleEditing();
        card.toggleRowEditing(0);
        card.toggleRowEditing(2);
        QCOMPARE(given.store->goals().first(), former);
    }
};

TESSALY_TEST_MAIN(GoalScreenTest)
#include "GoalScreenTest.moc"
