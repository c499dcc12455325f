#include "tests/support/TestMain.h"
#include "tests/views/shell/WindowUnderTest.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

constexpr auto button = QAccessible::Button;
constexpr auto undoKeys = Qt::ControlModifier;
constexpr auto redoKeys = Qt::ControlModifier | Qt::ShiftModifier;

} // namespace

class UndoWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_ui = std::make_unique<WindowUnderTest>();
        m_ui->planner.put(keys::hasAskedPreferredName, true);
        m_ui->planner.put(keys::interfaceLanguage, u"en"_s);
        const SavedData data{.reminders = {{.title = u"A"_s}, {.title = u"B"_s}}};
        m_ui->planner.put(keys::storageKey, *encodeSavedData(data));
        m_ui->planner.put(keys::calendarFeedsKey,
                          *encodeCalendarFeeds({{.name = u"Fair"_s, .urlString = u"https://x.test/fair.ics"_s}}));
        m_ui->open();
        m_ui->setState("section", ShellModel::Reminders);
        QTRY_VERIFY(m_ui->find(button, u"Delete, B"_s));
    }

    void cleanup() { m_ui.reset(); }

    void theToastTakesARemovalBackByKey()
    {
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        QTRY_VERIFY(m_ui->find(QAccessible::StatusBar, u"Deleted “A”"_s));
        QVERIFY(!m_ui->find(button, u"Delete, A"_s));

        m_ui->press(Qt::Key_F6);
        QTRY_VERIFY(m_ui->hasFocus(button, u"Undo"_s));
        m_ui->press(Qt::Key_Space);

        QTRY_VERIFY(m_ui->find(button, u"Delete, A"_s));
        QTRY_VERIFY(m_ui->find(QAccessible::StatusBar, u"Restored “A”"_s));
        QCOMPARE(titles(), (QStringList{u"A"_s, u"B"_s}));
    }

    void escapeClosesTheToastAndThePageGrowsBack()
    {
        const auto footRoom = [this] {
            return m_ui->screen()->property("scroll").value<QObject *>()->property("footRoom").toReal();
        };
        QCOMPARE(footRoom(), 0);
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        QTRY_VERIFY(m_ui->find(QAccessible::StatusBar, u"Deleted “A”"_s));
        QCOMPARE(footRoom(), 60);

        m_ui->press(Qt::Key_F6);
        m_ui->press(Qt::Key_Escape);

        QTRY_VERIFY(!m_ui->find(QAccessible::StatusBar, u"Deleted “A”"_s));
        QCOMPARE(footRoom(), 0);
        QCOMPARE(titles(), QStringList{u"B"_s});
    }

    void anImportCanBeDeclinedAgainAndAgain()
    {
        for (int time = 0; time < 3; ++time) {
            m_ui->shell().archive()->offerImport(QUrl::fromLocalFile(u"/all.zip"_s));
            QTRY_VERIFY(m_ui->click(button, u"Cancel"_s));
            QTRY_VERIFY(!m_ui->find(button, u"Cancel"_s));
        }
        QCOMPARE(titles(), (QStringList{u"A"_s, u"B"_s}));
    }

    void earlierVersionsStandUnderTheirHeadings()
    {
        m_ui->planner.store->generations().keepBefore(GenerationReason::Clear);
        QVERIFY(QMetaObject::invokeMethod(m_ui->app().window().property("content").value<QObject *>(),
                                          "versionsRequested"));
        QTRY_VERIFY(m_ui->visibleTexts().contains(u"Restore points"_s));
        QVERIFY(m_ui->visibleTexts().contains(u"Before clearing content"_s));
    }

    void whoHasRestoredEverythingIsDone()
    {
        m_ui->planner.store->generations().keepBefore(GenerationReason::Clear);
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        QVERIFY(QMetaObject::invokeMethod(m_ui->app().window().property("content").value<QObject *>(),
                                          "versionsRequested"));
        QTRY_VERIFY(m_ui->find(button, u"Restore all"_s) && m_ui->find(button, u"Restore all"_s)->isEnabled());
        m_ui->find(button, u"Restore all"_s)->forceActiveFocus(Qt::TabFocusReason);
        m_ui->press(Qt::Key_Space);

        QTRY_COMPARE(titles(), (QStringList{u"A"_s, u"B"_s}));
        QVERIFY(m_ui->hasFocus(button, u"Done"_s));
    }

    void theKeysUndoAndRedo()
    {
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        m_ui->press(Qt::Key_Z, undoKeys);
        QTRY_COMPARE(titles(), (QStringList{u"A"_s, u"B"_s}));
        m_ui->press(Qt::Key_Z, redoKeys);
        QTRY_COMPARE(titles(), QStringList{u"B"_s});
    }

    void aTextFieldUndoesItsOwnTextFirst()
    {
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        QQuickItem *field = m_ui->find(QAccessible::EditableText, u"Name"_s);
        QVERIFY(field);
        field->forceActiveFocus(Qt::TabFocusReason);
        m_ui->type(u"x"_s);
        m_ui->press(Qt::Key_Z, undoKeys);
        QCOMPARE(field->property("text").toString(), QString());
        QCOMPARE(titles(), QStringList{u"B"_s});

        // With nothing of its own left, the field lets the key through.
        m_ui->press(Qt::Key_Z, undoKeys);
        QTRY_COMPARE(titles(), (QStringList{u"A"_s, u"B"_s}));
        m_ui->press(Qt::Key_Z, redoKeys);
        QCOMPARE(field->property("text").toString(), u"x"_s);
    }

    void theMenuNamesTheStep()
    {
        QVERIFY(m_ui->click(button, u"Menu"_s));
        QTRY_VERIFY(m_ui->find(QAccessible::MenuItem, u"Undo"_s));
        QVERIFY(!m_ui->find(QAccessible::MenuItem, u"Undo"_s)->isEnabled());
        m_ui->press(Qt::Key_Escape);
        QTRY_VERIFY(!m_ui->find(QAccessible::MenuItem, u"Undo"_s));
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        QTRY_COMPARE(titles(), QStringList{u"B"_s});

        QVERIFY(m_ui->click(button, u"Menu"_s));
        QTRY_VERIFY(m_ui->find(QAccessible::MenuItem, u"Undo “Delete to-do”"_s));
        QVERIFY(m_ui->click(QAccessible::MenuItem, u"Undo “Delete to-do”"_s));

        QTRY_COMPARE(titles(), (QStringList{u"A"_s, u"B"_s}));
    }

    void aSheetKeepsTheKeysOut()
    {
        QVERIFY(m_ui->click(button, u"Delete, A"_s));
        m_ui->setState("showClearConfirmation", true);
        QTRY_VERIFY(m_ui->find(QAccessible::Dialog, u"Clear content?"_s));

        m_ui->press(Qt::Key_Z, undoKeys);

        QCOMPARE(titles(), QStringList{u"B"_s});
    }

    void aLinkComesBackOverTheSheetItWasDeletedIn_data()
    {
        QTest::addColumn<bool>("isByShortcut");
        QTest::newRow("the toast's button") << false;
        QTest::newRow("the shortcut") << true;
    }

    void aLinkComesBackOverTheSheetItWasDeletedIn()
    {
        QFETCH(const bool, isByShortcut);
        m_ui->setState("section", ShellModel::Schedule);
        QVERIFY(m_ui->click(button, u"Import settings"_s));
        QTRY_VERIFY(m_ui->find(button, u"Delete, Fair"_s));
        QVERIFY(m_ui->click(button, u"Delete, Fair"_s));
        QTRY_VERIFY(m_ui->find(QAccessible::StatusBar, u"Deleted “Fair”"_s));
        QVERIFY(!m_ui->find(button, u"Delete, Fair"_s));

        if (isByShortcut) {
            m_ui->press(Qt::Key_Z, undoKeys);
        } else {
            m_ui->press(Qt::Key_F6);
            QTRY_VERIFY(m_ui->hasFocus(button, u"Undo"_s));
            m_ui->press(Qt::Key_Space);
        }

        QTRY_VERIFY(m_ui->find(button, u"Delete, Fair"_s));
        QVERIFY(m_ui->find(QAccessible::Dialog, u"Import calendars"_s));
    }

private:
    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (const ReminderItem &item : m_ui->planner.store->reminders())
            titles.append(item.title);
        return titles;
    }

    std::unique_ptr<WindowUnderTest> m_ui;
};

TESSALY_TEST_MAIN(UndoWindowTest)
#include "UndoWindowTest.moc"
