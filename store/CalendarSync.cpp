#include "store/CalendarSync.h"

#include "model/Uuid.h"
#include "platform/Clock.h"
#include "store/ErrorText.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tessaly {

namespace {

using namespace std::chrono_literals;

/// From the last change of a burst to the sync.
constexpr auto automaticSyncDelay = 6s;
/// How often a long fetch reports its progress.
constexpr auto readingInterval = 1s;

TextPair refusalText()
{
    return {QStringLiteral("未获日历访问权限，请在系统设置中允许 Tessaly 访问日历。"),
            QStringLiteral("Calendar access was not granted. Allow Tessaly in System Settings.")};
}

} // namespace

CalendarSync::CalendarSync(PlannerStore &store, const PlannerPorts &ports) : m_store(store), m_ports(ports)
{
    m_pendingSync.setSingleShot(true);
    m_pendingSync.setInterval(automaticSyncDelay);
    m_pendingSync.setObjectName(QStringLiteral("pendingSync"));
    m_pendingSync.setParent(this);
    m_lastSync = outcomeFrom(m_ports.preferences.get<QStringList>(keys::lastCalendarSync).value_or(QStringList()));
    m_consentAnswer = m_ports.preferences.get<bool>(keys::calendarConsent);
    connect(&m_pendingSync, &QTimer::timeout, this, [this] {
        // What changed while a sync was running may have come too late for it.
        if (m_isSyncing)
            m_pendingSync.start();
        else
            performCalendarSync({.exportsLocalSchedules = true});
    });
    m_readingTicks.setInterval(readingInterval);
    m_readingTicks.setObjectName(QStringLiteral("readingTicks"));
    m_readingTicks.setParent(this);
    connect(&m_readingTicks, &QTimer::timeout, this, &CalendarSync::reportReading);
    connect(&store, &PlannerStore::interfaceLanguageChanged, this, &CalendarSync::serviceNameChanged);
    connect(&store, &PlannerStore::automaticCalendarSyncChanged, this,
            [this] { setAutomatic(m_store.automaticCalendarSync()); });
}

QString CalendarSync::serviceName() const
{
    return m_ports.eventStore.serviceName().in(m_store.interfaceLanguage());
}

bool CalendarSync::isAvailable() const
{
    return m_ports.eventStore.isAvailable();
}

CalendarSync::Consent CalendarSync::consent() const
{
    if (!m_ports.eventStore.needsConsent())
        return Consent::NotNeeded;
    return !m_consentAnswer ? Consent::Undecided : *m_consentAnswer ? Consent::Allowed : Consent::Refused;
}

void CalendarSync::askForConsent()
{
    m_isConsentAsked = true;
    emit consentChanged();
}

void CalendarSync::answerConsent(bool isAllowed)
{
    m_isConsentAsked = false;
    m_consentAnswer = isAllowed;
    m_store.savePreference(keys::calendarConsent, isAllowed);
    if (!isAllowed) {
        setAutomatic(false);
        m_availableCalendars.clear();
        m_hasLoadedCalendars = false;
        m_heldRemovals.clear();
        emit availableCalendarsChanged();
        emit outcomeChanged();
    }
    QList<AccessCompletion> waiting = std::exchange(m_accessRequests, {});
    emit consentChanged();
    if (isAllowed && waiting.isEmpty())
        startAutomaticCalendarSync();
    for (AccessCompletion &completion : waiting)
        grantAccess(isAllowed, std::move(completion));
}

void CalendarSync::grantAccess(bool isAllowed, AccessCompletion completion)
{
    if (isAllowed)
        m_ports.eventStore.requestAccess(std::move(completion));
    else
        completion(false);
}

void CalendarSync::requestCalendarAccess(AccessCompletion completion)
{
    if (consent() == Consent::Undecided) {
        m_accessRequests.append(std::move(completion));
        emit consentChanged();
    } else {
        grantAccess(consent() != Consent::Refused, std::move(completion));
    }
}

