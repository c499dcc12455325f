#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;
constexpr QAccessible::Role circle = QAccessible::CheckBox;

/// The window on Wednesday 2026-09-09 12:00 in Vienna.
struct DayWindow : WindowUnderTest
{
    DayWindow()
    {
        planner.calendar = UserCalendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale(QLocale::English));
        planner.clock.setNow(at(12));
    }
    [[nodiscard]] Instant at(int hour) const { return planner.calendar.instant(QDate(2026, 9, 9), QTime(hour, 0)); }
    void openAt(ShellModel::SidebarItem section, const SavedData &data, const QString &language = u"en"_s)
    {
        WindowUnderTest::openAt(section, data, language);
        window().resize(1180, 1000);
    }
    [[nodiscard]] int section() const { return state("section").toInt(); }
    [[nodiscard]] const Goal &goal() const { return planner.store->goals().first(); }
};

Goal writing()
{
    return {.title = u"Write"_s,
            .category = u"Work"_s,
            .subgoals = QList<Subgoal>{{.title = u"Draft"_s,
                                        .tasks = QList<GoalTask>{{.title = u"one"_s, .weight = 2, .isComplete = true},
                                                                 {.title = u"two"_s, .weight = 4}}}}};
}

} // namespace

class OverviewTest : public QObject
{
    Q_OBJECT

private slots:
    void eachPartLeadsToItsPlace_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("name");
        QTest::addColumn<ShellModel::SidebarItem>("section");
        QTest::addColumn<QString>("focused");

