#pragma once

#include "platform/linux/eds/EdsCalendar.h"

#include <QThreadPool>

#include <gio/gio.h>

#include <list>
#include <map>

namespace tessaly {

/// The calendars as they were when something about them changed.
struct EdsCalendarList
{
    QList<EventCalendar> calendars = {};
    QString defaultIdentifier = {};

    bool operator==(const EdsCalendarList &) const = default;
};

/// The connection to the service: its calendars, and who waits for them. Made, used and destroyed on the thread given.
class EdsSession final : public EdsContext
{
public:
    struct Listener
    {
        std::function<void(const EdsCalendarList &)> calendarsChanged;
        /// By the reading that is going on, so far.
        std::function<void(qsizetype)> eventsRead;
        std::function<void()> databaseChanged;
    };

    EdsSession(const GLibThread &thread, const UserCalendar &calendar, Listener listener);
    ~EdsSession() override;
    EdsSession(const EdsSession &) = delete;
    EdsSession &operator=(const EdsSession &) = delete;

    void requestAccess(EventStore::AccessCompletion completion);
    void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                     EventStore::FetchCompletion completion);
    void createEvent(const NewEvent &event, EventStore::SaveCompletion completion);
    void changeEvent(const QString &eventIdentifier, const EventChange &change, EventStore::SaveCompletion completion);
    void removeEvent(const QString &eventIdentifier, EventStore::RemoveCompletion completion);
    /// Runs once nothing is being written.
    void whenWritten(std::function<void()> done);

private:
    enum class Phase { Closed, Opening, Open, Failed };

    [[nodiscard]] const GLibThread &thread() const override { return m_thread; }
    void runAside(std::function<void()> work) override;
    [[nodiscard]] GCancellable *cancellable() const override { return m_cancellable.get(); }
    void stateChanged() override;
    void contentChanged() override;
    void eventsRead(qsizetype count) override;
    void readingBegins() override { m_eventsRead = 0; }
    [[nodiscard]] const UserCalendar &userCalendar() const override { return m_calendar; }
    [[nodiscard]] std::weak_ptr<bool> life() const override { return m_life; }
    /// On the thread, unless the session is gone by then.
    void postWhileAlive(std::function<void()> work, std::chrono::milliseconds delay = {}) const;

    void openRegistry();
    void opened(GObjectPtr<ESourceRegistry> registry, const GError *error);
    void closeRegistry();
    void readSources();
    void publish();
    [[nodiscard]] EventCalendar described(const EdsCalendar &calendar) const;
    [[nodiscard]] std::shared_ptr<EdsCalendar> find(const QString &identifier) const;
    /// The calendar of an event, and the event's name in it.
    [[nodiscard]] std::pair<std::shared_ptr<EdsCalendar>, EventName> locate(const QString &eventIdentifier) const;
    /// Runs `work` as soon as `isReady` holds, in the order of the calls where several are ready.
    void wait(std::function<bool()> isReady, std::function<void()> work);
    [[nodiscard]] bool isSettled() const;
    void create(const NewEvent &event, const EventStore::SaveCompletion &completion);

    const GLibThread &m_thread;
    UserCalendar m_calendar;
    Listener m_listener;
    GObjectPtr<GCancellable> m_cancellable;
    QThreadPool m_pool;
    /// Held, because GLib opens another one as soon as nobody holds it.
    GObjectPtr<GDBusConnection> m_bus;
    GObjectPtr<ESourceRegistry> m_registry;
    guint m_nameWatch = 0;
    Phase m_phase = Phase::Closed;
    QString m_failure;
    int m_failedOpenings = 0;
    std::map<QString, std::shared_ptr<EdsCalendar>> m_calendars;
    EdsCalendarList m_published;
    qsizetype m_eventsRead = 0;
    bool m_isAnnouncing = false;
    bool m_isChecking = false;
    struct Waiting
    {
        std::function<bool()> isReady;
        std::function<void()> work;
    };
    std::list<Waiting> m_waiting;
    /// Who waits for the creation of the event with this UID.
    std::map<QString, QList<EventStore::SaveCompletion>> m_creating;
    std::shared_ptr<bool> m_life = std::make_shared<bool>();
};

} // namespace tessaly
