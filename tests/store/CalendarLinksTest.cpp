#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

constexpr double hour = 3600;
/// Each link waits up to a tenth longer.
constexpr double spread = 1.1;

QByteArray vevent(const QByteArray &title, const QByteArray &further = {})
{
    return "BEGIN:VEVENT\r\nUID:" + title + "\r\nSUMMARY:" + title +
           "\r\nDTSTART:20260601T080000Z\r\nDTEND:20260601T090000Z\r\n" + further + "END:VEVENT\r\n";
}

QByteArray calendar(const QByteArray &contents)
{
    return "BEGIN:VCALENDAR\r\n" + contents + "END:VCALENDAR\r\n";
}

FeedAnswer answered(const QByteArray &body, const FeedVersion &version = {}, int status = 200)
{
    return {.status = status, .body = body, .version = version};
}

CalendarOccurrence occurrence(const QByteArray &uid, const QString &title, double unixSeconds)
{
    const Instant start = Instant::fromUnixSeconds(unixSeconds);
    return {.uid = uid, .title = title, .originalStart = start, .start = start, .end = start.plus(hour)};
}

/// Everything that an observer could notice of a planner.
class Observer
{
public:
    explicit Observer(StoreUnderTest &planner)
        : m_planner(planner), m_schedules(planner.store.get(), &PlannerStore::schedulesChanged),
          m_feeds(planner.store.get(), &PlannerStore::calendarFeedsChanged),
          m_messages(planner.store.get(), &PlannerStore::calendarSyncMessageReported),
          m_health(&planner.store->calendarLinks(), &CalendarLinks::healthChanged),
          m_steps(&planner.store->history(), &UndoHistory::changed), m_writes(planner.preferences.writeCount())
    {
    }

    /// Such as "2 writes, schedules"; empty when nothing happened.
    [[nodiscard]] QString noticed() const
    {
        QStringList found;
        if (const int writes = m_planner.preferences.writeCount() - m_writes; writes > 0)
            found.append(u"%1 writes"_s.arg(writes));
        const std::pair<const QSignalSpy *, QString> spies[] = {{&m_schedules, u"schedules"_s},
                                                                {&m_feeds, u"feeds"_s},
                                                                {&m_messages, u"message"_s},
                                                                {&m_health, u"health"_s},
                                                                {&m_steps, u"steps"_s}};
        for (const auto &[spy, name] : spies) {
            if (!spy->isEmpty())
                found.append(name);
        }
        return found.join(u", ");
    }

private:
    StoreUnderTest &m_planner;
    QSignalSpy m_schedules;
    QSignalSpy m_feeds;
    QSignalSpy m_messages;
    QSignalSpy m_health;
    QSignalSpy m_steps;
    int m_writes;
};

} // namespace

class CalendarLinksTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->startInEnglish();
        store().generations().start(u"1"_s);
    }

    void aReadingTellsWhatWasThere()
    {
        const QUuid feed = addedFeed();
        QCOMPARE(links().health(feed), nullptr);

        answer(calendar("X-WR-CALNAME:Timetable\r\nX-PUBLISHED-TTL:PT6H\r\n" + vevent("a") +
                        vevent("b", "RRULE:FREQ=DAILY\r\n") +
                        "BEGIN:VEVENT\r\nSUMMARY:Lab\r\nDTSTART:20261205\r\nEND:VEVENT\r\n"));

        const LinkHealth health = *links().health(feed);
        QCOMPARE(health.eventCount, 2);
        QCOMPARE(health.repeatingCount, 1);
        QCOMPARE(health.skippedCount, 1);
        QCOMPARE(health.skipped.constFirst().title, u"Lab"_s);
        QCOMPARE(health.skipped.constFirst().reason, SkipReason::NoEnd);
        QCOMPARE(health.calendarName, u"Timetable"_s);
        QCOMPARE(health.refreshSeconds, std::optional(6 * hour));
        QCOMPARE(health.failingSince, std::nullopt);
        QCOMPARE(store().calendarFeeds().constFirst().name, u"timetable"_s);
        QTRY_COMPARE(links().health(feed)->addedByRepetitions, -2); // The expander finds nothing.
        QCOMPARE(m_planner->start().calendarLinks().health(feed)->skipped, health.skipped);
    }

    void aFailureStandsUntilAReadingSucceedsAlsoOverARestart()
    {
        const QUuid feed = addedFeed();
        const Instant began = m_planner->clock.now();
        answer(Error{ErrorCode::DownloadTimedOut});
        m_planner->clock.advance(60);
        links().refreshCalendarFeed(feed);
        answer(Error{ErrorCode::DownloadNoNetwork});

        QCOMPARE(links().health(feed)->failingSince, began);
        QCOMPARE(links().health(feed)->failure, (TextPair{u"没有网络"_s, u"no network"_s}));
        m_planner->start();
        QCOMPARE(links().health(feed)->failingSince, began);

        links().refreshCalendarFeed(feed);
        answer(calendar(vevent("a")));
        QCOMPARE(links().health(feed)->failingSince, std::nullopt);
        QCOMPARE(links().health(feed)->failure, TextPair());
    }

    void anAnswerThatIsNoCalendarIsJudgedOnlyWhereTheLinkIsKeptUpToDate_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("failure");
        const QByteArray page = "<html>sorry</html>";
        QTest::newRow("gone") << 404 << page << u"the server says the file is gone (404)"_s;
        QTest::newRow("gone for good") << 410 << page << u"the server says the file is gone (410)"_s;
        QTest::newRow("login") << 401 << page << u"the server asks for a login (401)"_s;
        QTest::newRow("refused") << 400 << page << u"the server refuses the request (400)"_s;
        QTest::newRow("too often") << 429 << page << u"the server asks to try again later (429)"_s;
        QTest::newRow("broken") << 503 << page << u"the server has an error (503)"_s;
        QTest::newRow("a calendar, but an error") << 500 << calendar({}) << u"the server has an error (500)"_s;
        QTest::newRow("a page") << 200 << page << u"not a calendar file"_s;
        QTest::newRow("nothing") << 200 << QByteArray() << u"not a calendar file"_s;
        QTest::newRow("not modified, though not asked") << 304 << QByteArray() << u"not a calendar file"_s;
    }

    void anAnswerThatIsNoCalendarIsJudgedOnlyWhereTheLinkIsKeptUpToDate()
    {
        QFETCH(const int, status);
        QFETCH(const QByteArray, body);
        QFETCH(const QString, failure);
        const QUuid free = addedFeed();
        answer(calendar(vevent("a")));
        const QUuid kept = addedFeed({.isKeptUpToDate = true});
        answer(calendar(vevent("b")));

        for (const QUuid &feed : {kept, free}) {
            links().refreshCalendarFeed(feed);
            answer(answered(body, {}, status));
            QCOMPARE(links().health(feed)->failure.english, failure);
        }

        QCOMPARE(titles(), QStringList{u"SUMMARY:b"_s});
        QCOMPARE(links().health(kept)->eventCount, 1);
        QCOMPARE(links().health(free)->eventCount, 0);
    }

    void aLinkIsReadByItselfOnlyIfTheUserWantsThat()
    {
        addedFeed();
        answer(calendar(vevent("a")));
        store().start();
        m_planner->clock.advance(40 * 24 * hour);
        QCOMPARE(downloads().pendingCount(), 0);

        store().calendarLinks().updateCalendarFeed(keptUpToDate());
        QCOMPARE(downloads().pendingCount(), 0);
        m_planner->clock.advance(0);
        QCOMPARE(downloads().pendingCount(), 1);
        answer(calendar(vevent("a")));
        QTRY_COMPARE(dueWithin(hour * spread), true);
        answerQuietly(calendar(vevent("a")));
        store().undo();
        QCOMPARE(store().calendarFeeds().constFirst().isKeptUpToDate, std::nullopt);
        m_planner->clock.advance(40 * 24 * hour);
        QCOMPARE(downloads().pendingCount(), 0);
    }

    void oneAlarmServesAllLinks()
    {
        store().start();
        const qsizetype before = m_planner->clock.pendingAlarms();
        for (int i = 0; i < 20; ++i) {
            addedFeed({.isKeptUpToDate = true});
            answer(calendar(vevent("a")));
        }
        QCOMPARE(m_planner->clock.pendingAlarms(), before + 1);
        while (!store().calendarFeeds().isEmpty())
            links().deleteCalendarFeed(store().calendarFeeds().constFirst().id);
        QCOMPARE(m_planner->clock.pendingAlarms(), before);
    }

    void theCalendarMayAskToBeReadMoreRarely()
    {
        store().start();
        addedFeed({.isKeptUpToDate = true});
        answer(calendar("REFRESH-INTERVAL;VALUE=DURATION:P1D\r\n" + vevent("a")));

        m_planner->clock.advance(24 * hour - 1);
        QCOMPARE(downloads().pendingCount(), 0);
        m_planner->clock.advance(24 * hour * 0.1 + 1);
        QVERIFY(downloads().pendingCount() > 0);
    }

    void aStartReadsWhatIsKeptUpToDateAskingForWhatDiffers()
    {
        const FeedVersion version{"\"v1\"", "Sun, 22 Nov 2026 09:10:00 GMT"};
        const QUuid feed = addedFeed({.isKeptUpToDate = true});
        answer(answered(calendar(vevent("a")), version));

        m_planner->start().start();
        QCOMPARE(downloads().pendingCount(), 0);
        m_planner->clock.advance(0);

        QCOMPARE(downloads().pendingCount(), 1);
        QCOMPARE(downloads().pendingVersion(0), version);
        answer(answered({}, {}, 503));
        QVERIFY(links().health(feed)->failingSince);
        m_planner->clock.advance(300 * spread);
        QCOMPARE(downloads().pendingVersion(0), version);
        answer(answered({}, {}, 304));
        QCOMPARE(links().health(feed)->failingSince, std::nullopt);
        QCOMPARE(links().health(feed)->eventCount, 1);
        // What the user asks for is read whole.
        links().refreshCalendarFeed(feed);
        QCOMPARE(downloads().pendingVersion(0), FeedVersion());
    }

    void anUpdateWithoutADifferenceChangesNothing_data()
    {
        QTest::addColumn<FeedAnswer>("answer");
        const QByteArray same = calendar(vevent("a") + vevent("b"));
        QTest::newRow("not modified") << answered({}, {}, 304);
        QTest::newRow("the same") << answered(same, {"\"v1\"", {}});
        QTest::newRow("the same under another version") << answered(same, {"\"v2\"", "now"});
        QTest::newRow("the same events") << answered(
            calendar("X-NOISE:1\r\n" + vevent("a", "DTSTAMP:20261122T000000Z\r\n") + vevent("b")), {"\"v1\"", {}});
        QTest::newRow("the same, large") << answered(same + "X-PADDING:" + QByteArray(2'000'000, 'x'), {"\"v1\"", {}});
    }

    void anUpdateWithoutADifferenceChangesNothing()
    {
        QFETCH(const FeedAnswer, answer);
        store().start();
        addedFeed({.isKeptUpToDate = true});
        this->answer(answered(calendar(vevent("a") + vevent("b")), {"\"v1\"", {}}));
        m_planner->clock.advance(hour * spread);
        QCOMPARE(downloads().pendingVersion(0).entityTag, QByteArray("\"v1\""));
        const Observer observer(*m_planner);

        answerQuietly(answer);

        QCOMPARE(observer.noticed(), QString());
    }

    void anEventWithoutUidIsKnownAgain()
    {
        store().start();
        const QByteArray text = calendar(vevent("a").replace("UID:a\r\n", {}));
        addedFeed({.isKeptUpToDate = true});
        answer(text);
        note(0, u"Mine"_s);
        m_planner->clock.advance(hour * spread);
        const Observer observer(*m_planner);

        answerQuietly(text);

        QCOMPARE(observer.noticed(), QString());
    }

    void anUpdateWithADifferenceIsToldAndIsNoStep()
    {
        store().start();
        const QUuid feed = addedFeed({.isKeptUpToDate = true});
        answer(calendar(vevent("a")));
        m_planner->clock.advance(hour * spread);
        const Observer observer(*m_planner);

        downloads().answer(0, calendar(vevent("a") + vevent("b")));

        QTRY_COMPARE(titles().size(), 2);
        QVERIFY(!observer.noticed().contains(u"steps"));
        QCOMPARE(links().health(feed)->eventCount, 2);
        QCOMPARE(m_planner->message(), u"Linked calendar updated: 2 events imported."_s);
        QCOMPARE(m_planner->saved()->schedules, store().schedules());
    }

    void whatTheUserDoesWhileALinkIsReadStays()
    {
        store().start();
        addedFeed({.isKeptUpToDate = true});
        answer(calendar(vevent("a")));
        m_planner->clock.advance(hour * spread);
        downloads().answer(0, calendar(vevent("a") + vevent("b")));
        ScheduleItem noted = store().schedules().constFirst();
        noted.notes = u"Mine"_s;
        store().updateSchedule(noted);
        store().addSchedule(scheduleTitled(u"Own"_s));

        QTRY_COMPARE(titles(), (QStringList{u"Own"_s, u"SUMMARY:a"_s, u"SUMMARY:b"_s}));
        QCOMPARE(store().schedules().at(1), noted);
    }

    void aFailingUpdateIsQuietChangesNoScheduleAndIsTriedEverMoreRarely()
    {
        store().start();
        const QUuid feed = addedFeed({.isKeptUpToDate = true});
        answer(calendar(vevent("a")));
        m_planner->clock.advance(hour * spread);
        const QList<ScheduleItem> schedules = store().schedules();
        const QString message = m_planner->message();

        double waited = 0;
        for (const double expected : {300.0, 600.0, 1200.0, 2400.0, 4800.0, 9600.0, 19200.0, 6 * hour, 6 * hour}) {
            const Observer observer(*m_planner);
            answer(answered("<html>", {}, 500));
            QCOMPARE(observer.noticed(), waited == 0 ? u"1 writes, health"_s : QString());
            m_planner->clock.advance(expected - 1);
            QCOMPARE(downloads().pendingCount(), 0);
            m_planner->clock.advance(expected * (spread - 1) + 1);
            QCOMPARE(downloads().pendingCount(), 1);
            waited += expected;
        }
        QCOMPARE(store().schedules(), schedules);
        QCOMPARE(m_planner->message(), message);
        answerQuietly(calendar(vevent("a")));
        QCOMPARE(links().health(feed)->failingSince, std::nullopt);
        QVERIFY(dueWithin(hour * spread));
    }

    void aWakeUpReadsTheLinksButNotOverAndOver_data()
    {
        QTest::addColumn<double>("jump");
        QTest::addColumn<int>("readings");
        QTest::newRow("asleep for a minute") << 60.0 << 0;
        QTest::newRow("asleep for half an hour") << 0.5 * hour << 1;
        QTest::newRow("asleep for days") << 50 * hour << 1;
        QTest::newRow("the clock set back by a day") << -24 * hour << 1;
    }

    void aWakeUpReadsTheLinksButNotOverAndOver()
    {
        QFETCH(const double, jump);
        QFETCH(const int, readings);
        store().start();
        addedFeed({.isKeptUpToDate = true});
        answer(calendar("REFRESH-INTERVAL;VALUE=DURATION:P7D\r\n" + vevent("a")));

        m_planner->clock.setNow(m_planner->clock.now().plus(jump));
        m_planner->clock.setNow(m_planner->clock.now().plus(1));

        QCOMPARE(downloads().pendingCount(), readings);
    }

    void readWholeEachOccurrenceIsAScheduleAndNotesStayBothWays()
    {
        const QByteArray text = calendar(vevent("lecture", "RRULE:FREQ=WEEKLY;COUNT=3\r\n") + vevent("exam"));
        const double first = 1780300800; // 2026-06-01 08:00 UTC
        m_planner->calendarExpander.answer = {.occurrences = {occurrence("lecture", u"lecture"_s, first),
                                                              occurrence("lecture", u"lecture"_s, first + 604800),
                                                              occurrence("lecture", u"lecture"_s, first + 1209600),
                                                              occurrence("exam", u"exam"_s, first)},
                                              .eventCount = 2,
                                              .repeatingCount = 1};
        const QUuid feed = addedFeed();
        answer(text);
        QTRY_COMPARE(links().health(feed)->addedByRepetitions, 2);
        note(0, u"first"_s);
        note(1, u"exam"_s);
        const QList<ScheduleItem> once = store().schedules();

        setReadsRepetitions(true);
        answerQuietly(text);
        QTRY_COMPARE(titles(), (QStringList{u"lecture"_s, u"lecture"_s, u"lecture"_s, u"exam"_s}));
        QCOMPARE(notes(), (QStringList{u"first"_s, QString(), QString(), u"exam"_s}));
        QCOMPARE(m_planner->message(), u"Linked calendar updated: 4 events imported."_s);
        QVERIFY(m_planner->backups.list().isEmpty());
        note(1, u"second"_s);

        // The step is the switch; what it brought follows.
        store().undo();
        store().undo();
        QCOMPARE(store().calendarFeeds().constFirst().readsRepetitions, std::nullopt);
        store().redo();
        answer(text);
        answerQuietly(text);
        QTRY_COMPARE(titles().size(), 4);
        note(1, u"second"_s);

        setReadsRepetitions(false);
        answer(text);
        QTRY_COMPARE(store().schedules(), once);
        // The notes that only the whole reading had are in a restore point.
        QCOMPARE(m_planner->backups.list().constFirst().reason, GenerationReason::LinkUpdate);
        QVERIFY2(m_planner->message().contains(u"no longer in it"), qUtf8Printable(m_planner->message()));
    }

    void everyChoiceIsOneStep_data()
    {
        QTest::addColumn<CalendarFeed>("change");
        QTest::addColumn<QString>("name");
        QTest::newRow("name") << CalendarFeed{.name = u"Lectures"_s} << u"Rename linked calendar"_s;
        QTest::newRow("colour") << CalendarFeed{.colorHex = u"#C9630A"_s} << u"Change color of linked calendar"_s;
        QTest::newRow("keep up to date") << CalendarFeed{.isKeptUpToDate = true} << u"Edit linked calendar"_s;
        QTest::newRow("repetitions") << CalendarFeed{.readsRepetitions = true} << u"Edit linked calendar"_s;
    }

    void everyChoiceIsOneStep()
    {
        QFETCH(const CalendarFeed, change);
        QFETCH(const QString, name);
        addedFeed();
        answer(calendar(vevent("a")));
        const CalendarFeed before = store().calendarFeeds().constFirst();
        CalendarFeed after = before;
        after.name = change.name.isEmpty() ? before.name : change.name;
        after.colorHex = change.colorHex;
        after.isKeptUpToDate = change.isKeptUpToDate;
        after.readsRepetitions = change.readsRepetitions;

        links().updateCalendarFeed(after);

        QCOMPARE(store().calendarFeeds(), QList{after});
        QCOMPARE(store().history().nextUndo()->description.name.english, name);
        store().undo();
        QCOMPARE(store().calendarFeeds(), QList{before});
        QCOMPARE(m_planner->start().calendarFeeds(), QList{before});
    }

    void aTrialTellsWhatIsBehindALinkAndChangesNothing_data()
    {
        QTest::addColumn<Result<FeedAnswer>>("answer");
        QTest::addColumn<QString>("expected");
        using Answer = Result<FeedAnswer>;
        QTest::newRow("a calendar") << Answer(answered(calendar(vevent("a") + vevent("b", "RRULE:FREQ=DAILY\r\n"))))
                                    << u"2 events, 1 repeat, 0 skipped"_s;
        QTest::newRow("a page") << Answer(answered("<html>")) << u"error %1"_s.arg(int(ErrorCode::CalendarNotFound));
        QTest::newRow("an error") << Answer(answered(calendar({}), {}, 404))
                                  << u"error %1"_s.arg(int(ErrorCode::DownloadStatus));
        QTest::newRow("not text") << Answer(answered("BEGIN:VCALENDAR\r\n\xE9"))
                                  << u"error %1"_s.arg(int(ErrorCode::TextEncodingInapplicable));
        QTest::newRow("no network") << Answer(Error{ErrorCode::DownloadNoNetwork})
                                    << u"error %1"_s.arg(int(ErrorCode::DownloadNoNetwork));
    }

    void aTrialTellsWhatIsBehindALinkAndChangesNothing()
    {
        QFETCH(const Result<FeedAnswer>, answer);
        QFETCH(const QString, expected);
        const Observer observer(*m_planner);
        QString found;

        QVERIFY(links().tryLink(u" https://example.org/a.ics "_s, [&](const Result<CalendarTrial> &trial) {
            const CalendarFacts facts = trial ? trial.value().once : CalendarFacts();
            found = trial ? u"%1 events, %2 repeat, %3 skipped"_s.arg(facts.eventCount)
                                .arg(facts.repeatingCount)
                                .arg(facts.skippedCount)
                          : u"error %1"_s.arg(int(trial.error().code));
        }));
        QCOMPARE(downloads().pendingUrl(0), QUrl(u"https://example.org/a.ics"_s));
        downloads().answer(0, answer);

        QTRY_COMPARE(found, expected);
        QCOMPARE(observer.noticed(), QString());
        QVERIFY(!links().tryLink(u"webcal://example.org/a.ics"_s, {}));
        QCOMPARE(m_planner->message(), u"Enter a valid iCalendar link."_s);
    }

