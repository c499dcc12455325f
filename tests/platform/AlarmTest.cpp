#include "platform/linux/LinuxClock.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

using namespace tessaly;

class AlarmTest : public QObject
{
    Q_OBJECT

private slots:
    void aNewZoneIsNoticed()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("localtime"));
        const auto setZone = [&](const QByteArray &name) {
            // As the system does it: the name never points nowhere.
            const QString fresh = directory.filePath(QStringLiteral("fresh"));
            QVERIFY(QFile::link(QStringLiteral("/usr/share/zoneinfo/") + QString::fromLatin1(name), fresh));
            QCOMPARE(std::rename(qPrintable(fresh), qPrintable(path)), 0);
        };
        setZone("Europe/Vienna");
        const LinuxClock clock(path);
        QCOMPARE(clock.zone().id(), QByteArray("Europe/Vienna"));
        int calls = 0;
        const auto watch = clock.watchZone([&calls] { ++calls; });

        QVERIFY(QFile(directory.filePath(QStringLiteral("unrelated"))).open(QIODevice::WriteOnly));
        setZone("Asia/Kolkata");
        QTRY_COMPARE(calls, 1);
        QCOMPARE(clock.zone().id(), QByteArray("Asia/Kolkata"));
    }

    void anAlarmRingsOnceAndNotBeforeItsTime()
    {
        int rings = 0;
        const Instant when = m_clock.now().plus(0.05);
        Instant rungAt;
        const auto alarm = m_clock.makeAlarm([&] {
            ++rings;
            rungAt = m_clock.now();
        });

        alarm->set(when);
        QTRY_COMPARE(rings, 1);
        QVERIFY(rungAt >= when);

        // A second alarm proves that the time went on without the first ringing again.
        bool isLater = false;
        const auto later = m_clock.makeAlarm([&isLater] { isLater = true; });
        later->set(m_clock.now().plus(0.05));
        QTRY_VERIFY(isLater);
        QCOMPARE(rings, 1);
    }

    void aTimeInThePastRingsFromTheEventLoop()
    {
        int rings = 0;
        const auto alarm = m_clock.makeAlarm([&rings] { ++rings; });

        alarm->set(Instant::fromUnixSeconds(-1));
        QCOMPARE(rings, 0);
        QTRY_COMPARE(rings, 1);

        // Setting it again from within its own callback works too: that is what a scheduler does.
        alarm->set(m_clock.now());
        QTRY_COMPARE(rings, 2);
    }

    void aCancelledOrReplacedAlarmIsSilent()
    {
        int silent = 0;
        const auto cancelled = m_clock.makeAlarm([&silent] { ++silent; });
        const auto replaced = m_clock.makeAlarm([&silent] { ++silent; });
        auto deleted = m_clock.makeAlarm([&silent] { ++silent; });
        bool isOver = false;
        const auto last = m_clock.makeAlarm([&isOver] { isOver = true; });

        const Instant soon = m_clock.now().plus(0.02);
        cancelled->set(soon);
        replaced->set(soon);
        deleted->set(soon);
        last->set(soon.plus(0.03));
        cancelled->cancel();
        replaced->set(soon.plus(86400));
        deleted.reset();

        QTRY_VERIFY(isOver);
        QCOMPARE(silent, 0);
    }

private:
    const LinuxClock m_clock;
};

TESSALY_TEST_MAIN(AlarmTest)
#include "AlarmTest.moc"
