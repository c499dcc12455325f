// A planner without a window that syncs its schedules with a calendar service again and again.
//
// SyncLoop DATA-DIRECTORY SERVICE SYNCS [edit]: the service is "eds" or a folder of calendars; without end where SYNCS
// is 0. Those that left something out do not count. With "edit" it adds, changes and deletes schedules all the while.
// It prints a line before each sync and after it, and for each edit that is saved, with the UID of the event.

#include "model/Uuid.h"
#include "platform/common/vdir/VdirEventStore.h"
#include "platform/fake/FakeClock.h"
#include "platform/linux/EvolutionEventStore.h"
#include "store/PreferenceKeys.h"
#include "tests/support/RecordGenerator.h"
#include "tests/system/StoreOnDisk.h"

#include <QCoreApplication>
#include <QUrl>
#include <unistd.h>

using namespace tessaly;

namespace {

constexpr qsizetype ownAtFirst = 40;
constexpr qsizetype mostOwn = 80;
constexpr int mostEditsInSync = 20;
const QString own = QStringLiteral("own");
/// Edited by this program only, and by both.
const QStringList editedOfOthers{QStringLiteral("shared"), QStringLiteral("both")};

void print(const QByteArray &text)
{
    const QByteArray line = text + '\n';
    if (write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size())) < 0)
        _exit(4);
}

QString kindOf(const ScheduleItem &item)
{
    return item.title.section(u' ', 0, 0);
}

QByteArray uidOf(const ScheduleItem &item)
{
    if (!item.calendarEventIdentifier)
        return uuidText(item.id).toUtf8();
    return QUrl::fromPercentEncoding(item.calendarEventIdentifier->section(u'/', -1).toUtf8()).toUtf8();
}

/// Titles end in a number that grows with every edit.
int numberOf(const ScheduleItem &item)
{
    return item.title.section(u' ', 1, 1).toInt();
}

class Planner
{
public:
    Planner(std::unique_ptr<SqlitePreferences> preferences, EventStore &service, int syncs, bool isEditing)
        : m_disk(std::move(preferences), service), m_store(m_disk.store()), m_sync(*m_store.calendarSync()),
          m_generator(static_cast<quint64>(getpid())), m_syncsLeft(syncs), m_isEditing(isEditing)
    {
        QObject::connect(&m_sync, &CalendarSync::isSyncingChanged, [this] {
            m_editsSince = 0;
            if (m_sync.isSyncing())
                print("begin");
            else
                ended();
        });
        QObject::connect(&m_sync, &CalendarSync::outcomeChanged, [this] { m_hasOutcome = true; });
        QObject::connect(&m_edits, &QTimer::timeout, [this] {
            // A sync waits until all is written, so it must not go on for ever.
            if (++m_editsSince < mostEditsInSync)
                edit();
            m_edits.start(static_cast<int>(m_generator.below(30)));
        });
        m_edits.setSingleShot(true);
    }

    void start()
    {
        if (m_isEditing) {
            while (m_store.schedules().size() < ownAtFirst)
                add();
            m_edits.start(0);
        }
        m_sync.syncWithAppleCalendar();
    }

private:
    void ended()
    {
        const bool isWhole = std::exchange(m_hasOutcome, false) && m_sync.leftOut().isEmpty();
        print(isWhole ? "synced" : "not synced");
        if (isWhole && m_syncsLeft > 0 && --m_syncsLeft == 0)
            QCoreApplication::exit();
        else
            QMetaObject::invokeMethod(
                &m_sync, [this] { m_sync.syncWithAppleCalendar(); }, Qt::QueuedConnection);
    }

    void edit()
    {
        QList<ScheduleItem> owned;
        QList<ScheduleItem> others;
        for (const ScheduleItem &item : m_store.schedules()) {
            if (kindOf(item) == own)
                owned.append(item);
            else if (editedOfOthers.contains(kindOf(item)))
                others.append(item);
        }
        if (owned.size() < mostOwn && m_generator.happens(0.3))
            add();
        else if (!owned.isEmpty() && m_generator.happens(0.3))
            remove(owned.at(m_generator.below(owned.size())));
        else if (!owned.isEmpty() && m_generator.happens(0.5))
            change(owned.at(m_generator.below(owned.size())));
        else if (!others.isEmpty())
            change(others.at(m_generator.below(others.size())));
    }

    void add()
    {
        const ScheduleItem item{.title = own + QStringLiteral(" 0"), .date = m_store.clock().now().plus(3600)};
        m_store.addSchedule(item);
        printSaved("add " + uidOf(item));
    }

    void remove(const ScheduleItem &item)
    {
        // Where a planner was killed before it learned of the event, nothing says yet that there is one to remove.
        print((item.calendarEventIdentifier ? "delete " : "forget ") + uidOf(item));
        m_store.deleteSchedule(item);
    }

    void change(ScheduleItem item)
    {
        const QString number = QString::number(numberOf(item) + 1);
        item.title = kindOf(item) + u' ' + number;
        item.date = item.date.plus(60);
        item.endDate = item.end().plus(60);
        item.notes = QStringLiteral("mine");
        m_store.updateSchedule(item);
        printSaved("change " + uidOf(item) + ' ' + number.toUtf8());
    }

    void printSaved(const QByteArray &line)
    {
        if (m_store.hasUnsavedChanges())
            _exit(3);
        print(line);
    }

    StoreOnDisk m_disk;
    PlannerStore &m_store;
    CalendarSync &m_sync;
    RecordGenerator m_generator;
    QTimer m_edits;
    int m_syncsLeft;
    bool m_isEditing;
    /// Since the last sync began or ended.
    int m_editsSince = 0;
    bool m_hasOutcome = false;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    auto opened = SqlitePreferences::open(arguments.value(1));
    if (!opened)
        return 2;
    auto preferences = opened.takeValue();
    (void)preferences->setValue(keys::calendarConsent, true);

    FakeClock clock(Instant::fromUnixSeconds(1'780'300'000));
    clock.setZone(QTimeZone("Europe/Vienna"));
    std::unique_ptr<EventStore> service;
    if (arguments.value(2) == QStringLiteral("eds"))
        service = std::make_unique<EvolutionEventStore>(UserCalendar(clock.zone(), Qt::Monday, QLocale::c()));
    else
        service = std::make_unique<VdirEventStore>(VdirPlace::given(arguments.value(2)), clock);
    Planner planner(std::move(preferences), *service, arguments.value(3).toInt(),
                    arguments.value(4) == QStringLiteral("edit"));
    planner.start();
    return QCoreApplication::exec();
}
