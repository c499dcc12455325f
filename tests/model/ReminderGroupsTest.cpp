#include "model/ReminderGroups.h"
#include "tests/support/TestMain.h"

#include <QRandomGenerator>

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

ReminderGroups grouped(ReminderSection section, const QList<ReminderPlacement> &placements)
{
    ReminderGroups groups(section);
    groups.assign(placements);
    return groups;
}

} // namespace

class ReminderGroupsTest : public QObject
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

    void aReminderStandsWhereItsDatesSay_data()
    {
        QTest::addColumn<bool>("isDue");
        QTest::addColumn<bool>("isComplete");
        QTest::addColumn<bool>("hasCompletionTime");
        QTest::addColumn<Qt::DayOfWeek>("firstWeekday");
        QTest::addColumn<ReminderSection>("section");
        QTest::addColumn<QString>("label");

        QTest::newRow("open without a date")
            << false << false << false << Qt::Monday << ReminderSection::NoDueDate << "";
        QTest::newRow("due on a Sunday, weeks from Monday")
            << true << false << false << Qt::Monday << ReminderSection::Due << "Nov 2, 2026 – Nov 8";
        QTest::newRow("due on a Sunday, weeks from Sunday")
            << true << false << false << Qt::Sunday << ReminderSection::Due << "Nov 8, 2026 – Nov 14";
        QTest::newRow("completed") << true << true << true << Qt::Monday << ReminderSection::Completed << "Oct 2026";
        QTest::newRow("completed at an unknown time counts as this month")
            << true << true << false << Qt::Monday << ReminderSection::Completed << "Dec 2026";
    }

    void aReminderStandsWhereItsDatesSay()
    {
        QFETCH(const bool, isDue);
        QFETCH(const bool, isComplete);
        QFETCH(const bool, hasCompletionTime);
        QFETCH(const Qt::DayOfWeek, firstWeekday);
        const UserCalendar calendar = calendarFor("en_US", firstWeekday);
        const DateLabels labels(calendar);
        ReminderItem item{.isComplete = isComplete};
        if (isDue)
            item.dueDate = at(calendar, 2026, 11, 8);
        if (hasCompletionTime)
            item.completedAt = at(calendar, 2026, 10, 31, 23);

        const ReminderPlacement placement = reminderPlacement(item, calendar, labels, at(calendar, 2026, 12, 1));

        QTEST(placement.section, "section");
        QTEST(placement.label, "label");
    }

    void weeksAscendAndMonthsDescendByTheirLabels()
    {
        const UserCalendar calendar = calendarFor("en_US");
        const DateLabels labels(calendar);
        QList<ReminderPlacement> weeks;
        QList<ReminderPlacement> months;
        for (const Instant date : {at(calendar, 2025, 11, 4), at(calendar, 2025, 12, 30), at(calendar, 2025, 11, 3)}) {
            weeks.append(reminderPlacement({.dueDate = date}, calendar, labels, date));
            months.append(reminderPlacement({.isComplete = true, .completedAt = date}, calendar, labels, date));
        }

        // Text order on purpose: D stands before N, though December comes after November.
        QCOMPARE(grouped(ReminderSection::Due, weeks).groups(),
                 (QList<ReminderGroup>{{u"Dec 29, 2025 – Jan 4"_s, {1}}, {u"Nov 3, 2025 – Nov 9"_s, {2, 0}}}));
        QCOMPARE(grouped(ReminderSection::Completed, months).groups(),
                 (QList<ReminderGroup>{{u"Nov 2025"_s, {0, 2}}, {u"Dec 2025"_s, {1}}}));
    }

    void singleChangesKeepTheOrderOfAFreshGrouping()
    {
        const UserCalendar calendar = calendarFor("en_US");
        const DateLabels labels(calendar);
        QRandomGenerator random(4);
        QList<ReminderPlacement> placements;
        ReminderGroups groups(ReminderSection::Due);
        for (int step = 0; step < 400; ++step) {
            if (placements.isEmpty() || random.bounded(3) > 0) {
                // Few distinct times, so that equal ones meet.
                const Instant due = at(calendar, 2026, 11, 1).plus(random.bounded(60) * 43200.0);
                placements.append(reminderPlacement({.dueDate = due}, calendar, labels, due));
                const qsizetype row = placements.size() - 1;
                groups.insert(groups.positionFor(row, placements), row, placements.at(row).label);
            } else {
                const qsizetype row = random.bounded(placements.size());
                groups.remove(groups.positionOf(row, placements));
                placements.removeAt(row);
                groups.shift(row, -1);
            }
        }
        QVERIFY(placements.size() > 50);
        QCOMPARE(groups.groups(), grouped(ReminderSection::Due, placements).groups());
    }
};

TESSALY_TEST_MAIN(ReminderGroupsTest)
#include "ReminderGroupsTest.moc"
