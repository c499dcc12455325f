#include "model/ScheduleDraft.h"
#include "model/CalendarFeed.h"
#include "model/DisplayTitle.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

ScheduleItem lecture()
{
    ScheduleItem item;
    item.title = QStringLiteral("Lecture");
    item.date = {1000};
    item.notes = QStringLiteral("old notes");
    item.tag = QStringLiteral("Course");
    return item;
}

} // namespace

class ScheduleDraftTest : public QObject
{
    Q_OBJECT

private slots:
    void theSingleTaskOfEarlyVersionsMovesIntoTheList()
    {
        ScheduleItem item = lecture();
        item.tasks = std::nullopt;
        item.taskTitle = QStringLiteral("Read");
        item.isTaskComplete = true;

        const ScheduleDraft draft = draftOf(item, NoteMode::Edit);
        QCOMPARE(draft.tasks.size(), 1);
        QCOMPARE(draft.tasks.first().title, QStringLiteral("Read"));
        QVERIFY(draft.tasks.first().isComplete);

        const ScheduleItem saved = editedSchedule(draft);
        QCOMPARE(saved.tasks, draft.tasks);
        QVERIFY(!saved.taskTitle);
        QVERIFY(!saved.isTaskComplete);

        ScheduleDraft cancelled = draft;
        cancelEditing(cancelled);
        QVERIFY(cancelled.tasks.isEmpty());
        QVERIFY(!cancelled.isEditing);
    }

    void aDuplicateLooksTheSameAndIsInNoCalendar()
    {
        ScheduleItem item = lecture();
        item.tasks = QList<ScheduleTask>{{.title = QStringLiteral("Read")}};
        item.calendarIdentifier = QStringLiteral("work");
        item.calendarEventIdentifier = QStringLiteral("event");
        item.calendarColorHex = QStringLiteral("#112233");
        item.calendarExportRequested = true;

        const ScheduleItem copy = duplicateOf(item);
        QVERIFY(copy.id != item.id);
        QVERIFY(copy.tasks->first().id != item.tasks->first().id);
        ScheduleItem expected = item;
        expected.id = copy.id;
        expected.tasks->first().id = copy.tasks->first().id;
        expected.calendarIdentifier.reset();
        expected.calendarEventIdentifier.reset();
        expected.calendarColorHex.reset();
        expected.calendarExportRequested.reset();
        expected.customColorHex = QStringLiteral("#112233");
        QCOMPARE(copy, expected);
    }

    void aTypedColourIsRestoredAndSaved()
    {
        const ScheduleDraft opened = draftOf(lecture(), NoteMode::Edit);
        ScheduleDraft draft = opened;
        draft.colorHex = QStringLiteral("#23884D");
        ScheduleDraft again = opened;
        takeUpTyped(again, typedFields(draft, opened));
        QCOMPARE(editedSchedule(again).customColorHex, draft.colorHex);
    }

    void aTaskListHidesTheSingleTask()
    {
        ScheduleItem item = lecture();
        item.taskTitle = QStringLiteral("Read");
        QVERIFY(draftOf(item, NoteMode::View).tasks.isEmpty());
    }

    void titlesOfLinkedCalendarsAreShownAsPeopleWriteThem_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("shown");

