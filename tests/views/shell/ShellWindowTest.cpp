#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

#include "app/WindowFrame.h"

#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>

#include <algorithm>

using namespace tessaly;

namespace {

const QRegularExpression &chineseLetter()
{
    static const QRegularExpression expression(QStringLiteral("[\\x{3400}-\\x{9fff}]"));
    return expression;
}

bool isLatinOnly(const QString &text)
{
    static const QRegularExpression latin(QStringLiteral("[A-Za-z]"));
    return latin.match(text).hasMatch() && !chineseLetter().match(text).hasMatch();
}

} // namespace

class ShellWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void theFirstStartAsksForTheNameOnce()
    {
        WindowUnderTest ui;
        ui.open();
        QTRY_VERIFY(ui.find(QAccessible::Dialog, QStringLiteral("欢迎来到 Tessaly")));
        QTRY_VERIFY(ui.hasFocus(QAccessible::EditableText, QStringLiteral("我该如何称呼你？")));

        ui.type(QStringLiteral("  Ada "));
        ui.press(Qt::Key_Return);

        QTRY_VERIFY(!ui.find(QAccessible::Dialog, QStringLiteral("欢迎来到 Tessaly")));
        QCOMPARE(ui.planner.store->preferredName(), QStringLiteral("Ada"));
        ui.open();
        QVERIFY(!ui.state("showNamePrompt").toBool());
        QCOMPARE(ui.find(QAccessible::EditableText, QStringLiteral("称呼"))->property("text").toString(),
                 QStringLiteral("Ada"));
    }

    void damagedDataIsReportedAtTheStart()
    {
        WindowUnderTest ui;
        ui.planner.put(keys::hasAskedPreferredName, true);
        ui.planner.put(keys::storageKey, QByteArray("{"));
        ui.open();
        QTRY_VERIFY(ui.find(QAccessible::Dialog, QStringLiteral("部分数据无法读取")));

        ui.press(Qt::Key_Return);

        QTRY_VERIFY(!ui.find(QAccessible::Dialog, QStringLiteral("部分数据无法读取")));
    }

    void leavingTheNamePromptCountsAsAnswer_data()
    {
        QTest::addColumn<bool>("isByKey");
        QTest::newRow("Later") << false;
        QTest::newRow("Esc") << true;
    }

    void leavingTheNamePromptCountsAsAnswer()
    {
        QFETCH(const bool, isByKey);
        WindowUnderTest ui;
        ui.open();
        QTRY_VERIFY(ui.hasFocus(QAccessible::EditableText, QStringLiteral("我该如何称呼你？")));
        ui.type(QStringLiteral("Ada"));

        if (isByKey)
            ui.press(Qt::Key_Escape);
        else
            QVERIFY(ui.click(QAccessible::Button, QStringLiteral("稍后再说")));

        QTRY_VERIFY(!ui.state("showNamePrompt").toBool());
        QCOMPARE(ui.planner.store->preferredName(), QString());
        QCOMPARE(ui.planner.preferences.get<bool>(keys::hasAskedPreferredName), true);
    }

    void returnClearsOnlyWithTheFocusOnClear()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        ui.planner.store->addReminder({.title = QStringLiteral("Water the plants")});

        openClearDialog(ui);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(!ui.state("showClearConfirmation").toBool());
        QCOMPARE(ui.planner.store->reminders().size(), 1);

        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            ui.planner.store->clearPersonalContent();
            ui.planner.store->addReminder({.title = QStringLiteral("Water the plants")});
            openClearDialog(ui);
            ui.press(Qt::Key_Tab);
            QTRY_VERIFY(ui.hasFocus(QAccessible::Button, QStringLiteral("清空")));
            QSignalSpy clearings(ui.planner.store.get(), &PlannerStore::calendarSyncMessageReported);
            ui.press(key);
            QTRY_VERIFY(!ui.state("showClearConfirmation").toBool());
            QCOMPARE(ui.planner.store->reminders().size(), 0);
            QCOMPARE(clearings.count(), 1);
        }
    }

    void theKeyThatOpenedTheClearDialogDoesNotAnswerItWhenHeld()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        ui.find(QAccessible::Button, QStringLiteral("清空"))->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(isCancelFocused(ui));

        QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
        QCoreApplication::sendEvent(&ui.window(), &repeat);

        QVERIFY(ui.state("showClearConfirmation").toBool());
        QTRY_VERIFY2(ui.find(QAccessible::Button, QStringLiteral("取消"))->property("visualFocus").toBool(),
                     "the keyboard's user sees where the focus is");
        ui.press(Qt::Key_Enter);
        QTRY_VERIFY(!ui.state("showClearConfirmation").toBool());
    }

    void everyTextFollowsTheLanguage_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::newRow("nothing open") << QByteArray();
        QTest::newRow("name prompt") << QByteArray("showNamePrompt");
        QTest::newRow("clear dialog") << QByteArray("showClearConfirmation");
        QTest::newRow("about") << QByteArray("showAbout");
        QTest::newRow("unsaved") << QByteArray("showUnsaved");
    }

    void everyTextFollowsTheLanguage()
    {
        QFETCH(const QByteArray, state);
        // Names, and what is in one language on purpose.
        const QStringList names{QStringLiteral("Tessaly"),      QStringLiteral("The Tessaly authors"),
                                QStringLiteral("中文"),         QStringLiteral("English"),
                                QStringLiteral("请求通知权限"), QStringLiteral("About Tessaly"),
                                QStringLiteral("/documents")};
        WindowUnderTest ui;
        openAnswered(ui);
        for (int section = ShellModel::Overview; section <= ShellModel::Documents; ++section) {
            ui.setState("section", section);
            if (!state.isEmpty())
                ui.setState(state, true);
            for (const AppLanguage language : {AppLanguage::English, AppLanguage::Chinese}) {
                ui.planner.store->setInterfaceLanguage(language);
                const QStringList texts = ui.visibleTexts();
                QVERIFY(texts.contains(language == AppLanguage::English ? QStringLiteral("Settings")
                                                                        : QStringLiteral("设置")));
                for (const QString &text : texts) {
                    if (names.contains(text))
                        continue;
                    if (language == AppLanguage::English)
                        QVERIFY2(!chineseLetter().match(text).hasMatch(), qUtf8Printable(text));
                    else
                        QVERIFY2(!isLatinOnly(text), qUtf8Printable(text));
                }
            }
        }
    }

    void theSidebarIsOneStopAndArrowsChoose()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        QQuickItem *list = ui.find(QAccessible::List, QStringLiteral("工作台"));
        QVERIFY2(!list->property("isFocusVisible").toBool(), "the ring is for the keyboard");
        ui.find(QAccessible::Button, QStringLiteral("查找与添加"))->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Backtab);
        QVERIFY(list->hasActiveFocus());
        const QPointer<QQuickItem> first = ui.screen();

        QVERIFY(list->property("isFocusVisible").toBool());
        ui.press(Qt::Key_Down);
        ui.press(Qt::Key_Down);

        QCOMPARE(ui.state("section").toInt(), int(ShellModel::Reminders));
        QTRY_VERIFY2(first.isNull(), "each choice makes a fresh screen");
        ui.press(Qt::Key_End);
        ui.press(Qt::Key_Down);
        QCOMPARE(ui.state("section").toInt(), int(ShellModel::Documents));
        QVERIFY(ui.click(QAccessible::ListItem, QStringLiteral("目标")));
        QCOMPARE(ui.state("section").toInt(), int(ShellModel::Goals));
    }

    void thePickersChooseLanguageAndAppearance()
    {
        WindowUnderTest ui;
        openAnswered(ui);

        pick(ui, QStringLiteral("语言"), QStringLiteral("English"));
        QCOMPARE(ui.planner.store->interfaceLanguage(), AppLanguage::English);
        pick(ui, QStringLiteral("Appearance"), QStringLiteral("Dark"));
        QCOMPARE(ui.shell().appearanceMode(), QStringLiteral("dark"));
        QVERIFY(ui.window().color().lightness() < 128);
        pick(ui, QStringLiteral("Appearance"), QStringLiteral("System"));
        QVERIFY(ui.window().color().lightness() > 128);
        ui.appearance.setCurrent({.isDark = true});
        QVERIFY(ui.window().color().lightness() < 128);
    }

    void aRefusedLoginItemShowsTheRealState()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        ui.planner.loginItem.failWith(Error{ErrorCode::LoginItemFailed});

        pick(ui, QStringLiteral("启动"), QStringLiteral("开机启动"));

        QCOMPARE(ui.find(QAccessible::ComboBox, QStringLiteral("启动"))->property("displayText").toString(),
                 QStringLiteral("关闭"));
        QTRY_VERIFY2(ui.find(QAccessible::StatusBar, ui.planner.message()), "the failure is told in passing");
        ui.planner.store->setInterfaceLanguage(AppLanguage::English);
        QVERIFY2(ui.find(QAccessible::StatusBar, ui.planner.message()), "in the language that there is now");
    }

    void aLongMessageInPassingWraps()
    {
        WindowUnderTest ui;
        // The outcome of a sync would replace the message.
        (void)ui.planner.preferences.setValue(keys::automaticCalendarSync, false);
        openAnswered(ui);
        ui.window().resize(ui.window().minimumSize());
        ui.planner.loginItem.failWith(
            Error{ErrorCode::LoginItemFailed, QStringLiteral("/autostart/a-folder-with-a-long-name").repeated(4)});
        ui.planner.store->setLaunchAtLogin(true);

        QTRY_VERIFY(ui.find(QAccessible::StatusBar, ui.planner.message()));
        const QQuickItem *line = ui.find(QAccessible::StatusBar, ui.planner.message());
        const QList<QQuickItem *> parts = line->childItems();
        const auto words = std::find_if(parts.cbegin(), parts.cend(), [&ui](const QQuickItem *part) {
            return part->property("text") == ui.planner.message();
        });
        QVERIFY(words != parts.cend());
        QVERIFY((*words)->property("lineCount").toInt() > 1);
        QVERIFY(!(*words)->property("truncated").toBool());
        QVERIFY(line->parentItem()->height() > line->height());
        QVERIFY(line->height() >= (*words)->height());
    }

    void aLoginItemRemovedElsewhereIsNoticedWithTheNextLookAtTheWindow()
    {
        WindowUnderTest ui;
        (void)ui.planner.loginItem.setEnabled(true);
        openAnswered(ui);
        const auto choice = [&ui] {
            return ui.find(QAccessible::ComboBox, QStringLiteral("启动"))->property("displayText").toString();
        };
        QCOMPARE(choice(), QStringLiteral("开机启动"));
        QWindow other;
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));

        (void)ui.planner.loginItem.setEnabled(false);
        const int before = ui.planner.preferences.writeCount();
        ui.window().requestActivate();

        QTRY_COMPARE(choice(), QStringLiteral("关闭"));
        QCOMPARE(ui.planner.preferences.writeCount(), before);
    }

    void messagesPassByOnAllScreensButTheSchedule()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        ui.setState("section", ShellModel::Schedule);
        ui.planner.store->clearPersonalContent();
        QVERIFY(!ui.planner.message().isEmpty());
        const auto toastShows = [&ui] {
            const QQuickItem *line = ui.find(QAccessible::StatusBar, ui.planner.message());
            return line && line->parentItem()->property("message") == ui.planner.message();
        };
        QVERIFY(!toastShows());

        ui.setState("section", ShellModel::Goals);
        ui.planner.store->setInterfaceLanguage(AppLanguage::English);
        ui.planner.store->clearPersonalContent();

        QTRY_VERIFY(toastShows());
        ui.setState("section", ShellModel::Schedule);
        QTRY_VERIFY2(!toastShows(), "there it would say the same as the status line");
    }

    void successLeavesAndFailureStaysUntilItIsClosed_data()
    {
        QTest::addColumn<ShellModel::SidebarItem>("section");
        QTest::newRow("in passing") << ShellModel::Goals;
        QTest::newRow("status line") << ShellModel::Schedule;
    }

    void successLeavesAndFailureStaysUntilItIsClosed()
    {
        QFETCH(const ShellModel::SidebarItem, section);
        WindowUnderTest ui;
        openAnswered(ui);
        ui.setState("section", section);
        const auto shows = [&ui](const QString &message) { return ui.find(QAccessible::StatusBar, message); };
        ui.planner.store->clearPersonalContent();
        QTRY_VERIFY(shows(ui.planner.message()));
        QTRY_VERIFY_WITH_TIMEOUT(ui.planner.message().isEmpty(), 10'000);

        ui.planner.loginItem.failWith(Error{ErrorCode::LoginItemFailed, {}});
        ui.planner.store->setLaunchAtLogin(true);
        QTRY_VERIFY(shows(ui.planner.message()));
        ui.setState("section", ShellModel::Schedule);
        ui.setState("section", ShellModel::Documents);
        QTRY_VERIFY2(shows(ui.planner.message()), "it follows to other screens");
        ui.setState("section", section);
        QTRY_VERIFY(shows(ui.planner.message()));
        QTRY_VERIFY(ui.click(QAccessible::Button, QStringLiteral("关闭消息")));
        QTRY_VERIFY(ui.planner.message().isEmpty());
    }

    void unsavedChangesAreShownAsLongAsThereAreAny()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        const auto lineShows = [&ui] { return ui.find(QAccessible::StatusBar, QStringLiteral("有更改尚未保存")); };
        QVERIFY(!lineShows());

        makeUnsaved(ui);
        for (const int section : {ShellModel::Overview, ShellModel::Schedule, ShellModel::Documents}) {
            ui.setState("section", section);
            QVERIFY(lineShows());
        }

        ui.planner.preferences.failWritesWith(std::nullopt);
        ui.planner.store->retryUnsavedChanges();
        QVERIFY(!lineShows());
    }

    void closingWithUnsavedChangesAsksFirst()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        makeUnsaved(ui);

        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
            ui.window().close();
            QTRY_VERIFY(ui.hasFocus(QAccessible::Button, QStringLiteral("留下")));
            ui.press(key);
            QTRY_VERIFY(!ui.find(QAccessible::Dialog, QStringLiteral("不保存就退出？")));
            QVERIFY(ui.window().isVisible());
        }
        ui.window().close();
        QTRY_VERIFY(ui.hasFocus(QAccessible::Button, QStringLiteral("留下")));
        QVERIFY(ui.click(QAccessible::Button, QStringLiteral("不保存并退出")));
        QTRY_VERIFY(!ui.window().isVisible());
    }

    void theQuestionGoesOnceEverythingIsSaved()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        makeUnsaved(ui);
        ui.window().close();
        QTRY_VERIFY(ui.hasFocus(QAccessible::Button, QStringLiteral("留下")));

        ui.planner.preferences.failWritesWith(std::nullopt);
        ui.planner.store->retryUnsavedChanges();

        QTRY_VERIFY(!ui.find(QAccessible::Dialog, QStringLiteral("不保存就退出？")));
        ui.window().close();
        QVERIFY(!ui.window().isVisible());
    }

    void closingTriesToSaveOnceMore()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        makeUnsaved(ui);
        ui.planner.preferences.failWritesWith(std::nullopt);

        ui.window().close();

        QVERIFY(!ui.window().isVisible());
        QCOMPARE(ui.planner.saved()->reminders.size(), 1);
    }

    void aProgramThatStaysDoesNotAsk()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        makeUnsaved(ui);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        const auto restore = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(true); });

        ui.window().close();

        QVERIFY(!ui.window().isVisible());
    }

    void aWindowThatIsOpenedAgainStartsAfresh()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        const auto restore = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(true); });
        for (const auto section : {ShellModel::Schedule, ShellModel::Overview}) {
            ui.setState("section", section);
            const QPointer<QQuickItem> former = ui.screen();

            ui.window().close();
            QTRY_VERIFY(!former);
            ui.raise();

            QTRY_VERIFY(ui.window().isExposed());
            QCOMPARE(ui.state("section").toInt(), int(ShellModel::Overview));
            QVERIFY(ui.screen());
        }
    }

    void aProgramThatStaysEndsByItsKey()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        makeUnsaved(ui);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        const auto restore = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(true); });
        // A dialog over the window does not keep the key out.
        ui.setState("showAbout", true);
        QTRY_VERIFY(ui.find(QAccessible::Dialog, QStringLiteral("Tessaly")));

        QTest::keyClick(&ui.window(), Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(ui.hasFocus(QAccessible::Button, QStringLiteral("留下")));
        QVERIFY(!QGuiApplication::quitOnLastWindowClosed());

        ui.press(Qt::Key_Escape);
        QTRY_VERIFY(!ui.find(QAccessible::Dialog, QStringLiteral("不保存就退出？")));
        ui.planner.preferences.failWritesWith(std::nullopt);
        QTest::keyClick(&ui.window(), Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!ui.window().isVisible());
        QVERIFY(QGuiApplication::quitOnLastWindowClosed());
    }

    void aProgramWhoseRemindersWaitStaysAndSaysSo()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        const auto restore = qScopeGuard([] { QGuiApplication::setQuitOnLastWindowClosed(true); });
        ui.app().stayWhileRemindersWait();
        QVERIFY(QGuiApplication::quitOnLastWindowClosed());
        ReminderItem due{.title = QStringLiteral("Tea"), .dueDate = ui.planner.clock.now().plus(3600)};
        ui.planner.store->addReminder(due);

        ui.window().close();

        QVERIFY(!QGuiApplication::quitOnLastWindowClosed());
        QCOMPARE(ui.planner.notificationPresenter.shown().size(), 1);
        // Without its window it does not end: the last notification can still be clicked.
        due.isComplete = true;
        ui.planner.store->updateReminder(due);
        QVERIFY(!QGuiApplication::quitOnLastWindowClosed());

        ui.app().raise({});
        QVERIFY(QGuiApplication::quitOnLastWindowClosed());
        due.isComplete = false;
        ui.planner.store->updateReminder(due);
        QTest::keyClick(&ui.window(), Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!ui.window().isVisible());
        QVERIFY(QGuiApplication::quitOnLastWindowClosed());
    }

    void theMenuHasItsTwoCommandsAndGivesTheRingBack()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        QQuickItem *opener = ui.find(QAccessible::Button, QStringLiteral("菜单"));
        opener->forceActiveFocus(Qt::TabFocusReason);
        ui.press(Qt::Key_Return);
        QTRY_VERIFY(ui.find(QAccessible::MenuItem, QStringLiteral("About Tessaly")));
        ui.press(Qt::Key_Escape);
        QTRY_VERIFY(!ui.find(QAccessible::MenuItem, QStringLiteral("About Tessaly")));
        QVERIFY(opener->property("visualFocus").toBool());

        QVERIFY(ui.click(QAccessible::Button, QStringLiteral("菜单")));
        QTRY_VERIFY(ui.find(QAccessible::MenuItem, QStringLiteral("请求通知权限")));
        QVERIFY(ui.click(QAccessible::MenuItem, QStringLiteral("请求通知权限")));
        QTRY_COMPARE(ui.planner.notificationPresenter.authorizationCount(), 1);

        QTRY_VERIFY(!ui.find(QAccessible::MenuItem, QStringLiteral("About Tessaly")));
        QVERIFY(ui.click(QAccessible::Button, QStringLiteral("菜单")));
        QTRY_VERIFY(ui.find(QAccessible::MenuItem, QStringLiteral("About Tessaly")));
        QVERIFY(ui.click(QAccessible::MenuItem, QStringLiteral("About Tessaly")));
        QTRY_VERIFY(ui.find(QAccessible::StaticText, QStringLiteral("The Tessaly authors")));
    }

    void aStartWritesNothing()
    {
        WindowUnderTest ui;
        openAnswered(ui);
        const int before = ui.planner.preferences.writeCount();
        ui.open();
        ui.window().close();
        QCOMPARE(ui.planner.preferences.writeCount(), before);
    }

    void aClosedWindowComesBackWhereItWas_data()
    {
        QTest::addColumn<Qt::WindowState>("state");
        QTest::newRow("as it was") << Qt::WindowNoState;
        QTest::newRow("maximised") << Qt::WindowMaximized;
        QTest::newRow("minimised") << Qt::WindowMinimized;
    }

    void aClosedWindowComesBackWhereItWas()
    {
        QFETCH(const Qt::WindowState, state);
        WindowUnderTest ui;
        WindowFrame frame{{60, 50}, {920, 630}};
        ui.planner.put(keys::windowFrame, frame.toString());
        openAnswered(ui);
        QVERIFY(ui.window().frameMargins().top() > 0);

        for (int cycle = 0; cycle < 4; ++cycle) {
            ui.window().close();
            QTRY_VERIFY(!ui.window().isVisible());
            ui.raise();
            QTRY_VERIFY(ui.window().isExposed());
            if (cycle == 0) {
                QCOMPARE(ui.window().framePosition(), frame.position);
                ui.window().setWindowState(state);
                QCoreApplication::processEvents();
                continue;
            }
            QCOMPARE(ui.window().windowState(), state == Qt::WindowMaximized ? Qt::WindowMaximized : Qt::WindowNoState);
        }

        if (state != Qt::WindowMaximized)
            QCOMPARE(ui.window().framePosition(), frame.position);
        ui.window().close();
        const auto saved = WindowFrame::fromString(ui.planner.preferences.get<QString>(keys::windowFrame).value());
        frame.isMaximized = state == Qt::WindowMaximized;
        QCOMPARE(saved, frame);
    }

