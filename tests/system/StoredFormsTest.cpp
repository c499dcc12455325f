#include "platform/common/LocalFileSystem.h"
#include "platform/common/SqliteBackups.h"
#include "store/StoredState.h"
#include "tests/support/TestMain.h"
#include "tests/system/PlannerOnDisk.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

/// Copies a folder, so that nothing is ever written into what is under version control.
void copyFolder(const QString &from, const QString &to)
{
    for (QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        const QString file = it.next();
        const QString target = to + file.mid(from.size());
        QVERIFY(QDir().mkpath(QFileInfo(target).path()));
        QVERIFY(QFile::copy(file, target));
        QVERIFY(QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner));
    }
}

QMap<QString, QByteArray> filesIn(const QString &folder)
{
    QMap<QString, QByteArray> files;
    for (QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        QFile file(it.next());
        if (file.open(QFile::ReadOnly))
            files.insert(file.fileName().mid(folder.size()), file.readAll());
    }
    return files;
}

} // namespace

// Files as each form of the program wrote them: a data directory with its newest generation, and the archive of the
// same state. See tests/data/forms/README.md.
class StoredFormsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFormOpens_data()
    {
        QTest::addColumn<QString>("form");
        const QStringList forms = QDir(QStringLiteral(STORED_FORMS)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QVERIFY(!forms.isEmpty());
        for (const QString &form : forms)
            QTest::newRow(qPrintable(form)) << QStringLiteral(STORED_FORMS "/") + form;
    }

    void everyFormOpens()
    {
        QFETCH(const QString, form);
        const QTemporaryDir stored;
        copyFolder(form + u"/data"_s, stored.path());
        const auto planner = PlannerOnDisk::open(stored.path());
        QVERIFY(planner);
        QVERIFY(!planner->store().hadUnreadableData());
        const PlannerState state = planner->store().state();
        QVERIFY(!state.data.schedules.isEmpty() && !state.data.reminders.isEmpty() && !state.data.goals.isEmpty());
        QVERIFY(!state.feeds.isEmpty() && !state.library.documents.isEmpty());

        const QTemporaryDir imported;
        const auto other = PlannerOnDisk::open(imported.path());
        std::optional<Result<void>> result;
        other->store().archive().read(form + u"/archive.zip"_s, [&](const Result<void> &read) { result = read; });
        QTRY_VERIFY(result);
        QVERIFY2(*result, "the archive cannot be imported");
        QVERIFY(other->store().state() == state);
        QCOMPARE(filesIn(imported.filePath(u"Documents"_s)), filesIn(stored.filePath(u"Documents"_s)));

        std::optional<PlannerState> generation;
        SqliteBackups backups(stored.path());
        QVERIFY(!backups.list().isEmpty());
        result.reset();
        backups.read(
            backups.list().constFirst(), [&](const Preferences &kept) { generation = storedState(kept); },
            [&](const Result<void> &read) { result = read; });
        QTRY_VERIFY(result);
        QVERIFY2(*result && generation, "the generation cannot be read");
        generation->library.deleted.reset();
        QVERIFY(*generation == state);
    }

    /// What is no part of an archive; the first form had none of it.
    void whatTheProgramKeepsForItselfIsThere()
    {
        const QTemporaryDir stored;
        copyFolder(QStringLiteral(STORED_FORMS "/2/data"), stored.path());
        const auto planner = PlannerOnDisk::open(stored.path());
        QVERIFY(planner);
        PlannerStore &store = planner->store();

        const CalendarFeed &link = store.calendarFeeds().constFirst();
        const LinkHealth *health = store.calendarLinks().health(link.id);
        QVERIFY(health);
        QCOMPARE(health->eventCount, 3);
        QCOMPARE(health->skipped.constFirst().line, 20);
        QCOMPARE(store.scheduleReminders().leadMinutes(feedCalendarIdentifier(link.id)), 30);
        QMap<QString, ReminderState> reminders;
        for (const WaitingReminder &reminder : store.waitingReminders().list())
            reminders.insert(reminder.body, reminder.state);
        QCOMPARE(reminders, (QMap<QString, ReminderState>{{u"Call"_s, ReminderState::Due},
                                                          {u"Post the letter"_s, ReminderState::Waiting}}));
    }

    /// What a newer program writes back is what it has read, field by field.
    void nothingIsLostOnTheWay_data() { everyFormOpens_data(); }
    void nothingIsLostOnTheWay()
    {
        QFETCH(const QString, form);
        const QTemporaryDir stored;
        copyFolder(form + u"/data"_s, stored.path());
        const auto planner = PlannerOnDisk::open(stored.path());
        QVERIFY(planner);
        const QString exported = stored.filePath(u"again.zip"_s);
        std::optional<Result<void>> result;
        planner->store().archive().write(exported, [&](const Result<void> &written) { result = written; });
        QTRY_VERIFY(result);
        QVERIFY(*result);
        QCOMPARE(entriesOf(exported), entriesOf(form + u"/archive.zip"_s));
    }

private:
    /// But the list of the files, which names program and moment.
    static QMap<QString, QByteArray> entriesOf(const QString &archive)
    {
        const QTemporaryDir folder;
        const QString place = folder.filePath(u"unpacked"_s);
        ZipArchives archives;
        std::optional<Result<void>> result;
        archives.extract(archive, place, [&](const Result<void> &done) { result = done; });
        if (!QTest::qWaitFor([&] { return result.has_value(); }) || !*result)
            return {};
        QMap<QString, QByteArray> files = filesIn(place);
        files.remove(u"/tessaly.json"_s);
        files.remove(u"/schedules.ics"_s);
        return files;
    }
};

TESSALY_TEST_MAIN(StoredFormsTest)
#include "StoredFormsTest.moc"