void CalendarSync::requestCalendarAccessAndLoad()
{
    // Where there is no service there is nothing to ask for, and the sheet says so.
    if (!isAvailable())
        return;
    requestCalendarAccess([self = QPointer(this)](const Result<bool> &granted) {
        if (!self)
            return;
        if (!granted)
            self->reportUnreachable(granted.error());
        else if (granted.value())
            self->loadCalendars();
        else
            self->m_store.setCalendarSyncMessage({refusalText(), MessageKind::Failure});
    });
}

void CalendarSync::reportUnreachable(const Error &error)
{
    m_store.reportFailure(QStringLiteral("无法访问日历："), QStringLiteral("Unable to access Calendar: "), error);
}

void CalendarSync::loadCalendars()
{
    QList<CalendarOption> calendars;
    for (const EventCalendar &calendar : m_ports.eventStore.calendars())
        calendars.append(
            {calendar.identifier, calendar.title, calendar.sourceTitle, calendarHex(calendar), calendar.isWritable});
    m_availableCalendars = sortedCalendars(std::move(calendars));
    m_hasLoadedCalendars = true;
    emit availableCalendarsChanged();
    const QStringList known = identifiersOf(m_availableCalendars);
    const QSet<QString> identifiers(known.cbegin(), known.cend());
    if (m_store.selectedCalendarIDs().isEmpty())
        m_store.setSelectedCalendarIDs(identifiers);
    // Who only shows linked calendars has not chosen among those of the system yet.
    const QSet<QString> &visible = m_store.visibleCalendarIDs();
    if (std::ranges::all_of(visible, [](const QString &identifier) { return isFeedCalendar(identifier); }))
        m_store.setVisibleCalendarIDs(visible + identifiers);
}

void CalendarSync::importAllCalendars()
{
    const QStringList known = identifiersOf(m_availableCalendars);
    m_store.setSelectedCalendarIDs({known.cbegin(), known.cend()});
    importSelectedCalendars();
}

void CalendarSync::importSelectedCalendars()
{
    importOrSync({QStringLiteral("正在导入所选日历…"), QStringLiteral("Importing selected calendars…")},
                 {QStringLiteral("未获日历访问权限。"), QStringLiteral("Calendar access was not granted.")},
                 {.isRequested = true});
}

void CalendarSync::syncWithAppleCalendar()
{
    const TextPair name = m_ports.eventStore.serviceName();
    importOrSync({QStringLiteral("正在读取%1的全部日程…").arg(name.chinese),
                  QStringLiteral("Reading all %1 events…").arg(name.english)},
                 refusalText(), {.exportsLocalSchedules = true, .isFullHistory = true, .isRequested = true});
}

void CalendarSync::importOrSync(const TextPair &beginning, const TextPair &refusal, SyncScope scope)
{
    m_store.setCalendarSyncMessage({beginning, MessageKind::Progress});
    requestCalendarAccess([self = QPointer(this), refusal, scope](const Result<bool> &granted) {
        if (!self)
            return;
        if (!granted) {
            self->reportUnreachable(granted.error());
            return;
        }
        if (!granted.value()) {
            self->m_store.setCalendarSyncMessage({refusal, MessageKind::Failure});
            return;
        }
        self->loadCalendars();
        if (const std::optional<TextPair> obstacle = self->selectionObstacle())
            self->m_store.setCalendarSyncMessage({*obstacle, MessageKind::Failure});
        else
            self->performCalendarSync(scope);
    });
}

std::optional<TextPair> CalendarSync::selectionObstacle() const
{
    const QSet<QString> &selected = m_store.selectedCalendarIDs();
    if (selected.isEmpty())
        return TextPair{QStringLiteral("请先选择至少一个要导入的日历。"),
                        QStringLiteral("Select at least one calendar to import.")};
    const auto isKnown = [this](const QString &identifier) {
        return m_ports.eventStore.calendar(identifier).has_value();
    };
    if (!m_availableCalendars.isEmpty() && std::ranges::none_of(selected, isKnown))
        return TextPair{QStringLiteral("之前选择的日历现在都不可用，请重新选择。"),
                        QStringLiteral("None of the calendars you selected is available now. Select others.")};
    return std::nullopt;
}

