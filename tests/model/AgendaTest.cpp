#include "model/Agenda.h"

#include "tests/support/TestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tessaly;

namespace {

const UserCalendar &vienna()
{
    static const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    return calendar;
}

/// In October 2026; the clocks go back on the 25th.
Instant at(int day, int hour, int minute = 0)
{
    return vienna().instant(QDate(2026, 10, day), QTime(hour, minute));
}

SavedData sample()
{
    return {.schedules = {{.title = QStringLiteral("Late"), .date = at(24, 23, 30), .endDate = at(25, 2)},
                          {.title = QStringLiteral("Early"), .date = at(24, 8), .tag = QStringLiteral("work")},
                          {.title = QStringLiteral("After the clock change"), .date = at(25, 23)},
                          {.title = QStringLiteral("Hidden"),
                           .date = at(24, 9),
                           .calendarIdentifier = QStringLiteral("other")},
                          {.title = QStringLiteral("Yesterday"), .date = at(23, 23, 59)},
                          {.title = QStringLiteral("Too late"), .date = at(26, 0)}},
            .reminders = {{.title = QStringLiteral("Report"), .dueDate = at(24, 17)},
                          {.title = QStringLiteral("Overdue"), .dueDate = at(20, 9)},
                          {.title = QStringLiteral("Done"), .dueDate = at(24, 10), .isComplete = true},
                          {.title = QStringLiteral("Some day")}}};
}

} // namespace

class AgendaTest : public QObject
{
    Q_OBJECT

private slots:
    void theDaysHoldWhatIsShownAndOpen()
    {
        const Agenda ahead = agenda(sample(), {}, vienna(), at(24, 12), 2);
        const QString text = agendaText(ahead, vienna(), AppLanguage::English);
        QCOMPARE(text, QStringLiteral("Overdue\n"
                                      "  10-20 09:00    Overdue\n"
                                      "\n"
                                      "Sat, Oct 24, 2026\n"
                                      "  08:00          Early #work\n"
                                      "  23:30 – 02:00  Late\n"
                                      "  due 17:00      Report\n"
                                      "\n"
                                      "Sun, Oct 25, 2026\n"
                                      "  23:00          After the clock change\n"
                                      "\n"
                                      "No due date\n"
                                      "  Some day\n"));
    }

    void anEmptyAgendaSaysSo()
    {
        const Agenda ahead = agenda({}, {}, vienna(), at(24, 12), 3);
        QCOMPARE(ahead.days.size(), 3);
        QCOMPARE(agendaText(ahead, vienna(), AppLanguage::Chinese), QStringLiteral("没有日程，也没有到期的待办。\n"));
    }

    void jsonHasEveryDayAndTimesWithTheirOffset()
    {
        const Agenda ahead = agenda(sample(), {}, vienna(), at(24, 12), 2);
        const QJsonObject json = QJsonDocument::fromJson(agendaJson(ahead, vienna())).object();
        QCOMPARE(json[u"overdue"][0][u"title"], QJsonValue(QStringLiteral("Overdue")));
        QCOMPARE(json[u"days"].toArray().size(), 2);
        const QJsonValue late = json[u"days"][0][u"schedules"][1];
        QCOMPARE(late[u"start"], QJsonValue(QStringLiteral("2026-10-24T23:30:00+02:00")));
        QCOMPARE(late[u"end"], QJsonValue(QStringLiteral("2026-10-25T02:00:00+02:00")));
        QCOMPARE(json[u"days"][1][u"schedules"][0][u"start"], QJsonValue(QStringLiteral("2026-10-25T23:00:00+01:00")));
    }
};

TESSALY_TEST_MAIN(AgendaTest)
#include "AgendaTest.moc"
