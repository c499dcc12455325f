#include "platform/common/SqliteBackups.h"
#include "platform/common/SqlitePreferences.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace tessaly;

namespace {

const QString key = QStringLiteral("key");

Generation hourly(double seconds)
{
    return {.moment = Instant::fromUnixSeconds(1'795'341'600 + seconds)};
}

} // namespace

class SqliteBackupsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        m_backups = std::make_unique<SqliteBackups>(m_directory->path());
    }

    void cleanup()
    {
        m_backups.reset();
        m_preferences.reset();
        m_kept.clear();
    }

    void aGenerationIsTheStateOfItsMoment()
    {
        put(QByteArray(3'000'000, 'a'));
        request(hourly(0));
        put(QByteArray(2'000'000, 'b'));
        const Generation second{.moment = hourly(1).moment, .reason = GenerationReason::Clear};
        request(second);
        put("c");

        QTRY_COMPARE(m_kept.size(), 2);
        QCOMPARE(m_backups->list(), (QList{m_kept.at(1), m_kept.at(0)}));
        QCOMPARE(valueIn(m_kept.at(0)), QByteArray(3'000'000, 'a'));
        QCOMPARE(valueIn(m_kept.at(1)), QByteArray(2'000'000, 'b'));
        QCOMPARE(m_preferences->get<QByteArray>(key), QByteArray("c"));
        QCOMPARE(m_kept.at(1).reason, GenerationReason::Clear);
        QCOMPARE(m_kept.at(1).size, QFileInfo(m_backups->path(m_kept.at(1))).size());
    }

    void aStateThatHasNotChangedIsNotKeptAgainUnlessItIsARestorePoint()
    {
        put("a");
        request(hourly(0));
        request(hourly(3600));
        QTRY_COMPARE(m_kept.size(), 2);
        QCOMPARE(m_kept.at(1), m_kept.at(0));
        QCOMPARE(m_backups->list().size(), 1);

        request({.moment = hourly(7200).moment, .reason = GenerationReason::Restore});
        put("b");
        request(hourly(10800));
        QTRY_COMPARE(m_kept.size(), 4);
        QCOMPARE(m_backups->list().size(), 3);
    }

    void whatIsRequestedIsFinishedAtTheEnd()
    {
        put(QByteArray(5'000'000, 'a'));
        request(hourly(0));
        m_backups = std::make_unique<SqliteBackups>(m_directory->path());
        QCOMPARE(m_backups->list().size(), 1);
        QCOMPARE(valueIn(m_backups->list().constFirst()), QByteArray(5'000'000, 'a'));
    }

    void removedGenerationsAreGone()
    {
        request(hourly(0));
        QTRY_COMPARE(m_kept.size(), 1);
        m_backups->remove(m_kept);
        QTRY_VERIFY(m_backups->list().isEmpty());
        QVERIFY(!valueIn(m_kept.constFirst()).has_value());
    }

    void theLogIsEmptiedAsUsualAfterACopy()
    {
        put(QByteArray(1'000'000, 'a'));
        request(hourly(0));
        QTRY_COMPARE(m_kept.size(), 1);
        for (int save = 0; save < 100; ++save)
            put(QByteArray(1'000'000, static_cast<char>('a' + save % 20)));
        QVERIFY(QFileInfo(m_directory->filePath(QStringLiteral("planner.sqlite-wal"))).size() < 70 * 1024 * 1024);
    }

    void whatAnotherAttemptLeftIsReplaced()
    {
        QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("Backups")));
        for (const char *name : {"unfinished", "unfinished-journal", "unfinished-wal"}) {
            QFile file(m_directory->filePath(QStringLiteral("Backups/")) + QLatin1String(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(QByteArray(100'000, 'x'));
        }
        put("a");
        request(hourly(0));
        QTRY_COMPARE(m_kept.size(), 1);
        QCOMPARE(QDir(m_directory->filePath(QStringLiteral("Backups"))).entryList(QDir::Files),
                 (QStringList{generationFileName(m_kept.constFirst())}));
        QCOMPARE(valueIn(m_kept.constFirst()), QByteArray("a"));
    }

    void aGenerationInWhichABitHasFlippedIsNotRead_data()
    {
        QTest::addColumn<int>("step");
        for (int step = 0; step < 200; ++step)
            QTest::addRow("%d", step) << step;
    }

    void aGenerationInWhichABitHasFlippedIsNotRead()
    {
        QFETCH(const int, step);
        put(QByteArray(100'000, 'a'));
        request(hourly(0));
        QTRY_COMPARE(m_kept.size(), 1);
        QFile file(m_backups->path(m_kept.constFirst()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        // Both ends, and everything in between at equal distances.
        const qint64 offset = (file.size() - 1) * step / 199;
        QVERIFY(file.seek(offset));
        char byte = 0;
        QVERIFY(file.getChar(&byte));
        QVERIFY(file.seek(offset));
        file.putChar(static_cast<char>(byte ^ (1 << (step % 8))));
        file.close();
        QVERIFY(!m_backups->check(m_kept.constFirst()));
        QVERIFY(!valueIn(m_kept.constFirst()).has_value());
    }

private:
    void put(const QByteArray &value) { QVERIFY(m_preferences->setValue(key, value)); }

    void request(const Generation &generation)
    {
        m_backups->keep(generation, [this](const Result<Generation> &kept) {
            QVERIFY(kept);
            m_kept.append(kept.value());
        });
    }

    [[nodiscard]] std::optional<QByteArray> valueIn(const Generation &generation)
    {
        std::optional<QByteArray> value;
        std::optional<bool> isRead;
        m_backups->read(
            generation, [&](const Preferences &stored) { value = stored.get<QByteArray>(key); },
            [&](const Result<void> &read) { isRead = read.hasValue(); });
        while (!isRead)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return *isRead ? value : std::nullopt;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<SqlitePreferences> m_preferences;
    std::unique_ptr<SqliteBackups> m_backups;
    QList<Generation> m_kept;
};

TESSALY_TEST_MAIN(SqliteBackupsTest)
#include "SqliteBackupsTest.moc"
