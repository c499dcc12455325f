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
    void aToDosReminderFollowsItsTick_data()
    {
        QTest::addColumn<std::optional<bool>>("wasComplete");
        QTest::addColumn<bool>("isComplete");
        QTest::addColumn<std::optional<Instant>>("due");
        QTest::addColumn<bool>("waitedBefore");
        QTest::addColumn<std::optional<QTime>>("minute");

        using Complete = std::optional<bool>;
        using Due = std::optional<Instant>;
        using Minute = std::optional<QTime>;
        const Complete none;
        QTest::newRow("added") << none << false << Due(at(13, 5, 59)) << false << Minute({13, 5});
        QTest::newRow("added for the next minute") << none << false << Due(at(12, 1)) << false << Minute({12, 1});
        QTest::newRow("added for this minute") << none << false << Due(at(12, 0, 59)) << false << Minute();
        QTest::newRow("added without a date") << none << false << Due() << false << Minute();
        QTest::newRow("added as done") << none << true << Due(at(13, 0)) << false << Minute();
        QTest::newRow("changed") << Complete(false) << false << Due(at(14, 0)) << true << Minute({13, 0});
        QTest::newRow("changed once done") << Complete(true) << true << Due(at(14, 0)) << false << Minute();
        QTest::newRow("ticked") << Complete(false) << true << Due(at(13, 0)) << true << Minute();
        QTest::newRow("reopened") << Complete(true) << false << Due(at(14, 0)) << true << Minute({14, 0});
        QTest::newRow("reopened too late") << Complete(true) << false << Due(at(9, 0)) << true << Minute();
    }

    void aToDosReminderFollowsItsTick()
    {
        QFETCH(const std::optional<bool>, wasComplete);
        QFETCH(const bool, isComplete);
        QFETCH(const std::optional<Instant>, due);
        QFETCH(const bool, waitedBefore);
        QFETCH(const std::optional<QTime>, minute);
        const ReminderItem after{.title = u"Report"_s, .dueDate = due, .isComplete = isComplete};
        ReminderItem before = after;
        before.isComplete = wasComplete.value_or(false);
        const QString identifier = uuidText(after.id);
        QList<WaitingReminder> waiting{reminder(u"other"_s, 18)};
        QList<WaitingReminder> expected = waiting;
        if (waitedBefore)
            waiting.append({identifier, u"Reminder"_s, u"Report"_s, QDate(2026, 9, 9), QTime(13, 0)});
        if (minute)
            expected.append({identifier, u"Reminder"_s, u"Report"_s, QDate(2026, 9, 9), *minute});

        const auto result =
            waitingAfter(wasComplete ? &before : nullptr, after, u"Reminder"_s, waiting, vienna(), at(12, 0, 30));

        QCOMPARE(result.value_or(waiting), expected);
    }

    void whatIsDueComesInTheOrderOfItsMinutes()
    {
        const QList<WaitingReminder> list{reminder(u"evening"_s, 18), reminder(u"noon"_s, 12), reminder(u"held"_s, 9),
                                          reminder(u"morning"_s, 8), reminder(u"soon"_s, 12, 1)};

        const auto [due, waiting] = splitDue(list, {u"held"_s}, vienna(), at(12, 0));

        QCOMPARE(identifiers(due), (QStringList{u"morning"_s, u"noon"_s}));
        QCOMPARE(identifiers(waiting), (QStringList{u"evening"_s, u"held"_s, u"soon"_s}));
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

    void allTextIsStored()
    {
        WaitingReminder special = reminder(u"x"_s, 23, 59);
        special.title = special.body = u"\"引号\" <b>\n😀"_s;
        QCOMPARE(decodeWaitingReminders(encodeWaitingReminders({special, reminder(u"y"_s, 0)})),
                 (QList<WaitingReminder>{special, reminder(u"y"_s, 0)}));
    }
};

TESSALY_TEST_MAIN(WaitingReminderTest)
#include "WaitingReminderTest.moc"
