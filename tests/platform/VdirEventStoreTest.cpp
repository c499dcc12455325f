#include "tests/platform/VdirDriver.h"
#include "tests/support/TestMain.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

using namespace tessaly;

namespace {

constexpr int patience = 20000;
const QByteArray lunchFile = "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:lunch\nSUMMARY:Lunch\nX-FOREIGN:kept\n"
                             "DTSTART:20260608T100000Z\nDTEND:20260608T110000Z\nEND:VEVENT\nEND:VCALENDAR\n";

QByteArray renamed(const QByteArray &text, const QByteArray &title)
{
    return QByteArray(text).replace("SUMMARY:Lunch", "SUMMARY:" + title);
}

} // namespace

class VdirEventStoreTest : public EventStoreContract
{
    Q_OBJECT

protected:
    std::unique_ptr<EventStoreDriver> makeDriver() override { return std::make_unique<VdirDriver>(); }

private:
    [[nodiscard]] static bool open(EventStore &store)
    {
        std::optional<Result<bool>> access;
        store.requestAccess([&](const Result<bool> &result) { access.emplace(result); });
        return QTest::qWaitFor([&] { return access.has_value(); }, patience) && access->hasValue();
    }
    [[nodiscard]] static FetchedEvents fetch(EventStore &store, const QStringList &calendars)
    {
        std::optional<Result<FetchedEvents>> fetched;
        store.fetchEvents(calendars, Instant{0}, Instant::fromUnixSeconds(4102444800),
                          [&](const Result<FetchedEvents> &result) { fetched.emplace(result); });
        return QTest::qWaitFor([&] { return fetched.has_value(); }, 10 * patience) && *fetched ? fetched->value()
                                                                                               : FetchedEvents();
    }
    [[nodiscard]] static QString home(const VdirDriver &driver)
    {
        return QStringLiteral("vdir:") + driver.path(QStringLiteral("Home"));
    }
    [[nodiscard]] static QStringList titles(EventStore &store, const QString &calendar)
    {
        QStringList result;
        for (const CalendarEvent &event : fetch(store, {calendar}).events)
            result.append(event.title.value_or(QString()));
        result.sort();
        return result;
    }

private slots:
    void whatCalendarsAreCalledStandsInTheirFolders()
    {
        VdirDriver driver;
        driver.write(QStringLiteral("Home/displayname"), "Zuhause ✓");
        driver.write(QStringLiteral("Home/color"), "#ff8000ff\n");
        driver.addCalendar(QStringLiteral(".hidden"));
        driver.write(QStringLiteral("no folder"), "");
        const auto store = driver.makeStore();
        QVERIFY(open(*store));

        QCOMPARE(store->calendars().size(), 2);
        const std::optional<EventCalendar> calendar = store->calendar(home(driver));
        QVERIFY(calendar);
        QCOMPARE(calendar->title, QStringLiteral("Zuhause ✓"));
        QVERIFY(calendar->color);
        QCOMPARE(colorHex(*calendar->color), QStringLiteral("#FF8000"));
    }

