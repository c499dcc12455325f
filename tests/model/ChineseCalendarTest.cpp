#include "model/ChineseCalendar.h"
#include "tests/support/TestMain.h"

#include <QFile>

using namespace tessaly;

/// Two other sources, one that computes the sky and one that copies printed tables, have been asked for every day.
class ChineseCalendarTest : public QObject
{
    Q_OBJECT

    static QString text(const LunarDay &day)
    {
        return (day.isLeap ? QStringLiteral("L") : QString()) + QString::number(day.month) + u'/' +
               QString::number(day.day);
    }

private slots:
    void theDaysOfTwoHundredYearsAreThoseOfOtherSources()
    {
        QFile file(QStringLiteral(TESSALY_CHINESE_DAYS));
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        int days = 0;
        int termDays = 0;
        QStringList otherTerms;
        QStringList otherWork;
        while (!file.atEnd()) {
            const QStringList line = QString::fromLatin1(file.readLine().trimmed()).split(u' ');
            const QDate day = QDate::fromString(line.at(0), Qt::ISODate);
            const std::optional<LunarDay> lunar = lunarDay(day);
            QVERIFY2(lunar && (text(*lunar) == line.at(1) || text(*lunar) == line.at(2)), qPrintable(line.join(u' ')));
            const std::optional<int> term = solarTerm(day);
            termDays += term ? 1 : 0;
            if ((term ? QString::number(*term) : QStringLiteral("-")) != line.at(3))
                otherTerms.append(line.at(0));
            const DayOff off = chineseDay(day, false).dayOff;
            const bool isWork = off == DayOff::WorkDay || (off == DayOff::None && day.dayOfWeek() <= Qt::Friday);
            if (line.at(4) != u'-' && isWork != (line.at(4) == QStringLiteral("work")))
                otherWork.append(line.at(0));
            ++days;
        }
        QCOMPARE(days, 73384);
        QCOMPARE(termDays, 4822);
        QCOMPARE(otherTerms, QStringList());
        // A work day that belongs to a holiday of the next year.
        QCOMPARE(otherWork, QStringList{QStringLiteral("2005-12-31")});
    }

    void narrowTextsAreShort()
    {
        QSet<QString> texts;
        for (QDate day(2015, 1, 1); day.year() < 2027; day = day.addDays(1)) {
            const ChineseDay english = chineseDay(day, true);
            QVERIFY2(english.narrowText.size() <= 8, qPrintable(english.text));
            if (english.isSpecial)
                texts.insert(english.narrowText);
            const ChineseDay chinese = chineseDay(day, false);
            QVERIFY2(chinese.narrowText.size() <= 3 || day.year() == 2015, qPrintable(chinese.text));
        }
        QVERIFY(texts.contains(QStringLiteral("Solstice")) && texts.contains(QStringLiteral("C. Dew")));
    }

    void aDayIsSaidInWords_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("chinese");
        QTest::addColumn<QString>("english");
        QTest::addColumn<DayOff>("dayOff");
        const auto row = [](const char *name, QDate day, const char16_t *chinese, const char16_t *english,
                            DayOff off = DayOff::None) {
            QTest::newRow(name) << day << QString::fromUtf16(chinese) << QString::fromUtf16(english) << off;
        };
        row("a day", {2026, 11, 23}, u"十五", u"15th");
        row("the first of a month", {2026, 12, 9}, u"冬月", u"month 11");
        row("the first of a leap month", {2025, 7, 25}, u"闰六月", u"leap 6");
        row("a solar term", {2026, 11, 22}, u"小雪", u"Lesser Snow");
        row("a holiday before its term", {2026, 4, 5}, u"清明节", u"Qingming", DayOff::Holiday);
        row("a holiday", {2026, 10, 1}, u"国庆节", u"National Day", DayOff::Holiday);
        row("a further day off", {2026, 10, 3}, u"廿三", u"23rd", DayOff::Holiday);
        row("a make-up work day", {2026, 10, 10}, u"九月", u"month 9", DayOff::WorkDay);
        row("new year", {2027, 2, 6}, u"春节", u"Spring Festival");
        row("the last day of the year", {2027, 2, 5}, u"除夕", u"New Year’s Eve");
        row("the leap month of 2033 is the eleventh", {2033, 12, 22}, u"闰冬月", u"leap 11");
        row("before the table", {1899, 12, 31}, u"", u"");
        row("its first day", {1900, 1, 1}, u"腊月", u"month 12");
        row("after the table", {2101, 1, 1}, u"", u"");
        row("no day", {}, u"", u"");
    }

    void aDayIsSaidInWords()
    {
        QFETCH(const QDate, day);
        QTEST(chineseDay(day, false).text, "chinese");
        QTEST(chineseDay(day, true).text, "english");
        QTEST(chineseDay(day, true).dayOff, "dayOff");
    }
};

TESSALY_TEST_MAIN(ChineseCalendarTest)
#include "ChineseCalendarTest.moc"
