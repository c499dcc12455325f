#include "platform/linux/EvolutionEventStore.h"
#include "tests/support/TestMain.h"
#include "tests/system/CalDavServer.h"
#include "tests/system/CalendarSession.h"

#include <QDateTime>

#include <algorithm>

using namespace tessaly;

namespace {

constexpr int patience = 20'000;
const QString collection = QStringLiteral("home");
const QString locked = QStringLiteral("locked");
const QByteArray viennaZone = "BEGIN:VTIMEZONE\r\nTZID:Europe/Vienna\r\n"
                              "BEGIN:STANDARD\r\nDTSTART:19701025T030000\r\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\n"
                              "TZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\nEND:STANDARD\r\n"
                              "BEGIN:DAYLIGHT\r\nDTSTART:19700329T020000\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\n"
                              "TZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\nEND:DAYLIGHT\r\nEND:VTIMEZONE\r\n";
const QDate monday(2026, 6, 8);

QTimeZone vienna()
{
    return QTimeZone("Europe/Vienna");
}

Instant at(QDate day, int hour, int minute = 0, const QTimeZone &zone = vienna())
{
    return Instant::fromUnixSeconds(static_cast<double>(QDateTime(day, QTime(hour, minute), zone).toSecsSinceEpoch()));
}

QByteArray vevent(const QByteArray &properties)
{
    return "BEGIN:VEVENT\r\nDTSTAMP:20260101T000000Z\r\n" + properties + "END:VEVENT\r\n";
}

/// The calendar service with an account on a server, and what becomes of it when a part of that goes away.
class EdsServerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_server.addCollection(collection);
        m_server.addCollection(locked);
        QVERIFY(m_server.start());
        m_uid = m_session.addServerCalendar(QStringLiteral("Server"), m_server.port(), CalDavServer::path(collection),
                                            QStringLiteral("none"));
        openStore();
        QTRY_VERIFY_WITH_TIMEOUT(isRead(), patience);
    }
    void cleanupTestCase()
    {
        // The program outlives the desktop's bus, and still answers.
        m_session.endBus();
        QTRY_COMPARE_WITH_TIMEOUT(reason(), UnreadCalendar::Reason::Unreadable, patience);
    }
    void cleanup()
    {
        m_store->setChangeHandler({});
        for (const QString &file : m_server.files(collection))
            QVERIFY(m_server.remove(collection, file));
        m_session.refresh(m_uid);
        QTRY_VERIFY_WITH_TIMEOUT(isRead() && events().isEmpty(), patience);
    }

    void whatIsDoneHereReachesTheServer()
    {
        const Result<CalendarEvent> created = create(QStringLiteral("6D1B42A4-5C62-4E0F-93B5-3C7D2E1F0A99"));
        QVERIFY(created);
        QTRY_COMPARE_WITH_TIMEOUT(m_server.files(collection).size(), 1, patience);
        const QString file = m_server.files(collection).constFirst();
        QVERIFY(m_server.text(collection, file).contains("DTSTART;TZID=Europe/Vienna:20260608T120000"));

        QVERIFY(change(created.value().eventIdentifier,
                       {.title = QStringLiteral("Dinner"), .startDate = at(monday, 19), .endDate = at(monday, 20)}));
        QTRY_VERIFY_WITH_TIMEOUT(m_server.text(collection, file).contains("SUMMARY:Dinner"), patience);

        QVERIFY(remove(created.value().eventIdentifier));
        QTRY_COMPARE_WITH_TIMEOUT(m_server.files(collection), QStringList(), patience);
    }

    void whatIsDoneOnTheServerArrives()
    {
        int notices = 0;
        m_store->setChangeHandler([&] { ++notices; });
        QVERIFY(m_server.put(collection, QStringLiteral("a.ics"), lunch("Lunch", "20260608T120000")));
        m_session.refresh(m_uid);
        QTRY_VERIFY_WITH_TIMEOUT(notices > 0 && titles() == QStringList{QStringLiteral("Lunch")}, patience);
        const QString identifier = events().constFirst().eventIdentifier;

        QVERIFY(m_server.put(collection, QStringLiteral("a.ics"), lunch("Dinner", "20260608T190000")));
        m_session.refresh(m_uid);
        QTRY_COMPARE_WITH_TIMEOUT(titles(), QStringList{QStringLiteral("Dinner")}, patience);
        QCOMPARE(events().constFirst().eventIdentifier, identifier);
        QCOMPARE(events().constFirst().startDate, at(monday, 19));

        QVERIFY(m_server.remove(collection, QStringLiteral("a.ics")));
        m_session.refresh(m_uid);
        QTRY_COMPARE_WITH_TIMEOUT(titles(), QStringList(), patience);
    }

    void occurrencesAreMovedAndDeletedOnBothSides()
    {
        const QByteArray master = "UID:run\r\nSUMMARY:Run\r\nDTSTART;TZID=Europe/Vienna:20260608T060000\r\n"
                                  "DTEND;TZID=Europe/Vienna:20260608T070000\r\nRRULE:FREQ=DAILY;COUNT=5\r\n"
                                  "ATTENDEE;CN=Ana:mailto:ana@example.org\r\nX-OTHER-PROGRAM:kept\r\n";
        // There the second was moved out of its week, and the third deleted.
        QVERIFY(m_server.put(collection, QStringLiteral("run.ics"),
                             viennaZone + vevent(master + "EXDATE;TZID=Europe/Vienna:20260610T060000\r\n") +
                                 vevent("UID:run\r\nRECURRENCE-ID;TZID=Europe/Vienna:20260609T060000\r\n"
                                        "SUMMARY:Run late\r\nDTSTART;TZID=Europe/Vienna:20260720T200000\r\n"
                                        "DTEND;TZID=Europe/Vienna:20260720T210000\r\n")));
        m_session.refresh(m_uid);
        QTRY_COMPARE_WITH_TIMEOUT(
            starts(),
            (QList{at(monday, 6), at(monday.addDays(3), 6), at(monday.addDays(4), 6), at(QDate(2026, 7, 20), 20)}),
            patience);

        // Here the fourth is moved and the first deleted.
        const QList<CalendarEvent> before = events();
        QVERIFY(change(before.at(1).eventIdentifier, {.title = QStringLiteral("Run early"),
                                                      .startDate = at(monday.addDays(3), 5),
                                                      .endDate = at(monday.addDays(3), 6)}));
        QVERIFY(remove(before.at(0).eventIdentifier));

        const QList<CalendarEvent> after = events();
        QCOMPARE(starts(), (QList{at(monday.addDays(3), 5), at(monday.addDays(4), 6), at(QDate(2026, 7, 20), 20)}));
        QCOMPARE(after.at(0).eventIdentifier, before.at(1).eventIdentifier);
        QCOMPARE(after.at(1), before.at(2));
        const auto text = [&] { return m_server.text(collection, QStringLiteral("run.ics")); };
        QTRY_VERIFY_WITH_TIMEOUT(text().contains("SUMMARY:Run early"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(text().count("EXDATE") == 2, patience);
        QVERIFY(text().contains("SUMMARY:Run late"));
        QCOMPARE(text().count("X-OTHER-PROGRAM:kept"), 2);
        QVERIFY(text().contains("mailto:ana@example.org"));
    }

    void aCalendarIsNotEmptyBecauseItsServerIsDown()
    {
        QVERIFY(m_server.put(collection, QStringLiteral("a.ics"), lunch("Lunch", "20260608T120000")));
        m_server.stop();
        m_session.kill(QStringLiteral("org.gnome.evolution.dataserver.Calendar8"));
        QTRY_VERIFY_WITH_TIMEOUT(reason() == UnreadCalendar::Reason::Offline, patience);
        QVERIFY(events().isEmpty());

        QVERIFY(m_server.start());
        m_session.refresh(m_uid);
        QTRY_VERIFY_WITH_TIMEOUT(isRead() && titles() == QStringList{QStringLiteral("Lunch")}, patience);
    }

    void aCalendarIsNotEmptyBecauseItsPasswordIsWrong()
    {
        m_server.stop();
        QVERIFY(m_server.start("secret"));
        QVERIFY(m_server.put(locked, QStringLiteral("a.ics"), lunch("Lunch", "20260608T120000")));
        const QString uid = m_session.addServerCalendar(QStringLiteral("Locked"), m_server.port(),
                                                        CalDavServer::path(locked), QStringLiteral("plain/password"));
        const QString identifier = QStringLiteral("eds:") + uid;
        QTRY_VERIFY_WITH_TIMEOUT(m_store->calendar(identifier), patience);
        QTRY_COMPARE_WITH_TIMEOUT(reason(identifier), UnreadCalendar::Reason::Offline, patience);

        m_session.answerPassword(uid, QStringLiteral("wrong"));
        QCOMPARE(reason(identifier), UnreadCalendar::Reason::Offline);
        m_session.answerPassword(uid, QStringLiteral("secret"));
        QTRY_COMPARE_WITH_TIMEOUT(reason(identifier), std::nullopt, patience);
        QCOMPARE(fetch(identifier).events.size(), 1);

        m_session.hideCalendar(uid);
        m_server.stop();
        QVERIFY(m_server.start());
    }

    void aServiceThatDiesIsStartedAgain_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("calendars") << QStringLiteral("org.gnome.evolution.dataserver.Calendar8");
        QTest::newRow("accounts") << QStringLiteral("org.gnome.evolution.dataserver.Sources5");
    }

    void aServiceThatDiesIsStartedAgain()
    {
        QFETCH(const QString, name);
        const QString local = QStringLiteral("eds:") + m_session.addLocalCalendar(QStringLiteral("Local"));
        QTRY_VERIFY_WITH_TIMEOUT(m_store->calendar(local), patience);
        QVERIFY(create(QStringLiteral("kept"), local));

        // Neither what waits for it nor what comes afterwards takes the calendar for empty.
        QList<FetchedEvents> answers;
        const auto ask = [&] {
            m_store->fetchEvents({local}, at(monday, 0), at(monday, 23), [&](const Result<FetchedEvents> &answer) {
                answers.append(answer ? answer.value() : FetchedEvents{.unread = {{.identifier = local}}});
            });
        };
        ask();
        m_session.kill(name);
        ask();
        QTRY_COMPARE_WITH_TIMEOUT(answers.size(), 2, patience);
        QTRY_VERIFY_WITH_TIMEOUT((answers.append(fetch(local)), answers.constLast().unread.isEmpty()), patience);
        for (const FetchedEvents &answer : answers)
            QVERIFY(!answer.unread.isEmpty() || answer.events.size() == 1);
        QVERIFY(m_store->calendar(local));
        m_session.hideCalendar(local.mid(4));
    }

private:
    void openStore()
    {
        m_store = std::make_unique<EvolutionEventStore>(UserCalendar(vienna(), Qt::Monday, QLocale::c()));
        std::optional<Result<bool>> granted;
        m_store->requestAccess([&](const Result<bool> &result) { granted.emplace(result); });
        QTRY_VERIFY_WITH_TIMEOUT(granted && *granted && granted->value(), patience);
    }
    [[nodiscard]] QString identifier() const { return QStringLiteral("eds:") + m_uid; }
    template <class T>
    static Result<T> await(const std::function<void(std::function<void(const Result<T> &)>)> &start)
    {
        auto answer = std::make_shared<std::optional<Result<T>>>();
        start([answer](const Result<T> &result) { answer->emplace(result); });
        if (!QTest::qWaitFor([&] { return answer->has_value(); }, 2 * patience))
            return Error{ErrorCode::CalendarAccessFailed, QStringLiteral("no answer")};
        return **answer;
    }
    /// The year 2026, by start.
    FetchedEvents fetch(const QString &identifier)
    {
        const auto fetched = await<FetchedEvents>([&](const auto &done) {
            m_store->fetchEvents({identifier}, at(QDate(2026, 1, 1), 0), at(QDate(2027, 1, 1), 0), done);
        });
        FetchedEvents result = fetched ? fetched.value() : FetchedEvents{.unread = {{.identifier = identifier}}};
        std::ranges::sort(result.events, {}, &CalendarEvent::startDate);
        return result;
    }
    std::optional<UnreadCalendar::Reason> reason(const QString &identifier)
    {
        const QList<UnreadCalendar> unread = fetch(identifier).unread;
        return unread.isEmpty() ? std::nullopt : std::optional(unread.constFirst().reason);
    }
    std::optional<UnreadCalendar::Reason> reason() { return reason(identifier()); }
    bool isRead() { return !reason(); }
    QList<CalendarEvent> events() { return fetch(identifier()).events; }
    QStringList titles()
    {
        QStringList result;
        for (const CalendarEvent &event : events())
            result.append(event.title.value_or(QString()));
        return result;
    }
    QList<Instant> starts()
    {
        QList<Instant> result;
        for (const CalendarEvent &event : events())
            result.append(event.startDate);
        return result;
    }
    Result<CalendarEvent> create(const QString &uid, const QString &calendarIdentifier = {})
    {
        const NewEvent event{.calendarIdentifier = calendarIdentifier.isEmpty() ? identifier() : calendarIdentifier,
                             .uid = uid,
                             .title = QStringLiteral("Lunch"),
                             .startDate = at(monday, 12),
                             .endDate = at(monday, 13)};
        return await<CalendarEvent>([&](const auto &done) { m_store->createEvent(event, done); });
    }
    Result<CalendarEvent> change(const QString &eventIdentifier, const EventChange &change)
    {
        return await<CalendarEvent>([&](const auto &done) { m_store->changeEvent(eventIdentifier, change, done); });
    }
    Result<void> remove(const QString &eventIdentifier)
    {
        return await<void>([&](const auto &done) { m_store->removeEvent(eventIdentifier, done); });
    }
    static QByteArray lunch(const QByteArray &title, const QByteArray &start)
    {
        return viennaZone + vevent("UID:a\r\nSUMMARY:" + title + "\r\nDTSTART;TZID=Europe/Vienna:" + start +
                                   "\r\nDURATION:PT1H\r\n");
    }

    CalDavServer m_server;
    CalendarSession m_session;
    QString m_uid;
    std::unique_ptr<EvolutionEventStore> m_store;
};

} // namespace

TESSALY_TEST_MAIN(EdsServerTest)
#include "EdsServerTest.moc"
