#include "platform/linux/XdgLoginItem.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace tessaly;

class XdgLoginItemTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_home.emplace();
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home->path()));
        QStandardPaths::setTestModeEnabled(false);
    }

    void itIsOnOnceItWasSwitchedOn()
    {
        XdgLoginItem item({program()});
        QVERIFY(!item.isEnabled());

        QVERIFY(item.setEnabled(true));

        QVERIFY(item.isEnabled());
        QCOMPARE(item.filePath(), path());
        QVERIFY(text().startsWith("[Desktop Entry]\n"));
        QVERIFY(text().contains("\nExec=" + program().toUtf8() + "\n"));

        QVERIFY(item.setEnabled(false));
        QVERIFY(!item.isEnabled());
        QVERIFY2(item.setEnabled(false), "already off");
    }

    void whatTheSessionSaysCounts_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<bool>("isEnabled");

        const QByteArray plain = "[Desktop Entry]\nType=Application\nExec=/bin/sh\n";
        QTest::newRow("plain") << plain << true;
        QTest::newRow("hidden") << plain + "Hidden=true\n" << false;
        QTest::newRow("hidden, with blanks") << plain + "Hidden = true \n" << false;
        QTest::newRow("not hidden") << plain + "Hidden=false\n" << true;
        QTest::newRow("switched off in the session settings") << plain + "X-GNOME-Autostart-enabled=false\n" << false;
        QTest::newRow("a comment says nothing") << plain + "#Hidden=true\n" << true;
        QTest::newRow("other groups say nothing") << plain + "[Desktop Action x]\nHidden=true\n" << true;
        QTest::newRow("nothing to run") << QByteArray("[Desktop Entry]\nType=Application\n") << false;
        QTest::newRow("empty") << QByteArray() << false;
        const QByteArray start = "[Desktop Entry]\nType=Application\nExec=";
        QTest::newRow("a program that is gone") << start + "/opt/gone/tessaly --background\n" << false;
        QTest::newRow("no program") << start + "/etc/passwd\n" << false;
        QTest::newRow("with arguments") << start + "/bin/sh --background\n" << true;
        QTest::newRow("by its name") << start + "sh\n" << true;
        QTest::newRow("quoted") << start + "\"/bin/sh\" -c \"a b\"\n" << true;
    }

    void whatTheSessionSaysCounts()
    {
        QFETCH(const QByteArray, entry);
        QFETCH(const bool, isEnabled);
        XdgLoginItem item({program()});
        write(entry);

        QCOMPARE(item.isEnabled(), isEnabled);

        QVERIFY(item.setEnabled(true));
        QVERIFY2(item.isEnabled(), "what switched it off is gone");
    }

    void anEntryOfTheProgramStaysSwitchedOff_data()
    {
        QTest::addColumn<QByteArray>("entry");

        QTest::newRow("hidden") << QByteArray("[Desktop Entry]\nHidden=true\n");
        QTest::newRow("session settings") << QByteArray("[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n");
    }

    void anEntryOfTheProgramStaysSwitchedOff()
    {
        QFETCH(const QByteArray, entry);
        XdgLoginItem item({program()}, XdgLoginItem::userAutostartDirectory(),
                          {.setBy = AutostartEntry::SetBy::Program});
        write(entry);

        for (const bool isEnabled : {true, false}) {
            QVERIFY(item.setEnabled(isEnabled));
            QCOMPARE(text(), entry);
        }
    }

    void theCommandIsQuoted_data()
    {
        QTest::addColumn<QStringList>("command");
        QTest::addColumn<QString>("exec");

        QTest::newRow("plain") << QStringList{QStringLiteral("/usr/bin/tessaly")} << QStringLiteral("/usr/bin/tessaly");
        QTest::newRow("blank") << QStringList{QStringLiteral("/a b/t"), QStringLiteral("--data-dir"),
                                              QStringLiteral("/d")}
                               << QStringLiteral("\"/a b/t\" --data-dir /d");
        QTest::newRow("per cent") << QStringList{QStringLiteral("/100%f")} << QStringLiteral("/100%%f");
        QTest::newRow("dollar and quote")
            << QStringList{QStringLiteral("/$a\"b")} << QStringLiteral("\"/\\\\$a\\\\\"b\"");
        QTest::newRow("backslash") << QStringList{QStringLiteral("/a\\b")} << QStringLiteral("\"/a\\\\\\\\b\"");
        QTest::newRow("Chinese") << QStringList{QStringLiteral("/数据/程序")} << QStringLiteral("/数据/程序");
        QTest::newRow("line break") << QStringList{QStringLiteral("/a\nb")} << QStringLiteral("\"/a\\nb\"");
        QTest::newRow("empty argument") << QStringList{QStringLiteral("/t"), QString()} << QStringLiteral("/t \"\"");
    }

    void theCommandIsQuoted()
    {
        QFETCH(const QStringList, command);
        QFETCH(const QString, exec);
        QCOMPARE(desktopEntryExec(command), exec);
        QCOMPARE(desktopEntryProgram(exec), command.constFirst());
    }

    void aFailureSaysWhyAndChangesNothing()
    {
        // A file where the directory should be stops root too.
        QFile obstacle(m_home->filePath(QStringLiteral("autostart")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        XdgLoginItem item({program()});

        const Result<void> done = item.setEnabled(true);

        QVERIFY(!done);
        QCOMPARE(done.error().code, ErrorCode::LoginItemFailed);
        QCOMPARE(done.error().detail, item.filePath());
        QVERIFY(!item.isEnabled());
    }

    void twoEntriesStandBesideEachOther()
    {
        XdgLoginItem first({program()});
        XdgLoginItem second({program()}, XdgLoginItem::userAutostartDirectory(),
                            {QStringLiteral("other.desktop"), {QStringLiteral("提醒"), QStringLiteral("reminders")}});

        QVERIFY(second.setEnabled(true));
        QVERIFY(second.isEnabled() && !first.isEnabled());
        QVERIFY(first.setEnabled(true) && second.setEnabled(false));
        QVERIFY(first.isEnabled() && !second.isEnabled());
    }

private:
    /// One that is there.
    [[nodiscard]] static QString program() { return QCoreApplication::applicationFilePath(); }

    [[nodiscard]] QString path() const { return m_home->filePath(QStringLiteral("autostart/tessaly.desktop")); }

    void write(const QByteArray &entry) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(path()).path()));
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(entry);
    }

    [[nodiscard]] QByteArray text() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::optional<QTemporaryDir> m_home;
};

TESSALY_TEST_MAIN(XdgLoginItemTest)
#include "XdgLoginItemTest.moc"
