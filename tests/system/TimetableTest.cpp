#include "platform/common/LibicalExpander.h"
#include "platform/common/NetworkFeedDownloader.h"
#include "store/CalendarLinks.h"
#include "store/PlannerStore.h"
#include "store/ScheduleReminders.h"
#include "store/WaitingReminders.h"
#include "tests/store/FakePorts.h"
#include "tests/support/TestMain.h"
#include "tests/system/LoopbackServer.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QMap>
#include <QSet>

#include <algorithm>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

constexpr double hour = 3600;
constexpr double leadMinutes = 10;

QTimeZone vienna()
{
    return QTimeZone("Europe/Vienna");
}

/// When a lecture takes place, as text: "Algebra 2026-10-07T09:00/10:30".
QString described(const QString &title, const QDateTime &start, const QDateTime &end)
{
    return title + u' ' + start.toString(u"yyyy-MM-dd'T'HH:mm") + u'/' + end.toString(u"HH:mm");
}

struct Lecture
{
    QByteArray uid = {};
    QString title = {};
    QDate first = {};
    QTime time = {};
    int minutes = 90;
    int weeks = 12;
    QSet<QDate> cancelled = {};
    QMap<QDate, QDateTime> moved = {};

    [[nodiscard]] QList<QDateTime> starts() const
    {
        QList<QDateTime> result;
        for (int week = 0; week < weeks; ++week) {
            const QDate date = first.addDays(7 * week);
            if (!cancelled.contains(date))
                result.append(moved.value(date, QDateTime(date, time, vienna())));
        }
        return result;
    }
    [[nodiscard]] QByteArray text() const
    {
        QByteArray result = event("DTSTART", QDateTime(first, time, vienna()),
                                  "RRULE:FREQ=WEEKLY;COUNT=" + QByteArray::number(weeks) + "\r\n" + exceptions());
        for (auto each = moved.cbegin(); each != moved.cend(); ++each)
            result += event("DTSTART", each.value(), zoned("RECURRENCE-ID", QDateTime(each.key(), time, vienna())));
        return result;
    }

private:
    [[nodiscard]] static QByteArray zoned(const QByteArray &property, const QDateTime &when)
    {
        return property + ";TZID=Europe/Vienna:" + when.toString(u"yyyyMMdd'T'HHmmss").toLatin1() + "\r\n";
    }
    [[nodiscard]] QByteArray exceptions() const
    {
        QByteArray result;
        for (const QDate &date : cancelled)
            result += zoned("EXDATE", QDateTime(date, time, vienna()));
        return result;
    }
    [[nodiscard]] QByteArray event(const QByteArray &property, const QDateTime &start, const QByteArray &further) const
    {
        return "BEGIN:VEVENT\r\nUID:" + uid + "\r\nSUMMARY:" + title.toUtf8() + "\r\n" + zoned(property, start) +
               "DURATION:PT" + QByteArray::number(minutes) + "M\r\n" + further + "END:VEVENT\r\n";
    }
};

using Timetable = QMap<QByteArray, Lecture>;

QByteArray calendarText(const Timetable &timetable)
{
    QByteArray result = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//\r\n";
    for (const Lecture &lecture : timetable)
        result += lecture.text();
    return result + "END:VCALENDAR\r\n";
}

/// Over the network, and knows what is under way.
class WatchedDownloader final : public FeedDownloader
{
public:
    void download(const QUrl &url, const FeedVersion &known, Completion completion) override
    {
        ++begun;
        m_downloader.download(url, known, [this, completion = std::move(completion)](const Result<FeedAnswer> &answer) {
            status = answer ? answer.value().status : 0;
            completion(answer);
            ++ended;
        });
    }

    int begun = 0;
    int ended = 0;
    /// Of the last answer.
    int status = 0;

private:
    NetworkFeedDownloader m_downloader;
};

