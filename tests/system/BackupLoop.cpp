// Changes a planner, keeps and rotates generations, and puts one back, until it is killed. The work is named by the
// second argument. What a generation must hold is printed once it is kept: its file and the digest of the main data.

#include "model/BackupPlan.h"
#include "platform/common/SqliteBackups.h"
#include "store/PreferenceKeys.h"
#include "tests/support/RecordGenerator.h"
#include "tests/system/StoreOnDisk.h"

#include <QCoreApplication>
#include <QCryptographicHash>

#include <unistd.h>

using namespace tessaly;

namespace {

constexpr qsizetype scheduleCount = 300;
/// Few, so that generations go all the time.
constexpr BackupLimits limits{.hours = 3, .days = 2, .months = 1, .restorePoints = 3};

void say(const QByteArray &words)
{
    const QByteArray line = words + '\n';
    if (write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size())) < 0)
        _exit(4);
}

QByteArray digest(const Preferences &preferences)
{
    const QByteArray data = preferences.get<QByteArray>(keys::storageKey).value_or(QByteArray());
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1).toHex();
}

/// Keeps one generation after the other and saves meanwhile, as a planner does.
class Keeper
{
public:
    Keeper(StoreOnDisk &planner, const QString &directory)
        : m_planner(planner), m_backups(directory), m_generator(static_cast<quint64>(getpid())),
          m_moment(Instant::fromUnixSeconds(1'795'000'000 + 3600.0 * m_generator.below(100'000)))
    {
    }

    void keepNext()
    {
        change();
        m_moment = m_moment.plus(3600.0 * m_generator.below(30));
        const auto reason = m_generator.happens(0.5) ? GenerationReason::Hourly : GenerationReason::Clear;
        const QByteArray expected = digest(m_planner.preferences());
        m_backups.keep({.moment = m_moment, .reason = reason}, [this, expected](const Result<Generation> &kept) {
            if (!kept)
                _exit(3);
            say(generationFileName(kept.value()).toLatin1() + ' ' + expected);
            m_backups.remove(outdatedGenerations(m_backups.list(), m_calendar, limits));
            keepNext();
        });
        change();
        change();
    }

private:
    void change()
    {
        ScheduleItem schedule = m_planner.store().schedules().constFirst();
        schedule.notes = QString(m_generator.below(m_generator.happens(0.3) ? 1'000'000 : 2'000), u'n');
        m_planner.store().updateSchedule(schedule);
    }

    StoreOnDisk &m_planner;
    SqliteBackups m_backups;
    RecordGenerator m_generator;
    UserCalendar m_calendar{QTimeZone::utc(), Qt::Monday, QLocale::c()};
    Instant m_moment;
};

int keep(const QString &directory)
{
    auto opened = SqlitePreferences::open(directory);
    if (!opened)
        return 2;
    StoreOnDisk planner(opened.takeValue());
    RecordGenerator generator;
    for (qsizetype row = planner.store().schedules().size(); row < scheduleCount; ++row)
        planner.store().addSchedule(generator.schedule());
    Keeper keeper(planner, directory);
    keeper.keepNext();
    return QCoreApplication::exec();
}

/// Puts one generation after the other in the place of the database.
int putBack(const QString &directory)
{
    const SqliteBackups backups(directory);
    double seconds = 1'795'000'000.0 + getpid() * 1000.0;
    say("begun");
    while (true) {
        for (const Generation &generation : backups.list()) {
            if (!backups.putBack(generation, Instant::fromUnixSeconds(seconds += 1)))
                return 3;
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString directory = QCoreApplication::arguments().value(1);
    return QCoreApplication::arguments().value(2) == u"put-back" ? putBack(directory) : keep(directory);
}
