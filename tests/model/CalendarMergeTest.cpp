#include "model/CalendarMerge.h"
#include "model/Uuid.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

using namespace tessaly;

namespace {

const QString work = QStringLiteral("work");
const QString home = QStringLiteral("home");
constexpr Instant from{1000};
constexpr Instant to{2000};

CalendarEvent eventOf(const QString &identifier, double start = 1500, const QString &calendar = work)
{
    return {.eventIdentifier = identifier,
            .calendarIdentifier = calendar,
            .uid = QStringLiteral("uid-") + identifier,
            .title = QStringLiteral("Event ") + identifier,
            .startDate = {start},
            .endDate = {start + 60},
            .notes = QStringLiteral("from the calendar")};
}

CalendarSyncInput inputOf(const QList<CalendarEvent> &events)
{
    return {.events = events,
            .calendars = {{.identifier = work, .colorHex = QStringLiteral("#112233")}, {.identifier = home}},
            .from = from,
            .to = to,
            .untitled = QStringLiteral("Untitled")};
}

/// What a sync makes of the event the first time.
ScheduleItem scheduleOf(const CalendarEvent &event)
{
    return mergeCalendars(inputOf({event}), {}).schedules->constFirst();
}

QList<ScheduleItem> schedulesOf(qsizetype count)
{
    QList<ScheduleItem> schedules;
    for (qsizetype i = 0; i < count; ++i)
        schedules.append(scheduleOf(eventOf(QString::number(i))));
    return schedules;
}

QList<CalendarEvent> eventsOf(qsizetype first, qsizetype count)
{
    QList<CalendarEvent> events;
    for (qsizetype i = first; i < count; ++i)
        events.append(eventOf(QString::number(i)));
    return events;
}

/// The same rules in the plainest way, for one calendar at a time and without thought for speed.
QList<ScheduleItem> naiveMerge(const CalendarSyncInput &input, const QList<ScheduleItem> &before, QStringList &held)
{
    const auto isFetched = [&](const QString &identifier) {
        return std::ranges::any_of(input.events,
                                   [&](const auto &event) { return event.eventIdentifier == identifier; });
    };
    const auto isRemovable = [&](const ScheduleItem &item, const SyncedCalendar &calendar) {
        return item.calendarIdentifier == calendar.identifier && calendar.isWhole && item.calendarEventIdentifier &&
               item.date >= input.from && item.date < input.to && !isFetched(*item.calendarEventIdentifier);
    };
    QList<ScheduleItem> after = before;
    QStringList taking;
    for (const SyncedCalendar &calendar : input.calendars) {
        const auto belongs = [&](const ScheduleItem &item) { return item.calendarIdentifier == calendar.identifier; };
        const auto isQuestioned = [&](const ScheduleItem &item) {
            return isRemovable(item, calendar) && !input.approvedRemovals.contains(item.id);
        };
        const qsizetype questioned = std::ranges::count_if(before, isQuestioned);
        if (questioned > 20 && questioned * 10 > std::ranges::count_if(before, belongs)) {
            held.append(calendar.identifier);
            continue;
        }
        taking.append(calendar.identifier);
        after.removeIf([&](const ScheduleItem &item) { return isRemovable(item, calendar); });
    }
    for (const CalendarEvent &event : input.events) {
        if (!taking.contains(event.calendarIdentifier))
            continue;
        const auto calendar = std::ranges::find(input.calendars, event.calendarIdentifier, &SyncedCalendar::identifier);
        ScheduleItem *match = nullptr;
        for (ScheduleItem &item : after) {
            if (item.calendarEventIdentifier == event.eventIdentifier)
                match = &item;
        }
        if (match) {
            match->title = event.title.value_or(input.untitled);
            match->date = event.startDate;
            match->endDate = event.endDate;
        } else {
            for (ScheduleItem &item : after) {
                if (!item.calendarEventIdentifier && uuidText(item.id) == event.uid)
                    match = &item;
            }
            if (match) {
                match->calendarEventIdentifier = event.eventIdentifier;
                match->calendarExportRequested = true;
            }
        }
        if (!match) {
            after.append({.title = event.title.value_or(input.untitled),
                          .date = event.startDate,
                          .endDate = event.endDate,
                          .notes = event.notes,
                          .calendarEventIdentifier = event.eventIdentifier});
            match = &after.last();
        }
        match->calendarIdentifier = event.calendarIdentifier;
        match->calendarColorHex = calendar->colorHex;
    }
    return after;
}

/// New schedules get random ids, in which two merges differ.
QList<ScheduleItem> withIdsOf(QList<ScheduleItem> schedules, const QList<ScheduleItem> &others)
{
    for (qsizetype row = 0; row < std::min(schedules.size(), others.size()); ++row)
        schedules[row].id = others.at(row).id;
    return schedules;
}

} // namespace

