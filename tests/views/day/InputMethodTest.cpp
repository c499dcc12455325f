#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

constexpr QAccessible::Role field = QAccessible::EditableText;
constexpr QAccessible::Role button = QAccessible::Button;

/// The window over a schedule, a to-do and a goal with due dates.
struct FieldWindow : WindowUnderTest
{
    void openField(ShellModel::SidebarItem section, const QString &opener, const QString &name,
                   const QString &language = u"en"_s)
    {
        planner.calendar = UserCalendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale(QLocale::English));
        const Instant due = planner.calendar.instant(QDate(2026, 9, 11), QTime(17, 5));
        SavedData data;
        data.reminders = {{.title = u"Report"_s, .dueDate = due}};
        data.goals = {{.title = u"Book"_s, .targetDate = due}};
        openAt(section, data, language);
        window().resize(1180, 800);
        if (section == ShellModel::Reminders)
            setDueWeekOpen();
        if (opener == u"palette"_s) {
            press(Qt::Key_K, Qt::ControlModifier);
        } else if (!opener.isEmpty()) {
            QTRY_VERIFY2(find(button, opener), qPrintable(visibleTexts().join(u'|')));
            QVERIFY(click(button, opener));
        }
        QTRY_VERIFY2(find(field, name), qPrintable(visibleTexts().join(u'|')));
        find(field, name)->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(hasFocus(field, name));
    }
    void setDueWeekOpen()
    {
        const auto week = [this] { return visibleTexts().filter(u" – "_s).value(0); };
        QTRY_VERIFY(!week().isEmpty());
        QVERIFY(click(button, week()));
    }
    void compose(const QString &preedit)
    {
        QInputMethodEvent event(preedit, {});
        QCoreApplication::sendEvent(window().activeFocusItem(), &event);
    }
    void commit(const QString &text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(window().activeFocusItem(), &event);
    }
    [[nodiscard]] QString text() const { return window().activeFocusItem()->property("text").toString(); }
    [[nodiscard]] qsizetype recordCount() const
    {
        return planner.store->schedules().size() + planner.store->reminders().size() + planner.store->goals().size();
    }
};

} // namespace

class InputMethodTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsComposedIsNoTextAndItsKeysDoNothing_data()
    {
        QTest::addColumn<int>("section");
        QTest::addColumn<QString>("opener");
        QTest::addColumn<QString>("name");
        const auto row = [](ShellModel::SidebarItem section, const QString &opener, const QString &name) {
            QTest::newRow(qPrintable(name)) << int(section) << opener << name;
        };
        row(ShellModel::Overview, u"palette"_s, u"Find and add"_s);
        row(ShellModel::Schedule, {}, u"Schedule name"_s);
        row(ShellModel::Schedule, {}, u"Start"_s);
        row(ShellModel::Reminders, {}, u"To-do name"_s);
        row(ShellModel::Reminders, {}, u"Task requirements (optional)"_s);
        row(ShellModel::Reminders, u"Edit, Report"_s, u"To-do name, Report"_s);
        row(ShellModel::Reminders, u"Edit, Report"_s, u"Task requirements, Report"_s);
        row(ShellModel::Reminders, u"Edit, Report"_s, u"Due, Report"_s);
        row(ShellModel::Goals, u"Edit, Book"_s, u"Main goal"_s);
        row(ShellModel::Goals, u"Edit, Book"_s, u"Overview, Book"_s);
        row(ShellModel::Goals, u"Edit, Book"_s, u"Category tag, Book"_s);
        row(ShellModel::Goals, u"Edit, Book"_s, u"Due"_s);
    }

    void whatIsComposedIsNoTextAndItsKeysDoNothing()
    {
        QFETCH(const int, section);
        QFETCH(const QString, opener);
        QFETCH(const QString, name);
        FieldWindow ui;
        ui.openField(static_cast<ShellModel::SidebarItem>(section), opener, name);
        const bool isDate = name.startsWith(u"Due"_s) || name == u"Start"_s;
        if (!isDate)
            ui.press(Qt::Key_A, Qt::ControlModifier);
        if (!isDate)
            ui.press(Qt::Key_Delete);
        const QString before = ui.text();
        const qsizetype count = ui.recordCount();

        ui.compose(u"ni hao"_s);
        QVERIFY(ui.visibleTexts().filter(u"“ni hao”"_s).isEmpty());
        // An input method keeps these for itself; one that does not must do no harm.
        ui.press(Qt::Key_Escape);
        QVERIFY(ui.hasFocus(field, name));
        QCOMPARE(ui.text(), before);
        ui.compose(u"ni hao"_s);
        if (!name.startsWith(u"Task requirements"_s))
            ui.press(Qt::Key_Return);
        QVERIFY(ui.hasFocus(field, name));
        QCOMPARE(ui.recordCount(), count);

        ui.compose({});
        QCOMPARE(ui.text(), before);
        ui.commit(isDate ? u"2026年12月3日"_s : u"你好"_s);
        if (!isDate)
            QCOMPARE(ui.text(), u"你好"_s);
        else
            QTRY_VERIFY2(ui.text().contains(u"2026年12月3日"_s), qPrintable(ui.text()));
        QVERIFY(ui.hasFocus(field, name));
    }

    void aDateIsWrittenInChinese_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("written");
        QTest::addColumn<QDateTime>("due");
        const auto row = [](const char *name, const QString &language, const QStringList &written, int day,
                            QTime time) {
            QTest::newRow(name) << language << written << QDateTime(QDate(2026, 12, day), time);
        };
        const QTime time(17, 5);
        row("at once", u"zh"_s, {u"2026年12月3日"_s}, 3, time);
        row("sign by sign", u"zh"_s, {u"2026"_s, u"年"_s, u"12"_s, u"月"_s, u"3"_s, u"日"_s}, 3, time);
        row("without the year", u"zh"_s, {u"12月3日"_s}, 3, time);
        row("with the time", u"zh"_s, {u"2026年12月3日"_s, u"9"_s, u"：30"_s}, 3, QTime(9, 30));
        row("with the time's signs", u"zh"_s, {u"2026年12月3号9点30分"_s}, 3, QTime(9, 30));
        row("wide digits", u"zh"_s, {u"２０２６年１２月３日"_s}, 3, time);
        row("signs of Chinese punctuation", u"zh"_s, {u"2026、12、3"_s}, 3, time);
        row("in the English field", u"en"_s, {u"2026年12月3日"_s}, 3, time);
        row("in the English field with the time", u"en"_s, {u"2026年12月3日 9：30"_s}, 3, QTime(9, 30));
    }

    void aDateIsWrittenInChinese()
    {
        QFETCH(const QString, language);
        QFETCH(const QStringList, written);
        QFETCH(const QDateTime, due);
        const bool isEnglish = language == u"en"_s;
        FieldWindow ui;
        ui.openField(ShellModel::Reminders, isEnglish ? u"Edit, Report"_s : u"编辑, Report"_s,
                     isEnglish ? u"Due, Report"_s : u"截止, Report"_s, language);
        for (const QString &piece : written) {
            ui.compose(u"x"_s);
            ui.commit(piece);
        }
        ui.press(Qt::Key_Return);
        QTRY_COMPARE(ui.planner.store->reminders().first().dueDate,
                     ui.planner.calendar.instant(due.date(), due.time()));
    }

    void theDayAloneIsOfTheMonth()
    {
        FieldWindow ui;
        ui.openField(ShellModel::Goals, u"编辑, Book"_s, u"截止"_s, u"zh"_s);
        ui.commit(u"3日"_s);
        QTRY_COMPARE(ui.planner.calendar.day(*ui.planner.store->goals().first().targetDate), QDate(2026, 9, 3));
    }
};

TESSALY_TEST_MAIN(InputMethodTest)
#include "InputMethodTest.moc"
