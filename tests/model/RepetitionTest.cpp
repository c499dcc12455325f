#include "model/Repetition.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

class RepetitionTest : public QObject
{
    Q_OBJECT

private slots:
    void aRuleIsKnownAgainWhateverTheDay()
    {
        using enum Repetition;
        for (QDate day(2024, 1, 1); day.year() < 2026; day = day.addDays(1)) {
            for (const Repetition each : {Never, Daily, Workdays, Weekly, Monthly, Yearly})
                QCOMPARE(repetitionOf(repetitionRule(each, day)), each);
        }
        QCOMPARE(repetitionOf(u"FREQ=DAILY;INTERVAL=2"_s), Other);
    }

    void aDayThatMonthsLackStandsForTheLastOne_data()
    {
        QTest::addColumn<Repetition>("repetition");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("rule");

        using enum Repetition;
        QTest::newRow("28th") << Monthly << QDate(2026, 1, 28) << u"FREQ=MONTHLY"_s;
        QTest::newRow("30th") << Monthly << QDate(2026, 1, 30) << u"FREQ=MONTHLY;BYMONTHDAY=28,29,30;BYSETPOS=-1"_s;
        QTest::newRow("31st") << Monthly << QDate(2026, 1, 31) << u"FREQ=MONTHLY;BYMONTHDAY=28,29,30,31;BYSETPOS=-1"_s;
        QTest::newRow("31st, yearly") << Yearly << QDate(2026, 1, 31) << u"FREQ=YEARLY"_s;
        QTest::newRow("29 February") << Yearly << QDate(2028, 2, 29)
                                     << u"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=28,29;BYSETPOS=-1"_s;
    }

    void aDayThatMonthsLackStandsForTheLastOne()
    {
        QFETCH(const Repetition, repetition);
        QFETCH(const QDate, day);
        QTEST(repetitionRule(repetition, day), "rule");
    }
};

TESSALY_TEST_MAIN(RepetitionTest)
#include "RepetitionTest.moc"
