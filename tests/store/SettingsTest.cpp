#include "store/ErrorText.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QMetaProperty>
#include <QSignalSpy>

using namespace tessaly;

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void whoeverMarksTodayHearsOfEachNewDay()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        const QMetaObject &type = *store.metaObject();
        QSignalSpy told(&store, type.property(type.indexOfProperty("now")).notifySignal());
        const QDate day = store.today();
        const double untilMidnight = planner.calendar.startOfDay(day.addDays(1)).seconds - planner.clock.now().seconds;

        planner.clock.advance(untilMidnight - 1);
        QCOMPARE(told.size(), 0);
        planner.clock.advance(1);
        QCOMPARE(told.size(), 1);
        QCOMPARE(store.today(), day.addDays(1));
        QCOMPARE(store.now().date(), day.addDays(1));

        planner.clock.advance(86400 * 2);
        QCOMPARE(told.size(), 3);
        planner.clock.setZone(QTimeZone("Pacific/Kiritimati"));
        QCOMPARE(told.size(), 4);
    }

    void eachSettingIsStoredUnderItsKeyAndAnnouncedOnce_data()
    {
        using Change = std::function<void(PlannerStore &)>;
        QTest::addColumn<Change>("change");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QString>("key");
        QTest::addColumn<PreferenceValue>("expected");

        const auto row = [](const char *name, const Change &change, const char *signal, const QString &key,
                            const PreferenceValue &expected) {
            QTest::newRow(name) << change << QByteArray(signal) << key << expected;
        };
        const QSet<QString> identifiers{QStringLiteral("x")};
        const QStringList list{QStringLiteral("x")};
        row(
            "language", [](PlannerStore &store) { store.setInterfaceLanguage(AppLanguage::English); },
            SIGNAL(interfaceLanguageChanged()), keys::interfaceLanguage, QStringLiteral("en"));
        row(
            "name", [](PlannerStore &store) { store.setPreferredName(QStringLiteral("Ada")); },
            SIGNAL(preferredNameChanged()), keys::preferredName, QStringLiteral("Ada"));
        row(
            "start hour", [](PlannerStore &store) { store.setDisplayStartHour(7); }, SIGNAL(displayHoursChanged()),
            keys::displayStartHour, qint64{7});
        row(
            "end hour", [](PlannerStore &store) { store.setDisplayEndHour(20); }, SIGNAL(displayHoursChanged()),
            keys::displayEndHour, qint64{20});
        row(
            "login", [](PlannerStore &store) { store.setLaunchAtLogin(true); }, SIGNAL(launchAtLoginChanged()),
            keys::launchAtLogin, true);
        row(
            "sync", [](PlannerStore &store) { store.setAutomaticCalendarSync(false); },
            SIGNAL(automaticCalendarSyncChanged()), keys::automaticCalendarSync, false);
        row(
            "selected", [=](PlannerStore &store) { store.setSelectedCalendarIDs(identifiers); },
            SIGNAL(selectedCalendarIDsChanged()), keys::selectedCalendarIDs, list);
        row(
            "visible", [=](PlannerStore &store) { store.setVisibleCalendarIDs(identifiers); },
            SIGNAL(visibleCalendarIDsChanged()), keys::visibleCalendarIDs, list);
    }

    void eachSettingIsStoredUnderItsKeyAndAnnouncedOnce()
    {
        QFETCH(const std::function<void(PlannerStore &)>, change);
        QFETCH(const QByteArray, signal);
        QFETCH(const QString, key);
        QFETCH(const PreferenceValue, expected);
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        QSignalSpy announced(&store, signal.constData());

        change(store);

        QCOMPARE(announced.count(), 1);
        QVERIFY(planner.preferences.value(key) == expected);
    }

    void theChoicesAreOffAtFirstAndKept()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        const Qt::DayOfWeek ofSystem = planner.calendar.firstWeekday();
        const Qt::DayOfWeek other = ofSystem == Qt::Monday ? Qt::Sunday : Qt::Monday;
        QVERIFY(store.weekOptions() == WeekOptions());
        QCOMPARE(store.calendar().firstWeekday(), ofSystem);
        const QMap<QString, bool WeekOptions::*> members{
            {keys::hidesWeekend, &WeekOptions::hidesWeekend},
            {keys::showsWeekNumbers, &WeekOptions::showsWeekNumbers},
            {keys::hasAllDayRow, &WeekOptions::hasAllDayRow},
            {keys::marksHiddenTimes, &WeekOptions::marksHiddenTimes},
            {keys::showsChineseCalendar, &WeekOptions::showsChineseCalendar},
            {keys::roundsTaps, &WeekOptions::roundsTaps},
        };
        QCOMPARE(DisplayChoices::storedKeys().size(), members.size() + 1);
        QSignalSpy changed(store.displayChoices(), &DisplayChoices::changed);
        for (auto each = members.cbegin(); each != members.cend(); ++each) {
            store.displayChoices()->setStored(each.key(), true);
            QVERIFY(store.weekOptions().**each);
        }
        QSignalSpy daysChanged(&store, &PlannerStore::timeZoneChanged);
        store.displayChoices()->setFirstWeekday(other);
        QCOMPARE(changed.count(), members.size() + 1);
        QCOMPARE(daysChanged.count(), 1);
        QCOMPARE(store.calendar().firstWeekday(), other);

        PlannerStore &again = planner.start();
        for (auto each = members.cbegin(); each != members.cend(); ++each)
            QVERIFY(again.weekOptions().**each);
        QCOMPARE(again.calendar().firstWeekday(), other);
        again.displayChoices()->setFirstWeekday(0);
        QCOMPARE(again.calendar().firstWeekday(), ofSystem);
    }

    void theStartHourStaysBeforeTheEndHour_data()
    {
        QTest::addColumn<int>("storedStart");
        QTest::addColumn<int>("storedEnd");
        QTest::addColumn<int>("newStart");
        QTest::addColumn<int>("newEnd");
        QTest::addColumn<int>("expectedStart");
        QTest::addColumn<int>("expectedEnd");

        constexpr int unchanged = -1;
        QTest::newRow("start past the end") << 0 << 20 << 23 << unchanged << 19 << 20;
        QTest::newRow("start at the end") << 0 << 20 << 20 << unchanged << 19 << 20;
        QTest::newRow("end before the start") << 5 << 24 << unchanged << 3 << 5 << 6;
        QTest::newRow("end at the start") << 5 << 24 << unchanged << 5 << 5 << 6;
        QTest::newRow("no clamping to the day") << 0 << 24 << unchanged << 30 << 0 << 30;
    }

    void theStartHourStaysBeforeTheEndHour()
    {
        QFETCH(const int, storedStart);
        QFETCH(const int, storedEnd);
        QFETCH(const int, newStart);
        QFETCH(const int, newEnd);
        StoreUnderTest planner;
        planner.put(keys::displayStartHour, qint64{storedStart});
        planner.put(keys::displayEndHour, qint64{storedEnd});
        PlannerStore &store = planner.start();

        if (newStart >= 0)
            store.setDisplayStartHour(newStart);
        if (newEnd >= 0)
            store.setDisplayEndHour(newEnd);

        QTEST(store.displayStartHour(), "expectedStart");
        QTEST(store.displayEndHour(), "expectedEnd");
    }

    void aRefusedLoginItemIsReportedAndTheSystemsStateShown()
    {
        StoreUnderTest planner;
        const Error refusal{ErrorCode::LoginItemFailed, QStringLiteral("/autostart")};
        planner.loginItem.failWith(refusal);
        PlannerStore &store = planner.start();
        QSignalSpy announced(&store, &PlannerStore::launchAtLoginChanged);

        store.setLaunchAtLogin(true);
        QVERIFY(!store.launchAtLogin());
        QCOMPARE(announced.count(), 1);
        QCOMPARE(planner.message(),
                 QStringLiteral("无法更新开机启动设置：") + errorText(refusal, AppLanguage::Chinese));

        store.setInterfaceLanguage(AppLanguage::English);
        store.setLaunchAtLogin(true);
        QCOMPARE(planner.message(), QStringLiteral("Unable to update launch-at-login: The system did not accept the "
                                                   "launch-at-login setting (/autostart)."));
    }

    void messagesOfSuccessPassAndOthersStay_data()
    {
        QTest::addColumn<std::function<void(StoreUnderTest &)>>("act");
        QTest::addColumn<bool>("isPassing");
        QTest::addColumn<bool>("isFailure");
        QTest::newRow("success") << std::function([](StoreUnderTest &planner) {
            planner.store->clearPersonalContent();
        }) << true << false;
        QTest::newRow("progress") << std::function([](StoreUnderTest &planner) {
            planner.store->calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics"));
        }) << false << false;
        QTest::newRow("refused link") << std::function([](StoreUnderTest &planner) {
            planner.store->calendarLinks().addCalendarFeed(QStringLiteral("a.ics"));
        }) << false << true;
        QTest::newRow("failure") << std::function([](StoreUnderTest &planner) {
            planner.preferences.failWritesWith(Error{ErrorCode::StorageFull, {}});
            planner.store->setPreferredName(QStringLiteral("Ada"));
        }) << false << true;
    }

    void messagesOfSuccessPassAndOthersStay()
    {
        QFETCH(std::function<void(StoreUnderTest &)>, act);
        StoreUnderTest planner;
        PlannerStore &store = planner.start();

        act(planner);
        QVERIFY(!planner.message().isEmpty());
        QTEST(store.isSyncMessagePassing(), "isPassing");
        QTEST(store.isSyncMessageFailure(), "isFailure");

        store.dismissCalendarSyncMessage();
        QVERIFY(planner.message().isEmpty());
        store.retryUnsavedChanges();
        QVERIFY2(planner.message().isEmpty(), "a failure that was closed is not told again by a further try");
    }

    void datesFollowTheLanguage_data()
    {
        QTest::addColumn<bool>("isEnglish");
        QTest::addColumn<bool>("dateOnly");
        QTest::addColumn<QString>("expected");

        QTest::newRow("zh") << false << false << "2026年8月28日 09:05";
        QTest::newRow("zh, date only") << false << true << "2026年8月28日";
        QTest::newRow("en") << true << false << "Aug 28, 2026, 09:05";
        QTest::newRow("en, date only") << true << true << "Aug 28, 2026";
    }

    void datesFollowTheLanguage()
    {
        QFETCH(const bool, isEnglish);
        QFETCH(const bool, dateOnly);
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        store.setInterfaceLanguage(isEnglish ? AppLanguage::English : AppLanguage::Chinese);
        const Instant date = planner.calendar.instant({2026, 8, 28}, {9, 5});

        QTEST(store.dateText(date, dateOnly), "expected");
        QCOMPARE(store.text(QStringLiteral("待办"), QStringLiteral("To-dos")),
                 isEnglish ? QStringLiteral("To-dos") : QStringLiteral("待办"));
    }
};

TESSALY_TEST_MAIN(SettingsTest)
#include "SettingsTest.moc"
