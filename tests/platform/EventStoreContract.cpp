#include "tests/platform/EventStoreContract.h"

#include <QDateTime>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <random>

namespace tessaly {

namespace {

constexpr int patience = 20000;
const QDate monday(2026, 6, 8);
const QString home = QStringLiteral("Home");
const QString work = QStringLiteral("Work");

/// Runs `start` with a completion and waits for its answer.
template <class T>
Result<T> await(const std::function<void(std::function<void(const Result<T> &)>)> &start)
{
    auto answer = std::make_shared<std::optional<Result<T>>>();
    start([answer](const Result<T> &result) { answer->emplace(result); });
    if (!QTest::qWaitFor([&] { return answer->has_value(); }, patience))
        return Error{ErrorCode::CalendarAccessFailed, QStringLiteral("no answer")};
    return **answer;
}

QByteArray utcText(Instant instant)
{
    return QDateTime::fromMSecsSinceEpoch(qRound64(instant.unixSeconds() * 1000), Qt::UTC)
        .toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"))
        .toLatin1();
}

bool isOneEventIn(const QList<CalendarEvent> &events, const CalendarEvent &expected)
{
    return events == QList{expected};
}

/// A store and another program that change the same calendar at random, neither waiting for the other.
class TwoWriters
{
public:
    TwoWriters(EventStoreDriver &driver, EventStore &store, const QString &calendarIdentifier, unsigned seed)
        : m_driver(driver), m_store(store), m_calendar(calendarIdentifier), m_random(seed)
    {
    }

    void step()
    {
        const int choice = below(24);
        if (choice < 8)
            m_driver.putEvent(home, outsideEvent());
        else if (choice < 9)
            m_driver.dropEvent(home, uid());
        else if (choice < 13)
            m_store.createEvent({m_calendar, uid(), title(), start(), start().plus(86400)},
                                answer<CalendarEvent>([this](const auto &event) { keep({event.value()}); }));
        else if (choice < 17)
            m_store.changeEvent(known(), {title(), start(), start().plus(86400)}, answer<CalendarEvent>());
        else if (choice < 18)
            m_store.removeEvent(known(), answer<void>());
        else
            m_store.fetchEvents({m_calendar}, {}, start().plus(1e8), answer<FetchedEvents>([this](const auto &fetched) {
                                    m_known.clear();
                                    keep(fetched.value().events);
                                }));
        if (below(8) == 0)
            QCoreApplication::processEvents();
    }
    [[nodiscard]] bool areDone() const { return m_answers == m_questions; }

private:
    [[nodiscard]] int below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    [[nodiscard]] QString uid() { return QStringLiteral("e%1").arg(below(20)); }
    [[nodiscard]] QString title() { return QStringLiteral("T%1").arg(++m_titles); }
    [[nodiscard]] Instant start() { return m_driver.now().plus(below(1000) * 60.); }
    [[nodiscard]] QString known() { return m_known.isEmpty() ? uid() : m_known.at(below(int(m_known.size()))); }
    [[nodiscard]] OutsideEvent outsideEvent()
    {
        const Instant begin = start();
        return {.uid = uid(), .title = title(), .startDate = begin, .endDate = begin.plus(3600)};
    }
    void keep(const QList<CalendarEvent> &events)
    {
        for (const CalendarEvent &event : events)
            m_known.append(event.eventIdentifier);
    }
    template <class T>
    [[nodiscard]] std::function<void(const Result<T> &)> answer(std::function<void(const Result<T> &)> take = {})
    {
        ++m_questions;
        return [this, take = std::move(take)](const Result<T> &result) {
            ++m_answers;
            if (result && take)
                take(result);
        };
    }

