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

private:
    CalendarSession m_session;
};

TESSALY_TEST_MAIN(EdsSyncTest)
#include "EdsSyncTest.moc"