void CalendarSync::startAutomaticCalendarSync()
{
    if (!m_store.automaticCalendarSync() || !isAvailable())
        return;
    requestCalendarAccess([self = QPointer(this)](const Result<bool> &granted) {
        if (!self || !granted || !granted.value() || !self->m_store.automaticCalendarSync())
            return;
        self->loadCalendars();
        self->observeCalendarChanges();
        self->performCalendarSync({.exportsLocalSchedules = true});
    });
}

void CalendarSync::setAutomatic(bool isOn)
{
    if (isOn) {
        startAutomaticCalendarSync();
        return;
    }
    m_ports.eventStore.setChangeHandler({});
    m_isObserving = false;
    m_pendingSync.stop();
}

void CalendarSync::observeCalendarChanges()
{
    if (std::exchange(m_isObserving, true))
        return;
    m_ports.eventStore.setChangeHandler([self = QPointer(this)] {
        if (self)
            self->scheduleAutomaticSync();
    });
}

void CalendarSync::scheduleAutomaticSync()
{
    if (m_store.automaticCalendarSync())
        m_pendingSync.start();
}

void CalendarSync::performCalendarSync(SyncScope scope)
{
    if (!isAllowed() || std::exchange(m_isSyncing, true))
        return;
    emit isSyncingChanged();
    const UserCalendar &calendar = m_store.calendar();
    const Instant now = m_ports.clock.now();
    m_run = {.scope = scope};
    if (scope.isFullHistory) {
        m_run.from = calendar.startOfDay(QDate(1900, 1, 1));
        m_run.to = calendar.startOfDay(QDate(2100, 1, 1));
    } else {
        m_run.from = calendar.addingMonths(now, -12).value_or(now);
        m_run.to = calendar.addingMonths(now, 12).value_or(now);
    }
    for (const QString &identifier : m_store.selectedCalendarIDs()) {
        if (m_ports.eventStore.calendar(identifier))
            m_run.calendars.append(identifier);
    }
    fetch();
}

void CalendarSync::fetch()
{
    m_isFetchWaiting = m_writesUnderWay > 0;
    if (m_isFetchWaiting)
        return;
    m_writesAtFetch = m_writesBegun;
    m_readingTicks.start();
    m_ports.eventStore.fetchEvents(m_run.calendars, m_run.from, m_run.to,
                                   [self = QPointer(this)](const Result<FetchedEvents> &fetched) {
                                       if (!self)
                                           return;
                                       if (!fetched) {
                                           self->reportUnreachable(fetched.error());
                                           self->endSync();
                                       } else if (self->m_writesAtFetch != self->m_writesBegun) {
                                           self->fetch();
                                       } else {
                                           self->takeFetched(fetched.value());
                                       }
                                   });
}

CalendarSyncInput CalendarSync::inputFor(const FetchedEvents &fetched) const
{
    CalendarSyncInput input{.events = fetched.events,
                            .from = m_run.from,
                            .to = m_run.to,
                            .untitled = m_store.text(QStringLiteral("未命名日程"), QStringLiteral("Untitled event")),
                            .approvedRemovals = m_approvedRemovals};
    for (const QString &identifier : m_run.calendars) {
        const std::optional<EventCalendar> calendar = m_ports.eventStore.calendar(identifier);
        if (!calendar || isLeftOut(fetched.unread, identifier))
            continue;
        const bool isWhole =
            std::ranges::find(fetched.unread, identifier, &UnreadCalendar::identifier) == fetched.unread.cend();
        input.calendars.append({identifier, calendarHex(*calendar), isWhole});
    }
    return input;
}

void CalendarSync::reportReading()
{
    const QString count = QString::number(m_ports.eventStore.eventsRead());
    m_store.setCalendarSyncMessage({{QStringLiteral("正在读取日历…（已读 %1 个事件）").arg(count),
                                     QStringLiteral("Reading calendars… (%1 events)").arg(count)},
                                    MessageKind::Progress});
}

void CalendarSync::takeFetched(const FetchedEvents &fetched)
{
    m_readingTicks.stop();
    m_run.unread = fetched.unread;
    m_run.input = inputFor(fetched);
    merge();
}