class CalendarMergeTest : public QObject
{
    Q_OBJECT

private slots:
    void anUnknownEventBecomesAScheduleWithItsNotes()
    {
        CalendarEvent untitled = eventOf(QStringLiteral("b"), 1600, home);
        untitled.title.reset();
        const CalendarMerge merge = mergeCalendars(inputOf({eventOf(QStringLiteral("a")), untitled}), {});

        QCOMPARE(merge.added, 2);
        QCOMPARE(merge.rows, (RowsChange{RowsChange::Kind::Inserted, 0, 2}));
        const ScheduleItem &first = merge.schedules->at(0);
        QCOMPARE(first, (ScheduleItem{.id = first.id,
                                      .title = QStringLiteral("Event a"),
                                      .date = {1500},
                                      .endDate = Instant{1560},
                                      .notes = QStringLiteral("from the calendar"),
                                      .calendarEventIdentifier = QStringLiteral("a"),
                                      .calendarIdentifier = work,
                                      .calendarColorHex = QStringLiteral("#112233")}));
        QCOMPARE(merge.schedules->at(1).title, QStringLiteral("Untitled"));
    }

    void aKnownEventChangesWhatIsTheCalendarsAndNothingElse()
    {
        ScheduleItem known = scheduleOf(eventOf(QStringLiteral("a")));
        known.notes = QStringLiteral("mine");
        known.tasks = QList<ScheduleTask>{{.title = QStringLiteral("Read")}};
        known.tag = QStringLiteral("Study");
        known.customColorHex = QStringLiteral("#445566");
        CalendarEvent moved = eventOf(QStringLiteral("a"), 1700, home);
        moved.title = QStringLiteral("Moved");
        const CalendarMerge merge =
            mergeCalendars(inputOf({moved}), {scheduleOf(eventOf(QStringLiteral("z"), 10)), known});

        QCOMPARE(merge.updated, 1);
        QCOMPARE(merge.rows, (RowsChange{RowsChange::Kind::Updated, 1, 1}));
        ScheduleItem expected = known;
        expected.title = QStringLiteral("Moved");
        expected.date = {1700};
        expected.endDate = Instant{1760};
        expected.calendarIdentifier = home;
        expected.calendarColorHex.reset();
        QCOMPARE(merge.schedules->at(1), expected);
    }

    void aSyncThatFindsNothingNewChangesNothing()
    {
        const CalendarMerge merge = mergeCalendars(inputOf(eventsOf(0, 30)), schedulesOf(30));
        QVERIFY(!merge.schedules);
        QCOMPARE(merge.updated, 30);
    }

    void ofTwoSchedulesWithOneEventTheLaterIsMatched()
    {
        const ScheduleItem known = scheduleOf(eventOf(QStringLiteral("a")));
        ScheduleItem copy = known;
        copy.id = QUuid::createUuid();
        const CalendarMerge merge = mergeCalendars(inputOf({eventOf(QStringLiteral("a"), 1700)}), {known, copy});

        QCOMPARE(merge.schedules->size(), 2);
        QCOMPARE(merge.schedules->at(0), known);
        QCOMPARE(merge.schedules->at(1).date, Instant{1700});
    }