    EventStoreDriver &m_driver;
    EventStore &m_store;
    QString m_calendar;
    std::mt19937 m_random;
    QStringList m_known;
    int m_titles = 0;
    int m_questions = 0;
    int m_answers = 0;
};

} // namespace

QByteArray EventStoreDriver::eventText(const OutsideEvent &event) const
{
    const auto localTime = [&](const char *name, Instant instant) {
        const QDateTime local =
            QDateTime::fromMSecsSinceEpoch(qRound64(instant.unixSeconds() * 1000), Qt::UTC).toTimeZone(zone());
        if (event.isAllDay)
            return QByteArray(name) + ";VALUE=DATE:" + local.toString(QStringLiteral("yyyyMMdd")).toLatin1() + "\r\n";
        return QByteArray(name) + ";TZID=" + zone().id() + ':' +
               local.toString(QStringLiteral("yyyyMMdd'T'HHmmss")).toLatin1() + "\r\n";
    };
    QByteArray text = "BEGIN:VEVENT\r\nUID:" + event.uid.toUtf8() + "\r\nDTSTAMP:" + utcText(now()) +
                      "\r\nSUMMARY:" + event.title.toUtf8() + "\r\n";
    text += localTime("DTSTART", event.startDate) + localTime("DTEND", event.endDate);
    if (!event.notes.isEmpty())
        text += "DESCRIPTION:" + event.notes.toUtf8() + "\r\n";
    if (event.dailyCount == 0)
        text += "RRULE:FREQ=DAILY\r\n";
    else if (event.dailyCount > 1)
        text += "RRULE:FREQ=DAILY;COUNT=" + QByteArray::number(event.dailyCount) + "\r\n";
    return text + foreignProperty + "\r\nEND:VEVENT\r\n";
}

void EventStoreContract::init()
{
    m_driver = makeDriver();
    openStore();
}

void EventStoreContract::cleanup()
{
    m_store.reset();
    m_driver.reset();
}

void EventStoreContract::openStore()
{
    m_store.reset();
    m_store = m_driver->makeStore();
    const Result<bool> granted =
        await<bool>([&](const auto &done) { m_store->requestAccess([done](Result<bool> result) { done(result); }); });
    QVERIFY(granted.hasValue());
    QVERIFY(granted.value());
}

QString EventStoreContract::identifierOf(const QString &calendarTitle) const
{
    const QList<EventCalendar> calendars = m_store->calendars();
    const auto found = std::ranges::find(calendars, calendarTitle, &EventCalendar::title);
    return found == calendars.cend() ? QString() : found->identifier;
}

Result<FetchedEvents> EventStoreContract::fetch(const QStringList &calendarIdentifiers, Instant from, Instant to)
{
    return await<FetchedEvents>([&](const auto &done) { m_store->fetchEvents(calendarIdentifiers, from, to, done); });
}

Result<CalendarEvent> EventStoreContract::create(const NewEvent &event)
{
    return await<CalendarEvent>([&](const auto &done) { m_store->createEvent(event, done); });
}

Result<CalendarEvent> EventStoreContract::change(const QString &identifier, const EventChange &change)
{
    return await<CalendarEvent>([&](const auto &done) { m_store->changeEvent(identifier, change, done); });
}

Result<void> EventStoreContract::remove(const QString &identifier)
{
    return await<void>([&](const auto &done) { m_store->removeEvent(identifier, done); });
}

QList<CalendarEvent> EventStoreContract::events(const QString &calendarTitle)
{
    const Result<FetchedEvents> fetched =
        fetch({identifierOf(calendarTitle)}, at(QDate(2020, 1, 1), 0), at(QDate(2100, 1, 1), 0));
    if (!fetched || !fetched.value().unread.isEmpty())
        return {{.title = QStringLiteral("the calendar could not be read")}};
    QList<CalendarEvent> result = fetched.value().events;
    std::ranges::sort(result, {}, &CalendarEvent::startDate);
    return result;
}

QStringList EventStoreContract::titles(const QString &calendarTitle)
{
    QStringList result;
    for (const CalendarEvent &event : events(calendarTitle))
        result.append(event.title.value_or(QString()));
    return result;
}

Instant EventStoreContract::at(QDate day, int hour, int minute) const
{
    return Instant::fromUnixSeconds(
        static_cast<double>(QDateTime(day, QTime(hour, minute), m_driver->zone()).toSecsSinceEpoch()));
}

NewEvent EventStoreContract::lunch() const
{
    return {.calendarIdentifier = identifierOf(home),
            .uid = QStringLiteral("5B8A1C52-7A0E-4B7D-9A55-1F0B7C1D2E3F"),
            .title = QStringLiteral("Lunch"),
            .startDate = at(monday, 12),
            .endDate = at(monday, 13),
            .notes = QStringLiteral("At Ana's; bring bread,\nwine")};
}

void EventStoreContract::calendarsAreKnownOnceAccessIsGranted()
{
    const std::unique_ptr<EventStore> other = m_driver->makeStore();
    QVERIFY(other->calendars().isEmpty());

    for (const QString &title : {home, work}) {
        const std::optional<EventCalendar> calendar = m_store->calendar(identifierOf(title));
        QVERIFY(calendar);
        QCOMPARE(calendar->title, title);
        // A service that has just started opens its calendars after it has named them.
        QTRY_VERIFY(m_store->calendar(identifierOf(title))->isWritable);
    }
    QVERIFY(!m_store->calendar(QStringLiteral("unknown")));
    QVERIFY(m_store->defaultCalendarForNewEvents());
    QVERIFY(m_store->calendars().contains(*m_store->defaultCalendarForNewEvents()));
    QVERIFY(!m_store->serviceName().english.isEmpty());
}

void EventStoreContract::completionsRunOnceAndLater()
{
    QStringList ran;
    const std::unique_ptr<EventStore> other = m_driver->makeStore();
    other->requestAccess([&](const Result<bool> &) { ran.append(QStringLiteral("access")); });
    m_store->fetchEvents({identifierOf(home)}, at(monday, 0), at(monday, 23),
                         [&](const auto &) { ran.append(QStringLiteral("fetch")); });
    m_store->createEvent(lunch(), [&](const auto &) { ran.append(QStringLiteral("create")); });
    m_store->changeEvent(QStringLiteral("?"), {}, [&](const auto &) { ran.append(QStringLiteral("change")); });
    m_store->removeEvent(QStringLiteral("?"), [&](const auto &) { ran.append(QStringLiteral("remove")); });
    QCOMPARE(ran, QStringList());

    QTRY_COMPARE_WITH_TIMEOUT(ran.size(), 5, patience);
    (void)events(home);
    ran.sort();
    QCOMPARE(ran.join(u' '), QStringLiteral("access change create fetch remove"));
}

void EventStoreContract::aCompletionIsForgottenWithItsStore()
{
    bool hasRun = false;
    std::unique_ptr<EventStore> other = m_driver->makeStore();
    other->requestAccess([&](const Result<bool> &) { hasRun = true; });
    other->createEvent(lunch(), [&](const auto &) { hasRun = true; });
    other->fetchEvents({identifierOf(home)}, at(monday, 0), at(monday, 23), [&](const auto &) { hasRun = true; });
    other.reset();

    (void)events(home);
    QVERIFY(!hasRun);
}

void EventStoreContract::aCreatedEventIsThereForEverybody()
{
    // The fetch is asked for before the event is saved, and holds it all the same.
    std::optional<Result<CalendarEvent>> created;
    m_store->createEvent(lunch(), [&](const Result<CalendarEvent> &answer) { created.emplace(answer); });
    const QList<CalendarEvent> fetched = events(home);

    QVERIFY(created && *created);
    const CalendarEvent event = created->value();
    const NewEvent wanted = lunch();
    QCOMPARE(event.calendarIdentifier, wanted.calendarIdentifier);
    QCOMPARE(event.uid, wanted.uid);
    QCOMPARE(event.title, wanted.title);
    QCOMPARE(event.startDate, wanted.startDate);
    QCOMPARE(event.endDate, wanted.endDate);
    QCOMPARE(event.notes, wanted.notes);
    QVERIFY(!event.eventIdentifier.isEmpty());
    QVERIFY(isOneEventIn(fetched, event));

    openStore();
    QVERIFY(isOneEventIn(events(home), event));
}

void EventStoreContract::titlesStandAsTheyWereWritten_data()
{
    QTest::addColumn<QString>("title");

    QTest::newRow("separators") << QStringLiteral("a, b; c: \"d\" \\n e\\");
    QTest::newRow("two lines") << QStringLiteral("above\nbelow");
    QTest::newRow("Chinese") << QStringLiteral("与安娜共进午餐，讨论第二季度的计划");
    QTest::newRow("outside the basic plane") << QString::fromUtf8("party \xF0\x9F\x8E\x89");
    QTest::newRow("longer than a line") << QStringLiteral("word ").repeated(60) + QStringLiteral("字").repeated(90);
    QTest::newRow("like a property") << QStringLiteral("END:VEVENT");
    QTest::newRow("empty") << QString();
}

void EventStoreContract::titlesStandAsTheyWereWritten()
{
    QFETCH(const QString, title);
    NewEvent event = lunch();
    event.title = title;

    const Result<CalendarEvent> created = create(event);
    QVERIFY(created);
    QCOMPARE(created.value().title.value_or(QString()), title);

    const Result<CalendarEvent> changed =
        change(created.value().eventIdentifier,
               {.title = title + title, .startDate = event.startDate, .endDate = event.endDate});
    QVERIFY(changed);
    openStore();
    QCOMPARE(titles(home), QStringList{title + title});
}

void EventStoreContract::anEventIsCreatedOnce()
{
    const Result<CalendarEvent> first = create(lunch());
    QVERIFY(first);
    NewEvent again = lunch();
    again.calendarIdentifier = identifierOf(work);
    again.title = QStringLiteral("Another");

    openStore();
    const Result<CalendarEvent> second = create(again);

    QVERIFY(second);
    QCOMPARE(second.value(), first.value());
    QCOMPARE(titles(home), QStringList{QStringLiteral("Lunch")});
    QCOMPARE(titles(work), QStringList());
}

void EventStoreContract::aChangedEventKeepsItsIdentifier()
{
    const Result<CalendarEvent> created = create(lunch());
    QVERIFY(created);
    CalendarEvent expected = created.value();
    expected.title = QStringLiteral("Dinner");
    expected.startDate = at(monday.addDays(1), 19);
    expected.endDate = at(monday.addDays(1), 21, 30);

    const Result<CalendarEvent> changed =
        change(expected.eventIdentifier,
               {.title = *expected.title, .startDate = expected.startDate, .endDate = expected.endDate});

    QVERIFY(changed);
    QCOMPARE(changed.value(), expected);
    openStore();
    QVERIFY(isOneEventIn(events(home), expected));
}

void EventStoreContract::aRemovedEventIsGone()
{
    const Result<CalendarEvent> created = create(lunch());
    QVERIFY(created);

    QVERIFY(remove(created.value().eventIdentifier));

    QCOMPARE(titles(home), QStringList());
    openStore();
    QCOMPARE(titles(home), QStringList());
}

void EventStoreContract::whatIsMissingIsSaidToBe()
{
    const Result<CalendarEvent> created = create(lunch());
    QVERIFY(created);
    m_driver->dropEvent(home, lunch().uid);
    QTRY_COMPARE_WITH_TIMEOUT(titles(home), QStringList(), patience);

    for (const QString &identifier :
         {created.value().eventIdentifier, QStringLiteral("feed:1/x"), QString(), identifierOf(home) + u'/'}) {
        const Result<CalendarEvent> changed = change(identifier, {});
        QVERIFY(!changed);
        QCOMPARE(changed.error().code, ErrorCode::CalendarEventMissing);
        const Result<void> removed = remove(identifier);
        QVERIFY(!removed);
        QCOMPARE(removed.error().code, ErrorCode::CalendarEventMissing);
    }
    NewEvent nowhere = lunch();
    nowhere.calendarIdentifier = QStringLiteral("unknown");
    QVERIFY(!create(nowhere));

    const Result<FetchedEvents> fetched = fetch({QStringLiteral("unknown")}, at(monday, 0), at(monday, 23));
    QVERIFY(fetched);
    QCOMPARE(fetched.value().unread, QList<UnreadCalendar>{{.identifier = QStringLiteral("unknown")}});
}

void EventStoreContract::eventsThatOverlapTheRangeAreFetched_data()
{
    QTest::addColumn<int>("startMinute");
    QTest::addColumn<int>("endMinute");
    QTest::addColumn<bool>("isFetched");

    // The range is from 10:00 to 12:00.
    QTest::newRow("within") << 630 << 660 << true;
    QTest::newRow("around") << 540 << 780 << true;
    QTest::newRow("ends when it begins") << 540 << 600 << false;
    QTest::newRow("ends within") << 540 << 601 << true;
    QTest::newRow("starts when it ends") << 720 << 780 << false;
    QTest::newRow("starts within") << 719 << 780 << true;
    QTest::newRow("no duration, at the beginning") << 600 << 600 << true;
    QTest::newRow("no duration, at the end") << 720 << 720 << false;
    QTest::newRow("no duration, before") << 599 << 599 << false;
}

void EventStoreContract::eventsThatOverlapTheRangeAreFetched()
{
    QFETCH(const int, startMinute);
    QFETCH(const int, endMinute);
    QFETCH(const bool, isFetched);
    NewEvent event = lunch();
    event.startDate = at(monday, 0, 0).plus(startMinute * 60);
    event.endDate = at(monday, 0, 0).plus(endMinute * 60);
    QVERIFY(create(event));

    const Result<FetchedEvents> fetched = fetch({identifierOf(home)}, at(monday, 10), at(monday, 12));

    QVERIFY(fetched);
    QCOMPARE(fetched.value().events.size(), isFetched ? 1 : 0);
}

void EventStoreContract::onlyCalendarsAskedForAreFetched()
{
    m_driver->putEvent(home, {.uid = QStringLiteral("a"),
                              .title = QStringLiteral("at home"),
                              .startDate = at(monday, 8),
                              .endDate = at(monday, 9)});
    m_driver->putEvent(work, {.uid = QStringLiteral("b"),
                              .title = QStringLiteral("at work"),
                              .startDate = at(monday, 8),
                              .endDate = at(monday, 9)});

    QTRY_COMPARE_WITH_TIMEOUT(titles(home), QStringList{QStringLiteral("at home")}, patience);
    QTRY_COMPARE_WITH_TIMEOUT(titles(work), QStringList{QStringLiteral("at work")}, patience);
}

void EventStoreContract::anEventOfAnotherProgramArrives()
{
    int notices = 0;
    m_store->setChangeHandler([&] { ++notices; });
    OutsideEvent event{.uid = QStringLiteral("dentist@example.org"),
                       .title = QStringLiteral("Dentist"),
                       .startDate = at(monday, 8),
                       .endDate = at(monday, 9),
                       .notes = QStringLiteral("Second floor")};
    m_driver->putEvent(home, event);
    QTRY_VERIFY_WITH_TIMEOUT(notices > 0, patience);
    QTRY_COMPARE_WITH_TIMEOUT(titles(home), QStringList{event.title}, patience);
    const CalendarEvent arrived = events(home).constFirst();
    QCOMPARE(arrived.uid, event.uid);
    QCOMPARE(arrived.startDate, event.startDate);
    QCOMPARE(arrived.endDate, event.endDate);
    QCOMPARE(arrived.notes, event.notes);

    notices = 0;
    event.title = QStringLiteral("Dentist, moved");
    event.startDate = at(monday, 10);
    event.endDate = at(monday, 11);
    m_driver->putEvent(home, event);
    QTRY_VERIFY_WITH_TIMEOUT(notices > 0, patience);
    QTRY_COMPARE_WITH_TIMEOUT(titles(home), QStringList{event.title}, patience);
    QCOMPARE(events(home).constFirst().eventIdentifier, arrived.eventIdentifier);
    QCOMPARE(events(home).constFirst().startDate, event.startDate);

    notices = 0;
    m_driver->dropEvent(home, event.uid);
    QTRY_VERIFY_WITH_TIMEOUT(notices > 0, patience);
    QTRY_COMPARE_WITH_TIMEOUT(titles(home), QStringList(), patience);

    notices = 0;
    QVERIFY(create(lunch()));
    QTRY_VERIFY_WITH_TIMEOUT(notices > 0, patience);
}

void EventStoreContract::anAllDayEventEndsAtTheMidnightAfter()
{
    // In this zone the day of the clock change has 23 hours.
    const QDate spring(2026, 3, 29);
    m_driver->putEvent(home, {.uid = QStringLiteral("fair"),
                              .title = QStringLiteral("Fair"),
                              .startDate = at(spring, 0),
                              .endDate = at(spring.addDays(1), 0),
                              .isAllDay = true});
    QTRY_COMPARE_WITH_TIMEOUT(titles(home), QStringList{QStringLiteral("Fair")}, patience);

    const CalendarEvent fair = events(home).constFirst();
    QCOMPARE(fair.startDate, at(spring, 0));
    QCOMPARE(fair.endDate, at(spring.addDays(1), 0));
    QCOMPARE(fair.endDate.seconds - fair.startDate.seconds, 23 * 3600.0);

    // It stays one of whole days where it is given whole days.
    const EventChange moved{
        .title = QStringLiteral("Fair"), .startDate = at(monday, 0), .endDate = at(monday.addDays(2), 0)};
    QVERIFY(change(fair.eventIdentifier, moved));
    openStore();
    QCOMPARE(events(home).constFirst().startDate, moved.startDate);
    QCOMPARE(events(home).constFirst().endDate, moved.endDate);
}

void EventStoreContract::occurrencesKeepTheWallTimeAndTheirIdentifiers()
{
    const QDate saturday(2026, 3, 28);
    m_driver->putEvent(home, {.uid = QStringLiteral("run/early @ 6"),
                              .title = QStringLiteral("Run"),
                              .startDate = at(saturday, 6),
                              .endDate = at(saturday, 7),
                              .dailyCount = 3});
    QTRY_COMPARE_WITH_TIMEOUT(events(home).size(), 3, patience);

    const QList<CalendarEvent> run = events(home);
    QSet<QString> identifiers;
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(run.at(i).startDate, at(saturday.addDays(i), 6));
        QCOMPARE(run.at(i).endDate, at(saturday.addDays(i), 7));
        QCOMPARE(run.at(i).uid, QStringLiteral("run/early @ 6"));
        identifiers.insert(run.at(i).eventIdentifier);
    }
    QCOMPARE(identifiers.size(), 3);