        const auto row = [](const char *line, const char *shown) {
            QTest::newRow(line) << QString::fromUtf8(line) << QString::fromUtf8(shown);
        };
        row("SUMMARY:Microeconomics", "Microeconomics");
        row("SUMMARY:Lunch\\, then tea\\; C:\\\\new\\nat six\\Nor later", "Lunch, then tea; C:\\new at six or later");
        row("SUMMARY;LANGUAGE=de:Mittag: Suppe", "Mittag: Suppe");
        row("SUMMARY;X-A=\"b:c;d\":Seminar", "Seminar");
        row("SUMMARY;X-A=\"open:Seminar", "Seminar");
        row("SUMMARY:ends with \\", "ends with \\");
        row("SUMMARY:\\t is no escape", "\\t is no escape");
        row("SUMMARY:", "");
        row("SUMMARYX:other", "SUMMARYX:other");
        row("SUMMARY", "SUMMARY");
        row("未命名日程", "未命名日程");
    }

    void titlesOfLinkedCalendarsAreShownAsPeopleWriteThem()
    {
        QFETCH(const QString, line);
        ScheduleItem item = lecture();
        item.title = line;
        QCOMPARE(displayTitle(item), line);
        item.calendarIdentifier = QStringLiteral("work");
        QCOMPARE(displayTitle(item), line);

        item.calendarIdentifier = feedCalendarIdentifier(QUuid::createUuid());

        QTEST(displayTitle(item), "shown");
    }

    void aTitleThatIsNotChangedStaysAsItIsStored()
    {
        ScheduleItem item = lecture();
        item.title = QStringLiteral("SUMMARY:Lunch\\, tea");
        item.calendarIdentifier = feedCalendarIdentifier(QUuid::createUuid());
        ScheduleDraft draft = draftOf(item, NoteMode::Edit);
        QCOMPARE(draft.title, QStringLiteral("Lunch, tea"));
        QCOMPARE(editedSchedule(draft).title, item.title);

        draft.title = QStringLiteral(" Tea ");
        QCOMPARE(editedSchedule(draft).title, QStringLiteral("Tea"));
        cancelEditing(draft);
        QCOMPARE(draft.title, QStringLiteral("Lunch, tea"));
    }

    void savingMendsWhatWasTyped()
    {
        ScheduleDraft draft = draftOf(lecture(), NoteMode::Edit);
        QCOMPARE(draft.endDate, Instant{4600});
        draft.title = QStringLiteral("  ");
        draft.tag = QString();
        draft.notes = QStringLiteral("new notes");
        draft.endDate = {500};

        const ScheduleItem saved = editedSchedule(draft);

        QCOMPARE(saved.id, draft.item.id);
        QCOMPARE(saved.title, QStringLiteral("Lecture"));
        QVERIFY(!saved.tag);
        QCOMPARE(saved.notes, QStringLiteral("new notes"));
        QCOMPARE(saved.endDate, Instant{1900});
        draft.title = QStringLiteral(" Seminar ");
        QCOMPARE(editedSchedule(draft).title, QStringLiteral("Seminar"));
    }

    void tickedTasksLeaveTheRestOfTheScheduleAlone()
    {
        ScheduleDraft draft = draftOf(lecture(), NoteMode::View);
        draft.newTask = QStringLiteral(" Print ");
        addTask(draft);
        draft.newTask = QStringLiteral("  ");
        addTask(draft);
        draft.title = QStringLiteral("typed but not saved");

        const ScheduleItem changed = scheduleWithTasks(draft);

        QCOMPARE(changed.tasks->size(), 1);
        QCOMPARE(changed.tasks->first().title, QStringLiteral("Print"));
        QCOMPARE(changed.title, QStringLiteral("Lecture"));
        QVERIFY(!changed.endDate);
    }

    void cancellingForgetsWhatWasTyped()
    {
        const ScheduleItem item = lecture();
        ScheduleDraft draft = draftOf(item, NoteMode::Edit);
        draft.title = draft.tag = draft.notes = QStringLiteral("typed");
        draft.startDate = draft.endDate = {9};
        draft.tasks.append({.title = QStringLiteral("typed")});

        cancelEditing(draft);

        QCOMPARE(draft, draftOf(item, NoteMode::View));
    }

    void whatWasTypedComesBackOverTheScheduleOfToday()
    {
        const ScheduleDraft opened = draftOf(lecture(), NoteMode::Edit);
        QVERIFY(typedFields(opened, opened).isEmpty());
        ScheduleDraft typed = opened;
        typed.tag = QString();
        typed.notes = QStringLiteral("第一行\n\"two\"");
        typed.endDate = {0.1};
        typed.newTask = QStringLiteral("Pri");
        typed.tasks = {{.title = QStringLiteral("Read"), .isComplete = true}};
        const QJsonObject fields = typedFields(typed, opened);

        ScheduleItem today = opened.item;
        today.title = QStringLiteral("Renamed elsewhere");
        ScheduleDraft back = draftOf(today, NoteMode::View);
        takeUpTyped(back, fields);

        typed.item = today;
        typed.title = today.title;
        QCOMPARE(back, typed);
        QCOMPARE(typedFields(back, draftOf(today, NoteMode::Edit)), fields);
    }

    void fieldsThatCannotBeReadAreLeftOut()
    {
        ScheduleDraft draft = draftOf(lecture(), NoteMode::View);
        const ScheduleDraft opened = draft;
        takeUpTyped(draft, {{QStringLiteral("title"), 1},
                            {QStringLiteral("endDate"), QStringLiteral("soon")},
                            {QStringLiteral("tasks"), QJsonObject()},
                            {QStringLiteral("other"), true}});
        QCOMPARE(draft, opened);
    }
};

TESSALY_TEST_MAIN(ScheduleDraftTest)
#include "ScheduleDraftTest.moc"
