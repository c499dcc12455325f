#include "tests/features/todos/ReminderDriver.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tessaly;

class ReminderScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyScreenShowsItsHeadersClosed()
    {
        ReminderDriver given;
        given.open();
        QCOMPARE(given.shown(), (QStringList{u". NoDueDate"_s, u"._ DueDates"_s, u"._ Completed"_s}));

        given.expand(u"Completed"_s);
        QCOMPARE(given.shown().size(), 3);
    }

    void aToDoWithoutADateIsListedAndSchedulesNothing()
    {
        ReminderDriver given;
        given.open();
        given.screen->setProperty("title", u"  Sort the bookshelf "_s);

        QVERIFY(given.screen->add());
        QVERIFY2(!given.screen->add(), "a blank title adds nothing");

        QCOMPARE(given.shown(),
                 (QStringList{u"v NoDueDate"_s, u"o Sort the bookshelf"_s, u"._ DueDates"_s, u"._ Completed"_s}));
        QVERIFY(given.store->waitingReminders().list().isEmpty());
        QCOMPARE(given.saved()->reminders, given.store->reminders());
        QCOMPARE(given.store->reminders().first().requirement, std::nullopt);
        QVERIFY(given.screen->property("title").toString().isEmpty());
    }

    void theDueDateOfAFormThatStoodForHoursIsFresh_data()
    {
        QTest::addColumn<bool>("isChosen");
        QTest::addColumn<bool>("isTyped");
        QTest::addColumn<int>("hour");

        QTest::newRow("the toggle") << false << false << 16;
        QTest::newRow("a title") << false << true << 16;
        QTest::newRow("a date that was chosen stays") << true << true << 14;
    }

    void theDueDateOfAFormThatStoodForHoursIsFresh()
    {
        QFETCH(const bool, isChosen);
        QFETCH(const bool, isTyped);
        QFETCH(const int, hour);
        ReminderDriver given;
        given.open();
        given.screen->setHasDueDate(isTyped);
        if (isChosen)
            given.screen->setDueDate(given.calendar.dateTime(given.at(9, 14)));
        given.clock.setNow(given.at(9, 15));

        if (isTyped)
            given.screen->setTitle(u"Report"_s);
        else
            given.screen->setHasDueDate(true);

        QCOMPARE(given.screen->dueDate(), given.calendar.dateTime(given.at(9, hour)));
    }

    void aDueDateInThePastIsReported_data()
    {
        QTest::addColumn<int>("minute");
        QTest::addColumn<bool>("isReported");

        QTest::newRow("the last minute") << 59 << true;
        QTest::newRow("the minute that has begun") << 60 << true;
        QTest::newRow("the next minute") << 61 << false;
    }

    void aDueDateInThePastIsReported()
    {
        QFETCH(const int, minute);
        ReminderDriver given;
        given.open();
        given.clock.setNow(given.at(9, 13).plus(5));

        given.store->addReminder({.title = u"Report"_s, .dueDate = given.at(9, 12).plus(minute * 60)});

        QCOMPARE(given.store->reminders().size(), 1);
        QTEST(given.store->calendarSyncMessage() == u"The due time has passed. There will be no reminder."_s,
              "isReported");
    }

    void aDueToDoAsksForANotificationAndKeepsTheDateForTheNext()
    {
        ReminderDriver given;
        given.open();
        QCOMPARE(given.screen->dueDate(), given.calendar.dateTime(given.at(9, 13)));
        const QDateTime due(QDate(2026, 9, 11), QTime(17, 30, 59), given.calendar.zone());
        given.screen->setProperty("title", u"Report"_s);
        given.screen->setProperty("requirement", u" with figures"_s);
        given.screen->setProperty("hasDueDate", true);
        given.screen->setDueDate(due);

        given.screen->add();

        const ReminderItem added = given.store->reminders().first();
        QCOMPARE(added.dueDate, given.calendar.instant(due.date(), due.time()));
        QCOMPARE(added.requirement, u" with figures"_s);
        QCOMPARE(given.store->waitingReminders().list(),
                 (QList<WaitingReminder>{{uuidText(added.id), u"Reminder"_s, u"Report"_s, due.date(), QTime(17, 30)}}));
        QCOMPARE(given.screen->dueDate(), due);
        QVERIFY(given.screen->property("hasDueDate").toBool());
        QVERIFY(given.screen->property("requirement").toString().isEmpty());
    }

    void aRowSaysHowItsToDoRepeats()
    {
        ReminderDriver given;
        given.open({{.title = u"a"_s, .dueDate = given.at(10, 12), .recurrenceRule = u"FREQ=WEEKLY"_s},
                    {.title = u"b"_s,
                     .dueDate = given.at(10, 13),
                     .recurrenceRule = u"FREQ=DAILY"_s,
                     .recursAfterCompletion = true},
                    {.title = u"c"_s, .dueDate = given.at(10, 14)}});
        given.expand(u"Sep 7, 2026 – Sep 13"_s);
        const auto texts = [&given] {
            QStringList all;
            for (const ReminderListRow &row : given.screen->rows()->rows())
                all.append(row.repeatText);
            return all.sliced(3, 3);
        };
        QCOMPARE(texts(), (QStringList{u"Every week"_s, u"A day after it is done"_s, QString()}));

        given.store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(texts(), (QStringList{u"每周"_s, u"完成一天后"_s, QString()}));
    }

    void theFormSaysWhenTheToDoComesNext()
    {
        ReminderDriver given;
        given.open();
        given.screen->setHasDueDate(true);
        QVERIFY(given.screen->nextDateText().isEmpty());
        given.screen->setRepetition(given.screen->repetitions().indexOf(u"Every day"_s));
        QCOMPARE(given.screen->nextDateText().simplified(), u"Sep 10, 1:00 PM"_s);

        given.screen->setDueDate(given.calendar.dateTime(given.at(20, 8)));
        QCOMPARE(given.screen->nextDateText().simplified(), u"Sep 21, 8:00 AM"_s);
        given.screen->setHasDueDate(false);
        QVERIFY(given.screen->nextDateText().isEmpty());
    }

    void weeksFollowTheUserToAnotherTimeZone()
    {
        ReminderDriver given;
        given.open({{.title = u"Sunday night"_s, .dueDate = given.at(13, 23, 30)}});
        QVERIFY(given.row(u"Sep 7, 2026 – Sep 13"_s) >= 0);

        given.clock.setZone(QTimeZone("Asia/Tokyo"));

        QCOMPARE(given.row(u"Sep 7, 2026 – Sep 13"_s), -1);
        QVERIFY(given.row(u"Sep 14, 2026 – Sep 20"_s) >= 0);
    }

    void weeksRememberByTheirLabelThatTheyAreOpen()
    {
        ReminderDriver given;
        given.open({{.title = u"b"_s, .dueDate = given.at(12, 12)},
                    {.title = u"a"_s, .dueDate = given.at(7, 0)},
                    {.title = u"next"_s, .dueDate = given.at(14, 9)}});
        QCOMPARE(given.shown(), (QStringList{u". NoDueDate"_s, u"v DueDates"_s, u">> Sep 14, 2026 – Sep 20"_s,
                                             u">>_ Sep 7, 2026 – Sep 13"_s, u"._ Completed"_s}));

        given.expand(u"Sep 7, 2026 – Sep 13"_s);
        QCOMPARE(given.shown().sliced(3, 3), (QStringList{u"vv Sep 7, 2026 – Sep 13"_s, u"oo a"_s, u"oo_ b"_s}));

        // Both leave the week, then one comes back. The focus goes on within the week, and then to the header above.
        QCOMPARE(given.screen->toggle(given.row(u"a"_s)), 4);
        QCOMPARE(given.row(u"b"_s), 4);
        QCOMPARE(given.screen->toggle(given.row(u"b"_s)), given.row(u"DueDates"_s));
        QCOMPARE(given.row(u"Sep 7, 2026 – Sep 13"_s), -1);
        given.expand(u"Completed"_s);
        given.expand(u"Sep 2026"_s);
        given.toggle(u"b"_s);
        QCOMPARE(given.shown(), (QStringList{u". NoDueDate"_s, u"v DueDates"_s, u">> Sep 14, 2026 – Sep 20"_s,
                                             u"vv Sep 7, 2026 – Sep 13"_s, u"oo_ b"_s, u"v Completed"_s,
                                             u"vv Sep 2026"_s, u"xx_ a"_s}));
    }

    void tickingSetsTheTimeAndUntickingClearsIt()
    {
        ReminderDriver given;
        given.open({{.title = u"a"_s}});

        given.toggle(u"a"_s);
        QCOMPARE(given.store->reminders().first().completedAt, given.at(9, 12));
        given.expand(u"Completed"_s);
        given.expand(u"Sep 2026"_s);
        given.toggle(u"a"_s);
        QVERIFY(!given.store->reminders().first().isComplete);
        QCOMPARE(given.store->reminders().first().completedAt, std::nullopt);

        given.clock.setNow(given.at(30, 12).plus(7 * 86400));
        given.toggle(u"a"_s);
        QCOMPARE(given.row(u"Sep 2026"_s), -1);
        QVERIFY(given.row(u"Oct 2026"_s) > 0);
    }

    void oldToDosWithoutACompletionTimeFollowTheMonth()
    {
        ReminderDriver given;
        given.open({{.title = u"old"_s, .isComplete = true}});
        given.expand(u"Completed"_s);
        given.expand(u"Sep 2026"_s);

        given.clock.advance(30 * 86400.0);

        QCOMPARE(given.shown().last(), u">>_ Oct 2026"_s);
    }

    void tickingOneOfManyTouchesNoOtherRow()
    {
        ReminderDriver given;
        given.put(keys::storageKey, *encodeSavedData(RecordGenerator(7).savedData(0, 10'000, 0)));
        given.startInEnglish();
        given.openScreen();
        given.tester.reset();
        ReminderListRows &list = *given.screen->rows();
        const int closedRows = list.rowCount();
        QVERIFY(closedRows < 4000);
        QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
        QSignalSpy removals(&list, &QAbstractItemModel::rowsRemoved);
        QSignalSpy insertions(&list, &QAbstractItemModel::rowsInserted);
        QSignalSpy changes(&list, &QAbstractItemModel::dataChanged);

        given.screen->toggle(5);

        QCOMPARE(resets.size(), 0);
        QCOMPARE(removals.size(), 1);
        QCOMPARE(removals.first().at(1).toInt(), 5);
        QCOMPARE(removals.first().at(2).toInt(), 5);
        // Its new group is closed.
        QCOMPARE(insertions.size(), 0);
        QCOMPARE(list.rowCount(), closedRows - 1);
        // The counts of the two groups.
        QCOMPARE(changes.size(), 2);
        for (const QList<QVariant> &change : changes)
            QVERIFY(list.rows().at(change.first().toModelIndex().row()).kind != ReminderRowKind::Kind::Reminder);
    }

    void aNewRowIsAnnouncedWhereItIsShown()
    {
        ReminderDriver given;
        given.open({{.title = u"a"_s}});
        QList<int> rows;
        connect(given.screen.get(), &ReminderViewModel::added, this, [&rows](int row) { rows.append(row); });

        const auto add = [&given](const QString &title, bool hasDueDate) {
            given.screen->setProperty("title", title);
            given.screen->setProperty("hasDueDate", hasDueDate);
            given.screen->add();
        };

        add(u"b"_s, false);
        add(u"in a closed week"_s, true);
        given.screen->setExpanded(3, false);
        add(u"in closed weeks"_s, true);
        given.screen->setExpanded(0, false);
        add(u"in a closed group"_s, false);

        QCOMPARE(rows, (QList<int>{2, 4, 3, 0}));
    }
};

TESSALY_TEST_MAIN(ReminderScreenTest)
#include "ReminderScreenTest.moc"
