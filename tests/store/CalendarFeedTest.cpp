#include "model/FeedMerge.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QSignalSpy>

using namespace tessaly;

namespace {

QByteArray calendar(const QByteArrayList &titles, qsizetype padding = 0)
{
    QByteArray text = "BEGIN:VCALENDAR\n";
    for (const QByteArray &title : titles)
        text +=
            "BEGIN:VEVENT\nDTSTART:20240902\nDTEND:20240903\nUID:" + title + "\nSUMMARY:" + title + "\nEND:VEVENT\n";
    return text + "X-PADDING:" + QByteArray(padding, 'x') + "\n";
}

constexpr qsizetype large = 2 * 1024 * 1024;

} // namespace

class CalendarFeedTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_planner = std::make_unique<StoreUnderTest>();
        m_planner->startInEnglish();
    }

    void aTypedLinkIsAcceptedOrRefused_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("name");

        const auto row = [](const char *typed, const char *name) {
            QTest::newRow(typed) << QString::fromUtf8(typed) << QString::fromUtf8(name);
        };
        row("https://example.org/timetable.ics", "timetable");
        row("  \t https://example.org/a/b.tar.gz \r\n", "b.tar");
        row("\u200B\uFEFF\u200E https://example.org/c.ics\u200F\u200B\u0007", "c");
        row("HTTP://example.org/x", "x");
        row("https://example.org/", "iCalendar");
        row("https://example.org", "iCalendar");
        row("https://example.org/a.ics/", "a");
        row("https://example.org/.ics?x=/y.z", ".ics");
        row("https://example.org/%E8%AF%BE%E8%A1%A8.ics", "课表");
        row("https://example.org/课表.ics", "课表");
        row("https://example.org/a%2Fb.ics", "a/b");
        for (const char *refused :
             {"", "   ", "webcal://example.org/a.ics", "ftp://example.org/a.ics", "example.org/a.ics", "not a link",
              "http://", "https://exa mple.org/a.ics", "file:///a.ics"})
            row(refused, "");
    }

    void aTypedLinkIsAcceptedOrRefused()
    {
        QFETCH(const QString, typed);
        QFETCH(const QString, name);

        const bool isAccepted = store().calendarLinks().addCalendarFeed(typed);

        QCOMPARE(isAccepted, !name.isEmpty());
        QCOMPARE(store().calendarFeeds().size(), isAccepted ? 1 : 0);
        QCOMPARE(downloads().pendingCount(), isAccepted ? 1 : 0);
        QCOMPARE(m_planner->message(), isAccepted ? QStringLiteral("Updating linked calendar…")
                                                  : QStringLiteral("Enter a valid iCalendar link."));
        if (!isAccepted)
            return;
        const CalendarFeed &feed = store().calendarFeeds().constFirst();
        QCOMPARE(feed.name, name);
        static const QRegularExpression unseen(QStringLiteral("[\\s\\x{7}\\x{200B}-\\x{200F}\\x{FEFF}]"));
        QCOMPARE(feed.urlString, QString(typed).remove(unseen));
        QCOMPARE(feed.lastUpdated, std::nullopt);
        QVERIFY(store().visibleCalendarIDs().contains(feedCalendarIdentifier(feed.id)));
    }

    void aRefreshReplacesTheSchedulesOfItsFeedInOneAssignment()
    {
        store().addSchedule(scheduleTitled(QStringLiteral("Own")));
        const QUuid feed = addedFeed();
        QSignalSpy changes(&store(), &PlannerStore::schedulesChanged);

        downloads().answer(0, calendar({"a", "b"}));

        QCOMPARE(titles(),
                 (QStringList{QStringLiteral("Own"), QStringLiteral("SUMMARY:a"), QStringLiteral("SUMMARY:b")}));
        QCOMPARE(changes.size(), 1);
        QCOMPARE(changes.takeFirst().constFirst().value<RowsChange>(), (RowsChange{RowsChange::Kind::Inserted, 1, 2}));
        QCOMPARE(store().calendarFeeds().constFirst().lastUpdated, m_planner->clock.now());
        QCOMPARE(m_planner->message(), QStringLiteral("Linked calendar updated: 2 events imported."));
        QCOMPARE(m_planner->saved()->schedules, store().schedules());

        ScheduleItem noted = store().schedules().at(2);
        noted.notes = QStringLiteral("Mine");
        store().updateSchedule(noted);
        changes.clear();
        store().calendarLinks().refreshCalendarFeed(feed);
        downloads().answer(0, calendar({"b", "c"}));

        QCOMPARE(titles(),
                 (QStringList{QStringLiteral("Own"), QStringLiteral("SUMMARY:b"), QStringLiteral("SUMMARY:c")}));
        QCOMPARE(store().schedules().at(1), noted);
        QCOMPARE(changes.size(), 1);
    }

    void aRefreshThatBringsTheSameChangesOnlyItsTime()
    {
        const QUuid feed = addedFeed();
        downloads().answer(0, calendar({"a", "b"}));
        // An own schedule behind them does not make a difference.
        store().addSchedule(scheduleTitled(QStringLiteral("Own")));
        QSignalSpy changes(&store(), &PlannerStore::schedulesChanged);
        const auto backup = m_planner->saved(keys::backupStorageKey);
        m_planner->clock.advance(60);

        store().calendarLinks().refreshCalendarFeed(feed);
        downloads().answer(0, calendar({"a", "b"}));

        QCOMPARE(changes.size(), 0);
        QCOMPARE(m_planner->saved(keys::backupStorageKey), backup);
        QCOMPARE(store().calendarFeeds().constFirst().lastUpdated, m_planner->clock.now());
        QCOMPARE(m_planner->message(), QStringLiteral("Linked calendar updated: 2 events imported."));
        for (const auto &events : {QList<QByteArray>{"b", "a"}, {"a"}, {"a", "b", "c"}}) {
            store().calendarLinks().refreshCalendarFeed(feed);
            downloads().answer(0, calendar(events));
        }
        QCOMPARE(changes.size(), 3);
    }

    void messagesFollowTheLanguage()
    {
        store().setInterfaceLanguage(AppLanguage::Chinese);
        store().calendarLinks().addCalendarFeed(QStringLiteral("webcal://example.org"));
        QCOMPARE(m_planner->message(), QStringLiteral("请输入有效的 iCalendar 链接。"));
        const QUuid feed = addedFeed();
        QCOMPARE(m_planner->message(), QStringLiteral("正在更新链接日历…"));
        downloads().answer(0, QByteArray("BEGIN:VEVENT\nDTSTART:20240902\nDTEND:20240903\nEND:VEVENT"));
        QCOMPARE(m_planner->message(), QStringLiteral("链接日历已更新，共导入 1 个日程。"));
        QCOMPARE(titles(), QStringList{QStringLiteral("未命名日程")});
        store().calendarLinks().refreshCalendarFeed(feed);
        downloads().answer(0, Error{ErrorCode::DownloadTimedOut, {}});
        QCOMPARE(m_planner->message(), QStringLiteral("链接日历更新失败：服务器长时间没有响应。"));
        const QSignalSpy told(m_planner->store.get(), &PlannerStore::calendarSyncMessageReported);
        store().setInterfaceLanguage(AppLanguage::English);
        QCOMPARE(m_planner->message(),
                 QStringLiteral("Linked calendar update failed: The server did not answer in time."));
        QCOMPARE(told.size(), 0);
    }

    void aFailedRefreshChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("message");
        QTest::newRow("no body") << QByteArray() << QStringLiteral("The server did not answer in time.");
        const QString notText = QStringLiteral("The file is not text encoded as UTF-8.");
        QTest::newRow("Latin-1") << QByteArray("SUMMARY:Caf\xE9") << notText;
        QTest::newRow("large Latin-1") << QByteArray(large, '\xE9') << notText;
    }

    void aFailedRefreshChangesNothing()
    {
        QFETCH(const QByteArray, body);
        QFETCH(const QString, message);
        const QUuid feed = addedFeed();
        downloads().answer(0, calendar({"a"}));
        const QList<ScheduleItem> schedules = store().schedules();
        const QList<CalendarFeed> feeds = store().calendarFeeds();

        m_planner->clock.advance(60);
        store().calendarLinks().refreshCalendarFeed(feed);
        if (body.isEmpty())
            downloads().answer(0, Error{ErrorCode::DownloadTimedOut, {}});
        else
            downloads().answer(0, body);

        QTRY_COMPARE(m_planner->message(), QStringLiteral("Linked calendar update failed: ") + message);
        QCOMPARE(store().schedules(), schedules);
        QCOMPARE(store().calendarFeeds(), feeds);
    }

    void aPageWithoutEventsEmptiesTheFeed()
    {
        const QUuid feed = addedFeed();
        downloads().answer(0, calendar({"a"}));
        store().calendarLinks().refreshCalendarFeed(feed);
        downloads().answer(0, QByteArray("<html>404</html>"));

        QCOMPARE(titles(), QStringList());
        QCOMPARE(m_planner->message(), QStringLiteral("Linked calendar updated: 0 events imported."));
    }

    void ofOverlappingRefreshesTheLastResultStays()
    {
        const QUuid feed = addedFeed();
        store().calendarLinks().refreshCalendarFeed(feed);
        store().calendarLinks().refreshCalendarFeed(feed);

        downloads().answer(2, calendar({"third"}));
        downloads().answer(0, calendar({"first"}, large));
        downloads().answer(0, calendar({"second"}));

        QTRY_COMPARE(titles(), QStringList{QStringLiteral("SUMMARY:second")});
        QCoreApplication::processEvents();
        QCOMPARE(titles(), QStringList{QStringLiteral("SUMMARY:second")});
    }

    void aLargeCalendarIsReadAsideAndThenApplied()
    {
        addedFeed();
        downloads().answer(0, calendar({"a"}, large));

        QCOMPARE(titles(), QStringList());
        QTRY_COMPARE(titles(), QStringList{QStringLiteral("SUMMARY:a")});
    }

    void aStoreMayGoWhileACalendarIsReadOrDownloaded()
    {
        const QUuid feed = addedFeed();
        store().calendarLinks().refreshCalendarFeed(feed);
        downloads().answer(0, calendar({"a"}, large));
        m_planner->store.reset();
        downloads().answer(0, calendar({"a"}));
        QCoreApplication::processEvents();

        QCOMPARE(m_planner->saved(), std::nullopt);
    }

    void aFeedDeletedDuringItsDownloadStaysDeleted_data()
    {
        QTest::addColumn<bool>("isSuccess");
        QTest::newRow("success") << true;
        QTest::newRow("failure") << false;
    }

    void aFeedDeletedDuringItsDownloadStaysDeleted()
    {
        QFETCH(const bool, isSuccess);
        const QUuid feed = addedFeed();
        store().calendarLinks().deleteCalendarFeed(feed);
        const QString message = m_planner->message();

        if (isSuccess)
            downloads().answer(0, calendar({"a"}));
        else
            downloads().answer(0, Error{ErrorCode::DownloadFailed, {}});

        QCOMPARE(titles(), QStringList());
        QVERIFY(store().calendarFeeds().isEmpty());
        QCOMPARE(m_planner->message(), message);
    }

    void anUpdateIsNoLongerReportedWhenNothingIsDownloaded()
    {
        const QString updating = QStringLiteral("Updating linked calendar…");
        store().calendarLinks().deleteCalendarFeed(addedFeed());
        QCOMPARE(store().calendarSyncMessage(), std::nullopt);
        downloads().answer(0, calendar({"a"}));

        const QUuid kept = addedFeed();
        downloads().answer(0, calendar({"a"}));
        store().calendarLinks().deleteCalendarFeed(addedFeed());
        QCOMPARE(store().calendarSyncMessage(), std::nullopt);

        const QUuid deleted = addedFeed();
        store().calendarLinks().refreshCalendarFeed(deleted);
        store().calendarLinks().refreshCalendarFeed(kept);
        store().calendarLinks().deleteCalendarFeed(deleted);
        QCOMPARE(m_planner->message(), updating);
        downloads().answer(3, Error{ErrorCode::DownloadTimedOut, {}});
        store().calendarLinks().refreshCalendarFeed(kept);
        store().calendarLinks().deleteCalendarFeed(kept);
        QCOMPARE(store().calendarSyncMessage(), std::nullopt);
    }

    void deletingAFeedRemovesExactlyItsSchedules()
    {
        store().addSchedule(scheduleTitled(QStringLiteral("Own")));
        const QUuid first = addedFeed();
        addedFeed();
        downloads().answer(0, calendar({"a"}));
        downloads().answer(0, calendar({"b"}));

        store().calendarLinks().deleteCalendarFeed(first);

        QCOMPARE(titles(), (QStringList{QStringLiteral("Own"), QStringLiteral("SUMMARY:b")}));
        QCOMPARE(store().calendarFeeds().size(), 1);
        QCOMPARE(m_planner->saved()->schedules.size(), 2);
        const QList<CalendarFeed> feeds = store().calendarFeeds();
        QCOMPARE(m_planner->start().calendarFeeds(), feeds);
    }

    void anUnknownFeedIsNotRefreshed()
    {
        store().calendarLinks().refreshCalendarFeed(QUuid::createUuid());

        QCOMPARE(downloads().pendingCount(), 0);
        QCOMPARE(m_planner->message(), QString());
    }

private:
    PlannerStore &store() { return *m_planner->store; }
    FakeFeedDownloader &downloads() { return m_planner->feedDownloader; }
    QUuid addedFeed()
    {
        store().calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/timetable.ics"));
        return store().calendarFeeds().constLast().id;
    }
    QStringList titles()
    {
        QStringList found;
        for (const ScheduleItem &item : store().schedules())
            found.append(item.title);
        return found;
    }

    std::unique_ptr<StoreUnderTest> m_planner;
};

TESSALY_TEST_MAIN(CalendarFeedTest)
#include "CalendarFeedTest.moc"
