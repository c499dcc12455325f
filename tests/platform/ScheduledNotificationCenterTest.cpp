#include "platform/common/ScheduledNotificationCenter.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeNotificationPresenter.h"
#include "platform/fake/FakePreferences.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

const UserCalendar &vienna()
{
    static const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    return calendar;
}

Instant at(int day, int hour, int minute, int second = 0)
{
    return vienna().instant(QDate(2026, 9, day), QTime(hour, minute, second));
}

NotificationRequest request(const QString &identifier, int day, int hour, int minute)
{
    return {identifier, u"Reminder"_s, identifier + u" due"_s,
            QDateTime(QDate(2026, 9, day), QTime(hour, minute), vienna().zone())};
}

/// A planner process that can end and start again over the same preferences and desktop.
struct Process
{
    FakeClock clock{at(9, 12, 0, 30)};
    FakePreferences preferences;
    FakeNotificationPresenter presenter;
    std::unique_ptr<ScheduledNotificationCenter> center;

    Process() { start(); }
    void start()
    {
        center = std::make_unique<ScheduledNotificationCenter>(preferences, presenter, clock, vienna());
        center->start();
    }
    void end() { center.reset(); }

    [[nodiscard]] QStringList shown() const
    {
        QStringList identifiers;
        for (const Notification &notification : presenter.shown())
            identifiers.append(notification.identifier);
        return identifiers;
    }
};

} // namespace

class ScheduledNotificationCenterTest : public QObject
{
    Q_OBJECT

private slots:
    void aRequestFiresAtTheStartOfItsMinuteOnce()
    {
        Process process;
        process.center->add(request(u"later"_s, 9, 12, 45));
        process.center->add(request(u"soon"_s, 9, 12, 31));

        process.clock.advance(30 * 60 + 29);
        QCOMPARE(process.clock.now(), at(9, 12, 30, 59));
        QVERIFY(process.shown().isEmpty());
        process.clock.advance(1);
        QCOMPARE(process.presenter.shown(), (QList<Notification>{{u"soon"_s, u"Reminder"_s, u"soon due"_s}}));
        process.presenter.complete();

        process.clock.advance(86400);
        QCOMPARE(process.shown(), (QStringList{u"soon"_s, u"later"_s}));
        QCOMPARE(process.clock.pendingAlarms(), 0);
    }

    void aRequestWhoseMinuteHasBegunIsNeverDelivered()
    {
        Process process;
        process.center->add(request(u"yesterday"_s, 8, 12, 0));
        process.center->add(request(u"this minute"_s, 9, 12, 0));
        process.clock.advance(120);
        process.end();
        process.start();

        QVERIFY(process.shown().isEmpty());
    }

