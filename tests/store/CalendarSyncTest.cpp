#include "model/Uuid.h"
#include "store/ErrorText.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

namespace {

const QString work = QStringLiteral("work");
const QString home = QStringLiteral("home");

} // namespace

class CalendarSyncTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->eventStore.addCalendar({.identifier = work,
                                           .title = QStringLiteral("Work"),
                                           .sourceTitle = QStringLiteral("Account"),
                                           .color = RgbColor{1, 0.5, 0}});
        m_planner->eventStore.addCalendar(
            {.identifier = home, .title = QStringLiteral("Home"), .sourceTitle = QStringLiteral("Account")});
        m_planner->startInEnglish();
    }

    // Import
    void importBringsTheEventsOfAYearAroundNow()
    {
        putEvent(QStringLiteral("now"), 0);
        putEvent(QStringLiteral("in eleven months"), 330);
        putEvent(QStringLiteral("in thirteen months"), 395);
        putEvent(QStringLiteral("a year and a month ago"), -395);
        sync().importSelectedCalendars();
        QCOMPARE(m_planner->message(), QStringLiteral("Importing selected calendars…"));
        waitForTheEnd();

        QCOMPARE(titles(), (QStringList{QStringLiteral("now"), QStringLiteral("in eleven months")}));
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Import complete: added 2 and updated 0 system calendar events."));
        QVERIFY(m_planner->store->visibleCalendarIDs().contains(work));
    }

    void syncReadsTheWholeHistoryAndExports()
    {
        putEvent(QStringLiteral("long ago"), -36'000);
        const ScheduleItem local{
            .title = QStringLiteral("Local"), .date = daysFromNow(1), .notes = QStringLiteral("n")};
        m_planner->store->addSchedule(local);
        sync().syncWithAppleCalendar();
        QCOMPARE(m_planner->message(), QStringLiteral("Reading all system calendar events…"));
        waitForTheEnd();

        QCOMPARE(m_planner->message(),
                 QStringLiteral("Sync complete: imported 1, updated 0, and exported 1 Tessaly schedules."));
        const ScheduleItem &linked = m_planner->store->schedules().constFirst();
        QVERIFY(linked.calendarEventIdentifier);
        QCOMPARE(linked.calendarIdentifier, work);
        QCOMPARE(linked.calendarExportRequested, true);
        const CalendarEvent &event = m_planner->eventStore.allEvents().constLast();
        QCOMPARE(event.uid, uuidText(local.id));
        QCOMPARE(event.notes, QStringLiteral("n"));
        QCOMPARE(event.endDate, local.date.plus(3600));
    }

    void whyNothingIsImported_data()
    {
        using Obstacle = std::function<void(FakeEventStore &)>;
        QTest::addColumn<Obstacle>("obstacle");
        QTest::addColumn<QString>("importMessage");
        QTest::addColumn<QString>("syncMessage");

        QTest::newRow("refused") << Obstacle([](FakeEventStore &service) { service.answerAccessWith(false); })
                                 << "Calendar access was not granted."
                                 << "Calendar access was not granted. Allow Tessaly in System Settings.";
        const QString failure =
            QStringLiteral("Unable to access Calendar: The system's calendar service cannot be reached.");
        QTest::newRow("no answer") << Obstacle([](FakeEventStore &service) {
            service.answerAccessWith(Error{ErrorCode::CalendarAccessFailed});
        }) << failure << failure;
        QTest::newRow("no events") << Obstacle([](FakeEventStore &service) {
            service.failFetchesWith(Error{ErrorCode::CalendarAccessFailed});
        }) << failure << failure;
        const QString none = QStringLiteral("Select at least one calendar to import.");
        QTest::newRow("no calendars") << Obstacle([](FakeEventStore &service) {
            service.loseCalendar(work);
            service.loseCalendar(home);
        }) << none << none;
    }

    void whyNothingIsImported()
    {
        QFETCH(const std::function<void(FakeEventStore &)>, obstacle);
        QFETCH(const QString, importMessage);
        QFETCH(const QString, syncMessage);
        obstacle(m_planner->eventStore);
        sync().importSelectedCalendars();
        QTRY_COMPARE(m_planner->message(), importMessage);
        sync().syncWithAppleCalendar();
        QTRY_COMPARE(m_planner->message(), syncMessage);
        QVERIFY(!sync().isSyncing());
    }

    void aSelectionOfAnotherServiceIsKeptAndExplained()
    {
        const QSet<QString> selected{QStringLiteral("calendar of another service")};
        m_planner->store->setSelectedCalendarIDs(selected);
        sync().importSelectedCalendars();
        QTRY_COMPARE(m_planner->message(),
                     QStringLiteral("None of the calendars you selected is available now. Select others."));
        QCOMPARE(m_planner->store->selectedCalendarIDs(), selected);
    }

    void onlyLinkedCalendarsShownCountsAsNothingShown_data()
    {
        QTest::addColumn<QSet<QString>>("visible");
        QTest::addColumn<QSet<QString>>("expected");

        const QString feed = QStringLiteral("feed:1");
        QTest::newRow("nothing") << QSet<QString>() << QSet<QString>{work, home};
        QTest::newRow("a link") << QSet<QString>{feed} << QSet<QString>{feed, work, home};
        QTest::newRow("a link and a calendar") << QSet<QString>{feed, home} << QSet<QString>{feed, home};
    }

    void onlyLinkedCalendarsShownCountsAsNothingShown()
    {
        QFETCH(const QSet<QString>, visible);
        QFETCH(const QSet<QString>, expected);
        m_planner->store->setVisibleCalendarIDs(visible);
        sync().importSelectedCalendars();
        waitForTheEnd();
        QCOMPARE(m_planner->store->visibleCalendarIDs(), expected);
    }

    void theFormOffersWhatCanBeWritten()
    {
        m_planner->eventStore.addCalendar(
            {.identifier = QStringLiteral("birthdays"), .title = QStringLiteral("Birthdays"), .isWritable = false});
        sync().requestCalendarAccessAndLoad();
        QTRY_COMPARE(sync().availableCalendars().size(), 3);
        QCOMPARE(sync().calendarChoices().size(), 2);
    }

    void aSyncThatReadsLongTellsHowFarItIs()
    {
        m_planner->eventStore.setEventsRead(1200);
        sync().findChild<QTimer *>(QStringLiteral("readingTicks"))->setInterval(0);
        m_planner->eventStore.holdCompletions();
        sync().performCalendarSync({});
        QTRY_COMPARE(m_planner->message(), QStringLiteral("Reading calendars… (1200 events)"));
        m_planner->eventStore.releaseCompletions();
        QTRY_VERIFY(!sync().isSyncing());
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Import complete: added 0 and updated 0 system calendar events."));
    }

    // What a sync leaves alone
    void aSyncThatFindsNothingNewSavesNothing()
    {
        putEvent(QStringLiteral("a"), 0);
        fullSync();
        automaticSync();
        const QSignalSpy changes(m_planner->store.get(), &PlannerStore::schedulesChanged);
        const int writes = m_planner->preferences.writeCount();
        automaticSync();

        QCOMPARE(changes.size(), 0);
        QCOMPARE(m_planner->preferences.writeCount(), writes);
    }

    void aCalendarNotReadWholeIsLeftOut_data()
    {
        QTest::addColumn<UnreadCalendar::Reason>("reason");
        QTest::addColumn<bool>("isExported");

        QTest::newRow("loading") << UnreadCalendar::Reason::Loading << false;
        QTest::newRow("offline") << UnreadCalendar::Reason::Offline << false;
        QTest::newRow("unreadable") << UnreadCalendar::Reason::Unreadable << false;
        QTest::newRow("damaged files") << UnreadCalendar::Reason::DamagedFiles << true;
    }

    void aCalendarNotReadWholeIsLeftOut()
    {
        QFETCH(const UnreadCalendar::Reason, reason);
        QFETCH(const bool, isExported);
        putEvent(QStringLiteral("a"), 0);
        fullSync();
        m_planner->eventStore.dropEvent(QStringLiteral("a"));
        m_planner->eventStore.setUnread(work, reason);
        m_planner->store->addSchedule({.title = QStringLiteral("Local"), .date = daysFromNow(1)});
        fullSync();

        QCOMPARE(titles(), (QStringList{QStringLiteral("a"), QStringLiteral("Local")}));
        QCOMPARE(m_planner->store->schedules().constLast().calendarEventIdentifier.has_value(), isExported);
        QCOMPARE(sync().leftOut().size(), 1);

        m_planner->eventStore.setUnread(work, std::nullopt);
        fullSync();
        QCOMPARE(titles(), QStringList{QStringLiteral("Local")});
        QVERIFY(m_planner->store->schedules().constLast().calendarEventIdentifier);
    }

    void aCalendarThatIsGoneTakesNothingAlong()
    {
        putEvent(QStringLiteral("a"), 0);
        fullSync();
        m_planner->eventStore.loseCalendar(work);
        fullSync();
        QCOMPARE(titles(), QStringList{QStringLiteral("a")});
    }

    // Changes on both sides at once
    void whatTheUserChangesDuringASyncStands()
    {
        putEvent(QStringLiteral("a"), 0);
        putEvent(QStringLiteral("b"), 1);
        fullSync();
        m_planner->eventStore.holdCompletions();
        sync().syncWithAppleCalendar();
        m_planner->eventStore.releaseCompletions(); // access
        ScheduleItem changed = m_planner->store->schedules().at(0);
        changed.title = QStringLiteral("mine");
        m_planner->store->updateSchedule(changed);
        m_planner->store->deleteSchedule(m_planner->store->schedules().at(1));
        waitForTheEnd();

        QCOMPARE(titles(), QStringList{QStringLiteral("mine")});
        QCOMPARE(m_planner->eventStore.allEvents().size(), 1);
        QCOMPARE(m_planner->eventStore.allEvents().constFirst().title, QStringLiteral("mine"));
    }

    void aScheduleChangedOrDeletedDuringItsExportTakesItsEventAlong()
    {
        const ScheduleItem deleted{.title = QStringLiteral("deleted"), .date = daysFromNow(1)};
        ScheduleItem edited{.title = QStringLiteral("before"), .date = daysFromNow(1)};
        m_planner->store->addSchedule(deleted);
        m_planner->store->addSchedule(edited);
        m_planner->eventStore.holdWriteCompletions();
        sync().syncWithAppleCalendar();
        QTRY_COMPARE(m_planner->eventStore.allEvents().size(), 2);
        m_planner->store->deleteSchedule(deleted);
        edited.title = QStringLiteral("after");
        m_planner->store->updateSchedule(edited);
        m_planner->eventStore.releaseCompletions();
        waitForTheEnd();

        QTRY_COMPARE(m_planner->eventStore.allEvents().size(), 1);
        QCOMPARE(m_planner->eventStore.allEvents().constFirst().title, QStringLiteral("after"));
        QCOMPARE(titles(), QStringList{QStringLiteral("after")});
    }

    void anExportThatFailsIsTriedAgainAndNeverDoubled()
    {
        m_planner->store->addSchedule({.title = QStringLiteral("Local"), .date = daysFromNow(1)});
        m_planner->eventStore.failWritesWith(Error{ErrorCode::CalendarWriteFailed});
        fullSync();
        QVERIFY(!m_planner->store->schedules().constFirst().calendarEventIdentifier);
        m_planner->eventStore.failWritesWith(std::nullopt);

        // The program ends after the event was created and before it learned of it.
        m_planner->eventStore.holdWriteCompletions();
        sync().syncWithAppleCalendar();
        QTRY_COMPARE(m_planner->eventStore.allEvents().size(), 1);
        m_planner->start();
        m_planner->eventStore.releaseCompletions();
        QVERIFY(!m_planner->store->schedules().constFirst().calendarEventIdentifier);
        fullSync();

        QCOMPARE(m_planner->eventStore.allEvents().size(), 1);
        QCOMPARE(titles(), QStringList{QStringLiteral("Local")});
        QCOMPARE(m_planner->store->schedules().constFirst().calendarEventIdentifier,
                 m_planner->eventStore.allEvents().constFirst().eventIdentifier);
    }

    void whatCouldNotBeWrittenIsPartOfTheOutcome()
    {
        const ScheduleItem local{.title = QStringLiteral("Local"), .date = daysFromNow(1)};
        const QString reason = errorText({ErrorCode::CalendarWriteFailed}, AppLanguage::English);
        m_planner->eventStore.failWritesWith(Error{ErrorCode::CalendarWriteFailed});
        m_planner->eventStore.holdWriteCompletions();
        m_planner->store->addSchedule(local, work);
        sync().importSelectedCalendars();
        QTRY_VERIFY(sync().isSyncing());
        m_planner->eventStore.releaseCompletions();
        waitForTheEnd();
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Import complete: added 0 and updated 0 system calendar events. Could not add to the "
                                "selected calendar: ") +
                     reason);

        fullSync();
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Sync complete: imported 0, updated 0, and exported 0 Tessaly schedules. 1 not "
                                "exported: ") +
                     reason);
        QVERIFY(m_planner->store->isSyncMessageFailure());

        m_planner->eventStore.failWritesWith(std::nullopt);
        fullSync();
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Sync complete: imported 0, updated 0, and exported 1 Tessaly schedules."));
    }

    void twoSyncsNeverRunAtOnce()
    {
        sync().performCalendarSync({});
        sync().performCalendarSync({});
        waitForTheEnd();
        QCOMPARE(m_planner->eventStore.fetchCount(), 1);
    }

    // Automatic sync
    void aBurstOfChangesEndsInOneSync()
    {
        sync().startAutomaticCalendarSync();
        QTRY_COMPARE(m_planner->eventStore.fetchCount(), 1);
        waitForTheEnd();
        QVERIFY(!pendingSync().isActive());
        QCOMPARE(pendingSync().interval(), 6000);
        m_planner->eventStore.announceChange();
        m_planner->eventStore.announceChange();
        QVERIFY(pendingSync().isActive());
        pendingSync().setInterval(0);
        QTRY_COMPARE(m_planner->eventStore.fetchCount(), 2);
        waitForTheEnd();

        m_planner->eventStore.announceChange();
        m_planner->store->setAutomaticCalendarSync(false);
        QVERIFY(!pendingSync().isActive());
        m_planner->eventStore.announceChange();
        QVERIFY(!pendingSync().isActive());
    }

    void aChangeDuringASyncIsNotMissed()
    {
        sync().startAutomaticCalendarSync();
        QTRY_COMPARE(m_planner->eventStore.fetchCount(), 1);
        waitForTheEnd();
        pendingSync().setInterval(0);
        m_planner->eventStore.holdCompletions();
        sync().performCalendarSync({});
        m_planner->eventStore.announceChange();
        QVERIFY(pendingSync().isActive());
        QCoreApplication::processEvents();
        QVERIFY(pendingSync().isActive());
        putEvent(QStringLiteral("late"), 0);
        m_planner->eventStore.releaseCompletions();
        QTRY_COMPARE(titles(), QStringList{QStringLiteral("late")});
        QTRY_COMPARE(m_planner->eventStore.fetchCount(), 3);
    }

    // Mass removal
    void aMassRemovalWaitsForADecision_data()
    {
        QTest::addColumn<bool>("isRemoved");
        QTest::newRow("remove") << true;
        QTest::newRow("keep") << false;
    }

    void aMassRemovalWaitsForADecision()
    {
        QFETCH(const bool, isRemoved);
        for (int i = 0; i < 30; ++i)
            putEvent(QString::number(i), i);
        fullSync();
        m_planner->store->editSchedules([](QList<ScheduleItem> &schedules) {
            schedules[0].notes = QStringLiteral("mine");
            return RowsChange{RowsChange::Kind::Updated, 0, 1};
        });
        for (int i = 0; i < 25; ++i)
            m_planner->eventStore.dropEvent(QString::number(i));
        automaticSync();
        QCOMPARE(m_planner->store->schedules().size(), 30);
        QCOMPARE(m_planner->message(), QStringLiteral("Sync is paused: 25 removals wait for your decision."));
        QCOMPARE(sync().heldRemovals().constFirst().schedules.size(), 25);

        if (isRemoved)
            sync().removeHeldSchedules();
        else
            sync().keepHeldSchedules();
        waitForTheEnd();
        QVERIFY(sync().heldRemovals().isEmpty());
        QCOMPARE(m_planner->store->schedules().size(), isRemoved ? 5 : 30);
        QCOMPARE(m_planner->eventStore.allEvents().size(), 5);
        const QList<Generation> restorePoints = m_planner->backups.list();
        QCOMPARE(restorePoints.size(), isRemoved ? 1 : 0);
        if (isRemoved)
            QCOMPARE(restorePoints.constFirst().detail, QStringLiteral("25"));
        if (!isRemoved)
            QVERIFY(!m_planner->store->schedules().constFirst().calendarIdentifier);

        // The events come back.
        for (int i = 0; i < 25; ++i)
            putEvent(QString::number(i), i);
        fullSync();
        QCOMPARE(m_planner->store->schedules().size(), 30);
        QCOMPARE(m_planner->store->schedules().constFirst().calendarIdentifier, work);
        if (!isRemoved)
            QCOMPARE(m_planner->store->schedules().constFirst().notes, QStringLiteral("mine"));
    }

    void removingEndsWithTheQuestion()
    {
        // Of the sync that asked: there are more further away, which another one asks about.
        for (int i = 0; i < 60; ++i)
            putEvent(QString::number(i), i < 30 ? i : 365 * 3 + i);
        fullSync();
        for (int i = 0; i < 60; ++i)
            m_planner->eventStore.dropEvent(QString::number(i));
        for (const qsizetype left : {30, 0}) {
            if (left > 0)
                automaticSync();
            else
                fullSync();
            QCOMPARE(sync().heldRemovals().constFirst().schedules.size(), 30);
            sync().removeHeldSchedules();
            waitForTheEnd();
            QVERIFY(sync().heldRemovals().isEmpty());
            QCOMPARE(m_planner->store->schedules().size(), left);
        }
    }

    // Consent
    void theUserIsAskedOnceAndCanTakeItBack()
    {
        m_planner->eventStore.setNeedsConsent(true);
        putEvent(QStringLiteral("a"), 0);
        sync().startAutomaticCalendarSync();
        QVERIFY(sync().isConsentAwaited());
        QCOMPARE(m_planner->eventStore.accessRequestCount(), 0);
        sync().answerConsent(true);
        QTRY_COMPARE(titles(), QStringList{QStringLiteral("a")});

        m_planner->start();
        QCOMPARE(sync().consent(), CalendarSync::Consent::Allowed);
        sync().startAutomaticCalendarSync();
        QVERIFY(!sync().isConsentAwaited());
        waitForTheEnd();

        sync().answerConsent(false);
        ScheduleItem refused = m_planner->store->schedules().constFirst();
        refused.title = QStringLiteral("b");
        m_planner->store->updateSchedule(refused);
        QVERIFY(m_planner->message().startsWith(QStringLiteral("Not written to the calendar: access is withdrawn.")));
        const int fetches = m_planner->eventStore.fetchCount();
        QVERIFY(sync().availableCalendars().isEmpty());
        QCOMPARE(titles(), QStringList{QStringLiteral("b")});
        m_planner->eventStore.announceChange();
        QVERIFY(!pendingSync().isActive());
        sync().syncWithAppleCalendar();
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Calendar access was not granted. Allow Tessaly in System Settings."));
        QCOMPARE(m_planner->eventStore.fetchCount(), fetches);

        sync().answerConsent(true);
        QTRY_COMPARE(m_planner->eventStore.fetchCount(), fetches + 1);
        waitForTheEnd();
        QCOMPARE(m_planner->eventStore.allEvents().constFirst().title, QStringLiteral("a"));
        QCOMPARE(titles(), QStringList{QStringLiteral("a")});
    }

    void aRefusalIsKeptAndSilent()
    {
        m_planner->eventStore.setNeedsConsent(true);
        sync().startAutomaticCalendarSync();
        sync().answerConsent(false);
        m_planner->start();
        sync().startAutomaticCalendarSync();
        QVERIFY(!sync().isConsentAwaited());
        QCOMPARE(m_planner->message(), QString());
        QCOMPARE(m_planner->eventStore.accessRequestCount(), 0);
    }

    void theLastSyncIsRemembered()
    {
        putEvent(QStringLiteral("a"), 0);
        fullSync();
        m_planner->start();
        QCOMPARE(sync().lastSync(), (SyncOutcome{m_planner->clock.now(), 1, 0, 0}));
    }