void CalendarSync::merge()
{
    m_run.schedules = m_store.schedules();
    m_run.merge = mergeCalendars(m_run.input, m_run.schedules);
    // Merging takes a moment where there are many schedules, saving takes another; the window goes on in between.
    QMetaObject::invokeMethod(this, &CalendarSync::applyMerge, Qt::QueuedConnection);
}

void CalendarSync::applyMerge()
{
    if (!isAllowed()) {
        endSync();
        return;
    }
    if (m_writesAtFetch != m_writesBegun) {
        fetch();
        return;
    }
    // Any change makes it a list of its own.
    if (!m_run.schedules.isSharedWith(m_store.schedules())) {
        merge();
        return;
    }
    m_run.schedules.clear();
    m_run.input = {};
    m_run.isMerged = true;
    m_run.hasChanged = m_run.merge.schedules.has_value();
    m_leftOut = m_run.unread;
    m_heldRemovals = m_run.merge.held;
    m_heldScope = m_run.scope;
    m_approvedRemovals.clear();
    keepRestorePoint();
    if (m_run.merge.schedules)
        m_store.editSchedules([this](QList<ScheduleItem> &schedules) {
            schedules = *std::exchange(m_run.merge.schedules, std::nullopt);
            return m_run.merge.rows;
        });
    QMetaObject::invokeMethod(this, &CalendarSync::writeToCalendars, Qt::QueuedConnection);
}

void CalendarSync::keepRestorePoint()
{
    if (m_run.merge.removed > unquestionedRemovals)
        m_store.generations().keepBefore(GenerationReason::Sync, QString::number(m_run.merge.removed));
    else if (m_run.hasChanged && !m_lastSync && !m_store.schedules().isEmpty())
        m_store.generations().keepBefore(GenerationReason::FirstSync);
}

void CalendarSync::endSync()
{
    m_isSyncing = false;
    m_readingTicks.stop();
    if (m_run.isMerged)
        reportOutcome();
    m_run = {};
    emit isSyncingChanged();
}

void CalendarSync::reportOutcome()
{
    const CalendarMerge &merge = m_run.merge;
    const bool isExport = m_run.scope.exportsLocalSchedules;
    m_lastSync = SyncOutcome{m_ports.clock.now(), merge.added, merge.updated,
                             isExport ? std::optional(m_run.exportCount) : std::nullopt};
    // The automatic sync runs after each change of the calendars; one that found nothing writes nothing.
    if (m_run.hasChanged || m_run.exportCount > 0 || m_run.scope.isRequested)
        m_store.savePreference(keys::lastCalendarSync, storedOutcome(*m_lastSync));
    const Message outcome = m_heldRemovals.isEmpty()
                                ? Message{outcomeText(*m_lastSync, m_ports.eventStore.serviceName(), m_leftOut)}
                                : Message{pausedText(m_heldRemovals), MessageKind::Notice};
    m_store.setCalendarSyncMessage(joined(outcome, m_run.failure));
    emit outcomeChanged();
}

void CalendarSync::removeHeldSchedules()
{
    for (const HeldRemoval &held : std::as_const(m_heldRemovals))
        m_approvedRemovals += QSet<QUuid>(held.schedules.cbegin(), held.schedules.cend());
    repeatHeldSync();
}

void CalendarSync::keepHeldSchedules()
{
    QSet<QUuid> kept;
    for (const HeldRemoval &held : std::exchange(m_heldRemovals, {}))
        kept += QSet<QUuid>(held.schedules.cbegin(), held.schedules.cend());
    m_store.editSchedules([&](QList<ScheduleItem> &schedules) -> std::optional<RowsChange> {
        for (ScheduleItem &item : schedules) {
            if (!kept.contains(item.id))
                continue;
            // The event's identifier stays: what is linked to no event would be written to the default calendar at
            // once, and an event that comes back would come as a second schedule.
            item.calendarIdentifier.reset();
            item.calendarColorHex.reset();
            item.calendarExportRequested.reset();
        }
        return RowsChange{RowsChange::Kind::Updated, 0, schedules.size()};
    });
    emit outcomeChanged();
    repeatHeldSync();
}

void CalendarSync::repeatHeldSync()
{
    SyncScope scope = m_heldScope;
    scope.isRequested = true;
    performCalendarSync(scope);
}

} // namespace tessaly
