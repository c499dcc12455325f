#include "model/QuickAdd.h"

#include "tests/support/TestMain.h"

#include <QFile>

using namespace tessaly;

namespace {

/// A moment at which phrases are said, from a line such as "@ 2026-11-25T10:20:30 Asia/Shanghai Monday zh_CN".
struct Scene
{
    UserCalendar calendar{QTimeZone::utc(), Qt::Monday, QLocale::c()};
    Instant now;
};

Scene sceneOf(const QString &line)
{
    const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const QTimeZone zone(words.at(2).toLatin1());
    const Qt::DayOfWeek first = words.at(3) == u"Sunday" ? Qt::Sunday : Qt::Monday;
    Scene scene{.calendar = {zone, first, QLocale(words.at(4))}, .now = {}};
    const QDateTime now = QDateTime::fromString(words.at(1), Qt::ISODate);
    scene.now = scene.calendar.instant(now.date(), now.time());
    return scene;
}

QString timeOf(std::optional<Instant> instant, const UserCalendar &calendar)
{
    if (!instant)
        return QStringLiteral("-");
    const QDateTime time = calendar.dateTime(*instant);
    return time.toString(time.time().second() == 0 ? u"yyyy-MM-dd HH:mm" : u"yyyy-MM-dd HH:mm:ss");
}

/// Title, start, end and kind as the tables write them.
QString rowOf(const QuickEntry &entry, const UserCalendar &calendar)
{
    static const QStringList kinds{QStringLiteral("open"), QStringLiteral("schedule"), QStringLiteral("todo")};
    return QStringList{entry.title, timeOf(entry.start, calendar), timeOf(entry.end, calendar),
                       kinds.at(static_cast<int>(entry.kind))}
        .join(u'\t');
}

/// Whether the phrase names a time that may be over.
bool saysPast(const QString &phrase)
{
    static const QStringList words{
        QStringLiteral("today"), QStringLiteral("this"),  QStringLiteral("ago"),    QStringLiteral("last"),
        QStringLiteral("20"),    QStringLiteral("month"), QStringLiteral("yester"), QStringLiteral("tonight"),
        QStringLiteral("今"),    QStringLiteral("昨"),    QStringLiteral("前"),     QStringLiteral("上"),
        QStringLiteral("本"),    QStringLiteral("这"),    QStringLiteral("去"),     QStringLiteral("年")};
    return std::ranges::any_of(words, [&](const QString &word) { return phrase.contains(word, Qt::CaseInsensitive); });
}

} // namespace

class QuickAddTest : public QObject
{
    Q_OBJECT

private slots:
    void phrases_data()
    {
        QTest::addColumn<QString>("scene");
        QTest::addColumn<QString>("phrase");
        QTest::addColumn<QString>("expected");
        for (const char *language : {"zh", "en"}) {
            QFile file(QStringLiteral(TESSALY_PHRASES "/%1.tsv").arg(QLatin1String(language)));
            QVERIFY(file.open(QFile::ReadOnly));
            QString scene;
            int count = 0;
            const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
            for (qsizetype number = 0; number < lines.size(); ++number) {
                const QString &line = lines.at(number);
                if (line.startsWith(u'@'))
                    scene = line;
                if (line.isEmpty() || line.startsWith(u'@') || line.startsWith(u'#'))
                    continue;
                QTest::addRow("%s:%d", language, int(number + 1))
                    << scene << line.section(u'\t', 0, 0) << line.section(u'\t', 1);
                ++count;
            }
            QVERIFY2(count >= 300, language);
        }
    }

    void phrases()
    {
        QFETCH(QString, scene);
        QFETCH(QString, phrase);
        QFETCH(QString, expected);
        const Scene at = sceneOf(scene);
        const QuickEntry entry = quickEntry(phrase, at.now, at.calendar);
        QVERIFY2(rowOf(entry, at.calendar) == expected,
                 qPrintable(QStringLiteral("%1\n   is %2\n  not %3").arg(phrase, rowOf(entry, at.calendar), expected)));
        QVERIFY(!entry.start || *entry.start >= at.now || saysPast(phrase));
        QCOMPARE(entry.understood.isEmpty(), !entry.start);
    }