    void theOwnFolderIsMadeWithOneCalendar()
    {
        QTemporaryDir data;
        FakeClock clock(Instant::fromUnixSeconds(1'780'300'000));
        for (const QString &language : {QStringLiteral("个人"), QStringLiteral("Personal")}) {
            VdirEventStore store(VdirPlace::embedded(data.path(), [=] { return language; }), clock);
            QVERIFY(open(store));
            // The name is that of the first start.
            QCOMPARE(store.calendars().size(), 1);
            QCOMPARE(store.calendars().constFirst().title, QStringLiteral("个人"));
            QCOMPARE(store.calendars().constFirst().identifier, QStringLiteral("vdir:personal"));
        }
    }

    void aFolderThatIsNotThereCannotBeReached()
    {
        FakeClock clock(Instant::fromUnixSeconds(1'780'300'000));
        VdirEventStore store(VdirPlace::given(QStringLiteral("/nonexistent/calendars")), clock);
        QVERIFY(!open(store));
    }

    void aFileThatCannotBeReadIsNamedAndLeftAlone()
    {
        VdirDriver driver;
        const QByteArray cut = lunchFile.left(lunchFile.size() - 10);
        driver.write(QStringLiteral("Home/a.ics"), lunchFile);
        driver.write(QStringLiteral("Home/again.ics"), lunchFile);
        driver.write(QStringLiteral("Home/cut.ics"), cut);
        driver.write(QStringLiteral("Home/.b.ics"), cut);
        driver.write(QStringLiteral("Home/c.ics.tmp"), cut);
        const auto store = driver.makeStore();
        QVERIFY(open(*store));

        const FetchedEvents fetched = fetch(*store, {home(driver)});

        QCOMPARE(fetched.events.size(), 1);
        const UnreadCalendar expected{.identifier = home(driver),
                                      .reason = UnreadCalendar::Reason::DamagedFiles,
                                      .files = {QStringLiteral("again.ics"), QStringLiteral("cut.ics")}};
        QCOMPARE(fetched.unread, QList{expected});
        QCOMPARE(driver.read(QStringLiteral("Home/cut.ics")), cut);
    }

    void anEditInPlaceIsNoticed()
    {
        VdirDriver driver;
        driver.write(QStringLiteral("Home/a.ics"), lunchFile);
        const auto store = driver.makeStore();
        QVERIFY(open(*store));
        QCOMPARE(titles(*store, home(driver)), QStringList{QStringLiteral("Lunch")});
        int notices = 0;
        store->setChangeHandler([&] { ++notices; });

        QElapsedTimer timer;
        timer.start();
        // Of the same size, and right after the file was read.
        driver.writeInPlace(QStringLiteral("Home/a.ics"), renamed(lunchFile, "Munch"));

        QTRY_VERIFY_WITH_TIMEOUT(notices > 0, patience);
        QCOMPARE(titles(*store, home(driver)), QStringList{QStringLiteral("Munch")});
    }

    void whatAnotherProgramWroteMeanwhileIsKept()
    {
        VdirDriver driver;
        driver.write(QStringLiteral("Home/a.ics"), lunchFile);
        const auto store = driver.makeStore();
        QVERIFY(open(*store));
        const QString identifier = fetch(*store, {home(driver)}).events.constFirst().eventIdentifier;
        // Neither a new name nor a new line is known to the store yet.
        QFile::remove(driver.path(QStringLiteral("Home/a.ics")));
        driver.write(QStringLiteral("Home/b.ics"), QByteArray(lunchFile).replace("X-FOREIGN:kept", "X-FOREIGN:new"));

        std::optional<bool> isChanged;
        store->changeEvent(identifier,
                           {.title = QStringLiteral("Dinner"),
                            .startDate = Instant::fromUnixSeconds(1780938000),
                            .endDate = Instant::fromUnixSeconds(1780941600)},
                           [&](const Result<CalendarEvent> &result) { isChanged = result.hasValue(); });

        QTRY_VERIFY_WITH_TIMEOUT(isChanged.has_value(), patience);
        QVERIFY(*isChanged);
        const QByteArray text = driver.read(QStringLiteral("Home/b.ics"));
        QVERIFY2(text.contains("X-FOREIGN:new\n") && text.contains("SUMMARY:Dinner\n"), text);
        QCOMPARE(QDir(driver.path(QStringLiteral("Home"))).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("b.ics")});
    }

    void aChangedFileKeepsItsPermissions()
    {
        VdirDriver driver;
        driver.write(QStringLiteral("Home/a.ics"), lunchFile);
        const QFile file(driver.path(QStringLiteral("Home/a.ics")));
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup;
        QVERIFY(QFile::setPermissions(file.fileName(), permissions));
        const auto store = driver.makeStore();
        QVERIFY(open(*store));
        bool isChanged = false;
        store->changeEvent(fetch(*store, {home(driver)}).events.constFirst().eventIdentifier,
                           {.title = QStringLiteral("Dinner"), .endDate = Instant::fromUnixSeconds(1780941600)},
                           [&](const Result<CalendarEvent> &result) { isChanged = result.hasValue(); });
        QTRY_VERIFY_WITH_TIMEOUT(isChanged, patience);
        QCOMPARE(file.permissions() & ~(QFile::ReadUser | QFile::WriteUser), permissions);
    }

    void abandonedDraftsAreRemoved()
    {
        VdirDriver driver;
        for (const char *name : {"Home/.tessaly-old.tmp", "Home/.tessaly-young.tmp", "Home/old.tmp"}) {
            driver.writeInPlace(QString::fromLatin1(name), lunchFile);
            QFile file(driver.path(QString::fromLatin1(name)));
            QVERIFY(file.open(QIODevice::ReadWrite));
            if (!file.fileName().contains(QStringLiteral("young")))
                QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000), QFile::FileModificationTime));
        }
        const auto store = driver.makeStore();
        QVERIFY(open(*store));
        QVERIFY(fetch(*store, {home(driver)}).events.isEmpty());
        QCOMPARE(QDir(driver.path(QStringLiteral("Home"))).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{QStringLiteral(".tessaly-young.tmp"), QStringLiteral("old.tmp")}));
    }

    void whatWasToBeWrittenAtTheEndIsWritten()
    {
        VdirDriver driver;
        auto store = driver.makeStore();
        QVERIFY(open(*store));
        (void)fetch(*store, {home(driver)});
        store->createEvent({.calendarIdentifier = home(driver), .uid = QStringLiteral("last")}, [](const auto &) {});
        store.reset();
        QVERIFY(QFile::exists(driver.path(QStringLiteral("Home/last.ics"))));
    }

    void manyFilesDoNotBlockTheWindow()
    {
        VdirDriver driver;
        constexpr int count = 10000;
        for (int i = 0; i < count; ++i)
            driver.writeInPlace(QStringLiteral("Home/%1.ics").arg(i),
                                QByteArray(lunchFile).replace("UID:lunch", "UID:" + QByteArray::number(i)));
        const auto store = driver.makeStore();
        QElapsedTimer sinceTick;
        qint64 longestGap = 0;
        qsizetype mostRead = 0;
        QTimer ticks;
        connect(&ticks, &QTimer::timeout, this, [&] {
            longestGap = std::max(longestGap, sinceTick.restart());
            mostRead = std::max(mostRead, store->eventsRead());
        });
        sinceTick.start();
        ticks.start(1);
        QVERIFY(open(*store));
        QCOMPARE(fetch(*store, {home(driver)}).events.size(), count);
        QVERIFY(mostRead > 0 && mostRead <= count);
        qInfo() << "longest gap" << longestGap << "ms";
        // Generous, for machines that do other things: reading the files here would take far longer.
        QVERIFY(longestGap < 500);
    }
};

TESSALY_TEST_MAIN(VdirEventStoreTest)
#include "VdirEventStoreTest.moc"