    openStore();
    QCOMPARE(events(home), run);
}

void EventStoreContract::oneOccurrenceIsChanged()
{
    m_driver->putEvent(home, {.uid = QStringLiteral("run"),
                              .title = QStringLiteral("Run"),
                              .startDate = at(monday, 6),
                              .endDate = at(monday, 7),
                              .dailyCount = 3});
    QTRY_COMPARE_WITH_TIMEOUT(events(home).size(), 3, patience);
    QList<CalendarEvent> expected = events(home);
    CalendarEvent &second = expected[1];

    // Twice, for the first change makes what the second one finds.
    for (const int hour : {8, 9}) {
        second.title = QStringLiteral("Run at %1").arg(hour);
        second.startDate = at(monday.addDays(1), hour);
        second.endDate = at(monday.addDays(1), hour, 30);
        const Result<CalendarEvent> changed = change(
            second.eventIdentifier, {.title = *second.title, .startDate = second.startDate, .endDate = second.endDate});
        QVERIFY(changed);
        QCOMPARE(changed.value(), second);
        QCOMPARE(events(home), expected);
    }
    openStore();
    QCOMPARE(events(home), expected);
}

void EventStoreContract::oneOccurrenceIsRemoved()
{
    m_driver->putEvent(home, {.uid = QStringLiteral("run"),
                              .title = QStringLiteral("Run"),
                              .startDate = at(monday, 6),
                              .endDate = at(monday, 7),
                              .dailyCount = 4});
    QTRY_COMPARE_WITH_TIMEOUT(events(home).size(), 4, patience);
    QList<CalendarEvent> expected = events(home);
    // One of those removed was moved before.
    QVERIFY(change(expected.at(2).eventIdentifier, {.title = QStringLiteral("Run"),
                                                    .startDate = at(monday.addDays(2), 18),
                                                    .endDate = at(monday.addDays(2), 19)}));

    for (const qsizetype position : {qsizetype{2}, qsizetype{0}}) {
        QVERIFY(remove(expected.at(position).eventIdentifier));
        const Result<void> again = remove(expected.at(position).eventIdentifier);
        QVERIFY(!again);
        QCOMPARE(again.error().code, ErrorCode::CalendarEventMissing);
        expected.removeAt(position);
        QCOMPARE(events(home), expected);
    }
    openStore();
    QCOMPARE(events(home), expected);
}

