#include "model/DateLabels.h"
#include "model/DateLocale.h"
#include "tests/support/TestMain.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

class DateLabelsTest : public QObject
{
    Q_OBJECT

private slots:
    void datesFollowTheFirstSettingThatIsNotEmpty_data()
    {
        QTest::addColumn<LocaleSettings>("settings");
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<Qt::DayOfWeek>("firstWeekday");
        QTest::addColumn<QString>("dayAndTime");

        const auto row = [](const char *name, const LocaleSettings &settings, const char *locale,
                            Qt::DayOfWeek firstWeekday, const char16_t *dayAndTime) {
            QTest::newRow(name) << settings << QByteArray(locale) << firstWeekday
                                << QString::fromUtf16(dayAndTime).replace(u' ', u'\u202F');
        };
        row("China", {.all = "zh_CN.UTF-8"}, "zh", Qt::Monday, u"11月2日 17:30");
        row("China for all but dates", {.time = "de_AT.UTF-8", .lang = "zh_CN.UTF-8"}, "de_AT", Qt::Monday,
            u"2. Nov., 17:30");
        row("American with German dates", {.time = "de_DE.UTF-8", .lang = "en_US.UTF-8"}, "de", Qt::Monday,
            u"2. Nov., 17:30");
        row("LC_ALL before both", {.all = "en_US.UTF-8", .time = "de_DE.UTF-8", .lang = "zh_CN.UTF-8"}, "en",
            Qt::Sunday, u"Nov 2, 5:30 PM");
        row("LANG alone", {.lang = "en_GB"}, "en_GB", Qt::Monday, u"2 Nov, 17:30");
        row("Hong Kong", {.time = "zh_HK.utf8"}, "zh_HK", Qt::Sunday, u"11月2日 下午5:30");
        row("weeks from Saturday", {.all = "en_AE"}, "en_AE", Qt::Saturday, u"2 Nov, 5:30 PM");
        row("C", {.all = "C.UTF-8", .time = "de_DE.UTF-8"}, "en", Qt::Monday, u"Nov 2, 5:30 PM");
        row("nothing set", {}, "en", Qt::Monday, u"Nov 2, 5:30 PM");
        row("an unknown name", {.lang = "xx_YY.UTF-8"}, "en", Qt::Monday, u"Nov 2, 5:30 PM");
    }

    void datesFollowTheFirstSettingThatIsNotEmpty()
    {
        QFETCH(const LocaleSettings, settings);

        const QLocale locale = dateLocale(settings);

        QTEST(icuName(locale), "locale");
        QTEST(firstWeekday(locale), "firstWeekday");
        const UserCalendar calendar(QTimeZone::utc(), Qt::Monday, locale);
        // CLDR changed the blank before AM and PM to a narrow one.
        QTEST(DateLabels(calendar)
                  .dayAndTime(calendar.instant(QDate(2026, 11, 2), QTime(17, 30)))
                  .replace(u' ', u'\u202F'),
              "dayAndTime");
    }

    void weeksBeginWhereQtSaysButInChina()
    {
        const QList<QLocale> locales =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
        QVERIFY(locales.size() > 600);
        for (const QLocale &locale : locales) {
            const bool isInChina = locale.territory() == QLocale::China;
            if (firstWeekday(locale) != (isInChina ? Qt::Monday : locale.firstDayOfWeek()))
                QCOMPARE(locale.name() + QString::number(firstWeekday(locale)), locale.name());
        }
    }

    void labelsShowTheLocalClockOfEveryZone()
    {
        const QLocale english(QLocale::English, QLocale::UnitedKingdom);
        const QList<QByteArray> zones = QTimeZone::availableTimeZoneIds();
        QVERIFY(zones.size() > 300);
        for (const QByteArray &name : zones) {
            const QTimeZone zone(name);
            const UserCalendar calendar(zone, Qt::Monday, english);
            const DateLabels labels(calendar);
            constexpr qint64 step = 86400 * 23 + 8765;
            constexpr qint64 from = 1640995200; // 2022-01-01
            for (qint64 at = from; at < from + 10 * 365 * 86400; at += step) {
                const QDateTime local = QDateTime::fromSecsSinceEpoch(at, zone);
                const Instant instant = Instant::fromUnixSeconds(static_cast<double>(at));
                const QString shown = labels.dayAndTime(instant) + u' ' + labels.month(instant);
                const QString expected = english.toString(local, u"d MMM, HH:mm MMM yyyy");
                if (shown != expected)
                    QCOMPARE(QString::fromLatin1(name) + shown, QString::fromLatin1(name) + expected);
            }
            QCOMPARE(labels.week(QDate(2026, 11, 23)), u"23 Nov 2026 – 29 Nov"_s);
        }
    }
};

TESSALY_TEST_MAIN(DateLabelsTest)
#include "DateLabelsTest.moc"