    void onlyWhatTheCalendarCertainlyLostIsRemoved_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<QString>("calendar");
        QTest::addColumn<bool>("isLinked");
        QTest::addColumn<bool>("isWhole");
        QTest::addColumn<bool>("isRemoved");

        QTest::newRow("in the range") << 1500. << work << true << true << true;
        QTest::newRow("at its start") << 1000. << work << true << true << true;
        QTest::newRow("before it") << 999. << work << true << true << false;
        QTest::newRow("at its end") << 2000. << work << true << true << false;
        QTest::newRow("another calendar") << 1500. << QStringLiteral("other") << true << true << false;
        QTest::newRow("no calendar") << 1500. << QString() << true << true << false;
        QTest::newRow("no event") << 1500. << work << false << true << false;
        QTest::newRow("not read whole") << 1500. << work << true << false << false;
    }

    void onlyWhatTheCalendarCertainlyLostIsRemoved()
    {
        QFETCH(const double, start);
        QFETCH(const QString, calendar);
        QFETCH(const bool, isLinked);
        QFETCH(const bool, isWhole);
        QFETCH(const bool, isRemoved);
        ScheduleItem item = scheduleOf(eventOf(QStringLiteral("a"), start));
        item.calendarIdentifier = calendar.isNull() ? std::nullopt : std::optional(calendar);
        if (!isLinked)
            item.calendarEventIdentifier.reset();
        CalendarSyncInput input = inputOf({});
        input.calendars[0].isWhole = isWhole;
        const CalendarMerge merge = mergeCalendars(input, {item});

        QCOMPARE(merge.removed, isRemoved ? 1 : 0);
        QCOMPARE(merge.schedules.has_value(), isRemoved);
    }

    void aMassRemovalIsHeldAndNothingOfThatCalendarChanges_data()
    {
        QTest::addColumn<int>("schedules");
        QTest::addColumn<int>("missing");
        QTest::addColumn<int>("approved");
        QTest::addColumn<bool>("isHeld");

        QTest::newRow("20 of 20") << 20 << 20 << 0 << false;
        QTest::newRow("21 of 21") << 21 << 21 << 0 << true;
        QTest::newRow("21 of 209: more than a tenth") << 209 << 21 << 0 << true;
        QTest::newRow("21 of 210: a tenth") << 210 << 21 << 0 << false;
        QTest::newRow("all approved") << 50 << 40 << 40 << false;
        QTest::newRow("20 came to what was approved") << 50 << 40 << 20 << false;
        QTest::newRow("21 came to it") << 50 << 40 << 19 << true;
    }

    void aMassRemovalIsHeldAndNothingOfThatCalendarChanges()
    {
        QFETCH(const int, schedules);
        QFETCH(const int, missing);
        QFETCH(const int, approved);
        QFETCH(const bool, isHeld);
        const QList<ScheduleItem> before = schedulesOf(schedules);
        QList<CalendarEvent> events = eventsOf(missing, schedules);
        events.append(eventOf(QStringLiteral("new")));
        events.append(eventOf(QStringLiteral("elsewhere"), 1500, home));
        CalendarSyncInput input = inputOf(events);
        for (int row = 0; row < approved; ++row)
            input.approvedRemovals.insert(before.at(row).id);
        const CalendarMerge merge = mergeCalendars(input, before);

        QCOMPARE(merge.held.size(), isHeld ? 1 : 0);
        QCOMPARE(merge.added, isHeld ? 1 : 2);
        QCOMPARE(merge.removed, isHeld ? 0 : missing);
        QCOMPARE(merge.schedules->size(), isHeld ? schedules + 1 : schedules - missing + 2);
        if (isHeld)
            QCOMPARE(merge.held.constFirst().schedules.size(), missing - approved);
    }

    void anExportThatWasCutShortIsFoundAgain()
    {
        ScheduleItem local{.title = QStringLiteral("Edited since"), .date = {1100}, .endDate = Instant{1200}};
        CalendarEvent event = eventOf(QStringLiteral("a"));
        event.uid = uuidText(local.id);
        const CalendarMerge merge = mergeCalendars(inputOf({event}), {local});

        QCOMPARE(merge.relinked, QList{local.id});
        QCOMPARE(merge.added, 0);
        local.calendarEventIdentifier = QStringLiteral("a");
        local.calendarIdentifier = work;
        local.calendarColorHex = QStringLiteral("#112233");
        local.calendarExportRequested = true;
        QCOMPARE(*merge.schedules, QList{local});
    }

    void agreesWithTheNaiveMergeOverManySteps()
    {
        RecordGenerator random(7);
        QList<ScheduleItem> schedules;
        QHash<QString, CalendarEvent> service;
        int heldCount = 0;
        for (int step = 0; step < 4000; ++step) {
            const QString identifier = QString::number(random.below(120));
            const QString calendar = random.happens(0.5) ? work : home;
            const double start = 900. + double(random.below(1200));
            if (random.happens(0.03)) {
                service.removeIf([&](const auto &entry) { return entry.value().calendarIdentifier == calendar; });
            } else if (random.happens(0.2)) {
                service.remove(identifier);
            } else {
                service.insert(identifier, eventOf(identifier, start, calendar));
            }
            if (random.happens(0.2)) {
                schedules.append({.title = random.words(2), .date = {start}});
                CalendarEvent exported = eventOf(identifier, start, calendar);
                exported.uid = uuidText(schedules.constLast().id);
                if (random.happens(0.5))
                    service.insert(identifier, exported);
            }
            if (!schedules.isEmpty() && random.happens(0.2))
                schedules.removeAt(random.below(schedules.size()));
            if (!schedules.isEmpty() && random.happens(0.05)) {
                ScheduleItem twin = schedules.at(random.below(schedules.size()));
                twin.id = QUuid::createUuid();
                schedules.append(twin);
            }
            if (step % 4 != 0)
                continue;

            CalendarSyncInput input = inputOf({});
            for (const CalendarEvent &event : std::as_const(service)) {
                if (event.startDate < to && event.endDate > from)
                    input.events.append(event);
            }
            input.calendars[0].isWhole = random.happens(0.8);
            for (const ScheduleItem &item : std::as_const(schedules)) {
                if (random.happens(0.3))
                    input.approvedRemovals.insert(item.id);
            }
            QStringList held;
            const QList<ScheduleItem> expected = naiveMerge(input, schedules, held);
            const CalendarMerge merge = mergeCalendars(input, schedules);
            const QList<ScheduleItem> merged = merge.schedules.value_or(schedules);
            heldCount += int(held.size());

            QCOMPARE(merge.held.size(), held.size());
            QCOMPARE(merged, withIdsOf(expected, merged));
            QCOMPARE(merge.schedules.has_value(), merged != schedules);
            checkRows(merge, schedules, merged);
            schedules = merged;
        }
        QVERIFY2(heldCount > 3, "the walk never met a mass removal");
    }

private:
    static void checkRows(const CalendarMerge &merge, const QList<ScheduleItem> &before,
                          const QList<ScheduleItem> &after)
    {
        const RowsChange &rows = merge.rows;
        if (!merge.schedules || rows.kind == RowsChange::Kind::Reset)
            return;
        const qsizetype sizeChange = rows.kind == RowsChange::Kind::Inserted  ? rows.count
                                     : rows.kind == RowsChange::Kind::Removed ? -rows.count
                                                                              : 0;
        QCOMPARE(after.size() - before.size(), sizeChange);
        QCOMPARE(after.first(rows.first), before.first(rows.first));
        const qsizetype tail = before.size() - rows.first - (rows.kind == RowsChange::Kind::Inserted ? 0 : rows.count);
        QCOMPARE(after.last(tail), before.last(tail));
    }
};

TESSALY_TEST_MAIN(CalendarMergeTest)
#include "CalendarMergeTest.moc"
