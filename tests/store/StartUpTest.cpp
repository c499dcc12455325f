#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const QByteArray garbage = "{\"schedules\":[{]";

QByteArray dataWith(const QString &title)
{
    return *encodeSavedData(
        {.schedules = {scheduleTitled(title)}, .reminders = {{.title = title}}, .goals = {{.title = title}}});
}

} // namespace

class StartUpTest : public QObject
{
    Q_OBJECT

private slots:
    void aFirstStartIsChineseEmptyAndWritesNothing()
    {
        StoreUnderTest planner;
        const PlannerStore &store = planner.start();

        QCOMPARE(store.interfaceLanguage(), AppLanguage::Chinese);
        QCOMPARE(store.displayStartHour(), 0);
        QCOMPARE(store.displayEndHour(), 24);
        QVERIFY(store.automaticCalendarSync());
        QCOMPARE(store.preferredName(), QString());
        QVERIFY(store.schedules().isEmpty() && store.reminders().isEmpty() && store.goals().isEmpty());
        QVERIFY(!store.calendarSyncMessage());
        QCOMPARE(planner.preferences.writeCount(), 0);
        QCOMPARE(planner.eventStore.accessRequestCount(), 0);
    }

    void aStartRestoresEverythingAndWritesNothing()
    {
        StoreUnderTest planner;
        const CalendarFeed feed{.name = QStringLiteral("timetable"), .urlString = QStringLiteral("https://a/b.ics")};
        const MarkdownCategory category{.name = QStringLiteral("Work")};
        const MarkdownDocument document{.title = QStringLiteral("Plan"), .categoryID = category.id};
        planner.put(keys::storageKey, dataWith(QStringLiteral("kept")));
        planner.put(keys::documentMetadataKey, *encodeDocumentLibrary({{category}, {document}}));
        planner.put(keys::calendarFeedsKey, *encodeCalendarFeeds({feed}));
        planner.put(keys::selectedCalendarIDs, QStringList{QStringLiteral("a"), QStringLiteral("b")});
        planner.put(keys::visibleCalendarIDs, QStringList{QStringLiteral("c")});
        planner.put(keys::automaticCalendarSync, false);
        planner.put(keys::displayStartHour, qint64{20});
        planner.put(keys::displayEndHour, qint64{-3});
        planner.put(keys::preferredName, QStringLiteral("李明"));
        planner.put(keys::launchAtLogin, true);
        const int writes = planner.preferences.writeCount();

        const PlannerStore &store = planner.start();

        QCOMPARE(store.schedules().constFirst().title, QStringLiteral("kept"));
        QCOMPARE(store.reminders().size(), 1);
        QCOMPARE(store.goals().size(), 1);
        QCOMPARE(store.documentLibrary().documentCategories(), QList{category});
        QCOMPARE(store.documentLibrary().documents(), QList{document});
        QCOMPARE(store.calendarFeeds(), QList{feed});
        QCOMPARE(store.selectedCalendarIDs(), (QSet{QStringLiteral("a"), QStringLiteral("b")}));
        QCOMPARE(store.visibleCalendarIDs(), QSet{QStringLiteral("c")});
        QVERIFY(!store.automaticCalendarSync());
        QCOMPARE(store.displayStartHour(), 20);
        QCOMPARE(store.displayEndHour(), -3);
        QCOMPARE(store.preferredName(), QStringLiteral("李明"));
        QVERIFY2(!store.launchAtLogin(), "the system says it is off, whatever is stored");
        QCOMPARE(planner.preferences.writeCount(), writes);
    }

    void theStoredLanguageDecides_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("isEnglish");

        QTest::newRow("English") << "en" << true;
        QTest::newRow("Chinese") << "zh" << false;
        QTest::newRow("unknown") << "fr" << false;
        QTest::newRow("wrong case") << "EN" << false;
    }

    void theStoredLanguageDecides()
    {
        QFETCH(const QString, stored);
        QFETCH(const bool, isEnglish);
        StoreUnderTest planner;
        planner.put(keys::interfaceLanguage, stored);

        QCOMPARE(planner.start().isEnglish(), isEnglish);
    }

    void unreadableMainDataFallsBackToTheBackup_data()
    {
        QTest::addColumn<std::optional<PreferenceValue>>("main");
        QTest::addColumn<std::optional<PreferenceValue>>("backup");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("isReported");

        using Value = std::optional<PreferenceValue>;
        const Value newer = dataWith(QStringLiteral("new"));
        const Value older = dataWith(QStringLiteral("old"));
        QTest::newRow("both good") << newer << older << "new" << false;
        QTest::newRow("main damaged") << Value(garbage) << older << "old" << true;
        QTest::newRow("main of another type") << Value(QStringLiteral("text")) << older << "old" << true;
        QTest::newRow("main missing") << Value() << older << "old" << false;
        QTest::newRow("both damaged") << Value(garbage) << Value(garbage) << "" << true;
        QTest::newRow("both missing") << Value() << Value() << "" << false;
    }

    void unreadableMainDataFallsBackToTheBackup()
    {
        QFETCH(const std::optional<PreferenceValue>, main);
        QFETCH(const std::optional<PreferenceValue>, backup);
        StoreUnderTest planner;
        if (main)
            planner.put(keys::storageKey, *main);
        if (backup)
            planner.put(keys::backupStorageKey, *backup);
        const int writes = planner.preferences.writeCount();

        const PlannerStore &store = planner.start();

        QTEST(store.schedules().isEmpty() ? QString() : store.schedules().constFirst().title, "expected");
        QVERIFY(!store.calendarSyncMessage());
        QTEST(store.hadUnreadableData(), "isReported");
        QCOMPARE(planner.preferences.writeCount(), writes);
    }

    void unreadableBlobsAreKeptAsideBeforeASaveBuriesThem()
    {
        StoreUnderTest planner;
        const QByteArray otherGarbage = "[1,2";
        planner.put(keys::storageKey, garbage);
        planner.put(keys::backupStorageKey, otherGarbage);
        planner.put(keys::documentMetadataKey, QByteArray("{}"));
        planner.put(keys::calendarFeedsKey, QByteArray("[{}]"));
        PlannerStore &store = planner.start();
        const auto aside = [&](const QString &key) {
            return planner.preferences.get<QByteArray>(key + QStringLiteral("-unreadable-20260528T202640Z"));
        };
        QVERIFY(!aside(keys::storageKey));

        store.addGoal({.title = QStringLiteral("one")});
        store.addGoal({.title = QStringLiteral("two")});

        QCOMPARE(aside(keys::storageKey), garbage);
        QCOMPARE(aside(keys::backupStorageKey), otherGarbage);
        QCOMPARE(aside(keys::documentMetadataKey), QByteArray("{}"));
        QCOMPARE(aside(keys::calendarFeedsKey), QByteArray("[{}]"));
        QCOMPARE(planner.saved()->goals.size(), 2);
        QCOMPARE(planner.saved(keys::backupStorageKey)->goals.size(), 1);
    }
};

TESSALY_TEST_MAIN(StartUpTest)
#include "StartUpTest.moc"
