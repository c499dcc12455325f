#include "model/BackupPlan.h"
#include "model/UserCalendar.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const UserCalendar vienna(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
constexpr qint64 generationSize = 1000;

/// "11-22 10:00" of 2026, or with a year in front, as the clock in Vienna shows it.
Generation at(const QString &text, GenerationReason reason = GenerationReason::Hourly)
{
    const QString full = text.size() == 11 ? QStringLiteral("2026-") + text : text;
    const QDateTime local = QDateTime::fromString(full, QStringLiteral("yyyy-MM-dd HH:mm"));
    return {.moment = vienna.instant(local.date(), local.time()), .reason = reason, .size = generationSize};
}

/// One each so many hours before 2026-11-22 10:00.
QList<Generation> every(int hours, int count)
{
    QList<Generation> generations;
    for (int i = 0; i < count; ++i)
        generations.append(
            {.moment = at(QStringLiteral("11-22 10:00")).moment.plus(-3600.0 * hours * i), .size = generationSize});
    return generations;
}

QString text(const Generation &generation)
{
    return vienna.dateTime(generation.moment).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

QList<Generation> restorePoints(int count)
{
    QList<Generation> points = every(1, count);
    for (Generation &point : points)
        point.reason = GenerationReason::Clear;
    return points;
}

} // namespace

class BackupPlanTest : public QObject
{
    Q_OBJECT

private slots:
    void aNameTellsAllButTheSize_data()
    {
        QTest::addColumn<Generation>("generation");
        QTest::addColumn<QString>("name");
        const Generation hourly{.moment = Instant::fromUnixSeconds(1'795'341'600.25), .digest = QStringLiteral("ab12")};
        QTest::newRow("hourly") << hourly << QStringLiteral("20261122T100000250Z-hourly-ab12.sqlite");
        Generation sync = hourly;
        sync.reason = GenerationReason::Sync;
        sync.detail = QStringLiteral("34");
        QTest::newRow("with a count") << sync << QStringLiteral("20261122T100000250Z-sync-34-ab12.sqlite");
        Generation update = hourly;
        update.reason = GenerationReason::Update;
        update.detail = QStringLiteral("0.0.1-beta (20260828)/ä");
        QTest::newRow("with a version") << update
                                        << QStringLiteral("20261122T100000250Z-update-0.0.1%2Dbeta%20%2820260828%29%2F"
                                                          "%C3%A4-ab12.sqlite");
    }

    void aNameTellsAllButTheSize()
    {
        QFETCH(const Generation, generation);
        QFETCH(const QString, name);
        QCOMPARE(generationFileName(generation), name);
        QCOMPARE(generationFromFileName(name), generation);
    }

    void anyOtherFileIsNoGeneration_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"", "unfinished", "planner.sqlite", "20261122T100000250Z-hourly-ab12",
                                 "20261122T100000250Z-hourly.sqlite", "20261122T100000250Z-weekly-ab12.sqlite",
                                 "20261322T100000250Z-hourly-ab12.sqlite", "20261122T100000250Z-hourly-1-2-ab12.sqlite",
                                 "20261122T100000250Z-hourly-.sqlite"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void anyOtherFileIsNoGeneration()
    {
        QFETCH(const QString, name);
        QVERIFY(!generationFromFileName(name));
    }

    void generationsGrowRarerWithAge_data()
    {
        QTest::addColumn<QList<Generation>>("generations");
        QTest::addColumn<qsizetype>("kept");
        QTest::addColumn<QString>("oldest");

        QTest::newRow("none") << QList<Generation>() << qsizetype(0) << QString();
        QTest::newRow("a day of hours") << every(1, 24) << qsizetype(24) << QStringLiteral("2026-11-21 11:00");
        // The 24 hours reach back to 11:00 of the day before; of older days, the last of each stays.
        QTest::newRow("a week of hours") << every(1, 168) << qsizetype(24 + 6) << QStringLiteral("2026-11-15 23:00");
        QTest::newRow("two within an hour")
            << QList{at(QStringLiteral("11-22 09:05")), at(QStringLiteral("11-22 09:55"))} << qsizetype(1)
            << QStringLiteral("2026-11-22 09:55");
        QTest::newRow("one a day, a month") << every(24, 30) << qsizetype(30) << QStringLiteral("2026-10-24 11:00");
        // 30 days, the first of which are also hours, and the last ones of the ten months before.
        QTest::newRow("one a day, three years")
            << every(24, 1095) << qsizetype(30 + 10) << QStringLiteral("2025-12-31 10:00");
        QTest::newRow("one a month after a long pause")
            << QList{at(QStringLiteral("2020-01-31 08:00")), at(QStringLiteral("2024-05-05 08:00")),
                     at(QStringLiteral("2024-05-04 08:00"))}
            << qsizetype(3) << QStringLiteral("2020-01-31 08:00");
        QTest::newRow("the hour that comes twice when the clocks change")
            << QList{Generation{.moment = Instant::fromUnixSeconds(1'792'888'200)},
                     Generation{.moment = Instant::fromUnixSeconds(1'792'891'800)}}
            << qsizetype(2) << QStringLiteral("2026-10-25 02:30");
        QTest::newRow("restore points") << restorePoints(50) << qsizetype(20) << QStringLiteral("2026-11-21 15:00");
        QTest::newRow("restore points count for themselves")
            << every(1, 24) + restorePoints(20) << qsizetype(44) << QStringLiteral("2026-11-21 11:00");
    }

    void generationsGrowRarerWithAge()
    {
        QFETCH(QList<Generation>, generations);
        QFETCH(const qsizetype, kept);
        QFETCH(const QString, oldest);
        for (const Generation &outdated : outdatedGenerations(generations, vienna))
            generations.removeOne(outdated);
        QCOMPARE(generations.size(), kept);
        QVERIFY2(outdatedGenerations(generations, vienna).isEmpty(), "what was kept once is kept again");
        const auto first = std::ranges::min_element(generations, {}, &Generation::moment);
        QCOMPARE(generations.isEmpty() ? QString() : text(*first), oldest);
    }

    void theOldestGoesWhereSpaceLacks_data()
    {
        QTest::addColumn<qint64>("size");
        QTest::addColumn<qsizetype>("kept");
        QTest::newRow("room for all") << 10 * generationSize << qsizetype(10);
        QTest::newRow("a byte too little") << 10 * generationSize - 1 << qsizetype(9);
        QTest::newRow("room for one") << generationSize << qsizetype(1);
        QTest::newRow("room for none") << qint64(1) << qsizetype(1);
    }

    void theOldestGoesWhereSpaceLacks()
    {
        QFETCH(const qint64, size);
        QFETCH(const qsizetype, kept);
        QList<Generation> generations = every(1, 10);
        generations[9].reason = GenerationReason::Clear;
        const QList<Generation> outdated = outdatedGenerations(generations, vienna, {.size = size});
        QCOMPARE(outdated.size(), 10 - kept);
        QVERIFY(!outdated.contains(generations.constFirst()));
        QVERIFY(outdated.isEmpty() || outdated.contains(generations.constLast()));
    }
};

TESSALY_TEST_MAIN(BackupPlanTest)
#include "BackupPlanTest.moc"
