#include "model/Uuid.h"
#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;
constexpr QAccessible::Role circle = QAccessible::CheckBox;

/// The window at the to-do screen, on Wednesday 2026-09-09 12:00 in Vienna, with weeks from Monday.
struct RowsWindow : WindowUnderTest
{
    RowsWindow()
    {
        planner.calendar = UserCalendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale(QLocale::English));
        planner.clock.setNow(at(9, 12));
    }
    [[nodiscard]] Instant at(int day, int hour) const
    {
        return planner.calendar.instant(QDate(2026, 9, day), QTime(hour, 0));
    }
    void openWith(const QList<ReminderItem> &reminders, const QString &language = u"en"_s)
    {
        openAt(ShellModel::Reminders, {.reminders = reminders}, language);
        window().resize(1180, 1000);
    }
    [[nodiscard]] const ReminderItem &item(qsizetype row = 0) const { return planner.store->reminders().at(row); }
    /// Moves the pointer, which is pressed, in steps.
    void drag(QPoint from, QPoint to) const
    {
        constexpr int steps = 12;
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(&window(), from + (to - from) * step / steps);
    }
    void retype(const QString &text) const
    {
        press(Qt::Key_A, Qt::ControlModifier);
        type(text);
    }
};

const QString thisWeek = u"Sep 7, 2026 – Sep 13"_s;
const QString nextWeek = u"Sep 14, 2026 – Sep 20"_s;

} // namespace

class ToDoRowsTest : public QObject
{
    Q_OBJECT

private slots:
    void aToDoIsEditedInItsRow_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("title");

