#include "bench/Bench.h"
#include "bench/QJsonEncoding.h"
#include "model/RecordCodec.h"
#include "platform/common/SqliteConnection.h"
#include "store/PreferenceKeys.h"
#include "tests/support/RecordGenerator.h"
#include "tests/system/StoreOnDisk.h"

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

// One changed to-do, from the call of the store's verb to the committed save, beside what a plain program would do:
// encode everything with QJsonDocument and update two rows of a database with SQLite's defaults and FULL durability.

namespace tessaly::bench {

namespace {

/// The planner on a data directory of its own, with generated records.
class SavedPlanner
{
public:
    explicit SavedPlanner(qsizetype schedules)
        : m_schedules(RecordGenerator().savedData(schedules, 0, 0).schedules), m_planner(preferencesWith(m_schedules))
    {
        m_planner.store().addReminder(RecordGenerator().reminder());
        changeOneToDo();
    }

    void changeOneToDo()
    {
        ReminderItem reminder = m_planner.store().reminders().constFirst();
        reminder.isComplete = !reminder.isComplete;
        m_planner.store().updateReminder(reminder);
    }

    /// Every sample saves a schedule of another length, so that everything behind it moves.
    void changeTheFirstSchedule()
    {
        ScheduleItem schedule = m_planner.store().schedules().constFirst();
        schedule.notes.append(u'n');
        m_planner.store().updateSchedule(schedule);
    }

    void deleteTheMiddleSchedule()
    {
        const QList<ScheduleItem> &schedules = m_planner.store().schedules();
        m_planner.store().deleteSchedule(schedules.at(schedules.size() / 2));
    }

    void undo() { m_planner.store().undo(); }
    void redo() { m_planner.store().redo(); }

    [[nodiscard]] bool isSaved() const { return !m_planner.store().hasUnsavedChanges(); }
    [[nodiscard]] const QList<ScheduleItem> &schedules() const { return m_schedules; }
    [[nodiscard]] QString directory() const { return m_directory.path(); }

private:
    [[nodiscard]] std::unique_ptr<SqlitePreferences> preferencesWith(const QList<ScheduleItem> &schedules) const
    {
        auto preferences = SqlitePreferences::open(m_directory.path()).takeValue();
        (void)preferences->setValue(keys::storageKey, *encodeSavedData({.schedules = schedules}));
        return preferences;
    }

    QTemporaryDir m_directory;
    QList<ScheduleItem> m_schedules;
    mutable StoreOnDisk m_planner;
};

/// The plain way.
class PlainSave
{
public:
    explicit PlainSave(const QList<ScheduleItem> &schedules) : m_schedules(schedules)
    {
        (void)m_connection.open(m_directory.filePath(QStringLiteral("plain.sqlite")), SqliteConnection::Access::Create);
        (void)m_connection.execute("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL;"
                                   "CREATE TABLE preference (key TEXT PRIMARY KEY, value BLOB);"
                                   "INSERT INTO preference VALUES ('main', x''), ('backup', x'')");
        m_rotate.emplace(m_connection, "UPDATE preference SET value = (SELECT value FROM preference WHERE key = 'main')"
                                       " WHERE key = 'backup'");
        m_update.emplace(m_connection, "UPDATE preference SET value = ? WHERE key = 'main'");
        save();
    }

    void save()
    {
        m_schedules.front().isTaskComplete = !m_schedules.front().isTaskComplete;
        const QByteArray json = encodeWithQJson(m_schedules);
        (void)m_connection.execute("BEGIN");
        (void)m_rotate->run();
        (void)m_update->bindBlob(1, json).run();
        (void)m_connection.execute("COMMIT");
    }

private:
    QTemporaryDir m_directory;
    SqliteConnection m_connection;
    std::optional<SqliteStatement> m_rotate;
    std::optional<SqliteStatement> m_update;
    QList<ScheduleItem> m_schedules;
};

/// Writes the bytes over the same place of a file and waits for the disk: what no save of the whole state can beat.
class PlainWrite
{
public:
    explicit PlainWrite(qint64 size) : m_bytes(size, 'x'), m_file(m_directory.filePath(QStringLiteral("file")))
    {
        (void)m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered);
        write();
    }

