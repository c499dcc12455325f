#include "model/WaitingReminder.h"
#include "model/Uuid.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

const UserCalendar &vienna()
{
    static const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    return calendar;
}

Instant at(int hour, int minute, int second = 0)
{
    return vienna().instant(QDate(2026, 9, 9), QTime(hour, minute, second));
}

WaitingReminder reminder(const QString &identifier, int hour, int minute = 0)
{
    return {identifier, u"Reminder"_s, identifier + u" due"_s, QDate(2026, 9, 9), QTime(hour, minute)};
}

QStringList identifiers(const QList<WaitingReminder> &reminders)
{
    QStringList names;
    for (const WaitingReminder &waiting : reminders)
        names.append(waiting.identifier);
    return names;
}

} // namespace

class WaitingReminderTest : public QObject
{
    Q_OBJECT

private slots:
    void aToDosReminderFollowsIt_data()
    {
        QTest::addColumn<std::optional<bool>>("wasComplete");
        QTest::addColumn<bool>("isComplete");
        QTest::addColumn<std::optional<Instant>>("dueBefore");
        QTest::addColumn<std::optional<Instant>>("due");
        QTest::addColumn<std::optional<QTime>>("waitedFor");
        QTest::addColumn<std::optional<QTime>>("waitsFor");

        using Complete = std::optional<bool>;
        using Due = std::optional<Instant>;
        using Minute = std::optional<QTime>;
        const auto row = [](const char *name, Complete was, bool is, Due before, Due due, Minute waited, Minute waits) {
            QTest::newRow(name) << was << is << before << due << waited << waits;
        };
        const Complete none;
        const Due at13 = at(13, 0);
        const Due at14 = at(14, 0);
        const Minute minute13 = QTime(13, 0);
        row("added", none, false, {}, at(13, 5, 59), {}, QTime(13, 5));
        row("added for the next minute", none, false, {}, at(12, 1), {}, QTime(12, 1));
        row("added for this minute", none, false, {}, at(12, 0, 59), {}, {});
        row("added without a date", none, false, {}, {}, {}, {});
        row("added as done", none, true, {}, at13, {}, {});
        row("put off, then its title was changed", false, false, at14, at14, minute13, minute13);
        row("moved", false, false, at13, at14, minute13, QTime(14, 0));
        row("moved into the past", false, false, at13, at(9, 0), minute13, {});
        row("moved once shown", false, false, at(9, 0), at14, {}, QTime(14, 0));
        row("date taken away", false, false, at13, {}, minute13, {});
        row("date added", false, false, {}, at13, {}, minute13);
        row("moved once done", true, true, at13, at14, {}, {});
        row("ticked", false, true, at13, at13, minute13, {});
        row("reopened", true, false, at14, at14, minute13, QTime(14, 0));
        row("reopened too late", true, false, at(9, 0), at(9, 0), minute13, {});
    }

    void aToDosReminderFollowsIt()
    {
        QFETCH(const std::optional<bool>, wasComplete);
        QFETCH(const bool, isComplete);
        QFETCH(const std::optional<Instant>, dueBefore);
        QFETCH(const std::optional<Instant>, due);
        QFETCH(const std::optional<QTime>, waitedFor);
        QFETCH(const std::optional<QTime>, waitsFor);
        const ReminderItem after{.title = u"Report"_s, .dueDate = due, .isComplete = isComplete};
        ReminderItem before = after;
        before.isComplete = wasComplete.value_or(false);
        before.dueDate = dueBefore;
        const QString identifier = uuidText(after.id);
        QList<WaitingReminder> waiting{reminder(u"other"_s, 18)};
        QList<WaitingReminder> expected = waiting;
        if (waitedFor)
            waiting.append({identifier, u"Reminder"_s, u"Report"_s, QDate(2026, 9, 9), *waitedFor});
        if (waitsFor)
            expected.append({identifier, u"Reminder"_s, u"Report"_s, QDate(2026, 9, 9), *waitsFor});

        const auto result =
            waitingAfter(wasComplete ? &before : nullptr, after, u"Reminder"_s, waiting, vienna(), at(12, 0, 30));

        QCOMPARE(result.value_or(waiting), expected);
    }

