#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const EventCalendar work{.identifier = QStringLiteral("work"),
                         .title = QStringLiteral("Work"),
                         .sourceTitle = QStringLiteral("Account"),
                         .color = RgbColor{1, 0.5, 0}};

} // namespace

class ScheduleCalendarTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->eventStore.addCalendar(work);
        m_planner->startInEnglish();
    }

    void aScheduleIsWrittenToItsCalendarAndLinked()
    {
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        m_planner->store->addSchedule(item, work.identifier);
        QVERIFY(!stored().calendarEventIdentifier);

        QTRY_VERIFY(stored().calendarEventIdentifier);

        const CalendarEvent &event = m_planner->eventStore.allEvents().constFirst();
        QCOMPARE(event.title, QStringLiteral("Talk"));
        QCOMPARE(event.startDate, item.date);
        QCOMPARE(event.endDate, item.date.plus(3600));
        QCOMPARE(event.calendarIdentifier, work.identifier);
        ScheduleItem linked = item;
        linked.calendarEventIdentifier = event.eventIdentifier;
        linked.calendarIdentifier = work.identifier;
        linked.calendarColorHex = QStringLiteral("#FF8000");
        linked.calendarExportRequested = true;
        QCOMPARE(stored(), linked);
        QCOMPARE(m_planner->saved()->schedules, QList{linked});
        QCOMPARE(m_planner->store->visibleCalendarIDs(), QSet{work.identifier});
        QCOMPARE(m_planner->message(), QString());
    }

    void whatStopsTheWriteLeavesTheScheduleLocal_data()
    {
        using Obstacle = std::function<void(StoreUnderTest &)>;
        QTest::addColumn<Obstacle>("obstacle");
        QTest::addColumn<QString>("message");

        QTest::newRow("refused") << Obstacle([](StoreUnderTest &planner) {
            planner.eventStore.answerAccessWith(false);
        }) << QString();
        QTest::newRow("no answer") << Obstacle([](StoreUnderTest &planner) {
            planner.eventStore.answerAccessWith(Error{ErrorCode::CalendarAccessFailed});
        }) << QString();
        QTest::newRow("calendar gone") << Obstacle([](StoreUnderTest &planner) {
            planner.eventStore.loseCalendar(work.identifier);
        }) << QString();
        QTest::newRow("save fails") << Obstacle([](StoreUnderTest &planner) {
            planner.eventStore.failWritesWith(Error{ErrorCode::CalendarWriteFailed});
        }) << "Could not add to the selected calendar: The system's calendar did not save the change.";
    }

    void whatStopsTheWriteLeavesTheScheduleLocal()
    {
        QFETCH(const std::function<void(StoreUnderTest &)>, obstacle);
        QFETCH(const QString, message);
        obstacle(*m_planner);
        m_planner->eventStore.holdCompletions();
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));

        m_planner->store->addSchedule(item, work.identifier);
        m_planner->eventStore.releaseCompletions();

        QTRY_COMPARE(m_planner->message(), message);
        QCOMPARE(stored(), item);
        QVERIFY(m_planner->eventStore.allEvents().isEmpty());
    }

    void aScheduleDeletedBeforeAccessIsAnsweredMakesNoEvent()
    {
        m_planner->eventStore.holdCompletions();
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        m_planner->store->addSchedule(item, work.identifier);
        m_planner->store->deleteSchedule(item);
        m_planner->eventStore.releaseCompletions();

        QVERIFY(m_planner->eventStore.allEvents().isEmpty());
        QVERIFY(m_planner->store->schedules().isEmpty());
    }

    void aScheduleChangedWhileItsEventIsSavedKeepsTheChange()
    {
        ScheduleItem item = scheduleTitled(QStringLiteral("before"));
        addAndHoldTheSave(item);
        item.title = QStringLiteral("after");
        m_planner->store->updateSchedule(item);

        QTRY_VERIFY(stored().calendarEventIdentifier);
        QCOMPARE(stored().title, QStringLiteral("after"));
        QCOMPARE(m_planner->eventStore.allEvents().constFirst().title, QStringLiteral("after"));
    }

    void aScheduleDeletedWhileItsEventIsSavedTakesTheEventAlong()
    {
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        addAndHoldTheSave(item);
        QCOMPARE(m_planner->eventStore.allEvents().size(), 1);
        m_planner->store->deleteSchedule(item);

        QTRY_VERIFY(m_planner->eventStore.allEvents().isEmpty());
    }

    void completionsAreHarmlessAfterTheStoreIsGone()
    {
        m_planner->eventStore.holdCompletions();
        m_planner->store->addSchedule(scheduleTitled(QStringLiteral("Talk")), work.identifier);
        m_planner->store->calendarSync()->requestCalendarAccessAndLoad();
        m_planner->store->calendarSync()->startAutomaticCalendarSync();
        m_planner->store.reset();
        m_planner->eventStore.releaseCompletions();

        QVERIFY(m_planner->eventStore.allEvents().isEmpty());
    }

    void changingAScheduleChangesTitleAndTimesOfItsEvent()
    {
        m_planner->eventStore.putEvent({.eventIdentifier = QStringLiteral("e"),
                                        .calendarIdentifier = work.identifier,
                                        .title = QStringLiteral("old"),
                                        .notes = QStringLiteral("theirs")});
        ScheduleItem item = scheduleTitled(QStringLiteral("old"));
        item.calendarEventIdentifier = QStringLiteral("e");
        m_planner->store->addSchedule(item);
        item.title = QStringLiteral("new");
        item.notes = QStringLiteral("mine");
        item.endDate = item.date.plus(7200);
        m_planner->store->updateSchedule(item);

        const CalendarEvent expected{.eventIdentifier = QStringLiteral("e"),
                                     .calendarIdentifier = work.identifier,
                                     .title = QStringLiteral("new"),
                                     .startDate = item.date,
                                     .endDate = item.date.plus(7200),
                                     .notes = QStringLiteral("theirs")};
        QCOMPARE(m_planner->eventStore.allEvents(), QList{expected});
    }

    void aCalendarThatRefusesStopsNoLocalChange()
    {
        m_planner->eventStore.putEvent({.eventIdentifier = QStringLiteral("e"), .calendarIdentifier = work.identifier});
        ScheduleItem item = scheduleTitled(QStringLiteral("old"));
        item.calendarEventIdentifier = QStringLiteral("e");
        m_planner->store->addSchedule(item);
        m_planner->eventStore.failWritesWith(Error{ErrorCode::CalendarWriteFailed});

        item.title = QStringLiteral("new");
        m_planner->store->updateSchedule(item);
        QCOMPARE(stored().title, QStringLiteral("new"));
        m_planner->store->deleteSchedule(item);
        QVERIFY(m_planner->store->schedules().isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(m_planner->message(), QString());
    }

    void deletingAScheduleDeletesItsEvent()
    {
        m_planner->eventStore.putEvent({.eventIdentifier = QStringLiteral("e"), .calendarIdentifier = work.identifier});
        ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        item.calendarEventIdentifier = QStringLiteral("e");
        m_planner->store->addSchedule(item);
        m_planner->store->deleteSchedule(item);

        QVERIFY(m_planner->eventStore.allEvents().isEmpty());
    }

    void calendarsAreListedBySourceAndTitleAndAllSelectedAtFirst()
    {
        const auto add = [this](const char *identifier, const QString &source, const QString &title) {
            m_planner->eventStore.addCalendar(
                {.identifier = QString::fromLatin1(identifier), .title = title, .sourceTitle = source});
        };
        add("4", QStringLiteral("Local"), QStringLiteral("b"));
        add("3", QStringLiteral("Local"), QStringLiteral("Z"));
        add("5", QStringLiteral("Ｆ"), QStringLiteral("full width"));
        add("6", QStringLiteral("🙂"), QStringLiteral("emoji"));

        m_planner->store->calendarSync()->startAutomaticCalendarSync();
        QTRY_COMPARE(m_planner->store->calendarSync()->availableCalendars().size(), 5);

        QStringList order;
        for (const CalendarOption &option : m_planner->store->calendarSync()->availableCalendars())
            order.append(option.id);
        QCOMPARE(order, (QStringList{work.identifier, QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5"),
                                     QStringLiteral("6")}));
        QCOMPARE(m_planner->store->calendarSync()->availableCalendars().constFirst().colorHex,
                 QStringLiteral("#FF8000"));
        const QSet<QString> all(order.cbegin(), order.cend());
        QCOMPARE(m_planner->store->selectedCalendarIDs(), all);
        QCOMPARE(m_planner->store->visibleCalendarIDs(), all);
    }

    void aChoiceOfCalendarsIsKeptAsItIs()
    {
        m_planner->store->setSelectedCalendarIDs({QStringLiteral("gone")});
        m_planner->store->calendarSync()->requestCalendarAccessAndLoad();
        QTRY_COMPARE(m_planner->store->calendarSync()->availableCalendars().size(), 1);

        QCOMPARE(m_planner->store->selectedCalendarIDs(), QSet{QStringLiteral("gone")});
    }

    void onlyTheUsersOwnRequestTellsOfRefusal_data()
    {
        QTest::addColumn<bool>("isRefused");
        QTest::addColumn<QString>("message");

        QTest::newRow("refused") << true << "Calendar access was not granted. Allow Tessaly in System Settings.";
        QTest::newRow("failed") << false
                                << "Unable to access Calendar: The system's calendar service cannot be reached.";
    }

    void onlyTheUsersOwnRequestTellsOfRefusal()
    {
        QFETCH(const bool, isRefused);
        QFETCH(const QString, message);
        m_planner->eventStore.answerAccessWith(isRefused ? Result<bool>(false)
                                                         : Result<bool>(Error{ErrorCode::CalendarAccessFailed}));
        m_planner->eventStore.holdCompletions();
        m_planner->store->calendarSync()->startAutomaticCalendarSync();
        m_planner->eventStore.releaseCompletions();
        QCOMPARE(m_planner->message(), QString());

        m_planner->store->calendarSync()->requestCalendarAccessAndLoad();
        QTRY_COMPARE(m_planner->message(), message);
        QVERIFY(m_planner->store->calendarSync()->availableCalendars().isEmpty());
    }

    void withoutACalendarServiceNothingIsAskedOrReported()
    {
        m_planner->eventStore.setAvailable(false);
        m_planner->store->calendarSync()->requestCalendarAccessAndLoad();

        QVERIFY(!m_planner->store->calendarSync()->isAvailable());
        QCOMPARE(m_planner->eventStore.accessRequestCount(), 0);
        QCOMPARE(m_planner->message(), QString());
    }

    void automaticSyncThatIsOffAsksNothing()
    {
        m_planner->store->setAutomaticCalendarSync(false);
        m_planner->store->calendarSync()->startAutomaticCalendarSync();
        QCOMPARE(m_planner->eventStore.accessRequestCount(), 0);
        m_planner->store->setAutomaticCalendarSync(true);
        QCOMPARE(m_planner->eventStore.accessRequestCount(), 1);
    }

private:
    [[nodiscard]] const ScheduleItem &stored() const { return m_planner->store->schedules().constFirst(); }

    /// Leaves the store waiting for the answer to its saving of the event.
    void addAndHoldTheSave(const ScheduleItem &item)
    {
        m_planner->eventStore.holdCompletions();
        m_planner->store->addSchedule(item, work.identifier);
        m_planner->eventStore.releaseCompletions();
    }

    std::unique_ptr<StoreUnderTest> m_planner;
};

TESSALY_TEST_MAIN(ScheduleCalendarTest)
#include "ScheduleCalendarTest.moc"
