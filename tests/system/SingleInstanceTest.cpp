#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <memory>
#include <optional>

/// Real processes on real directories.
class SingleInstanceTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory.emplace(); }

    void aSecondProcessAsksTheFirstToShowItself()
    {
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");

        const auto second = start(m_directory->path(), QStringLiteral("token-7"));

        QCOMPARE(line(*second), "second");
        QCOMPARE(line(*first), "asked token-7");
        QVERIFY(second->waitForFinished());
        QCOMPARE(second->exitCode(), 0);
    }

    void aSecondProcessForTheBackgroundShowsNothing()
    {
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");

        const auto second = start(m_directory->path(), QStringLiteral("background"));

        QCOMPARE(line(*second), "second");
        QCOMPARE(line(*first), "resident");
    }

    void anotherPathToTheSameDirectoryIsTheSame()
    {
        const QString link = m_directory->path() + QStringLiteral("-link");
        QVERIFY(QFile::link(m_directory->path(), link));
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");

        const auto second = start(link + QStringLiteral("/."), QString());

        QCOMPARE(line(*second), "second");
        QFile::remove(link);
    }

    void otherDirectoriesAreIndependent()
    {
        const QTemporaryDir other;
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");
        const auto second = start(other.path(), QString());
        QCOMPARE(line(*second), "first");
    }

    void theLockOfAKilledProcessIsTakenOver()
    {
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");
        first->kill();
        QVERIFY(first->waitForFinished());

        const auto next = start(m_directory->path(), QString());
        QCOMPARE(line(*next), "first");
        const auto second = start(m_directory->path(), QString());
        QCOMPARE(line(*second), "second");
    }

    void theDirectoryIsFreeOnceTheFirstHasEnded()
    {
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");
        first->closeWriteChannel();
        QVERIFY(first->waitForFinished());
        QVERIFY(!QFile::exists(m_directory->filePath(QStringLiteral("tessaly.lock"))));

        QCOMPARE(line(*start(m_directory->path(), QString())), "first");
    }

    void aFirstThatDoesNotAnswerIsAnError()
    {
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");
        ::kill(static_cast<pid_t>(first->processId()), SIGSTOP);

        const auto second = start(m_directory->path(), QString());
        const QByteArray answer = line(*second);
        ::kill(static_cast<pid_t>(first->processId()), SIGCONT);

        QCOMPARE(answer, "locked");
    }

    void aTokenOfAnyLengthDoesNoHarm()
    {
        const auto first = start(m_directory->path(), QString());
        QCOMPARE(line(*first), "first");
        const auto second = start(m_directory->path(), QString(100'000, u'x'));
        QCOMPARE(line(*second), "second");
        QCOMPARE(line(*first).left(10), "asked xxxx");
    }

private:
    struct Stop
    {
        void operator()(QProcess *process) const
        {
            process->kill();
            process->waitForFinished();
            delete process;
        }
    };

    static std::unique_ptr<QProcess, Stop> start(const QString &directory, const QString &token)
    {
        std::unique_ptr<QProcess, Stop> process(new QProcess);
        process->start(QStringLiteral(INSTANCE_HOLDER_PROGRAM), {directory, token});
        return process;
    }

    /// The next line that the process says.
    static QByteArray line(QProcess &process)
    {
        while (!process.canReadLine() && process.waitForReadyRead(20'000)) {
        }
        return process.readLine().trimmed();
    }

    std::optional<QTemporaryDir> m_directory;
};

TESSALY_TEST_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