    void aReminderIsPutOff_data()
    {
        QTest::addColumn<ReminderAnswer>("answer");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QString>("until");

        using enum ReminderAnswer;
        const auto row = [](const char *name, ReminderAnswer answer, const QDateTime &now, const QString &until) {
            QTest::newRow(name) << answer << now << until;
        };
        const auto utc = [](const QString &text) { return QDateTime::fromString(text, Qt::ISODate); };
        row("ten minutes", InTenMinutes, utc(u"2026-09-09T12:00:29Z"_s), u"2026-09-09 14:10"_s);
        row("to the nearest minute", InTenMinutes, utc(u"2026-09-09T12:00:30Z"_s), u"2026-09-09 14:11"_s);
        row("past midnight", InOneHour, utc(u"2026-12-31T22:30:00Z"_s), u"2027-01-01 00:30"_s);
        row("tomorrow, late in the evening", Tomorrow, utc(u"2026-09-09T21:59:59Z"_s), u"2026-09-10 09:00"_s);
        row("tomorrow, after midnight", Tomorrow, utc(u"2026-09-09T22:00:00Z"_s), u"2026-09-11 09:00"_s);
        row("over a gap", InTenMinutes, utc(u"2026-03-29T00:55:00Z"_s), u"2026-03-29 03:05"_s);
        row("the first of two hours", InTenMinutes, utc(u"2026-10-25T00:20:00Z"_s), u"2026-10-25 02:30"_s);
        row("the second of two hours", InTenMinutes, utc(u"2026-10-25T01:20:00Z"_s), u"2026-10-25 03:00"_s);
        row("done", Complete, utc(u"2026-09-09T12:00:00Z"_s), {});
        row("dismissed", Dismiss, utc(u"2026-09-09T12:00:00Z"_s), {});
    }

    void aReminderIsPutOff()
    {
        QFETCH(const ReminderAnswer, answer);
        QFETCH(const QDateTime, now);
        const Instant instant = Instant::fromUnixSeconds(double(now.toSecsSinceEpoch()));
        WaitingReminder shown = reminder(u"a"_s, 8);
        shown.state = ReminderState::Shown;

        const auto later = putOff(shown, answer, vienna(), instant);

        const QString until =
            later ? later->day.toString(u"yyyy-MM-dd ") + later->minute.toString(u"HH:mm") : QString();
        QTEST(until, "until");
        if (later) {
            QCOMPARE(later->state, ReminderState::Waiting);
            QVERIFY(dueInstant(*later, vienna()) > instant);
        }
    }

    void whatIsUnansweredComesInTheOrderOfItsMinutes()
    {
        const auto with = [](WaitingReminder reminder, ReminderState state) {
            reminder.state = state;
            return reminder;
        };
        const QList<WaitingReminder> list{with(reminder(u"noon"_s, 12), ReminderState::Due), reminder(u"waiting"_s, 9),
                                          with(reminder(u"eleven"_s, 11), ReminderState::Missed),
                                          with(reminder(u"ten"_s, 10), ReminderState::Shown)};

        QCOMPARE(identifiers(unanswered(list, vienna())), (QStringList{u"ten"_s, u"eleven"_s, u"noon"_s}));
    }

    void whatIsStoredIsRead_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<std::optional<QList<WaitingReminder>>>("reminders");

        using Reminders = QList<WaitingReminder>;
        const auto read = [](const Reminders &reminders) { return std::optional(reminders); };
        QTest::newRow("one")
            << QByteArray(R"([{"body":"a due","identifier":"a","minute":"2026-09-09T13:05","title":"Reminder"}])")
            << read({reminder(u"a"_s, 13, 5)});
        QTest::newRow("unanswered") << QByteArray(
                                           R"([{"identifier":"a","minute":"2026-09-09T13:05","state":"missed"}])")
                                    << read({{u"a"_s, {}, {}, QDate(2026, 9, 9), QTime(13, 5), ReminderState::Missed}});
        QTest::newRow("in a state of a later version")
            << QByteArray(R"([{"identifier":"a","minute":"2026-09-09T13:05","state":"ringing"}])")
            << read({{u"a"_s, {}, {}, QDate(2026, 9, 9), QTime(13, 5)}});
        QTest::newRow("of a later version")
            << QByteArray(R"([{"identifier":"a","minute":"2026-09-09T13:05","lead":10}])")
            << read({{u"a"_s, {}, {}, QDate(2026, 9, 9), QTime(13, 5)}});
        QTest::newRow("damaged elements")
            << QByteArray(R"([5, {"identifier":"x"}, {"minute":"2026-02-30T13:05"}, {"minute":"2026-09-09T13"}])")
            << read({});
        QTest::newRow("none") << QByteArray("[]") << read({});
        QTest::newRow("no list") << QByteArray("{}") << std::optional<Reminders>();
        QTest::newRow("no JSON") << QByteArray("[{") << std::optional<Reminders>();
    }

    void whatIsStoredIsRead()
    {
        QFETCH(const QByteArray, json);
        QTEST(decodeWaitingReminders(json), "reminders");
    }

    void allTextAndEveryStateIsStored()
    {
        WaitingReminder special = reminder(u"x"_s, 23, 59);
        special.title = special.body = u"\"引号\" <b>\n😀"_s;
        using enum ReminderState;
        for (const ReminderState state : {Waiting, Due, Shown, Missed}) {
            special.state = state;
            QCOMPARE(decodeWaitingReminders(encodeWaitingReminders({special, reminder(u"y"_s, 0)})),
                     (QList<WaitingReminder>{special, reminder(u"y"_s, 0)}));
        }
    }
};

TESSALY_TEST_MAIN(WaitingReminderTest)
#include "WaitingReminderTest.moc"
