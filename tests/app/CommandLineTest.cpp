#include "app/CommandLine.h"
#include "tests/support/TestMain.h"

#include <QDir>

using namespace tessaly;

using Task = CommandLine::Task;

class CommandLineTest : public QObject
{
    Q_OBJECT

private slots:
    void argumentsChooseTheTask_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<Task>("task");
        QTest::addColumn<QString>("mention");

        QTest::newRow("none") << QString() << Task::Run << QString();
        QTest::newRow("demo") << QStringLiteral("--demo") << Task::Run << QString();
        QTest::newRow("self-test") << QStringLiteral("--self-test") << Task::SelfTest << QString();
        QTest::newRow("pictures") << QStringLiteral("--screens out") << Task::Pictures << QString();
        QTest::newRow("help") << QStringLiteral("--help") << Task::Print << QStringLiteral("--data-dir");
        QTest::newRow("version") << QStringLiteral("--version") << Task::Print << QStringLiteral("0.0.1 (20260828)");
        QTest::newRow("unknown option") << QStringLiteral("--foo") << Task::Refuse << QStringLiteral("foo");
        QTest::newRow("surplus argument") << QStringLiteral("notes.md") << Task::Refuse << QStringLiteral("notes.md");
        QTest::newRow("no directory") << QStringLiteral("--data-dir") << Task::Refuse << QStringLiteral("data-dir");
        QTest::newRow("empty directory") << QStringLiteral("--data-dir=") << Task::Refuse << QStringLiteral("data-dir");
        QTest::newRow("two tasks") << QStringLiteral("--self-test --screens out") << Task::Refuse
                                   << QStringLiteral("--self-test");
        QTest::newRow("demo has no directory")
            << QStringLiteral("--demo --data-dir d") << Task::Refuse << QStringLiteral("--demo");
        QTest::newRow("demo has a window")
            << QStringLiteral("--demo --background") << Task::Refuse << QStringLiteral("--background");
    }

    void argumentsChooseTheTask()
    {
        QFETCH(const QString, arguments);
        QFETCH(const Task, task);
        QFETCH(const QString, mention);

        const CommandLine read =
            parseCommandLine(QStringList{QStringLiteral("tessaly")} + arguments.split(u' ', Qt::SkipEmptyParts));

        QCOMPARE(read.task, task);
        QVERIFY2(read.text.contains(mention), qUtf8Printable(read.text));
    }

    void aBaseDirectoryThatIsNotAbsoluteIsNone()
    {
        const auto afterwards = [](const char *variable, const QByteArray &value) {
            qputenv(variable, value);
            forgetRelativeBaseDirectories();
            return qgetenv(variable);
        };

        QCOMPARE(afterwards("XDG_DATA_HOME", "share"), QByteArray());
        QCOMPARE(afterwards("XDG_CONFIG_HOME", "~/.config"), QByteArray());
        QCOMPARE(afterwards("XDG_RUNTIME_DIR", "./run"), QByteArray());
        QCOMPARE(afterwards("XDG_DATA_HOME", "/elsewhere/share"), QByteArray("/elsewhere/share"));
    }

    void aGivenDirectoryIsMadeAbsolute()
    {
        const CommandLine read =
            parseCommandLine({QStringLiteral("tessaly"), QStringLiteral("--data-dir"), QStringLiteral("some/../data")});

        QVERIFY(read.isDataDirectoryGiven);
        QCOMPARE(QDir::cleanPath(read.dataDirectory), QDir::current().absoluteFilePath(QStringLiteral("data")));
    }
};

TESSALY_TEST_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