private:
    PlannerStore &store() { return *m_planner->store; }
    CalendarLinks &links() { return store().calendarLinks(); }
    FakeFeedDownloader &downloads() { return m_planner->feedDownloader; }

    QUuid addedFeed(const CalendarFeed &choices = {})
    {
        links().addCalendarFeed(u"https://example.org/timetable.ics"_s, choices);
        return store().calendarFeeds().constLast().id;
    }
    void answer(const Result<FeedAnswer> &answer) { downloads().answer(0, answer); }
    void answer(const QByteArray &body) { downloads().answer(0, body); }
    /// Also lets the reader's thread finish.
    void answerQuietly(const FeedAnswer &answer)
    {
        const CalendarFeed feed = store().calendarFeeds().constFirst();
        m_planner->clock.advance(1);
        const std::optional<Instant> now = m_planner->clock.now();
        downloads().answer(0, answer);
        QTRY_COMPARE(links().lastRead(feed), now);
    }
    void answerQuietly(const QByteArray &body) { answerQuietly(answered(body)); }

    CalendarFeed keptUpToDate()
    {
        CalendarFeed feed = store().calendarFeeds().constFirst();
        feed.isKeptUpToDate = true;
        return feed;
    }
    void setReadsRepetitions(bool isOn)
    {
        CalendarFeed feed = store().calendarFeeds().constFirst();
        feed.readsRepetitions = isOn ? std::optional(true) : std::nullopt;
        links().updateCalendarFeed(feed);
    }
    bool dueWithin(double seconds)
    {
        if (downloads().pendingCount() == 0)
            m_planner->clock.advance(seconds);
        return downloads().pendingCount() == 1;
    }
    void note(qsizetype row, const QString &text)
    {
        ScheduleItem item = store().schedules().at(row);
        item.notes = text;
        store().updateSchedule(item);
    }
    QStringList notes()
    {
        QStringList found;
        for (const ScheduleItem &item : store().schedules())
            found.append(item.notes);
        return found;
    }
    QStringList titles()
    {
        QStringList found;
        for (const ScheduleItem &item : store().schedules())
            found.append(item.title);
        return found;
    }

    std::unique_ptr<StoreUnderTest> m_planner;
};

TESSALY_TEST_MAIN(CalendarLinksTest)
#include "CalendarLinksTest.moc"
