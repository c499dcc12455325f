#include "model/Uuid.h"
#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;

/// The window in English, at the to-do screen, with to-dos whose reminders were missed.
struct ToDoWindow : WindowUnderTest
{
    void openMissing(const QStringList &titles)
    {
        SavedData data;
        QList<WaitingReminder> missed;
        for (const QString &title : titles) {
            data.reminders.append({.title = title, .dueDate = planner.clock.now().plus(-3600.0)});
            auto reminder = waitingReminder(data.reminders.last(), u"Reminder"_s, planner.calendar);
            reminder->state = ReminderState::Missed;
            missed.append(*reminder);
        }
        planner.put(keys::interfaceLanguage, u"en"_s);
        planner.put(keys::hasAskedPreferredName, true);
        planner.put(keys::storageKey, *encodeSavedData(data));
        planner.put(keys::waitingReminders, encodeWaitingReminders(missed));
        open();
        setState("section", ShellModel::Reminders);
        QTRY_VERIFY(find(field, u"To-do name"_s));
    }
    /// How far the page is from its top.
    [[nodiscard]] qreal scrolledBy() const
    {
        const auto *page = screen()->findChild<QQuickItem *>(u"page"_s);
        return page->property("contentY").toReal() - page->property("leastContentY").toReal();
    }
    [[nodiscard]] QQuickItem *card() const { return find(QAccessible::Grouping, u"Missed reminders"_s); }
};

} // namespace

class ToDoScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutMissedRemindersThereIsNoCard()
    {
        ToDoWindow ui;
        ui.openMissing({});
        QVERIFY(!ui.card());
    }

    void answersOnTheCardPassTheFocusOnToTheNextRowAndThenToTheForm()
    {
        ToDoWindow ui;
        ui.openMissing({u"a"_s, u"b"_s, u"c"_s});
        QTRY_VERIFY(ui.card());
        QVERIFY(ui.visibleTexts().contains(u"Due while Tessaly was closed"_s));
        QVERIFY(ui.visibleTexts().contains(u"3 missed reminders"_s));

        QVERIFY(ui.click(button, u"Done, a"_s));
        QVERIFY(ui.planner.store->reminders().first().isComplete);
        QTRY_VERIFY(ui.hasFocus(button, u"Done, b"_s));

        QVERIFY(ui.click(button, u"Snooze, b"_s));
        QTRY_VERIFY(ui.find(QAccessible::MenuItem, u"In 10 minutes"_s));
        QVERIFY(ui.click(QAccessible::MenuItem, u"In 10 minutes"_s));
        QTRY_VERIFY(!ui.find(button, u"Done, b"_s));
        QCOMPARE(ui.planner.store->waitingReminders().list().last().state, ReminderState::Waiting);
        QTRY_VERIFY(ui.hasFocus(button, u"Done, c"_s));

        QVERIFY(ui.click(button, u"Dismiss all"_s));
        QTRY_VERIFY(!ui.card());
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name"_s));
        QTRY_COMPARE(ui.scrolledBy(), 0.0);
        QVERIFY(!ui.planner.store->reminders().last().isComplete);
    }

    void theRowsBeyondFiveAreBehindAButton()
    {
        ToDoWindow ui;
        ui.openMissing({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s});
        QTRY_VERIFY(ui.find(button, u"Done, e"_s));
        QVERIFY(!ui.find(button, u"Done, f"_s));

        QVERIFY(ui.click(button, u"2 more"_s));

        QTRY_VERIFY(ui.find(button, u"Done, g"_s));
        QTRY_VERIFY(ui.hasFocus(button, u"Done, f"_s));
        QVERIFY(!ui.find(button, u"2 more"_s));
    }

    void ctrlReturnInTheRequirementAddsTheToDo()
    {
        ToDoWindow ui;
        ui.openMissing({});
        QVERIFY(ui.click(field, u"To-do name"_s));
        ui.type(u"Water"_s);
        ui.press(Qt::Key_Tab);
        QTRY_VERIFY(ui.hasFocus(field, u"Task requirements (optional)"_s));
        ui.type(u"Twice"_s);
        ui.press(Qt::Key_Return);
        QVERIFY(ui.planner.store->reminders().isEmpty());
        ui.press(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(ui.planner.store->reminders().size(), 1);
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name"_s));
    }

    void aToDoWithADueDateCanRepeat()
    {
        ToDoWindow ui;
        ui.openMissing({});
        QVERIFY(!ui.find(QAccessible::ComboBox, u"Repeat"_s));
        QVERIFY(ui.click(QAccessible::CheckBox, u"Set due date"_s));
        QTRY_VERIFY(ui.find(QAccessible::ComboBox, u"Repeat"_s));
        QVERIFY(!ui.find(QAccessible::CheckBox, u"After completion"_s));
        QTRY_COMPARE(ui.scrolledBy(), 0.0);
        QCOMPARE(ui.find(QAccessible::ComboBox, u"Repeat"_s)->property("displayText").toString(), u"Never"_s);

        ui.find(QAccessible::ComboBox, u"Repeat"_s)->forceActiveFocus();
        ui.press(Qt::Key_Down);
        QTRY_VERIFY(ui.find(QAccessible::CheckBox, u"After completion"_s));
        ui.planner.store->setInterfaceLanguage(AppLanguage::Chinese);
        QTRY_COMPARE(ui.find(QAccessible::ComboBox, u"重复"_s)->property("displayText").toString(), u"每天"_s);
        ui.planner.store->setInterfaceLanguage(AppLanguage::English);
        QTRY_VERIFY(ui.find(QAccessible::ComboBox, u"Repeat"_s));
        const auto next = [&ui] { return ui.visibleTexts().filter(u"Next: "_s).value(0); };
        QVERIFY(!next().isEmpty());

        QVERIFY(ui.click(field, u"To-do name"_s));
        ui.type(u"Water"_s);
        ui.press(Qt::Key_Return);
        QCOMPARE(ui.planner.store->reminders().last().recurrenceRule, u"FREQ=DAILY"_s);
        QTRY_VERIFY2(next().isEmpty(), "the next to-do does not repeat");
    }
};

TESSALY_TEST_MAIN(ToDoScreenTest)
#include "ToDoScreenTest.moc"
