#include "platform/linux/eds/EventText.h"
#include "tests/support/TestMain.h"

#include <QDateTime>

using namespace tessaly;

namespace {

icaltimezone *builtinZone(const char *tzid)
{
    icaltimezone *zone = icaltimezone_get_builtin_timezone_from_tzid(tzid);
    return zone ? zone : icaltimezone_get_builtin_timezone(tzid);
}

IcalComponentPtr parsed(const QByteArray &properties)
{
    return IcalComponentPtr(icalcomponent_new_from_string("BEGIN:VEVENT\r\nUID:a\r\n" + properties + "END:VEVENT\r\n"));
}

QByteArrayList lines(icalcomponent *event)
{
    const std::unique_ptr<char, decltype(&free)> text(icalcomponent_as_ical_string_r(event), &free);
    QByteArray unfolded(text.get());
    return unfolded.replace("\r\n ", "").trimmed().split('\n');
}

QByteArray line(icalcomponent *event, const QByteArray &name)
{
    for (const QByteArray &line : lines(event)) {
        if (line.startsWith(name + ':') || line.startsWith(name + ';'))
            return line.trimmed();
    }
    return {};
}

/// In Vienna; "2026-03-29 01:30" or "2026-03-29 01:30Z".
Instant at(const QString &text)
{
    QDateTime time = QDateTime::fromString(text.left(16), QStringLiteral("yyyy-MM-dd HH:mm"));
    time.setTimeZone(text.endsWith(u'Z') ? QTimeZone::utc() : QTimeZone("Europe/Vienna"));
    return Instant::fromUnixSeconds(static_cast<double>(time.toSecsSinceEpoch()));
}

class EventTextTest : public QObject
{
    Q_OBJECT

private slots:
    void timesAreRead_data()
    {
        QTest::addColumn<QByteArray>("properties");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");

        const QByteArray vienna = ";TZID=Europe/Vienna:";
        QTest::newRow("zoned") << "DTSTART" + vienna + "20260608T090000\r\nDTEND" + vienna + "20260608T100000\r\n"
                               << "2026-06-08 09:00"
                               << "2026-06-08 10:00";
        QTest::newRow("another zone for the end")
            << QByteArray(
                   "DTSTART;TZID=Europe/Vienna:20260608T090000\r\nDTEND;TZID=America/New_York:20260608T090000\r\n")
            << "2026-06-08 09:00"
            << "2026-06-08 15:00";
        QTest::newRow("UTC") << QByteArray("DTSTART:20260608T070000Z\r\nDTEND:20260608T080000Z\r\n")
                             << "2026-06-08 09:00"
                             << "2026-06-08 10:00";
        QTest::newRow("floating") << QByteArray("DTSTART:20260608T090000\r\nDTEND:20260608T100000\r\n")
                                  << "2026-06-08 09:00"
                                  << "2026-06-08 10:00";
        QTest::newRow("unknown zone") << QByteArray("DTSTART;TZID=Moon:20260608T090000\r\n") << "2026-06-08 09:00"
                                      << "2026-06-08 09:00";
        QTest::newRow("all day") << QByteArray("DTSTART;VALUE=DATE:20260329\r\nDTEND;VALUE=DATE:20260331\r\n")
                                 << "2026-03-29 00:00"
                                 << "2026-03-31 00:00";
        QTest::newRow("all day without an end") << QByteArray("DTSTART;VALUE=DATE:20260329\r\n") << "2026-03-29 00:00"
                                                << "2026-03-30 00:00";
        QTest::newRow("a day across the clock change")
            << QByteArray("DTSTART;TZID=Europe/Vienna:20260328T120000\r\nDURATION:P1D\r\n") << "2026-03-28 12:00"
            << "2026-03-29 12:00";
        QTest::newRow("24 hours across the clock change")
            << QByteArray("DTSTART;TZID=Europe/Vienna:20260328T120000\r\nDURATION:PT24H\r\n") << "2026-03-28 12:00"
            << "2026-03-29 13:00";
        QTest::newRow("whole days as a duration")
            << QByteArray("DTSTART;VALUE=DATE:20260328\r\nDURATION:P1W\r\n") << "2026-03-28 00:00"
            << "2026-04-04 00:00";
        QTest::newRow("ends before it starts")
            << QByteArray("DTSTART:20260608T070000Z\r\nDTEND:20260608T060000Z\r\n") << "2026-06-08 09:00"
            << "2026-06-08 09:00";
    }

    void timesAreRead()
    {
        QFETCH(const QByteArray, properties);
        QFETCH(const QString, start);
        QFETCH(const QString, end);

        const CalendarEvent event = m_text.read(parsed(properties).get());

        QCOMPARE(event.startDate, at(start));
        QCOMPARE(event.endDate, at(end));
        QVERIFY(!event.title);
    }

