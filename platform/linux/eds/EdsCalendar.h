#pragma once

#include "platform/linux/eds/EdsWrites.h"

#include <QStringList>

#include <chrono>
#include <deque>
#include <memory>
#include <utility>

namespace tessaly {

/// What the calendars of one connection to the service share.
class EdsContext
{
public:
    virtual ~EdsContext() = default;
    [[nodiscard]] virtual const GLibThread &thread() const = 0;
    /// For work that waits for the service.
    virtual void runAside(std::function<void()> work) = 0;
    /// Ends what still waits for the service.
    [[nodiscard]] virtual GCancellable *cancellable() const = 0;
    /// Something is read, or cannot be read any more.
    virtual void stateChanged() = 0;
    virtual void contentChanged() = 0;
    virtual void eventsRead(qsizetype count) = 0;
    /// All calendars are read anew.
    virtual void readingBegins() = 0;
    [[nodiscard]] virtual const UserCalendar &userCalendar() const = 0;
    /// Expires with the context.
    [[nodiscard]] virtual std::weak_ptr<bool> life() const = 0;
};

/// One calendar of the service and its mirror. Lives on the context's thread.
class EdsCalendar : public std::enable_shared_from_this<EdsCalendar>
{
public:
    EdsCalendar(EdsContext &context, ESource *source);
    ~EdsCalendar();
    EdsCalendar(const EdsCalendar &) = delete;
    EdsCalendar &operator=(const EdsCalendar &) = delete;

    void connect();
    /// The calendar is gone; what was asked for is still answered.
    void disconnect();

    [[nodiscard]] static QString identifierOf(ESource *source);
    [[nodiscard]] ESource *source() const { return m_source.get(); }
    [[nodiscard]] const QString &identifier() const { return m_identifier; }
    [[nodiscard]] bool isWritable() const { return m_isWritable; }
    [[nodiscard]] bool isOpening() const { return m_phase == Phase::Connecting; }
    [[nodiscard]] bool isLoaded() const { return m_phase == Phase::Loaded; }
    /// Why something may be missing from the mirror.
    [[nodiscard]] std::optional<UnreadCalendar::Reason> unreadReason() const;
    /// Whether waiting any longer is of no use.
    [[nodiscard]] bool isSettled() const;
    /// Whether something is being written, or waits for its turn.
    [[nodiscard]] bool isWriting() const { return m_writes > 0; }
    [[nodiscard]] const EventMirror &mirror() const { return m_mirror; }

    void create(const NewEvent &event, EventStore::SaveCompletion completion);
    void change(const EventName &name, const EventChange &change, EventStore::SaveCompletion completion);
    void remove(const EventName &name, EventStore::RemoveCompletion completion);

private:
    enum class Phase { Connecting, Loading, Checking, Loaded, Failed, Gone };
    /// What a server has is here only after the service has asked it; what it had before may be a part.
    enum class Download { Unknown, Requested, Running, Finished };
    using Clock = std::chrono::steady_clock;
    using Continuation = std::function<void()>;
    /// Works aside; what it returns runs on the thread afterwards.
    using Job = std::function<Continuation()>;
    struct Creation
    {
        NewEvent event;
        EventStore::SaveCompletion completion;
    };

    void startWaiting();
    void postWhileAlive(std::function<void()> work, std::chrono::milliseconds delay);
    void reconnect(std::chrono::milliseconds delay);
    void connected(GObjectPtr<ECalClient> client);
    void openView();
    void closeView();
    void watch(GObjectPtr<ECalClientView> view);
    void fail(const GError *error);
    void died();
    void dropClient();
    void added(const GSList *components);
    void removed(const GSList *ids);
    void completed();
    void loaded();
    void progressed(const char *message);
    void downloaded();
    void statusChanged();
    void download();
    void readAgain(QStringList uids, Continuation afterwards = {});
    [[nodiscard]] bool isWrittenLately(const QString &uid) const;

    [[nodiscard]] EdsAccess access() const;
    void enqueue(Job job);
    void enqueueWrite(const QString &uid, std::function<Result<void>(const EdsAccess &)> write,
                      EventStore::RemoveCompletion done);
    void startNextJob();
    [[nodiscard]] Job creationJob();
    void applyWrite(const QString &uid, const Result<std::shared_ptr<Components>> &read);
    static void answer(const Result<void> &result, const std::optional<CalendarEvent> &event,
                       const EventStore::SaveCompletion &completion);

    EdsContext &m_context;
    GObjectPtr<ESource> m_source;
    QString m_identifier;
    bool m_isRemote;
    bool m_isWritable;
    std::shared_ptr<ZoneTable> m_zones;
    std::shared_ptr<const EventText> m_text;
    EventMirror m_mirror;
    GObjectPtr<ECalClient> m_client;
    GObjectPtr<ECalClientView> m_view;
    Phase m_phase = Phase::Connecting;
    UnreadCalendar::Reason m_failure = UnreadCalendar::Reason::Unreadable;
    Download m_download = Download::Unknown;
    bool m_hasDownloadFailed = false;
    int m_failures = 0;
    int m_generation = 0;
    Clock::time_point m_since = Clock::now();
    std::deque<Job> m_jobs;
    std::deque<Creation> m_creations;
    bool m_isBusy = false;
    int m_writes = 0;
    QHash<QString, Clock::time_point> m_writtenLately;
};

} // namespace tessaly