        const Qt::KeyboardModifiers none = Qt::NoModifier;
        const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
        QTest::newRow("Return") << u"Sweep"_s << int(Qt::Key_Return) << none << u"Sweep"_s;
        QTest::newRow("Ctrl+Return") << u"Sweep"_s << int(Qt::Key_Return) << ctrl << u"Sweep"_s;
        QTest::newRow("Esc") << u"Sweep"_s << int(Qt::Key_Escape) << none << u"Sort"_s;
        QTest::newRow("a blank title") << u"  "_s << int(Qt::Key_Return) << none << u"Sort"_s;
    }

    void aToDoIsEditedInItsRow()
    {
        QFETCH(const QString, typed);
        QFETCH(const int, key);
        QFETCH(const Qt::KeyboardModifiers, modifiers);
        QFETCH(const QString, title);
        for (const bool isEnglish : {true, false}) {
            RowsWindow ui;
            ui.openWith({{.title = u"Sort"_s}}, isEnglish ? u"en"_s : u"zh"_s);
            const QString edit = isEnglish ? u"Edit, "_s : u"编辑, "_s;
            QTRY_VERIFY(ui.find(button, edit + u"Sort"_s));
            QVERIFY(ui.click(button, edit + u"Sort"_s));
            QTRY_VERIFY(ui.hasFocus(field, (isEnglish ? u"To-do name, "_s : u"待办名称, "_s) + u"Sort"_s));

            ui.retype(typed);
            QCOMPARE(ui.item().title, u"Sort"_s);
            ui.press(Qt::Key(key), modifiers);

            QCOMPARE(ui.item().title, title);
            QTRY_VERIFY(ui.hasFocus(button, edit + title));
            if (title != u"Sort"_s) {
                ui.press(Qt::Key_Z, Qt::ControlModifier);
                QCOMPARE(ui.item().title, u"Sort"_s);
            }
            QVERIFY(!ui.planner.store->history().nextUndo());
        }
    }

    void theFormStaysInItsPlaceWhenItAdds()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Sort"_s}, {.title = u"Sweep"_s, .dueDate = ui.at(10, 18)}});
        ui.window().resize(1180, 800);
        QTRY_VERIFY(ui.find(circle, u"Sort"_s));
        const int place = ui.middleOf(field, u"To-do name"_s).y();
        QVERIFY(ui.click(field, u"To-do name"_s));
        ui.type(u"Pay rent Friday 5pm"_s);
        QTRY_VERIFY(ui.find(button, u"Add to-do"_s));
        QVERIFY(ui.click(button, u"Add to-do"_s));
        QCOMPARE(ui.planner.store->reminders().size(), 3);
        QTRY_COMPARE(ui.middleOf(field, u"To-do name"_s).y(), place);
    }

    void aDoubleClickOnTheTitleEdits()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Sort"_s}});
        QTRY_VERIFY(ui.find(circle, u"Sort"_s));
        const QPoint title = ui.middleOf(circle, u"Sort"_s) + QPoint(30, 0);
        QTest::mouseClick(&ui.window(), Qt::LeftButton, {}, title);
        QVERIFY(!ui.find(field, u"To-do name, Sort"_s));
        QTest::mouseDClick(&ui.window(), Qt::LeftButton, {}, title);
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name, Sort"_s));
    }

    void ctrlReturnInTheRequirementSavesAndReturnBreaksTheLine()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Sort"_s}});
        QTRY_VERIFY(ui.find(button, u"Edit, Sort"_s));
        QVERIFY(ui.click(button, u"Edit, Sort"_s));
        QTRY_VERIFY(ui.find(field, u"Task requirements, Sort"_s));
        QVERIFY(ui.click(field, u"Task requirements, Sort"_s));
        ui.type(u"by colour"_s);
        ui.press(Qt::Key_Return);
        ui.type(u"by size"_s);
        QVERIFY(!ui.item().requirement);
        ui.press(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(ui.item().requirement, u"by colour\nby size"_s);
        QTRY_VERIFY(ui.hasFocus(button, u"Edit, Sort"_s));
    }

    void whatIsClickedElsewhereHappensAndTheRowIsSaved()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Sort"_s}, {.title = u"Call"_s}, {.title = u"Pay"_s}});
        QTRY_VERIFY(ui.find(button, u"Edit, Sort"_s));
        QVERIFY(ui.click(button, u"Edit, Sort"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name, Sort"_s));
        ui.retype(u"Sweep"_s);

        // The rows below move up as soon as the fields are gone.
        QVERIFY(ui.click(circle, u"Call"_s));
        QTRY_COMPARE(ui.item().title, u"Sweep"_s);
        QVERIFY(ui.item(1).isComplete);
        QTRY_VERIFY(!ui.find(field, u"To-do name, Sort"_s));

        QVERIFY(ui.click(button, u"Edit, Sweep"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name, Sweep"_s));
        ui.retype(u"Shine"_s);
        QVERIFY(ui.click(button, u"Edit, Pay"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name, Pay"_s));
        QCOMPARE(ui.item().title, u"Shine"_s);
        QVERIFY(!ui.find(field, u"To-do name, Shine"_s));

        ui.retype(u"Pay now"_s);
        ui.setState("section", ShellModel::Overview);
        QTRY_COMPARE(ui.item(2).title, u"Pay now"_s);
    }

    void tabbingThroughTheRowKeepsItOpen()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Sort"_s}});
        QTRY_VERIFY(ui.find(button, u"Edit, Sort"_s));
        QVERIFY(ui.click(button, u"Edit, Sort"_s));
        QTRY_VERIFY(ui.hasFocus(field, u"To-do name, Sort"_s));
        ui.retype(u"Sweep"_s);
        for (int stop = 0; stop < 4; ++stop)
            ui.press(Qt::Key_Tab);
        QTRY_VERIFY(ui.hasFocus(button, u"Delete, Sort"_s));
        QVERIFY(ui.find(field, u"To-do name, Sort"_s));
        ui.press(Qt::Key_Tab);
        QTRY_COMPARE(ui.item().title, u"Sweep"_s);
        QTRY_VERIFY(!ui.find(field, u"To-do name, Sort"_s));
    }

    void anotherDueDateTakesTheRowToItsGroupWithTheFocusAndTheReminder()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Sort"_s}});
        QTRY_VERIFY(ui.find(button, u"Edit, Sort"_s));
        QVERIFY(ui.click(button, u"Edit, Sort"_s));
        QTRY_VERIFY(ui.find(circle, u"Set due date, Sort"_s));
        QVERIFY(ui.click(circle, u"Set due date, Sort"_s));
        QTRY_VERIFY(ui.find(field, u"Due, Sort"_s));
        QVERIFY(ui.click(field, u"Due, Sort"_s));
        ui.press(Qt::Key_A, Qt::ControlModifier);
        ui.type(u"2026-09-16 18:00"_s);
        ui.press(Qt::Key_Return);

        QCOMPARE(ui.item().dueDate, ui.at(16, 18));
        QCOMPARE(ui.planner.store->waitingReminders().list().size(), 1);
        QTRY_VERIFY(ui.hasFocus(button, u"Edit, Sort"_s));
        QVERIFY(ui.find(button, nextWeek));
        QTRY_VERIFY(ui.visibleTexts().contains(u"Moved to “%1”"_s.arg(nextWeek)));
    }

    void headersCountAndNameWhatIsOverdue()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Late"_s, .dueDate = ui.at(8, 9)},
                     {.title = u"Soon"_s, .dueDate = ui.at(9, 13)},
                     {.title = u"Done"_s, .dueDate = ui.at(8, 9), .isComplete = true}});
        QTRY_VERIFY(ui.find(button, thisWeek));
        const auto describe = [&ui](const QString &header) {
            return QAccessible::queryAccessibleInterface(ui.find(button, header))->text(QAccessible::Description);
        };
        QCOMPARE(describe(u"Due dates"_s), u"2, 1 overdue, expanded"_s);
        QCOMPARE(describe(u"No due date"_s), QString());
        QCOMPARE(describe(u"Completed"_s), u"1, collapsed"_s);

        ui.planner.clock.advance(3600);
        QCOMPARE(describe(thisWeek), u"2, 2 overdue, collapsed"_s);
        QVERIFY(ui.click(button, thisWeek));
        QTRY_VERIFY(ui.find(circle, u"Soon"_s));
        QCOMPARE(ui.visibleTexts().filter(u", overdue"_s).size(), 2);
        ui.planner.store->setInterfaceLanguage(AppLanguage::Chinese);
        QTRY_VERIFY(ui.visibleTexts().contains(u"2 项过期"_s));
        QCOMPARE(ui.visibleTexts().filter(u"，已过期"_s).size(), 2);
    }

    void aToDoIsDraggedOntoTheHeaderOfAnotherWeek_data()
    {
        QTest::addColumn<int>("distance");
        QTest::addColumn<bool>("isCancelled");
        QTest::addColumn<bool>("isMoved");

        QTest::newRow("dropped") << 0 << false << true;
        QTest::newRow("cancelled") << 0 << true << false;
        QTest::newRow("not far enough to be a drag") << 5 << false << false;
    }

    void aToDoIsDraggedOntoTheHeaderOfAnotherWeek()
    {
        QFETCH(const int, distance);
        QFETCH(const bool, isCancelled);
        QFETCH(const bool, isMoved);
        RowsWindow ui;
        ui.openWith({{.title = u"Report"_s, .dueDate = ui.at(9, 18)}, {.title = u"Other"_s, .dueDate = ui.at(17, 9)}});
        QTRY_VERIFY(ui.find(button, thisWeek));
        QVERIFY(ui.click(button, thisWeek));
        QTRY_VERIFY(ui.find(circle, u"Report"_s));
        // Until the row stands in its place.
        QTRY_VERIFY(ui.middleOf(circle, u"Report"_s).y() > ui.middleOf(button, thisWeek).y() + 30);
        const QPoint from = ui.middleOf(circle, u"Report"_s) + QPoint(200, 0);
        const QPoint to =
            distance > 0 ? from + QPoint(0, distance) : QPoint(from.x(), ui.middleOf(button, nextWeek).y());

        QTest::mousePress(&ui.window(), Qt::LeftButton, {}, from);
        ui.drag(from, to);
        if (isCancelled)
            ui.press(Qt::Key_Escape);
        QTest::mouseRelease(&ui.window(), Qt::LeftButton, {}, to);

        QCOMPARE(ui.item().dueDate, isMoved ? ui.at(16, 18) : ui.at(9, 18));
        QCOMPARE(ui.visibleTexts().contains(u"Moved to “%1”"_s.arg(nextWeek)), isMoved);
        if (!isMoved)
            return;
        QCOMPARE(ui.planner.store->waitingReminders().list().constFirst().day, QDate(2026, 9, 16));
        QTRY_VERIFY(ui.visibleTexts().contains(u"Moved “Report”"_s));
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(ui.item().dueDate, ui.at(9, 18));
    }

    void aNotificationOpensTheScreenAtItsRow()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Report"_s, .dueDate = ui.at(9, 18)}, {.title = u"Sort"_s}});
        ui.window().close();
        QTRY_VERIFY(!ui.window().isVisible());

        ui.app().showReminders(uuidText(ui.item().id));
        QTRY_VERIFY(ui.hasFocus(circle, u"Report"_s));

        ui.setState("section", ShellModel::Overview);
        ui.app().showReminders(u"schedule:x"_s);
        QTRY_VERIFY(ui.find(circle, u"Sort"_s));
    }

    void ctrlArrowsMoveAToDoByAWeek()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Report"_s, .dueDate = ui.at(9, 18)}, {.title = u"Free"_s}});
        QTRY_VERIFY(ui.find(button, thisWeek));
        QVERIFY(ui.click(button, thisWeek));
        QTRY_VERIFY(ui.find(circle, u"Report"_s));
        ui.find(circle, u"Report"_s)->forceActiveFocus(Qt::TabFocusReason);

        ui.press(Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(ui.item().dueDate, ui.at(16, 18));
        QTRY_VERIFY(ui.hasFocus(circle, u"Report"_s));
        QTRY_VERIFY(ui.visibleTexts().contains(u"Moved to “%1”"_s.arg(nextWeek)));
        ui.press(Qt::Key_Up, Qt::ControlModifier);
        QTRY_VERIFY(ui.hasFocus(circle, u"Report"_s));
        ui.press(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(ui.item().dueDate, ui.at(2, 18));

        ui.find(circle, u"Free"_s)->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Up, Qt::ControlModifier);
        QVERIFY(!ui.item(1).dueDate);
        ui.press(Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(ui.item(1).dueDate, ui.at(13, 18));
        QTRY_VERIFY(ui.hasFocus(circle, u"Free"_s));
    }

    void aToDoWithoutADueDateGetsOneByADrag_data()
    {
        QTest::addColumn<QString>("header");
        QTest::addColumn<int>("day");
        QTest::newRow("a week to come") << nextWeek << 20;
        QTest::newRow("the present week") << u"Due dates"_s << 13;
        QTest::newRow("a week that is over") << u"Aug 31, 2026 – Sep 6"_s << 0;
    }

    void aToDoWithoutADueDateGetsOneByADrag()
    {
        QFETCH(const QString, header);
        QFETCH(const int, day);
        RowsWindow ui;
        ui.openWith({{.title = u"Free"_s},
                     {.title = u"Old"_s, .dueDate = ui.at(1, 9)},
                     {.title = u"Other"_s, .dueDate = ui.at(17, 9)}});
        QTRY_VERIFY(ui.find(button, nextWeek));
        QTRY_VERIFY(ui.middleOf(button, nextWeek).y() > ui.middleOf(circle, u"Free"_s).y() + 100);
        const QPoint from = ui.middleOf(circle, u"Free"_s) + QPoint(200, 0);
        const QPoint to(from.x(), ui.middleOf(button, header).y());

        QTest::mousePress(&ui.window(), Qt::LeftButton, {}, from);
        ui.drag(from, to);
        QTest::mouseRelease(&ui.window(), Qt::LeftButton, {}, to);

        QCOMPARE(ui.item().dueDate, day > 0 ? std::optional(ui.at(day, 18)) : std::nullopt);
        if (day == 0)
            return;
        QTRY_VERIFY(ui.visibleTexts().contains(u"Moved “Free”"_s));
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!ui.item().dueDate);
    }

    void theRepetitionIsEditedInItsRow_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("shown");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QString>("after");
        QTest::newRow("none yet") << QString() << 0 << 3 << u"FREQ=WEEKLY"_s;
        QTest::newRow("another one") << u"FREQ=DAILY"_s << 1 << 1 << u"FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"_s;
        QTest::newRow("no longer") << u"FREQ=DAILY"_s << 1 << -1 << QString();
        QTest::newRow("a rule of another program") << u"FREQ=HOURLY"_s << 6 << 0 << u"FREQ=HOURLY"_s;
    }

    void theRepetitionIsEditedInItsRow()
    {
        QFETCH(const QString, before);
        QFETCH(const int, shown);
        QFETCH(const int, steps);
        QFETCH(const QString, after);
        RowsWindow ui;
        const std::optional<Instant> start = before.isEmpty() ? std::nullopt : std::optional(ui.at(2, 18));
        ui.openWith({{.title = u"Report"_s,
                      .dueDate = ui.at(9, 18),
                      .recurrenceRule = before.isEmpty() ? std::nullopt : std::optional(before),
                      .recurrenceStart = start}});
        QTRY_VERIFY(ui.find(button, thisWeek));
        QVERIFY(ui.click(button, thisWeek));
        QTRY_VERIFY(ui.find(button, u"Edit, Report"_s));
        QVERIFY(ui.click(button, u"Edit, Report"_s));
        QTRY_VERIFY(ui.find(QAccessible::ComboBox, u"Repeat, Report"_s));
        QQuickItem *choice = ui.find(QAccessible::ComboBox, u"Repeat, Report"_s);
        QCOMPARE(choice->property("currentIndex").toInt(), shown);
        choice->forceActiveFocus(Qt::TabFocusReason);
        for (int step = 0; step < std::abs(steps); ++step)
            ui.press(steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        QCOMPARE(ui.find(QAccessible::CheckBox, u"After completion, Report"_s) != nullptr, !after.isEmpty());
        ui.press(Qt::Key_Return, Qt::ControlModifier);

        QCOMPARE(ui.item().recurrenceRule.value_or(QString()), after);
        QCOMPARE(ui.item().recurrenceStart, steps == 0 ? start : after.isEmpty() ? std::nullopt : ui.item().dueDate);
        QTRY_VERIFY(ui.hasFocus(button, u"Edit, Report"_s));
        QCOMPARE(ui.planner.store->history().nextUndo() != nullptr, steps != 0);
    }

    void theListOfRepetitionsKeepsTheRowOpen()
    {
        RowsWindow ui;
        ui.openWith({{.title = u"Report"_s, .dueDate = ui.at(9, 18)}});
        QTRY_VERIFY(ui.find(button, thisWeek));
        QVERIFY(ui.click(button, thisWeek));
        QTRY_VERIFY(ui.find(button, u"Edit, Report"_s));
        QVERIFY(ui.click(button, u"Edit, Report"_s));
        const QString name = u"Repeat, Report"_s;
        QTRY_VERIFY(ui.find(QAccessible::ComboBox, name));
        QVERIFY(ui.click(QAccessible::ComboBox, name));
        QTRY_VERIFY(ui.find(QAccessible::ListItem, u"Every month"_s));
        QVERIFY(ui.click(QAccessible::ListItem, u"Every month"_s));
        QTRY_VERIFY(ui.find(QAccessible::CheckBox, u"After completion, Report"_s));
        QTRY_VERIFY(!ui.find(QAccessible::ListItem, u"Every month"_s));
        QVERIFY(ui.click(QAccessible::CheckBox, u"After completion, Report"_s));
        QVERIFY(ui.click(button, u"Done, Report"_s));
        QCOMPARE(ui.item().recurrenceRule, u"FREQ=MONTHLY"_s);
        QCOMPARE(ui.item().recursAfterCompletion, true);
        ui.press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!ui.item().recurrenceRule);
    }
};

TESSALY_TEST_MAIN(ToDoRowsTest)
#include "ToDoRowsTest.moc"
