#include "platform/common/ZipArchives.h"

#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

using namespace tessaly;

class ZipArchivesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory.emplace();
        m_random.seed(11);
    }

    void whatIsWrittenIsExtractedTheSame_data()
    {
        QTest::addColumn<qsizetype>("size");
        for (const qsizetype size : {0, 1, 1000, 65'536, 5'000'000})
            QTest::addRow("%lld bytes", static_cast<long long>(size)) << size;
    }

    void whatIsWrittenIsExtractedTheSame()
    {
        QFETCH(const qsizetype, size);
        const QByteArray bytes = randomBytes(size);
        put(path("picture.png"), bytes);
        const QList<ArchiveEntry> entries{
            {.name = QStringLiteral("a.json"), .bytes = bytes},
            {.name = QStringLiteral("documents/Assets/图.png"), .file = path("picture.png")}};
        QVERIFY(write(entries));
        QVERIFY(extract());
        QCOMPARE(get(path("out/a.json")), bytes);
        QCOMPARE(get(path("out/documents/Assets/图.png")), bytes);
    }

    void aChangedByteIsNoticedOrHarmless()
    {
        QList<ArchiveEntry> entries;
        for (int number = 0; number < 5; ++number)
            entries.append(
                {.name = QStringLiteral("%1.json").arg(number), .bytes = QByteArray(3000, '0') + randomBytes(300)});
        QVERIFY(write(entries));
        const QByteArray whole = get(path("archive.zip"));
        int noticed = 0;
        for (int attempt = 0; attempt < 200; ++attempt) {
            QByteArray changed = whole;
            const qsizetype offset = m_random.bounded(whole.size());
            changed[offset] = static_cast<char>(changed.at(offset) ^ (1 << m_random.bounded(8)));
            put(path("archive.zip"), changed);
            const Result<void> extracted = extract();
            if (!extracted) {
                ++noticed;
                QVERIFY(!QFile::exists(path("out")));
                continue;
            }
            // Dates and the like; an entry under another name is missed by the one who reads the archive.
            for (const ArchiveEntry &entry : entries) {
                const QString file = path("out/") + entry.name;
                QVERIFY(!QFile::exists(file) || get(file) == entry.bytes);
            }
        }
        qInfo("%d of 200 noticed", noticed);
        QVERIFY(noticed > 100);
    }

    void aCutArchiveIsRefused()
    {
        QVERIFY(write({{.name = QStringLiteral("a.json"), .bytes = randomBytes(2000)}}));
        const QByteArray whole = get(path("archive.zip"));
        for (const qsizetype size : {qsizetype(0), qsizetype(1), whole.size() / 2, whole.size() - 1}) {
            put(path("archive.zip"), whole.left(size));
            QCOMPARE(extract().error().code, ErrorCode::ArchiveUnreadable);
        }
    }

    void aNameThatLeadsOutOfTheFolderIsRefused_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"../out-of-it", "a/../../b", "/etc/tessaly", "a//b", "./a", "a\\..\\b"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void aNameThatLeadsOutOfTheFolderIsRefused()
    {
        QFETCH(const QString, name);
        QVERIFY(write({{.name = name, .bytes = "x"}}));
        const Result<void> extracted = extract();
        QVERIFY(!extracted);
        QCOMPARE(extracted.error(), (Error{ErrorCode::ArchiveEntryInvalid, u'/' + name}));
        QVERIFY(!QFile::exists(path("out-of-it")) && !QFile::exists(path("out")));
    }

    void aFailedWriteLeavesTheFormerFile()
    {
        QVERIFY(write({{.name = QStringLiteral("a.json"), .bytes = "former"}}));
        const QByteArray former = get(path("archive.zip"));
        const Result<void> written = write({{.name = QStringLiteral("b"), .file = path("missing")}});
        QCOMPARE(written.error(), (Error{ErrorCode::ArchiveSourceUnreadable, path("missing")}));
        QCOMPARE(get(path("archive.zip")), former);
        QCOMPARE(writeTo(path("no folder/archive.zip")).error().code, ErrorCode::ArchiveUnwritable);
    }

private:
    [[nodiscard]] QString path(const char *name) const { return m_directory->filePath(QString::fromUtf8(name)); }

    [[nodiscard]] QByteArray randomBytes(qsizetype size)
    {
        QByteArray bytes(size, Qt::Uninitialized);
        for (char &byte : bytes)
            byte = static_cast<char>(m_random.bounded(256));
        return bytes;
    }

    static void put(const QString &file, const QByteArray &bytes)
    {
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
    }
    [[nodiscard]] static QByteArray get(const QString &file)
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("missing: ") + file.toUtf8();
    }

    template <class Start>
    [[nodiscard]] static Result<void> wait(const Start &start)
    {
        std::optional<Result<void>> result;
        start([&result](const Result<void> &given) { result.emplace(given); });
        if (!QTest::qWaitFor([&] { return result.has_value(); }, 60'000))
            qFatal("the archive does not answer");
        return *result;
    }
    [[nodiscard]] Result<void> write(const QList<ArchiveEntry> &entries)
    {
        return wait([&](const Archives::Completion &completion) {
            m_archives.write(path("archive.zip"), entries, completion);
        });
    }
    [[nodiscard]] Result<void> writeTo(const QString &file)
    {
        return wait([&](const Archives::Completion &completion) {
            m_archives.write(file, {{.name = QStringLiteral("a"), .bytes = "a"}}, completion);
        });
    }
    [[nodiscard]] Result<void> extract()
    {
        return wait([&](const Archives::Completion &completion) {
            m_archives.extract(path("archive.zip"), path("out"), completion);
        });
    }

    std::optional<QTemporaryDir> m_directory;
    QRandomGenerator m_random;
    ZipArchives m_archives;
};

TESSALY_TEST_MAIN(ZipArchivesTest)
#include "ZipArchivesTest.moc"
