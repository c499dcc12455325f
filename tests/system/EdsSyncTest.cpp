#include "tests/support/TestMain.h"
#include "tests/system/EdsDriver.h"
#include "tests/system/SyncProof.h"

using namespace tessaly;

namespace {

const QString service = QStringLiteral("eds");
const QString serviceName = QStringLiteral("org.gnome.evolution.dataserver.Calendar8");
/// As many as a minute allows.
constexpr int lives = 2;
constexpr int killsPerLife = 20;
constexpr int mostAttempts = 5;
constexpr int longestLifeMs = 1500;
constexpr int syncsBesideAnother = 20;
/// After each it takes the planner longer to connect again.
constexpr int serviceKills = 6;

} // namespace

class EdsSyncTest : public QObject
{
    Q_OBJECT

private slots:
    void aPlannerThatIsKilledLosesAndDoublesNothing()
    {
        int killsInSync = 0;
        int livesLeft = lives;
        for (int attempt = 0; livesLeft > 0 && attempt < mostAttempts; ++attempt) {
            EdsDriver calendars(m_session);
            SyncProof proof(calendars, service);
            const uint process = serviceProcess();
            for (int kill = 0; kill < killsPerLife; ++kill)
                proof.runUntilKilled(longestLifeMs);
            const QStringList faults = proof.faults();
            // The service sometimes crashes when a client vanishes, and what it had not written yet is lost with it.
            if (!faults.isEmpty() && serviceProcess() != process) {
                qWarning("the service died by itself: not counted (%s)", qPrintable(faults.join(u'\n')));
                continue;
            }
            QCOMPARE(faults.join(u'\n'), QString());
            killsInSync += proof.killsInSync();
            --livesLeft;
        }
        if (livesLeft > 0)
            QSKIP("the service does not survive its clients on this machine");
        qInfo("%d kills, %d of them in a sync", lives * killsPerLife, killsInSync);
        QVERIFY(killsInSync > 0);
    }

    void twoProgramsAtOnceAgreeInTheEnd()
    {
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            EdsDriver calendars(m_session);
            SyncProof proof(calendars, service);
            const uint process = serviceProcess();
            proof.runFor(syncsBesideAnother);
            const QStringList faults = proof.faults();
            if (!faults.isEmpty() && serviceProcess() != process) {
                qWarning("the service died by itself: not counted (%s)", qPrintable(faults.join(u'\n')));
                continue;
            }
            QCOMPARE(faults.join(u'\n'), QString());
            return;
        }
        QSKIP("the service does not survive on this machine");
    }

    void aServiceThatIsKilledLosesAndDoublesNothing()
    {
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            EdsDriver calendars(m_session);
            SyncProof proof(calendars, service);
            uint process = serviceProcess();
            bool diedByItself = false;
            const auto settle = [&] {
                const uint now = serviceProcess();
                diedByItself |= process != 0 && now != process;
                process = now;
                // The service answers before it has written, so what it loses when it is killed would count as ours.
                return now != 0 && calendars.waitUntilWritten(QStringLiteral("Home"));
            };
            const int kills = proof.runDisturbed(serviceKills, settle, [&] {
                if (serviceProcess() == 0)
                    return false;
                m_session.kill(serviceName);
                process = 0;
                return true;
            });
            const QStringList faults = proof.faults();
            if (!faults.isEmpty() && (diedByItself || serviceProcess() != process)) {
                qWarning("the service died by itself: not counted (%s)", qPrintable(faults.join(u'\n')));
                continue;
            }
            qInfo("%d kills of the service", kills);
            QVERIFY(kills > 0);
            // QCOMPARE shortens.
            for (const QString &fault : faults)
                qWarning("%s", qPrintable(fault));
            QVERIFY(faults.isEmpty());
            return;
        }
        QSKIP("the service does not survive on this machine");
    }

private:
    /// 0 while it does not run.
    static uint serviceProcess()
    {
        const QDBusReply<uint> process = QDBusConnection::sessionBus().interface()->servicePid(serviceName);
        return process.isValid() ? process.value() : 0;
    }

    CalendarSession m_session;
};

TESSALY_TEST_MAIN(EdsSyncTest)
#include "EdsSyncTest.moc"
