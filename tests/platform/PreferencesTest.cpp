#include "platform/common/SqlitePreferences.h"
#include "platform/fake/FakePreferences.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>

#include <random>

using namespace tessaly;

namespace {

const QString key = QStringLiteral("larkspan-data-v1");
const QString backupKey = QStringLiteral("larkspan-data-v1-backup");

} // namespace

/// What every adapter promises. Each case runs over each adapter, and reads through a newly opened one where the
/// adapter has a memory of its own.
class PreferencesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<QString>("adapter");
        QTest::newRow("sqlite") << "sqlite";
        QTest::newRow("fake") << "fake";
    }

    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_preferences.reset();
        reopen();
    }

    void cleanup() { m_preferences.reset(); }

    void everyValueComesBackWithItsType_data()
    {
        QTest::addColumn<PreferenceValue>("value");

        QTest::newRow("true") << PreferenceValue(true);
        QTest::newRow("false") << PreferenceValue(false);
        QTest::newRow("zero is no flag") << PreferenceValue(qint64{0});
        QTest::newRow("one is no flag") << PreferenceValue(qint64{1});
        QTest::newRow("largest integer") << PreferenceValue(std::numeric_limits<qint64>::max());
        QTest::newRow("least integer") << PreferenceValue(std::numeric_limits<qint64>::min());
        QTest::newRow("text") << PreferenceValue(QStringLiteral("李明 🙂 \"quoted\"\n"));
        QTest::newRow("empty text") << PreferenceValue(QString(QLatin1String("")));
        QTest::newRow("text with NUL") << PreferenceValue(QStringLiteral("a\0b"));
        QTest::newRow("text that looks like a number") << PreferenceValue(QStringLiteral("24"));
        QTest::newRow("list") << PreferenceValue(
            QStringList{QStringLiteral("a,b"), QStringLiteral("\"c\" 日历"), QString(QLatin1String(""))});
        QTest::newRow("list of one") << PreferenceValue(QStringList{QStringLiteral("only")});
        QTest::newRow("empty list") << PreferenceValue(QStringList());
        QTest::newRow("blob") << PreferenceValue(QByteArray("\0\xff{}\n", 5));
        QTest::newRow("empty blob") << PreferenceValue(QByteArray(""));
        QTest::newRow("blob over many pages") << PreferenceValue(QByteArray(3'000'000, 'x'));
    }

    void everyValueComesBackWithItsType()
    {
        QFETCH(const PreferenceValue, value);

        QVERIFY(m_preferences->setValue(key, PreferenceValue(QStringLiteral("former"))).hasValue());
        QVERIFY(m_preferences->setValue(key, value).hasValue());

        reopen();
        const std::optional<PreferenceValue> read = m_preferences->value(key);
        QVERIFY(read);
        QCOMPARE(read->index(), value.index());
        QVERIFY(*read == value);
    }

    void rotatingKeepsTheFormerValueAsTheBackup()
    {
        QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView("one")).hasValue());
        QVERIFY(!m_preferences->value(backupKey));

        QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView("two")).hasValue());
        QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView("three")).hasValue());

        reopen();
        QCOMPARE(m_preferences->get<QByteArray>(key), QByteArray("three"));
        QCOMPARE(m_preferences->get<QByteArray>(backupKey), QByteArray("two"));
    }

    void editsGiveTheSameBlobsAsWholeWrites()
    {
        QFETCH_GLOBAL(const QString, adapter);
        // Enough for SQLite to write the state whole in between; the others know nothing of edits.
        const int saves = adapter == QLatin1String("sqlite") ? 300 : 30;
        std::mt19937 random(7);
        const auto below = [&random](qsizetype bound) { return static_cast<qsizetype>(random() % size_t(bound)); };
        QByteArray blob(5'000, 'a');
        QByteArray former;
        QVERIFY(m_preferences->rotate(key, backupKey, blob).hasValue());
        for (int save = 0; save < saves; ++save) {
            former = blob;
            const qsizetype offset = below(blob.size() + 1);
            const qsizetype removed = below(std::min<qsizetype>(blob.size() - offset, 300) + 1);
            const QByteArray inserted(below(save % 50 == 0 ? 40'000 : 300), static_cast<char>('a' + save % 26));
            blob.replace(offset, removed, inserted);
            QVERIFY(m_preferences->rotate(key, backupKey, blob, BlobEdit{offset, removed, inserted.size()}).hasValue());
            if (save % 40 == 0)
                reopen();
            if (save % 7 == 0) {
                QCOMPARE(m_preferences->get<QByteArray>(key), blob);
                QCOMPARE(m_preferences->get<QByteArray>(backupKey), former);
            }
        }
        QVERIFY(m_preferences->copyValue(backupKey, QStringLiteral("aside")).hasValue());
        QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView("whole")).hasValue());
        QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView("again")).hasValue());
        QCOMPARE(m_preferences->get<QByteArray>(QStringLiteral("aside")), former);
    }

    void anEditOfAnotherBlobIsWrittenWhole()
    {
        QVERIFY(m_preferences->rotate(key, backupKey, "first", BlobEdit{0, 0, 5}).hasValue());
        QCOMPARE(m_preferences->get<QByteArray>(key), QByteArray("first"));

        QVERIFY(m_preferences->rotate(key, backupKey, "not grown from it", BlobEdit{3, 1, 2}).hasValue());
        QCOMPARE(m_preferences->get<QByteArray>(key), QByteArray("not grown from it"));
        QCOMPARE(m_preferences->get<QByteArray>(backupKey), QByteArray("first"));
    }

    void writesTogetherAreAllMadeOrNone()
    {
        const auto write = [&](const QByteArray &blob, bool isWhole) {
            return m_preferences->together([&]() -> Result<void> {
                const bool isWritten = m_preferences->rotate(key, backupKey, blob).hasValue() &&
                                       m_preferences->setValue(QStringLiteral("other"), blob).hasValue();
                return isWritten && isWhole ? Result<void>() : Error{ErrorCode::StorageFull, QStringLiteral("why")};
            });
        };
        QVERIFY(write("one", true).hasValue());
        QVERIFY(write("two", true).hasValue());

        const Result<void> failed = write("three", false);

        QVERIFY(!failed);
        QCOMPARE(failed.error(), (Error{ErrorCode::StorageFull, QStringLiteral("why")}));
        for (int opening = 0; opening < 2; ++opening) {
            QCOMPARE(m_preferences->get<QByteArray>(key), QByteArray("two"));
            QCOMPARE(m_preferences->get<QByteArray>(backupKey), QByteArray("one"));
            QCOMPARE(m_preferences->get<QByteArray>(QStringLiteral("other")), QByteArray("two"));
            reopen();
        }
        QVERIFY(write("four", true).hasValue());
        QCOMPARE(m_preferences->get<QByteArray>(backupKey), QByteArray("two"));
    }

    void aBackupWithoutAFormerValueIsLeftAsItIs()
    {
        QVERIFY(m_preferences->setValue(backupKey, QByteArray("rescued")).hasValue());
        QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView("one")).hasValue());

        QCOMPARE(m_preferences->get<QByteArray>(backupKey), QByteArray("rescued"));
    }

    void whatIsKeptAsideOutlivesTheOriginal()
    {
        const QString aside = QStringLiteral("aside");
        QVERIFY(m_preferences->setValue(key, QByteArray("damaged")).hasValue());
        QVERIFY(m_preferences->copyValue(key, aside).hasValue());
        QVERIFY(m_preferences->copyValue(QStringLiteral("absent"), QStringLiteral("other")).hasValue());

        for (const char *blob : {"one", "two", "three"})
            QVERIFY(m_preferences->rotate(key, backupKey, QByteArrayView(blob)).hasValue());

        reopen();
        QCOMPARE(m_preferences->get<QByteArray>(aside), QByteArray("damaged"));
        QCOMPARE(m_preferences->get<QByteArray>(backupKey), QByteArray("two"));
        QVERIFY(!m_preferences->value(QStringLiteral("other")));
    }

private:
    /// Closes the adapter and opens its data again. The fake has no data outside itself.
    void reopen()
    {
        QFETCH_GLOBAL(const QString, adapter);
        if (adapter == QLatin1String("sqlite")) {
            m_preferences.reset();
            m_preferences = SqlitePreferences::open(m_directory->path()).takeValue();
        } else if (!m_preferences) {
            m_preferences = std::make_unique<FakePreferences>();
        }
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Preferences> m_preferences;
};

TESSALY_TEST_MAIN(PreferencesTest)
#include "PreferencesTest.moc"
