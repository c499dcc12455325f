#include "app/LarkspanApp.h"
#include "bench/Bench.h"
#include "bench/ProcessFigures.h"
#include "platform/common/SqlitePreferences.h"
#include "platform/fake/FakeSystemAppearance.h"
#include "store/CalendarLinks.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/ScheduleReminders.h"
#include "store/WaitingReminders.h"
#include "tests/store/FakePorts.h"
#include "tests/support/FakeFileDialogs.h"
#include "tests/support/RecordGenerator.h"
#include "views/shell/ShellModel.h"

#include <QDirIterator>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>

#include <malloc.h>
#include <unistd.h>

/// What a planner costs that is left open: memory and files over a month, and the processor's time while nothing
/// happens.
namespace tessaly {
namespace {

constexpr double hour = 3600;
/// Qt Quick keeps its pools of bindings and nodes as large as the fullest page needed; by then that has been shown.
constexpr int settlingDays = 15;
constexpr int days = 30;
constexpr int keptDays = 7;
const QList<int> sections{ShellModel::Overview, ShellModel::Schedule, ShellModel::Reminders, ShellModel::Goals,
                          ShellModel::Documents};

/// The program's window over a real database and a clock that is moved by hand.
class OpenPlanner : FakePorts
{
public:
    OpenPlanner()
    {
        clock.setNow(calendar.instant(QDate(2026, 9, 1), QTime(0, 0)));
        m_preferences = SqlitePreferences::open(m_directory.path()).takeValue();
        (void)m_preferences->setValue(keys::hasAskedPreferredName, true);
        (void)m_preferences->setValue(keys::interfaceLanguage, QStringLiteral("en"));
        m_store = std::make_unique<PlannerStore>(portsWith({.preferences = m_preferences.get()}));
        m_store->start();
        m_app = std::make_unique<LarkspanApp>(*m_store, *m_preferences, m_appearance, m_fileDialogs);
        if (!m_app->load())
            qFatal("the window cannot be loaded");
        m_app->show();
        (void)QTest::qWaitForWindowExposed(&m_app->window());
        m_store->waitingReminders().start();
        m_store->calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/timetable.ics"),
                                                 {.isKeptUpToDate = true});
        m_store->scheduleReminders().setLeadMinutes({}, 10);
        fillHistory();
    }

    /// A day with its changes, reminders, an hourly reading of the link, and a look at every screen and some pages.
    void pass(int day)
    {
        addAndRemove(day);
        for (int each = 0; each < 24; ++each) {
            clock.advance(hour);
            notificationPresenter.complete();
            m_remindersShown += notificationPresenter.shown().size();
            notificationPresenter.forget();
            // Each day another version, and the same again for the rest of the day.
            while (feedDownloader.pendingCount() > 0)
                feedDownloader.answer(0, timetable(day));
            QCoreApplication::processEvents();
        }
        for (const int section : sections) {
            show(section);
            if (section == ShellModel::Schedule)
                turnPages();
        }
    }

    /// Long enough that the database takes up its log, which the next save then begins anew.
    void rest()
    {
        QTest::qWait(3000);
        const ReminderItem toDo{.title = QStringLiteral("Rest")};
        m_store->addReminder(toDo);
        m_store->removeReminder(toDo.id);
    }

    void show(int section) const
    {
        m_app->window().property("content").value<QObject *>()->setProperty("section", section);
        QTest::qWait(60);
    }

    /// Bytes that are allocated and not freed again, after everything that can be thrown away is.
    [[nodiscard]] double bytesInUse() const
    {
        for (int turn = 0; turn < 3; ++turn) {
            qmlEngine(m_app->window().property("content").value<QObject *>())->collectGarbage();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QTest::qWait(50);
        }
        return static_cast<double>(mallinfo2().uordblks);
    }