    void changedTimesKeepTheirForm_data()
    {
        QTest::addColumn<QByteArray>("properties");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QByteArray>("dtstart");
        QTest::addColumn<QByteArray>("dtend");

        QTest::newRow("zone of another country")
            << QByteArray("DTSTART;TZID=America/New_York:20260608T090000\r\nDTEND;TZID=America/New_York:20260608T1000"
                          "00\r\n")
            << "2026-06-09 18:00"
            << "2026-06-09 19:30" << QByteArray("DTSTART;TZID=America/New_York:20260609T120000")
            << QByteArray("DTEND;TZID=America/New_York:20260609T133000");
        QTest::newRow("UTC") << QByteArray("DTSTART:20260608T070000Z\r\nDTEND:20260608T080000Z\r\n")
                             << "2026-06-08 10:00"
                             << "2026-06-08 11:00" << QByteArray("DTSTART:20260608T080000Z")
                             << QByteArray("DTEND:20260608T090000Z");
        QTest::newRow("floating") << QByteArray("DTSTART:20260608T090000\r\nDTEND:20260608T100000\r\n")
                                  << "2026-06-08 10:00"
                                  << "2026-06-08 11:00" << QByteArray("DTSTART:20260608T100000")
                                  << QByteArray("DTEND:20260608T110000");
        QTest::newRow("all day, given whole days")
            << QByteArray("DTSTART;VALUE=DATE:20260329\r\n") << "2026-03-30 00:00"
            << "2026-04-01 00:00" << QByteArray("DTSTART;VALUE=DATE:20260330")
            << QByteArray("DTEND;VALUE=DATE:20260401");
        QTest::newRow("all day, given hours")
            << QByteArray("DTSTART;VALUE=DATE:20260329\r\nDTEND;VALUE=DATE:20260330\r\n") << "2026-03-30 09:00"
            << "2026-03-30 10:00"
            << QByteArray("DTSTART;TZID=/freeassociation.sourceforge.net/Europe/Vienna:20260330T090000")
            << QByteArray("DTEND;TZID=/freeassociation.sourceforge.net/Europe/Vienna:20260330T100000");
        QTest::newRow("a duration") << QByteArray("DTSTART:20260608T070000Z\r\nDURATION:PT1H\r\n") << "2026-06-08 09:00"
                                    << "2026-06-08 11:00" << QByteArray("DTSTART:20260608T070000Z")
                                    << QByteArray("DTEND:20260608T090000Z");
        QTest::newRow("nothing new") << QByteArray("DTSTART;TZID=Europe/Vienna:20260608T090000\r\nDURATION:PT1H\r\n")
                                     << "2026-06-08 09:00"
                                     << "2026-06-08 10:00" << QByteArray("DTSTART;TZID=Europe/Vienna:20260608T090000")
                                     << QByteArray();
        // 02:30 comes twice; the second has no wall time of its own.
        QTest::newRow("the hour that comes again")
            << QByteArray("DTSTART;TZID=Europe/Vienna:20260608T090000\r\nDTEND;TZID=Europe/Vienna:20260608T100000\r\n")
            << "2026-10-25 01:30Z"
            << "2026-10-25 02:30Z" << QByteArray("DTSTART:20261025T013000Z")
            << QByteArray("DTEND;TZID=Europe/Vienna:20261025T033000");
    }

    void changedTimesKeepTheirForm()
    {
        QFETCH(const QByteArray, properties);
        QFETCH(const QString, start);
        QFETCH(const QString, end);
        QFETCH(const QByteArray, dtstart);
        QFETCH(const QByteArray, dtend);
        const IcalComponentPtr event = parsed(properties);

        m_text.change(event.get(), {.title = {}, .startDate = at(start), .endDate = at(end)});

        QCOMPARE(m_text.read(event.get()).startDate, at(start));
        QCOMPARE(m_text.read(event.get()).endDate, at(end));
        QCOMPARE(line(event.get(), "DTSTART"), dtstart);
        QCOMPARE(line(event.get(), "DTEND"), dtend);
    }