    void write()
    {
        (void)m_file.seek(0);
        (void)m_file.write(m_bytes);
        fdatasync(m_file.handle());
    }

private:
    QTemporaryDir m_directory;
    QByteArray m_bytes;
    QFile m_file;
};

} // namespace

TESSALY_BENCH(Save)
{
    struct Case
    {
        qsizetype schedules;
        double factor;
        int samples;
    };
    for (const Case &point : {Case{100, 1, 25}, Case{10'000, 30, 9}, Case{100'000, 20, 5}}) {
        SavedPlanner planner(point.schedules);
        PlainSave plain(planner.schedules());
        PlainWrite bytes(encodeWithQJson(planner.schedules()).size());
        PlainWrite page(4096);
        const auto seconds = medianSeconds(point.samples, {{[&] { planner.changeOneToDo(); }},
                                                           {[&] { planner.changeTheFirstSchedule(); }},
                                                           {[&] { plain.save(); }},
                                                           {[&] { bytes.write(); }},
                                                           {[&] { page.write(); }}});
        const QString name = QStringLiteral("%1, %2 schedules");
        if (!planner.isSaved())
            return report.failed(name.arg(QStringLiteral("save")).arg(point.schedules),
                                 QStringLiteral("nothing is saved"));
        const QString toDo = name.arg(QStringLiteral("save one to-do")).arg(point.schedules);
        const QString schedule = name.arg(QStringLiteral("save first schedule longer")).arg(point.schedules);
        report.timesFasterThan(toDo, seconds[0], QStringLiteral("QJsonDocument + 2 rows"), seconds[2], point.factor);
        report.timesFasterThan(schedule, seconds[1], QStringLiteral("QJsonDocument + 2 rows"), seconds[2],
                               point.factor);
        report.shown(toDo, seconds[0], QStringLiteral("all bytes + fdatasync"), seconds[3]);
        report.shown(toDo, seconds[0], QStringLiteral("4 KB + fdatasync"), seconds[4]);
    }
}

TESSALY_BENCH(Undo)
{
    constexpr double frame = 1.0 / 60;
    constexpr qsizetype schedules = 100'000;
    SavedPlanner planner(schedules);
    const auto seconds = medianSeconds(9, {{[&] { planner.undo(); }, [&] { planner.deleteTheMiddleSchedule(); }},
                                           {[&] { planner.redo(); },
                                            [&] {
                                                planner.deleteTheMiddleSchedule();
                                                planner.undo();
                                            }},
                                           {[&] { planner.undo(); }, [&] { planner.changeTheFirstSchedule(); }}});
    if (!planner.isSaved())
        return report.failed(QStringLiteral("undo"), QStringLiteral("nothing is saved"));
    const QString limit = QStringLiteral("a frame");
    report.atMostTimes(QStringLiteral("undo a deletion among 100000 schedules"), seconds[0], limit, frame, 1);
    report.atMostTimes(QStringLiteral("redo a deletion among 100000 schedules"), seconds[1], limit, frame, 1);
    report.atMostTimes(QStringLiteral("undo an edit among 100000 schedules"), seconds[2], limit, frame, 1);
}

TESSALY_BENCH(Open)
{
    for (const qsizetype schedules : {10'000, 100'000}) {
        QTemporaryDir directory;
        qint64 size = 0;
        {
            SavedPlanner planner(schedules);
            size = encodeWithQJson(planner.schedules()).size();
            const auto preferences = SqlitePreferences::open(directory.path()).takeValue();
            for (int save = 0; save < 2; ++save)
                (void)preferences->rotate(QStringLiteral("main"), QStringLiteral("backup"), QByteArray(size, 'x'));
        }
        const QByteArray source(size, 'x');
        QByteArray copied(size, 'y');
        const auto seconds = medianSeconds(9, {{[&] { keep(SqlitePreferences::open(directory.path())); }}, {[&] {
                                                   copied = source;
                                                   copied.detach();
                                                   keep(copied);
                                               }}});
        report.shown(QStringLiteral("open and check, %1 schedules").arg(schedules), seconds[0],
                     QStringLiteral("copy of the main data"), seconds[1]);
    }
}

} // namespace tessaly::bench
