#include "tests/store/StoreUnderTest.h"
#include "tests/support/TestMain.h"
#include "views/versions/VersionsModel.h"

using namespace tessaly;
using namespace Qt::StringLiterals;

namespace {

constexpr double hour = 3600;
constexpr double day = 24 * hour;

/// The sheet over a planner in English. It is Nov 24, 2026, 18:02 in Vienna.
class Sheet : public StoreUnderTest
{
public:
    Sheet()
    {
        clock.setNow(calendar.instant(QDate(2026, 11, 24), QTime(18, 2)));
        startInEnglish().generations().start(u"1.0"_s);
        m_model.setStore(store.get());
    }

    VersionsModel &model() { return m_model; }

    void keepGeneration(double secondsAgo, GenerationReason reason = GenerationReason::Hourly,
                        const QString &detail = {})
    {
        backups.keep({.moment = clock.now().plus(-secondsAgo), .reason = reason, .detail = detail},
                     [](const auto &) {});
    }

    void open() { m_model.begin({}); }

    [[nodiscard]] QStringList versions()
    {
        QStringList lines;
        for (const VersionRow &row : m_model.versions()->rows())
            lines.append(QStringList{row.group, row.title, row.moment}.join(u'|'));
        return lines;
    }

    /// Such as "[x] Schedules: 34 back" and "  [ ] + Lecture: Nov 23, 09:00".
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        for (const DifferenceListRow &row : m_model.differences()->rows()) {
            const QString box = row.isChecked ? u"[x] "_s : row.isPartial ? u"[-] "_s : u"[ ] "_s;
            const QString sign = row.restoration == Restoration::BringBack ? u"+ "_s
                                 : row.restoration == Restoration::Change  ? u"~ "_s
                                                                           : u"- "_s;
            if (row.kind == DifferenceListRow::Kind::Area)
                lines.append(box + row.title + u": "_s + row.detail);
            else if (row.kind == DifferenceListRow::Kind::Record)
                lines.append(u"  "_s + box + sign + row.title + u": "_s + row.detail);
            else
                lines.append(u"  "_s + row.title);
        }
        return lines;
    }

    [[nodiscard]] int rowOf(const QString &title)
    {
        const QList<DifferenceListRow> &rows = m_model.differences()->rows();
        return static_cast<int>(std::ranges::find(rows, title, &DifferenceListRow::title) - rows.cbegin());
    }

private:
    VersionsModel m_model;
};

} // namespace

class VersionsSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void versionsStandUnderTheirHeadings()
    {
        Sheet sheet;
        sheet.keepGeneration(5 * 366 * day);
        sheet.keepGeneration(60 * day);
        sheet.keepGeneration(3 * day, GenerationReason::Sync, u"34"_s);
        sheet.keepGeneration(2 * day);
        sheet.keepGeneration(day + 2 * hour);
        sheet.keepGeneration(day + hour);
        sheet.keepGeneration(8 * hour);
        sheet.keepGeneration(60, GenerationReason::Clear);
        sheet.open();
        QCOMPARE(sheet.versions(),
                 (QStringList{u"Restore points|Before clearing content|Nov 24, 18:01"_s,
                              u"Restore points|Before a sync that removed 34 schedules|Nov 21, 18:02"_s,
                              u"Today|10:02|"_s, u"Days|Yesterday 17:02|"_s, u"Days|Yesterday 16:02|"_s,
                              u"Days|Sun, Nov 22|"_s, u"Months|September 2026|"_s, u"Months|November 2021|"_s}));
        QCOMPARE(sheet.model().heading(), u"Before clearing content"_s);
        QCOMPARE(sheet.model().moment(), u"Nov 24, 2026, 18:01"_s);
        sheet.model().setCurrent(2);
        QCOMPARE(sheet.model().heading(), u"Nov 24, 2026, 10:02"_s);
        QCOMPARE(sheet.model().moment(), QString());
    }

    void whatComesBackIsCheckedAtFirst()
    {
        Sheet sheet;
        for (int i = 1; i <= 5; ++i)
            sheet.store->addSchedule(scheduleTitled(u"s%1"_s.arg(i), sheet.clock.now().seconds));
        const ReminderItem changed{.title = u"Report"_s};
        sheet.store->addReminder(changed);
        sheet.store->addReminder({.title = u"Books"_s, .dueDate = sheet.clock.now().plus(day)});
        sheet.store->addGoal({.title = u"Goal"_s});
        sheet.keepGeneration(0);
        while (!sheet.store->schedules().isEmpty())
            sheet.store->deleteSchedule(sheet.store->schedules().constFirst());
        sheet.store->removeReminder(sheet.store->reminders().constLast().id);
        ReminderItem other = changed;
        other.dueDate = sheet.clock.now();
        sheet.store->updateReminder(other);
        sheet.store->addReminder({.title = u"New"_s});
        Goal goal = sheet.store->goals().constFirst();
        goal.progress = 0.5;
        sheet.store->updateGoal(goal);

        sheet.open();

        QCOMPARE(sheet.model().summary(), u"Restoring everything would bring back 6, change 2 and remove 1."_s);
        QCOMPARE(sheet.rows(),
                 (QStringList{u"[x] Schedules: 5 back"_s, u"  [x] + s1: Nov 24, 18:02"_s,
                              u"  [x] + s2: Nov 24, 18:02"_s, u"  [x] + s3: Nov 24, 18:02"_s, u"  2 more"_s,
                              u"[-] To-dos: 1 back · 1 changed · 1 removed"_s, u"  [x] + Books: due Nov 25, 18:02"_s,
                              u"  [ ] ~ Report: another due date"_s, u"  [ ] - New: added since then"_s,
                              u"[ ] Goals: 1 changed"_s, u"[ ] Documents: no difference"_s}));

        sheet.model().toggleOpen(sheet.rowOf(u"2 more"_s));
        QCOMPARE(sheet.rows().at(5), u"  [x] + s5: Nov 24, 18:02"_s);
        sheet.model().toggleOpen(0);
        QCOMPARE(sheet.rows().at(1), u"[-] To-dos: 1 back · 1 changed · 1 removed"_s);
        sheet.model().setChecked(0, false);
        QCOMPARE(sheet.rows().constFirst(), u"[ ] Schedules: 5 back"_s);
        sheet.model().setChecked(sheet.rowOf(u"To-dos"_s), true);
        sheet.model().setChecked(sheet.rowOf(u"New"_s), false);

        sheet.model().restoreSelected();

        QCOMPARE(sheet.model().outcome(), u"Restored 2 items."_s);
        QCOMPARE(sheet.store->schedules().size(), 0);
        QStringList titles;
        for (const ReminderItem &item : sheet.store->reminders())
            titles.append(item.title);
        titles.sort();
        QCOMPARE(titles, (QStringList{u"Books"_s, u"New"_s, u"Report"_s}));
        QVERIFY(!sheet.store->reminders().constFirst().dueDate);
        QVERIFY2(sheet.model().canRestoreSelected(), "what is left to come back is checked again");
    }

    void restoringAllLeavesNoDifferenceAndCanBeUndone()
    {
        Sheet sheet;
        sheet.store->addGoal({.title = u"a"_s});
        sheet.keepGeneration(0);
        sheet.store->clearPersonalContent();
        sheet.store->setPreferredName(u"Ada"_s);
        sheet.open();
        sheet.model().setCurrent(1);
        QCOMPARE(sheet.rows().constLast(), u"[ ] Settings: 1 changed"_s);
        sheet.model().restoreAll();
        QCOMPARE(sheet.model().outcome(), u"Restored 2 items."_s);
        QVERIFY(!sheet.model().canRestoreAll());
        QCOMPARE(sheet.store->preferredName(), QString());
        QCOMPARE(sheet.versions().constFirst(), u"Restore points|Before restoring|Nov 24, 18:02"_s);
        sheet.store->undo();
        QVERIFY(sheet.store->goals().isEmpty());
        QCOMPARE(sheet.store->preferredName(), u"Ada"_s);
    }

    void aDamagedVersionSaysSo()
    {
        Sheet sheet;
        sheet.keepGeneration(0);
        sheet.backups.failWith(Error{ErrorCode::StorageCorrupt, {}});
        sheet.open();
        QCOMPARE(sheet.model().summary(), u"This version is damaged and cannot be restored. Choose another one."_s);
        QVERIFY(!sheet.model().canRestoreAll());
    }

    void withoutVersionsTheSheetSaysSo()
    {
        Sheet sheet;
        sheet.open();
        QCOMPARE(sheet.model().heading(), u"No earlier versions yet."_s);
        QVERIFY(!sheet.model().canRestoreAll());
    }
};

TESSALY_TEST_MAIN(VersionsSheetTest)
#include "VersionsSheetTest.moc"
