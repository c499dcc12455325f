#include "tests/support/TestMain.h"
#include "tests/system/EdsDriver.h"
#include "tests/system/SyncProof.h"

using namespace tessaly;

namespace {

const QString service = QStringLiteral("eds");
/// As many as a minute allows.
constexpr int lives = 2;
constexpr int killsPerLife = 20;
constexpr int longestLifeMs = 1500;
constexpr int syncsBesideAnother = 20;
constexpr int syncsBesideKills = 150;
/// After each it takes the planner longer to connect again.
constexpr int mostServiceKills = 6;

} // namespace

class EdsSyncTest : public QObject
{
    Q_OBJECT

private slots:
    void aPlannerThatIsKilledLosesAndDoublesNothing()
    {
        int killsInSync = 0;
        for (int life = 0; life < lives; ++life) {
            EdsDriver calendars(m_session);
            SyncProof proof(calendars, service);
            for (int kill = 0; kill < killsPerLife; ++kill)
                proof.runUntilKilled(longestLifeMs);
            QCOMPARE(proof.faults().join(u'\n'), QString());
            killsInSync += proof.killsInSync();
        }
        qInfo("%d kills, %d of them in a sync", lives * killsPerLife, killsInSync);
        QVERIFY(killsInSync > 0);
    }

    void twoProgramsAtOnceAgreeInTheEnd()
    {
        EdsDriver calendars(m_session);
        SyncProof proof(calendars, service);
        proof.runFor(syncsBesideAnother);
        QCOMPARE(proof.faults().join(u'\n'), QString());
    }

    void aServiceThatIsKilledLosesAndDoublesNothing()
    {
        EdsDriver calendars(m_session);
        SyncProof proof(calendars, service);
        int kills = 0;
        proof.runFor(syncsBesideKills, [&] {
            const QString process = QStringLiteral("org.gnome.evolution.dataserver.Calendar8");
            if (kills == mostServiceKills || !QDBusConnection::sessionBus().interface()->isServiceRegistered(process))
                return false;
            m_session.kill(process);
            ++kills;
            return true;
        });
        qInfo("%d kills of the service", kills);
        QVERIFY(kills > 0);
        QCOMPARE(proof.faults().join(u'\n'), QString());
    }

private:
    CalendarSession m_session;
};

TESSALY_TEST_MAIN(EdsSyncTest)
#include "EdsSyncTest.moc"