    [[nodiscard]] double fileBytes() const
    {
        qint64 bytes = 0;
        for (QDirIterator it(m_directory.path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            bytes += QFileInfo(it.next()).size();
        return static_cast<double>(bytes);
    }

    [[nodiscard]] double databaseBytes() const
    {
        return static_cast<double>(QFileInfo(m_directory.filePath(QStringLiteral("planner.sqlite"))).size());
    }

    [[nodiscard]] qsizetype remindersShown() const { return m_remindersShown; }

private:
    /// As many steps as are ever remembered, of the kind that each day brings.
    void fillHistory()
    {
        for (size_t step = 0; step < UndoHistory::capacity; step += 2) {
            const ScheduleItem schedule = m_generator.schedule();
            m_store->addSchedule(schedule);
            m_store->deleteSchedule(schedule);
        }
    }

    void addAndRemove(int day)
    {
        const Instant start = clock.now().plus(9 * hour);
        for (int each = 0; each < 10; ++each) {
            ScheduleItem schedule = m_generator.schedule();
            schedule.date = start.plus(each * hour);
            schedule.endDate = schedule.date.plus(hour);
            schedule.calendarIdentifier.reset();
            m_store->addSchedule(schedule);
            m_added.append(schedule);
        }
        const ReminderItem toDo{.title = QStringLiteral("To-do %1").arg(day), .dueDate = start};
        m_store->addReminder(toDo);
        m_toDos.append(toDo);
        if (day <= keptDays)
            return;
        for (int each = 0; each < 10; ++each)
            m_store->deleteSchedule(m_added.takeFirst());
        m_store->removeReminder(m_toDos.takeFirst().id);
    }

    [[nodiscard]] static QByteArray timetable(int day)
    {
        QByteArray text = "BEGIN:VCALENDAR\r\n";
        for (int event = 0; event < 100; ++event)
            text += "BEGIN:VEVENT\r\nUID:" + QByteArray::number(event) + "\r\nSUMMARY:Lecture " +
                    QByteArray::number(100 + (event + day) % 100) +
                    "\r\nDTSTART:20260915T080000Z\r\nDTEND:20260915T090000Z\r\nEND:VEVENT\r\n";
        return text + "END:VCALENDAR\r\n";
    }

    void turnPages() const
    {
        for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp}) {
            QTest::keyClick(&m_app->window(), key);
            QTest::qWait(30);
        }
    }

    QTemporaryDir m_directory;
    std::unique_ptr<Preferences> m_preferences;
    FakeSystemAppearance m_appearance;
    FakeFileDialogs m_fileDialogs;
    std::unique_ptr<PlannerStore> m_store;
    std::unique_ptr<LarkspanApp> m_app;
    RecordGenerator m_generator{7};
    QList<ScheduleItem> m_added;
    QList<ReminderItem> m_toDos;
    qsizetype m_remindersShown = 0;
};

} // namespace

TESSALY_BENCH(endurance)
{
    OpenPlanner planner;
    const auto residentBytes = [] { return bench::figuresOf(getpid()).residentBytes; };
    int day = 1;
    // The files of the other screens are read when the planner rests for the first time.
    planner.rest();
    for (; day <= keptDays + settlingDays; ++day)
        planner.pass(day);
    const double memory = planner.bytesInUse();
    const double resident = residentBytes();
    const qsizetype reminders = planner.remindersShown();
    for (; day <= keptDays + settlingDays + days; ++day)
        planner.pass(day);
    const QString before = QStringLiteral("%1 days before").arg(days);
    report.atMostTimesBytes(QStringLiteral("memory in use after a month"), planner.bytesInUse(), before, memory, 1.02);
    report.shownBytes(QStringLiteral("resident memory after a month"), residentBytes(), before, resident);
    planner.rest();
    // The file that shares the log between processes is the rest.
    report.atMostTimesBytes(QStringLiteral("data directory after a month"), planner.fileBytes(),
                            QStringLiteral("the database and 4 MB of log"),
                            planner.databaseBytes() + double(4 * 1024 * 1024), 1.1);
    if (planner.remindersShown() - reminders < 11 * days)
        report.failed(QStringLiteral("endurance"), QStringLiteral("reminders were missed"));
}

TESSALY_BENCH(idle)
{
    constexpr double tick = 0.01;
    const OpenPlanner planner;
    // Meanwhile the other screens' files are read, and after a quarter of a minute the search is prepared, once.
    QTest::qWait(25'000);
    for (const int section : sections) {
        planner.show(section);
        QTest::qWait(2000);
        QEventLoop loop;
        QTimer::singleShot(std::chrono::minutes(1), &loop, &QEventLoop::quit);
        const double before = bench::figuresOf(getpid()).cpuSeconds;
        loop.exec();
        report.atMostTimes(QStringLiteral("a minute at rest, screen %1").arg(section + 1),
                           bench::figuresOf(getpid()).cpuSeconds - before, QStringLiteral("a tick"), tick, 0.99);
    }
}

} // namespace tessaly