void EventStoreContract::anEndlessEventEndsAfterTenYears()
{
    m_driver->putEvent(home, {.uid = QStringLiteral("run"),
                              .title = QStringLiteral("Run"),
                              .startDate = at(monday, 6),
                              .endDate = at(monday, 7),
                              .dailyCount = 0});
    QTRY_VERIFY_WITH_TIMEOUT(events(home).size() > 1, patience);

    const double days = (events(home).constLast().startDate.seconds - m_driver->now().seconds) / 86400;
    QVERIFY2(days > 3640 && days <= 3654, qPrintable(QString::number(days)));
}

void EventStoreContract::calendarsComeAndGo()
{
    int notices = 0;
    m_store->setChangeHandler([&] { ++notices; });
    m_driver->addCalendar(QStringLiteral("Club"));
    QTRY_VERIFY_WITH_TIMEOUT(notices > 0 && !identifierOf(QStringLiteral("Club")).isEmpty(), patience);
    const QString club = identifierOf(QStringLiteral("Club"));
    QVERIFY(m_store->calendar(club));

    m_driver->dropCalendar(QStringLiteral("Club"));
    QTRY_VERIFY_WITH_TIMEOUT(!m_store->calendar(club), patience);
    const Result<FetchedEvents> fetched = fetch({club, identifierOf(home)}, at(monday, 0), at(monday, 23));
    QVERIFY(fetched);
    QCOMPARE(fetched.value().unread, QList<UnreadCalendar>{{.identifier = club}});
}