    void whatIsNotChangedStaysAsItIs()
    {
        const QByteArray kept =
            "ATTENDEE;CN=Ana;PARTSTAT=ACCEPTED;X-OWN=1:mailto:ana@example.org\r\n"
            "CATEGORIES:work,important\r\nDESCRIPTION:bring bread\r\nX-OTHER-PROGRAM;A=b:kept\r\n"
            "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:soon\r\nTRIGGER:-PT15M\r\nEND:VALARM\r\n";
        const IcalComponentPtr event =
            parsed("SUMMARY;LANGUAGE=en:Lunch\r\nDTSTART:20260608T070000Z\r\nDTEND:20260608T080000Z\r\n" + kept);
        const QByteArrayList before = lines(event.get());

        QVERIFY(m_text.change(event.get(), {.title = QStringLiteral("Dinner, late"),
                                            .startDate = at(QStringLiteral("2026-06-08 19:00")),
                                            .endDate = at(QStringLiteral("2026-06-08 20:00"))}));

        QByteArrayList after = lines(event.get());
        QCOMPARE(line(event.get(), "SUMMARY"), QByteArray("SUMMARY;LANGUAGE=en:Dinner\\, late"));
        QCOMPARE(after.size(), before.size());
        for (qsizetype i = 0; i < before.size(); ++i) {
            if (!before.at(i).startsWith("SUMMARY") && !before.at(i).startsWith("DT"))
                QCOMPARE(after.at(i), before.at(i));
        }
        QVERIFY(!m_text.change(event.get(), {.title = QStringLiteral("Dinner, late"),
                                             .startDate = at(QStringLiteral("2026-06-08 19:00")),
                                             .endDate = at(QStringLiteral("2026-06-08 20:00"))}));
    }

    void anOccurrenceIsDetachedWithAllThatTheEventHas_data()
    {
        QTest::addColumn<QByteArray>("times");
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("recurrenceId");
        QTest::addColumn<QByteArray>("dtstart");
        QTest::addColumn<QString>("end");

        QTest::newRow("zoned, after the clock change")
            << QByteArray("DTSTART;TZID=Europe/Vienna:20260328T060000\r\nDTEND;TZID=Europe/Vienna:20260328T070000\r\n")
            << QByteArray("20260330T060000") << QByteArray("RECURRENCE-ID;TZID=Europe/Vienna:20260330T060000")
            << QByteArray("DTSTART;TZID=Europe/Vienna:20260330T060000") << "2026-03-30 07:00";
        QTest::newRow("all day") << QByteArray("DTSTART;VALUE=DATE:20260328\r\nDTEND;VALUE=DATE:20260330\r\n")
                                 << QByteArray("20260404") << QByteArray("RECURRENCE-ID;VALUE=DATE:20260404")
                                 << QByteArray("DTSTART;VALUE=DATE:20260404") << "2026-04-06 00:00";
    }

    void anOccurrenceIsDetachedWithAllThatTheEventHas()
    {
        QFETCH(const QByteArray, times);
        QFETCH(const QByteArray, start);
        QFETCH(const QByteArray, recurrenceId);
        QFETCH(const QByteArray, dtstart);
        QFETCH(const QString, end);
        const IcalComponentPtr master =
            parsed(times + "RRULE:FREQ=DAILY;COUNT=20\r\nEXDATE:20260401T060000\r\nX-OTHER-PROGRAM:kept\r\n");
        icaltimetype original = icaltime_from_string(start.constData());
        original.zone = m_text.time(master.get(), ICAL_DTSTART_PROPERTY).zone;

        const IcalComponentPtr occurrence = m_text.detach(master.get(), original);

        QCOMPARE(line(occurrence.get(), "RECURRENCE-ID"), recurrenceId);
        QCOMPARE(line(occurrence.get(), "DTSTART"), dtstart);
        QCOMPARE(m_text.read(occurrence.get()).endDate, at(end));
        QCOMPARE(line(occurrence.get(), "X-OTHER-PROGRAM"), QByteArray("X-OTHER-PROGRAM:kept"));
        QCOMPARE(line(occurrence.get(), "RRULE"), QByteArray());
        QCOMPARE(line(occurrence.get(), "EXDATE"), QByteArray());
    }

    void anExceptionHasTheZoneOfItsEvent()
    {
        // As the service itself leaves an occurrence that it removed.
        const IcalComponentPtr master = parsed("DTSTART;TZID=Europe/Vienna:20260328T060000\r\n"
                                               "RRULE:FREQ=DAILY\r\nEXDATE:20260330T060000\r\n");
        icaltimetype original = icaltime_from_string("20260330T060000");
        original.zone = builtinZone("Europe/Vienna");

        QVERIFY(m_text.exclude(master.get(), original));
        QCOMPARE(line(master.get(), "EXDATE"), QByteArray("EXDATE;TZID=Europe/Vienna:20260330T060000"));
        QVERIFY(!m_text.exclude(master.get(), original));
    }

private:
    EventText m_text{UserCalendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c()), &builtinZone};
};

} // namespace

TESSALY_TEST_MAIN(EventTextTest)
#include "EventTextTest.moc"
