#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

#include <QStyleHints>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;
constexpr QAccessible::Role circle = QAccessible::CheckBox;

struct DayWindow : WindowUnderTest
{
    /// So soon after the click before that the two make a double click.
    void clickAgainSoon(QPoint place) const
    {
        QTest::lastMouseTimestamp -= QGuiApplication::styleHints()->mouseDoubleClickInterval() - 50;
        QTest::mouseClick(&window(), Qt::LeftButton, {}, place);
    }
    [[nodiscard]] QStringList taskTitles() const
    {
        QStringList titles;
        for (const GoalTask &task : *planner.store->goals().first().subgoals->first().tasks)
            titles.append(task.title);
        return titles;
    }
};

Goal writing()
{
    return {.title = u"Write"_s,
            .subgoals = QList<Subgoal>{
                {.title = u"Draft"_s,
                 .tasks = QList<GoalTask>{{.title = u"one"_s}, {.title = u"two"_s}, {.title = u"three"_s}}}}};
}

/// Names of the texts that a screen reader meets beneath.
QStringList readTexts(const QAccessibleInterface *parent)
{
    QStringList texts;
    for (int index = 0; index < parent->childCount(); ++index) {
        const QAccessibleInterface *child = parent->child(index);
        if (child->role() == QAccessible::StaticText)
            texts.append(child->text(QAccessible::Name));
        texts.append(readTexts(child));
    }
    return texts;
}

} // namespace

class DayScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void aToDoIsTypedTickedAndDeleted()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Reminders, {.reminders = {{.title = u"Sort"_s}}});
        QTRY_VERIFY(ui.find(field, u"To-do name"_s));
        QVERIFY(ui.click(field, u"To-do name"_s));
        ui.type(u"Report"_s);
        ui.press(Qt::Key_Return);

        QCOMPARE(ui.planner.store->reminders().last().title, u"Report"_s);
        QTRY_VERIFY(ui.find(circle, u"Report"_s));
        QVERIFY(ui.hasFocus(field, u"To-do name"_s));
        QCOMPARE(ui.find(field, u"To-do name"_s)->property("text").toString(), QString());

        QVERIFY(ui.click(circle, u"Sort"_s));
        QVERIFY(ui.planner.store->reminders().first().isComplete);
        QTRY_VERIFY(!ui.find(circle, u"Sort"_s));
        QVERIFY(ui.click(button, u"Delete, Report"_s));
        QCOMPARE(ui.planner.store->reminders().size(), 1);
    }

    void aToDoWithoutDueDateHasNoTextForOne()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Reminders, {.reminders = {{.title = u"Sort"_s, .requirement = u"By colour"_s}}});
        QTRY_VERIFY(ui.find(circle, u"Sort"_s));

        const QStringList texts = readTexts(QAccessible::queryAccessibleInterface(&ui.window()));
        QVERIFY(texts.contains(u"By colour"_s));
        QVERIFY(!texts.contains(QString()));
    }

    void aDeletionPassesTheFocusOnWithARingForKeysOnly_data()
    {
        QTest::addColumn<ShellModel::SidebarItem>("section");
        QTest::addColumn<bool>("isByKey");
        QTest::addColumn<QString>("title");
        QTest::newRow("to-dos, keyboard") << ShellModel::Reminders << true << u"To-do name"_s;
        QTest::newRow("to-dos, mouse") << ShellModel::Reminders << false << u"To-do name"_s;
        QTest::newRow("goals, keyboard") << ShellModel::Goals << true << u"Main goal name"_s;
        QTest::newRow("goals, mouse") << ShellModel::Goals << false << u"Main goal name"_s;
    }

    void aDeletionPassesTheFocusOnWithARingForKeysOnly()
    {
        QFETCH(const ShellModel::SidebarItem, section);
        QFETCH(const bool, isByKey);
        QFETCH(const QString, title);
        DayWindow ui;
        ui.openAt(section, {.reminders = {{.title = u"A"_s}, {.title = u"B"_s}, {.title = u"C"_s}},
                            .goals = {{.title = u"A"_s}, {.title = u"B"_s}, {.title = u"C"_s}}});
        QTRY_VERIFY(ui.find(button, u"Delete, B"_s));
        ui.find(button, u"Delete, B"_s)->forceActiveFocus(Qt::TabFocusReason);
        const auto remove = [&](const QString &name) {
            if (isByKey)
                ui.press(Qt::Key_Space);
            else
                QVERIFY(ui.click(button, name));
        };

        remove(u"Delete, B"_s);
        QTRY_VERIFY(ui.hasFocus(button, u"Delete, C"_s));
        QCOMPARE(ui.find(button, u"Delete, C"_s)->property("visualFocus").toBool(), isByKey);
        remove(u"Delete, C"_s);
        QTRY_VERIFY(ui.hasFocus(button, u"Delete, A"_s));
        remove(u"Delete, A"_s);
        QTRY_VERIFY(ui.hasFocus(field, title));
    }

    void aTickedToDoPassesTheFocusOnWithARingForKeysOnly_data()
    {
        QTest::addColumn<bool>("isByKey");
        QTest::newRow("keyboard") << true;
        QTest::newRow("mouse") << false;
    }

    void aTickedToDoPassesTheFocusOnWithARingForKeysOnly()
    {
        QFETCH(const bool, isByKey);
        DayWindow ui;
        ui.openAt(ShellModel::Reminders, {.reminders = {{.title = u"A"_s}, {.title = u"B"_s}, {.title = u"C"_s}}});
        QTRY_VERIFY(ui.find(circle, u"B"_s));
        if (isByKey)
            ui.find(circle, u"B"_s)->forceActiveFocus(Qt::TabFocusReason);
        const auto tick = [&](const QString &title) {
            if (isByKey)
                ui.press(Qt::Key_Space);
            else
                QVERIFY(ui.click(circle, title));
        };

        tick(u"B"_s);
        QTRY_VERIFY(ui.hasFocus(circle, u"C"_s));
        QCOMPARE(ui.find(circle, u"C"_s)->property("visualFocus").toBool(), isByKey);
        tick(u"C"_s);
        QTRY_VERIFY(ui.hasFocus(circle, u"A"_s));
        tick(u"A"_s);
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name"_s));
        QVERIFY(std::ranges::all_of(ui.planner.store->reminders(), &ReminderItem::isComplete));
    }

    void aTickedGoalPassesTheFocusOn()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {{.title = u"A"_s}, {.title = u"B"_s}, {.title = u"C"_s}}});
        QTRY_VERIFY(ui.find(circle, u"C"_s));
        ui.find(circle, u"C"_s)->forceActiveFocus(Qt::TabFocusReason);

        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.hasFocus(circle, u"B"_s));
        // In the group of the finished ones it goes to the headers.
        ui.find(button, u"Completed"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.find(button, u"Uncategorized"_s));
        ui.find(button, u"Uncategorized"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.find(circle, u"C"_s));
        ui.find(circle, u"C"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Space);
        QTRY_VERIFY(!ui.planner.store->goals().last().isComplete);
        QTRY_VERIFY(ui.hasFocus(field, u"Main goal name"_s));
    }

    void aTaskAddedByDoubleClickStays()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.find(button, u"Add task"_s));
        QVERIFY(ui.click(field, u"Add a task"_s));
        ui.type(u"four"_s);
        const QQuickItem *add = ui.find(button, u"Add task"_s);
        const QPoint place = add->mapToScene(QPointF(add->width() - 12, add->height() / 2)).toPoint();

        QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, place);
        QTRY_VERIFY(ui.find(button, u"Delete, four"_s));
        QTRY_VERIFY(!add->contains(add->mapFromScene(place)));
        ui.clickAgainSoon(place);
        QCOMPARE(ui.taskTitles().size(), 4);
        QVERIFY2(ui.hasFocus(field, u"Add a task"_s), "the next task is typed where the first was");
        QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, place);
        QCOMPARE(ui.taskTitles().size(), 3);
    }

    void aTripleClickActsOnOneRow_data()
    {
        QTest::addColumn<QAccessible::Role>("role");
        QTest::addColumn<QString>("prefix");
        QTest::newRow("deleted") << button << u"Delete, "_s;
        QTest::newRow("ticked") << circle << QString();
    }

    void aTripleClickActsOnOneRow()
    {
        QFETCH(const QAccessible::Role, role);
        QFETCH(const QString, prefix);
        DayWindow ui;
        ui.openAt(ShellModel::Reminders, {.reminders = {{.title = u"A"_s}, {.title = u"B"_s}, {.title = u"C"_s}}});
        QTRY_VERIFY(ui.find(role, prefix + u"A"_s));
        const QPoint place = ui.middleOf(role, prefix + u"A"_s);
        const auto openCount = [&ui] {
            return std::ranges::count(ui.planner.store->reminders(), false, &ReminderItem::isComplete);
        };

        QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, place);
        for (int repeat = 0; repeat < 2; ++repeat) {
            QTRY_COMPARE(ui.middleOf(role, prefix + u"B"_s), place);
            ui.clickAgainSoon(place);
        }
        QCOMPARE(openCount(), 2);

        QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, place);
        QCOMPARE(openCount(), 1);
    }

    void typingInATitleKeepsFocusAndCaret()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.find(button, u"Edit, two"_s));
        QVERIFY(ui.click(button, u"Edit, two"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"Task, two"_s));
        ui.press(Qt::Key_Home);
        ui.press(Qt::Key_Right);
        const int before = ui.planner.preferences.writeCount();

        ui.type(u"xy"_s);

        QCOMPARE(ui.taskTitles(), (QStringList{u"one"_s, u"txywo"_s, u"three"_s}));
        QCOMPARE(ui.planner.preferences.writeCount() - before, 2);
        QVERIFY(ui.hasFocus(field, u"Task, two"_s));
        QCOMPARE(ui.find(field, u"Task, two"_s)->property("cursorPosition").toInt(), 3);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(!ui.find(field, u"Task, two"_s));
        QVERIFY(ui.hasFocus(button, u"Edit, txywo"_s));
    }

    void aTaskLandsWhereItIsDroppedHoweverFewTheMoves_data()
    {
        QTest::addColumn<int>("steps");
        QTest::addColumn<bool>("isCancelled");
        QTest::addColumn<QStringList>("titles");
        QTest::newRow("one") << 1 << false << QStringList{u"three"_s, u"one"_s, u"two"_s};
        QTest::newRow("eight") << 8 << false << QStringList{u"three"_s, u"one"_s, u"two"_s};
        QTest::newRow("Esc") << 2 << true << QStringList{u"one"_s, u"two"_s, u"three"_s};
    }

    void aTaskLandsWhereItIsDroppedHoweverFewTheMoves()
    {
        QFETCH(const int, steps);
        QFETCH(const bool, isCancelled);
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.find(button, u"Drag to reorder tasks, three"_s));
        const QPoint from = ui.middleOf(button, u"Drag to reorder tasks, three"_s);
        const QPoint to(from.x(), ui.middleOf(circle, u"one"_s).y());

        QTest::mousePress(&ui.window(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(&ui.window(), from + (to - from) * step / steps);
        if (isCancelled) {
            ui.press(Qt::Key_Escape);
            QTRY_COMPARE(ui.middleOf(circle, u"three"_s).y(), from.y());
            QTest::mouseMove(&ui.window(), to);
        }
        QTest::mouseRelease(&ui.window(), Qt::LeftButton, {}, to);

        QTEST(ui.taskTitles(), "titles");
    }

    void aTaskCannotBeDraggedOutOfItsSubgoal()
    {
        DayWindow ui;
        Goal goal = writing();
        goal.subgoals->append({.title = u"Print"_s, .tasks = QList<GoalTask>{{.title = u"four"_s}}});
        ui.openAt(ShellModel::Goals, {.goals = {goal}});
        QTRY_VERIFY(ui.find(circle, u"four"_s));
        const int handleX = ui.middleOf(button, u"Drag to reorder tasks, three"_s).x();
        const auto at = [&](const QString &title) { return QPoint(handleX, ui.middleOf(circle, title).y()); };
        QPoint last = at(u"three"_s);
        const auto dragTo = [&](QPoint place) {
            for (int step = 1; step <= 8; ++step)
                QTest::mouseMove(&ui.window(), last + (place - last) * step / 8);
            last = place;
            return ui.window().cursor().shape() == Qt::ForbiddenCursor;
        };

        QTest::mousePress(&ui.window(), Qt::LeftButton, {}, last);
        const QPoint home = last;
        QVERIFY(!dragTo(at(u"two"_s)));
        for (const QString &elsewhere : {u"four"_s, u"Print"_s, u"Write"_s})
            QVERIFY2(dragTo(at(elsewhere)), qPrintable(elsewhere));
        QTest::mouseRelease(&ui.window(), Qt::LeftButton, {}, at(u"Write"_s));

        QCOMPARE(ui.taskTitles(), (QStringList{u"one"_s, u"two"_s, u"three"_s}));
        QTRY_VERIFY(!dragTo(home));
    }

    void thePageScrollsOnWhileATaskIsHeldAtItsEdge()
    {
        DayWindow ui;
        QList<GoalTask> tasks;
        for (int number = 1; number <= 40; ++number)
            tasks.append({.title = QString::number(number)});
        ui.openAt(ShellModel::Goals,
                  {.goals = {{.title = u"Long"_s, .subgoals = QList<Subgoal>{{.title = u"S"_s, .tasks = tasks}}}}});
        QTRY_VERIFY(ui.find(circle, u"1"_s));
        auto *page = ui.screen()->findChild<QQuickItem *>(u"page"_s);
        const QPoint from(ui.middleOf(button, u"Drag to reorder tasks, 1"_s).x(), ui.middleOf(circle, u"1"_s).y());
        const double before = page->property("contentY").toDouble();

        QTest::mousePress(&ui.window(), Qt::LeftButton, {}, from);
        const QPoint edge(from.x(), ui.window().height() - 4);
        for (int step = 1; step <= 80; ++step)
            QTest::mouseMove(&ui.window(), from + (edge - from) * step / 80);
        // Far enough that the last task is there to be dropped on, and no further than the card.
        QTRY_VERIFY(ui.find(circle, u"40"_s) && ui.middleOf(circle, u"40"_s).y() < edge.y() - 30);
        QTest::mouseRelease(&ui.window(), Qt::LeftButton, {}, edge);
        QVERIFY(page->property("contentY").toDouble() > before);
        QCOMPARE(page->property("driftSpeed").toDouble(), 0.0);
    }

    void escapeEndsEditingInACard_data()
    {
        QTest::addColumn<QString>("title");
        for (const char *title : {"Write", "Draft", "two"})
            QTest::newRow(title) << QString::fromLatin1(title);
    }

    void escapeEndsEditingInACard()
    {
        QFETCH(QString, title);
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.find(button, u"Edit, "_s + title));
        QVERIFY(ui.click(button, u"Edit, "_s + title));
        QTRY_VERIFY(ui.find(button, u"Done, "_s + title));

        ui.press(Qt::Key_Escape);

        QTRY_VERIFY(ui.find(button, u"Edit, "_s + title));
        QVERIFY(ui.hasFocus(button, u"Edit, "_s + title));
    }

    void keysScrollThePageWhereNothingElseUsesThem_data()
    {
        QTest::addColumn<ShellModel::SidebarItem>("section");
        QTest::addColumn<QString>("focused");
        QTest::newRow("one scroll area") << ShellModel::Schedule << u"Today"_s;
        QTest::newRow("a list of rows") << ShellModel::Reminders << u"Add to-do"_s;
    }

    void keysScrollThePageWhereNothingElseUsesThem()
    {
        QFETCH(ShellModel::SidebarItem, section);
        QFETCH(QString, focused);
        QList<ReminderItem> reminders;
        for (int number = 1; number <= 200; ++number)
            reminders.append({.title = QString::number(number), .requirement = QString(number, u'x')});
        DayWindow ui;
        ui.openAt(section, {.reminders = reminders});
        QTRY_VERIFY(ui.find(button, focused));
        ui.find(button, focused)->forceActiveFocus();
        auto *page = ui.screen()->property("scroll").value<QQuickItem *>();
        const auto y = [page] { return page->property("contentY").toDouble(); };
        const double top = y();
        const QPoint middle = ui.middleOf(button, focused);
        QVERIFY(!page->property("atYEnd").toBool());

        ui.press(Qt::Key_PageDown);
        QVERIFY(y() > top && y() <= top + page->height());
        ui.press(Qt::Key_End);
        QTRY_VERIFY(page->property("atYEnd").toBool());
        ui.press(Qt::Key_PageUp);
        QVERIFY(!page->property("atYEnd").toBool());
        ui.press(Qt::Key_Home);
        QTRY_VERIFY(page->property("atYBeginning").toBool());
        QTRY_COMPARE(ui.middleOf(button, focused), middle);
    }

    void aDeletionInACardPassesTheFocusOn()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.find(button, u"Delete, two"_s));
        ui.find(button, u"Delete, two"_s)->forceActiveFocus(Qt::TabFocusReason);

        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.hasFocus(button, u"Delete, three"_s));
        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.hasFocus(button, u"Delete, one"_s));
        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.hasFocus(field, u"Add a task"_s));
        QVERIFY(ui.taskTitles().isEmpty());

        ui.find(button, u"Delete, Draft"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Space);
        QTRY_VERIFY(ui.hasFocus(field, u"Add a subgoal"_s));
    }

    void aHandleMovesItsTaskByKeyboardAndKeepsTheFocus()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.find(button, u"Drag to reorder tasks, three"_s));
        QQuickItem *handle = ui.find(button, u"Drag to reorder tasks, three"_s);
        handle->forceActiveFocus(Qt::TabFocusReason);

        ui.press(Qt::Key_Up);
        QCOMPARE(ui.taskTitles().last(), u"three"_s);
        ui.press(Qt::Key_Up, Qt::ControlModifier);
        ui.press(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(ui.taskTitles(), (QStringList{u"three"_s, u"one"_s, u"two"_s}));
        QVERIFY(handle->hasActiveFocus());
        ui.press(Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(ui.taskTitles(), (QStringList{u"one"_s, u"three"_s, u"two"_s}));
    }

    void thePageFollowsARowThatIsMovedByKeyboard()
    {
        DayWindow ui;
        Goal goal = writing();
        for (int more = 0; more < 4; ++more)
            goal.subgoals->append(*writing().subgoals);
        ui.openAt(ShellModel::Goals, {.goals = {goal}});
        ui.window().resize(920, 620);
        QTRY_COMPARE(ui.screen()->height(), 620);
        QTRY_VERIFY(ui.find(button, u"Drag to reorder subgoals, Draft"_s));
        QQuickItem *handle = ui.find(button, u"Drag to reorder subgoals, Draft"_s);
        handle->forceActiveFocus(Qt::TabFocusReason);
        const auto isInView = [&] {
            const double y = handle->mapToScene({}).y();
            return y >= 0 && y + handle->height() <= ui.window().height();
        };
        QTRY_VERIFY(isInView());

        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            for (int step = 0; step < 4; ++step) {
                ui.press(key, Qt::ControlModifier);
                QTRY_VERIFY(isInView());
            }
        }
    }
};

TESSALY_TEST_MAIN(DayScreensTest)
#include "DayScreensTest.moc"
