#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;

/// The window on Wednesday 2026-09-09 12:00 in Vienna.
struct FormWindow : WindowUnderTest
{
    void openAt(ShellModel::SidebarItem section, const QString &language = u"en"_s)
    {
        planner.calendar = UserCalendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale(QLocale::English));
        planner.clock.setNow(at(9, 12));
        planner.put(keys::interfaceLanguage, language);
        planner.put(keys::hasAskedPreferredName, true);
        open();
        window().resize(1180, 800);
        setState("section", section);
        QTRY_VERIFY(screen());
        press(Qt::Key_N, Qt::ControlModifier);
    }
    [[nodiscard]] Instant at(int day, int hour) const
    {
        return planner.calendar.instant(QDate(2026, 9, day), QTime(hour, 0));
    }
    [[nodiscard]] QString titleText() const { return window().activeFocusItem()->property("text").toString(); }
    [[nodiscard]] const ReminderItem &toDo() const { return planner.store->reminders().constLast(); }
    [[nodiscard]] const ScheduleItem &schedule() const { return planner.store->schedules().constLast(); }
};

} // namespace

class SuggestionTest : public QObject
{
    Q_OBJECT

private slots:
    void enterAddsAToDoAsItWasUnderstood()
    {
        FormWindow ui;
        ui.openAt(ShellModel::Reminders);
        ui.type(u"Report by Friday 5pm"_s);
        QTRY_VERIFY(ui.find(button, u"Use “due Fri, Sep 11 17:00”"_s));
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.toDo().title, u"Report"_s);
        QCOMPARE(ui.toDo().dueDate, ui.at(11, 17));

        // Only that one was meant.
        ui.type(u"Milk"_s);
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.toDo().title, u"Milk"_s);
        QVERIFY(!ui.toDo().dueDate);
    }

    void theButtonDoesWhatEnterDoes()
    {
        FormWindow ui;
        ui.openAt(ShellModel::Reminders);
        ui.type(u"Report by Friday 5pm"_s);
        QTRY_VERIFY(ui.find(button, u"Use “due Fri, Sep 11 17:00”"_s));
        QVERIFY(ui.click(button, u"Add to-do"_s));
        QCOMPARE(ui.toDo().title, u"Report"_s);
        QCOMPARE(ui.toDo().dueDate, ui.at(11, 17));

        FormWindow week;
        week.openAt(ShellModel::Schedule);
        week.type(u"Lunch tomorrow 12:30-13:30"_s);
        QTRY_VERIFY(week.find(button, u"Use “tomorrow 12:30–13:30”"_s));
        QVERIFY(week.click(button, u"Add schedule"_s));
        QCOMPARE(week.schedule().title, u"Lunch"_s);
        QCOMPARE(week.schedule().date, week.at(10, 12).plus(1800));
    }

    void otherwiseTheTitleStaysAsTyped_data()
    {
        QTest::addColumn<bool>("isDateSet");
        QTest::newRow("Esc, then Enter") << false;
        QTest::newRow("another due date") << true;
    }

    void otherwiseTheTitleStaysAsTyped()
    {
        QFETCH(const bool, isDateSet);
        FormWindow ui;
        ui.openAt(ShellModel::Reminders, u"zh"_s);
        ui.type(u"明天下午3点 开会"_s);
        QTRY_VERIFY(ui.find(button, u"采用“截止 明天 15:00”"_s));
        if (isDateSet)
            QVERIFY(ui.click(QAccessible::CheckBox, u"设置截止日期"_s));
        else
            ui.press(Qt::Key_Escape);
        QTRY_VERIFY(!ui.find(button, u"采用“截止 明天 15:00”"_s));
        if (isDateSet)
            QVERIFY(ui.click(button, u"添加待办"_s));
        else
            ui.press(Qt::Key_Return);
        QCOMPARE(ui.toDo().title, u"明天下午3点 开会"_s);
        QCOMPARE(ui.toDo().dueDate.has_value(), isDateSet);
    }

    void whatIsHalfTypedSurvivesAnotherScreen()
    {
        FormWindow ui;
        ui.openAt(ShellModel::Reminders);
        ui.type(u"Write letters"_s);
        ui.press(Qt::Key_Tab);
        ui.type(u"By hand"_s);
        ui.press(Qt::Key_2, Qt::ControlModifier);
        QTRY_VERIFY(ui.find(button, u"Add schedule"_s));
        ui.press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(ui.titleText(), QString());
        ui.type(u"Walk"_s);
        ui.press(Qt::Key_3, Qt::ControlModifier);
        QTRY_VERIFY(ui.find(field, u"To-do name"_s));
        ui.press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(ui.titleText(), u"Write letters"_s);
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.toDo().requirement, u"By hand"_s);
        ui.press(Qt::Key_2, Qt::ControlModifier);
        QTRY_VERIFY(ui.find(button, u"Add schedule"_s));
        ui.press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(ui.titleText(), u"Walk"_s);
        ui.press(Qt::Key_3, Qt::ControlModifier);
        QTRY_VERIFY(ui.find(field, u"To-do name"_s));
        ui.press(Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(ui.titleText(), QString());
    }

    void aClickPutsWhatWasUnderstoodIntoTheFields()
    {
        FormWindow ui;
        ui.openAt(ShellModel::Reminders);
        ui.type(u"Call tomorrow 3pm"_s);
        QTRY_VERIFY(ui.find(button, u"Use “due tomorrow 15:00”"_s));
        QVERIFY(ui.click(button, u"Use “due tomorrow 15:00”"_s));
        QVERIFY(ui.planner.store->reminders().isEmpty());
        QTRY_VERIFY(ui.find(field, u"Due"_s));
        QTRY_COMPARE(ui.titleText(), u"Call"_s);
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.toDo().title, u"Call"_s);
        QCOMPARE(ui.toDo().dueDate, ui.at(10, 15));
    }

    void theFormOfTheScheduleTakesStartAndEnd()
    {
        FormWindow ui;
        ui.openAt(ShellModel::Schedule);
        ui.type(u"Lunch tomorrow 12:30-13:30"_s);
        QTRY_VERIFY(ui.find(button, u"Use “tomorrow 12:30–13:30”"_s));
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.schedule().title, u"Lunch"_s);
        QCOMPARE(ui.schedule().date, ui.at(10, 12).plus(1800));
        QCOMPARE(ui.schedule().end(), ui.at(10, 13).plus(1800));

        ui.type(u"Walk"_s);
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.schedule().title, u"Walk"_s);
        QCOMPARE(ui.planner.calendar.day(ui.schedule().date), QDate(2026, 9, 9));
    }

    void nothingIsOfferedWhileAnInputMethodComposes()
    {
        FormWindow ui;
        ui.openAt(ShellModel::Reminders, u"zh"_s);
        QInputMethodEvent composing(u"明天下午3点开会"_s, {});
        QCoreApplication::sendEvent(ui.window().activeFocusItem(), &composing);
        QVERIFY(!ui.find(button, u"采用“截止 明天 15:00”"_s));
        ui.press(Qt::Key_Return);
        QVERIFY(ui.planner.store->reminders().isEmpty());
        QInputMethodEvent done;
        done.setCommitString(u"明天下午3点开会"_s);
        QCoreApplication::sendEvent(ui.window().activeFocusItem(), &done);
        QTRY_VERIFY(ui.find(button, u"采用“截止 明天 15:00”"_s));
    }
};

TESSALY_TEST_MAIN(SuggestionTest)
#include "SuggestionTest.moc"
