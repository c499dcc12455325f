#include "views/shell/ShellModel.h"
#include "platform/fake/FakeSystemAppearance.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/FakeFileDialogs.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

class ShellModelTest : public QObject
{
    Q_OBJECT

private slots:
    void appearanceFollowsTheSystemUnlessOneIsChosen_data()
    {
        QTest::addColumn<QString>("storedMode");
        QTest::addColumn<bool>("isSystemDark");
        QTest::addColumn<bool>("isDark");

        QTest::newRow("first start, light desktop") << QString() << false << false;
        QTest::newRow("first start, dark desktop") << QString() << true << true;
        QTest::newRow("system") << QStringLiteral("system") << true << true;
        QTest::newRow("light") << QStringLiteral("light") << true << false;
        QTest::newRow("dark") << QStringLiteral("dark") << false << true;
        QTest::newRow("anything else is system") << QStringLiteral("sepia") << true << true;
    }

    void appearanceFollowsTheSystemUnlessOneIsChosen()
    {
        QFETCH(const QString, storedMode);
        QFETCH(const bool, isSystemDark);
        QFETCH(const bool, isDark);

        StoreUnderTest planner;
        if (!storedMode.isEmpty())
            planner.put(keys::appearanceMode, storedMode);
        FakeSystemAppearance appearance;
        const ShellModel shell(planner.start(), planner.preferences, appearance, m_dialogs);
        appearance.setCurrent({.isDark = isSystemDark});

        QCOMPARE(shell.isDark(), isDark);
    }

    void aChangeOfTheDesktopIsAnnounced()
    {
        StoreUnderTest planner;
        FakeSystemAppearance appearance;
        const ShellModel shell(planner.start(), planner.preferences, appearance, m_dialogs);
        const QSignalSpy spy(&shell, &ShellModel::appearanceChanged);

        appearance.setCurrent({.isDark = true, .isHighContrast = true, .hasReducedMotion = true});

        QCOMPARE(spy.count(), 1);
        QVERIFY(shell.isDark() && shell.isHighContrast() && shell.hasReducedMotion());
    }

    void anAppearanceThatCannotBeWrittenIsReportedAndKeptLater()
    {
        StoreUnderTest planner;
        FakeSystemAppearance appearance;
        ShellModel shell(planner.startInEnglish(), planner.preferences, appearance, m_dialogs);
        planner.preferences.failWritesWith(Error{ErrorCode::StorageFull});
        shell.setAppearanceMode(QStringLiteral("dark"));
        QVERIFY(planner.message().startsWith(QStringLiteral("Could not save changes: ")));

        planner.preferences.failWritesWith(std::nullopt);
        planner.store->retryUnsavedChanges();

        QCOMPARE(planner.preferences.get<QString>(keys::appearanceMode), QStringLiteral("dark"));
    }

    void theNamePromptIsAnsweredOnce_data()
    {
        QTest::addColumn<QString>("draft");
        QTest::addColumn<QString>("name");

        QTest::newRow("a name") << QStringLiteral("Ada") << QStringLiteral("Ada");
        QTest::newRow("white space around it goes")
            << QStringLiteral(" \n Ada Lovelace\t ") << QStringLiteral("Ada Lovelace");
        QTest::newRow("spaces only leave the name") << QStringLiteral("   ") << QStringLiteral("Before");
        QTest::newRow("nothing leaves the name") << QString() << QStringLiteral("Before");
    }

    void theNamePromptIsAnsweredOnce()
    {
        QFETCH(const QString, draft);
        QFETCH(const QString, name);

        StoreUnderTest planner;
        planner.put(keys::preferredName, QStringLiteral("Before"));
        FakeSystemAppearance appearance;
        ShellModel shell(planner.start(), planner.preferences, appearance, m_dialogs);
        QVERIFY(!shell.hasAskedPreferredName());

        shell.answerNamePrompt(draft);

        QCOMPARE(planner.store->preferredName(), name);
        const ShellModel next(planner.start(), planner.preferences, appearance, m_dialogs);
        QVERIFY(next.hasAskedPreferredName());
        QCOMPARE(planner.store->preferredName(), name);
    }

    void aStepBringsItsAppearance()
    {
        StoreUnderTest planner;
        FakeSystemAppearance appearance;
        PlannerStore &store = planner.start();
        const ShellModel shell(store, planner.preferences, appearance, m_dialogs);
        const PreferenceValue dark = QStringLiteral("dark");

        store.perform({.settings = {{keys::appearanceMode, {.after = dark}}}});
        QVERIFY(shell.isDark());
        store.undo();
        QVERIFY(!shell.isDark());
        store.redo();
        QVERIFY(shell.isDark());
    }

private:
    FakeFileDialogs m_dialogs;
};

TESSALY_TEST_MAIN(ShellModelTest)
#include "ShellModelTest.moc"