    void aLaterRequestReplacesOneWithTheSameIdentifier()
    {
        Process process;
        process.center->add(request(u"a"_s, 9, 13, 0));
        process.center->add(request(u"a"_s, 9, 14, 0));
        process.clock.advance(3600);
        QVERIFY(process.shown().isEmpty());
        process.clock.advance(3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
    }

    void aClockThatIsSetForwardBringsWhatIsDueAndSetBackBringsNothingTwice()
    {
        Process process;
        process.center->add(request(u"a"_s, 9, 13, 0));
        process.center->add(request(u"b"_s, 12, 18, 0));

        process.clock.setNow(at(12, 17, 0));
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
        process.clock.setNow(at(9, 12, 0));
        process.clock.advance(2 * 3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
        process.clock.setNow(at(12, 18, 0));
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"b"_s}));
    }

    void aMinuteIsThatOfThePlaceWhereTheUserIs()
    {
        Process process;
        process.center->add(request(u"a"_s, 9, 14, 0));

        process.clock.setZone(QTimeZone("Europe/London"));
        process.clock.setNow(at(9, 14, 30));
        QVERIFY(process.shown().isEmpty());
        process.clock.advance(1800);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
    }

    void whatFellDueWhileThePlannerWasNotRunningComesAtTheNextStart_data()
    {
        QTest::addColumn<double>("restart");
        QTest::addColumn<QStringList>("shown");

        QTest::newRow("before it is due") << at(10, 8, 59).seconds << QStringList{};
        QTest::newRow("just after") << at(10, 9, 1).seconds << QStringList{u"a"_s};
        QTest::newRow("within a day") << at(11, 8, 59).seconds << QStringList{u"a"_s};
        QTest::newRow("more than a day later") << at(11, 9, 1).seconds << QStringList{};
    }

    void whatFellDueWhileThePlannerWasNotRunningComesAtTheNextStart()
    {
        QFETCH(const double, restart);
        Process process;
        process.center->add(request(u"a"_s, 10, 9, 0));
        process.end();
        process.clock.setNow(Instant{restart});
        QVERIFY(process.shown().isEmpty());

        process.start();
        QTEST(process.shown(), "shown");

        // Neither a further start nor a kill before the desktop answered brings it again.
        process.end();
        process.start();
        QTEST(process.shown(), "shown");
    }

    void aRequestSurvivesWithAllItsText()
    {
        Process process;
        const QString text = u"\"引号\" <b>\n😀"_s;
        process.center->add({u"x"_s, text, text, QDateTime(QDate(2026, 9, 9), QTime(13, 0), vienna().zone())});
        process.end();
        process.start();
        process.clock.advance(3600);

        QCOMPARE(process.presenter.shown(), (QList<Notification>{{u"x"_s, text, text}}));
    }

    void withNobodyToShowItARequestWaits()
    {
        Process process;
        process.center->add(request(u"a"_s, 9, 12, 1));
        process.presenter.setUnavailable();
        process.clock.advance(60);
        process.presenter.complete();
        QVERIFY(process.shown().isEmpty());

        // Another request that comes meanwhile does not wait for the retry.
        process.center->add(request(u"b"_s, 9, 12, 2));

        process.presenter.appear();
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
        process.presenter.complete();
        process.clock.advance(3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s, u"b"_s}));
    }

    void afterAFailedAttemptItIsTriedAgainAMinuteLater()
    {
        Process process;
        process.center->add(request(u"a"_s, 9, 12, 1));
        process.presenter.setUnavailable();
        process.clock.advance(30);
        process.presenter.complete();
        QCOMPARE(process.clock.pendingAlarms(), 1);

        // The desktop comes back without announcing itself.
        process.presenter.recover();
        process.clock.advance(59);
        QVERIFY(process.shown().isEmpty());
        process.clock.advance(1);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
    }

    void aRequestThatWasReplacedWhileTheDesktopWasAskedDoesNotComeBack()
    {
        Process process;
        process.presenter.setUnavailable();
        process.center->add(request(u"a"_s, 9, 12, 1));
        process.clock.advance(30);
        process.center->add(request(u"a"_s, 9, 13, 0));
        process.presenter.complete();

        QCOMPARE(process.center->pendingRequests(), QList{request(u"a"_s, 9, 13, 0)});
        process.presenter.appear();
        process.clock.advance(3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
    }

    void withoutWritablePreferencesRequestsStillFireWhileThePlannerRuns()
    {
        Process process;
        process.preferences.failWritesWith(Error{ErrorCode::StorageFull, {}});
        process.center->add(request(u"a"_s, 9, 13, 0));
        process.clock.advance(3600);
        QCOMPARE(process.shown(), (QStringList{u"a"_s}));
    }

    void damagedRequestsAreLeftOutAndTheRestFires()
    {
        Process process;
        process.end();
        (void)process.preferences.setValue(
            ScheduledNotificationCenter::requestsKey,
            QByteArray(
                R"([5, {"identifier":"x"}, {"identifier":"a","title":"t","body":"b","minute":"2026-09-09T13:00"}])"));
        process.start();
        process.clock.advance(3600);
        QCOMPARE(process.presenter.shown(), (QList<Notification>{{u"a"_s, u"t"_s, u"b"_s}}));
    }
};

TESSALY_TEST_MAIN(ScheduledNotificationCenterTest)
#include "ScheduledNotificationCenterTest.moc"
