#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"
#include "views/schedule/CalendarGroupsModel.h"
#include "views/schedule/CalendarSelectionModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace tessaly;

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

    void anUpdateShowsItsTimeInTheLanguageAndChangesOneRow()
    {
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        whenTheUserAdds(QStringLiteral("https://example.org/b.ics"));
        m_planner->feedDownloader.answer(0, QByteArray());
        QSignalSpy changed(m_sheet->feeds(), &QAbstractItemModel::dataChanged);
        QSignalSpy reset(m_sheet->feeds(), &QAbstractItemModel::modelReset);

        m_sheet->updateFeed(1);
        QCOMPARE(m_planner->feedDownloader.pendingUrl(1), QUrl(QStringLiteral("https://example.org/b.ics")));
        m_planner->feedDownloader.answer(1, QByteArray());

        const QString time = m_planner->store->dateText(m_planner->clock.now(), false);
        QCOMPARE(listed(), (QStringList{QStringLiteral("a: ") + time, QStringLiteral("b: ") + time}));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(reset.size(), 0);

        m_planner->store->setInterfaceLanguage(AppLanguage::Chinese);
        const QString chinese = m_planner->store->dateText(m_planner->clock.now(), false);
        QVERIFY(chinese != time);
        QCOMPARE(listed(), (QStringList{QStringLiteral("a: ") + chinese, QStringLiteral("b: ") + chinese}));
    }

    void aFailedLinkSaysWhyUntilAnUpdateSucceeds()
    {
        whenTheUserAdds(QStringLiteral("https://example.org/a.ics"));
        whenTheUserAdds(QStringLiteral("https://example.org/b.ics"));
        m_planner->feedDownloader.answer(0, Error{ErrorCode::DownloadHostNotFound, {}});
        QCOMPARE(failures(), (QStringList{QStringLiteral("The server could not be found."), QString()}));
        m_planner->store->setInterfaceLanguage(AppLanguage::Chinese);
        QCOMPARE(failures(), (QStringList{QStringLiteral("找不到服务器。"), QString()}));

        m_sheet->updateFeed(0);
        m_planner->feedDownloader.answer(1, QByteArray("\xE9"));
        QCOMPARE(failures().first(), QStringLiteral("文件不是 UTF-8 编码的文本。"));
        m_sheet->updateFeed(0);
        m_planner->feedDownloader.answer(1, QByteArray());

        QCOMPARE(failures(), (QStringList{QString(), QString()}));
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
        m_sheet->setFeedURL(link);
        m_sheet->addTypedLink();
    }
    QStringList failures()
    {
        QStringList texts;
        for (const CalendarFeedRow &row : m_sheet->feeds()->rows())
            texts.append(row.failure);
        return texts;
    }
    QStringList listed()
    {
        QStringList rows;
        for (const CalendarFeedRow &row : m_sheet->feeds()->rows())
            rows.append(row.name + QStringLiteral(": ") + row.lastUpdated);
        return rows;
    }

    std::unique_ptr<StoreUnderTest> m_planner;
    std::unique_ptr<CalendarSelectionModel> m_sheet;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

TESSALY_TEST_MAIN(CalendarSelectionTest)
#include "CalendarSelectionTest.moc"
