#include "tests/system/SyncProof.h"

#include "model/RecordCodec.h"
#include "platform/common/SqlitePreferences.h"
#include "store/PreferenceKeys.h"

#include <QDeadlineTimer>
#include <QTest>

#include <csignal>

namespace tessaly {

namespace {

constexpr int patience = 60'000;
/// From one disturbance to the next.
constexpr int longestQuietMs = 1500;
/// From the moment on that all is certain to the disturbance.
constexpr int longestUncertainMs = 200;
constexpr int theirs = 60;
constexpr int shared = 20;
const QString calendar = QStringLiteral("Home");

QString uidOf(const QString &kind, int index)
{
    return kind + u'-' + QString::number(index);
}

QString kindOf(const QString &uid)
{
    return uid.section(u'-', 0, 0);
}

int numberIn(const QString &title)
{
    return title.section(u' ', 1, 1).toInt();
}

} // namespace

SyncProof::SyncProof(EventStoreDriver &driver, const QString &service) : m_driver(driver), m_service(service)
{
    for (int index = 0; index < theirs; ++index)
        put(uidOf(QStringLiteral("theirs"), index), 0);
    for (int index = 0; index < shared; ++index) {
        put(uidOf(QStringLiteral("shared"), index), 0);
        put(uidOf(QStringLiteral("both"), index), 0);
    }
}

void SyncProof::put(const QString &uid, int number)
{
    const Instant start = m_driver.now().plus(600. * number);
    m_driver.putEvent(calendar, {.uid = uid,
                                 .title = QStringLiteral("%1 %2").arg(kindOf(uid)).arg(number),
                                 .startDate = start,
                                 .endDate = start.plus(1800)});
    m_put.insert(uid, number);
}

void SyncProof::start(QProcess &planner, const QStringList &arguments) const
{
    planner.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    planner.start(QStringLiteral(SYNC_LOOP_PROGRAM), QStringList{m_data.path(), m_service} + arguments);
}

void SyncProof::actAside(QProcess &planner)
{
    const int index = m_random.bounded(theirs);
    const QString uid = uidOf(QStringLiteral("theirs"), index);
    if (m_random.bounded(3) == 0)
        put(uidOf(QStringLiteral("both"), index % shared), m_random.bounded(1000));
    else if (m_random.bounded(4) > 0)
        put(uid, m_random.bounded(1000));
    else if (m_put.remove(uid) > 0)
        m_driver.dropEvent(calendar, uid);
    planner.waitForReadyRead(m_random.bounded(10));
    read(planner);
}

void SyncProof::read(QProcess &planner)
{
    m_unreadOutput += planner.readAllStandardOutput();
    for (qsizetype end = m_unreadOutput.indexOf('\n'); end >= 0; end = m_unreadOutput.indexOf('\n')) {
        note(m_unreadOutput.left(end));
        m_unreadOutput.remove(0, end + 1);
    }
}

void SyncProof::note(const QByteArray &line)
{
    const QByteArrayList words = line.split(' ');
    if (line == "begin") {
        m_isInSync = true;
        m_inSync.added += m_latest.added;
        m_inSync.changed.insert(m_latest.changed);
        m_inSync.deleted += m_latest.deleted;
        m_latest = {};
    } else if (line == "synced") {
        if (m_isReadingUncertain || (std::exchange(m_isInSync, false) && std::exchange(m_isUncertain, false)))
            loseTrack();
        m_synced.changed.insert(m_inSync.changed);
        m_synced.deleted += m_inSync.deleted;
        m_inSync = {};
    } else if (line == "not synced") {
        m_isInSync = false;
    } else if (words.at(0) == "add") {
        m_added.insert(words.value(1));
        m_latest.added.insert(words.value(1));
        if (m_isReadingUncertain)
            m_perhapsDeleted.insert(words.value(1));
    } else if (words.at(0) == "change") {
        m_latest.changed.insert(words.value(1), words.value(2).toInt());
    } else if (words.at(0) == "delete") {
        m_latest.deleted.insert(words.value(1));
        m_perhapsDeleted.insert(words.value(1));
    } else if (words.at(0) == "forget") {
        m_perhapsDeleted.insert(words.value(1));
    }
}

void SyncProof::runUntilKilled(int milliseconds)
{
    QProcess planner;
    start(planner, {QStringLiteral("0"), QStringLiteral("edit")});
    QVERIFY2(planner.waitForReadyRead(patience), "the planner says nothing");
    const QDeadlineTimer moment(m_random.bounded(milliseconds), Qt::PreciseTimer);
    while (!moment.hasExpired())
        actAside(planner);
    kill(planner);
}

void SyncProof::kill(QProcess &planner)
{
    planner.kill();
    planner.waitForFinished();
    read(planner);
    m_unreadOutput.clear();
    m_killsInSync += m_isInSync ? 1 : 0;
    loseTrack();
}

void SyncProof::loseTrack()
{
    m_latest = {};
    m_inSync = {};
    m_isInSync = false;
}

void SyncProof::runFor(int syncs)
{
    QProcess planner;
    start(planner, {QString::number(syncs), QStringLiteral("edit")});
    const QDeadlineTimer end(patience);
    while (planner.state() != QProcess::NotRunning && !end.hasExpired())
        actAside(planner);
    QCOMPARE(planner.state(), QProcess::NotRunning);
    QCOMPARE(planner.exitCode(), 0);
    read(planner);
}

bool SyncProof::standStill(const QProcess &planner, const std::function<bool()> &settle)
{
    // A planner that goes on and on would keep the service from ever being idle.
    const auto process = static_cast<pid_t>(planner.processId());
    ::kill(process, SIGSTOP);
    const bool isSettled = settle();
    ::kill(process, SIGCONT);
    return isSettled;
}

void SyncProof::readUncertain(QProcess &planner)
{
    // The service may have lost events that the planner knows to be there: to the planner they have been deleted.
    m_perhapsDeleted += m_latest.added;
    m_perhapsDeleted += m_inSync.added;
    loseTrack();
    m_isReadingUncertain = true;
    read(planner);
    m_isReadingUncertain = false;
    loseTrack();
    m_isUncertain = true;
}

int SyncProof::runDisturbed(int times, const std::function<bool()> &settle, const std::function<bool()> &disturb)
{
    QProcess planner;
    start(planner, {QStringLiteral("0"), QStringLiteral("edit")});
    const QDeadlineTimer end(patience);
    int disturbances = 0;
    QDeadlineTimer next(m_random.bounded(longestQuietMs));
    while (disturbances < times && !end.hasExpired()) {
        actAside(planner);
        if (!next.hasExpired())
            continue;
        next.setRemainingTime(m_random.bounded(longestQuietMs));
        if (!standStill(planner, settle))
            continue;
        read(planner);
        QTest::qWait(m_random.bounded(longestUncertainMs));
        if (disturb())
            ++disturbances;
        readUncertain(planner);
    }
    // The service may die of the planner's end.
    if (!standStill(planner, settle))
        qWarning("the service is not at rest in the end");
    kill(planner);
    return disturbances;
}

QStringList SyncProof::faults()
{
    QProcess planner;
    start(planner, {QStringLiteral("2")});
    if (!planner.waitForFinished(patience) || planner.exitCode() != 0) {
        planner.kill();
        planner.waitForFinished();
        return {QStringLiteral("the planner does not end its syncs")};
    }
    read(planner);
    QStringList faults;
    compareSides(faults);
    compareWithBook(faults);
    return faults;
}

QList<ScheduleItem> SyncProof::schedules() const
{
    const auto opened = SqlitePreferences::open(m_data.path());
    const auto blob = opened ? opened.value()->get<QByteArray>(keys::storageKey) : std::nullopt;
    const std::optional<SavedData> data = blob ? decodeSavedData(*blob) : std::nullopt;
    return data ? data->schedules : QList<ScheduleItem>();
}

QList<CalendarEvent> SyncProof::events()
{
    const std::unique_ptr<EventStore> store = m_driver.makeStore();
    std::optional<Result<bool>> access;
    store->requestAccess([&](const Result<bool> &result) { access.emplace(result); });
    if (!QTest::qWaitFor([&] { return access.has_value(); }, patience))
        return {};
    QStringList calendars;
    for (const EventCalendar &each : store->calendars())
        calendars.append(each.identifier);
    std::optional<Result<FetchedEvents>> fetched;
    store->fetchEvents(calendars, Instant::fromUnixSeconds(0), Instant::fromUnixSeconds(4e9),
                       [&](const Result<FetchedEvents> &result) { fetched.emplace(result); });
    if (!QTest::qWaitFor([&] { return fetched.has_value(); }, patience) || !*fetched)
        return {};
    return fetched->value().unread.isEmpty() ? fetched->value().events : QList<CalendarEvent>();
}

void SyncProof::compareSides(QStringList &faults)
{
    QHash<QString, CalendarEvent> rest;
    QHash<QString, QString> identifiers;
    for (const CalendarEvent &event : events()) {
        if (const QString other = identifiers.value(event.uid); !other.isEmpty())
            faults.append(QStringLiteral("two events: %1 and %2").arg(other, event.eventIdentifier));
        rest.insert(event.eventIdentifier, event);
        identifiers.insert(event.uid, event.eventIdentifier);
    }
    QSet<QString> scheduled;
    for (const ScheduleItem &item : schedules()) {
        const QString identifier = item.calendarEventIdentifier.value_or(QString());
        const auto event = rest.constFind(identifier);
        if (event == rest.cend()) {
            const bool isSecond = scheduled.contains(identifier);
            faults.append((isSecond ? QStringLiteral("a second schedule: ") : QStringLiteral("no event: ")) +
                          item.title + u' ' + identifier);
            continue;
        }
        scheduled.insert(identifier);
        if (event->title != item.title || event->startDate != item.date || event->endDate != item.end())
            faults.append(
                QStringLiteral("“%1” is “%2” in the calendar").arg(item.title, event->title.value_or(QString())));
        rest.erase(event);
    }
    for (const CalendarEvent &event : std::as_const(rest))
        faults.append(QStringLiteral("no schedule: ") + event.title.value_or(QString()));
}

void SyncProof::compareWithBook(QStringList &faults)
{
    QHash<QByteArray, ScheduleItem> found;
    for (const CalendarEvent &event : events()) {
        for (const ScheduleItem &item : schedules()) {
            if (item.calendarEventIdentifier == event.eventIdentifier)
                found.insert(event.uid.toUtf8(), item);
        }
    }
    for (auto entry = m_put.cbegin(); entry != m_put.cend(); ++entry) {
        const QString kind = kindOf(entry.key());
        const QString title = found.value(entry.key().toUtf8()).title;
        const bool isRight = kind == QStringLiteral("theirs") ? title == QStringLiteral("theirs %1").arg(*entry)
                                                              : title.startsWith(kind);
        if (!isRight)
            faults.append(QStringLiteral("“%1 %2” is “%3”").arg(entry.key()).arg(*entry).arg(title));
        if (!m_driver.text(calendar, entry.key()).contains(foreignProperty))
            faults.append(QStringLiteral("lost its foreign property: ") + entry.key());
    }
    for (const QByteArray &uid : std::as_const(m_added)) {
        if (!m_perhapsDeleted.contains(uid) && !found.contains(uid))
            faults.append(QStringLiteral("lost: ") + QString::fromUtf8(uid));
        if (m_synced.deleted.contains(uid) && found.contains(uid))
            faults.append(QStringLiteral("is back: ") + QString::fromUtf8(uid));
    }
    for (auto entry = m_synced.changed.cbegin(); entry != m_synced.changed.cend(); ++entry) {
        const ScheduleItem item = found.value(entry.key());
        const bool isOfBoth = entry.key().startsWith("both") || m_perhapsDeleted.contains(entry.key());
        if (!isOfBoth && (numberIn(item.title) < *entry || item.notes != QStringLiteral("mine")))
            faults.append(QStringLiteral("%1 lost edit %2").arg(item.title).arg(*entry));
    }
    for (auto entry = found.cbegin(); entry != found.cend(); ++entry) {
        if (entry.key().startsWith("theirs") && !m_put.contains(QString::fromUtf8(entry.key())))
            faults.append(QStringLiteral("is back: ") + entry->title);
    }
}

} // namespace tessaly
