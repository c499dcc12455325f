#include "store/RecordSearch.h"

#include "store/DocumentSearch.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QSignalSpy>

using namespace tessaly;

namespace {

using Area = RecordSearch::Hits (RecordSearch::*)(const SearchQuery &, qsizetype) const;

SearchQuery query(const QString &text)
{
    return SearchQuery::of(text);
}

} // namespace

class RecordSearchTest : public QObject
{
    Q_OBJECT

private slots:
    void schedulesThatAreShownComeNearestFirst()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        const double now = store.clock().now().seconds;
        store.addSchedule(scheduleTitled(QStringLiteral("Report long ago"), now - 9e6));
        store.addSchedule(scheduleTitled(QStringLiteral("Report soon"), now + 3600));
        store.addSchedule(scheduleTitled(QStringLiteral("The report"), now + 60));
        ScheduleItem hidden = scheduleTitled(QStringLiteral("Report hidden"), now);
        hidden.calendarIdentifier = QStringLiteral("other");
        store.addSchedule(hidden);
        RecordSearch search(store);
        search.prepare();
        const RecordSearch::Hits hits = search.schedules(query(QStringLiteral("REPORT")), 2);
        QCOMPARE(hits.count, 3);
        QCOMPARE(hits.best.size(), 2);
        QCOMPARE(store.schedules().at(hits.best.at(0).row).title, QStringLiteral("Report soon"));
        QCOMPARE(store.schedules().at(hits.best.at(1).row).title, QStringLiteral("Report long ago"));
        QCOMPARE(search.schedules(query(QString()), 5).count, 0);
    }

    void goalsAreFoundByTheirTasks()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        Goal goal{.title = QStringLiteral("编写教材")};
        goal.subgoals = {{.title = QStringLiteral("第一章"), .tasks = {{{.title = QStringLiteral("画图")}}}}};
        store.addGoal(goal);
        RecordSearch search(store);
        search.prepare();
        QCOMPARE(search.goals(query(QStringLiteral("bxjc")), 5).best.value(0).part, QString());
        QCOMPARE(search.goals(query(QStringLiteral("画圖")), 5).best.value(0).part, QStringLiteral("画图"));
        QCOMPARE(search.goals(query(QStringLiteral("第一")), 5).best.value(0).part, QStringLiteral("第一章"));
    }

    void notesAndRequirementsAreFoundAfterTitles()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        ScheduleItem noted = scheduleTitled(QStringLiteral("Lecture"));
        noted.notes = QStringLiteral("Bring the exercises\nof chapter two");
        store.addSchedule(noted);
        store.addSchedule(scheduleTitled(QStringLiteral("Exercises")));
        store.addReminder({.title = QStringLiteral("Report"), .requirement = QStringLiteral("附上本周的数据")});
        RecordSearch search(store);
        search.prepare();

        const RecordSearch::Hits hits = search.schedules(query(QStringLiteral("exerc")), 5);
        QCOMPARE(hits.count, 2);
        QCOMPARE(store.schedules().at(hits.best.at(0).row).title, QStringLiteral("Exercises"));
        QCOMPARE(hits.best.at(1).part, QStringLiteral("Bring the exercises"));
        QCOMPARE(hits.best.at(1).match.start, 10);
        QCOMPARE(search.reminders(query(QStringLiteral("數據")), 5).best.value(0).part,
                 QStringLiteral("附上本周的数据"));
        // Two letters would be found in nearly every text.
        QCOMPARE(search.schedules(query(QStringLiteral("br")), 5).count, 0);
    }

    void itIsPreparedInStepsAndFollowsMeanwhile()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        for (int number = 0; number < 10; ++number)
            store.addSchedule(scheduleTitled(QStringLiteral("a%1").arg(number)));
        RecordSearch search(store);
        const auto found = [&search] { return search.schedules(query(QStringLiteral("a")), 99).count; };
        QCOMPARE(found(), 0);
        QCOMPARE(search.prepareSome(4), 4);
        QCOMPARE(found(), 4);
        store.deleteSchedule(store.schedules().at(2));
        store.deleteSchedule(store.schedules().at(7));
        store.addSchedule(scheduleTitled(QStringLiteral("a new")));
        QCOMPARE(found(), 3);
        QCOMPARE(search.prepareSome(99), 6);
        QCOMPARE(found(), 9);
        store.undo();
        QCOMPARE(found(), 8);
        QCOMPARE(search.prepareSome(99), 0);
    }

    // A random walk: after each change the search finds what a new one would find.
    void theSearchFollowsEveryChange()
    {
        StoreUnderTest planner;
        PlannerStore &store = planner.start();
        RecordSearch search(store);
        search.prepare();
        const auto agrees = [&] {
            RecordSearch fresh(store);
            fresh.prepare();
            for (const Area area : {&RecordSearch::schedules, &RecordSearch::reminders, &RecordSearch::documents}) {
                for (const char16_t letter : {u'1', u'2', u'a', u'z'}) {
                    const RecordSearch::Hits left = (search.*area)(query(QString(letter)), 100);
                    const RecordSearch::Hits right = (fresh.*area)(query(QString(letter)), 100);
                    if (left.count != right.count)
                        return false;
                }
            }
            return true;
        };
        for (int step = 0; step < 30; ++step) {
            const QString title = QStringLiteral("Item %1 周").arg(step);
            store.addSchedule(scheduleTitled(title));
            store.addReminder({.title = title});
            static_cast<void>(planner.library().addDocument(title, {}));
            QVERIFY2(agrees(), "added");
            if (step % 3 == 0) {
                ScheduleItem changed = store.schedules().at(step / 3);
                changed.title = QStringLiteral("Za %1").arg(step);
                store.updateSchedule(changed);
                store.removeReminder(store.reminders().first().id);
                const MarkdownDocument document = planner.library().documents().last();
                planner.library().renameDocument(document, QStringLiteral("Az %1").arg(step));
            } else if (step % 7 == 0) {
                const ScheduleItem gone = store.schedules().at(step / 2);
                store.deleteSchedule(gone);
                const MarkdownDocument document = planner.library().documents().first();
                planner.library().deleteDocument(document);
            } else if (step % 11 == 0) {
                store.undo();
            }
            QVERIFY2(agrees(), qPrintable(QString::number(step)));
        }
        store.clearPersonalContent();
        QVERIFY(agrees());
    }

    void textsAreFoundAsTheyAreNow()
    {
        FakeFileSystem files;
        QList<DocumentSearch::File> documents;
        for (int number = 0; number < 3; ++number) {
            const QString path = QStringLiteral("/d/%1.md").arg(number);
            files.write(path, QStringLiteral("# Number %1\nThe 彈性 of text %1").arg(number).toUtf8());
            documents.append({QUuid::createUuid(), path});
        }
        documents.append({QUuid::createUuid(), QStringLiteral("/d/missing.md")});
        DocumentSearch search(files);
        QList<DocumentHit> found;
        int answers = 0;
        const auto take = [&](const QList<DocumentHit> &hits) {
            found = hits;
            ++answers;
        };
        search.prepare(documents);
        search.find(documents, query(QStringLiteral("弹性 1")), take);
        QTRY_COMPARE(answers, 1);
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.first().id, documents.at(1).id);
        QCOMPARE(found.first().excerpt.text, QStringLiteral("The 彈性 of text 1"));

        QVERIFY(search.rememberedBytes() > 0);
        files.write(documents.at(0).path, "something else with 1 word");
        search.find(documents, query(QStringLiteral("else 1")), take);
        QTRY_COMPARE(answers, 2);
        QCOMPARE(found.value(0).id, documents.at(0).id);

        search.find(documents, query(QStringLiteral("text")), [&](const QList<DocumentHit> &) { answers += 100; });
        search.find(documents, query(QStringLiteral("nowhere")), take);
        QTRY_COMPARE(answers, 3);
        QVERIFY(found.isEmpty());
    }
};

TESSALY_TEST_MAIN(RecordSearchTest)
#include "RecordSearchTest.moc"