private:
    /// The window of somebody who has answered the name prompt.
    static void openAnswered(WindowUnderTest &ui)
    {
        ui.planner.put(keys::hasAskedPreferredName, true);
        ui.open();
    }

    static void makeUnsaved(WindowUnderTest &ui)
    {
        ui.planner.preferences.failWritesWith(Error{ErrorCode::StorageFull, {}});
        ui.planner.store->addReminder({.title = QStringLiteral("Water the plants")});
    }

    static bool isCancelFocused(const WindowUnderTest &ui)
    {
        return ui.hasFocus(QAccessible::Button, QStringLiteral("取消"));
    }

    static void openClearDialog(const WindowUnderTest &ui)
    {
        QTRY_VERIFY(!ui.find(QAccessible::Dialog, QStringLiteral("清空内容？")));
        QVERIFY(ui.click(QAccessible::Button, QStringLiteral("清空")));
        QTRY_VERIFY(isCancelFocused(ui));
    }

    static void pick(const WindowUnderTest &ui, const QString &box, const QString &choice)
    {
        QVERIFY(ui.click(QAccessible::ComboBox, box));
        QTRY_VERIFY(ui.find(QAccessible::ListItem, choice));
        QVERIFY(ui.click(QAccessible::ListItem, choice));
        QTRY_VERIFY(!ui.find(QAccessible::ListItem, choice));
    }
};

TESSALY_TEST_MAIN(ShellWindowTest)
#include "ShellWindowTest.moc"
