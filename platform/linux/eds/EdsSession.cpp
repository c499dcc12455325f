#include "platform/linux/eds/EdsSession.h"

#include "model/ScheduleColors.h"

#include <QDateTime>

#include <algorithm>

namespace tessaly {

namespace {

using namespace std::chrono_literals;

constexpr int mostThreads = 8;
/// How long the calendars may take to open before the list is given out as far as it is known.
constexpr auto openingPatience = 2s;
constexpr auto announcementDelay = 50ms;
constexpr auto reopeningDelay = 1s;
constexpr std::chrono::milliseconds longestReopeningDelay = 30s;
constexpr int mostDoublings = 5;
constexpr const char *registryName = "org.gnome.evolution.dataserver.Sources5";

Instant tenYearsFromNow()
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    return Instant::fromUnixSeconds(static_cast<double>(now.addYears(10).toSecsSinceEpoch()));
}

} // namespace

EdsSession::EdsSession(const GLibThread &thread, const UserCalendar &calendar, Listener listener)
    : m_thread(thread), m_calendar(calendar), m_listener(std::move(listener)), m_cancellable(g_cancellable_new())
{
    m_pool.setMaxThreadCount(mostThreads);
}

EdsSession::~EdsSession()
{
    g_cancellable_cancel(m_cancellable.get());
    m_pool.waitForDone();
    closeRegistry();
    if (m_nameWatch)
        g_bus_unwatch_name(m_nameWatch);
}

void EdsSession::postWhileAlive(std::function<void()> work, std::chrono::milliseconds delay) const
{
    m_thread.post(
        [life = life(), work = std::move(work)] {
            if (life.lock())
                work();
        },
        delay);
}

void EdsSession::runAside(std::function<void()> work)
{
    m_pool.start(std::move(work));
}

void EdsSession::requestAccess(EventStore::AccessCompletion completion)
{
    if (m_phase == Phase::Closed || m_phase == Phase::Failed)
        openRegistry();
    const auto deadline = std::chrono::steady_clock::now() + openingPatience;
    postWhileAlive([this] { stateChanged(); }, openingPatience + 100ms);
    wait(
        [this, deadline] {
            const bool isOpening =
                std::ranges::any_of(m_calendars, [](const auto &entry) { return entry.second->isOpening(); });
            return m_phase == Phase::Failed ||
                   (m_phase == Phase::Open && (!isOpening || std::chrono::steady_clock::now() >= deadline));
        },
        [this, completion = std::move(completion)] {
            if (m_phase == Phase::Failed) {
                completion(Error{ErrorCode::CalendarAccessFailed, m_failure});
            } else {
                publish();
                completion(true);
            }
        });
}

void EdsSession::openRegistry()
{
    m_phase = Phase::Opening;
    readingBegins();
    if (!m_bus) {
        m_bus.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, m_cancellable.get(), nullptr));
        // GLib would end the program together with the desktop's bus.
        if (m_bus)
            g_dbus_connection_set_exit_on_close(m_bus.get(), FALSE);
    }
    e_source_registry_new(
        m_cancellable.get(),
        [](GObject *, GAsyncResult *result, gpointer data) {
            const std::unique_ptr<std::pair<EdsSession *, std::weak_ptr<bool>>> pending(
                static_cast<std::pair<EdsSession *, std::weak_ptr<bool>> *>(data));
            GError *error = nullptr;
            GObjectPtr<ESourceRegistry> registry(e_source_registry_new_finish(result, &error));
            const GErrorPtr owned(error);
            if (pending->second.lock())
                pending->first->opened(std::move(registry), error);
        },
        new std::pair<EdsSession *, std::weak_ptr<bool>>(this, m_life));
}

void EdsSession::opened(GObjectPtr<ESourceRegistry> registry, const GError *error)
{
    if (!registry) {
        m_phase = Phase::Failed;
        m_failure = error ? QString::fromUtf8(error->message) : QString();
        stateChanged();
        // It was there before, so it comes again.
        if (m_nameWatch) {
            const auto delay = reopeningDelay * (1 << std::min(m_failedOpenings++, mostDoublings));
            postWhileAlive(
                [this] {
                    if (m_phase == Phase::Failed)
                        openRegistry();
                },
                std::min<std::chrono::milliseconds>(delay, longestReopeningDelay));
        }
        return;
    }
    m_failedOpenings = 0;
    m_registry = std::move(registry);
    m_phase = Phase::Open;
    const auto changed = +[](ESourceRegistry *, ESource *, EdsSession *self) { self->readSources(); };
    for (const char *signal : {"source-added", "source-changed", "source-removed", "source-enabled", "source-disabled"})
        g_signal_connect(m_registry.get(), signal, G_CALLBACK(changed), this);
    g_signal_connect(m_registry.get(), "notify::default-calendar",
                     G_CALLBACK(+[](ESourceRegistry *, GParamSpec *, EdsSession *self) { self->stateChanged(); }),
                     this);
    if (!m_nameWatch) {
        m_nameWatch = g_bus_watch_name(
            G_BUS_TYPE_SESSION, registryName, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
            [](GDBusConnection *, const gchar *, gpointer data) {
                auto *self = static_cast<EdsSession *>(data);
                if (self->m_phase != Phase::Open)
                    return;
                self->closeRegistry();
                self->postWhileAlive(
                    [self] {
                        if (self->m_phase == Phase::Opening)
                            self->openRegistry();
                    },
                    reopeningDelay);
            },
            this, nullptr);
    }
    readSources();
}

