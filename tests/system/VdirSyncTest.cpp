#include "tests/platform/VdirDriver.h"
#include "tests/support/TestMain.h"
#include "tests/system/SyncProof.h"

using namespace tessaly;

namespace {

/// A planner and a folder for each, which begin with nothing known of each other.
constexpr int lives = 5;
constexpr int killsPerLife = 20;
constexpr int longestLifeMs = 400;
constexpr int syncsBesideAnother = 40;

} // namespace

class VdirSyncTest : public QObject
{
    Q_OBJECT

private slots:
    void aPlannerThatIsKilledLosesAndDoublesNothing()
    {
        int killsInSync = 0;
        for (int life = 0; life < lives; ++life) {
            VdirDriver folder;
            SyncProof proof(folder, folder.folder());
            for (int kill = 0; kill < killsPerLife; ++kill)
                proof.runUntilKilled(longestLifeMs);
            compare(proof, folder);
            killsInSync += proof.killsInSync();
        }
        qInfo("%d kills, %d of them in a sync", lives * killsPerLife, killsInSync);
        QVERIFY(killsInSync > 0);
    }

    void twoProgramsAtOnceAgreeInTheEnd()
    {
        VdirDriver folder;
        SyncProof proof(folder, folder.folder());
        proof.runFor(syncsBesideAnother);
        compare(proof, folder);
    }

private:
    static void compare(SyncProof &proof, const VdirDriver &folder)
    {
        QCOMPARE(proof.faults().join(u'\n'), QString());
        for (const QString &name : QDir(folder.path(QStringLiteral("Home"))).entryList(QDir::Files | QDir::Hidden)) {
            // The draft of one that was killed; it goes when it is older.
            if (name.startsWith(QStringLiteral(".tessaly-")))
                continue;
            const QByteArray text = folder.read(QStringLiteral("Home/") + name);
            QVERIFY2(name.endsWith(QStringLiteral(".ics")), qPrintable(name));
            QVERIFY2(text.startsWith("BEGIN:VCALENDAR") && text.endsWith("END:VCALENDAR\r\n"), qPrintable(name));
        }
    }
};

TESSALY_TEST_MAIN(VdirSyncTest)
#include "VdirSyncTest.moc"
