#include "model/RecordCodec.h"
#include "model/WaitingReminder.h"
#include "platform/common/SqlitePreferences.h"
#include "store/PreferenceKeys.h"
#include "tests/support/TestMain.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace tessaly;

namespace {

constexpr int killCount = 200;

/// The number of the state under the key; -1 when it cannot be read.
int stateNumber(const Preferences &preferences, const QString &key)
{
    const std::optional<QByteArray> blob = preferences.get<QByteArray>(key);
    const std::optional<SavedData> data = blob ? decodeSavedData(*blob) : std::nullopt;
    return data ? std::max(data->schedules.constFirst().title.toInt(), data->reminders.constFirst().title.toInt()) : -1;
}

/// Whether the to-do's reminder waits exactly when the to-do is open.
bool isReminderThatOfItsToDo(const Preferences &preferences)
{
    const std::optional<SavedData> data =
        decodeSavedData(preferences.get<QByteArray>(keys::storageKey).value_or(QByteArray()));
    const auto waiting =
        decodeWaitingReminders(preferences.get<QByteArray>(keys::waitingReminders).value_or(QByteArray()));
    return data && waiting && waiting->size() == (data->reminders.constFirst().isComplete ? 0 : 1);
}

/// The last whole line of what the child printed.
int lastAcknowledged(const QByteArray &output)
{
    const qsizetype end = output.lastIndexOf('\n');
    const qsizetype start = end < 1 ? -1 : output.lastIndexOf('\n', end - 1);
    return end < 0 ? -1 : output.mid(start + 1, end - start - 1).toInt();
}

} // namespace

class KillTest : public QObject
{
    Q_OBJECT

private slots:
    void aProcessThatIsKilledLosesNothingThatItSaved()
    {
        const QTemporaryDir directory;
        QRandomGenerator random(QRandomGenerator::global()->generate());
        int inFlight = 0;
        for (int kill = 0; kill < killCount; ++kill) {
            const int acknowledged = saveUntilKilled(directory.path(), random);
            QVERIFY2(acknowledged >= 0, "the child saved nothing");

            const auto opened = SqlitePreferences::open(directory.path());
            QVERIFY2(opened.hasValue(), "the database does not open");
            const int main = stateNumber(*opened.value(), keys::storageKey);
            const int backup = stateNumber(*opened.value(), keys::backupStorageKey);
            QVERIFY2(main == acknowledged || main == acknowledged + 1,
                     qPrintable(QStringLiteral("acknowledged %1, found %2").arg(acknowledged).arg(main)));
            QCOMPARE(backup, main - 1);
            QVERIFY(isReminderThatOfItsToDo(*opened.value()));
            inFlight += main - acknowledged;
        }
        qInfo("%d kills, %d of them after a commit and before its acknowledgement", killCount, inFlight);
    }

private:
    /// Runs the child until some states are saved and a random moment has passed; the number that it last acknowledged.
    static int saveUntilKilled(const QString &directory, QRandomGenerator &random)
    {
        QProcess child;
        child.start(QStringLiteral(SAVE_LOOP_PROGRAM), {directory});
        if (!child.waitForReadyRead())
            return -1;
        QDeadlineTimer moment;
        moment.setPreciseRemainingTime(0, random.bounded(30'000'000), Qt::PreciseTimer);
        QByteArray output;
        while (!moment.hasExpired())
            output += child.readAll();
        child.kill();
        child.waitForFinished();
        return lastAcknowledged(output + child.readAll());
    }
};

TESSALY_TEST_MAIN(KillTest)
#include "KillTest.moc"