void EventStoreContract::aCalendarThatCannotBeWrittenStaysAsItIs()
{
    const Result<CalendarEvent> created = create(lunch());
    QVERIFY(created);
    if (!m_driver->makeReadOnly(home))
        QSKIP("this service has no such calendar, or not for this user");
    openStore();

    QVERIFY(!m_store->calendar(identifierOf(home))->isWritable);
    QCOMPARE(m_store->defaultCalendarForNewEvents()->title, work);
    NewEvent another = lunch();
    another.uid = QStringLiteral("another");
    const Result<CalendarEvent> refused = create(another);
    QVERIFY(!refused);
    QCOMPARE(refused.error().code, ErrorCode::CalendarWriteFailed);
    const Result<CalendarEvent> unchanged = change(created.value().eventIdentifier, {});
    QVERIFY(!unchanged);
    QCOMPARE(unchanged.error().code, ErrorCode::CalendarWriteFailed);
    const Result<void> unremoved = remove(created.value().eventIdentifier);
    QVERIFY(!unremoved);
    QCOMPARE(unremoved.error().code, ErrorCode::CalendarWriteFailed);
    QVERIFY(isOneEventIn(events(home), created.value()));
}

void EventStoreContract::noChangeIsReportedAfterTheHandlerIsTakenAway()
{
    int notices = 0;
    m_store->setChangeHandler([&] { ++notices; });
    m_store->setChangeHandler({});
    QVERIFY(create(lunch()));
    (void)events(home);
    QCOMPARE(notices, 0);
}

void EventStoreContract::twoWritersAgreeInTheEnd_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 3; ++seed)
        QTest::newRow(qPrintable(QString::number(seed))) << seed;
}

void EventStoreContract::twoWritersAgreeInTheEnd()
{
    QFETCH(const unsigned, seed);
#ifdef TESSALY_SANITIZED
    constexpr int steps = 100; // each costs twenty times as much
#else
    constexpr int steps = 2000;
#endif
    TwoWriters writers(*m_driver, *m_store, identifierOf(home), seed);
    for (int step = 0; step < steps; ++step)
        writers.step();
    QTRY_VERIFY_WITH_TIMEOUT(writers.areDone(), 10 * patience);

    // A store that has just read the calendar knows nothing else.
    const auto sorted = [this] {
        QList<CalendarEvent> all = events(home);
        std::ranges::sort(all, {}, &CalendarEvent::eventIdentifier);
        return all;
    };
    std::unique_ptr<EventStore> store = std::exchange(m_store, nullptr);
    openStore();
    const QList<CalendarEvent> fresh = sorted();
    QVERIFY(!fresh.isEmpty());
    std::swap(m_store, store);
    QTRY_COMPARE_WITH_TIMEOUT(sorted(), fresh, patience);
}

} // namespace tessaly
