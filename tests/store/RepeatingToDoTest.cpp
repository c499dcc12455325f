#include "model/ReminderRules.h"
#include "model/Uuid.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// A planner in September 2026 with one to-do, due at 17:30, that repeats every day.
struct Planner : StoreUnderTest
{
    ReminderItem item;

    explicit Planner(int dueDay = 9, std::optional<bool> isAfterCompletion = {})
    {
        clock.setNow(at(9, 12, 0));
        startInEnglish().waitingReminders().start();
        item = {.title = u"water"_s,
                .dueDate = at(dueDay, 17, 30),
                .requirement = u"all plants"_s,
                .recurrenceRule = u"FREQ=DAILY"_s,
                .recurrenceStart = at(dueDay, 17, 30),
                .recursAfterCompletion = isAfterCompletion};
        store->addReminder(item);
    }
    [[nodiscard]] Instant at(int day, int hour, int minute) const
    {
        return calendar.instant(QDate(2026, 9, day), QTime(hour, minute));
    }
    void tick() const { store->updateReminder(toggled(store->reminders().first(), clock.now())); }
};

} // namespace

class RepeatingToDoTest : public QObject
{
    Q_OBJECT

private slots:
    void tickingMakesTheNextOneInOneStep()
    {
        Planner planner;
        const QList<ReminderItem> before = planner.store->reminders();
        planner.tick();

        const QList<ReminderItem> &after = planner.store->reminders();
        QCOMPARE(after.size(), 2);
        QVERIFY(after.first().isComplete && !after.first().recurrenceRule);
        ReminderItem expected = planner.item;
        expected.id = after.last().id;
        expected.dueDate = planner.at(10, 17, 30);
        QCOMPARE(after.last(), expected);
        QVERIFY(after.first().id != after.last().id);
        const QList<WaitingReminder> &waiting = planner.store->waitingReminders().list();
        QCOMPARE(waiting.size(), 1);
        QCOMPARE(waiting.first().identifier, uuidText(after.last().id));
        QCOMPARE(waiting.first().day, QDate(2026, 9, 10));
        QCOMPARE(planner.store->history().nextUndo()->description.name.english, u"Complete to-do"_s);

        planner.store->undo();
        QCOMPARE(planner.store->reminders(), before);
        QCOMPARE(planner.store->waitingReminders().list().value(0).identifier, uuidText(planner.item.id));
    }

    void theNextOneIsNeverInThePast_data()
    {
        QTest::addColumn<int>("dueDay");
        QTest::addColumn<std::optional<bool>>("isAfterCompletion");
        QTest::addColumn<int>("nextDay");

        using Choice = std::optional<bool>;
        QTest::newRow("ticked before it is due") << 11 << Choice() << 12;
        QTest::newRow("ticked on its day") << 9 << Choice() << 10;
        QTest::newRow("ticked the day after") << 8 << Choice() << 9;
        QTest::newRow("ticked a week late") << 2 << Choice() << 9;
        QTest::newRow("after completion, ticked early") << 11 << Choice(true) << 10;
        QTest::newRow("after completion, ticked late") << 2 << Choice(true) << 10;
    }

    void theNextOneIsNeverInThePast()
    {
        QFETCH(const int, dueDay);
        QFETCH(const std::optional<bool>, isAfterCompletion);
        QFETCH(const int, nextDay);
        Planner planner(dueDay, isAfterCompletion);
        planner.tick();
        QCOMPARE(planner.store->reminders().last().dueDate, planner.at(nextDay, 17, 30));
    }

    void reopeningTheDoneOneLeavesTheNextAndRepeatsNoMore()
    {
        Planner planner;
        planner.tick();
        planner.tick();
        QVERIFY(!planner.store->reminders().first().isComplete);
        QCOMPARE(planner.store->reminders().size(), 2);

        planner.tick();
        QCOMPARE(planner.store->reminders().size(), 2);
    }

    void doneOnTheNotificationMakesTheNextOneToo()
    {
        Planner planner;
        planner.clock.setNow(planner.at(9, 17, 30));
        planner.notificationPresenter.complete();
        planner.notificationPresenter.press(uuidText(planner.item.id), u"done"_s);
        QCOMPARE(planner.store->reminders().size(), 2);
        QCOMPARE(planner.store->reminders().last().dueDate, planner.at(10, 17, 30));
    }
};

TESSALY_TEST_MAIN(RepeatingToDoTest)
#include "RepeatingToDoTest.moc"
