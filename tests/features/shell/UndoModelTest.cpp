#include "views/shell/UndoModel.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

namespace {

const EventCalendar work{.identifier = QStringLiteral("work"), .title = QStringLiteral("Work")};

} // namespace

class UndoModelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->eventStore.addCalendar(work);
        m_undo = std::make_unique<UndoModel>(m_planner->startInEnglish());
    }

    void cleanup()
    {
        m_undo.reset();
        m_planner.reset();
    }

    void theEntriesNameTheStep()
    {
        QCOMPARE(m_undo->undoText(), QStringLiteral("Undo"));
        QVERIFY(!m_undo->canUndo());
        store().addReminder({.title = QStringLiteral("Call")});
        QCOMPARE(m_undo->undoText(), QStringLiteral("Undo “Add to-do”"));

        m_undo->undo();
        QCOMPARE(m_undo->redoText(), QStringLiteral("Redo “Add to-do”"));
        store().setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(m_undo->redoText(), QStringLiteral("重做“添加待办”"));
        QCOMPARE(m_undo->message(), QStringLiteral("已撤销“添加待办”"));
        QVERIFY(!m_undo->canUndo() && m_undo->canRedo());
    }

    void aRemovalIsReportedAndOffersUndo()
    {
        const ReminderItem item{.title = QStringLiteral("Call")};
        store().addReminder(item);
        QCOMPARE(m_undo->message(), QString());
        const QSignalSpy reported(m_undo.get(), &UndoModel::reported);

        store().removeReminder(item.id);
        QCOMPARE(m_undo->message(), QStringLiteral("Deleted “Call”"));
        QVERIFY(m_undo->isUndoOffered());
        m_undo->undo();
        QCOMPARE(m_undo->message(), QStringLiteral("Restored “Call”"));
        QVERIFY(!m_undo->isUndoOffered());
        m_undo->redo();
        QCOMPARE(m_undo->message(), QStringLiteral("Deleted “Call”"));
        QVERIFY(m_undo->isUndoOffered());
        QCOMPARE(reported.count(), 3);

        // Its button must not undo what comes after.
        store().addReminder(item);
        QCOMPARE(m_undo->message(), QString());
        QVERIFY(!m_undo->isUndoOffered());
    }

    void clearingOffersUndo()
    {
        store().addGoal({.title = QStringLiteral("a")});
        store().addGoal({.title = QStringLiteral("b")});
        store().clearPersonalContent();

        QCOMPARE(m_undo->message(), m_planner->message());
        QCOMPARE(m_undo->undoText(), QStringLiteral("Undo “Clear”"));
        m_undo->undo();
        QCOMPARE(m_undo->message(), QStringLiteral("Restored 2 items"));
    }

    void aNewEventIsReported()
    {
        const ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store().addSchedule(item, work.identifier);
        QTRY_VERIFY(store().schedules().constFirst().calendarEventIdentifier);
        store().deleteSchedule(item);

        m_undo->undo();

        QCOMPARE(m_undo->message(), QStringLiteral("Restored, with a new event in the calendar."));
    }

    void aStepWhoseRecordsAreGoneSaysSo()
    {
        ScheduleItem item = scheduleTitled(QStringLiteral("Talk"));
        store().addSchedule(item);
        item.notes = QStringLiteral("mine");
        store().updateSchedule(item);
        store().editSchedules([](QList<ScheduleItem> &schedules) {
            schedules.clear();
            return RowsChange();
        });

        m_undo->undo();

        QCOMPARE(m_undo->message(), QStringLiteral("Nothing is left of that step to undo."));
        QVERIFY(!m_undo->canRedo());
    }

private:
    [[nodiscard]] PlannerStore &store() const { return *m_planner->store; }

    std::unique_ptr<StoreUnderTest> m_planner;
    std::unique_ptr<UndoModel> m_undo;
};

TESSALY_TEST_MAIN(UndoModelTest)
#include "UndoModelTest.moc"