private:
    [[nodiscard]] CalendarSync &sync() { return *m_planner->store->calendarSync(); }
    [[nodiscard]] QTimer &pendingSync() { return *sync().findChild<QTimer *>(QStringLiteral("pendingSync")); }
    [[nodiscard]] Instant daysFromNow(int days) const { return m_planner->clock.now().plus(days * 86400.); }
    void waitForTheEnd() { QTRY_VERIFY(!sync().isSyncing() && !m_planner->message().endsWith(u"…")); }

    void fullSync()
    {
        sync().syncWithAppleCalendar();
        waitForTheEnd();
    }

    void automaticSync()
    {
        sync().performCalendarSync({.exportsLocalSchedules = true});
        waitForTheEnd();
    }

    void putEvent(const QString &title, int days)
    {
        m_planner->eventStore.putEvent({.eventIdentifier = title,
                                        .calendarIdentifier = work,
                                        .uid = title,
                                        .title = title,
                                        .startDate = daysFromNow(days),
                                        .endDate = daysFromNow(days).plus(1800)});
    }

    [[nodiscard]] QStringList titles() const
    {
        QStringList all;
        for (const ScheduleItem &item : m_planner->store->schedules())
            all.append(item.title);
        return all;
    }

    std::unique_ptr<StoreUnderTest> m_planner;
};

TESSALY_TEST_MAIN(CalendarSyncTest)
#include "CalendarSyncTest.moc"
