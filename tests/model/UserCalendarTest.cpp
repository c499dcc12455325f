#include "model/UserCalendar.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

UserCalendar calendarIn(const QByteArray &zone, Qt::DayOfWeek firstWeekday = Qt::Monday)
{
    return {QTimeZone(zone), firstWeekday, QLocale::c()};
}

Instant utc(const char *text)
{
    const QDateTime parsed = QDateTime::fromString(QString::fromLatin1(text), Qt::ISODate);
    return Instant::fromUnixSeconds(static_cast<double>(parsed.toSecsSinceEpoch()));
}

QString shown(Instant instant, const UserCalendar &calendar)
{
    const int minute = calendar.minuteOfDay(instant);
    return QStringLiteral("%1 %2").arg(calendar.day(instant).toString(Qt::ISODate)).arg(minute);
}

} // namespace

class UserCalendarTest : public QObject
{
    Q_OBJECT

private slots:
    void instantsShowAsTheLocalDayAndMinute_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<Instant>("instant");
        QTest::addColumn<QString>("expected");

        QTest::newRow("UTC") << QByteArray("UTC") << utc("2026-09-09T09:05:00Z") << "2026-09-09 545";
        QTest::newRow("half an hour off")
            << QByteArray("Asia/Kolkata") << utc("2026-09-08T18:30:00Z") << "2026-09-09 0";
        QTest::newRow("three quarters off")
            << QByteArray("Asia/Kathmandu") << utc("2026-09-08T18:14:59Z") << "2026-09-08 1439";
        QTest::newRow("before 1970") << QByteArray("UTC") << utc("1969-12-31T23:59:00Z") << "1969-12-31 1439";
        QTest::newRow("summer") << QByteArray("Europe/Vienna") << utc("2026-07-01T22:30:00Z") << "2026-07-02 30";
        QTest::newRow("winter") << QByteArray("Europe/Vienna") << utc("2026-01-01T22:30:00Z") << "2026-01-01 1410";
        QTest::newRow("a clock change of half an hour")
            << QByteArray("Australia/Lord_Howe") << utc("2026-10-03T15:30:00Z") << "2026-10-04 150";
    }

    void instantsShowAsTheLocalDayAndMinute()
    {
        QFETCH(const QByteArray, zone);
        QFETCH(const Instant, instant);

        QTEST(shown(instant, calendarIn(zone)), "expected");
    }

    void daysBeginAtTheirFirstInstant_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<Instant>("expected");

        QTest::newRow("ordinary") << QByteArray("Asia/Kolkata") << QDate(2026, 9, 9) << utc("2026-09-08T18:30:00Z");
        QTest::newRow("midnight is skipped")
            << QByteArray("America/Sao_Paulo") << QDate(2018, 11, 4) << utc("2018-11-04T03:00:00Z");
        QTest::newRow("midnight comes twice, the first belongs to the day")
            << QByteArray("America/Havana") << QDate(2026, 11, 1) << utc("2026-11-01T04:00:00Z");
        QTest::newRow("the hour before midnight comes twice")
            << QByteArray("America/Sao_Paulo") << QDate(2019, 2, 17) << utc("2019-02-17T03:00:00Z");
    }

    void daysBeginAtTheirFirstInstant()
    {
        QFETCH(const QByteArray, zone);
        QFETCH(const QDate, day);
        QFETCH(const Instant, expected);
        const UserCalendar calendar = calendarIn(zone);

        QCOMPARE(calendar.startOfDay(day), expected);
        QCOMPARE(calendar.day(expected), day);
        QCOMPARE(calendar.day(expected.plus(-1)), day.addDays(-1));
    }

    void weeksBeginOnTheFirstWeekday_data()
    {
        QTest::addColumn<Qt::DayOfWeek>("firstWeekday");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QDate>("expected");

        QTest::newRow("Monday, midweek") << Qt::Monday << QDate(2026, 9, 9) << QDate(2026, 9, 7);
        QTest::newRow("Monday, on a Sunday") << Qt::Monday << QDate(2026, 9, 13) << QDate(2026, 9, 7);
        QTest::newRow("Sunday, midweek") << Qt::Sunday << QDate(2026, 9, 9) << QDate(2026, 9, 6);
        QTest::newRow("Sunday, on a Sunday") << Qt::Sunday << QDate(2026, 9, 13) << QDate(2026, 9, 13);
        QTest::newRow("Saturday, over New Year") << Qt::Saturday << QDate(2027, 1, 1) << QDate(2026, 12, 26);
    }

    void weeksBeginOnTheFirstWeekday()
    {
        QFETCH(const Qt::DayOfWeek, firstWeekday);
        QFETCH(const QDate, day);

        QTEST(calendarIn("UTC", firstWeekday).weekStart(day), "expected");
    }

    void movingKeepsTheTimeOfDay_data()
    {
        QTest::addColumn<int>("days");
        QTest::addColumn<int>("months");
        QTest::addColumn<Instant>("from");
        QTest::addColumn<Instant>("expected");

        QTest::newRow("over the start of summer time")
            << 7 << 0 << utc("2026-03-25T08:00:00Z") << utc("2026-04-01T07:00:00Z");
        QTest::newRow("over its end") << 7 << 0 << utc("2026-10-21T07:00:00Z") << utc("2026-10-28T08:00:00Z");
        QTest::newRow("January 31 to the end of February")
            << 0 << 1 << utc("2026-01-31T09:00:00Z") << utc("2026-02-28T09:00:00Z");
        QTest::newRow("into a leap February") << 0 << -1 << utc("2028-03-31T08:00:00Z") << utc("2028-02-29T09:00:00Z");
        QTest::newRow("back over New Year") << 0 << -1 << utc("2026-01-15T09:00:00Z") << utc("2025-12-15T09:00:00Z");
    }

    void movingKeepsTheTimeOfDay()
    {
        QFETCH(const int, days);
        QFETCH(const int, months);
        QFETCH(const Instant, from);
        const UserCalendar calendar = calendarIn("Europe/Vienna");

        const auto moved = days != 0 ? calendar.addingDays(from, days) : calendar.addingMonths(from, months);

        QTEST(moved.value_or(Instant{}), "expected");
    }

    void aDateBeyondTheCalendarIsNone()
    {
        const UserCalendar calendar = calendarIn("UTC");

        QVERIFY(!calendar.addingMonths(utc("9999-12-15T00:00:00Z"), 1));
        QVERIFY(calendar.day({1e300}).isValid());
    }

    void aZoneThatIsUnknownIsUtc()
    {
        const UserCalendar calendar = calendarIn("Not/AZone");

        QCOMPARE(shown(utc("2026-11-22T10:30:00Z"), calendar), QStringLiteral("2026-11-22 630"));
        QVERIFY(calendar.dateTime(utc("2026-11-22T10:30:00Z")).isValid());
    }
};

TESSALY_TEST_MAIN(UserCalendarTest)
#include "UserCalendarTest.moc"