void EdsSession::closeRegistry()
{
    // What is asked meanwhile finds no registry.
    m_phase = Phase::Opening;
    if (m_registry)
        g_signal_handlers_disconnect_by_data(m_registry.get(), this);
    for (const auto &[identifier, calendar] : m_calendars)
        calendar->disconnect();
    m_calendars.clear();
    m_registry.reset();
}

void EdsSession::readSources()
{
    std::map<QString, std::shared_ptr<EdsCalendar>> present;
    GList *sources = e_source_registry_list_sources(m_registry.get(), E_SOURCE_EXTENSION_CALENDAR);
    for (GList *entry = sources; entry; entry = entry->next) {
        auto *source = E_SOURCE(entry->data);
        if (!e_source_registry_check_enabled(m_registry.get(), source))
            continue;
        const QString identifier = EdsCalendar::identifierOf(source);
        std::shared_ptr<EdsCalendar> calendar = find(identifier);
        if (!calendar) {
            calendar = std::make_shared<EdsCalendar>(*this, source);
            calendar->connect();
        }
        present.emplace(identifier, calendar);
    }
    g_list_free_full(sources, g_object_unref);
    for (const auto &[identifier, calendar] : m_calendars) {
        if (!present.contains(identifier))
            calendar->disconnect();
    }
    m_calendars = std::move(present);
    stateChanged();
}

EventCalendar EdsSession::described(const EdsCalendar &calendar) const
{
    ESource *source = calendar.source();
    EventCalendar result{.identifier = calendar.identifier(),
                         .title = QString::fromUtf8(e_source_get_display_name(source)),
                         .isWritable = calendar.isWritable()};
    if (const char *parent = e_source_get_parent(source)) {
        const GObjectPtr<ESource> account(e_source_registry_ref_source(m_registry.get(), parent));
        if (account)
            result.sourceTitle = QString::fromUtf8(e_source_get_display_name(account.get()));
    }
    auto *selectable = E_SOURCE_SELECTABLE(e_source_get_extension(source, E_SOURCE_EXTENSION_CALENDAR));
    gchar *color = e_source_selectable_dup_color(selectable);
    if (color)
        result.color = colorFromHex(QString::fromUtf8(color));
    g_free(color);
    return result;
}

void EdsSession::publish()
{
    if (m_phase != Phase::Open)
        return;
    EdsCalendarList list;
    for (const auto &[identifier, calendar] : m_calendars)
        list.calendars.append(described(*calendar));
    const GObjectPtr<ESource> standard(e_source_registry_ref_default_calendar(m_registry.get()));
    const std::shared_ptr<EdsCalendar> calendar = standard ? find(EdsCalendar::identifierOf(standard.get())) : nullptr;
    // One that the service is still opening passes for read-only. An event that went to another calendar meanwhile
    // would come to stand in both.
    if (calendar && (calendar->isWritable() || !calendar->isLoaded()))
        list.defaultIdentifier = calendar->identifier();
    else if (const auto first = std::ranges::find(list.calendars, true, &EventCalendar::isWritable);
             first != list.calendars.cend())
        list.defaultIdentifier = first->identifier;
    if (list == m_published)
        return;
    m_published = list;
    m_listener.calendarsChanged(list);
    contentChanged();
}

void EdsSession::contentChanged()
{
    if (m_isAnnouncing)
        return;
    m_isAnnouncing = true;
    postWhileAlive(
        [this] {
            m_isAnnouncing = false;
            m_listener.databaseChanged();
        },
        announcementDelay);
}

void EdsSession::eventsRead(qsizetype count)
{
    m_eventsRead += count;
    m_listener.eventsRead(m_eventsRead);
}

