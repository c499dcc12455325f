#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"
#include "views/schedule/CalendarGroupsModel.h"
#include "views/schedule/CalendarSelectionModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

QByteArray vevent(const QByteArray &further)
{
    return "BEGIN:VEVENT\r\nDTSTART:20260601T080000Z\r\nDTEND:20260601T090000Z\r\n" + further + "END:VEVENT\r\n";
}

QByteArray calendar(const QByteArray &contents)
{
    return "BEGIN:VCALENDAR\r\n" + contents + "END:VCALENDAR\r\n";
}

} // namespace

class CalendarSelectionTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->startInEnglish();
        m_sheet = std::make_unique<CalendarSelectionModel>();
        m_sheet->setStore(m_planner->store.get());
        m_tester = std::make_unique<QAbstractItemModelTester>(m_sheet->feeds());
    }

    void cleanup()
    {
        m_tester.reset();
        m_sheet.reset();
    }

    void eachLinkTellsHowItIsInTheLanguage_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("chinese");
        const QByteArray plain = vevent({});
        const QByteArray repeating = vevent("RRULE:FREQ=DAILY\r\n");
        const QByteArray skipped = "BEGIN:VEVENT\r\nEND:VEVENT\r\n";
        QTest::newRow("nothing in it") << calendar({}) << u"Today, %1"_s << u"今天 %1"_s;
        QTest::newRow("one event") << calendar(plain) << u"Today, %1 · 1 event"_s << u"今天 %1 · 1 个日程"_s;
        QTest::newRow("events, one repeats")
            << calendar(plain + repeating) << u"Today, %1 · 2 events, 1 repeats"_s << u"今天 %1 · 2 个日程，1 个重复"_s;
        QTest::newRow("all") << calendar(plain + repeating + repeating + skipped)
                             << u"Today, %1 · 3 events, 2 repeat · 1 skipped"_s
                             << u"今天 %1 · 3 个日程，2 个重复 · 跳过 1 个"_s;
        QTest::newRow("all skipped") << calendar(skipped) << u"Today, %1 · 1 skipped"_s << u"今天 %1 · 跳过 1 个"_s;
    }

    void eachLinkTellsHowItIsInTheLanguage()
    {
        QFETCH(const QByteArray, body);
        QFETCH(const QString, english);
        QFETCH(const QString, chinese);
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        m_planner->feedDownloader.answer(0, body);

        const QString time = m_planner->calendar.dateTime(m_planner->clock.now()).toString(u"HH:mm");
        QCOMPARE(health(), QStringList(english.arg(time)));
        m_planner->store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(health(), QStringList(chinese.arg(time)));
    }

    void anUpdateChangesOneRow()
    {
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        whenTheUserAdds(QStringLiteral("https://example.org/b.ics"));
        m_planner->feedDownloader.answer(0, calendar({}));
        QSignalSpy changed(m_sheet->feeds(), &QAbstractItemModel::dataChanged);
        QSignalSpy reset(m_sheet->feeds(), &QAbstractItemModel::modelReset);

        m_sheet->updateFeed(1);
        QCOMPARE(m_planner->feedDownloader.pendingUrl(1), QUrl(QStringLiteral("https://example.org/b.ics")));
        m_planner->feedDownloader.answer(1, calendar({}));

        QCOMPARE(changed.size(), 1);
        QCOMPARE(reset.size(), 0);
    }

    void aFailedLinkSaysSinceWhenAndWhyUntilAnUpdateSucceeds()
    {
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        whenTheUserAdds(QStringLiteral("https://example.org/b.ics"));
        m_planner->feedDownloader.answer(0, Error{ErrorCode::DownloadHostNotFound, {}});
        const QString since = m_planner->store->momentText(m_planner->clock.now());
        QCOMPARE(health(), (QStringList{u"Not read since %1: the server could not be found."_s.arg(since), QString()}));
        QVERIFY(m_sheet->feeds()->rows().first().isFailing);
        QVERIFY(!m_sheet->feeds()->rows().last().isFailing);

        m_sheet->updateFeed(0);
        m_planner->feedDownloader.answer(1, calendar(vevent({})));
        QVERIFY(!m_sheet->feeds()->rows().first().isFailing);
        m_planner->clock.advance(86400);
        const QString later = m_planner->store->momentText(m_planner->clock.now());
        m_sheet->updateFeed(0);
        m_planner->feedDownloader.answer(1, Error{ErrorCode::DownloadTimedOut, {}});
        QCOMPARE(health().first(),
                 u"Not read since %1: the server does not answer. The 1 schedule read before is kept."_s.arg(later));
        m_planner->store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(health().first(), u"自 %1 起无法读取：服务器没有回应。之前读取的 1 个日程仍保留。"_s.arg(
                                       m_planner->store->momentText(m_planner->clock.now())));
    }

    void aTrialEndsWhenTheLinkIsEditedAndItsChoicesAreAddedWithIt()
    {
        LinkTrialModel &trial = *m_sheet->trial();
        QVERIFY(!trial.canTry());
        trial.setUrl(QStringLiteral("https://example.org/a.ics"));
        trial.tryLink();
        QCOMPARE(trial.state(), LinkTrialModel::State::Running);
        QVERIFY(!trial.canTry());
        trial.setUrl(QStringLiteral("https://example.org/b.ics"));
        QCOMPARE(trial.state(), LinkTrialModel::State::Idle);
        m_planner->feedDownloader.answer(0, calendar({}));
        trial.tryLink();
        m_planner->feedDownloader.answer(0, calendar("X-WR-CALNAME:Timetable\r\n" + vevent("RRULE:FREQ=DAILY\r\n") +
                                                     "BEGIN:VEVENT\r\nEND:VEVENT\r\n"));

        QTRY_COMPARE(trial.state(), LinkTrialModel::State::Readable);
        QCOMPARE(trial.title() + trial.name(), u"This link can be read: Timetable"_s);
        QCOMPARE(trial.facts(), u"1 event from Jun 1, 2026 to Jun 1, 2026. 1 of them repeats, 1 would be skipped."_s);
        m_planner->store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(trial.facts(), u"共 1 个日程，2026年6月1日至2026年6月1日。其中 1 个重复，会跳过 1 个。"_s);
        QVERIFY(m_planner->store->calendarFeeds().isEmpty());
        trial.setKeptUpToDate(true);
        trial.setReadsRepetitions(true);
        // The expander of the test finds nothing.
        QCOMPARE(trial.facts(), u"其中没有日程。"_s);
        m_sheet->addTypedLink();
        const CalendarFeed &added = m_planner->store->calendarFeeds().constFirst();
        QCOMPARE(added.isKeptUpToDate, std::optional(true));
        QCOMPARE(added.readsRepetitions, std::optional(true));
        QCOMPARE(trial.url(), QString());
        QCOMPARE(trial.state(), LinkTrialModel::State::Idle);
        QVERIFY(!trial.isKeptUpToDate());
    }

    void aFailedTrialSaysWhy()
    {
        m_sheet->trial()->setUrl(QStringLiteral("https://example.org/a.ics"));
        m_sheet->trial()->tryLink();
        m_planner->feedDownloader.answer(0, FeedAnswer{.status = 404});
        QTRY_COMPARE(m_sheet->trial()->title(), u"This link cannot be read: the server says the file is gone (404)."_s);
    }

    void aWebcalLinkIsOfferedAsHttps_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("offered");
        QTest::newRow("webcal") << u"webcal://example.org/a.ics"_s << u"https://example.org/a.ics"_s;
        QTest::newRow("webcals") << u" WebCals://example.org/a.ics"_s << u"https://example.org/a.ics"_s;
        QTest::newRow("only mentioned") << u"https://example.org/webcal://a"_s << QString();
        QTest::newRow("ftp") << u"ftp://example.org/a.ics"_s << QString();
    }

    void aWebcalLinkIsOfferedAsHttps()
    {
        QFETCH(const QString, typed);
        QFETCH(const QString, offered);
        m_sheet->trial()->setUrl(typed);
        QCOMPARE(m_sheet->trial()->state() == LinkTrialModel::State::OtherScheme, !offered.isEmpty());
        if (offered.isEmpty())
            return;
        m_sheet->addTypedLink();
        QVERIFY(m_planner->store->calendarFeeds().isEmpty());
        m_sheet->trial()->tryLink();
        QCOMPARE(m_sheet->trial()->url(), offered);
        QCOMPARE(m_sheet->trial()->state(), LinkTrialModel::State::Running);
        m_sheet->addTypedLink();
        QCOMPARE(m_planner->store->calendarFeeds().constFirst().urlString, offered);
    }

    void theDetailsListWhatWasSkippedWithReasonAndLine()
    {
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        m_planner->feedDownloader.answer(
            0, calendar("X-WR-CALNAME:Timetable\r\nX-PUBLISHED-TTL:PT6H\r\n" + vevent({}) +
                        "BEGIN:VEVENT\r\nSUMMARY:Exam\r\nEND:VEVENT\r\n"
                        "BEGIN:VEVENT\r\nDTSTART:20261012T080000\r\nDTEND:20261012T25\r\nEND:VEVENT\r\n"));
        m_sheet->showDetails(0);
        LinkDetailsModel &details = *m_sheet->details();

        QCOMPARE(details.name(), u"a"_s);
        QCOMPARE(details.ownName(), u"Timetable"_s);
        QCOMPARE(details.contents(), u"1 event"_s);
        QCOMPARE(details.keeping(), u"Updates every 6 hours and at each start; a failure changes nothing."_s);
        QCOMPARE(details.repetitions(), u"When off, only the first of each is read."_s);
        QStringList rows;
        for (const SkippedRow &row : details.skipped()->rows())
            rows.append(QStringList{row.title, row.day, row.reason}.join(u" | "));
        QCOMPARE(rows, (QStringList{
                           u"Exam | no date | No start time · line 8"_s,
                           u"Untitled event | Oct 12, 2026 | The end time cannot be read: “20261012T25” · line 13"_s}));

        details.rename(details.ownName());
        details.setColor(u"#C9630A"_s);
        QCOMPARE(details.ownName(), QString());
        QCOMPARE(details.colorKey(), u"#C9630A"_s);
        details.rename(u"  "_s);
        QCOMPARE(m_planner->store->calendarFeeds().constFirst().name, u"Timetable"_s);
        details.deleteLink();
        QVERIFY(!details.isOpen());
    }

    void linkedCalendarsAreShownAndHiddenLikeTheOthers()
    {
        PlannerStore &store = *m_planner->store;
        m_planner->eventStore.addCalendar({.identifier = QStringLiteral("work"),
                                           .title = QStringLiteral("Work"),
                                           .sourceTitle = QStringLiteral("A")});
        store.calendarSync()->requestCalendarAccessAndLoad();
        QTRY_COMPARE(store.calendarSync()->availableCalendars().size(), 1);
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        CalendarGroupsModel groups;
        groups.setPurpose(CalendarGroupsModel::Purpose::Display);
        groups.setStore(&store);
        const QString link = feedCalendarIdentifier(store.calendarFeeds().first().id);
        store.setVisibleCalendarIDs({});
        QCOMPARE(isChecked(*groups.links(), 0), false);

        groups.chooseAll();
        QCOMPARE(store.visibleCalendarIDs(), (QSet<QString>{QStringLiteral("work"), link}));
        QCOMPARE(isChecked(*groups.links(), 0), true);

        groups.chooseLink(0, false);
        QCOMPARE(store.visibleCalendarIDs(), QSet<QString>{QStringLiteral("work")});

        groups.setPurpose(CalendarGroupsModel::Purpose::Import);
        QCOMPARE(groups.linkCount(), 0);
    }

private:
    static bool isChecked(const RowListModel<CalendarChoiceRow> &rows, int row)
    {
        return rows.rows().at(row).isChecked;
    }

    void whenTheUserAdds(const QString &link)
    {
        m_sheet->trial()->setUrl(link);
        m_sheet->addTypedLink();
    }
    QStringList health()
    {
        QStringList texts;
        for (const CalendarFeedRow &row : m_sheet->feeds()->rows())
            texts.append(row.health);
        return texts;
    }

    std::unique_ptr<StoreUnderTest> m_planner;
    std::unique_ptr<CalendarSelectionModel> m_sheet;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

TESSALY_TEST_MAIN(CalendarSelectionTest)
#include "CalendarSelectionTest.moc"
