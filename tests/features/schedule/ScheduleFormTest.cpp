#include "tests/features/schedule/ScheduleDriver.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const QString lecture = QStringLiteral("Lecture");

} // namespace

class ScheduleFormTest : public QObject
{
    Q_OBJECT

private slots:
    void severalSchedulesAreEnteredInARow()
    {
        ScheduleDriver driver;
        driver.opensScreen();
        ScheduleFormModel &form = *driver.screen->form();
        QCOMPARE(form.times(), (FormTimes{driver.clock.now(), driver.clock.now().plus(3600)}));
        form.setTitle(QStringLiteral(" Lecture "));
        form.setTag(QStringLiteral("Course"));
        form.setColorHex(QStringLiteral("#7f50cc"));
        const FormTimes times = form.times();

        QVERIFY(driver.screen->addSchedule());

        const ScheduleItem &added = driver.stored(lecture);
        QCOMPARE(added.tag, QStringLiteral("Course"));
        QCOMPARE(added.customColorHex, QStringLiteral("#7F50CC"));
        QCOMPARE(added.date, times.start);
        QCOMPARE(driver.listed(), QStringList{lecture});
        QVERIFY(form.title().isEmpty() && form.tag().isEmpty());
        QCOMPARE(form.times(), times);
        QCOMPARE(form.colorHex(), QStringLiteral("#7F50CC"));
        QVERIFY(!driver.screen->addSchedule());
        QCOMPARE(driver.store->schedules().size(), 1);
    }

    void aScheduleOnADayThatIsNotShownIsAnnounced()
    {
        ScheduleDriver driver;
        driver.inEnglish();
        driver.opensScreen();
        QStringList messages;
        connect(driver.screen.get(), &ScheduleViewModel::addedElsewhere, this,
                [&messages](const QString &message) { messages.append(message); });
        ScheduleFormModel &form = *driver.screen->form();
        form.setTitle(QStringLiteral("In this week"));
        driver.screen->addSchedule();
        form.setStart(form.start().addMonths(2));
        form.setTitle(QStringLiteral(" %2 "));
        driver.screen->addSchedule();
        QCOMPARE(messages, QStringList{QStringLiteral("Added “%2” to Nov 9, 2026.")});

        driver.screen->showAdded();

        QCOMPARE(driver.focusDay(), QDate(2026, 11, 9));
        QCOMPARE(driver.listed(), QStringList{QStringLiteral("%2")});
    }

    void theFormFollowsTheFocusDay()
    {
        ScheduleDriver driver;
        driver.opensScreen();
        ScheduleFormModel &form = *driver.screen->form();
        form.setEnd(form.start().addSecs(7200));

        driver.screen->showNext();

        QCOMPARE(form.times().start, driver.at({2026, 9, 16}, {10, 20}));
        QCOMPARE(form.times().end, driver.at({2026, 9, 16}, {12, 20}));
    }

    void aTimeThatComesTwiceIsTheFirst()
    {
        ScheduleDriver driver;
        const QDate day(2026, 10, 25);
        driver.has(lecture, day, {2, 30}, {2, 50});
        driver.opensScreen();
        driver.screen->focusPlace(48);
        QCOMPARE(driver.focusDay(), day);
        driver.screen->editListed(0);
        ScheduleNoteModel &note = *driver.screen->sheets()->note();
        ScheduleFormModel &form = *driver.screen->form();

        note.setStart(QDateTime(day, {2, 35}, driver.calendar.zone()));
        form.setStart(QDateTime(day, {2, 35}, driver.calendar.zone()));
        form.setEnd(QDateTime(day, {2, 50}, driver.calendar.zone()));

        const FormTimes expected{Instant::fromUnixSeconds(1792888500), Instant::fromUnixSeconds(1792889400)};
        QCOMPARE(form.times(), expected);
        note.save();
        QCOMPARE(driver.stored(lecture).date, expected.start);
        QCOMPARE(driver.stored(lecture).endDate, expected.end);
    }

    void aScheduleGoesToTheChosenCalendar()
    {
        ScheduleDriver driver;
        driver.hasCalendars({{.identifier = QStringLiteral("a"),
                              .title = QStringLiteral("Club"),
                              .sourceTitle = QStringLiteral("Nextcloud"),
                              .isWritable = false},
                             {.identifier = QStringLiteral("b"),
                              .title = QStringLiteral("Courses"),
                              .sourceTitle = QStringLiteral("iCloud"),
                              .color = RgbColor{1, 0, 0}},
                             {.identifier = QStringLiteral("c"),
                              .title = QStringLiteral("Work"),
                              .sourceTitle = QStringLiteral("iCloud")}});
        driver.opensScreen();
        ScheduleFormModel &form = *driver.screen->form();
        QCOMPARE(form.calendarTitles(),
                 (QStringList{QStringLiteral("Courses · iCloud"), QStringLiteral("Work · iCloud")}));
        QCOMPARE(form.calendarIndex(), 0);
        form.setCalendarIndex(1);
        form.setTitle(lecture);
        form.setExportRequested(true);

        driver.screen->addSchedule();

        QTRY_COMPARE(driver.eventStore.allEvents().size(), 1);
        QTRY_COMPARE(driver.stored(lecture).calendarIdentifier, QStringLiteral("c"));
        QCOMPARE(driver.stored(lecture).calendarExportRequested, true);
        QCOMPARE(driver.listed(), QStringList{lecture});
    }
};

TESSALY_TEST_MAIN(ScheduleFormTest)
#include "ScheduleFormTest.moc"