/// A planner that follows the timetable of a server.
struct Follower : FakePorts
{
    Follower()
    {
        clock.setNow(Instant::fromUnixSeconds(
            static_cast<double>(QDateTime(QDate(2026, 10, 5), QTime(5, 0), vienna()).toSecsSinceEpoch())));
        store =
            std::make_unique<PlannerStore>(portsWith({.feedDownloader = &downloader, .calendarExpander = &expander}));
        server.on(u"/timetable.ics"_s, [this](QTcpSocket &socket) { answer(socket); });
        store->start();
        store->waitingReminders().start();
        store->calendarLinks().addCalendarFeed(server.url(u"/timetable.ics"_s).toString(),
                                               {.isKeptUpToDate = true, .readsRepetitions = true});
        feed = store->calendarFeeds().constFirst();
        store->scheduleReminders().setLeadMinutes(feedCalendarIdentifier(feed.id), leadMinutes);
    }
    void answer(QTcpSocket &socket) const
    {
        const QByteArray text = calendarText(timetable);
        const QByteArray tag = '"' + QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex() + '"';
        if (isDown)
            socket.write(response("503 Service Unavailable", "<html>Maintenance</html>"));
        else if (server.requests().constLast().contains("If-None-Match: " + tag))
            socket.write("HTTP/1.1 304 Not Modified\r\nConnection: close\r\n\r\n");
        else
            socket.write(response("200 OK", text, "ETag: " + tag + "\r\n"));
        socket.disconnectFromHost();
    }
    /// Waits for what a download brings. False if that takes long.
    bool settle()
    {
        if (downloader.begun == downloader.ended)
            return true;
        const auto isSettled = [this] {
            const bool isRefused = downloader.status == 503;
            return downloader.begun == downloader.ended &&
                   (isRefused || store->calendarLinks().lastRead(feed) == clock.now());
        };
        // Without pauses: there are a thousand of them.
        for (const QDeadlineTimer deadline(20'000); !isSettled() && !deadline.hasExpired();)
            QCoreApplication::processEvents();
        return isSettled();
    }
    [[nodiscard]] bool isFailing() const
    {
        const LinkHealth *health = store->calendarLinks().health(feed.id);
        return health && health->failingSince;
    }
    /// False if a reading that found nothing new wrote something.
    bool pass(double seconds)
    {
        const int writes = preferences.writeCount();
        const bool wasFailing = isFailing();
        const qsizetype reminded = notificationPresenter.shown().size();
        const int begun = downloader.begun;
        clock.advance(seconds);
        notificationPresenter.complete();
        if (!settle())
            return false;
        const bool isQuiet = !wasFailing && begun != downloader.begun && downloader.status == 304 &&
                             reminded == notificationPresenter.shown().size();
        return !isQuiet || preferences.writeCount() == writes;
    }
    [[nodiscard]] QStringList schedules() const
    {
        QStringList result;
        for (const ScheduleItem &item : store->schedules()) {
            const QDateTime end = item.endDate ? calendar.dateTime(*item.endDate) : QDateTime();
            result.append(described(item.title, calendar.dateTime(item.date), end));
        }
        result.sort();
        return result;
    }
    [[nodiscard]] QStringList expected() const
    {
        QStringList result;
        for (const Lecture &lecture : timetable) {
            for (const QDateTime &start : lecture.starts())
                result.append(described(lecture.title, start, start.addSecs(lecture.minutes * 60)));
        }
        result.sort();
        return result;
    }
    /// The lectures of which the planner has to remind within the time, by their start.
    [[nodiscard]] QStringList remindedOf(Instant from, Instant until) const
    {
        QMap<QDateTime, QString> result;
        for (const Lecture &lecture : timetable) {
            for (const QDateTime &start : lecture.starts()) {
                const Instant due =
                    Instant::fromUnixSeconds(static_cast<double>(start.toSecsSinceEpoch()) - leadMinutes * 60);
                if (due > from && due <= until)
                    result.insert(start, lecture.title);
            }
        }
        return result.values();
    }
    [[nodiscard]] QStringList shownSince(qsizetype count) const
    {
        QStringList result;
        for (const Notification &notification : notificationPresenter.shown().sliced(count))
            result.append(notification.body.section(u'\n', 0, 0));
        return result;
    }

    LoopbackServer server;
    bool isDown = false;
    Timetable timetable = {{"algebra", {"algebra", u"Algebra"_s, QDate(2026, 10, 7), QTime(9, 0)}},
                           {"history", {"history", u"历史"_s, QDate(2026, 10, 5), QTime(13, 30), 45}},
                           {"chess", {"chess", u"Chess"_s, QDate(2026, 10, 9), QTime(20, 0), 120, 8}}};
    WatchedDownloader downloader;
    LibicalExpander expander;
    std::unique_ptr<PlannerStore> store;
    CalendarFeed feed;
};

/// What the university does in the early morning of that day.
const QMap<int, std::function<void(Follower &)>> &morningNews()
{
    static const QMap<int, std::function<void(Follower &)>> news{
        {3, [](Follower &f) { f.timetable["algebra"].cancelled.insert(QDate(2026, 10, 28)); }},
        {4,
         [](Follower &f) {
             f.timetable["algebra"].moved.insert(QDate(2026, 10, 21),
                                                 QDateTime(QDate(2026, 10, 22), QTime(11, 0), vienna()));
         }},
        {8, [](Follower &f) { f.timetable["algebra"].title = u"Algebra I (hall 3)"_s; }},
        {11, [](Follower &f) { f.isDown = true; }},
        {13, [](Follower &f) { f.isDown = false; }},
        {18,
         [](Follower &f) {
             f.timetable["seminar"] = {"seminar", u"Seminar"_s, QDate(2026, 10, 24), QTime(10, 15), 180, 3};
         }},
        {30, [](Follower &f) { f.timetable.remove("chess"); }},
        {35, [](Follower &f) { f.timetable["history"].time = QTime(14, 0); }},
    };
    return news;
}

} // namespace

/// A link that is kept up to date and read whole, over the network and over eight weeks with the end of summer time.
class TimetableTest : public QObject
{
    Q_OBJECT

private slots:
    void aTimetableIsFollowedForEightWeeks()
    {
        Follower follower;
        QVERIFY(follower.server.isReady());
        QVERIFY(QTest::qWaitFor([&] { return follower.schedules() == follower.expected(); }, 20'000));
        takeNote(follower);

        for (int day = 1; day <= 56; ++day) {
            const qsizetype reminded = follower.notificationPresenter.shown().size();
            const Instant morning = follower.clock.now();
            if (const auto news = morningNews().constFind(day); news != morningNews().cend())
                (*news)(follower);
            for (int step = 0; step < 20; ++step)
                QVERIFY2(follower.pass(1.2 * hour), qPrintable(QString::number(day)));
            QCOMPARE(follower.schedules(), follower.expected());
            QCOMPARE(follower.shownSince(reminded), follower.remindedOf(morning, follower.clock.now()));
            QCOMPARE(follower.isFailing(), follower.isDown);
        }

        QCOMPARE(notes(follower), QStringList{u"Algebra I (hall 3) 2026-10-22T11:00/12:30: bring the book"_s});
        qInfo("%d requests", follower.downloader.ended);
    }

private:
    static void takeNote(Follower &follower)
    {
        for (ScheduleItem item : follower.store->schedules()) {
            if (item.title != u"Algebra" || follower.calendar.dateTime(item.date).date() != QDate(2026, 10, 21))
                continue;
            item.notes = u"bring the book"_s;
            follower.store->updateSchedule(item);
            return;
        }
    }
    static QStringList notes(const Follower &follower)
    {
        QStringList result;
        for (const ScheduleItem &item : follower.store->schedules()) {
            if (!item.notes.isEmpty())
                result.append(described(item.title, follower.calendar.dateTime(item.date),
                                        follower.calendar.dateTime(*item.endDate)) +
                              u": "_s + item.notes);
        }
        return result;
    }
};

TESSALY_TEST_MAIN(TimetableTest)
#include "TimetableTest.moc"