void EdsSession::stateChanged()
{
    // Later, for what waits may change what is just being looked through.
    if (m_isChecking)
        return;
    m_isChecking = true;
    postWhileAlive([this] {
        m_isChecking = false;
        publish();
        for (auto entry = m_waiting.begin(); entry != m_waiting.end();) {
            if (!entry->isReady()) {
                ++entry;
                continue;
            }
            const Waiting ready = std::move(*entry);
            entry = m_waiting.erase(entry);
            ready.work();
        }
    });
}

void EdsSession::wait(std::function<bool()> isReady, std::function<void()> work)
{
    m_waiting.push_back({std::move(isReady), std::move(work)});
    stateChanged();
}

std::shared_ptr<EdsCalendar> EdsSession::find(const QString &identifier) const
{
    const auto found = m_calendars.find(identifier);
    return found == m_calendars.cend() ? nullptr : found->second;
}

bool EdsSession::isSettled() const
{
    return m_phase != Phase::Opening &&
           std::ranges::all_of(m_calendars, [](const auto &entry) { return entry.second->isSettled(); });
}

void EdsSession::fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                             EventStore::FetchCompletion completion)
{
    const auto isReady = [this, calendarIdentifiers] {
        return m_phase != Phase::Opening && m_creating.empty() &&
               std::ranges::all_of(calendarIdentifiers, [this](const QString &identifier) {
                   const auto calendar = find(identifier);
                   return !calendar || (calendar->isSettled() && !calendar->isWriting());
               });
    };
    wait(isReady, [this, calendarIdentifiers, from, to, completion = std::move(completion)] {
        FetchedEvents result;
        const Instant horizon = tenYearsFromNow();
        for (const QString &identifier : calendarIdentifiers) {
            const auto calendar = find(identifier);
            const auto reason = calendar ? calendar->unreadReason() : std::optional(UnreadCalendar::Reason::Unreadable);
            if (reason)
                result.unread.append({.identifier = identifier, .reason = *reason});
            else
                calendar->mirror().appendEvents(result.events, from, to, horizon);
        }
        completion(result);
    });
}

void EdsSession::createEvent(const NewEvent &event, EventStore::SaveCompletion completion)
{
    QList<EventStore::SaveCompletion> &waiting = m_creating[event.uid];
    waiting.append(std::move(completion));
    if (waiting.size() > 1)
        return;
    const auto answerAll = [this, uid = event.uid](const Result<CalendarEvent> &result) {
        for (const EventStore::SaveCompletion &completion : std::exchange(m_creating[uid], {}))
            completion(result);
        m_creating.erase(uid);
    };
    wait([this] { return isSettled(); }, [this, event, answerAll] { create(event, answerAll); });
}

void EdsSession::create(const NewEvent &event, const EventStore::SaveCompletion &completion)
{
    for (const auto &[identifier, calendar] : m_calendars) {
        if (const std::optional<CalendarEvent> present = calendar->mirror().eventOf(event.uid)) {
            completion(*present);
            return;
        }
    }
    if (const auto calendar = find(event.calendarIdentifier))
        calendar->create(event, completion);
    else
        completion(Error{ErrorCode::CalendarWriteFailed});
}

std::pair<std::shared_ptr<EdsCalendar>, EventName> EdsSession::locate(const QString &eventIdentifier) const
{
    for (const auto &[identifier, calendar] : m_calendars) {
        if (const auto name = EventName::parse(eventIdentifier, identifier))
            return {calendar, *name};
    }
    return {};
}

void EdsSession::changeEvent(const QString &eventIdentifier, const EventChange &change,
                             EventStore::SaveCompletion completion)
{
    const auto isReady = [this, eventIdentifier] {
        const auto calendar = locate(eventIdentifier).first;
        return m_phase != Phase::Opening && (!calendar || calendar->isSettled());
    };
    wait(isReady, [this, eventIdentifier, change, completion = std::move(completion)] {
        const auto [calendar, name] = locate(eventIdentifier);
        if (calendar)
            calendar->change(name, change, completion);
        else
            completion(Error{ErrorCode::CalendarEventMissing});
    });
}

void EdsSession::removeEvent(const QString &eventIdentifier, EventStore::RemoveCompletion completion)
{
    const auto isReady = [this, eventIdentifier] {
        const auto calendar = locate(eventIdentifier).first;
        return m_phase != Phase::Opening && (!calendar || calendar->isSettled());
    };
    wait(isReady, [this, eventIdentifier, completion = std::move(completion)] {
        const auto [calendar, name] = locate(eventIdentifier);
        if (calendar)
            calendar->remove(name, completion);
        else
            completion(Error{ErrorCode::CalendarEventMissing});
    });
}

void EdsSession::whenWritten(std::function<void()> done)
{
    wait(
        [this] {
            return std::ranges::none_of(m_calendars, [](const auto &entry) { return entry.second->isWriting(); });
        },
        std::move(done));
}

} // namespace tessaly
