#include "platform/common/SqlitePreferences.h"
#include "tests/support/TestMain.h"
#include "tests/system/UndoStates.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace tessaly;

class UndoKillTest : public QObject
{
    Q_OBJECT

private slots:
    void aProcessThatIsKilledBetweenUndoAndRedoLeavesOneOfTheStates()
    {
        QRandomGenerator random(QRandomGenerator::global()->generate());
        int inFlight = 0;
        for (int kill = 0; kill < killCount; ++kill) {
            const QTemporaryDir directory;
            const QByteArrayList lines = linesUntilKilled(directory.path(), random);
            const qsizetype end = lines.indexOf(QByteArray());
            QVERIFY2(end > 0 && lines.size() > end + 1, "the child undid nothing");
            const QByteArrayList states = lines.first(end);
            QCOMPARE(QSet<QByteArray>(states.cbegin(), states.cend()).size(), states.size());

            const auto opened = SqlitePreferences::open(directory.path());
            QVERIFY2(opened.hasValue(), "the database does not open");
            const qsizetype found = states.indexOf(savedStateName(*opened.value()));
            const qsizetype acknowledged = states.indexOf(lines.constLast());
            QVERIFY2(found >= 0, "a state between two steps");
            QVERIFY2(qAbs(found - acknowledged) <= 1,
                     qPrintable(QStringLiteral("acknowledged %1, found %2").arg(acknowledged).arg(found)));
            inFlight += found == acknowledged ? 0 : 1;
        }
        qInfo("%d kills, %d of them after a commit and before its acknowledgement", killCount, inFlight);
    }

private:
    static constexpr int killCount = 200;

    /// Runs the child until it has undone something and a random moment has passed; its whole lines.
    static QByteArrayList linesUntilKilled(const QString &directory, QRandomGenerator &random)
    {
        QProcess child;
        child.start(QStringLiteral(UNDO_LOOP_PROGRAM), {directory});
        QByteArray output;
        const qsizetype nameLength = 65;
        while ((!output.contains("\n\n") || output.size() < output.indexOf("\n\n") + 2 + nameLength) &&
               child.waitForReadyRead())
            output += child.readAll();
        QDeadlineTimer moment;
        moment.setPreciseRemainingTime(0, random.bounded(30'000'000), Qt::PreciseTimer);
        while (!moment.hasExpired()) {
            child.waitForReadyRead(1);
            output += child.readAll();
        }
        child.kill();
        child.waitForFinished();
        output += child.readAll();
        return output.first(output.lastIndexOf('\n')).split('\n');
    }
};

TESSALY_TEST_MAIN(UndoKillTest)
#include "UndoKillTest.moc"
