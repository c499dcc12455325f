#include "model/ReminderRules.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

UserCalendar calendarFor(const char *locale, Qt::DayOfWeek firstWeekday = Qt::Monday)
{
    return {QTimeZone("Europe/Vienna"), firstWeekday, QLocale(QString::fromLatin1(locale))};
}

Instant at(const UserCalendar &calendar, int year, int month, int day, int hour = 12)
{
    return calendar.instant(QDate(year, month, day), QTime(hour, 0));
}

} // namespace

class ReminderRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void labelsFollowTheLocale_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("week");
        QTest::addColumn<QString>("month");
        QTest::addColumn<QString>("dayAndTime");

        QTest::newRow("American English") << QByteArray("en_US") << "Nov 2, 2026 – Nov 8"
                                          << "Nov 2026"
                                          << "Nov 2, 5:30\u202fPM";
        QTest::newRow("Chinese") << QByteArray("zh_CN") << "2026年11月2日 – 11月8日"
                                 << "2026年11月"
                                 << "11月2日 17:30";
        QTest::newRow("German") << QByteArray("de_DE") << "2. Nov. 2026 – 8. Nov."
                                << "Nov. 2026"
                                << "2. Nov., 17:30";
    }

    void labelsFollowTheLocale()
    {
        QFETCH(const QByteArray, locale);
        const UserCalendar calendar = calendarFor(locale.constData());
        const DateLabels labels(calendar);
        const Instant instant = calendar.instant(QDate(2026, 11, 2), QTime(17, 30));

        QTEST(labels.week(QDate(2026, 11, 2)), "week");
        QTEST(labels.month(instant), "month");
        // ICU before release 72 puts a plain blank before PM.
        QFETCH(QString, dayAndTime);
        QCOMPARE(labels.dayAndTime(instant).replace(QChar(0x202f), u' '), dayAndTime.replace(QChar(0x202f), u' '));
    }

    void toDosStandWhereTheirDatesSay_data()
    {
        QTest::addColumn<Qt::DayOfWeek>("firstWeekday");
        QTest::addColumn<QString>("week");

        QTest::newRow("weeks from Monday") << Qt::Monday << "Nov 2, 2026 – Nov 8";
        QTest::newRow("weeks from Sunday") << Qt::Sunday << "Nov 8, 2026 – Nov 14";
    }

    void toDosStandWhereTheirDatesSay()
    {
        QFETCH(const Qt::DayOfWeek, firstWeekday);
        QFETCH(const QString, week);
        const UserCalendar calendar = calendarFor("en_US", firstWeekday);
        const DateLabels labels(calendar);
        const Instant sunday = at(calendar, 2026, 11, 8);
        const QList<ReminderItem> reminders{
            {.title = u"undated"_s},
            {.title = u"due"_s, .dueDate = sunday},
            {.title = u"done"_s, .isComplete = true, .completedAt = at(calendar, 2026, 10, 31, 23)},
            {.title = u"done, once due"_s, .dueDate = sunday, .isComplete = true},
        };

        QCOMPARE(openItems(reminders), (QList<qsizetype>{0, 1}));
        QCOMPARE(noDueDateItems(reminders), (QList<qsizetype>{0}));
        QCOMPARE(dueDateItemsByWeek(reminders, calendar, labels), (QList<ReminderGroup>{{week, {1}}}));
        // Completed at an unknown time counts as now.
        QCOMPARE(completedByMonth(reminders, labels, at(calendar, 2026, 12, 1)),
                 (QList<ReminderGroup>{{u"Oct 2026"_s, {2}}, {u"Dec 2026"_s, {3}}}));
    }

    void weeksAscendAndMonthsDescendByTheirLabels()
    {
        const UserCalendar calendar = calendarFor("en_US");
        const DateLabels labels(calendar);
        QList<ReminderItem> open;
        QList<ReminderItem> completed;
        for (const Instant date : {at(calendar, 2025, 11, 4), at(calendar, 2025, 12, 30), at(calendar, 2025, 11, 3),
                                   at(calendar, 2025, 11, 4)}) {
            open.append({.dueDate = date});
            completed.append({.isComplete = true, .completedAt = date});
        }

        // Text order on purpose: D stands before N, though December comes after November. Equal times keep their order.
        QCOMPARE(dueDateItemsByWeek(open, calendar, labels),
                 (QList<ReminderGroup>{{u"Dec 29, 2025 – Jan 4"_s, {1}}, {u"Nov 3, 2025 – Nov 9"_s, {2, 0, 3}}}));
        QCOMPARE(completedByMonth(completed, labels, Instant()),
                 (QList<ReminderGroup>{{u"Nov 2025"_s, {0, 2, 3}}, {u"Dec 2025"_s, {1}}}));
    }

    void anotherDueDateTakesTheRepetitionAlong_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<int>("day");
        QTest::addColumn<QString>("expected");

        QTest::newRow("weekly") << u"FREQ=WEEKLY"_s << 12 << u"FREQ=WEEKLY"_s;
        QTest::newRow("monthly, to the last day")
            << u"FREQ=MONTHLY"_s << 31 << u"FREQ=MONTHLY;BYMONTHDAY=28,29,30,31;BYSETPOS=-1"_s;
        QTest::newRow("a rule of another program") << u"FREQ=HOURLY"_s << 12 << u"FREQ=HOURLY"_s;
        QTest::newRow("no due date") << u"FREQ=WEEKLY"_s << 0 << QString();
    }

    void anotherDueDateTakesTheRepetitionAlong()
    {
        QFETCH(const QString, rule);
        QFETCH(const int, day);
        const UserCalendar calendar = calendarFor("en_US");
        const Instant before = at(calendar, 2026, 10, 5);
        const ReminderItem item{.dueDate = before, .recurrenceRule = rule, .recurrenceStart = before};
        const auto dueDate = day > 0 ? std::optional(at(calendar, 2026, 10, day)) : std::nullopt;

        const ReminderItem moved = withDueDate(item, dueDate, calendar);

        QCOMPARE(moved.dueDate, dueDate);
        QCOMPARE(moved.recurrenceStart, dueDate);
        QTEST(moved.recurrenceRule.value_or(QString()), "expected");
        QCOMPARE(withDueDate(item, before, calendar), item);
    }

    void whatIsToBeDoneInAWeekIsDueOnItsLastDay()
    {
        const UserCalendar calendar = calendarFor("en_US");
        const QDate week(2026, 10, 19); // its Sunday has the end of summer time
        const auto due = [&](int day, int hour) {
            return dueInWeek(week, at(calendar, 2026, 10, day, hour), calendar);
        };
        QCOMPARE(due(1, 0), at(calendar, 2026, 10, 25, 18));
        QCOMPARE(due(25, 17), at(calendar, 2026, 10, 25, 18));
        QCOMPARE(due(25, 18), at(calendar, 2026, 10, 25, 23).plus(59 * 60));
        QCOMPARE(due(26, 0), std::nullopt);
    }

    void aDueDateKeepsWeekdayAndTimeInAnotherWeek()
    {
        const UserCalendar calendar = calendarFor("en_US");
        // Summer time ends in between.
        const Instant sunday = at(calendar, 2026, 10, 18, 18);
        QCOMPARE(movedToWeek(sunday, QDate(2026, 10, 26), calendar), at(calendar, 2026, 11, 1, 18));
        QCOMPARE(movedToWeek(sunday, QDate(2026, 10, 5), calendar), at(calendar, 2026, 10, 11, 18));
    }

    void onlyOpenToDosBecomeOverdue()
    {
        const UserCalendar calendar = calendarFor("en_US");
        const Instant now = at(calendar, 2026, 10, 5);
        const QList<ReminderItem> reminders{{.title = u"none"_s},
                                            {.dueDate = now},
                                            {.dueDate = now.plus(-1), .isComplete = true},
                                            {.dueDate = now.plus(9)},
                                            {.dueDate = now.plus(5), .isComplete = true}};
        QList<qsizetype> overdue;
        for (qsizetype row = 0; row < reminders.size(); ++row) {
            if (isOverdue(reminders.at(row), now))
                overdue.append(row);
        }
        QCOMPARE(overdue, QList<qsizetype>{1});
        QCOMPARE(nextDueDate(reminders, now), now.plus(9));
        QCOMPARE(nextDueDate(reminders, now.plus(9)), std::nullopt);
    }
};

TESSALY_TEST_MAIN(ReminderRulesTest)
#include "ReminderRulesTest.moc"
