#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

#include <QFile>
#include <QQmlEngine>
#include <QRegularExpression>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

constexpr auto button = QAccessible::Button;
constexpr auto row = QAccessible::ListItem;

} // namespace

class PaletteWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_ui = std::make_unique<WindowUnderTest>();
        m_ui->planner.put(keys::hasAskedPreferredName, true);
        m_ui->planner.put(keys::interfaceLanguage, u"en"_s);
        m_ui->open();
    }

    void cleanup() { m_ui.reset(); }

    void ctrlKFindsAndGoesThere_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("section");
        QTest::addColumn<QString>("focused");
        QTest::newRow("a schedule of another year")
            << u"microeco"_s << int(ShellModel::Schedule) << u"Edit, Microeconomics"_s;
        QTest::newRow("a to-do of a closed group") << u"zy"_s << int(ShellModel::Reminders) << u"批改作业"_s;
        QTest::newRow("a completed to-do") << u"taxes"_s << int(ShellModel::Reminders) << u"Taxes"_s;
        QTest::newRow("a task of a goal") << u"figures"_s << int(ShellModel::Goals) << u"Draw figures"_s;
        QTest::newRow("a subgoal") << u"chapter"_s << int(ShellModel::Goals) << u"Chapter"_s;
        QTest::newRow("a goal") << u"textbook"_s << int(ShellModel::Goals) << u"Textbook"_s;
        QTest::newRow("a document by its text") << u"elasticity"_s << int(ShellModel::Documents) << u"Lecture"_s;
        QTest::newRow("a command") << u"go to goals"_s << int(ShellModel::Goals) << QString();
        QTest::newRow("the settings") << u"settings"_s << int(ShellModel::Overview) << u"Name"_s;
        QTest::newRow("the month") << u"month"_s << int(ShellModel::Schedule) << QString();
        QTest::newRow("the plan") << u"plan"_s << int(ShellModel::Schedule) << u"批改作业, "_s;
    }

    void ctrlKFindsAndGoesThere()
    {
        QFETCH(QString, typed);
        QFETCH(int, section);
        QFETCH(QString, focused);
        fill();
        openPalette();
        m_ui->type(typed);
        QTRY_VERIFY2(m_ui->find(QAccessible::Heading, u"Commands"_s) || hasResult(), qPrintable(typed));
        m_ui->press(Qt::Key_Return);
        // While the palette still fades out.
        QCOMPARE(m_ui->state("section").toInt(), section);
        QTRY_VERIFY(!isOpen());
        if (!focused.isEmpty())
            QTRY_VERIFY2(focusName().startsWith(focused), qPrintable(focusName()));
    }

    void aClickChoosesAndReachesNothingBehindThePalette()
    {
        fill();
        m_ui->setState("section", ShellModel::Schedule);
        openPalette();
        m_ui->type(u"microeco"_s);
        QTRY_VERIFY(hasResult());
        const QStringList texts = m_ui->visibleTexts();
        const auto found =
            std::ranges::find_if(texts, [](const QString &text) { return text.startsWith(u"Microeconomics, "); });
        QVERIFY2(found != texts.cend(), qPrintable(texts.join(u'|')));
        QVERIFY(m_ui->click(row, *found));
        QTRY_VERIFY(!isOpen());
        QTRY_VERIFY2(focusName().startsWith(u"Edit, Microeconomics"_s), qPrintable(focusName()));
    }

    void whatIsTypedIsAddedWithItsTime()
    {
        openPalette();
        m_ui->type(u"Lunch tomorrow 12:30-13:30"_s);
        QTRY_VERIFY2(m_ui->find(row, u"Add schedule “Lunch”, tomorrow 12:30–13:30"_s),
                     qPrintable(m_ui->visibleTexts().join(u'|')));
        QVERIFY(m_ui->find(row, u"Add to-do “Lunch”, due tomorrow 12:30"_s));
        QVERIFY(m_ui->find(row, u"No results."_s));
        m_ui->press(Qt::Key_Return);
        QTRY_COMPARE(m_ui->planner.store->schedules().size(), 1);
        QCOMPARE(m_ui->planner.store->schedules().first().title, u"Lunch"_s);
        QTRY_VERIFY2(focusName() == u"Edit, Lunch"_s, qPrintable(focusName()));
    }

    void whatNamesNoTimeAndIsNotFoundIsAToDo()
    {
        openPalette();
        m_ui->type(u"Buy milk"_s);
        QTRY_VERIFY(m_ui->find(row, u"No results."_s));
        QVERIFY(m_ui->visibleTexts().contains(u"Add"_s));
        m_ui->press(Qt::Key_Return);
        QTRY_COMPARE(m_ui->planner.store->reminders().size(), 1);
        QVERIFY(m_ui->planner.store->schedules().isEmpty());
    }

    void returnAddsAToDoWhereThePhraseSaysByWhen()
    {
        openPalette();
        m_ui->type(u"Report by Friday 5pm"_s);
        m_ui->press(Qt::Key_Return); // before the pause has passed
        QTRY_COMPARE(m_ui->planner.store->reminders().size(), 1);
        QCOMPARE(m_ui->planner.store->reminders().first().title, u"Report"_s);
        QTRY_VERIFY2(focusName() == u"Report"_s, qPrintable(focusName()));

        openPalette();
        m_ui->type(u"Report"_s);
        m_ui->press(Qt::Key_Return, Qt::ControlModifier);
        QTRY_COMPARE(m_ui->planner.store->reminders().size(), 2);
    }

    void theArrowsChooseAndEscapeGivesTheFocusBack()
    {
        m_ui->setState("section", ShellModel::Reminders);
        m_ui->press(Qt::Key_N, Qt::ControlModifier);
        const QString before = focusName();
        fill();
        openPalette();
        QTRY_COMPARE(focusName(), u"Find and add"_s);
        m_ui->type(u"e"_s);
        QTRY_VERIFY(hasResult());
        m_ui->press(Qt::Key_Up);
        m_ui->press(Qt::Key_Up);
        m_ui->press(Qt::Key_Up);
        const auto isFirstChosen = [this] {
            const QStringList texts = m_ui->visibleTexts();
            const auto first =
                std::ranges::find_if(texts, [](const QString &text) { return text.startsWith(u"Add schedule “e”, "); });
            const QQuickItem *item = first == texts.cend() ? nullptr : m_ui->find(row, *first);
            return item && item->property("isCurrent").toBool();
        };
        QTRY_VERIFY(isFirstChosen());
        m_ui->press(Qt::Key_Escape);
        QTRY_VERIFY(!isOpen());
        QTRY_COMPARE(focusName(), before);
        QCOMPARE(m_ui->planner.store->schedules().size(), 1);
    }

    void ctrlKOpensItAgainWhileItFadesOut()
    {
        m_ui->setState("section", ShellModel::Reminders);
        m_ui->press(Qt::Key_N, Qt::ControlModifier);
        const QString before = focusName();
        openPalette();
        m_ui->type(u"Milk"_s);
        m_ui->press(Qt::Key_Escape);
        QVERIFY(isOpen());
        m_ui->press(Qt::Key_K, Qt::ControlModifier);
        m_ui->type(u"Tea"_s);
        QTRY_VERIFY(m_ui->find(row, u"Add to-do “Tea”, no due date"_s));
        m_ui->press(Qt::Key_Escape);
        QTRY_VERIFY(!isOpen());
        QTRY_COMPARE(focusName(), before);
    }

    void keysReachTheScreensAndTheirForms()
    {
        for (int section = 4; section >= 0; --section) {
            m_ui->press(static_cast<Qt::Key>(Qt::Key_1 + section), Qt::ControlModifier);
            QTRY_COMPARE(m_ui->state("section").toInt(), section);
            QVERIFY2(section == 0 || m_ui->screen()->isAncestorOf(m_ui->window().activeFocusItem()),
                     qPrintable(focusName()));
        }
        const QStringList fields{QString(), u"Schedule title"_s, u"To-do title"_s, u"Goal title"_s,
                                 u"New Markdown document"_s};
        for (int section = 1; section < fields.size(); ++section) {
            m_ui->press(static_cast<Qt::Key>(Qt::Key_1 + section), Qt::ControlModifier);
            m_ui->press(Qt::Key_N, Qt::ControlModifier);
            QTRY_VERIFY2(m_ui->window().activeFocusItem()->inherits("QQuickTextInput"), qPrintable(focusName()));
            // A letter goes into the field and is no shortcut.
            m_ui->type(u"t?"_s);
            QCOMPARE(m_ui->window().activeFocusItem()->property("text").toString(), u"t?"_s);
        }
        m_ui->press(Qt::Key_Comma, Qt::ControlModifier);
        QTRY_COMPARE(focusName(), u"Name"_s);
    }

    void f1ListsTheKeys()
    {
        m_ui->press(Qt::Key_F1);
        QTRY_VERIFY(m_ui->find(QAccessible::StaticText, u"Find and add, Ctrl K"_s));
        QVERIFY(m_ui->find(QAccessible::StaticText, u"Go to a screen, Ctrl 1 to Ctrl 5"_s));
        m_ui->press(Qt::Key_Escape);
        QTRY_VERIFY(!m_ui->find(QAccessible::StaticText, u"Find and add, Ctrl K"_s));
    }

    void theReadmeAndTheSheetNameTheSameKeys()
    {
        QFile file(QStringLiteral(TESSALY_README));
        QVERIFY(file.open(QFile::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        const QString section = text.section(u"## Keys\n"_s, 1).section(u"\n## "_s, 0, 0);
        m_ui->press(Qt::Key_F1);
        QTRY_VERIFY(m_ui->find(QAccessible::StaticText, u"Find and add, Ctrl K"_s));
        QStringList listed;
        const QStringList names = m_ui->visibleTexts();
        const QRegularExpression keys(u"(?<![\\w+])((Ctrl|Alt|Shift)[+ ])+[^\\s;,|]|(?<![\\w+])F\\d+"_s);
        for (const QString &name : names) {
            if (!name.contains(u", "))
                continue;
            for (const auto &match : keys.globalMatch(name))
                listed.append(match.captured().replace(u' ', u'+'));
        }
        QVERIFY(listed.size() >= 12);
        for (const QString &key : std::as_const(listed))
            QVERIFY2(section.contains(key), qPrintable(key));
        const QString everywhere = section.section(u"| Everywhere |"_s, 1).section(u'\n', 0, 0);
        for (const auto &match : keys.globalMatch(everywhere)) {
            const bool isListed = listed.contains(match.captured()) || match.captured() == u"Ctrl+,";
            const bool isBetween = match.captured().contains(QRegularExpression(u"Ctrl\\+[2-4]"_s));
            QVERIFY2(isListed || isBetween, qPrintable(match.captured()));
        }
    }

private:
    void fill()
    {
        PlannerStore &store = *m_ui->planner.store;
        store.addSchedule(scheduleTitled(u"Microeconomics"_s, store.clock().now().seconds - 500 * 86400.0));
        store.addReminder({.title = u"批改作业"_s, .dueDate = store.clock().now().plus(40 * 86400.0)});
        store.addReminder({.title = u"Taxes"_s, .isComplete = true, .completedAt = store.clock().now()});
        Goal goal{.title = u"Textbook"_s};
        goal.subgoals = {{.title = u"Chapter"_s, .tasks = {{{.title = u"Draw figures"_s}}}}};
        store.addGoal(goal);
        const std::optional<MarkdownDocument> document = m_ui->planner.library().addDocument(u"Lecture"_s, {});
        QVERIFY(document && m_ui->planner.library().saveDocument(*document, u"On elasticity"_s).isWritten);
    }

    void openPalette()
    {
        QTRY_VERIFY(!isOpen());
        m_ui->press(Qt::Key_K, Qt::ControlModifier);
        QTRY_VERIFY(isOpen());
        QTRY_COMPARE(focusName(), u"Find and add"_s);
    }

    [[nodiscard]] bool isOpen() const { return m_ui->find(QAccessible::Dialog, u"Find and add"_s) != nullptr; }

    [[nodiscard]] bool hasResult() const
    {
        const QStringList areas{u"Schedule"_s, u"To-dos"_s, u"Goals"_s, u"Documents"_s};
        return std::ranges::any_of(
            areas, [this](const QString &area) { return m_ui->find(QAccessible::Heading, area) != nullptr; });
    }

    [[nodiscard]] QString focusName() const
    {
        QQuickItem *item = m_ui->window().activeFocusItem();
        QAccessibleInterface *interface = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
        return interface ? interface->text(QAccessible::Name) : QString();
    }

    std::unique_ptr<WindowUnderTest> m_ui;
};

TESSALY_TEST_MAIN(PaletteWindowTest)
#include "PaletteWindowTest.moc"
