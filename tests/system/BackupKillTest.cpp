#include "platform/common/SqliteBackups.h"
#include "platform/common/SqlitePreferences.h"
#include "store/PreferenceKeys.h"
#include "tests/support/TestMain.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace tessaly;

namespace {

constexpr int killCount = 200;

QByteArray mainDataIn(const QString &database)
{
    const auto opened = SqlitePreferences::openCopy(database);
    return opened ? opened.value()->get<QByteArray>(keys::storageKey).value_or(QByteArray()) : QByteArray();
}

QByteArray digest(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1).toHex();
}

/// Runs the child until it has said something and a random moment has passed; all whole lines that it said.
QList<QByteArray> runUntilKilled(const QStringList &arguments, int longestMilliseconds)
{
    QProcess child;
    child.start(QStringLiteral(BACKUP_LOOP_PROGRAM), arguments);
    if (!child.waitForReadyRead())
        return {};
    QDeadlineTimer moment;
    moment.setPreciseRemainingTime(0, QRandomGenerator::global()->bounded(longestMilliseconds) * 1'000'000LL,
                                   Qt::PreciseTimer);
    QByteArray output;
    while (!moment.hasExpired())
        output += child.readAll();
    child.kill();
    child.waitForFinished();
    QList<QByteArray> lines = (output + child.readAll()).split('\n');
    lines.removeLast();
    return lines;
}

} // namespace

class BackupKillTest : public QObject
{
    Q_OBJECT

private slots:
    void aKeeperThatIsKilledLeavesWholeGenerationsOnly()
    {
        const QTemporaryDir directory;
        const SqliteBackups backups(directory.path());
        QHash<QString, QByteArray> expected;
        int unfinished = 0;
        for (int kill = 0; kill < killCount; ++kill) {
            const QList<QByteArray> lines = runUntilKilled({directory.path(), QStringLiteral("keep")}, 60);
            QVERIFY2(!lines.isEmpty(), "the child kept nothing");
            for (const QByteArray &line : lines)
                expected.insert(QString::fromLatin1(line.split(' ').at(0)), line.split(' ').at(1));
            const QStringList files = QDir(backups.folderIn(directory.path())).entryList(QDir::Files);
            unfinished += files.contains(QStringLiteral("unfinished")) ? 1 : 0;
            QVERIFY(!backups.list().isEmpty());
            for (const Generation &generation : backups.list()) {
                QVERIFY(backups.check(generation));
                const auto known = expected.constFind(generationFileName(generation));
                // One that was kept and not announced any more is whole, too.
                if (known != expected.cend())
                    QCOMPARE(digest(mainDataIn(backups.path(generation))), *known);
            }
            QVERIFY(SqlitePreferences::open(directory.path()));
        }
        qInfo("%d kills, %d of them left an unfinished copy", killCount, unfinished);
    }

    void aRestoreThatIsKilledLeavesOneStateOrTheOther()
    {
        const QTemporaryDir directory;
        QVERIFY(!runUntilKilled({directory.path(), QStringLiteral("keep")}, 400).isEmpty());
        const SqliteBackups backups(directory.path());
        QSet<QByteArray> states{digest([&] {
            const auto opened = SqlitePreferences::open(directory.path());
            return opened ? opened.value()->get<QByteArray>(keys::storageKey).value_or(QByteArray()) : QByteArray();
        }())};
        for (const Generation &generation : backups.list())
            states.insert(digest(mainDataIn(backups.path(generation))));
        QVERIFY(!states.contains(digest({})));
        int missing = 0;
        for (int kill = 0; kill < killCount; ++kill) {
            QVERIFY(!runUntilKilled({directory.path(), QStringLiteral("put-back")}, 20).isEmpty());
            if (SqlitePreferences::isMissing(directory.path())) {
                // The start then offers the newest generation.
                QVERIFY(backups.newestSound());
                ++missing;
            } else {
                const auto opened = SqlitePreferences::open(directory.path());
                QVERIFY(opened);
                QVERIFY(states.contains(digest(*opened.value()->get<QByteArray>(keys::storageKey))));
            }
            for (const QFileInfo &aside :
                 QDir(directory.path()).entryInfoList({QStringLiteral("planner-damaged-*.sqlite")})) {
                QVERIFY(states.contains(digest(mainDataIn(aside.filePath()))));
                QFile::remove(aside.filePath());
            }
        }
        qInfo("%d kills, %d of them between the two files", killCount, missing);
    }
};

TESSALY_TEST_MAIN(BackupKillTest)
#include "BackupKillTest.moc"
