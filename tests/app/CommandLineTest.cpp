#include "app/CommandLine.h"
#include "tests/support/TestMain.h"

#include <QDateTime>
#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTimeZone>

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
        QTest::newRow("calendars of a directory") << QStringLiteral("--calendar vdir:c") << Task::Run << QString();
        QTest::newRow("calendars of the service") << QStringLiteral("--calendar eds") << Task::Run << QString();
        QTest::newRow("no calendars") << QStringLiteral("--calendar none") << Task::Run << QString();
        QTest::newRow("calendars of nowhere")
            << QStringLiteral("--calendar vdir:") << Task::Refuse << QStringLiteral("--calendar");
        QTest::newRow("unknown calendars")
            << QStringLiteral("--calendar paper") << Task::Refuse << QStringLiteral("--calendar");
        QTest::newRow("demo has calendars of its own")
            << QStringLiteral("--demo --calendar none") << Task::Refuse << QStringLiteral("--calendar");
        QTest::newRow("two tasks") << QStringLiteral("--self-test --screens out") << Task::Refuse
                                   << QStringLiteral("--self-test");
        QTest::newRow("demo has no directory")
            << QStringLiteral("--demo --data-dir d") << Task::Refuse << QStringLiteral("--demo");
        QTest::newRow("demo has a window")
            << QStringLiteral("--demo --background") << Task::Refuse << QStringLiteral("--background");
        QTest::newRow("the field is in a window")
            << QStringLiteral("--find --background") << Task::Refuse << QStringLiteral("--background");
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

    void aLinkOrAFileIsOpenedInTheWindow_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("opened");
        QTest::newRow("webcal") << QStringLiteral("webcal://example.org/a.ics")
                                << QStringLiteral("webcal://example.org/a.ics");
        QTest::newRow("https") << QStringLiteral("https://example.org/a.ics")
                               << QStringLiteral("https://example.org/a.ics");
        QTest::newRow("a file's address")
            << QStringLiteral("file:///tmp/a%20b.ics") << QStringLiteral("file:///tmp/a%20b.ics");
        const QString file = m_folder.filePath(QStringLiteral("课表 a.ics"));
        QTest::newRow("a file") << file << file;
        QTest::newRow("a file beside") << QDir::current().relativeFilePath(file) << file;
        QTest::newRow("no file") << QStringLiteral("nothing.ics") << QString();
        QTest::newRow("a folder") << m_folder.path() << QString();
        QTest::newRow("another scheme") << QStringLiteral("ftp://example.org/a.ics") << QString();
        QTest::newRow("a command") << QStringLiteral("agenda") << QString();
        QTest::newRow("what a second start says") << QStringLiteral("open") << QString();
    }

    void aLinkOrAFileIsOpenedInTheWindow()
    {
        QFETCH(const QString, word);
        QFETCH(const QString, opened);
        QFile file(m_folder.filePath(QStringLiteral("课表 a.ics")));
        QVERIFY(file.open(QIODevice::WriteOnly));

        const CommandLine read = parseCommandLine({QStringLiteral("tessaly"), word});

        QCOMPARE(read.opened, opened);
        if (!opened.isEmpty())
            QCOMPARE(read.task, Task::Run);
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

    void everyTimeZoneOfTheEnvironmentIsOpened_data()
    {
        QTest::addColumn<QByteArray>("setting");
        QTest::addColumn<int>("summerMinutes");
        QTest::addColumn<int>("winterMinutes");

        const auto row = [](const char *setting, int summerMinutes, int winterMinutes) {
            QTest::newRow(setting) << QByteArray(setting) << summerMinutes << winterMinutes;
        };
        row("Europe/Vienna", 120, 60);
        row(":Europe/Vienna", 120, 60);
        row("/usr/share/zoneinfo/Europe/Vienna", 120, 60);
        row(":/usr/share/zoneinfo/America/Nuuk", -60, -120);
        row("/usr/share/zoneinfo/../zoneinfo/Asia/Kolkata", 330, 330);
        row("/a file without a name", 120, 60);
        row("CET-1CEST,M3.5.0,M10.5.0/3", 120, 60);
        row("GMT-3", 180, 180);
        row("UTC+3:30", -210, -210);
        row("/nowhere", 0, 0);
        row("", 0, 0);
    }

    void everyTimeZoneOfTheEnvironmentIsOpened()
    {
        QFETCH(QByteArray, setting);
        QTemporaryDir directory;
        if (setting == "/a file without a name") {
            setting = QFile::encodeName(directory.filePath(QStringLiteral("zone")));
            QVERIFY(QFile::copy(QStringLiteral("/usr/share/zoneinfo/Europe/Vienna"), QFile::decodeName(setting)));
        }
        const QByteArray before = qgetenv("TZ");
        const auto restore = qScopeGuard([&] { qputenv("TZ", before); });

        qputenv("TZ", setting);
        nameTimeZone();

        const QTimeZone zone = QTimeZone::systemTimeZone();
        QVERIFY(zone.isValid());
        QTEST(zone.offsetFromUtc(QDateTime(QDate(2026, 7, 1), QTime(), Qt::UTC)) / 60, "summerMinutes");
        QTEST(zone.offsetFromUtc(QDateTime(QDate(2026, 12, 1), QTime(), Qt::UTC)) / 60, "winterMinutes");
    }

    void theDefaultTimeZoneIsTheOneThatIsWatched()
    {
        const QByteArray before = qgetenv("TZ");
        const auto restore = qScopeGuard([&] { qputenv("TZ", before); });

        qputenv("TZ", ":/etc/localtime");
        nameTimeZone();

        QVERIFY(!qEnvironmentVariableIsSet("TZ") || !QFileInfo::exists(QStringLiteral("/etc/localtime")));
    }

    void aGivenDirectoryIsMadeAbsolute()
    {
        const CommandLine read =
            parseCommandLine({QStringLiteral("tessaly"), QStringLiteral("--data-dir"), QStringLiteral("some/../data")});

        const CommandLine calendars = parseCommandLine(
            {QStringLiteral("tessaly"), QStringLiteral("--calendar"), QStringLiteral("vdir:some/../calendars")});
        QCOMPARE(QDir::cleanPath(calendars.calendarDirectory),
                 QDir::current().absoluteFilePath(QStringLiteral("calendars")));
        QVERIFY(read.isDataDirectoryGiven);
        QCOMPARE(QDir::cleanPath(read.dataDirectory), QDir::current().absoluteFilePath(QStringLiteral("data")));
    }

private:
    QTemporaryDir m_folder;
};

TESSALY_TEST_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
