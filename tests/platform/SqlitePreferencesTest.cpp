#include "platform/common/SqlitePreferences.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <sqlite3.h>

using namespace tessaly;
using namespace std::chrono_literals;

namespace {

const QString openArgument = QStringLiteral("--open");

const QString key = QStringLiteral("larkspan-data-v1");
const QString backupKey = QStringLiteral("larkspan-data-v1-backup");

void executeSql(const QString &path, const char *sql)
{
    sqlite3 *database = nullptr;
    QCOMPARE(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    QCOMPARE(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void overwrite(const QString &path, qint64 offset, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(offset));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class SqlitePreferencesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_path = m_directory->filePath(SqlitePreferences::fileName);
    }

    void theDirectoryAndAPrivateFileAreMade()
    {
        const QString directory = m_directory->filePath(QStringLiteral("a/b"));
        QVERIFY(SqlitePreferences::open(directory).hasValue());

        const QStringList files = QDir(directory).entryList(QDir::Files);
        QCOMPARE(files, QStringList{SqlitePreferences::fileName});
        constexpr QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther;
        for (const QString &path : {m_directory->filePath(QStringLiteral("a")), directory,
                                    QDir(directory).filePath(SqlitePreferences::fileName)})
            QVERIFY2(!(QFile::permissions(path) & others), qUtf8Printable(path));
    }

    void anExistingFileIsNeverTakenForAnEmptyPlanner_data()
    {
        using Damage = std::function<void(const QString &)>;
        QTest::addColumn<Damage>("damage");
        QTest::addColumn<ErrorCode>("expected");

        QTest::newRow("no database") << Damage([](const QString &path) { overwrite(path, 0, QByteArray(4096, 'x')); })
                                     << ErrorCode::StorageCorrupt;
        QTest::newRow("empty file") << Damage([](const QString &path) { QVERIFY(QFile::resize(path, 0)); })
                                    << ErrorCode::StorageCorrupt;
        QTest::newRow("half a file") << Damage([](const QString &path) {
            QVERIFY(QFile::resize(path, QFile(path).size() / 2));
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("broken page") << Damage([](const QString &path) {
            overwrite(path, 2 * 32768, QByteArray(100, '\xff'));
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("broken chain of pages")
            << Damage([](const QString &path) { overwrite(path, 4 * 32768, QByteArray(4, '\xff')); })
            << ErrorCode::StorageCorrupt;
        QTest::newRow("missing table") << Damage([](const QString &path) {
            executeSql(path, "DROP TABLE stored_value");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("missing value") << Damage([](const QString &path) {
            executeSql(path, "DELETE FROM stored_value WHERE id = (SELECT max(id) FROM stored_value)");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("shorter value") << Damage([](const QString &path) {
            executeSql(path, "UPDATE stored_value SET content = x'7b22'"
                             " WHERE id = (SELECT value_id FROM preference WHERE key = 'larkspan-data-v1')");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("missing edits") << Damage([](const QString &path) {
            executeSql(path, "DELETE FROM value_edit");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("longer edits") << Damage([](const QString &path) {
            executeSql(path, "UPDATE value_edit SET inserted = x'7b22'");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("text in a blob's place") << Damage([](const QString &path) {
            executeSql(path, "UPDATE stored_value SET content = printf('%200000s', 'a')");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("a list that is none") << Damage([](const QString &path) {
            executeSql(path, "INSERT INTO stored_value VALUES (100, 3, 'no list');"
                             "INSERT INTO preference VALUES ('list', 100, 0, 0, NULL)");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("a value of no kind") << Damage([](const QString &path) {
            executeSql(path, "INSERT INTO stored_value VALUES (100, 7, 1);"
                             "INSERT INTO preference VALUES ('kind', 100, 0, 0, NULL)");
        }) << ErrorCode::StorageCorrupt;
        QTest::newRow("another program's database")
            << Damage([](const QString &path) { executeSql(path, "PRAGMA application_id = 7"); })
            << ErrorCode::StorageCorrupt;
        QTest::newRow("newer version") << Damage([](const QString &path) {
            executeSql(path, "PRAGMA user_version = 1000");
        }) << ErrorCode::StorageNewer;
        QTest::newRow("only the log is left")
            << Damage([](const QString &path) { QVERIFY(QFile::rename(path, path + QStringLiteral("-wal"))); })
            << ErrorCode::StorageCorrupt;
        QTest::newRow("a directory in its place") << Damage([](const QString &path) {
            QVERIFY(QFile::remove(path));
            QVERIFY(QDir().mkpath(path));
        }) << ErrorCode::StorageUnwritable;
    }

    void anExistingFileIsNeverTakenForAnEmptyPlanner()
    {
        QFETCH(const std::function<void(const QString &)>, damage);
        writeSaves();
        damage(m_path);
        const QByteArray before = contents(m_path);

        const auto opened = SqlitePreferences::open(m_directory->path());
        if (opened)
            (void)opened.value()->value(key);

        QTEST(opened ? opened.value()->readFailure().value_or(Error{}).code : opened.error().code, "expected");
        QCOMPARE(contents(m_path), before);
    }

    void aFileInUseIsLocked()
    {
        const auto first = SqlitePreferences::open(m_directory->path());
        QVERIFY(first.hasValue());

        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), {openArgument, m_directory->path()}),
                 static_cast<int>(ErrorCode::StorageLocked));
    }

    void aPathThatCannotBeADirectoryIsUnwritable()
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));

        const auto opened = SqlitePreferences::open(m_path);

        QVERIFY(!opened.hasValue());
        QCOMPARE(opened.error().code, ErrorCode::StorageUnwritable);
    }

    void anUnfinishedBeginningIsReplaced()
    {
        for (const char *suffix : {".new", ".new-journal"})
            overwrite(m_path + QLatin1String(suffix), 0, "half");

        QVERIFY(SqlitePreferences::open(m_directory->path()).hasValue());
        QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList{SqlitePreferences::fileName});
    }

    void aSmallEditOfALargeBlobIsASmallWrite()
    {
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QByteArray blob(3'000'000, 'x');
        QVERIFY(preferences->rotate(key, backupKey, blob).hasValue());
        const qint64 logBefore = QFile(m_path + QStringLiteral("-wal")).size();

        blob.insert(1'000'000, "edit");
        QVERIFY(preferences->rotate(key, backupKey, blob, BlobEdit{1'000'000, 0, 4}).hasValue());

        QVERIFY(QFile(m_path + QStringLiteral("-wal")).size() - logBefore < 200'000);
        QCOMPARE(preferences->get<QByteArray>(key), blob);
    }

    void aValueThatCannotBeReadIsReportedAndNeverWrittenOver()
    {
        {
            const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
            QVERIFY(preferences->rotate(key, backupKey, "one").hasValue());
            QVERIFY(preferences->rotate(key, backupKey, "two!", BlobEdit{0, 3, 4}).hasValue());
        }
        executeSql(m_path, "UPDATE value_edit SET offset = 1000");
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QVERIFY(!preferences->value(QStringLiteral("absent")));
        QVERIFY(!preferences->readFailure());

        QVERIFY(!preferences->value(key));

        QVERIFY(preferences->readFailure());
        QCOMPARE(preferences->readFailure()->code, ErrorCode::StorageCorrupt);
        const Result<void> written = preferences->rotate(key, backupKey, "three");
        QVERIFY(!written.hasValue());
        QCOMPARE(written.error().code, ErrorCode::StorageCorrupt);
    }

    void aBitThatFlipsIsNoticedOrChangesNothing_data()
    {
        QTest::addColumn<int>("step");
        for (int step = 0; step < 200; ++step)
            QTest::addRow("%d", step) << step;
    }

    void aBitThatFlipsIsNoticedOrChangesNothing()
    {
        QFETCH(const int, step);
        const QByteArray blob = QByteArray(300'000, 'a');
        const auto values = [](const SqlitePreferences &preferences) {
            return std::tuple(preferences.get<QByteArray>(key), preferences.get<qint64>(QStringLiteral("number")),
                              preferences.get<bool>(QStringLiteral("flag")),
                              preferences.get<QString>(QStringLiteral("text")),
                              preferences.get<QStringList>(QStringLiteral("list")));
        };
        {
            const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
            QVERIFY(preferences->setValue(QStringLiteral("number"), qint64{7}));
            QVERIFY(preferences->setValue(QStringLiteral("flag"), true));
            QVERIFY(preferences->setValue(QStringLiteral("text"), QStringLiteral("words")));
            QVERIFY(preferences->setValue(QStringLiteral("list"), QStringList{QStringLiteral("a")}));
            QVERIFY(preferences->rotate(key, backupKey, blob));
            QVERIFY(preferences->rotate(key, backupKey, blob + "b", BlobEdit{blob.size(), 0, 1}));
        }
        const auto expected =
            std::tuple(std::optional(blob + "b"), std::optional(qint64{7}), std::optional(true),
                       std::optional(QStringLiteral("words")), std::optional(QStringList{QStringLiteral("a")}));
        // The pages of the header and the keys, where most structure is, from both ends; then all pages.
        const qint64 size = QFileInfo(m_path).size();
        const qint64 offset = step < 60    ? step * 2
                              : step < 120 ? (step / 2) * 32768 % size + 32767 - step
                                           : (size - 1) * (step - 120) / 79;
        const char flipped = static_cast<char>(contents(m_path).at(offset) ^ (1 << (step % 8)));
        overwrite(m_path, offset, QByteArray(1, flipped));

        const auto opened = SqlitePreferences::open(m_directory->path());
        if (!opened)
            return;
        const auto found = values(*opened.value());
        QVERIFY(opened.value()->readFailure() || found == expected);
    }

    void aDamagedBackupStopsNothing()
    {
        writeSaves();
        {
            const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
            QVERIFY(preferences->rotate(key, backupKey, QByteArray(100'000, 'x')));
        }
        executeSql(m_path, "UPDATE stored_value SET content = x'7b22'"
                           " WHERE id = (SELECT value_id FROM preference WHERE key = 'larkspan-data-v1-backup')");
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QCOMPARE(preferences->get<QByteArray>(key), QByteArray(100'000, 'x'));
        QVERIFY(preferences->rotate(key, backupKey, "y"));
        QCOMPARE(preferences->get<QByteArray>(backupKey), QByteArray(100'000, 'x'));
    }

    void aFileOfAVersionWithoutDigestsGetsThem()
    {
        writeSaves();
        executeSql(m_path, "DROP TRIGGER preference_changed; ALTER TABLE preference DROP COLUMN digest;");
        {
            QVERIFY(SqlitePreferences::open(m_directory->path()));
        }
        executeSql(m_path, "UPDATE value_edit SET inserted = zeroblob(length(inserted))");
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QVERIFY(!preferences->value(key));
        QVERIFY(preferences->readFailure());
    }

    void whatAnOlderVersionWritesIsRead()
    {
        writeSaves();
        executeSql(m_path, "INSERT INTO stored_value VALUES (100, 4, x'6e6577');"
                           "INSERT INTO preference (key, value_id, edits, size) VALUES ('larkspan-data-v1', 100, 0, 3)"
                           " ON CONFLICT (key) DO UPDATE SET value_id = 100, edits = 0, size = 3");
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QCOMPARE(preferences->get<QByteArray>(key), QByteArray("new"));
        QVERIFY(preferences->rotate(key, backupKey, "newer"));
        QCOMPARE(preferences->get<QByteArray>(key), QByteArray("newer"));
        QCOMPARE(preferences->get<QByteArray>(backupKey), QByteArray("new"));
    }

    void valuesThatNoKeyPointsToAreRemoved()
    {
        writeSaves();
        {
            const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
            for (int save = 0; save < 5; ++save)
                QVERIFY(preferences->rotate(key, backupKey, QByteArray(100'000, 'x')).hasValue());
            QVERIFY(preferences->setValue(QStringLiteral("name"), QStringLiteral("a")).hasValue());
            QVERIFY(preferences->setValue(QStringLiteral("name"), QStringLiteral("b")).hasValue());
        }
        SqliteConnection connection;
        QCOMPARE(connection.open(m_path, SqliteConnection::Access::Exclusive), SQLITE_OK);
        SqliteStatement count(connection, "SELECT count(*) FROM stored_value");
        QCOMPARE(count.step(), SQLITE_ROW);
        QCOMPARE(count.integer(0), 3);
    }

    void theLogDoesNotGrowWithoutBound()
    {
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        const QByteArray blob(4'000'000, 'x');
        // More than twice the limit, and the event loop never turns.
        for (int save = 0; save < 40; ++save)
            QVERIFY(preferences->rotate(key, backupKey, blob).hasValue());

        const qint64 logBytes = QFile(m_path + QStringLiteral("-wal")).size();
        QVERIFY2(logBytes < 80'000'000, qPrintable(QString::number(logBytes)));
    }

    void anIdlePlannerBringsTheLogIntoTheFile()
    {
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QVERIFY(preferences->rotate(key, backupKey, QByteArray(8'000'000, 'x')).hasValue());
        QVERIFY(QFile(m_path).size() < 8'000'000);

        QTRY_VERIFY(QFile(m_path).size() > 8'000'000);
    }

private:
    void writeSaves() const
    {
        const auto preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        QVERIFY(preferences->rotate(key, backupKey, QByteArray(200'000, 'a')).hasValue());
        QByteArray blob(200'000, 'b');
        QVERIFY(preferences->rotate(key, backupKey, blob).hasValue());
        blob.append('c');
        QVERIFY(preferences->rotate(key, backupKey, blob, BlobEdit{200'000, 0, 1}).hasValue());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
};

/// With two arguments the other process, which opens the directory and returns the code of the error.
int main(int argc, char *argv[])
{
    fixTestEnvironment();
    QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == openArgument) {
        const auto opened = SqlitePreferences::open(arguments.value(2), 0ms);
        return opened ? -1 : static_cast<int>(opened.error().code);
    }
    SqlitePreferencesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SqlitePreferencesTest.moc"
