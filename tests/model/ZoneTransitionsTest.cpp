#include "model/ZoneTransitions.h"
#include "tests/support/TestMain.h"

#include <QDateTime>

using namespace tessaly;

namespace {

qint64 wallClock(const QString &iso)
{
    return QDateTime::fromString(iso + u'Z', Qt::ISODate).toSecsSinceEpoch();
}

QString utc(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(Qt::ISODate);
}

} // namespace

class ZoneTransitionsTest : public QObject
{
    Q_OBJECT

private slots:
    void aLocalTimeBecomesAnInstant_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QString>("local");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char *name, const char *zone, const char *local, const char *expected) {
            QTest::newRow(name) << QByteArray(zone) << QString::fromLatin1(local) << QString::fromLatin1(expected);
        };
        row("summer", "Europe/Vienna", "2024-07-01T12:00:00", "2024-07-01T10:00:00Z");
        row("winter", "Europe/Vienna", "2024-12-01T12:00:00", "2024-12-01T11:00:00Z");
        row("last second before a gap", "Europe/Vienna", "2024-03-31T01:59:59", "2024-03-31T00:59:59Z");
        row("skipped: offset before the gap", "Europe/Vienna", "2024-03-31T02:30:00", "2024-03-31T01:30:00Z");
        row("first second after a gap", "Europe/Vienna", "2024-03-31T03:00:00", "2024-03-31T01:00:00Z");
        row("repeated: the first", "Europe/Vienna", "2024-10-27T02:30:00", "2024-10-27T00:30:00Z");
        row("repeated, west of Greenwich", "America/New_York", "2024-11-03T01:30:00", "2024-11-03T05:30:00Z");
        row("skipped, west of Greenwich", "America/New_York", "2024-03-10T02:30:00", "2024-03-10T07:30:00Z");
        row("repeated half hour", "Australia/Lord_Howe", "2024-04-07T01:45:00", "2024-04-06T14:45:00Z");
        row("first second after the repetition", "Europe/Vienna", "2024-10-27T03:00:00", "2024-10-27T02:00:00Z");
        row("a day that Samoa skipped", "Pacific/Apia", "2011-12-30T12:00:00", "2011-12-30T22:00:00Z");
        row("skipped midnight", "America/Sao_Paulo", "2018-11-04T00:00:00", "2018-11-04T03:00:00Z");
        row("half an hour", "Australia/Lord_Howe", "2024-10-06T02:15:00", "2024-10-05T15:45:00Z");
        row("long after the last change", "Asia/Shanghai", "2024-09-02T08:00:00", "2024-09-02T00:00:00Z");
        row("beyond the zone's table, in its rule", "Europe/Vienna", "2060-07-01T12:00:00", "2060-07-01T10:00:00Z");
        row("beyond the list", "Europe/Vienna", "2500-07-01T12:00:00", "2500-07-01T10:00:00Z");
        row("local mean time", "Europe/Vienna", "1850-01-01T00:00:00", "1849-12-31T22:54:39Z");
        row("UTC", "UTC", "1970-01-01T00:00:00", "1970-01-01T00:00:00Z");
    }

    void aLocalTimeBecomesAnInstant()
    {
        QFETCH(const QByteArray, zone);
        QFETCH(const QString, local);

        QTEST(utc(ZoneTransitions(QTimeZone(zone)).unixSeconds(wallClock(local))), "expected");
    }

    void offsetsAreThoseOfTheZoneThroughTheYears_data()
    {
        QTest::addColumn<QByteArray>("zone");
        for (const char *zone : {"Europe/Vienna", "America/New_York", "Africa/Casablanca", "Asia/Shanghai",
                                 "Pacific/Apia", "America/Sao_Paulo", "Asia/Kathmandu", "Etc/GMT+8"})
            QTest::newRow(zone) << QByteArray(zone);
    }

    void offsetsAreThoseOfTheZoneThroughTheYears()
    {
        QFETCH(const QByteArray, zone);
        const QTimeZone reference(zone);
        const ZoneTransitions transitions(reference);

        constexpr qint64 step = 86400 * 5 + 1234;
        for (qint64 at = wallClock(QStringLiteral("1790-01-01T00:00:00")); at < 4'200'000'000; at += step) {
            const qint64 offset = reference.offsetFromUtc(QDateTime::fromSecsSinceEpoch(at, Qt::UTC));
            if (transitions.offsetAt(at) != offset)
                QCOMPARE(utc(at) + QString::number(transitions.offsetAt(at)), utc(at) + QString::number(offset));
        }
    }

    void onlyIdentifiersOfTheDatabaseAreZones_data()
    {
        QTest::addColumn<QByteArray>("identifier");
        QTest::addColumn<bool>("isKnown");

        for (const char *known : {"Asia/Shanghai", "US/Pacific", "Asia/Calcutta", "Etc/GMT+8", "America/Indiana/Knox",
                                  "UTC", "GMT", "EST5EDT", "PRC", "Egypt", "/Europe/Stockholm"})
            QTest::newRow(known) << QByteArray(known) << true;
        for (const char *unknown : {"Not/AZone",
                                    "Europe/vienna",
                                    "Asia",
                                    "America/Argentina",
                                    "ABC5",
                                    "CST6CDT,M3.2.0,M11.1.0",
                                    "UTC+08:00",
                                    "UTC+08",
                                    "posix/Europe/Vienna",
                                    "right/Europe/Vienna",
                                    "localtime",
                                    "../../etc/passwd",
                                    "/etc/passwd",
                                    "\"Asia/Shanghai\"",
                                    "Asia/Shanghai ",
                                    "W. Europe Standard Time",
                                    "zone.tab",
                                    "Asia//Tokyo",
                                    "//Asia/Tokyo",
                                    "Asia/Tokyo/"})
            QTest::newRow(unknown) << QByteArray(unknown) << false;
        QTest::newRow("nothing") << QByteArray() << false;
    }

    void onlyIdentifiersOfTheDatabaseAreZones()
    {
        QFETCH(const QByteArray, identifier);

        QTEST(zoneOfIdentifier(identifier).has_value(), "isKnown");
    }
};

TESSALY_TEST_MAIN(ZoneTransitionsTest)
#include "ZoneTransitionsTest.moc"
