#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"
#include "tests/system/PlannerOnDisk.h"
#include "tests/system/SmallDisk.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>

using namespace tessaly;

namespace {

constexpr int killCount = 200;
constexpr int documentCount = 5;

/// What an archive brings: records, and the texts of the documents by their titles.
struct State
{
    SavedData data = {};
    QMap<QString, QString> texts = {};

    bool operator==(const State &) const = default;
};

State stateOf(PlannerStore &store)
{
    State state{.data = store.data()};
    for (const MarkdownDocument &document : store.documentLibrary().documents())
        state.texts.insert(document.title, store.documentLibrary().readDocument(document).text);
    return state;
}

/// Where nothing waits for a disk, so that a kill meets each moment as likely as any other.
QString inMemory()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/tessaly-XXXXXX");
}

Result<void> waitFor(const std::function<void(const Archives::Completion &)> &start)
{
    std::optional<Result<void>> result;
    start([&result](const Result<void> &given) { result.emplace(given); });
    if (!QTest::qWaitFor([&] { return result.has_value(); }, 60'000))
        qFatal("the archive does not answer");
    return *result;
}

Result<void> importInto(PlannerStore &store, const QString &path)
{
    return waitFor([&](const Archives::Completion &completion) { store.archive().read(path, completion); });
}

Result<void> exportTo(const QString &path, PlannerStore &store)
{
    return waitFor([&](const Archives::Completion &completion) { store.archive().write(path, completion); });
}

} // namespace

/// Imports and exports of a real planner that is killed, or whose disk is full.
class ArchiveKillTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The same documents in both, with different texts.
        const QTemporaryDir directory;
        const auto planner = PlannerOnDisk::open(directory.path());
        QVERIFY(planner);
        PlannerStore &store = planner->store();
        QList<MarkdownDocument> documents;
        for (int number = 0; number < documentCount; ++number)
            documents.append(*store.documentLibrary().addDocument(QStringLiteral("Document %1").arg(number), {}));
        for (int turn = 0; turn < 2; ++turn) {
            fill(store, documents, turn);
            QVERIFY(exportTo(archive(turn), store));
            m_states[turn] = stateOf(store);
        }
        QVERIFY(m_states[0] != m_states[1]);
    }

    void aPlannerThatIsKilledHasOneStateOrTheOther()
    {
        const QTemporaryDir directory(inMemory());
        QRandomGenerator random(QRandomGenerator::global()->generate());
        int whole[2] = {};
        const QString exported = directory.filePath(QStringLiteral("export.zip"));
        for (int kill = 0; kill < killCount; ++kill) {
            runUntilKilled(directory.path(), exported, random);
            const auto planner = PlannerOnDisk::open(directory.path());
            QVERIFY(planner);
            const State found = stateOf(planner->store());
            const bool isFirst = found == m_states[0];
            // The first time, nothing may have been imported yet.
            QVERIFY2(isFirst || found == m_states[1] || found == State(), qPrintable(QString::number(kill)));
            ++whole[isFirst ? 0 : 1];
            if (QFile::exists(exported))
                QVERIFY2(isWhole(exported), qPrintable(QString::number(kill)));
            QVERIFY(!QFile::exists(directory.filePath(QStringLiteral("Import"))));
        }
        qInfo("%d kills, %d in one state, %d in the other", killCount, whole[0], whole[1]);
        QVERIFY(whole[0] > 0 && whole[1] > 0);
    }

    void aFullDiskChangesNothing_data()
    {
        QTest::addColumn<int>("freeBlocks");
        for (int blocks : {0, 1, 4, 16, 64, 256, 512, 1024})
            QTest::addRow("%d free blocks", blocks) << blocks;
    }

    void aFullDiskChangesNothing()
    {
        QFETCH(const int, freeBlocks);
        const SmallDisk disk;
        if (!disk.isMounted())
            QSKIP("no file system can be mounted");
        const QString exported = disk.directory() + QStringLiteral("/export.zip");
        {
            const auto planner = PlannerOnDisk::open(disk.directory());
            QVERIFY(planner && importInto(planner->store(), archive(0)) && exportTo(exported, planner->store()));
        }
        const auto planner = PlannerOnDisk::open(disk.directory());
        QVERIFY(planner);
        disk.fillBut(freeBlocks);
        const bool isExported = exportTo(exported, planner->store()).hasValue();
        const bool isImported = importInto(planner->store(), archive(1)).hasValue();
        qInfo("exported %d, imported %d", isExported, isImported);
        if (!isImported) {
            // Also what the window shows.
            QCOMPARE(planner->store().data(), m_states[0].data);
        }
        QVERIFY(isWhole(exported));
        disk.makeRoom();
        planner->store().retryUnsavedChanges();
        QVERIFY(stateOf(planner->store()) == m_states[isImported ? 1 : 0]);
    }

private:
    [[nodiscard]] QString archive(int turn) const { return m_archives.filePath(QString::number(turn)); }

    static void fill(PlannerStore &store, const QList<MarkdownDocument> &documents, int turn)
    {
        RecordGenerator generator(static_cast<quint64>(turn) + 1);
        store.clearPersonalContent();
        for (int number = 0; number < 300; ++number)
            store.addSchedule(generator.schedule());
        for (int number = 0; number < 30; ++number)
            store.addReminder({.title = generator.words(3)});
        store.addGoal(generator.goal());
        for (const MarkdownDocument &document : documents)
            QVERIFY(store.documentLibrary().saveDocument(document, generator.words(500)));
    }

    void runUntilKilled(const QString &directory, const QString &exported, QRandomGenerator &random) const
    {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QStringLiteral(ARCHIVE_LOOP_PROGRAM), {directory, archive(0), archive(1), exported});
        QVERIFY(child.waitForReadyRead());
        const QDeadlineTimer moment(random.bounded(80), Qt::PreciseTimer);
        child.waitForFinished(static_cast<int>(moment.remainingTime()));
        QCOMPARE(child.state(), QProcess::Running);
        child.kill();
        child.waitForFinished();
    }

    [[nodiscard]] bool isWhole(const QString &path) const
    {
        const QTemporaryDir directory(inMemory());
        const auto planner = PlannerOnDisk::open(directory.path());
        if (!planner || !importInto(planner->store(), path))
            return false;
        const State state = stateOf(planner->store());
        return state == m_states[0] || state == m_states[1];
    }

    QTemporaryDir m_archives;
    std::array<State, 2> m_states;
};

int main(int argc, char *argv[])
{
    leaveSharedMounts();
    fixTestEnvironment();
    QCoreApplication application(argc, argv);
    ArchiveKillTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ArchiveKillTest.moc"