        QTest::newRow("to-dos") << u"en"_s << u"Open to-dos 1"_s << ShellModel::Reminders << QString();
        QTest::newRow("schedules") << u"zh"_s << u"今日剩余日程 1"_s << ShellModel::Schedule << QString();
        QTest::newRow("goals") << u"en"_s << u"Active goals 1"_s << ShellModel::Goals << QString();
        QTest::newRow("next") << u"zh"_s << u"Lunch, 2026年9月9日 13:00"_s << ShellModel::Schedule << QString();
        QTest::newRow("a goal") << u"en"_s << u"Write, 33%"_s << ShellModel::Goals << u"Write"_s;
        QTest::newRow("a to-do of today") << u"zh"_s << u"Report, 截止 18:00"_s << ShellModel::Reminders << u"Report"_s;
        QTest::newRow("a schedule of today")
            << u"en"_s << u"Lunch, 13:00 – 14:00"_s << ShellModel::Schedule << QString();
    }

    void eachPartLeadsToItsPlace()
    {
        QFETCH(const QString, language);
        QFETCH(const QString, name);
        QFETCH(const ShellModel::SidebarItem, section);
        QFETCH(const QString, focused);
        for (const bool isByKey : {false, true}) {
            DayWindow ui;
            ui.openAt(ShellModel::Overview,
                      {.schedules = {{.title = u"Lunch"_s, .date = ui.at(13), .endDate = ui.at(14)}},
                       .reminders = {{.title = u"Report"_s, .dueDate = ui.at(18)}},
                       .goals = {writing()}},
                      language);
            QTRY_VERIFY(ui.find(button, name));
            if (isByKey) {
                ui.find(button, name)->forceActiveFocus(Qt::TabFocusReason);
                ui.press(Qt::Key_Return);
            } else {
                QVERIFY(ui.click(button, name));
            }
            QTRY_COMPARE(ui.section(), int(section));
            if (!focused.isEmpty())
                QTRY_VERIFY(ui.hasFocus(circle, focused));
            QVERIFY(ui.window().activeFocusItem());
        }
    }

    void whatIsTickedTodayGoesAndPassesTheFocusOn()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Overview, {.schedules = {{.title = u"Lunch"_s, .date = ui.at(13), .endDate = ui.at(14)}},
                                         .reminders = {{.title = u"Call"_s, .dueDate = ui.at(12)},
                                                       {.title = u"Report"_s, .dueDate = ui.at(18)}}});
        QTRY_VERIFY(ui.find(button, u"Call, due 12:00, overdue"_s));
        ui.find(circle, u"Call"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Space);
        QVERIFY(ui.planner.store->reminders().first().isComplete);
        QTRY_VERIFY(ui.hasFocus(button, u"Lunch, 13:00 – 14:00"_s));

        QVERIFY(ui.click(circle, u"Report"_s));
        QVERIFY(ui.planner.store->reminders().last().isComplete);
        QTRY_VERIFY(ui.visibleTexts().contains(u"Completed “Report”"_s));
        ui.planner.clock.setNow(ui.at(15));
        QTRY_VERIFY(!ui.visibleTexts().contains(u"Today"_s));
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QTRY_VERIFY(ui.find(circle, u"Report"_s));
    }

    void aGoalIsEditedInItsCard()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing()}});
        QTRY_VERIFY(ui.visibleTexts().contains(u"Main goal · Work"_s));
        QVERIFY(ui.click(button, u"Edit, Write"_s));
        QTRY_VERIFY(ui.find(field, u"Overview, Write"_s));
        QVERIFY(ui.click(field, u"Overview, Write"_s));
        ui.type(u"All of it"_s);
        QVERIFY(ui.click(field, u"Category tag, Write"_s));
        ui.press(Qt::Key_A, Qt::ControlModifier);
        ui.press(Qt::Key_Delete);
        QVERIFY(ui.click(circle, u"Set due date, Write"_s));
        QCOMPARE(ui.goal().summary, u"All of it"_s);
        QCOMPARE(ui.goal().category, std::nullopt);
        QCOMPARE(ui.planner.calendar.day(*ui.goal().targetDate), QDate(2026, 10, 9));

        ui.press(Qt::Key_Escape);
        QTRY_VERIFY(ui.hasFocus(button, u"Edit, Write"_s));
        QVERIFY(ui.visibleTexts().contains(u"All of it"_s));
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!ui.goal().targetDate);
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(ui.goal().category, u"Work"_s);
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(ui.goal().summary, std::nullopt);
    }

    void thePercentageOpensItsSum()
    {
        DayWindow ui;
        ui.openAt(ShellModel::Goals, {.goals = {writing(), {.title = u"Bare"_s, .progress = 0.5}}});
        QTRY_VERIFY(ui.find(button, u"33%, Write"_s));
        QVERIFY(!ui.find(button, u"50%, Bare"_s));
        ui.find(button, u"33%, Write"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Space);

        QTRY_VERIFY(ui.find(QAccessible::ListItem, u"one, Weight 2.0, 33%, done"_s));
        QVERIFY(ui.find(QAccessible::ListItem, u"two, Weight 4.0, 67%, open"_s));
        QVERIFY(ui.visibleTexts().contains(u"Done: 33%. All tasks: 100%"_s));
        ui.press(Qt::Key_Escape);
        QTRY_VERIFY(!ui.find(QAccessible::ListItem, u"one, Weight 2.0, 33%, done"_s));
        QTRY_VERIFY(ui.hasFocus(button, u"33%, Write"_s));
    }

    void aForecastFollowsTheTicksAndTheDay()
    {
        DayWindow ui;
        Goal goal = writing();
        goal.subgoals->first().tasks->first().completedAt = ui.at(12).plus(-40 * 86400.0);
        goal.subgoals->first().tasks->append({.title = u"three"_s, .weight = 4});
        ui.openAt(ShellModel::Goals, {.goals = {goal}});
        QTRY_VERIFY(ui.find(circle, u"two"_s));
        QVERIFY(ui.visibleTexts().filter(u"At the pace"_s).isEmpty());
        QVERIFY(ui.click(circle, u"two"_s));
        QTRY_VERIFY(ui.visibleTexts().contains(u"At the pace of the last four weeks: October 7"_s));
        ui.planner.store->setInterfaceLanguage(AppLanguage::Chinese);
        QTRY_VERIFY(ui.visibleTexts().contains(u"按最近四周的速度：10月7日完成"_s));
    }
};

TESSALY_TEST_MAIN(OverviewTest)
#include "OverviewTest.moc"