    // Said at any quarter of an hour of days around the ends of months and years and the changes of the clocks.
    void noPhraseMeansATimeThatIsOver()
    {
        const UserCalendar vienna(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
        const QStringList times{QString(),
                                QStringLiteral("at 2:30am"),
                                QStringLiteral("3pm"),
                                QStringLiteral("midnight"),
                                QStringLiteral("晚上12点"),
                                QStringLiteral("02:30-03:00"),
                                QStringLiteral("上午")};
        const QStringList days{QString(),
                               QStringLiteral("today"),
                               QStringLiteral("Sunday"),
                               QStringLiteral("on the 31st"),
                               QStringLiteral("Feb 29"),
                               QStringLiteral("1月1日"),
                               QStringLiteral("下周日"),
                               QStringLiteral("in 3 days")};
        for (const QDate day : {QDate(2026, 3, 28), QDate(2026, 10, 24), QDate(2026, 12, 31), QDate(2027, 2, 28)}) {
            for (int quarter = 0; quarter < 3 * 96; quarter += 3) {
                const Instant now = vienna.startOfDay(day).plus(quarter * 900 + 59.5);
                for (const QString &said : days) {
                    for (const QString &time : times) {
                        const QString phrase = QStringLiteral("x ") + said + u' ' + time;
                        const QuickEntry entry = quickEntry(phrase, now, vienna);
                        const bool namesToday = said == u"today" && !time.isEmpty();
                        if (!entry.start || namesToday)
                            continue;
                        QVERIFY2(*entry.start >= now, qPrintable(phrase + timeOf(now, vienna)));
                        QVERIFY2(!entry.end || *entry.end > *entry.start, qPrintable(phrase));
                    }
                }
            }
        }
    }

    void theSpansAreWhatWasUnderstood()
    {
        const UserCalendar calendar(QTimeZone::utc(), Qt::Monday, QLocale::c());
        const Instant now = calendar.instant(QDate(2026, 11, 25), QTime(10, 20));
        const QString phrase = QStringLiteral("Lunch tomorrow 12:30–13:30 with Ann by the sea");
        QCOMPARE(quickEntry(phrase, now, calendar).understood, QList<TextSpan>({{6, 20}}));
        QCOMPARE(quickEntry(QStringLiteral("明天开会下午3点 1小时"), now, calendar).understood,
                 QList<TextSpan>({{0, 2}, {4, 8}}));
    }

    void anEntryWithoutTimesBecomesAnHourFromTheNextFullHour()
    {
        const UserCalendar kolkata(QTimeZone("Asia/Kolkata"), Qt::Monday, QLocale::c());
        const Instant now = kolkata.instant(QDate(2026, 11, 25), QTime(10, 20, 30));
        const ScheduleItem schedule = scheduleOf(quickEntry(QStringLiteral("Call"), now, kolkata), now, kolkata);
        QCOMPARE(timeOf(schedule.date, kolkata), QStringLiteral("2026-11-25 11:00"));
        QCOMPARE(timeOf(schedule.endDate, kolkata), QStringLiteral("2026-11-25 12:00"));
        const ScheduleItem brief = scheduleOf(quickEntry(QStringLiteral("Call 3pm 5 min"), now, kolkata), now, kolkata);
        QCOMPARE(timeOf(brief.endDate, kolkata), QStringLiteral("2026-11-25 15:15"));
        QCOMPARE(toDoOf(quickEntry(QStringLiteral("Call"), now, kolkata)).dueDate, std::nullopt);
    }

    void labelsNameTheDay_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("chinese");
        QTest::newRow("today") << QDate(2026, 11, 25) << "today 15:00–16:00"
                               << "今天 15:00–16:00";
        QTest::newRow("tomorrow") << QDate(2026, 11, 26) << "tomorrow 15:00–16:00"
                                  << "明天 15:00–16:00";
        QTest::newRow("later") << QDate(2026, 11, 27) << "Fri, Nov 27 15:00–16:00"
                               << "11月27日 周五 15:00–16:00";
        QTest::newRow("next year") << QDate(2027, 1, 1) << "Fri, Jan 1, 2027 15:00–16:00"
                                   << "2027年1月1日 周五 15:00–16:00";
    }

    void labelsNameTheDay()
    {
        QFETCH(QDate, day);
        QFETCH(QString, english);
        QFETCH(QString, chinese);
        const UserCalendar calendar(QTimeZone::utc(), Qt::Monday, QLocale::c());
        const Instant now = calendar.instant(QDate(2026, 11, 25), QTime(23, 20));
        const Instant start = calendar.instant(day, QTime(15, 0));
        const Instant end = start.plus(3600);
        QCOMPARE(timeLabel(start, end, now, calendar, AppLanguage::English), english);
        QCOMPARE(timeLabel(start, end, now, calendar, AppLanguage::Chinese), chinese);
    }
};

TESSALY_TEST_MAIN(QuickAddTest)
#include "QuickAddTest.moc"
